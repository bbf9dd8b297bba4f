#!/usr/bin/env bash
# Builds and runs the consumer project against Tavrin installed under PREFIX, once with
# CMake's find_package and once with pkg-config.
set -euo pipefail
prefix=$1
work=$2
here=$(cd "$(dirname "$0")" && pwd)

cmake -S "$here" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake" >/dev/null
LD_LIBRARY_PATH="$prefix/lib:$prefix/lib64:${LD_LIBRARY_PATH:-}" "$work/cmake/consumer"
LD_LIBRARY_PATH="$prefix/lib:$prefix/lib64:${LD_LIBRARY_PATH:-}" "$work/cmake/painter-consumer"

pcdir=$(dirname "$(find "$prefix" -name tavrin.pc | head -n1)")
export PKG_CONFIG_PATH="$pcdir:${PKG_CONFIG_PATH:-}"
# Qt and GL are private requirements: a consumer of the shared library needs neither.
c++ -std=c++17 "$here/main.cpp" -o "$work/consumer-pc" $(pkg-config --cflags tavrin) \
    $(pkg-config --libs tavrin)
LD_LIBRARY_PATH="$(pkg-config --variable=libdir tavrin):${LD_LIBRARY_PATH:-}" "$work/consumer-pc"
