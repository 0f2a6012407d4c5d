#!/usr/bin/env bash
# Installs the Debian packages the build needs, and only those that are missing: when everything is
# there it changes nothing and needs no network. Never prompts.
#
#   scripts/install-deps.sh [GROUP...]     default: all
#
# Groups:
#   base   compilers, CMake, Ninja, pkg-config, GoogleTest, libfixmath, libpng, valgrind, Mesa's EGL and
#          GL ES 1 with its software driver, SDL 1.2 and SDL_mixer 1.2, tslib, giflib (host build, tests)
#   arm    ARMv5TE soft-float cross compiler and qemu-arm (the arm926 suite)
#   bench  Google Benchmark (the benchmark programs)
#   all    all of the above
#
# VELLACORE_SKIP_DEPS=1 skips this altogether (for machines that are not Debian-like).
set -euo pipefail

base=(cmake g++ make ninja-build pkg-config file binutils libgtest-dev googletest libfixmath-dev libpng-dev valgrind
    libegl-dev libgles-dev libegl-mesa0 libgles1 libgl1-mesa-dri libsdl1.2-dev libsdl-mixer1.2-dev libts-dev libgif-dev)
# The arm group also relies on apt-get and dpkg-deb (part of every Debian system): they fetch the
# target libraries listed in scripts/armel-packages.txt (scripts/armel-sysroot.sh).
arm=(g++-arm-linux-gnueabi qemu-user)
bench=(libbenchmark-dev)

if [[ ${VELLACORE_SKIP_DEPS:-0} == 1 ]]; then
    echo "install-deps: VELLACORE_SKIP_DEPS=1, not checking packages"
    exit 0
fi

[[ $# -eq 0 ]] && set -- all
wanted=()
for group in "$@"; do
    case $group in
        base) wanted+=("${base[@]}") ;;
        arm) wanted+=("${arm[@]}") ;;
        bench) wanted+=("${bench[@]}") ;;
        all) wanted+=("${base[@]}" "${arm[@]}" "${bench[@]}") ;;
        *) echo "install-deps: unknown group '$group' (base, arm, bench, all)" >&2; exit 2 ;;
    esac
done

if ! command -v dpkg-query >/dev/null 2>&1; then
    echo "install-deps: no dpkg-query here; install these by hand: ${wanted[*]}" >&2
    echo "install-deps: (set VELLACORE_SKIP_DEPS=1 to skip this check)" >&2
    exit 1
fi

missing=()
for pkg in "${wanted[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Abbrev}' "$pkg" 2>/dev/null || true)
    if [[ $status != ii* ]]; then
        # Each package once, even when two groups name it.
        [[ " ${missing[*]} " == *" $pkg "* ]] || missing+=("$pkg")
    fi
done

if [[ ${#missing[@]} -eq 0 ]]; then
    echo "install-deps: all ${#wanted[@]} packages present"
    exit 0
fi

echo "install-deps: installing ${missing[*]}"
sudo=()
if [[ $(id -u) -ne 0 ]]; then
    if ! command -v sudo >/dev/null 2>&1; then
        echo "install-deps: not root and no sudo; as root run: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    # -n: fail instead of asking for a password when nobody can answer (CI, no terminal).
    if [[ ${CI:-} == true || ! -t 0 ]]; then sudo=(sudo -n); else sudo=(sudo); fi
fi

export DEBIAN_FRONTEND=noninteractive
apt_opts=(-y -q -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=600 -o Dpkg::Options::=--force-confdef -o Dpkg::Options::=--force-confold)
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "${apt_opts[@]}" update
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "${apt_opts[@]}" install --no-install-recommends "${missing[@]}"

for pkg in "${missing[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Abbrev}' "$pkg" 2>/dev/null || true)
    [[ $status == ii* ]] || { echo "install-deps: $pkg is still not installed" >&2; exit 1; }
done
echo "install-deps: done"
