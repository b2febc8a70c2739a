#!/usr/bin/env bash
# packages.sh [BUILD]: makes the Debian packages of a build that is there, or else of one of its own (TARN_QT=6: on Qt 6),
# in BUILD/packages, and lets lintian, appstreamcli and desktop-file-validate look at them.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
suffix=$(scripts/qt_suffix.sh)
build=${1:-build/packages$suffix}
# The packages carry the date of what they are made from.
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2>/dev/null || date +%s)
export SOURCE_DATE_EPOCH
if [ "$#" -eq 0 ]; then
  scripts/setup.sh
  # As a release build, whose objects serve as well.
  export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
  scripts/build.sh "packages$suffix"
fi

made=$build/packages
rm -rf "$made"
if ! (cd "$build" && cpack) >"$build/packages.log" 2>&1; then
  echo "packages: cpack failed; the end of $build/packages.log:" >&2
  tail -n 30 "$build/packages.log" >&2
  exit 1
fi
rm -rf "$made/_CPack_Packages"

# looked_at PROGRAM ARGUMENT...: fails with what the program says, also when it is not there.
looked_at() {
  local log=$build/$1.log
  if ! "$@" >"$log" 2>&1; then
    echo "packages: $1 does not pass:" >&2
    grep '^E:' "$log" >&2 || cat "$log" >&2
    exit 1
  fi
}
# An error is a fault of ours; warnings stand in the log.
looked_at lintian --fail-on error --tag-display-limit 0 --show-overrides "$made"/*.deb
looked_at appstreamcli validate --no-net "$build"/packaging/*.metainfo.xml
looked_at desktop-file-validate "$build"/packaging/*.desktop
ls "$made"/*.deb
