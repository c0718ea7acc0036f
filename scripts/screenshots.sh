#!/usr/bin/env bash
# Pictures of the player and of every page and dialog of the library, on the demo device: build/screenshots/*.png at the
# handheld's 240x320, build/screenshots/640x480/*.png on a larger screen; and the same on a desktop with a
# window manager, in build/screenshots/framed.
#   scripts/screenshots.sh [--device-binary] [--language XXXX]
# XXXX is a language as four hexadecimal digits whose kv_mui.XXXX.dll lies beside Kelvo.dll; its
# pictures go into build/screenshots/XXXX. Nothing else may use the project's Wine meanwhile.
# --device-binary: with the device's own library as well, into build/screenshots/device-binary, and
# compares the two pixel by pixel.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/device_drive.sh
. "$kelvo_root/scripts/lib/device_drive.sh"

builds=(i686)
language=""
while [[ $# -gt 0 ]]; do
  if [[ $1 == --device-binary ]]; then
    builds+=(device)
    shift
  elif [[ $1 == --language && ${2:-} =~ ^[0-9A-Fa-f]{4}$ ]]; then
    language="${2^^}"
    shift 2
  else
    die "usage: screenshots.sh [--device-binary] [--language XXXX]"
  fi
done

# take BUILD WxH FOLDER [WINDOW-MANAGER]: the device is made anew, because the pictures show what is done to it.
take() {
  local device="$kelvo_build/screenshots/device"
  local -x KELVO_WINDOW_MANAGER="${4:-}"
  rm -rf "$device"
  "$kelvo_root/scripts/make_demo_device.sh" "$device" >/dev/null
  mkdir -p "$3"
  rm -f "$3"/*.png
  set_device_drive "$1" "$device"
  (
    cd "$(build_folder "$1")/bin"
    KELVO_SCREEN="$2" "$kelvo_root/scripts/wine.sh" "$1" ./screenshots.exe \
      "Z:${3//\//\\}" 'V:\' ${language:+"$language"}
  ) || die "the pictures of $2 could not be taken"
  say "screenshots: $(find "$3" -maxdepth 1 -name '*.png' | wc -l) in ${3#"$kelvo_root/"}"
}

# folder_of BUILD SIZE
folder_of() {
  local folder="$kelvo_build/screenshots"
  [[ $1 != device ]] || folder+=/device-binary
  folder+="${language:+/$language}"
  if [[ $2 == 240x320 ]]; then printf '%s\n' "$folder"; else printf '%s\n' "$folder/$2"; fi
}

# take_size SIZE: with each library; false when they do not show the same.
take_size() {
  local build
  for build in "${builds[@]}"; do take "$build" "$1" "$(folder_of "$build" "$1")"; done
  [[ ${#builds[@]} -eq 1 ]] ||
    "$kelvo_root/scripts/lib/compare_pictures.py" "$(folder_of i686 "$1")" "$(folder_of device "$1")"
}

if [[ ${#builds[@]} -eq 1 ]]; then
  "$kelvo_root/scripts/build.sh" --target screenshots i686
else
  "$kelvo_root/scripts/build.sh" "${builds[@]}"
fi
result=0
for size in 240x320 640x480; do take_size "$size" || result=1; done
framed="$kelvo_build/screenshots/framed${language:+/$language}"
take i686 240x320 "$framed" openbox
take i686 640x480 "$framed/640x480" openbox
exit "$result"
