#!/usr/bin/env bash
# try_packages.sh [--chroot] PACKAGES: installs the packages of a folder and starts the client from them on the demo site.
# Without --chroot they are unpacked into an empty folder, over the libraries of this machine; with it they are installed
# by apt in a bare Debian that is made for them, which takes root, some minutes and a mirror.
set -euo pipefail

is_chroot=0
if [ "${1:-}" = --chroot ]; then
  is_chroot=1
  shift
fi
packages=$(cd "$1" && pwd)
root=$(mktemp -d "${TMPDIR:-/tmp}/tarn-packages.XXXXXX")
chmod 755 "$root"
trap 'rm -rf --one-file-system "$root"' EXIT

# With the call before it the client makes a store with the demo site of its own, plays, and says what it shows.
start_client() {
  local state
  state=$("$@" xvfb-run -a -s "-screen 0 1600x900x24" tarn-client --play "Gate overview" --quit-after 3 | tail -n 1)
  python3 - "$state" <<'PYTHON'
import json
import sys

state = json.loads(sys.argv[1])
frames = [window["frames"] for window in state["windows"]]
if state["playing"] != "Gate overview" or min(state["rows"].values()) < 2 or len(frames) != 4 or min(frames) < 1:
    sys.exit(f"packages: the client does not show the demo site: {state}")
print(f"packages: the client plays {state['playing']}, rows {state['rows']}, frames {frames}")
PYTHON
}

if [ "$is_chroot" -eq 1 ]; then
  mkdir "$root/debian"
  # shellcheck source=/dev/null
  mmdebstrap --quiet --mode=root --variant=apt "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$root/debian"
  root_of=$root/debian
  cp "$packages"/*.deb "$root_of/tmp"
  chroot "$root_of" sh -ec 'export DEBIAN_FRONTEND=noninteractive; apt-get update -qq
    apt-get install -y -qq --no-install-recommends /tmp/*.deb xvfb xauth fonts-dejavu-core >/dev/null'
  chroot "$root_of" dpkg-query -W 'libtarn*' 'tarn-*'
  start_client chroot "$root_of" env -i PATH=/usr/bin:/bin HOME=/tmp
else
  for package in "$packages"/*.deb; do
    dpkg-deb -x "$package" "$root"
  done
  libraries=$(dirname "$(find "$root/usr/lib" -name 'libTarnHost*.so.?')")
  start_client env -i "PATH=$root/usr/bin:/usr/bin:/bin" "LD_LIBRARY_PATH=$libraries" "HOME=$root"
fi
