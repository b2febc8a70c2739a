#!/usr/bin/env bash
# Installs what packages.txt lists and this machine lacks. Sourced or called by run, test, bench and .ci/run.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

wanted() { sed -e 's/#.*//' -e 's/[[:space:]]//g' "$root/packages.txt" | grep -v '^$'; }

missing() {
  local package
  while IFS= read -r package; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || echo "$package"
  done < <(wanted)
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "setup: neither root nor sudo; cannot install: $(missing | tr '\n' ' ')" >&2
    exit 1
  fi
}

mapfile -t packages < <(missing)
if [ "${#packages[@]}" -gt 0 ]; then
  echo "Installing ${#packages[@]} packages ..." >&2
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq >&2
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${packages[@]}" >&2
fi
