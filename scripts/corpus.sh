#!/usr/bin/env bash
# Runs the clip-art normaliser over Debian's public-domain clip-art collection
# (package openclipart-svg, installed when missing) and reports parse failures,
# crashes, time per file and the files whose rendering changed.
# Extra arguments go to rkxml-corpus (e.g. --mode fill, --images DIR, --limit 500).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
bash "$ROOT/scripts/ensure-packages.sh" "${BUILD_PACKAGES[@]}" openclipart-svg
BUILD_TYPE=Release configure_and_build "$ROOT/build-corpus" -DRKXML_BUILD_TESTS=OFF
QT_QPA_PLATFORM=offscreen "$ROOT/build-corpus/bin/rkxml-corpus" --jobs "$JOBS" "$@" /usr/share/openclipart/svg
