#!/usr/bin/env bash
# Builds the library and the rkcalendar tool. Without arguments it makes next year's wall
# calendar (cover and twelve months) for Bavaria with holidays, school vacations and moon
# phases as a PDF in the current directory and prints its path; with arguments it runs
# rkcalendar with them.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
bash "$ROOT/scripts/ensure-packages.sh" "${BUILD_PACKAGES[@]}"
configure_and_build "$ROOT/build" -DRKXML_BUILD_TESTS=OFF
if [ $# -eq 0 ]; then
    # Next year's wall calendar for Bavaria, with every kind of marked day.
    set -- render --template wall-month --locale de_DE --province BY --features holidays,vacations,moonphases
fi
"$ROOT/build/bin/rkcalendar" "$@"
