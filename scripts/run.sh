#!/usr/bin/env bash
# Plays files through the library in the reference host; sets up and builds what is missing.
#   scripts/run.sh [--wav OUT.wav] [FILE...]      (default: a short tune that the project makes)
# Without a sound device the music goes to OUT.wav, or to build/played.wav.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

# The Windows program sees the machine's root folder as drive Z:.
windows_path() {
  local path
  path="$(realpath -m -- "$1")"
  printf 'Z:%s\n' "${path//\//\\}"
}

has_sound() { [[ -n ${PULSE_SERVER:-} || -n ${PIPEWIRE_REMOTE:-} || -e /dev/snd/controlC0 ]]; }

wav=""
if [[ ${1:-} == --wav ]]; then
  wav="${2:?--wav takes a file}"
  shift 2
fi
[[ $# -gt 0 ]] || set -- "$kelvo_build/media/sample.ogg"
"$kelvo_root/scripts/build.sh" i686
[[ -n $wav ]] || has_sound || wav="$kelvo_build/played.wav"

words=(play)
[[ -z $wav ]] || words+=(--wav "$(windows_path "$wav")")
for file in "$@"; do words+=("$(windows_path "$file")"); done
result=0
"$kelvo_root/scripts/wine.sh" i686 "$kelvo_build/i686/bin/velmora.exe" "${words[@]}" || result=$?
[[ -z $wav || $result -ne 0 ]] || say "the music is in $wav"
exit "$result"
