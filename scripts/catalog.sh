#!/usr/bin/env bash
# Shows the catalog in the reference host, with a folder as the handheld; sets up and builds what is
# missing. What the user plays in it is played when it is closed.
#   scripts/catalog.sh [DIR]      (default: the demo device)
# KELVO_SCREEN=WxH sets the size of the handheld's screen.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/device_drive.sh
. "$kelvo_root/scripts/lib/device_drive.sh"

"$kelvo_root/scripts/build.sh" i686
device="${1:-$kelvo_build/device}"
[[ $# -gt 0 ]] || "$kelvo_root/scripts/make_demo_device.sh"
[[ -d $device ]] || die "no such folder: $device"

set_device_drive i686 "$device"
exec "$kelvo_root/scripts/wine.sh" i686 "$kelvo_build/i686/bin/velmora.exe" catalog --device 'V:\'
