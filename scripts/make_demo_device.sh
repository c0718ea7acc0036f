#!/usr/bin/env bash
# Makes a device to look through with the catalog, in build/device: music in folders, and playlists.
# What exists stays; delete the folder to have it made anew.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

media="$kelvo_build/media"
device="${1:-$kelvo_build/device}"
if [[ -e $device/complete.txt ]]; then
  say "device: in place"
  exit 0
fi
[[ -s $media/sine.mp3 ]] || "$kelvo_root/scripts/make_media.sh"

# field TEXT BYTES: the text, cut or filled with NULs.
field() {
  printf '%s' "${1:0:$2}"
  head -c $(($2 - $(printf '%s' "${1:0:$2}" | wc -c))) /dev/zero
}

# song FOLDER NAME TITLE ARTIST ALBUM GENRE-NUMBER: an MPEG audio file with this tag.
song() {
  mkdir -p "$device/$1"
  head -c -128 "$media/sine.mp3" >"$device/$1/$2"
  {
    printf TAG
    field "$3" 30
    field "$4" 30
    field "$5" 30
    field 2001 4
    field "" 30
    printf "\\x$(printf %02x "$6")"
  } >>"$device/$1/$2"
}

song "Music/Sine Trio/Waves" "01 Crest.mp3" "Crest" "Sine Trio" "Waves" 8
song "Music/Sine Trio/Waves" "02 Trough.mp3" "Trough" "Sine Trio" "Waves" 8
song "Music/Sine Trio/Second Harmonic" "01 Octave.mp3" "Octave" "Sine Trio" "Second Harmonic" 8
song "Music/The Square Roots" "Sharp Edges.mp3" "Sharp Edges" "The Square Roots" "Duty Cycle" 17
song "Music/The Square Roots" "Half Time.mp3" "Half Time" "The Square Roots" "Duty Cycle" 17
song "My Documents" "Memo.mp3" "A very long title, to be cut off" "A very long artist's name here" "A very long album's title" 101
head -c -128 "$media/sine.mp3" >"$device/untagged.mp3"
mkdir -p "$device/Music/Ring Buffers" "$device/My Documents/Lists"
cp "$media/sample.ogg" "$device/Music/Ring Buffers/Eight Bars.ogg"
cp "$media/sample.wma" "$device/Music/Ring Buffers/Sixteen Strings.wma"
cp "$media/tone_22050_mono.ogg" "$device/Music/tone.ogg"

printf '#EXTM3U\r\n%s\r\n%s\r\n' '\Music\Sine Trio\Waves\01 Crest.mp3' \
  '\Music\Ring Buffers\Eight Bars.ogg' >"$device/My Documents/Lists/Morning.m3u"
printf '[playlist]\r\nFile1=%s\r\nFile2=%s\r\nNumberOfEntries=2\r\nVersion=2\r\n' \
  '\Music\tone.ogg' '\Music\The Square Roots\Half Time.mp3' >"$device/Evening.pls"
printf '<ASX version="3.0">\r\n<ENTRY><REF HREF="%s" /></ENTRY>\r\n</ASX>\r\n' \
  'untagged.mp3' >"$device/Links.asx"
printf 'Made by scripts/make_demo_device.sh\n' >"$device/complete.txt"
say "device: made in ${device#"$kelvo_root/"}"
