#!/usr/bin/env bash
# Builds Vellacore in Release with the benchmark programs and runs them; the last part of the
# output is the benchmark's own table of ratios.
#
#   scripts/run-bench.sh [ARGS...]     ARGS go to vellacore_bench, e.g. --benchmark_filter=Matrix
#
# Builds in build/release. Environment: VELLACORE_JOBS (default 2), VELLACORE_BUILD_ROOT,
# VELLACORE_SKIP_DEPS=1.
set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

dir=$VELLACORE_BUILD_ROOT/release

vc_log "checking packages"
bash "$VELLACORE_ROOT/scripts/install-deps.sh" base bench || vc_die "could not install the packages the build needs"

vc_log "configure ($dir)"
vc_configure "$dir" -DCMAKE_BUILD_TYPE=Release -DVELLACORE_BUILD_TESTS=OFF -DVELLACORE_BUILD_BENCH=ON
vc_log "build"
vc_build "$dir"

bench=$dir/bench/vellacore_bench
[[ -x $bench ]] || vc_die "the build did not produce $bench"

vc_log "run $bench"
exec "$bench" "$@"
