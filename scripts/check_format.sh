#!/usr/bin/env bash
# Fails when a C++ file is not formatted as .clang-format says. With --fix formats it instead.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
mapfile -t files < <(git ls-files -- '*.h' '*.cpp')
if [ "${1:-}" = --fix ]; then
  clang-format -i "${files[@]}"
else
  clang-format --dry-run -Werror "${files[@]}"
  echo "format: ${#files[@]} files are in order"
fi
