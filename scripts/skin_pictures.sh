#!/usr/bin/env bash
# Draws the pictures of docs/skins.md, in docs/pictures/skin: the bitmaps of the default skin with the
# pieces that the player shows, found by having it draw its windows.
#   scripts/skin_pictures.sh [--check]
# --check: draws nothing, and fails when a picture there is another.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
"$kelvo_root/scripts/build.sh" --target skin_regions native >/dev/null
"$kelvo_root/scripts/build.sh" --target kelvo_skin native >/dev/null
mkdir -p "$kelvo_root/docs/pictures/skin"
exec python3 -B "$kelvo_root/tools/skin_regions/draw.py" "$@" "$kelvo_build/native/bin/skin_regions" \
  "$kelvo_build/native/bin/skins/default" "$kelvo_root/docs/pictures/skin"
