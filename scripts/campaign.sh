#!/usr/bin/env bash
# The searches for faults that are too long for every day: the thread sanitizer, killed writers, all
# schedules of two threads, a failure of every call, a day of music, storms of controls, the models of
# tests/oracles on cases that were never tried before, and the fuzzers. The first five are done whole,
# which takes about half an hour on two processors; of what HOURS leave, storms and models get a
# quarter each (at most KELVO_STORMS, 10^5 on each plug-in, and KELVO_ORACLE_CASES, 10^6 of each; half a
# day holds them all), and the fuzzers the rest. The last lines are a table of what ran and what was
# found.
#   scripts/campaign.sh [HOURS]      default 1; a fraction will do
# Inputs that fail lie in build/campaign/found, the fuzzers' growing corpora beside it, for the next
# campaign to go on from. Exit code 1 when something was found.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

hours="${1:-1}"
[[ $hours =~ ^[0-9]*\.?[0-9]+$ ]] || die "usage: campaign.sh [HOURS]"
jobs="${KELVO_JOBS:-$(nproc)}"
folder="$kelvo_build/campaign"
found="$folder/found"
mkdir -p "$found"
summary="$folder/summary"
: >"$summary"
result=0

# row WHAT RUNS FINDINGS
row() {
  printf '%-28s %14s  %s\n' "$@" >>"$summary"
  if [[ $3 != none ]]; then result=1; fi
}

# counted WHAT BUILD TESTS WORD: tests of a build, once; they print the number before WORD.
counted() {
  local log="$folder/${1// /_}.log" outcome=none
  say "campaign: $1"
  ctest --test-dir "$(build_folder "$2")" -R "$3" --no-tests=error -V --timeout 50000 >"$log" 2>&1 ||
    outcome="see $log"
  row "$1" "$(sed -nE "s/^[0-9]+: (.*[^0-9.])?([0-9.]+) $4.*/\\2/p" "$log" | awk '{ n += $1 } END { print n + 0 }')" \
    "$outcome"
}

# repeated WHAT BUILD TESTS TIMES: tests of a build, each that often.
repeated() {
  local log="$folder/${1// /_}.log" outcome=none
  say "campaign: $1"
  ctest --test-dir "$(build_folder "$2")" -R "$3" --no-tests=error --output-on-failure \
    --repeat "until-fail:$4" --timeout 3000 >"$log" 2>&1 || outcome="see $log"
  row "$1" "$4 times" "$outcome"
}

# Of HOURS; enough to have tried everything, if they are over.
seconds_left() {
  awk -v h="$hours" -v used="$((SECONDS - begin))" \
    'BEGIN { left = int(h * 3600 - used); print (left > 60 ? left : 60) }'
}

"$kelvo_root/scripts/build.sh" native i686
"$kelvo_root/scripts/build.sh" --target music_tests native-release
"$kelvo_root/scripts/build.sh" --target schedule_tests native-release
for part in vorbis wma; do "$kelvo_root/scripts/build.sh" --target "tests/$part/all" native-tsan; done
"$kelvo_root/scripts/build.sh" --target tests/fuzz/all fuzz
"$kelvo_root/scripts/build.sh" --target tests/oracles/all native-release
begin=$SECONDS
repeated "threads, sanitized" native-tsan '\.(vorbis_tests|audio_tap_test|redirected_audio_test)$' 3
KELVO_KILLED_WRITERS=500 repeated "killed writers, 500 each" native '\.bookmarks_tests$' 1
KELVO_SCHEDULE_SWITCHES=2 counted "schedules, 3 and 4 switches" native-release \
  '\.schedule_tests$' schedules
KELVO_FAULTS_EACH=1 counted "failing calls, portable" native '_tests$' 'faults$'
KELVO_FAULTS_EACH=1 counted "failing calls, Windows" i686 '\.fault_tests$' 'faults$'
KELVO_MUSIC_HOURS=24 counted "hours of music" native-release '\.music_tests$' 'hours of music'
quarter=$(($(seconds_left) / 4))

# On each of two plug-ins.
export KELVO_SECONDS=$((quarter / 2))
KELVO_STORMS="${KELVO_STORMS:-100000}" counted "storms" i686 '\.storm_tests$' storms

# Each model has a processor; a case that differs is told by its number.
oracles="$kelvo_build/native-release/bin/oracle_tests"
mapfile -t models < <("$oracles" --gtest_list_tests | sed -n 's/^  //p')
[[ ${#models[@]} -gt 0 ]] || die "no oracles in $oracles"
KELVO_SECONDS=$((quarter * jobs / ${#models[@]}))
export KELVO_ORACLE_CASES="${KELVO_ORACLE_CASES:-1000000}"
KELVO_ORACLE_FIRST="$(date +%s)000000"
export KELVO_ORACLE_FIRST
say "campaign: oracles, $KELVO_ORACLE_CASES cases each or $KELVO_SECONDS s"
# shellcheck disable=SC2016
printf '%s\n' "${models[@]}" |
  xargs -P "$jobs" -I {} sh -c '"$1" --gtest_filter="Oracle.$2" >"$3/oracle_$2.log" 2>&1 || true' \
    - "$oracles" {} "$folder"
for model in "${models[@]}"; do
  log="$folder/oracle_$model.log" outcome=none
  grep -q '^\[  PASSED  \] 1 test' "$log" || outcome="see $log"
  row "oracle $model" "$(sed -n 's/ cases$//p' "$log")" "$outcome"
done

# What is left, in equal parts; each fuzzer has one processor.
cd "$kelvo_build/fuzz/bin"
targets=(fuzz_*)
lanes=$(((${#targets[@]} + jobs - 1) / jobs))
seconds=$(($(seconds_left) / lanes))
say "campaign: ${#targets[@]} fuzzers for $seconds s each"
running=0
for target in "${targets[@]}"; do
  name="${target#fuzz_}"
  mkdir -p "$folder/corpus-$name"
  if ((running == jobs)); then
    wait -n || true
    running=$((running - 1))
  fi
  "./$target" -max_total_time="$seconds" -timeout=60 -print_final_stats=1 \
    -artifact_prefix="$found/$name-" "$folder/corpus-$name" "$kelvo_root/tests/fuzz/corpus/$name" \
    >"$folder/fuzz_$name.log" 2>&1 &
  running=$((running + 1))
done
wait || true
for target in "${targets[@]}"; do
  name="${target#fuzz_}"
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$folder/fuzz_$name.log")
  inputs=("$found/$name"-*)
  outcome=none
  if [[ -e ${inputs[0]} ]]; then outcome="${#inputs[@]} inputs in $found"; fi
  [[ -n $runs || $outcome != none ]] || outcome="did not run, see $folder/fuzz_$name.log"
  row "$target" "${runs:-0}" "$outcome"
done

printf '\n%-28s %14s  %s\n' "what" "executions" "found"
cat "$summary"
exit "$result"
