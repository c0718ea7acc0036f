#!/usr/bin/env bash
# Makes what is handed out, in build/release: an archive for a device, one for a desktop, one for authors of
# hosts, and SHA256SUMS. A commit gives the same bytes wherever it is checked out, with the same packages.
#   scripts/release.sh [--packed-only] [FOLDER]
# --packed-only      packs what is built already
# FOLDER             instead of build/release
# SOURCE_DATE_EPOCH  the files' time (default: the commit's)
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
cd "$kelvo_root"

builds=1
if [[ ${1:-} == --packed-only ]]; then
  builds=0
  shift
fi
out="${1:-$kelvo_build/release}"
version="$(sed -n 's/^project(Kelvo VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)"
[[ -n $version ]] || die "CMakeLists.txt names no version"
SOURCE_DATE_EPOCH="${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}"
export SOURCE_DATE_EPOCH
grep -q "version $version installed" docs/on-a-device.md || die "docs/on-a-device.md names another version"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
export TMPDIR="$work" # not every program used here clears up

if [[ $builds -eq 1 ]]; then
  for preset in i686 x86_64 ce-arm; do scripts/build.sh --target release "$preset"; done
fi

# put SOURCE... FOLDER: files, or folders with all that is in them, into a folder of the archive that is
# being made.
put() {
  local folder="$work/$archive/${*: -1}"
  mkdir -p "$folder"
  cp -rL "${@:1:$#-1}" "$folder"
}

# A page as a text for Windows.
put_readme() { sed 's/$/\r/' "$1" >"$work/$archive/README.txt"; }

# What is linked into the programs comes with these terms.
put_terms() {
  local name
  put LICENSE .
  mkdir -p "$work/$archive/licences"
  for name in tremor ogg; do cp "build/sources/$name/COPYING" "$work/$archive/licences/$name.txt"; done
  cp build/sources/zlib/LICENSE "$work/$archive/licences/zlib.txt"
  [[ $archive == *-device ]] ||
    cp /usr/share/doc/mingw-w64-common/copyright "$work/$archive/licences/mingw-w64.txt"
}

# Without the names of functions, which only a debugger needs; and without a new time of linking.
strip_programs() {
  local file
  find "$work/$archive/$1" -maxdepth 1 -name '*.exe' -o -maxdepth 1 -name '*.dll' ! -name 'kv_mui.*' |
    while IFS= read -r file; do "$2-w64-mingw32-strip" -p "$file"; done
}

device() {
  local bin=build/ce-arm/bin
  archive="kelvo-$version-device"
  put "$bin/Kelvo.dll" $bin/kv_mui.????.dll .
  cp $bin/selftest.exe "$work/$archive/Kelvo self-test.exe"
  # (Drawn and written by the desktop's build: they are the same for all.)
  put build/i686/bin/presets/*.eqf presets
  put build/i686/bin/skins/default.zip skins
  put_readme docs/on-a-device.md
  put_terms
}

# The languages that are handed out; the tests have more.
languages() {
  local file
  for file in build/ce-arm/bin/kv_mui.????.dll; do printf '%s\n' "${file##*/}"; done
}

desktop() {
  local arch bin name
  archive="kelvo-$version-desktop"
  for arch in i686 x86_64; do
    bin="build/$arch/bin"
    for name in Kelvo aygshell coredll atlce300 WMPCmn; do put "$bin/$name.dll" $arch; done
    for name in velmora kelvotool selftest; do put "$bin/$name.exe" $arch; done
    for name in $(languages); do put "$bin/$name" $arch; done
    put "$bin"/presets/*.eqf "$arch/presets"
    put "$bin/skins/default.zip" "$arch/skins"
    strip_programs $arch $arch
  done
  put_readme docs/on-a-desktop.md
  put_terms
}

sdk() {
  local arch name
  archive="kelvo-$version-sdk"
  put include/kelvo include
  put host/minimal host
  put docs/*.md docs
  put docs/formats docs/pictures docs
  put src/res/resource_ids.h src/res/languages src/res
  put pocketpc/README.md pocketpc
  # `velmora check` holds a library against the contract.
  for arch in i686 x86_64; do
    for name in velmora.exe Kelvo.dll aygshell.dll coredll.dll atlce300.dll WMPCmn.dll; do
      put "build/$arch/bin/$name" "bin/$arch"
    done
    strip_programs bin/$arch $arch
    # (The build's own has the build's folder in it.)
    (cd "$work/$archive/bin/$arch" && "$arch-w64-mingw32-dlltool" --temp-prefix coredll --kill-at \
      --input-def "$kelvo_build/$arch/pocketpc/coredll/coredll.def" --output-lib libcoredll.a)
  done
  put_readme docs/sdk.md
  put_terms
}

mkdir -p "$out"
rm -f "$out"/kelvo-*.zip "$out/SHA256SUMS"
for make in device desktop sdk; do
  $make
  python3 -B scripts/lib/pack.py "$out/$archive.zip" "$work" "$archive"
done
(cd "$out" && sha256sum kelvo-*.zip >SHA256SUMS)
(cd "$out" && wc -c kelvo-*.zip SHA256SUMS)
