# shellcheck shell=bash disable=SC2034,SC2154
# Installs the 32-bit Wine: from the system's archive or, where apt finds no way, into an i386 root
# of its own in the cache folder. Sourced after common.sh and apt.sh.

i386_packages() {
  packages_for wine wine32 | sed 's/$/:i386/'
  packages_for font
}

# True when apt could install the 32-bit Wine without removing anything.
apt_can_install_wine32() {
  local -a wanted
  mapfile -t wanted < <(i386_packages)
  apt-get -s --no-remove --no-install-recommends install "${wanted[@]}" >/dev/null 2>&1
}

install_wine32_packages() {
  local -a wanted
  mapfile -t wanted < <(i386_packages)
  say "32-bit Wine: installing it from the system's archive"
  apt_get install --no-install-recommends -y "${wanted[@]}" >/dev/null && system_wine32
}

# Adds the architecture only for as long as it helps.
try_wine32_packages() {
  local added=no
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    say "32-bit Wine: adding the i386 architecture to apt"
    as_root dpkg --add-architecture i386
    added=yes
    apt_updated=no
    apt_update_once
  fi
  if apt_can_install_wine32 && install_wine32_packages; then return 0; fi
  if [[ $added == yes ]]; then
    say "32-bit Wine: apt cannot install it, taking the i386 architecture out again"
    as_root dpkg --remove-architecture i386 || true
  fi
  return 1
}

make_wine32_root() {
  local uri keyring include new="$wine32_root.new"
  read -r uri keyring < <(debian_mirror) || die "no Debian mirror found in apt's sources"
  include="$(packages_for wine wine32 font | paste -sd,)"
  say "32-bit Wine: making an i386 root in $wine32_root (some minutes)"
  mkdir -p "$kelvo_cache"
  as_root rm -rf --one-file-system "$new"
  local -a options=(--arch=i386 --variant=minbase "--include=$include")
  [[ $keyring == - ]] || options+=("--keyring=$keyring")
  as_root debootstrap "${options[@]}" "$(debian_codename)" "$new" "$uri" \
    >"$kelvo_cache/wine32-root.log" 2>&1 ||
    die "debootstrap failed, see $kelvo_cache/wine32-root.log"
  as_root rm -rf "$new/var/cache/apt/archives" "$new/var/lib/apt/lists"
  # Mount points for the machine's own folders, made while this is root.
  local folder
  for folder in /*/; do as_root mkdir -p "$new$folder"; done
  printf '%s\n' "$include" | as_root tee "$new/.complete" >/dev/null
  as_root rm -rf --one-file-system "$wine32_root"
  as_root mv "$new" "$wine32_root"
}

install_wine32() {
  if system_wine32; then
    say "32-bit Wine: installed in the system"
  elif rooted_wine32 &&
    [[ $(<"$wine32_root/.complete") == "$(packages_for wine wine32 font | paste -sd,)" ]]; then
    say "32-bit Wine: has a root in $wine32_root"
  elif ! rooted_wine32 && try_wine32_packages; then
    say "32-bit Wine: installed"
  else
    make_wine32_root
  fi
}
