#!/usr/bin/env bash
# Pictures of the player and of every page and dialog of the library, on the demo device: build/screenshots/*.png at the
# handheld's 240x320, build/screenshots/640x480/*.png on a larger screen.
#   scripts/screenshots.sh [--language XXXX]
# XXXX is a language as four hexadecimal digits whose kv_mui.XXXX.dll lies beside Kelvo.dll; its
# pictures go into build/screenshots/XXXX. Nothing else may use the project's Wine meanwhile.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/device_drive.sh
. "$kelvo_root/scripts/lib/device_drive.sh"

language=""
if [[ ${1:-} == --language && ${2:-} =~ ^[0-9A-Fa-f]{4}$ ]]; then
  language="${2^^}"
  shift 2
fi
[[ $# -eq 0 ]] || die "usage: screenshots.sh [--language XXXX]"

# take WxH FOLDER: the device is made anew, because the pictures show what is done to it.
take() {
  local device="$kelvo_build/screenshots/device"
  rm -rf "$device"
  "$kelvo_root/scripts/make_demo_device.sh" "$device" >/dev/null
  mkdir -p "$2"
  rm -f "$2"/*.png
  set_device_drive i686 "$device"
  (
    cd "$kelvo_build/i686/bin"
    KELVO_SCREEN="$1" "$kelvo_root/scripts/wine.sh" i686 ./screenshots.exe \
      "Z:${2//\//\\}" 'V:\' ${language:+"$language"}
  ) || die "the pictures of $1 could not be taken"
  say "screenshots: $(find "$2" -maxdepth 1 -name '*.png' | wc -l) in ${2#"$kelvo_root/"}"
}

"$kelvo_root/scripts/build.sh" i686
folder="$kelvo_build/screenshots${language:+/$language}"
take 240x320 "$folder"
take 640x480 "$folder/640x480"
