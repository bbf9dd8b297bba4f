#!/usr/bin/env bash
# Builds the library and unit tests with AddressSanitizer + UndefinedBehaviorSanitizer
# and runs every unit test, then with ThreadSanitizer and runs the thread stress tests.
# Any sanitizer finding fails the run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
jobs=${TAVRIN_JOBS:-2}

"$root/scripts/install-deps.sh"

asan=${TAVRIN_ASAN_DIR:-$root/build-asan}
cmake -S "$root" -B "$asan" -DCMAKE_BUILD_TYPE=Debug -DTAVRIN_SANITIZE=address >/dev/null
cmake --build "$asan" -j "$jobs" --target tavrin_tests
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  "$asan/tests/tavrin_tests" --gtest_brief=1
echo "asan+ubsan: unit tests clean"

tsan=${TAVRIN_TSAN_DIR:-$root/build-tsan}
cmake -S "$root" -B "$tsan" -DCMAKE_BUILD_TYPE=Debug -DTAVRIN_SANITIZE=thread >/dev/null
cmake --build "$tsan" -j "$jobs" --target tavrin_tests
TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1 \
  "$tsan/tests/tavrin_tests" --gtest_brief=1 --gtest_filter='*Concurrent*:*Stress*:*Thread*'
echo "tsan: thread stress clean"
