#!/usr/bin/env bash
# Keeps the Wine of one architecture ready: its display, its server and its prefix. Programs start
# fast while it lives; it ends by itself when no program has run for some minutes, or when the
# checkout's build folder goes away. scripts/wine.sh starts it in the background.
#   wine_keeper.sh ARCH WANTED_DISPLAY     (WANTED_DISPLAY empty: a display of its own)
#
# In the run folder: `keeper` is locked for as long as this lives; `users` is locked (shared) by every
# running program; `lock` by whoever starts or stops something; `ready` holds the notes for programs.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
# shellcheck source=scripts/lib/wine_env.sh
. "$kelvo_root/scripts/lib/wine_env.sh"

readonly idle_seconds=300
readonly prefix_version=4
server_pid="" display_pid="" manager_pid=""

# The pipe ends when the display is ready or gone.
start_display() {
  local number
  export XAUTHORITY="$wine_run/xauthority"
  rm -f "$XAUTHORITY"
  xauth -q -f "$XAUTHORITY" add ":0" . "$(mcookie)" 2>/dev/null
  rm -f "$wine_run/display"
  Xvfb -displayfd 6 -screen 0 1280x1024x24 -nolisten tcp -auth "$XAUTHORITY" \
    6>"$wine_run/display" 7>&- &
  display_pid=$!
  until [[ -s $wine_run/display ]]; do
    kill -0 "$display_pid" 2>/dev/null || die "Xvfb did not start"
    sleep 0.05
  done
  number="$(<"$wine_run/display")"
  # The server takes the cookie whatever the number beside it; programs look for their number.
  xauth -q -f "$XAUTHORITY" add ":$number" . \
    "$(xauth -q -f "$XAUTHORITY" list | awk 'NR == 1 { print $3 }')"
  export DISPLAY=":$number"
  [[ -z ${KELVO_WINDOW_MANAGER:-} ]] || start_manager
}

# The window manager that KELVO_WINDOW_MANAGER names, as a desktop has one. It ends with the display.
start_manager() {
  "$KELVO_WINDOW_MANAGER" >/dev/null 2>&1 7>&- &
  manager_pid=$!
  until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q '#'; do
    kill -0 "$manager_pid" 2>/dev/null || die "$KELVO_WINDOW_MANAGER did not start"
    sleep 0.05
  done
}

start_server() {
  local -a server=("$wine_server" -f -p)
  if [[ $wine_rooted == yes ]]; then
    local -a namespace=(unshare --mount)
    [[ $(id -u) -eq 0 ]] || namespace+=(--map-root-user)
    server=("${namespace[@]}" "$kelvo_root/scripts/lib/wine32_enter.sh" "$wine32_root" \
      "$kelvo_root" "${server[@]}")
  fi
  "${server[@]}" 7>&- &
  server_pid=$!
  until [[ $(<"/proc/$server_pid/comm") == wineserver* ]]; do
    kill -0 "$server_pid" 2>/dev/null || die "the Wine server did not start"
    sleep 0.05
  done
}

# Runs a Windows program beside the server.
in_wine() {
  local -a command
  mapfile -d '' -t command < <(wine_command "$server_pid" "$@")
  "${command[@]}" 7>&-
}

set_registry() { in_wine reg add "$1" /v "$2" /t "$3" /d "$4" /f; }

# Debian's Wine does not look into the folder where its own fonts are; without them Tahoma and System
# would be any font of the machine.
link_fonts() {
  mkdir -p "$wine_prefix/drive_c/windows/Fonts"
  ln -sf /usr/share/wine/fonts/* "$wine_prefix/drive_c/windows/Fonts/"
}

# Wine's own fonts have no kana and no ideographs. What it takes such letters from, for texts in any of
# its fonts, goes by the name of a font that it does not have. A copy: the 32-bit Wine may have a root
# of its own.
readonly wide_font=/usr/share/fonts/opentype/ipafont-gothic/ipagp.ttf
link_wide_font() {
  [[ -f $wide_font ]] || return 0
  cp "$wide_font" "$wine_prefix/drive_c/windows/Fonts/"
  local name
  for name in 'MS UI Gothic' 'MS Gothic' 'MS PGothic'; do
    set_registry 'HKCU\Software\Wine\Fonts\Replacements' "$name" REG_SZ IPAPGothic
  done
  for name in 'Arial' 'Tahoma' 'Tahoma Bold' 'Microsoft Sans Serif'; do
    set_registry 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' "$name" \
      REG_MULTI_SZ 'ipagp.ttf,IPAPGothic'
  done
}

make_prefix() {
  rm -f "$wine_prefix/.managed"
  link_fonts
  in_wine wineboot --init
  link_wide_font
  # A crash is told on stderr and ends the program; it asks nobody.
  set_registry 'HKCU\Software\Wine\WineDbg' ShowCrashDialog REG_DWORD 0
  printf '%s\n' "$prefix_version" >"$wine_prefix/.complete"
}

# A display without a window manager; a Wine that counts on one waits two seconds for its
# answer whenever a window opens, and leaves the captions to it.
choose_managing() {
  local managed=Y
  [[ -z $display_pid || -n $manager_pid ]] || managed=N
  [[ -f $wine_prefix/.managed && $(<"$wine_prefix/.managed") == "$managed" ]] && return
  set_registry 'HKCU\Software\Wine\X11 Driver' Managed REG_SZ "$managed"
  printf '%s\n' "$managed" >"$wine_prefix/.managed"
}

# Opens the desktop and keeps a command prompt on it. Wine would close it a second after the last
# window; the next program would open it anew, and its output would stay open for as long.
hold_desktop() {
  rm -f "$wine_run/prompt"
  mkfifo "$wine_run/prompt"
  exec 6<>"$wine_run/prompt"
  in_wine cmd <&6 >/dev/null 2>&1 6>&- 7>&- &
  in_wine 'C:\windows\explorer.exe' /desktop >/dev/null 2>&1 6>&- 7>&- &
}

prefix_complete() {
  [[ -f $wine_prefix/.complete && $(<"$wine_prefix/.complete") == "$prefix_version" ]]
}

stop_all() {
  rm -f "$wine_run/ready"
  # On an interrupt, and only then, the server ends its programs and writes the registry.
  [[ -z $server_pid ]] || kill -INT "$server_pid" 2>/dev/null || true
  [[ -z $server_pid ]] || wait "$server_pid" || true
  [[ -z $display_pid ]] || kill "$display_pid" 2>/dev/null || true
}

alive() {
  kill -0 "$server_pid" 2>/dev/null || return 1
  [[ -z $display_pid ]] || kill -0 "$display_pid" 2>/dev/null
}

# True when nobody runs anything and nobody has for a while. Then the lock is held until this ends, so
# that no new program can start meanwhile.
unused() {
  exec 5>"$wine_run/lock" 4>"$wine_run/users"
  if flock -n 5 && flock -n 4 &&
    [[ $(($(date +%s) - $(stat -c %Y "$wine_run/last-use"))) -ge $idle_seconds ]]; then
    return 0
  fi
  exec 4>&- 5>&-
  return 1
}

main() {
  choose_wine "$1"
  exec 7>"$wine_run/keeper"
  flock 7
  trap stop_all EXIT
  trap 'exit 0' TERM INT HUP
  mkdir -p "$wine_run/home"
  export_wine_environment
  if [[ -n $2 ]]; then export DISPLAY="$2"; else start_display; fi
  prefix_complete || rm -rf "$wine_prefix"
  mkdir -p "$wine_prefix"
  start_server
  if prefix_complete; then in_wine wineboot; else make_prefix; fi
  choose_managing
  hold_desktop
  printf '%s\n' "$$" "$server_pid" "$display_pid" "$DISPLAY" "${XAUTHORITY:-}" \
    >"$wine_run/ready.new"
  mv "$wine_run/ready.new" "$wine_run/ready"
  while alive && [[ -d $wine_prefix && -e $wine_run/ready ]] && ! unused; do
    sleep 2 7>&- &
    wait $!
  done
}

main "$@"; exit # not a line more, should this file change meanwhile
