#!/usr/bin/env bash
# Puts the 32-bit build's programs, stand-ins and data beside the bridge.
#   link_programs.sh I686_BIN DEVICE_BIN BIN
# The library and its languages are the device's: a language, resources alone, only says in its header
# that it is this machine's, because this machine's loader asks.
set -euo pipefail
from="$1" device="$2" to="$3"
tools="$(dirname "${BASH_SOURCE[0]}")"

cd "$from"
mkdir -p "$to/bare"
cp -lf ./*.exe "$to"
find . -maxdepth 1 -name '*.dll' ! -name Kelvo.dll -exec cp -lf -t "$to" {} +
cp -rlf presets skins "$to"
cp -lf bare/bare_library_test.exe coredll.dll aygshell.dll "$to/bare"
cp -lf "$to/Kelvo.dll" "$to/Kelvo_arm.dll" "$to/bare"
for language in "$device"/kv_mui.*.dll; do
  rm -f "$to/${language##*/}"
  python3 -B "$tools/desktop_resources.py" "$language" "$to/${language##*/}"
done
