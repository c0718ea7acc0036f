# shellcheck shell=bash disable=SC2034,SC2154
# Shared by all scripts: where things are, and how they talk. Sourced, never run.

kelvo_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)"
kelvo_build="$kelvo_root/build"
kelvo_cache="${KELVO_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kelvo}"
wine32_root="$kelvo_cache/wine32-root"

# build_folder PRESET: build/device is the folder that the demonstration shows as a handheld.
build_folder() {
  if [[ $1 == device ]]; then printf '%s\n' "$kelvo_build/ce-arm-bridge"; else printf '%s\n' "$kelvo_build/$1"; fi
}

# wine_folder i686|x86_64|device: the prefix of the project's Wine. The one with a window manager is another.
wine_folder() { printf '%s\n' "$kelvo_build/wine-$1${KELVO_WINDOW_MANAGER:+-managed}"; }

say() { printf '%s\n' "$*"; }

die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# The comment at the head of each script is its help.
if [[ ${1:-} == -h || ${1:-} == --help ]]; then
  sed -n '2,/^[^#]/{/^#/s/^# \{0,1\}//p}' "$0"
  exit 0
fi

# Runs a command as root. The environment is kept: it may name a proxy.
as_root() {
  if [[ $(id -u) -eq 0 ]]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo -E "$@"
  else
    die "this needs root, and there is no sudo: $*"
  fi
}

# The lines of a data file without comments and blanks.
data_lines() { sed -e 's/[[:space:]]*#.*//' -e '/^[[:space:]]*$/d' "$1"; }

# The programs of 32-bit Wine come from the system or from a root of their own in the cache.
system_wine32() { [[ -x /usr/lib/wine/wine ]]; }
rooted_wine32() { [[ -e $wine32_root/.complete ]]; }
