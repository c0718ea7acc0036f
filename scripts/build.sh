#!/usr/bin/env bash
# Builds into build/<preset>/bin.
#   scripts/build.sh [--target NAME] [i686|x86_64|native|native-release|ce-arm|fuzz]...  (default: i686)
# --target    a target of the build, such as "player" or "tests/eq/all" (default: everything)
# KELVO_JOBS  how many compilers at a time (default: one a core)
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

# CMake looks after its own files once it has made a build; only the presets it does not watch.
configure() {
  local preset="$1" build="$kelvo_build/$1"
  if [[ $build/build.ninja -nt $kelvo_root/CMakePresets.json ]]; then return 0; fi
  mkdir -p "$build"
  (cd "$kelvo_root" && cmake --preset "$preset" >"$build/configure.log" 2>&1) || {
    cat "$build/configure.log" >&2
    rm -f "$build/build.ninja"
    die "cannot configure $preset"
  }
  touch "$build/build.ninja"
}

target=all
if [[ ${1:-} == --target ]]; then
  target="${2:?--target takes a name}"
  shift 2
fi
[[ $# -gt 0 ]] || set -- i686
"$kelvo_root/scripts/setup.sh"
for preset in "$@"; do
  [[ -n $preset && $preset != -* ]] || die "usage: build.sh [--target NAME] [PRESET]..."
  configure "$preset"
  say "build: $preset"
  ninja -C "$kelvo_build/$preset" -j "${KELVO_JOBS:-$(nproc)}" --quiet "$target"
done
