#!/usr/bin/env bash
# Builds into build/<preset>/bin.
#   scripts/build.sh [i686|x86_64|native|native-release|ce-arm|fuzz]...   (default: i686)
# KELVO_JOBS  how many compilers at a time (default: one a core)
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build() {
  local preset="$1" log="$kelvo_build/$1/configure.log"
  mkdir -p "$kelvo_build/$preset"
  (cd "$kelvo_root" && cmake --preset "$preset" >"$log" 2>&1) || {
    cat "$log" >&2
    die "cannot configure $preset"
  }
  say "build: $preset"
  ninja -C "$kelvo_build/$preset" -j "${KELVO_JOBS:-$(nproc)}" --quiet
}

[[ $# -gt 0 ]] || set -- i686
"$kelvo_root/scripts/setup.sh"
for preset in "$@"; do
  [[ -n $preset && $preset != -* ]] || die "usage: build.sh [PRESET]..."
  build "$preset"
done
