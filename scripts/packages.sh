#!/usr/bin/env bash
# packages.sh [BUILD]: makes the Debian packages of a build that is there, or else of one of its own, in BUILD/packages,
# and lets lintian and appstreamcli look at them.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${1:-build/packages}
# The packages carry the date of what they are made from.
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2>/dev/null || date +%s)
export SOURCE_DATE_EPOCH
if [ "$#" -eq 0 ]; then
  scripts/setup.sh
  # As a release build, whose objects serve as well.
  export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
  scripts/build.sh packages
fi

made=$build/packages
rm -rf "$made"
if ! (cd "$build" && cpack) >"$build/packages.log" 2>&1; then
  echo "packages: cpack failed; the end of $build/packages.log:" >&2
  tail -n 30 "$build/packages.log" >&2
  exit 1
fi
rm -rf "$made/_CPack_Packages"
if command -v lintian >/dev/null; then
  # An error is a fault of ours; warnings stand in the log.
  lintian --fail-on error --tag-display-limit 0 --show-overrides "$made"/*.deb >"$build/lintian.log" 2>&1 || {
    grep '^E:' "$build/lintian.log" >&2 || cat "$build/lintian.log" >&2
    exit 1
  }
else
  echo "packages: lintian is not there; the packages were not looked at" >&2
fi
if command -v appstreamcli >/dev/null; then
  appstreamcli validate --no-net "$build"/packaging/*.metainfo.xml >"$build/appstream.log" || {
    cat "$build/appstream.log" >&2
    exit 1
  }
fi
ls "$made"/*.deb
