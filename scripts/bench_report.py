#!/usr/bin/env python3
"""Turns the JSON results of scripts/bench.sh into the measured block of docs/PERFORMANCE.md.

The block lies between the two marker lines below; the rest of the file is kept as it is
(written by hand). Without the file, or without the markers, the block is appended."""

import argparse
import datetime
import json
import os
import platform
import re
import subprocess

BEGIN = "<!-- measured: begin (scripts/bench.sh rewrites this block) -->"
END = "<!-- measured: end -->"
SIZES = (16, 64, 256)


def load(path):
    """{benchmark name without the aggregate suffix: {'real': us, 'cpu': us, counters}}"""
    if not os.path.exists(path):
        return {}
    with open(path) as f:
        data = json.load(f)
    out = {}
    ratios = {}
    for b in data.get("benchmarks", []):
        if b.get("run_type") == "iteration" and "ratio" in b and not b.get("error_occurred"):
            ratios.setdefault(b["run_name"], []).append(b["ratio"])
    for b in data.get("benchmarks", []):
        if b.get("aggregate_name") != "median" or b.get("error_occurred"):
            continue
        name = b["run_name"]
        scale = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}[b.get("time_unit", "ns")]
        entry = {"real": b["real_time"] * scale, "cpu": b["cpu_time"] * scale}
        for key in ("gl_calls", "allocs", "vertices", "shapes", "triangles", "library_us", "floor_us", "ratio",
                    "capture_us", "render_cpu_us", "draw_calls"):
            if key in b:
                entry[key] = b[key]
        if name in ratios:
            entry["ratios"] = sorted(ratios[name])
        out[name] = entry
    return out


def find(results, prefix, size=None):
    for name, entry in results.items():
        parts = name.split("/")
        if parts[0] != prefix:
            continue
        if size is None or (len(parts) > 1 and parts[1] == str(size)):
            return entry
    return None


def us(value):
    if value is None:
        return "n/a"
    return f"{value:,.1f}" if value < 100 else f"{value:,.0f}"


def ratio(a, b):
    if a is None or b is None or b == 0:
        return None
    return a / b


def fmt_ratio(r):
    return "n/a" if r is None else f"{r:.3f}"


def verdict(ok):
    return "n/a" if ok is None else ("met" if ok else "NOT met")


def machine():
    cpu = platform.processor() or "unknown"
    try:
        with open("/proc/cpuinfo") as f:
            for line in f:
                if line.startswith("model name"):
                    cpu = line.split(":", 1)[1].strip()
                    break
    except OSError:
        pass
    try:
        compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True).stdout.splitlines()[0]
    except (OSError, IndexError):
        compiler = "unknown"
    return cpu, os.cpu_count(), compiler


def block(args):
    lib = load(os.path.join(args.results, "library.json"))
    # The Mesa and the Qt variants run in one process: two contexts on one EGL display.
    mesa = load(os.path.join(args.results, "gl.json"))
    qt = mesa
    renderer = "unknown"
    renderer_file = os.path.join(args.results, "renderer.txt")
    if os.path.exists(renderer_file):
        renderer = open(renderer_file).read().strip() or renderer
    cpu, cores, compiler = machine()

    lines = [BEGIN, ""]
    lines.append(f"Measured {datetime.date.today().isoformat()} by `scripts/bench.sh`"
                 + (" (quick run: rough numbers)" if args.quick else "")
                 + f", {args.repetitions} interleaved repetitions per variant, medians.")
    lines.append("")
    lines.append(f"- Machine: {cpu}, {cores} cores, {platform.system()} {platform.release()}")
    lines.append(f"- Load average (1, 5, 15 min): {args.load_before} before, {args.load_after} after"
                 " (the cores are shared with other builds)")
    lines.append(f"- OpenGL: {renderer} (offscreen EGL, surfaceless Mesa); Qt {qt_version()}")
    lines.append(f"- Compiler: {compiler}; library built RelWithDebInfo (-O2 -g)")
    lines.append("")

    # Targets.
    draw64 = find(lib, "BM_LibraryDraw", 64)
    mesa_lib = {n: find(mesa, "BM_MesaLibrary", n) for n in SIZES}
    mesa_floor = {n: find(mesa, "BM_MesaFloor", n) for n in SIZES}
    raster = {n: find(mesa, "BM_QPainterRaster", n) for n in SIZES}
    draw = {n: find(lib, "BM_LibraryDraw", n) for n in SIZES}
    sink = {n: find(lib, "BM_NullSinkReplay", n) for n in SIZES}
    cps = find(lib, "BM_CheckPointSelected")
    cs = find(lib, "BM_CheckSelected")
    split_concave = find(lib, "BM_SplitPolygon", 1)
    fill_concave = find(lib, "BM_PolygonFillSteadyFrame", 1)

    def cpu(e):
        return None if e is None else e["cpu"]

    def real(e):
        return None if e is None else e["real"]

    paired = {n: find(mesa, "BM_MesaPaired", n) for n in SIZES}
    qt_paired = {n: find(qt, "BM_QtGlPaired", n) for n in SIZES}
    r64 = None if paired[64] is None else paired[64]["ratio"]
    faster_cpu = [ratio(cpu(draw[n]), cpu(raster[n])) for n in SIZES]
    faster_mesa = [ratio(real(mesa_lib[n]), real(raster[n])) for n in SIZES]

    def all_below_one(values):
        return None if any(v is None for v in values) else all(v < 1.0 for v in values)

    lines.append("### Targets")
    lines.append("")
    lines.append("| Target | Measured | |")
    lines.append("|---|---|---|")
    lines.append(f"| Library cost, 64 figures ≤ 50 µs/frame | {us(cpu(draw64))} µs | "
                 f"{verdict(None if draw64 is None else draw64['cpu'] <= 50)} |")
    lines.append(f"| Library on Mesa ≤ 1.05 × floor, 64 figures (paired frames) | {fmt_ratio(r64)} | "
                 f"{verdict(None if r64 is None else r64 <= 1.05)} |")
    lines.append("| Faster than QPainter into a QImage, every size: library CPU / QPainter | "
                 + ", ".join(fmt_ratio(v) for v in faster_cpu) + f" | {verdict(all_below_one(faster_cpu))} |")
    lines.append("| ... the same, whole frame on Mesa (llvmpipe rasterises on the CPU) / QPainter | "
                 + ", ".join(fmt_ratio(v) for v in faster_mesa) + f" | {verdict(all_below_one(faster_mesa))} |")
    hit = None if cps is None or cs is None else max(cps["cpu"], cs["cpu"])
    lines.append(f"| Hit-test sweep over 1000 figures ≤ 50 µs | CheckPointSelected {us(cpu(cps))} µs, "
                 f"CheckSelected {us(cpu(cs))} µs | {verdict(None if hit is None else hit <= 50)} |")
    capture64 = find(lib, "BM_CaptureDraw", 64)
    capture_ratio = ratio(cpu(capture64), cpu(draw64))
    lines.append(f"| Capturing the 64-figure frame into a draw list ≤ 1.3 × the OpenGL path's CPU | "
                 f"{us(cpu(capture64))} µs against {us(cpu(draw64))} µs: {fmt_ratio(capture_ratio)} | "
                 f"{verdict(None if capture_ratio is None else capture_ratio <= 1.3)} |")
    renderer = {n: find(qt, "BM_QtGlRenderer", n) for n in SIZES + (1000,)}
    painter_gl = {n: find(qt, "BM_QPainterGl", n) for n in SIZES + (1000,)}
    frame_ratios = [ratio(real(renderer[n]), real(painter_gl[n])) for n in (64, 256)]
    lines.append("| GlRenderer's whole frame ≤ 0.5 × QPainter on GL, 64 and 256 figures (Qt context) | "
                 + ", ".join(fmt_ratio(v) for v in frame_ratios) + " | "
                 + verdict(None if any(v is None for v in frame_ratios) else all(v <= 0.5 for v in frame_ratios)) + " |")
    cpu_ratios = []
    for n in (64, 256):
        c, t = find(lib, "BM_CaptureDraw", n), find(lib, "BM_CoverageMesh", n)
        d = find(lib, "BM_LibraryDraw", n)
        cpu_ratios.append(None if c is None or t is None or d is None else (c["cpu"] + t["cpu"]) / d["cpu"])
    lines.append("| Capture plus tessellation ≤ 2 × the OpenGL path's CPU, 64 and 256 figures | "
                 + ", ".join(fmt_ratio(v) for v in cpu_ratios) + " | "
                 + verdict(None if any(v is None for v in cpu_ratios) else all(v <= 2.0 for v in cpu_ratios)) + " |")
    calls = [e.get("draw_calls") for e in renderer.values() if e is not None]
    lines.append(f"| GlRenderer: at most 2 draw calls a frame | {max(calls):.0f} at every size | "
                 f"{verdict(max(calls) <= 2)} |" if calls else "| GlRenderer: at most 2 draw calls a frame | n/a | not measured |")
    lines.append(f"| SplitPolygon, 20-vertex concave, steady frame ≤ 5 µs | whole fill draw "
                 f"{us(cpu(fill_concave))} µs; a fresh cut {us(cpu(split_concave))} µs | "
                 f"{verdict(None if fill_concave is None else fill_concave['cpu'] <= 5)} |")
    lines.append("")

    lines.append("### Library cost: the scene drawn into the counting GL sink (CPU µs per frame)")
    lines.append("")
    lines.append("| Figures | Draw | GL calls | Allocations | Stream replayed into the sink | Draw / replay |")
    lines.append("|---|---|---|---|---|---|")
    for n in SIZES:
        d, s = draw[n], sink[n]
        lines.append(f"| {n} | {us(cpu(d))} | {d['gl_calls']:.0f} | {d['allocs']:.2f} | {us(cpu(s))} | "
                     f"{fmt_ratio(ratio(cpu(d), cpu(s)))} |" if d else f"| {n} | n/a | | | | |")
    lines.append("")

    lines.append("### Draw lists: the frame captured, tessellated and painted (CPU µs per frame)")
    lines.append("")
    lines.append("Capture: the scene's Draw calls inside a DrawListScope, one list cleared every frame. "
                 "Triangles: TriangleMesh::Build of that list, without and with the antialiasing "
                 "fringes. Coverage: CoverageMesh::Build, the form GlRenderer draws. Painter: "
                 "PaintDrawList into a 1280 x 720 QImage (raster engine, antialiased where the "
                 "OpenGL path smooths).")
    lines.append("")
    lines.append("| Figures | OpenGL path | Capture | Capture / OpenGL path | Vertices | Triangles | "
                 "Triangles, fringed | Coverage | Painter |")
    lines.append("|---|---|---|---|---|---|---|---|---|")
    def vertices(e):
        return "n/a" if e is None or "vertices" not in e else f"{e['vertices']:,.0f}"

    for n in SIZES + (1000,):
        c = find(lib, "BM_CaptureDraw", n)
        plain = lib.get(f"BM_Tessellate/{n}/0")
        fringed = lib.get(f"BM_Tessellate/{n}/1")
        p = find(lib, "BM_PaintDrawList", n)
        d = draw.get(n) or find(lib, "BM_LibraryDraw", n)
        lines.append(f"| {n} | {us(cpu(d))} | {us(cpu(c))} | {fmt_ratio(ratio(cpu(c), cpu(d)))} | "
                     f"{vertices(c)} | {us(cpu(plain))} | {us(cpu(fringed))} | "
                     f"{us(cpu(find(lib, 'BM_CoverageMesh', n)))} | {us(cpu(p))} |")
    lines.append("")

    lines.append("### Mesa: library against its floor, frame for frame (wall µs per frame)")
    lines.append("")
    lines.append("Library and floor frames alternate in one loop (order swapped every iteration); each "
                 "repetition gives the median frame of each and their ratio. The ratio is taken within a "
                 "repetition, so load that comes and goes between repetitions cancels out of it; the "
                 "absolute times are medians over the repetitions and move with the load.")
    lines.append("")
    lines.append("| Figures | Library on Mesa | Floor | Library / floor: median (lowest, highest) "
                 "| Qt context: library | floor | library / floor |")
    lines.append("|---|---|---|---|---|---|---|")

    def spread(e):
        if e is None:
            return "n/a"
        r = e.get("ratios", [])
        tail = f" ({r[0]:.3f}, {r[-1]:.3f})" if r else ""
        return fmt_ratio(e["ratio"]) + tail

    for n in SIZES:
        p, q = paired[n], qt_paired[n]
        lines.append(f"| {n} | {us(p and p['library_us'])} | {us(p and p['floor_us'])} | {spread(p)} | "
                     f"{us(q and q['library_us'])} | {us(q and q['floor_us'])} | {spread(q)} |")
    lines.append("")

    lines.append("### Mesa: separate runs, and QPainter into a QImage (wall µs per frame)")
    lines.append("")
    lines.append("| Figures | Library on Mesa | Floor (replayed stream) | Library / floor | QPainter raster "
                 "| Library CPU / raster CPU | Library on Mesa / raster | Floor / raster |")
    lines.append("|---|---|---|---|---|---|---|---|")
    for n in SIZES:
        lines.append(f"| {n} | {us(real(mesa_lib[n]))} | {us(real(mesa_floor[n]))} | "
                     f"{fmt_ratio(ratio(real(mesa_lib[n]), real(mesa_floor[n])))} | {us(real(raster[n]))} | "
                     f"{fmt_ratio(ratio(cpu(draw[n]), cpu(raster[n])))} | "
                     f"{fmt_ratio(ratio(real(mesa_lib[n]), real(raster[n])))} | "
                     f"{fmt_ratio(ratio(real(mesa_floor[n]), real(raster[n])))} |")
    lines.append("")

    lines.append("### One Qt-made OpenGL context: library, floor and QPainter on a QOpenGLPaintDevice "
                 "(wall µs per frame)")
    lines.append("")
    if not qt:
        lines.append("Not measured: no Qt OpenGL context.")
    else:
        lines.append("| Figures | Library | Floor | QPainter GL | Library / QPainter GL | Floor / QPainter GL |")
        lines.append("|---|---|---|---|---|---|")
        for n in SIZES:
            l, f, p = find(qt, "BM_QtGlLibrary", n), find(qt, "BM_QtGlFloor", n), find(qt, "BM_QPainterGl", n)
            lines.append(f"| {n} | {us(real(l))} | {us(real(f))} | {us(real(p))} | "
                         f"{fmt_ratio(ratio(real(l), real(p)))} | {fmt_ratio(ratio(real(f), real(p)))} |")
    lines.append("")

    lines.append("### GlRenderer in the Qt context, beside the OpenGL path and QPainter (µs per frame)")
    lines.append("")
    if not qt:
        lines.append("Not measured: no Qt OpenGL context.")
    else:
        lines.append("One compatibility context (Mesa llvmpipe through surfaceless EGL, adopted by Qt's eglfs "
                     "platform; no display), one framebuffer object, frames ending in glFinish. GlRenderer: capture "
                     "into a draw list, then Render (the coverage form, upload, the draw calls); its CPU columns are "
                     "the medians of those two steps (Render's includes llvmpipe's vertex work, done on the calling "
                     "thread). QPainter: the equivalent overlay's shapes.")
        lines.append("")
        lines.append("| Figures | GL path | Floor | QPainter GL | QPainter raster | GlRenderer | GlRenderer / QPainter GL "
                     "| Capture CPU | Render CPU | Draw calls |")
        lines.append("|---|---|---|---|---|---|---|---|---|---|")
        for n in SIZES + (1000,):
            r = renderer[n]
            lines.append(f"| {n} | {us(real(find(qt, 'BM_QtGlLibrary', n)))} | {us(real(find(qt, 'BM_QtGlFloor', n)))} | "
                         f"{us(real(painter_gl[n]))} | {us(real(find(mesa, 'BM_QPainterRaster', n)))} | {us(real(r))} | "
                         f"{fmt_ratio(ratio(real(r), real(painter_gl[n])))} | {us(r and r.get('capture_us'))} | "
                         f"{us(r and r.get('render_cpu_us'))} | {'n/a' if r is None else format(r.get('draw_calls', 0), '.0f')} |")
    lines.append("")

    lines.append("### Hit tests, triangulation, registry (CPU µs)")
    lines.append("")
    lines.append("| Benchmark | µs |")
    lines.append("|---|---|")
    rows = [("CheckPointSelected, 1000 figures, one cursor", cps),
            ("CheckSelected, 1000 figures, one cursor", cs),
            ("SplitPolygon (public, std::list), 20-vertex convex", find(lib, "BM_SplitPolygon", 0)),
            ("SplitPolygon (public, std::list), 20-vertex concave", split_concave),
            ("Filled 20-vertex convex polygon, steady frame (whole Draw)",
             find(lib, "BM_PolygonFillSteadyFrame", 0)),
            ("Filled 20-vertex concave polygon, steady frame (whole Draw)", fill_concave),
            ("Registry: add and delete 64 figures", find(lib, "BM_RegistryAddDelete"))]
    for label, e in rows:
        lines.append(f"| {label} | {us(cpu(e))} |")
    lines.append("")
    lines.append(END)
    return "\n".join(lines) + "\n"


def qt_version():
    try:
        out = subprocess.run(["qmake", "-query", "QT_VERSION"], capture_output=True, text=True).stdout.strip()
        return out or "5"
    except OSError:
        return "5"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--results", required=True)
    parser.add_argument("--out", required=True)
    parser.add_argument("--load-before", default="?")
    parser.add_argument("--load-after", default="?")
    parser.add_argument("--repetitions", default="?")
    parser.add_argument("--quick", action="store_true")
    args = parser.parse_args()
    text = block(args)
    existing = open(args.out).read() if os.path.exists(args.out) else "# Performance\n\n"
    pattern = re.compile(re.escape(BEGIN) + ".*?" + re.escape(END) + "\n?", re.S)
    if pattern.search(existing):
        existing = pattern.sub(lambda _: text, existing)
    else:
        existing = existing.rstrip("\n") + "\n\n" + text
    with open(args.out, "w") as f:
        f.write(existing)


if __name__ == "__main__":
    main()
