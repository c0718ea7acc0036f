# shellcheck shell=bash disable=SC2154
# A folder as the handheld. Sourced after common.sh.

# set_device_drive i686|x86_64|device FOLDER [LETTER]: drive v: of the project's Wine, or another. Wine knows drives by links in
# its prefix, which is there after its first program.
set_device_drive() {
  "$kelvo_root/scripts/wine.sh" "$1" cmd /c exit
  ln -sfn "$(realpath -- "$2")" "$(wine_folder "$1")/dosdevices/${3:-v}:"
}
