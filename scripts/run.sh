#!/usr/bin/env bash
# Builds the library and the rkcalendar tool, then shows this month's calendar page
# for Bavaria with holidays, school vacations and moon phases.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
bash "$ROOT/scripts/ensure-packages.sh" "${BUILD_PACKAGES[@]}"
configure_and_build "$ROOT/build" -DRKXML_BUILD_TESTS=OFF
if [ $# -eq 0 ]; then
    # The current month for Bavaria, with every kind of marked day.
    set -- month --locale de_DE --province BY --features holidays,vacations,moonphases
fi
"$ROOT/build/bin/rkcalendar" "$@"
