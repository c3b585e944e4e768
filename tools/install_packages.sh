#!/usr/bin/env bash
# Installs the Debian packages named as arguments, as far as they are missing. Asks nothing.
set -euo pipefail

missing=()
for package in "$@"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [ "$status" = "install ok installed" ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "Please install these packages as root: ${missing[*]}" >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "Installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq </dev/null
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null >/dev/null
