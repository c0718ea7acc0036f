#!/usr/bin/env bash
# Installs and makes what the build and the tests need; does nothing twice.
#   scripts/setup.sh
# What is removed by hand afterwards, a package for example, comes back when build/.setup is deleted.
# KELVO_CACHE            folder for what all checkouts share (default: ~/.cache/kelvo)
# KELVO_SOURCE_ARCHIVES  folder with source archives that are there already
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/apt.sh
. "$kelvo_root/scripts/lib/apt.sh"
# shellcheck source=scripts/lib/wine32.sh
. "$kelvo_root/scripts/lib/wine32.sh"
# shellcheck source=scripts/lib/sources.sh
. "$kelvo_root/scripts/lib/sources.sh"

install_packages() {
  local -a wanted missing
  mapfile -t wanted < <(packages_for host wine font)
  mapfile -t missing < <(missing_packages "${wanted[@]}")
  if [[ ${#missing[@]} -eq 0 ]]; then
    say "packages: all ${#wanted[@]} installed"
    return
  fi
  apt_update_once
  say "packages: installing ${missing[*]}"
  apt_get install --no-install-recommends -y "${missing[@]}" >/dev/null
}

# What set-up depends on; while it is as it was the last time, there is nothing to do.
inputs() {
  cat "$kelvo_root"/scripts/{packages.txt,sources.txt,setup.sh,make_media.sh,make_demo_device.sh} \
    "$kelvo_root"/scripts/lib/*.sh | sha256sum
}

is_done() {
  [[ -f $kelvo_build/.setup && $(<"$kelvo_build/.setup") == "$(inputs)" &&
    -d $kelvo_build/sources && -d $kelvo_build/media && -d $kelvo_build/device ]] &&
    { system_wine32 || rooted_wine32; }
}

main() {
  if is_done; then return 0; fi
  [[ -r /etc/debian_version ]] || die "this installs Debian packages; see scripts/packages.txt"
  mkdir -p "$kelvo_cache" "$kelvo_build"
  # One set-up at a time: several checkouts share the cache.
  exec 9>"$kelvo_cache/setup.lock"
  flock 9
  install_packages
  install_wine32
  unpack_sources
  "$kelvo_root/scripts/make_media.sh"
  "$kelvo_root/scripts/make_demo_device.sh"
  inputs >"$kelvo_build/.setup"
}

main "$@"
