#!/usr/bin/env bash
# Our equalizer against ffmpeg and sox with ten equalizer bands each, on the same 16-bit stereo file.
# Processor time of one thread; each tool's time without filters is taken off. The machine is noisy:
# the runs take turns, and the fastest of each counts.
set -euo pipefail

bin="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)/build/native-release/bin"
rounds=7
bands=(60 170 310 600 1000 3000 6000 12000 14000 16000)
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

sox -R -n -r 44100 -c 2 -b 16 "$work/in.wav" synth 240 pinknoise synth 240 pinknoise gain -6 \
  2>/dev/null

ffmpeg_filters="" sox_effects=()
for band in "${bands[@]}"; do
  ffmpeg_filters+="${ffmpeg_filters:+,}equalizer=f=$band:width_type=q:w=1.4:g=3"
  sox_effects+=(equalizer "$band" 1.4q 3)
done

# shellcheck disable=SC2317  # called by measure
ours() { "$bin/bench_effects" "$1" "$work/in.wav" /dev/null; }
# shellcheck disable=SC2317
run_ffmpeg() {
  ffmpeg -nostdin -v error -threads 1 -filter_threads 1 -i "$work/in.wav" "$@" -f s16le -y /dev/null
}
# shellcheck disable=SC2317
run_sox() { sox --single-threaded "$work/in.wav" -t raw -D /dev/null "$@" 2>/dev/null; }

# Milliseconds of processor time of a command and what it started.
milliseconds() {
  local TIMEFORMAT='%3U %3S' user system
  read -r user system < <({ time "$@"; } 2>&1)
  echo $((10#${user/./} + 10#${system/./}))
}

declare -A best
measure() {
  local name="$1" spent
  shift
  spent="$(milliseconds "$@")"
  if [[ -z ${best[$name]:-} || $spent -lt ${best[$name]} ]]; then best[$name]=$spent; fi
}

for ((round = 0; round < rounds; ++round)); do
  measure ours_bare ours copy
  measure ours ours equalizer
  measure ffmpeg_bare run_ffmpeg
  measure ffmpeg run_ffmpeg -af "$ffmpeg_filters"
  measure sox_bare run_sox
  measure sox run_sox "${sox_effects[@]}"
done

missed=0
mine=$((best[ours] - best[ours_bare]))
printf 'equalizer, 240 s of stereo: ours %d ms\n' "$mine"
report() {
  local theirs=$((best[$1] - best[$1_bare])) goal="$2" verdict=ok
  if ((theirs < goal * mine)); then verdict=MISSED missed=1; fi
  printf '%-8s %6d ms: %d.%02d x ours (goal >= %d) %s\n' "$1" "$theirs" $((theirs / mine)) \
    $((theirs * 100 / mine % 100)) "$goal" "$verdict"
}
report ffmpeg 2
report sox 4
exit "$missed"
