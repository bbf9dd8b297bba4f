#!/usr/bin/env bash
# Regenerates the committed pictures: the sample street frame (examples/frames/street.png)
# from its painting tool, then docs/gallery/<scene>.png from every scene in
# examples/scenes/ (one per figure kind, and showcase.png).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TAVRIN_BUILD_DIR:-$root/build}
jobs=${TAVRIN_JOBS:-2}

"$root/scripts/install-deps.sh"

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j "$jobs" --target tavrin-render tavrin-sample-frame >/dev/null
"$build/tools/sample-frame/tavrin-sample-frame" "$root/examples/frames/street.png"
mkdir -p "$root/docs/gallery"
for scene in "$root"/examples/scenes/*.json; do
  name=$(basename "$scene" .json)
  "$build/tools/render/tavrin-render" "$scene" -o "$root/docs/gallery/$name.png"
  echo "docs/gallery/$name.png"
done
