#!/usr/bin/env bash
# Fails when a document points at a file that does not exist, when a test waits by the clock instead of a condition, or
# when the version of Qt is asked for outside base/qt.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
bad=0
while IFS=: read -r document link; do
  target=${link%%#*}
  [ -n "$target" ] || continue
  if [ ! -e "$(dirname "$document")/$target" ]; then
    echo "docs: $document points at $link, which is not there" >&2
    bad=1
  fi
done < <(git ls-files -- '*.md' | xargs grep -oHE '\]\([^)]+\)' | sed -E 's/\]\(([^)]+)\)/\1/' | grep -vE ':(https?|mailto):')
# Paths named in backticks in the documents must exist, too.
while IFS=: read -r document path; do
  if [ ! -e "$path" ]; then
    echo "docs: $document names $path, which is not there" >&2
    bad=1
  fi
done < <(git ls-files -- '*.md' | xargs grep -oHE '`(base|config|data|service|tree|panel|dialogs|host|hostkit|client|tests|benchmarks|scripts|cmake|resources|docs)/[A-Za-z0-9_./-]+`' | tr -d '`')
if git grep -nE 'qWait\(|qSleep\(|msleep\(|sleep_for\(|usleep\(' -- tests | grep -v UNAVOIDABLE >&2; then
  echo "docs: tests wait on conditions, not on the clock" >&2
  bad=1
fi
if git grep -nE '^ *# *(if|elif).*QT_VERSION' -- ':!base/qt' >&2; then
  echo "docs: what the two Qts spell differently stands in base/qt" >&2
  bad=1
fi
if git grep -nE 'Qt[56]::' -- '*CMakeLists.txt' '*.cmake' '*.cmake.in' >&2; then
  echo "docs: parts of Qt are named by the version that is built on, as in Qt\${TARN_QT_VERSION}::Core" >&2
  bad=1
fi
[ "$bad" -eq 0 ] && echo "docs: in order"
exit "$bad"
