#!/usr/bin/env bash
# Builds Tavrin and runs every test: installs the Debian packages it needs, configures,
# builds with -j2, runs CTest, then installs into a temporary prefix and builds the
# consumer project against it with find_package(Tavrin) and with pkg-config; then the
# Debian packages, the sanitizer runs, the Qt 6 build with its tests and packages, the API
# reference and a minute of fuzzing.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TAVRIN_BUILD_DIR:-$root/build}
jobs=${TAVRIN_JOBS:-2}

"$root/scripts/install-deps.sh"

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build "$build" -j "$jobs"
ctest --test-dir "$build" --output-on-failure -j "$jobs"

"$root/scripts/consume-install.sh" "$build"
echo "consumer: built and ran against the installed package"

# Debian packages: build them and consume them from a scratch root.
"$root/scripts/package.sh"

# Sanitizers: every unit test under ASan+UBSan, the thread stress under TSan.
"$root/scripts/sanitize.sh"

# Qt 6: the same library, tools and tests built and run with Qt 6, and its packages.
"$root/scripts/test-qt6.sh"

# API reference: Doxygen over the public headers, warnings are errors.
"$root/scripts/docs.sh"
# Fuzzing: the libFuzzer harness for 60 seconds from the seed corpus.
"$root/scripts/fuzz.sh" 60
