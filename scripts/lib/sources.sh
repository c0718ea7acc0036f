# shellcheck shell=bash disable=SC2034,SC2154
# The source archives that are compiled in. Sourced after common.sh and apt.sh.

source_lists() {
  local uri keyring suite="$1" state="$kelvo_cache/apt"
  read -r uri keyring < <(debian_mirror) || die "no Debian mirror found in apt's sources"
  mkdir -p "$state/lists/partial"
  local options=""
  [[ $keyring == - ]] || options="[signed-by=$keyring] "
  printf 'deb-src %s%s %s main\n' "$options" "$uri" "$suite" >"$state/sources.list"
}

# apt with a source list and list state of its own: the machine's are left alone.
source_apt() {
  local state="$kelvo_cache/apt"
  apt-get -qq -o Dir::Etc::sourcelist="$state/sources.list" -o Dir::Etc::sourceparts=- \
    -o Dir::State::lists="$state/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache= \
    -o APT::Sandbox::User="$(id -un)" "$@"
}

matches() { [[ -f $1 ]] && [[ $(sha256sum "$1" | cut -d' ' -f1) == "$2" ]]; }

# Leaves the path of the wanted archive in $archive_path.
find_archive() {
  local package="$1" archive="$2" sha256="$3" suite="$4" store="$kelvo_cache/archives"
  if [[ -n ${KELVO_SOURCE_ARCHIVES:-} && -f $KELVO_SOURCE_ARCHIVES/$archive ]]; then
    archive_path="$KELVO_SOURCE_ARCHIVES/$archive"
    matches "$archive_path" "$sha256" || die "$archive_path is not the archive with SHA-256 $sha256"
    return
  fi
  archive_path="$store/$archive"
  matches "$archive_path" "$sha256" && return
  say "sources: fetching $archive"
  mkdir -p "$store"
  rm -f "$archive_path"
  source_lists "$suite"
  if [[ $source_lists_fresh == no ]]; then
    source_apt update || die "cannot read the mirror's list of sources"
    source_lists_fresh=yes
  fi
  (cd "$store" && source_apt source --download-only --tar-only "$package") >/dev/null ||
    die "cannot fetch $archive; put it into a folder and name that in KELVO_SOURCE_ARCHIVES"
  matches "$archive_path" "$sha256" ||
    die "the mirror has another version of $package than $archive;" \
      "put that archive into a folder and name the folder in KELVO_SOURCE_ARCHIVES"
}

unpack_sources() {
  local folder package archive sha256 target suite="" archive_path unpacked=0 source_lists_fresh=no
  while read -r folder package archive sha256; do
    if [[ $folder == suite ]]; then
      suite="$package"
      continue
    fi
    target="$kelvo_build/sources/$folder"
    if [[ -f $target/.sha256 && $(<"$target/.sha256") == "$sha256" ]]; then continue; fi
    find_archive "$package" "$archive" "$sha256" "$suite"
    say "sources: unpacking $archive into build/sources/$folder"
    rm -rf "$target" "$target.new"
    mkdir -p "$target.new"
    tar -xf "$archive_path" -C "$target.new" --strip-components=1 --no-same-owner
    printf '%s\n' "$sha256" >"$target.new/.sha256"
    mv "$target.new" "$target"
    unpacked=$((unpacked + 1))
  done < <(data_lines "$kelvo_root/scripts/sources.txt")
  [[ $unpacked -gt 0 ]] || say "sources: in place"
}
