#!/usr/bin/env bash
# Builds the library and unit tests with AddressSanitizer + UndefinedBehaviorSanitizer
# and runs every unit test and the scene renderer's tests, then with ThreadSanitizer and
# runs the thread stress tests.
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

# The scene renderer under the same sanitizers: every example scene, and thousands of
# corrupted ones, through the library and a real Mesa context. Leak checking is off for
# this one: Mesa's dlopen'ed driver keeps small allocations past the end of the process.
cmake --build "$asan" -j "$jobs" --target tavrin_render_tests
ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  "$asan/tests/render/tavrin_render_tests" --gtest_brief=1
echo "asan+ubsan: scene renderer clean"

tsan=${TAVRIN_TSAN_DIR:-$root/build-tsan}
cmake -S "$root" -B "$tsan" -DCMAKE_BUILD_TYPE=Debug -DTAVRIN_SANITIZE=thread >/dev/null
cmake --build "$tsan" -j "$jobs" --target tavrin_tests
TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1 \
  "$tsan/tests/tavrin_tests" --gtest_brief=1 --gtest_filter='*Concurrent*:*Stress*:*Thread*'
echo "tsan: thread stress clean"
