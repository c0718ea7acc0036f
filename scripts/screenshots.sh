#!/usr/bin/env bash
# Pictures of the player and of every page and dialog of the library, on the demo device: build/screenshots/*.png at the
# handheld's 240x320, build/screenshots/640x480/*.png on a larger screen.
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

# What moves in a picture while music plays, as rectangles: the player's display, the row that is lit in its
# list, and the list's clock. Nothing else may differ between the two libraries.
moving_parts() {
  case "$1" in
    player | player-menu | player-about) echo 4,18,271,84 10,252,258,292 127,316,222,343 ;;
    player-double) echo 8,36,543,169 20,504,517,585 254,632,445,687 ;;
    player-rolled-up) echo 10,150,258,190 127,214,222,241 ;;
  esac
}

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

# take BUILD WxH FOLDER: the device is made anew, because the pictures show what is done to it.
take() {
  local device="$kelvo_build/screenshots/device"
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

take_all() {
  local build size
  for build in "${builds[@]}"; do
    for size in "${sizes[@]}"; do take "$build" "$size" "$(folder_of "$build" "$size")"; done
  done
}

# differing: the pictures that are not the same with both libraries, one a line.
differing() {
  local size picture name part
  for size in "${sizes[@]}"; do
    for picture in "$(folder_of i686 "$size")"/*.png; do
      name="$(basename "$picture" .png)"
      local -a mask=(-fill black)
      for part in $(moving_parts "$name"); do mask+=(-draw "rectangle $part"); done
      [[ $(convert "$picture" "${mask[@]}" rgb:- | sha256sum) == \
        $(convert "$(folder_of device "$size")/$name.png" "${mask[@]}" rgb:- | sha256sum) ]] ||
        printf '%s\n' "$size/$name"
    done
  done
}

sizes=(240x320 640x480)
"$kelvo_root/scripts/build.sh" "${builds[@]}"
take_all
if [[ ${#builds[@]} -gt 1 ]]; then
  different="$(differing)"
  if [[ -n $different ]]; then
    # A busy machine is late with painting now and then, but hardly twice with the same picture.
    say "screenshots: once more, because these differ:" "$different"
    take_all
    different="$(comm -12 <(sort <<<"$different") <(differing | sort))"
  fi
  [[ -z $different ]] || die "the device's library shows other pictures: $different"
  say "screenshots: the same with both libraries, but for what moves"
fi
