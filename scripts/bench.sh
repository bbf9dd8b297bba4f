#!/usr/bin/env bash
# Runs Tavrin's benchmarks and writes the measured block of docs/PERFORMANCE.md.
#
#   scripts/bench.sh            full run (about 10 minutes on two cores)
#   TAVRIN_BENCH_QUICK=1 ...    short run while iterating (numbers are rough)
#
# Variants run as interleaved repetitions (random order), so drift of a shared machine
# affects them alike; medians are reported. Run it on a machine as quiet as you can get.
# The OpenGL variants need no display: Mesa's surfaceless EGL, adopted by Qt's eglfs
# platform for the Qt ones; they all run in one process.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TAVRIN_BUILD_DIR:-$root/build}
jobs=${TAVRIN_JOBS:-2}
out=$root/docs/PERFORMANCE.md

if [[ -n "${TAVRIN_BENCH_QUICK:-}" ]]; then
    repetitions=3 min_time=0.05 gl_min_time=0.2
else
    repetitions=9 min_time=0.2 gl_min_time=0.5
fi

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVRIN_BUILD_BENCH=ON >/dev/null
cmake --build "$build" -j "$jobs" --target tavrin_bench tavrin_bench_gl tavrin_bench_record

results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT

load_before=$(cut -d' ' -f1-3 /proc/loadavg)
common=(--benchmark_repetitions=$repetitions --benchmark_enable_random_interleaving=true
        --benchmark_display_aggregates_only=true --benchmark_out_format=json)

echo "== library cost, draw lists, hit tests, triangulation, registry"
"$build/bench/tavrin_bench" "${common[@]}" --benchmark_min_time=$min_time \
    --benchmark_out="$results/library.json"

echo "== Mesa and one Qt context: library, floor, QPainter on GL and into a QImage, GlRenderer"
env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$build/bench/tavrin_bench_gl" "${common[@]}" \
    --benchmark_min_time=$gl_min_time --benchmark_out="$results/gl.json"
"$build/bench/tavrin_bench_gl" --renderer > "$results/renderer.txt" || echo "unknown" > "$results/renderer.txt"
load_after=$(cut -d' ' -f1-3 /proc/loadavg)

python3 "$root/scripts/bench_report.py" --results "$results" --out "$out" \
    --load-before "$load_before" --load-after "$load_after" \
    --repetitions "$repetitions" ${TAVRIN_BENCH_QUICK:+--quick}
echo "wrote $out"
