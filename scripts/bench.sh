#!/usr/bin/env bash
# Runs Tavrin's benchmarks and writes the measured block of docs/PERFORMANCE.md.
#
#   scripts/bench.sh            full run (about 10 minutes on two cores)
#   TAVRIN_BENCH_QUICK=1 ...    short run while iterating (numbers are rough)
#
# Variants run as interleaved repetitions (random order), so drift of a shared machine
# affects them alike; medians are reported. Run it on a machine as quiet as you can get.
# The Qt OpenGL variants need an X display for Qt's offscreen platform: when none is set
# and Xvfb is installed, one is started for them and stopped afterwards.
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
xvfb_pid=
cleanup() {
    if [[ -n "$xvfb_pid" ]]; then kill "$xvfb_pid" 2>/dev/null || true; fi
    rm -rf "$results"
}
trap cleanup EXIT

load_before=$(cut -d' ' -f1-3 /proc/loadavg)
common=(--benchmark_repetitions=$repetitions --benchmark_enable_random_interleaving=true
        --benchmark_display_aggregates_only=true --benchmark_out_format=json)

echo "== library cost, hit tests, triangulation, registry"
"$build/bench/tavrin_bench" "${common[@]}" --benchmark_min_time=$min_time \
    --benchmark_out="$results/library.json"

echo "== Mesa: library, floor, QPainter into a QImage"
"$build/bench/tavrin_bench_gl" "${common[@]}" --benchmark_min_time=$gl_min_time \
    --benchmark_filter='Mesa|QPainterRaster' --benchmark_out="$results/mesa.json"
"$build/bench/tavrin_bench_gl" --renderer > "$results/renderer.txt" || echo "unknown" > "$results/renderer.txt"

echo "== Qt OpenGL context: library, floor, QPainter on a QOpenGLPaintDevice"
if [[ -z "${DISPLAY:-}" ]] && command -v Xvfb >/dev/null; then
    for n in $(seq 90 120); do
        if [[ ! -e /tmp/.X11-unix/X$n && ! -e /tmp/.X$n-lock ]]; then break; fi
    done
    Xvfb ":$n" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
    xvfb_pid=$!
    export DISPLAY=":$n"
    sleep 2
fi
QT_QPA_PLATFORM=offscreen "$build/bench/tavrin_bench_gl" "${common[@]}" --benchmark_min_time=$gl_min_time \
    --benchmark_filter='QtGl|QPainterGl' --benchmark_out="$results/qtgl.json" || true
load_after=$(cut -d' ' -f1-3 /proc/loadavg)

python3 "$root/scripts/bench_report.py" --results "$results" --out "$out" \
    --load-before "$load_before" --load-after "$load_after" \
    --repetitions "$repetitions" ${TAVRIN_BENCH_QUICK:+--quick}
echo "wrote $out"
