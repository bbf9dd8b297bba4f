#!/usr/bin/env bash
# Builds and runs the consumer project against Tavrin installed under PREFIX, once with
# CMake's find_package and once with pkg-config; then checks that a project on the other
# Qt is stopped at configure time with a message naming the right build (when that Qt is
# installed). QT_MAJOR (5 by default) is the Qt the installed Tavrin was built with.
#   build-consumer.sh PREFIX WORKDIR [QT_MAJOR]
set -euo pipefail
prefix=$1
work=$2
major=${3:-5}
here=$(cd "$(dirname "$0")" && pwd)
suffix=$([ "$major" = 6 ] && echo 6 || true)

cmake -S "$here" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" -DTAVRIN_QT_MAJOR="$major" >/dev/null
cmake --build "$work/cmake" >/dev/null
LD_LIBRARY_PATH="$prefix/lib:$prefix/lib64:${LD_LIBRARY_PATH:-}" "$work/cmake/consumer"
LD_LIBRARY_PATH="$prefix/lib:$prefix/lib64:${LD_LIBRARY_PATH:-}" "$work/cmake/painter-consumer"
if [ "$major" = 6 ]; then
  # It calls libtavrin-qt only, so the linker may leave libtavrin out of it: libtavrin-qt
  # finds libtavrin beside itself, with no library path set.
  QT_QPA_PLATFORM=offscreen "$work/cmake/quick-consumer"
fi

pcdir=$(dirname "$(find "$prefix" -name "tavrin$suffix.pc" | head -n1)")
export PKG_CONFIG_PATH="$pcdir:${PKG_CONFIG_PATH:-}"
# Qt and GL are private requirements: a consumer of the shared library needs neither.
c++ -std=c++17 "$here/main.cpp" -o "$work/consumer-pc" $(pkg-config --cflags "tavrin$suffix") \
    $(pkg-config --libs "tavrin$suffix")
LD_LIBRARY_PATH="$(pkg-config --variable=libdir "tavrin$suffix"):${LD_LIBRARY_PATH:-}" "$work/consumer-pc"

other=$([ "$major" = 6 ] && echo 5 || echo 6)
if [ -d "/usr/lib/x86_64-linux-gnu/cmake/Qt$other" ] || [ -d "/usr/lib/x86_64-linux-gnu/cmake/Qt${other}Core" ]; then
  if cmake -S "$here/other-qt" -B "$work/other-qt" -DCMAKE_PREFIX_PATH="$prefix" -DTAVRIN_QT_MAJOR="$major" \
       >"$work/other-qt.log" 2>&1; then
    echo "a Qt $other project configured against the Qt $major build of Tavrin" >&2
    exit 1
  fi
  grep -q "was built with Qt $major, and this project uses Qt $other" "$work/other-qt.log" || {
    cat "$work/other-qt.log" >&2
    exit 1
  }
  echo "consumer: a Qt $other project is refused at configure time"
fi
