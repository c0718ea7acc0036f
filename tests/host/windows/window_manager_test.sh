#!/usr/bin/env bash
# The player on a desktop with a window manager, seen and used from outside of Windows: its windows are
# one application there.   window_manager_test.sh i686|x86_64 PROGRAMS
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)"
arch="$1" programs="$2"
export KELVO_WINDOW_MANAGER=openbox
# shellcheck source=scripts/lib/common.sh
. "$root/scripts/lib/common.sh"
# shellcheck source=scripts/lib/device_drive.sh
. "$root/scripts/lib/device_drive.sh"

set_device_drive "$arch" "$kelvo_build/device"
{ read -r _ && read -r _ && read -r _ && read -r DISPLAY && read -r XAUTHORITY; } <"$(wine_folder "$arch").run/ready"

# The player keeps its settings beside itself: here they are the test's own.
folder="$programs/window_manager_test"
rm -rf "$folder"
mkdir "$folder"
ln -s "$programs"/{*.dll,velmora.exe,presets,skins} "$folder"
(
  cd "$folder"
  unset DISPLAY
  KELVO_AUDIO_SINK=silence exec "$root/scripts/wine.sh" "$arch" ./velmora.exe player --device "V:\\" \
    "Z:${kelvo_build//\//\\}\\media\\sample.ogg"
) &
player=$!
trap 'kill $player 2>/dev/null || true' EXIT
export DISPLAY XAUTHORITY

fail() { die "$* -- windows: $(clients)"; }

# until_true WHAT COMMAND...: waits for what the window manager and the player do.
until_true() {
  local what="$1" i
  shift
  for ((i = 0; i < 300; ++i)); do
    if "$@"; then return; fi
    sleep 0.1
  done
  fail "not seen: $what"
}

ids() { xprop -root "$1" | grep -o '0x[0-9a-f]*' || true; }
clients() { ids _NET_CLIENT_LIST | paste -sd' '; }
top() { ids _NET_CLIENT_LIST_STACKING | tail -n 1; }
count_is() { [[ $(ids _NET_CLIENT_LIST | wc -l) -eq $1 ]]; }
more_than() { [[ $(ids _NET_CLIENT_LIST | wc -l) -gt $1 ]]; }
owner() { xprop -id "$1" WM_TRANSIENT_FOR | grep -o '0x[0-9a-f]*' || true; }
map_states() { for w in "$main" "$equalizer" "$playlist"; do xwininfo -id "$w" | grep -o 'Is[UV].*'; done | sort -u; }
all_are() { [[ $(map_states) == "$1" ]]; }
size_is() { [[ $(xwininfo -id "$1" | awk '/Width|Height/ { printf "%s ", $2 }') == "$2 " ]]; }
# X and y of the windows relative to the first of them, and that one's own.
arrangement() {
  xwininfo -id "$main" | awk '/Absolute/ { print $NF }' | paste -sd' '
  for w in "$equalizer" "$playlist"; do xwininfo -id "$w" | awk '/Absolute/ { print $NF }' | paste -sd' '; done
}
moved_by() { [[ $(arrangement) == "$(awk -v x="$1" -v y="$2" '{ print $1 + x, $2 + y }' <<<"$3")" ]]; }
drag() {
  xdotool mousemove "$1" "$2" mousedown 1 mousemove $(($1 + $3)) $(($2 + $4)) mouseup 1
}

until_true "three windows" count_is 3
named() { xdotool search --name "^$1\$" | head -n 1 | xargs printf '0x%x'; }
equalizer="$(named 'Velmora Equalizer')" playlist="$(named 'Velmora Playlist')"
main="$(owner "$equalizer")"
[[ -n $main && $main == "$(owner "$playlist")" ]] || fail "the windows are not the main one's"
in_task_bar="$(for w in $(clients); do xprop -id "$w" _NET_WM_STATE | grep -q SKIP_TASKBAR || echo "$w"; done)"
[[ $in_task_bar == "$main" ]] || fail "in the task bar: $in_task_bar, not $main alone"
# Meanwhile a program that is to go to another display is refused, not kept waiting.
DISPLAY=:99 "$root/scripts/wine.sh" "$arch" cmd /c exit >"$folder/refused" 2>&1 &
refused=$!

active_is() { [[ $(ids _NET_ACTIVE_WINDOW) == "$1" ]]; }
until_true "the keyboard in the main window" active_is "$main"

# They are minimised and come back as one, to where they were.
before="$(arrangement)"
xdotool windowminimize "$main"
until_true "all minimised" all_are IsUnMapped
xdotool windowactivate "$main"
until_true "all back" all_are IsViewable
until_true "the windows where they were" moved_by 0 0 "$before"

# What hangs on the main window comes along.
read -r x y <<<"$before"
drag $((x + 100)) $((y + 5)) 200 40
until_true "all moved" moved_by 200 40 "$before"
read -r x y < <(arrangement | tail -n 1)
drag $((x + 270)) $((y + 111)) 100 58
until_true "the list enlarged by a fast drag" size_is "$playlist" "375 174"

# Dialogs lie above all three, whatever is clicked; the menu bar of the sheet is a window of its own.
read -r x y < <(arrangement | sed -n 2p)
for key in F1 l shift+l ctrl+s j alt+c alt+b; do
  xdotool windowactivate --sync "$main" key "$key"
  until_true "a dialog of $key" more_than 3
  dialog="$(top)"
  xdotool mousemove $((x + 20)) $((y + 5)) click 1
  sleep 1 # nothing is to happen
  for w in "$main" "$equalizer" "$playlist"; do
    [[ $(top) != "$w" ]] || fail "$w came above the dialog of $key"
  done
  [[ " $main $(owner "$main") $dialog " == *" $(owner "$dialog") "* || -n $(owner "$(owner "$dialog")") ]] ||
    fail "the dialog of $key is nobody's"
  xdotool windowactivate "$dialog" key Escape
  until_true "the end of the dialog of $key" count_is 3
done
if wait "$refused" || ! grep -q 'still runs on display' "$folder/refused"; then
  fail "another display: $(<"$folder/refused")"
fi
xdotool windowactivate --sync "$main" key alt+F4
wait "$player" || fail "the player failed"
trap - EXIT
