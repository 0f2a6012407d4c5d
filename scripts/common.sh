# Helpers shared by the scripts in this folder; source it, don't run it.
# shellcheck shell=bash

VELLACORE_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
VELLACORE_BUILD_ROOT=${VELLACORE_BUILD_ROOT:-$VELLACORE_ROOT/build}
VELLACORE_JOBS=${VELLACORE_JOBS:-2}

vc_log() { printf '\n\033[1m== %s\033[0m\n' "$*"; }
vc_die() { printf 'error: %s\n' "$*" >&2; exit 1; }

# 125 -> "2m05s"
vc_duration() {
    local s=$1
    printf '%dm%02ds' $((s / 60)) $((s % 60))
}

# Ninja when it is there (install-deps.sh installs it), make otherwise.
vc_generator() {
    if command -v ninja >/dev/null 2>&1; then echo Ninja; else echo "Unix Makefiles"; fi
}

# vc_configure BUILD_DIR CMAKE_ARGS... — configures, starting afresh when the folder was set up with
# another generator (cmake refuses to switch generators in place).
vc_configure() {
    local dir=$1
    shift
    local gen
    gen=$(vc_generator)
    if [[ -f $dir/CMakeCache.txt ]] && ! grep -qx "CMAKE_GENERATOR:INTERNAL=$gen" "$dir/CMakeCache.txt"; then
        echo "note: $dir was configured with another generator; starting it afresh"
        rm -rf "$dir/CMakeCache.txt" "$dir/CMakeFiles"
    fi
    cmake -S "$VELLACORE_ROOT" -B "$dir" -G "$gen" "$@"
}

vc_build() {
    cmake --build "$1" --parallel "$VELLACORE_JOBS"
}
