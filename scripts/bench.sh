#!/usr/bin/env bash
# Builds at full speed and runs the benchmarks; each prints its figures and its goal.
#   scripts/bench.sh [NAME...]      (NAME: vorbis, effects, ... default: all)
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

"$kelvo_root/scripts/build.sh" native-release
ninja -C "$kelvo_build/native-release" --quiet benches
cd "$kelvo_build/native-release/bin"
for program in bench_*; do
  if [[ $# -gt 0 && " $* " != *" ${program#bench_} "* ]]; then continue; fi
  say "== $program"
  "./$program"
done
# With the system's own controls, on a display of its own.
if [[ $# -eq 0 || " $* " == *" catalog "* ]]; then
  "$kelvo_root/scripts/build.sh" --target benches i686
  say "== bench_catalog"
  (cd "$kelvo_build/i686/bin" && unset DISPLAY && "$kelvo_root/scripts/wine.sh" i686 ./bench_catalog.exe)
fi
for script in "$kelvo_root"/tests/bench/*.sh; do
  [[ -e $script ]] || continue
  name="$(basename "$script" .sh)"
  if [[ $# -gt 0 && " $* " != *" $name "* ]]; then continue; fi
  say "== $name"
  "$script"
done
