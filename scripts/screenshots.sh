#!/usr/bin/env bash
# screenshots.sh [CLIENT [FOLDER]]: takes the pictures of the client, one for each scene and skin, into docs/images or
# FOLDER, on a display and a new store each. Builds the release client when none is named.
set -euo pipefail

client=${1:+$(realpath "$1")}
folder=${2:+$(realpath -m "$2")}
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
if [ -z "$client" ]; then
  suffix=$(scripts/qt_suffix.sh)
  scripts/build.sh "release$suffix" tarn-client
  client=$root/build/release$suffix/bin/tarn-client$suffix
fi
folder=${folder:-$root/docs/images}
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -p "$folder"
cd "$home"

# shot NAME SKIN OPTION...
shot() {
  local name=$1 skin=$2
  shift 2
  rm -f demo.sqlite*  # a scene may change what the next one shows
  XDG_DATA_HOME=$home XDG_CONFIG_HOME=$home \
    xvfb-run -a -s "-screen 0 1920x1080x24 -dpi 96" "$client" --store sqlite:demo.sqlite --skin "$skin" \
    --lang en "$@" --screenshot "$folder/${name}_$skin.png" >/dev/null
}

scenes=$("$client" --help | sed -n 's/^.*Scenes: //p')
[ -n "$scenes" ] || { echo "screenshots: the client names no scenes" >&2; exit 1; }
for skin in redblack white; do
  shot client "$skin" --set load_all=1 --set timed_play=0 --play "Gate overview" --quit-after 5
  for scene in $scenes; do
    case $scene in
      row-menu-guard) shot "$scene" "$skin" --scene "$scene" --user guard --quit-after 4 ;;
      settings-damaged)
        echo '{"version"' >damaged.json
        shot "$scene" "$skin" --scene "$scene" --settings damaged.json --quit-after 4
        ;;
      wait) shot "$scene" "$skin" --scene wait --delay 60000 --quit-after 8 ;;
      *) shot "$scene" "$skin" --scene "$scene" --quit-after 4 ;;
    esac
  done
done
