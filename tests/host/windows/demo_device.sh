#!/usr/bin/env bash
# Makes the demonstration's device drive V: of the project's Wine: i686 or x86_64.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)"
# shellcheck source=scripts/lib/common.sh
. "$root/scripts/lib/common.sh"
# shellcheck source=scripts/lib/device_drive.sh
. "$root/scripts/lib/device_drive.sh"
"$root/scripts/make_demo_device.sh"
set_device_drive "$1" "$kelvo_build/device"
