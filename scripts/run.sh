#!/usr/bin/env bash
# Plays files through the library in the reference host; sets up and builds what is missing.
#   scripts/run.sh [--wav OUT.wav] [--eq V,V,...|NAME.eqf] [--preamp V] [--bass V] [FILE...]
# FILE is an .ogg or a .wma; the default is a short tune that the project makes. The ten bands of
# --eq and --preamp go from 0 (boost) to 27 (cut), --bass from 0 to 4. Without a sound device the
# music goes to OUT.wav, or to build/played.wav.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/register_player.sh
. "$kelvo_root/scripts/lib/register_player.sh"

# The Windows program sees the machine's root folder as drive Z:.
windows_path() {
  local path
  path="$(realpath -m -- "$1")"
  printf 'Z:%s\n' "${path//\//\\}"
}

has_sound() { [[ -n ${PULSE_SERVER:-} || -n ${PIPEWIRE_REMOTE:-} || -e /dev/snd/controlC0 ]]; }

wav=""
words=(play)
while [[ ${1:-} == --* ]]; do
  [[ -n ${2:-} ]] || die "$1 takes a value"
  if [[ $1 == --wav ]]; then wav="$2"; else words+=("$1" "$2"); fi
  shift 2
done
[[ $# -gt 0 ]] || set -- "$kelvo_build/media/sample.ogg"
"$kelvo_root/scripts/build.sh" i686
register_player i686
[[ -n $wav ]] || has_sound || wav="$kelvo_build/played.wav"

[[ -z $wav ]] || words+=(--wav "$(windows_path "$wav")")
for file in "$@"; do words+=("$(windows_path "$file")"); done
result=0
"$kelvo_root/scripts/wine.sh" i686 "$kelvo_build/i686/bin/velmora.exe" "${words[@]}" || result=$?
[[ -z $wav || $result -ne 0 ]] || say "the music is in $wav"
exit "$result"
