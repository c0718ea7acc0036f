# shellcheck shell=bash disable=SC2154
# The drive that the catalog looks through. Sourced after common.sh.

# device_drive DIR: makes the folder drive V: of the 32-bit Wine, which knows drives by links in its
# prefix.
device_drive() {
  "$kelvo_root/scripts/wine.sh" i686 cmd /c exit
  ln -sfn "$(realpath -- "$1")" "$kelvo_build/wine-i686/dosdevices/v:"
}
