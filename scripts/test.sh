#!/usr/bin/env bash
# Builds everything and runs the whole test suite through ctest.
# RKXML_SANITIZE="address;undefined" or "thread" builds a sanitizer tree (build-<name>).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
bash "$ROOT/scripts/ensure-packages.sh" "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"
dir="$ROOT/build"
args=(-DRKXML_BUILD_TESTS=ON)
if [ -n "${RKXML_SANITIZE:-}" ]; then
    dir="$ROOT/build-$(echo "$RKXML_SANITIZE" | tr ';,' '--')"
    args+=("-DRKXML_SANITIZE=$RKXML_SANITIZE")
    # QtTest's watchdog thread trips ThreadSanitizer inside Qt; nothing of ours is suppressed.
    export TSAN_OPTIONS="${TSAN_OPTIONS:-suppressions=$ROOT/tests/data/css/tsan.supp}"
    # Qt's offscreen platform and the renderer cache keep memory for the life of the process.
    export LSAN_OPTIONS="${LSAN_OPTIONS:-suppressions=$ROOT/cmake/lsan.supp}"
fi
configure_and_build "$dir" "${args[@]}"
cd "$dir"
ctest --output-on-failure -j "$JOBS" "$@"
