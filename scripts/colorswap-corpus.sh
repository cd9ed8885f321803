#!/usr/bin/env bash
# Colour swap over Debian's openclipart-svg corpus: every colour extracted from a file is
# mapped to its inverse and applied; extraction afterwards must find exactly the targets.
# Lists the files where it does not and exits non-zero then. Not part of the test suite.
#   bash scripts/colorswap-corpus.sh [DIR...]   (default /usr/share/openclipart)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
bash "$ROOT/scripts/ensure-packages.sh" "${BUILD_PACKAGES[@]}" openclipart-svg
configure_and_build "$ROOT/build" -DRKXML_BUILD_CORPUS_TOOLS=ON >/dev/null
dirs=("$@")
[ ${#dirs[@]} -eq 0 ] && dirs=(/usr/share/openclipart)
"$ROOT/build/bin/rkxml-colorswap" "${dirs[@]}"
