#!/usr/bin/env bash
# Builds the libFuzzer harness with clang (own build dir) and runs it for N seconds
# (first argument, default 60) from the committed seed corpus. New inputs go to a
# working corpus in the build dir, crashes to its artifacts/ folder. Prints the number
# of executions; any crash, leak or sanitizer finding fails the run.
#   scripts/fuzz.sh [seconds] [extra libFuzzer options...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-60}
shift || true
build=${TAVRIN_FUZZ_DIR:-$root/build-fuzz}
jobs=${TAVRIN_JOBS:-2}

"$root/scripts/install-deps.sh"

CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DTAVRIN_FUZZ=ON -DTAVRIN_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j "$jobs" --target tavrin_fuzz

work=$build/corpus
artifacts=$build/artifacts
mkdir -p "$work" "$artifacts"
log=$build/fuzz.log
status=0
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  "$build/fuzz/tavrin_fuzz" -max_total_time="$seconds" -print_final_stats=1 -max_len=4096 \
  -timeout=30 -rss_limit_mb=2048 -artifact_prefix="$artifacts/" "$@" \
  "$work" "$root/fuzz/corpus" >"$log" 2>&1 || status=$?
executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
if [ "$status" -ne 0 ]; then
  tail -n 60 "$log" >&2
  echo "fuzz: FAILED after ${executions:-?} executions (log: $log, artifacts: $artifacts)" >&2
  exit "$status"
fi
echo "fuzz: ${executions} executions in ${seconds} s, no crash, leak or sanitizer finding"
