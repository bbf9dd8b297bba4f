#!/usr/bin/env bash
# Refusals of tavrin-render: every malformed scene in bad/ and a few wrong command lines
# must exit non-zero with exactly one line on stderr (the line bad/expected.txt gives
# for the scene), print nothing on stdout, and leave no file in the output directory.
#
# Usage: check-bad-scenes.sh PATH/TO/tavrin-render
set -u
render=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
passed=0
failed=0

# refused EXPECTED-LINE EXPECTED-STATUS ARGS...: runs the renderer in bad/ with ARGS.
refused() {
  local expected=$1 status=$2
  shift 2
  rm -rf "$work/out" && mkdir -p "$work/out"
  (cd "$here/bad" && "$render" "$@" >"$work/stdout" 2>"$work/stderr")
  local rc=$?
  local problem=""
  if [ "$rc" -ne "$status" ]; then
    problem="exit status $rc, expected $status"
  elif [ "$(wc -l <"$work/stderr")" -ne 1 ]; then
    problem="stderr has $(wc -l <"$work/stderr") lines"
  elif [ "$(cat "$work/stderr")" != "$expected" ]; then
    problem="stderr: $(cat "$work/stderr")"
  elif [ -s "$work/stdout" ]; then
    problem="stdout is not empty"
  elif [ -n "$(ls -A "$work/out")" ]; then
    problem="left files behind: $(ls -A "$work/out" | tr '\n' ' ')"
  fi
  if [ -n "$problem" ]; then
    echo "FAIL $*: $problem (expected: $expected)"
    failed=$((failed + 1))
  else
    passed=$((passed + 1))
  fi
}

cd "$here/bad" || exit 1
for scene in *.json; do
  expected=$(awk -v name="$scene: " 'index($0, name) == 1 { print; exit }' expected.txt)
  if [ -z "$expected" ]; then
    echo "FAIL $scene: no line for it in expected.txt"
    failed=$((failed + 1))
    continue
  fi
  refused "$expected" 1 "$scene" -o "$work/out/picture.png"
done
while read -r line; do
  scene=${line%%: *}
  if [ ! -f "$scene" ]; then
    echo "FAIL expected.txt names $scene, which is not in bad/"
    failed=$((failed + 1))
  fi
done <expected.txt

# Files and command lines.
refused "missing.json: cannot read: No such file or directory" 1 missing.json -o "$work/out/picture.png"
refused ".: cannot read: is a directory" 1 . -o "$work/out/picture.png"
refused "$work/out/no/such/dir/picture.png: cannot write: No such file or directory" 1 \
  ../good.json -o "$work/out/no/such/dir/picture.png"
usage="usage: tavrin-render SCENE.json -o OUT.png [--size WxH] [--no-text] [--text-outline] [--renderer gl1|painter|core|gles]"
refused "tavrin-render: no output file given (-o OUT.png) ($usage)" 2 ../good.json
refused "tavrin-render: no scene file given ($usage)" 2 -o "$work/out/picture.png"
refused "tavrin-render: --size: expected WxH with sides from 16 to 4096, got \"640x0\" ($usage)" 2 \
  ../good.json -o "$work/out/picture.png" --size 640x0
refused "tavrin-render: unknown option \"--colour\" ($usage)" 2 ../good.json -o "$work/out/picture.png" --colour
refused "tavrin-render: -o $work/out/picture.gif: the output format follows the extension: .png, .jpg, .jpeg, .svg or .pdf ($usage)" 2 \
  ../good.json -o "$work/out/picture.gif"
refused "tavrin-render: -o $work/out/picture.svg: SVG is written by --renderer painter only ($usage)" 2 \
  ../good.json -o "$work/out/picture.svg" --renderer gl1
refused "tavrin-render: --renderer: expected gl1, painter, core or gles, got \"gl3\" ($usage)" 2 \
  ../good.json -o "$work/out/picture.png" --renderer gl3
# Under a Qt platform without OpenGL, core and gles say so and write nothing.
QT_QPA_PLATFORM=minimal refused \
  "../good.json: no OpenGL 3.3 core context: Qt cannot make the OpenGL context (does its platform have OpenGL?)" 1 \
  ../good.json -o "$work/out/picture.png" --renderer core
# A refused scene leaves no vector file either.
first=$(ls *.json | head -1)
refused "$(awk -v name="$first: " 'index($0, name) == 1 { print; exit }' expected.txt)" 1 "$first" -o "$work/out/picture.pdf"

# Endless input is refused in bounded memory; the output may not be the scene itself.
refused "/dev/zero: larger than 16777216 bytes, not a scene" 1 /dev/zero -o "$work/out/picture.png"
# (A scene named like a picture, reached by its own path and through a link.)
mkdir -p "$work/in" && cp "$here/good.json" "$work/in/scene.png" && ln -s scene.png "$work/in/link.png"
refused "$work/in/scene.png: is the scene file itself, not overwritten" 1 \
  "$work/in/scene.png" -o "$work/in/scene.png"
refused "$work/in/link.png: is the scene file itself, not overwritten" 1 \
  "$work/in/scene.png" -o "$work/in/link.png"
if cmp -s "$here/good.json" "$work/in/scene.png"; then
  passed=$((passed + 1))
else
  echo "FAIL the scene was overwritten by its own picture"
  failed=$((failed + 1))
fi
if "$render" --version | grep -Eqx 'tavrin-render [0-9]+\.[0-9]+\.[0-9]+' && "$render" --help | grep -q '^Exit status'; then
  passed=$((passed + 1))
else
  echo "FAIL --version or --help"
  failed=$((failed + 1))
fi

# Without a display, core and gles draw through Mesa's surfaceless EGL; quietly.
rm -rf "$work/out" && mkdir -p "$work/out"
if (cd "$here" && DISPLAY= WAYLAND_DISPLAY= "$render" good.json -o "$work/out/core.png" --renderer core 2>"$work/stderr" &&
    DISPLAY= WAYLAND_DISPLAY= "$render" good.json -o "$work/out/gles.png" --renderer gles 2>>"$work/stderr") &&
   [ -s "$work/out/core.png" ] && [ -s "$work/out/gles.png" ] && [ ! -s "$work/stderr" ]; then
  passed=$((passed + 1))
else
  echo "FAIL good.json with --renderer core and gles without a display: $(head -c 300 "$work/stderr")"
  failed=$((failed + 1))
fi

# A .jpg output is a JPEG picture.
rm -rf "$work/out" && mkdir -p "$work/out"
if (cd "$here" && "$render" good.json -o "$work/out/picture.jpg") && [ "$(head -c 2 "$work/out/picture.jpg" | od -An -tx1 | tr -d ' ')" = ffd8 ]; then
  passed=$((passed + 1))
else
  echo "FAIL good.json -o picture.jpg did not write a JPEG"
  failed=$((failed + 1))
fi

# SVG: well-formed XML with the figures as vector elements; PDF: a document a reader opens,
# one page of the view's size in points. Neither needs an OpenGL context.
rm -rf "$work/out" && mkdir -p "$work/out"
if (cd "$here" && "$render" good.json -o "$work/out/picture.svg" && "$render" good.json -o "$work/out/picture.pdf") &&
   xmllint --noout "$work/out/picture.svg" && grep -q '<polyline\|<path\|<polygon' "$work/out/picture.svg" &&
   pdfinfo "$work/out/picture.pdf" | grep -q '^Pages: *1$'; then
  passed=$((passed + 1))
else
  echo "FAIL good.json as SVG or PDF"
  failed=$((failed + 1))
fi

# --text-outline changes the picture (the labels gain their outline) and nothing else
# about the run.
rm -rf "$work/out" && mkdir -p "$work/out"
if (cd "$here" && "$render" good.json -o "$work/out/plain.png" && "$render" good.json -o "$work/out/outlined.png" --text-outline) &&
   ! cmp -s "$work/out/plain.png" "$work/out/outlined.png"; then
  passed=$((passed + 1))
else
  echo "FAIL --text-outline did not change the picture"
  failed=$((failed + 1))
fi

# And the good scene next to bad/ does render, so the refusals above are the scenes'.
rm -rf "$work/out" && mkdir -p "$work/out"
if (cd "$here" && "$render" good.json -o "$work/out/picture.png" 2>"$work/stderr") &&
   [ -s "$work/out/picture.png" ] && [ ! -s "$work/stderr" ] && [ "$(ls -A "$work/out")" = picture.png ]; then
  passed=$((passed + 1))
else
  echo "FAIL good.json did not render cleanly: $(cat "$work/stderr")"
  failed=$((failed + 1))
fi

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
