#!/usr/bin/env bash
# Opens the player, the reference host, in its windows; sets up and builds what is missing.
#   scripts/run.sh [--device-binary] [FILE...]
# FILE is an .ogg, a .wma or a folder. Without any, the player goes on where it was left; the first
# time with a short tune that the project makes. Its catalog shows the demo device.
#
# On the console, without a display and when there are options:
#   scripts/run.sh [--device-binary] [--wav OUT.wav] [--eq V,V,...|NAME.eqf] [--preamp V] [--bass V] [FILE...]
# The ten bands of --eq and --preamp go from 0 (boost) to 27 (cut), --bass from 0 to 4. Without a
# sound device the music goes to OUT.wav, or to build/played.wav.
#
# --device-binary: the library is the device's own file, on an emulator of its processor.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/device_drive.sh
. "$kelvo_root/scripts/lib/device_drive.sh"
# shellcheck source=scripts/lib/wine_env.sh
. "$kelvo_root/scripts/lib/wine_env.sh"

# The Windows program sees the machine's root folder as drive Z:.
windows_path() {
  local path
  path="$(realpath -m -- "$1")"
  printf 'Z:%s\n' "${path//\//\\}"
}

velmora() { "$kelvo_root/scripts/wine.sh" "$build" "$programs/velmora.exe" "$@"; }

sample="$kelvo_build/media/sample.ogg"

# in_windows [FILE...]
in_windows() {
  "$kelvo_root/scripts/make_demo_device.sh"
  set_device_drive "$build" "$kelvo_build/device"
  [[ $# -gt 0 || -f $programs/velmora.session ]] || set -- "$sample"
  local file
  local -a words=(player --device 'V:\')
  for file in "$@"; do words+=("$(windows_path "$file")"); done
  velmora "${words[@]}"
}

# on_console [OPTION VALUE]... [FILE...]
on_console() {
  local wav="" file result=0
  local -a words=(play)
  while [[ ${1:-} == --* ]]; do
    case "$1" in
      --wav)
        [[ -n ${2:-} ]] || die "$1 takes a value"
        wav="$2"
        shift
        ;;
      --eq | --preamp | --bass)
        words+=("$1" ${2:+"$2"})
        [[ $# -eq 1 ]] || shift
        ;;
      *) words+=("$1") ;; # it will say that there is none
    esac
    shift
  done
  [[ $# -gt 0 ]] || set -- "$sample"
  [[ -n $wav ]] || has_sound || wav="$kelvo_build/played.wav"
  [[ -z $wav ]] || words+=(--wav "$(windows_path "$wav")")
  for file in "$@"; do words+=("$(windows_path "$file")"); done
  local started="$kelvo_build/.played"
  touch "$started"
  velmora "${words[@]}" || result=$?
  [[ -z $wav ]] || find "$(dirname -- "$wav")" -maxdepth 1 -name "$(basename -- "${wav%.wav}")*" \
    -newer "$started" -printf 'the music is in %p\n' | sort
  return "$result"
}

build=i686
if [[ ${1:-} == --device-binary ]]; then
  build=device
  shift
  "$kelvo_root/scripts/build.sh" device
else
  "$kelvo_root/scripts/build.sh" --target player i686
fi
programs="$(build_folder "$build")/bin"
if [[ -n ${DISPLAY:-} && ${1:-} != --* ]]; then
  in_windows "$@"
else
  on_console "$@"
fi
