#!/usr/bin/env bash
# Builds the library and the rkcalendar tool. Without arguments it makes next year's wall
# calendar (cover and twelve months) for Bavaria with holidays, school vacations and moon
# phases as a PDF in the current directory and prints its path; with arguments it runs
# rkcalendar with them.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
bash "$ROOT/scripts/ensure-packages.sh" "${BUILD_PACKAGES[@]}"
# A tree of its own: the test script's build/ has the tests switched on, and sharing
# one tree with opposite options would reconfigure it on every run of either script.
configure_and_build "$ROOT/build-run" -DRKXML_BUILD_TESTS=OFF
if [ $# -eq 0 ]; then
    # Next year's wall calendar for Bavaria, with every kind of marked day.
    set -- render --template wall-month --locale de_DE --province BY --features holidays,vacations,moonphases
fi
"$ROOT/build-run/bin/rkcalendar" "$@"
