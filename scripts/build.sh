#!/usr/bin/env bash
# Builds into build/<preset>/bin.
#   scripts/build.sh [--target NAME] [i686|x86_64|native|native-release|ce-arm|device|fuzz]...
# Without a name it builds i686. device builds i686 and ce-arm first: it runs the one's library in the
# other's programs, in build/ce-arm-bridge/bin.
# --target    a target of the build, such as "player" or "tests/eq/all" (default: everything)
# KELVO_JOBS  how many compilers at a time (default: one a core)
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/unicorn.sh
. "$kelvo_root/scripts/lib/unicorn.sh"

# CMake looks after its own files once it has made a build; only the presets it does not watch.
configure() {
  local preset="$1" build
  build="$(build_folder "$1")"
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
if [[ " $* " == *" device "* ]]; then
  install_unicorn || die "the device's library cannot be run without the emulator"
  for needed in ce-arm i686; do [[ " $* " == *" $needed "* ]] || set -- "$needed" "$@"; done
fi
for preset in "$@"; do
  [[ -n $preset && $preset != -* ]] || die "usage: build.sh [--target NAME] [PRESET]..."
  configure "$preset"
  say "build: $preset"
  ninja -C "$(build_folder "$preset")" -j "${KELVO_JOBS:-$(nproc)}" --quiet "$target"
done
