#!/usr/bin/env bash
# try_packages.sh [--chroot] PACKAGES: installs the packages of a folder, starts the client from them on the demo site, and
# builds and runs the program that the README makes from them.
# Without --chroot they are unpacked into an empty folder, over the libraries of this machine; with it they are installed
# by apt in a bare Debian that is made for them, by the lines of the README, which takes root, some minutes and a mirror.
set -euo pipefail

is_chroot=0
if [ "${1:-}" = --chroot ]; then
  is_chroot=1
  shift
fi
packages=$(cd "$1" && pwd)
cd "$(dirname "${BASH_SOURCE[0]}")/.."
suffix=
if compgen -G "$packages/*-qt6*.deb" >/dev/null; then
  suffix=-qt6
fi
root=$(mktemp -d "${TMPDIR:-/tmp}/tarn-packages.XXXXXX")
chmod 755 "$root"
trap 'rm -rf --one-file-system "$root"' EXIT

# With the call before it the client makes a store with the demo site of its own, plays, and says what it shows.
start_client() {
  local state
  state=$("$@" xvfb-run -a -s "-screen 0 1600x900x24" "tarn-client$suffix" --play "Gate overview" --quit-after 3 | tail -n 1)
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

# What the README has an integrator do in the folder of the packages; the program is run without a display and ends.
lines_of_readme() {
  local lines
  lines=$(sed -n '/^In the folder of the packages/,/^That is/ s/^    //p' README.md | sed 's/^sudo //; s/^embed\/embed$/& --play-first/')
  if [ -n "$suffix" ]; then
    lines=$(sed "s/\(libtarn[a-z]*\)1_/\1$suffix-1_/g; s/libtarnplanview-dev/libtarnplanview$suffix-dev/g" <<<"$lines")
  fi
  if [ "$(wc -l <<<"$lines")" -ne 3 ]; then
    echo "packages: the README's lines about packages are not where they were" >&2
    return 1
  fi
  printf '%s\n' "$lines"
}

check_texts() {
  python3 tests/embedding/check_texts.py client/translations/tarn_en.ts /dev/stdin
}

if [ "$is_chroot" -eq 1 ]; then
  lines=$(lines_of_readme)
  mkdir "$root/debian"
  # shellcheck source=/dev/null
  mmdebstrap --quiet --mode=root --variant=apt "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$root/debian"
  root_of=$root/debian
  mkdir "$root_of/tmp/packages"
  cp "$packages"/*.deb "$root_of/tmp/packages"
  printf '%s\n' 'APT::Get::Assume-Yes "true";' 'APT::Install-Recommends "false";' 'quiet "2";' >"$root_of/etc/apt/apt.conf.d/90try"
  inside=(chroot "$root_of" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/tmp DEBIAN_FRONTEND=noninteractive
    QT_QPA_PLATFORM=offscreen sh -ec)
  "${inside[@]}" "apt-get update; cd /tmp/packages; ( $(head -n 2 <<<"$lines") ) >&2; $(tail -n 1 <<<"$lines")" | check_texts
  "${inside[@]}" 'apt-get install /tmp/packages/*.deb xvfb xauth fonts-dejavu-core >&2; dpkg-query -W "libtarn*" "tarn-*"'
  start_client chroot "$root_of" env -i PATH=/usr/bin:/bin HOME=/tmp
else
  for package in "$packages"/*.deb; do
    dpkg-deb -x "$package" "$root"
  done
  libraries=$(dirname "$(find "$root/usr/lib" -name 'libTarnHost*.so.?')")
  start_client env -i "PATH=$root/usr/bin:/usr/bin:/bin" "LD_LIBRARY_PATH=$libraries" "HOME=$root"
  cmake -S "$root/usr/share/doc/libtarnplanview$suffix-dev/examples/embed" -B "$root/embed" "-DCMAKE_PREFIX_PATH=$root/usr" >&2
  cmake --build "$root/embed" >&2
  env -i "LD_LIBRARY_PATH=$libraries" "HOME=$root" QT_QPA_PLATFORM=offscreen "$root/embed/embed" --play-first | check_texts
fi
