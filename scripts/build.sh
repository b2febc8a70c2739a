#!/usr/bin/env bash
# build.sh PRESET [TARGET...]: configures and builds one preset; quiet unless it fails.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift
log=build/$preset.log
mkdir -p build
step() {
  if ! "$@" >>"$log" 2>&1; then
    echo "build: '$*' failed; the end of $log:" >&2
    tail -n 60 "$log" >&2
    exit 1
  fi
}
: >"$log"
echo "Building ($preset) ..." >&2
step cmake --preset "$preset"
if [ "$#" -gt 0 ]; then
  step cmake --build --preset "$preset" --target "$@"
else
  step cmake --build --preset "$preset"
fi
