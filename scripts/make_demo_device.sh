#!/usr/bin/env bash
# Makes a device to look through with the catalog, in build/device: music in folders, and playlists.
# What exists stays; delete the folder to have it made anew.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

media="$kelvo_build/media"
device="${1:-$kelvo_build/device}"
# In its last file. The number is raised when another device is wanted: one of before is made anew.
mark="Made by scripts/make_demo_device.sh, version 2"
if [[ -e $device/complete.txt && $(<"$device/complete.txt") == "$mark" ]]; then
  say "device: in place"
  exit 0
fi
[[ ! -e $device/complete.txt ]] || rm -rf "$device"
[[ -s $media/sine.mp3 ]] || "$kelvo_root/scripts/make_media.sh"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# song FOLDER NAME TITLE ARTIST ALBUM GENRE NOTE...: a tune of these notes as an Ogg Vorbis file.
song() {
  local file="$device/$1/$2" tags=(-t "$3" -a "$4" -l "$5" -G "$6") note
  local -a notes=()
  shift 6
  for note in "$@" "$@" "$@"; do
    sox -n -r 22050 -c 2 -b 16 "$work/$note.wav" synth 0.4 pluck "$note" fade t 0.01 0.4 0.1 vol 0.6
    notes+=("$work/$note.wav")
  done
  sox "${notes[@]}" "$work/tune.wav"
  mkdir -p "${file%/*}"
  oggenc -Q -s 1 -q 2 "${tags[@]}" -o "$file" "$work/tune.wav"
}

# field TEXT BYTES: the text, filled with NULs.
field() {
  printf '%s' "$1"
  head -c $(($2 - ${#1})) /dev/zero
}

# The catalog lists and edits MPEG audio too; only the device's own player plays it.
other_kind() { # FOLDER NAME TITLE ARTIST ALBUM GENRE-NUMBER
  mkdir -p "$device/$1"
  {
    head -c -128 "$media/sine.mp3"
    printf TAG
    field "$3" 30
    field "$4" 30
    field "$5" 30
    field 2001 34
    printf '%b' "\\x$(printf %02x "$6")"
  } >"$device/$1/$2"
}

song "Music/Sine Trio/Waves" "01 Crest.ogg" "Crest" "Sine Trio" "Waves" "Jazz" C4 E4 G4 B4 A4 G4
song "Music/Sine Trio/Waves" "02 Trough.ogg" "Trough" "Sine Trio" "Waves" "Jazz" A3 C4 E4 D4 C4 B3
song "Music/Sine Trio/Second Harmonic" "01 Octave.ogg" "Octave" "Sine Trio" "Second Harmonic" "Jazz" \
  C3 C4 G3 G4 C4 C5
song "Music/The Square Roots" "Sharp Edges.ogg" "Sharp Edges" "The Square Roots" "Duty Cycle" "Rock" \
  E3 E4 D4 E4 G4 A4
other_kind "Music/The Square Roots" "Half Time.mp3" "Half Time" "The Square Roots" "Duty Cycle" 17
song "My Documents" "Memo.ogg" "A very long title, to be cut off" "A very long artist's name here" \
  "A very long album's title" "Speech" C4 C4 G3 C4
mkdir -p "$device/Music/Ring Buffers" "$device/My Documents/Lists"
cp "$media/tone_44100_stereo.ogg" "$device/untagged.ogg"
cp "$media/sample.ogg" "$device/Music/Ring Buffers/Eight Bars.ogg"
cp "$media/sample.wma" "$device/Music/Ring Buffers/Sixteen Strings.wma"
cp "$media/tone_22050_mono.ogg" "$device/Music/tone.ogg"

printf '#EXTM3U\r\n%s\r\n%s\r\n' '\Music\Sine Trio\Waves\01 Crest.ogg' \
  '\Music\Ring Buffers\Eight Bars.ogg' >"$device/My Documents/Lists/Morning.m3u"
printf '[playlist]\r\nFile1=%s\r\nFile2=%s\r\nNumberOfEntries=2\r\nVersion=2\r\n' \
  '\Music\tone.ogg' '\Music\The Square Roots\Half Time.mp3' >"$device/Evening.pls"
printf '<ASX version="3.0">\r\n<ENTRY><REF HREF="%s" /></ENTRY>\r\n</ASX>\r\n' \
  'untagged.ogg' >"$device/Links.asx"
printf '%s\n' "$mark" >"$device/complete.txt"
say "device: made in ${device#"$kelvo_root/"}"
