#!/usr/bin/env bash
# Builds every configuration and runs every test; the last lines count them.
#   scripts/test.sh [--only PRESET] [-- CTEST-OPTIONS...]
#   scripts/test.sh --fast FOLDER [-- CTEST-OPTIONS...]     the native tests in tests/FOLDER alone
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/unicorn.sh
. "$kelvo_root/scripts/lib/unicorn.sh"

if [[ ${1:-} == --fast ]]; then
  folder="tests/${2:?--fast takes a folder of tests}"
  [[ -d $kelvo_root/$folder ]] || die "there is no $folder"
  shift 2
  [[ ${1:-} != -- ]] || shift
  "$kelvo_root/scripts/build.sh" --target "$folder/all" native
  exec ctest --test-dir "$kelvo_build/native/$folder" -j "$(nproc)" --output-on-failure --no-tests=error "$@"
fi

presets=(native i686 x86_64 ce-arm device)
missing=""
if [[ ${1:-} == --only ]]; then
  presets=("${2:?--only takes a preset}")
  shift 2
fi
[[ ${1:-} != -- ]] || shift

"$kelvo_root/scripts/setup.sh"
if [[ " ${presets[*]} " == *" device "* ]] && ! install_unicorn; then
  [[ ${#presets[@]} -gt 1 ]] || die "the device's library cannot be run without the emulator"
  presets=(native i686 x86_64 ce-arm)
  missing="NOT RUN: the tests on the device's library. They need unicorn-$unicorn_version.tar.xz or .gz in a folder
that KELVO_SOURCE_ARCHIVES names, or a way to $unicorn_url"
fi

"$kelvo_root/scripts/build.sh" "${presets[@]}"

# One run over all configurations, so that one line counts them all.
all="$kelvo_build/all-tests"
mkdir -p "$all"
for preset in "${presets[@]}"; do
  printf 'subdirs("%s")\n' "$(build_folder "$preset")"
done >"$all/CTestTestfile.cmake"

# A line a build instead of one a test; all that a failing test says.
shorten() {
  awk '
    /^ *Start +[0-9]+: / { next }
    / Test +#[0-9]+: .* Passed / {
      sub(/.*#[0-9]+: /, ""); sub(/\..*/, "")
      if (!($0 in seen)) print "tests: " $0
      seen[$0] = 1
      fflush()
      next
    }
    { print; fflush() }'
}

# The tests' windows open on displays of their own, not on the user's.
unset DISPLAY
result=0
ctest --test-dir "$all" -j "${KELVO_JOBS:-$(nproc)}" --output-on-failure --no-tests=error "$@" |
  shorten || result=$?
for arch in i686 x86_64 device; do
  for manager in "" openbox; do
    KELVO_WINDOW_MANAGER="$manager" "$kelvo_root/scripts/wine.sh" "$arch" --stop >/dev/null 2>&1 || true
  done
done
[[ -z $missing ]] || say "$missing"
exit "$result"
