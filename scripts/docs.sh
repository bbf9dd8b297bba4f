#!/usr/bin/env bash
# Generates the API reference into docs/api/ with Doxygen; any warning fails the run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
cd "$root"
rm -rf docs/api
doxygen docs/Doxyfile
echo "api reference: docs/api/html/index.html"
