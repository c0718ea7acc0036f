# shellcheck shell=bash disable=SC2154
# Enters the stand-in of the player control into the project's Wine. Sourced after common.sh.

# register_player i686|x86_64|device: after a build of that preset. Does nothing when this build's control
# is entered already; a new Wine prefix or a moved checkout needs it again.
register_player() {
  local arch="$1" dll note="$kelvo_build/wine-$1/kelvo-player"
  dll="$(build_folder "$arch")/bin/WMPCmn.dll"
  [[ -f $dll ]] || die "no $dll; run scripts/build.sh $arch"
  if [[ -f $note && $(<"$note") == "$dll" ]]; then return 0; fi
  (cd "${dll%/*}" && "$kelvo_root/scripts/wine.sh" "$arch" regsvr32 /s WMPCmn.dll) ||
    die "cannot register $dll in the Wine prefix"
  printf '%s\n' "$dll" >"$note"
}
