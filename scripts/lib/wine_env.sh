# shellcheck shell=bash disable=SC2034,SC2154
# The environment of the project's Wine for one build: i686, x86_64, or device, whose programs are
# those of i686 and have a prefix of their own. Sourced after common.sh.

# first_program NAME...: the path of the first that exists, inside the 32-bit root where that is used.
first_program() {
  local inside="" name
  [[ $wine_rooted == no ]] || inside="$wine32_root"
  for name in "$@"; do
    if [[ $name == /* ]]; then
      if [[ -x $inside$name ]]; then
        printf '%s\n' "$name"
        return
      fi
    elif [[ -z $inside ]] && command -v "$name"; then
      return
    fi
  done
  die "no Wine for $wine_arch; run scripts/setup.sh"
}

# Sets wine_arch, wine_prefix, wine_run (a folder of locks and notes beside the prefix), wine_rooted,
# wine_loader and wine_server.
choose_wine() {
  wine_arch="$1"
  wine_prefix="$(wine_folder "$wine_arch")"
  wine_run="$wine_prefix.run"
  wine_rooted=no
  case "$wine_arch" in
    i686 | device)
      if ! system_wine32; then
        rooted_wine32 || die "no 32-bit Wine; run scripts/setup.sh"
        wine_rooted=yes
      fi
      wine_loader="$(first_program /usr/lib/wine/wine wine)"
      wine_server="$(first_program /usr/lib/wine/wineserver32 wineserver)"
      ;;
    x86_64)
      wine_loader="$(first_program /usr/lib/wine/wine64 wine64 wine)"
      wine_server="$(first_program /usr/lib/wine/wineserver64 wineserver)"
      ;;
    *) die "the build is i686, x86_64 or device, not $wine_arch" ;;
  esac
}

# True where sound can be heard: by a sound server or a sound card.
has_sound() {
  local runtime="${XDG_RUNTIME_DIR:-/run/user/$(id -u)}"
  [[ -n ${PULSE_SERVER:-} || -n ${PIPEWIRE_REMOTE:-} || -e /dev/snd/controlC0 ||
    -S $runtime/pulse/native || -S $runtime/pipewire-0 ]]
}

# Nothing here may reach the user's own prefix, home folder or menus.
export_wine_environment() {
  export WINEPREFIX="$wine_prefix" WINESERVER="$wine_server"
  export WINEDEBUG="${WINEDEBUG:--all}"
  local overrides="mscoree,mshtml=;winemenubuilder.exe="
  # Without one, the sound system would complain in twenty lines whenever a program looks for it.
  has_sound || overrides+=";winealsa.drv,winepulse.drv="
  export WINEDLLOVERRIDES="$overrides${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"
  export HOME="$wine_run/home" GST_REGISTRY="$wine_run/gstreamer.bin"
  # The one UTF-8 locale that is everywhere: texts and formats do not depend on the user's.
  export LC_ALL=C.UTF-8
  if [[ $wine_arch == x86_64 ]]; then export WINEARCH=win64; else export WINEARCH=win32; fi
  unset WINELOADER XDG_CACHE_HOME XDG_CONFIG_HOME XDG_DATA_HOME
}

# wine_command SERVER_PID PROGRAM [ARGS...]: prints the words, each ended by NUL, that run the program
# in the current directory, in the server's own view of the file system.
wine_command() {
  local server_pid="$1"
  shift
  if [[ $wine_rooted == yes ]]; then
    local -a enter=(nsenter --target "$server_pid" --mount --root)
    [[ $(id -u) -eq 0 ]] || enter+=(--user --preserve-credentials)
    printf '%s\0' "${enter[@]}" /usr/bin/env -C "$PWD" "$wine_loader" "$@"
  else
    printf '%s\0' "$wine_loader" "$@"
  fi
}
