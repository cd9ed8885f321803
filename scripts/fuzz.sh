#!/usr/bin/env bash
# Builds the libFuzzer targets (clang, ASan + UBSan; build-fuzz/) and runs each one for
# SECONDS seconds (default 10) on its seed corpus in fuzz/corpus/<name>/. New inputs go to
# build-fuzz/corpus/<name>/, findings to build-fuzz/findings/. Exits non-zero on any finding.
#   bash scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
bash "$ROOT/scripts/ensure-packages.sh" "${BUILD_PACKAGES[@]}" clang libclang-rt-14-dev llvm
duration="${1:-10}"
shift || true
dir="$ROOT/build-fuzz"
CC=clang CXX=clang++ configure_and_build "$dir" -DRKXML_FUZZ=ON -DRKXML_BUILD_TESTS=OFF
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for binary in "$dir"/bin/fuzz_*; do targets+=("$(basename "$binary" | sed 's/^fuzz_//')"); done
fi
mkdir -p "$dir/findings"
# Caches and singletons keep memory between inputs on purpose, so leak checks would only
# report those; memory errors and undefined behaviour end the run.
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=0:allocator_may_return_null=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
failed=0
for name in "${targets[@]}"; do
    corpus="$dir/corpus/$name"
    mkdir -p "$corpus"
    echo "== fuzz_$name for ${duration}s"
    if ! "$dir/bin/fuzz_$name" "$corpus" "$ROOT/fuzz/corpus/$name" -max_total_time="$duration" \
        -max_len=16384 -timeout=20 -rss_limit_mb=4096 -artifact_prefix="$dir/findings/${name}-" \
        -print_final_stats=1 2>"$dir/findings/$name.log"; then
        echo "fuzz_$name: FINDING (see $dir/findings/$name.log)"
        tail -n 40 "$dir/findings/$name.log"
        failed=1
    else
        grep -E '^stat::number_of_executed_units|^stat::new_units_added|cov:' "$dir/findings/$name.log" | tail -n 3
    fi
done
exit "$failed"
