#!/usr/bin/env bash
# What velmora answers on the console, and its exit codes.   console_test.sh ARCH PROGRAMS
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir "$work/music" "$work/nothing" "$work/song.ogg"
cp "$root"/build/media/{tone_8000_mono.ogg,mono.wma,sine.mp3} "$work/music"
: >"$work/empty.ogg"
printf 'no music' >"$work/broken.ogg"
cp "$work/music/mono.wma" "$work/Жук.wma"
failed=0

# expect CODE EXPRESSION WORDS...: in the work folder, with this exit code, and printing that.
expect() {
  local code="$1" expression="$2" result=0 printed
  shift 2
  printed="$(cd "$work" && "$root/scripts/wine.sh" "$arch" "$programs/velmora.exe" "$@" 2>&1)" || result=$?
  printed="$(tr '\r\n' '  ' <<<"$printed")"
  [[ $result -eq $code && $printed =~ $expression ]] && return
  printf 'velmora %s: %s, not %s: %s\n' "$*" "$result" "$code" "$printed"
  failed=1
}

arch="$1" programs="$2"
expect 1 'none\.ogg: no such file' play --wav a.wav none.ogg
expect 1 'song\.ogg.*no \.ogg or \.wma in this folder' play --wav a.wav song.ogg
expect 1 'nothing: no \.ogg' play --wav a.wav nothing
expect 1 'sine\.mp3: neither \.ogg nor \.wma' play --wav a.wav 'music\sine.mp3'
expect 1 'empty\.ogg: an empty file' play --wav a.wav empty.ogg
expect 1 'broken\.ogg: damaged' play --wav a.wav broken.ogg
expect 1 "code page lacks" play --wav a.wav Жук.wma
expect 1 'sine\.mp3: neither.*song\.ogg: a folder' info 'music\sine.mp3' song.ogg
expect 1 'output cannot be opened' play --wav 'none\a.wav' 'music\tone_8000_mono.ogg'
expect 1 'no option --something-else $' play --something-else
expect 1 'no option --pramp; did you mean --preamp\?' play --pramp 3 a.ogg
expect 1 'no command or file plya; did you mean play\?' plya
expect 1 '--eq cannot be' play --eq 1,2,3,4,5,6,7,8,9 a.ogg
expect 1 '--eq cannot be' play --eq none.eqf a.ogg
expect 1 '--bass needs a value' play --bass
expect 1 'usage: velmora play' play
expect 0 'usage: velmora' --help
expect 2 'usage: velmora check' check
expect 2 'usage: velmora check' check --ogg
expect 2 'none\.dll: no such file' check none.dll
expect 2 'no export GetFeature' check "$programs/aygshell.dll"
expect 2 'cannot be loaded' check empty.ogg
# What is planted in the library is found; and that it loads the real one only when it is first asked.
while read -r fault code found; do
  KELVO_FAULT="$fault" expect "$code" "$found" check "$programs/faulty_library.dll"
done <<'FAULTS'
none 1 FAILED *The language is read when the library is loaded.*, 1 FAILED
play 1 FAILED *Without a file Play is refused.*, 2 FAILED
state 1 FAILED *SetState stores a state, GetState reads it.*, 2 FAILED
index 1 FAILED *An index outside the list gives 0, writes
slots 1 FAILED *The numbers 1 to 17 read their files out of a folder
feature 1 FAILED *GetFeature\(9\) is an object.*, 2 FAILED
crash 3 FAILED *Equalizer presets: it crashed \(C0000005\)
FAULTS
left="$(find "$work" -newer "$work/Жук.wma" -type f)"
[[ -z $left ]] || { echo "written unasked: $left" && failed=1; }
expect 0 'written to b\.wav.*written to b-2\.wav' play --wav b.wav music
expect 1 'written to c\.wav.*no such file.*written to c-3\.wav' play --wav c.wav 'music\mono.wma' none.ogg 'music\mono.wma'
[[ -s $work/b-2.wav && -s $work/c-3.wav ]] || { echo "no recordings" && failed=1; }
exit "$failed"
