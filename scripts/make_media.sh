#!/usr/bin/env bash
# Makes the music that the tests and the demonstrations play, in build/media. What exists stays.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

media="$kelvo_build/media"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
made=0
out=""

# make NAME COMMAND...: the command writes its result to the file $out, unless NAME is there already.
make() {
  local name="$1"
  shift
  [[ ! -s $media/$name ]] || return 0
  out="$work/$name" "$@" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    die "cannot make $name"
  }
  mv "$work/$name" "$media/$name"
  made=$((made + 1))
}

encode() { oggenc -Q -s "$1" -q 3 "${@:3}" -o "$out" "$2"; }

# A few bars on plucked strings, 8 seconds.
tune() {
  local note
  local -a notes=()
  for note in G3 B3 D4 G4 A3 C4 E4 A4 B3 D4 G4 B4 D4 A4 F#4 D4; do
    sox -n -r 44100 -c 2 -b 16 "$work/$note.$1.wav" synth 0.5 pluck "$note" fade t 0.01 0.5 0.1 vol 0.6
    notes+=("$work/$note.$1.wav")
  done
  sox "${notes[@]}" -b 16 "$work/tune-$1.wav" reverb 20
}

sample() {
  tune a
  encode 1 "$work/tune-a.wav" -a "The Ring Buffers" -t "Eight Bars" -l "Fixed Point" -G "Folk" \
    -N 3 -d 2002
}

tone() {  # RATE CHANNELS
  local i expression=""
  for ((i = 0; i < $2; i++)); do
    expression+="${expression:+|}0.4*sin($((220 + i * 110))*2*PI*t)*sin(t*$((i + 2)))"
  done
  ffmpeg -v error -y -f lavfi -i "aevalsrc=$expression:s=$1:d=2" -c:a pcm_s16le "$work/tone.wav"
  encode "${3:-1}" "$work/tone.wav"
}

silence_of_255_channels() {
  head -c $((8000 * 255 * 2)) /dev/zero >"$work/silence.raw"
  oggenc -Q -r -C 255 -R 8000 -B 16 -q 0 -s 1 -o "$out" "$work/silence.raw"
}

chain() {  # two streams of different rates, with serial numbers of their own
  local whole="$out"
  out="$work/first" tone 8000 1 1
  out="$work/second" tone 44100 2 2
  cat "$work/first" "$work/second" >"$whole"
}

sine() { ffmpeg -v error -y -f lavfi -i "sine=d=2:r=$1" "${@:2}" "$out"; }
opus() { sine 48000 -c:a libopus -f ogg; }
flac() { sine 44100 -c:a flac -f ogg; }
speex() { sine 16000 -c:a libspeex -f ogg; }

wma() {  # CODEC BITRATE TITLE
  tune "$1"
  ffmpeg -v error -y -i "$work/tune-$1.wav" -c:a "$1" -b:a "$2" -metadata title="$3" \
    -metadata artist="The Ring Buffers" -metadata album="Fixed Point" -metadata genre="Folk" \
    -metadata track=4 -fflags +bitexact "$out"
}

mp3() {
  # (Without an ID3v2 tag in front it writes no ID3v1 tag either.)
  ffmpeg -v error -y -f lavfi -i "sine=d=2:r=44100" -c:a libmp3lame -b:a 64k -write_id3v1 1 \
    -metadata title="$1" -metadata artist="Sine" -metadata album="Waves" \
    -metadata genre="Jazz" "$out"
}

mkdir -p "$media"
make sample.ogg sample
for rate in 8000 11025 11026 22050 22051 44100; do
  make "tone_${rate}_mono.ogg" tone "$rate" 1
  make "tone_${rate}_stereo.ogg" tone "$rate" 2
  make "tone_${rate}_6ch.ogg" tone "$rate" 6
done
make channels_255.ogg silence_of_255_channels
make chained.ogg chain
make opus.ogg opus
make flac.ogg flac
make speex.ogg speex
make sample_v1.wma wma wmav1 64k "Sixteen Notes"
make sample.wma wma wmav2 128k "Sixteen Strings"
make mono.wma sine 22050 -c:a wmav1 -b:a 32k
make sine.mp3 mp3 "One Tone"
if [[ $made -eq 0 ]]; then say "media: in place"; else say "media: $made files made in build/media"; fi
