#!/usr/bin/env bash
# Builds the benchmarks (optimised) and prints each case's time against its baseline.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
bash "$ROOT/scripts/ensure-packages.sh" "${BUILD_PACKAGES[@]}" libbenchmark-dev libkf5holidays-dev python3
BUILD_TYPE=Release configure_and_build "$ROOT/build-bench" -DRKXML_BUILD_TESTS=OFF -DRKXML_BUILD_BENCHMARKS=ON
python3 "$ROOT/benchmarks/run.py" "$ROOT/build-bench/bin" "$@"
