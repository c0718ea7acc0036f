#!/usr/bin/env bash
# Runs a Windows program under the project's own Wine prefix.
#   scripts/wine.sh i686|x86_64|device PROGRAM [ARGS...]
# Current directory, output, exit code and Ctrl-C are the program's. Without DISPLAY it gets a display
# of its own, 1280x1024. Any number may run at a time, also from several checkouts, but all on the same
# display: while one runs, a program that is to go to another is refused.
# KELVO_WINDOW_MANAGER  a window manager, such as openbox, for the display of its own
#   scripts/wine.sh i686|x86_64|device --stop
# Ends what is kept ready for the next program; by itself it ends after five minutes without use.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=scripts/lib/wine_env.sh
. "$kelvo_root/scripts/lib/wine_env.sh"

readonly patience_seconds=10
keeper_pid="" server_pid="" display_pid="" display="" authority=""

read_notes() {
  [[ -f $wine_run/ready ]] || return 1
  {
    read -r keeper_pid && read -r server_pid && read -r display_pid && read -r display &&
      read -r authority
  } <"$wine_run/ready"
}

# True when everything runs that the notes name.
ready() {
  if flock -n "$wine_run/keeper" true 2>/dev/null; then return 1; fi
  read_notes || return 1
  kill -0 "$server_pid" 2>/dev/null || return 1
  [[ -z $display_pid ]] || kill -0 "$display_pid" 2>/dev/null
}

# end_process PID SIGNAL NAME: the number may belong to another program by now, so the name decides.
end_process() {
  [[ -n $1 && -r /proc/$1/comm && $(<"/proc/$1/comm") == $3* ]] || return 0
  kill "-$2" "$1" 2>/dev/null || true
  while [[ -r /proc/$1/comm ]]; do sleep 0.05; done 2>/dev/null
}

# Waits a moment for running programs to end, then ends the keeper and what a killed keeper left behind.
stop_keeper() {
  if ! flock --wait "$patience_seconds" 8; then
    read_notes || true
    die "a program still runs on display ${display:-?} (the player?): close it, then try again"
  fi
  if read_notes; then
    if ! flock -n "$wine_run/keeper" true; then kill "$keeper_pid" 2>/dev/null || true; fi
    flock "$wine_run/keeper" true
    end_process "$server_pid" INT wineserver
    end_process "$display_pid" TERM Xvfb
  fi
  rm -f "$wine_run/ready"
}

start_keeper() {
  setsid "$kelvo_root/scripts/lib/wine_keeper.sh" "$wine_arch" "${DISPLAY:-}" \
    </dev/null >"$wine_run/log" 2>&1 8>&- 9>&- &
  local pid=$!
  until ready; do
    kill -0 "$pid" 2>/dev/null || die "Wine did not start, see $wine_run/log"
    sleep 0.1
  done
}

main() {
  [[ $# -ge 2 ]] || die "usage: wine.sh i686|x86_64|device PROGRAM [ARGS...]"
  choose_wine "$1"
  shift
  mkdir -p "$wine_run"
  exec 9>"$wine_run/lock" 8>"$wine_run/users"
  flock 9
  touch "$wine_run/last-use"
  if [[ $1 == --stop ]]; then
    stop_keeper
    return
  fi
  if ! ready; then
    stop_keeper
    start_keeper
  elif [[ -n ${DISPLAY:-} && $DISPLAY != "$display" ]] || [[ -z ${DISPLAY:-} && -z $display_pid ]]; then
    stop_keeper
    start_keeper
  fi
  flock --shared 8
  exec 9>&-
  export DISPLAY="$display"
  [[ -z $authority ]] || export XAUTHORITY="$authority"
  export_wine_environment
  local -a command
  mapfile -d '' -t command < <(wine_command "$server_pid" "$@")
  exec "${command[@]}"
}

main "$@"
