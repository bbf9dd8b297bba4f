#!/usr/bin/env bash
# The Qt 6 build beside the Qt 5 one: configures with TAVRIN_QT_MAJOR=6 in its own build
# folder, builds the library, libtavrin-qt, tavrin-render, tavrin-demo and their tests,
# runs them (unit, pixel, renderer and demo tests), consumes the installed Qt 6 package
# and builds and consumes its Debian packages.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TAVRIN_QT6_BUILD_DIR:-$root/build-qt6}
jobs=${TAVRIN_JOBS:-2}

"$root/scripts/install-deps.sh"

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVRIN_QT_MAJOR=6 -DTAVRIN_BUILD_BENCH=OFF
cmake --build "$build" -j "$jobs"
ctest --test-dir "$build" --output-on-failure -j "$jobs"

"$root/scripts/consume-install.sh" "$build" 6
echo "qt6 consumer: built and ran against the installed Qt 6 package"

TAVRIN_QT_MAJOR=6 "$root/scripts/package.sh"
