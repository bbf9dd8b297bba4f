#!/usr/bin/env bash
# Installs the Debian packages listed in scripts/debian-packages.txt that are missing.
# Runs apt-get update once, and only when something is missing. Needs root for that.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
list=${1:-$here/debian-packages.txt}

missing=()
while read -r pkg; do
  pkg=${pkg%%#*}
  pkg=$(echo "$pkg" | xargs)
  [ -z "$pkg" ] && continue
  if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$pkg")
  fi
done < "$list"

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi
echo "installing: ${missing[*]}"
if [ "$(id -u)" -ne 0 ]; then
  echo "error: missing Debian packages and not root: ${missing[*]}" >&2
  exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
