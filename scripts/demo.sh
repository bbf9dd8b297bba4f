#!/usr/bin/env bash
# The first command to run: installs what Tavrin needs on a fresh Debian machine (as
# root), builds the library and its scene renderer, and draws the showcase scene, every
# kind of figure over the sample street picture, into out/showcase.png.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TAVRIN_BUILD_DIR:-$root/build}
jobs=${TAVRIN_JOBS:-2}

"$root/scripts/install-deps.sh"

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j "$jobs" --target tavrin-render >/dev/null
mkdir -p "$root/out"
"$build/tools/render/tavrin-render" "$root/examples/scenes/showcase.json" -o "$root/out/showcase.png"
echo "$root/out/showcase.png"
