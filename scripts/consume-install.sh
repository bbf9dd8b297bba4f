#!/usr/bin/env bash
# Installs a configured and built Tavrin into a scratch prefix and builds and runs the
# consumer projects against it (tests/consumer/build-consumer.sh).
#   consume-install.sh BUILD_DIR [QT_MAJOR]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$1
major=${2:-5}
prefix=$(mktemp -d)
consumer=$(mktemp -d)
trap 'rm -rf "$prefix" "$consumer"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null
"$root/tests/consumer/build-consumer.sh" "$prefix" "$consumer" "$major"
