#!/usr/bin/env bash
# The main job: builds Vellacore and its example game in Release and plays the game headless, on
# the stand-in for the handheld's GL driver that draws with Mesa, saving every frame as a PNG and
# the whole run as one animated GIF. The last lines of the output say where they are.
#
#   scripts/run-main.sh [--frames N]      default: 180 frames, six seconds of the game
#
# Builds in build/release and plays in build/release/run. Environment: VELLACORE_JOBS (default 2),
# VELLACORE_BUILD_ROOT, VELLACORE_SKIP_DEPS=1, SDL_AUDIODRIVER (default dummy: no sound card needed).
# The benchmarks have their own command, scripts/run-bench.sh.
set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

dir=$VELLACORE_BUILD_ROOT/release
run=$dir/run
frames=$run/frames

vc_log "checking packages"
bash "$VELLACORE_ROOT/scripts/install-deps.sh" base || vc_die "could not install the packages the build needs"

vc_log "configure ($dir)"
vc_configure "$dir" -DCMAKE_BUILD_TYPE=Release -DVELLACORE_BUILD_TESTS=OFF -DVELLACORE_BUILD_BENCH=OFF
vc_log "build"
vc_build "$dir"

game=$dir/examples/vellacore_example
standin=$dir/standins/mesa/libopengles_lite.so
[[ -x $game ]] || vc_die "the build did not produce $game"
[[ -f $standin ]] || vc_die "the build did not produce $standin"

# The engine opens ./libopengles_lite.so first, so the stand-in goes into the game's working
# directory. A fresh frames folder keeps an earlier, longer run's pictures out of this one.
mkdir -p "$run"
rm -rf "$frames" "$run/libopengles_lite.so"
cp "$standin" "$run/libopengles_lite.so"

vc_log "play $game${*:+ $*} (in $run)"
(cd "$run" && SDL_AUDIODRIVER=${SDL_AUDIODRIVER:-dummy} VELLACORE_FRAME_DIR=$frames "$game" "$@")

count=$(find "$frames" -name 'frame-*.png' | wc -l)
[[ -s $frames/run.gif ]] || vc_die "the run left no $frames/run.gif"
vc_log "pictures of the run"
echo "  $count frames:  $frames/frame-*.png"
echo "  animation:   $frames/run.gif"
echo "  engine log:  $run/Xapp.log"
