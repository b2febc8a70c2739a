#!/usr/bin/env bash
# Says what presets and programs for the Qt that TARN_QT names (5, or none named; 6) have behind their names.
set -euo pipefail

case "${TARN_QT:-5}" in
  5) ;;
  6) echo -qt6 ;;
  *)
    echo "TARN_QT is \"$TARN_QT\"; 5 and 6 are possible" >&2
    exit 1
    ;;
esac
