# shellcheck shell=bash disable=SC2034,SC2154
# The processor's emulator for 32-bit Windows, which Debian has no package of: built from its source
# into the cache, ARM alone, for tests only. Sourced after common.sh.

unicorn_version=2.1.4
# Of the tar itself: who serves it decides how it is compressed.
unicorn_sha256=1987f348e2b11b9cd074e868287b8aad99dfe5b0a3e98e59c676cc196f001aef
unicorn_patch="$kelvo_root/tools/device_bridge/unicorn-$unicorn_version.patch"
unicorn_url="https://github.com/unicorn-engine/unicorn/archive/refs/tags/$unicorn_version.tar.gz"

# Where the library and its headers are once built. What it is built with is part of the name.
unicorn_root() {
  local inputs
  inputs="$(cat "$unicorn_patch" "$kelvo_root"/cmake/toolchain-{i686,mingw}.cmake | sha256sum)"
  printf '%s\n' "$kelvo_cache/unicorn-$unicorn_version-${inputs:0:12}"
}

# unpack_tar FILE TAR: true when it is the wanted one.
unpack_tar() {
  [[ -f $1 ]] || return 1
  case "$1" in
    *.xz) xz -dc "$1" >"$2" ;;
    *) gzip -dc "$1" >"$2" ;;
  esac && [[ $(sha256sum "$2" | cut -d' ' -f1) == "$unicorn_sha256" ]]
}

# find_unicorn TAR: the archive of the folder that the user names, or the project's own download.
find_unicorn() {
  local name="unicorn-$unicorn_version.tar" kept="$kelvo_cache/archives/unicorn-$unicorn_version.tar.gz" suffix
  for suffix in xz gz; do
    if unpack_tar "${KELVO_SOURCE_ARCHIVES:-/nowhere}/$name.$suffix" "$1"; then return 0; fi
  done
  unpack_tar "$kept" "$1" && return 0
  mkdir -p "${kept%/*}"
  say "unicorn: fetching $name.gz"
  curl --fail --silent --location --connect-timeout 10 --max-time 300 --output "$kept" "$unicorn_url" ||
    wget --quiet --timeout=10 --tries=1 --output-document="$kept" "$unicorn_url" || {
    rm -f "$kept"
    return 1
  }
  unpack_tar "$kept" "$1"
}

# build_unicorn FOLDER: source/ is there; the library and its headers come into lib/ and include/.
build_unicorn() {
  patch --quiet --directory="$1/source" --strip=1 <"$unicorn_patch" &&
    cmake -G Ninja -S "$1/source" -B "$1/build" -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_TOOLCHAIN_FILE="$kelvo_root/cmake/toolchain-i686.cmake" -DUNICORN_ARCH=arm \
      -DBUILD_SHARED_LIBS=OFF -DUNICORN_BUILD_TESTS=OFF -DUNICORN_INSTALL=OFF &&
    ninja -C "$1/build" -j "${KELVO_JOBS:-$(nproc)}" &&
    mkdir "$1/lib" &&
    cp "$1"/build/lib{unicorn-static,unicorn-common,arm-softmmu}.a "$1/lib" &&
    cp -r "$1/source/include" "$1"
}

# Leaves build/unicorn, a link to it. Does nothing twice. False when the source cannot be had: everything
# else goes on without it.
install_unicorn() {
  local root
  root="$(unicorn_root)"
  mkdir -p "$kelvo_cache" "$kelvo_build"
  # Several checkouts share the cache.
  (
    flock 9
    [[ -e $root/.complete ]] || make_unicorn "$root"
  ) 9>"$kelvo_cache/unicorn.lock" || return 1
  ln -sfn "$root" "$kelvo_build/unicorn"
}

make_unicorn() {
  local root="$1" tar="$1.new/unicorn.tar"
  rm -rf "$root.new"
  mkdir -p "$root.new/source"
  if ! find_unicorn "$tar"; then
    rm -rf "$root.new"
    say "unicorn: no source archive; name a folder with unicorn-$unicorn_version.tar.xz in KELVO_SOURCE_ARCHIVES"
    return 1
  fi
  say "unicorn: building (some minutes, once)"
  tar -xf "$tar" -C "$root.new/source" --strip-components=1 --no-same-owner
  build_unicorn "$root.new" >"$root.log" 2>&1 || die "cannot build unicorn, see $root.log"
  rm -rf "$tar" "$root.new/source" "$root.new/build" "$root"
  mv "$root.new" "$root"
  touch "$root/.complete"
}
