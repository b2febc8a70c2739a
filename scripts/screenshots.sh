#!/usr/bin/env bash
# screenshots.sh [CLIENT]: takes the pictures of the client in docs/images, one a skin, on a display and a store of its
# own. Builds the release client when none is named.
set -euo pipefail

client=${1:+$(realpath "$1")}
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
if [ -z "$client" ]; then
  scripts/build.sh release tarn-client
  client=$root/build/release/bin/tarn-client
fi
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -p docs/images
cd "$home"
for skin in redblack white; do
  XDG_DATA_HOME=$home xvfb-run -a -s "-screen 0 1600x900x24" "$client" --store sqlite:demo.sqlite --skin "$skin" \
    --lang en --set load_all=1 --set timed_play=0 --play "Gate overview" --quit-after 5 \
    --screenshot "$root/docs/images/client_$skin.png" >/dev/null
done
