#!/usr/bin/env bash
# Builds the Debian packages (runtime and development) into out/packages/, then checks
# them: unpacks both into a scratch root with dpkg -x and builds the consumer project
# against that root with CMake and with pkg-config. TAVRIN_QT_MAJOR=6 packages the Qt 6
# build instead (libtavrin6-0, libtavrin6-dev, into out/packages-qt6/).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
major=${TAVRIN_QT_MAJOR:-5}
suffix=$([ "$major" = 6 ] && echo "-qt6" || true)
build=${TAVRIN_PACKAGE_BUILD_DIR:-$root/build-package$suffix}
out=$root/out/packages$suffix

"$root/scripts/install-deps.sh"

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
      -DTAVRIN_BUILD_TESTS=OFF -DTAVRIN_BUILD_BENCH=OFF -DTAVRIN_QT_MAJOR="$major" >/dev/null
cmake --build "$build" -j "${TAVRIN_JOBS:-2}"
mkdir -p "$out"
(cd "$build" && cpack -G DEB -B "$out" >/dev/null)
rm -rf "$out/_CPack_Packages"
ls -1 "$out"/*.deb

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for deb in "$out"/*.deb; do
  dpkg -x "$deb" "$scratch/root"
done
"$root/tests/consumer/build-consumer.sh" "$scratch/root/usr" "$scratch/work" "$major"
echo "packages: consumer built against the unpacked .deb files"
