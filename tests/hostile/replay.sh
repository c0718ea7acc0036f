#!/usr/bin/env bash
# Replays the hostile files with a device of their own, drive W: of the project's Wine.
#   replay.sh i686|x86_64|device BIN SONG.ogg
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
# shellcheck source=scripts/lib/common.sh
. "$root/scripts/lib/common.sh"
# shellcheck source=scripts/lib/device_drive.sh
. "$root/scripts/lib/device_drive.sh"
folder="$kelvo_build/hostile-$1"
rm -rf "$folder"
mkdir -p "$folder"
set_device_drive "$1" "$folder" w
cd "$2"
"$root/scripts/wine.sh" "$1" hostile_replay.exe "$3" W:/
