#!/usr/bin/env bash
# Builds the folder of armel (ARMv5TE soft-float Debian) libraries the cross build links against and
# the emulator loads: the packages in scripts/armel-packages.txt, downloaded from the machine's
# Debian mirrors and unpacked with dpkg-deb. The system is left alone: apt runs with its own state
# and cache folders under the build root, so no foreign architecture is added to dpkg and nothing
# needs root. Done again only when the package list changes.
#
#   scripts/armel-sysroot.sh [DIR]        default: build/sysroot-armel
#
# Prints nothing on stdout but the sysroot path, so callers can use $(scripts/armel-sysroot.sh).
set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

sysroot=${1:-$VELLACORE_BUILD_ROOT/sysroot-armel}
list=$VELLACORE_ROOT/scripts/armel-packages.txt
mapfile -t packages < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "$list")

mkdir -p "$sysroot"
sysroot=$(cd "$sysroot" && pwd)
stamp=$sysroot/.packages
want=$(printf '%s\n' "${packages[@]}" | sort -u)

if [[ ${#packages[@]} -eq 0 ]]; then
    echo "$sysroot"
    exit 0
fi
if [[ -f $stamp ]] && [[ $(cat "$stamp") == "$want" ]]; then
    echo "armel-sysroot: up to date ($sysroot)" >&2
    echo "$sysroot"
    exit 0
fi

{
    echo "armel-sysroot: fetching ${packages[*]}"
    apt_dir=$VELLACORE_BUILD_ROOT/apt-armel
    rm -rf "$apt_dir"
    mkdir -p "$apt_dir/lists/partial" "$apt_dir/cache/archives/partial" "$apt_dir/debs"
    : >"$apt_dir/status"
    apt_opts=(-q
        -o APT::Architecture=armel -o APT::Architectures::=armel
        -o Dir::State="$apt_dir" -o Dir::State::Lists="$apt_dir/lists" -o Dir::State::status="$apt_dir/status"
        -o Dir::Cache="$apt_dir/cache" -o Debug::NoLocking=1 -o APT::Sandbox::User=root
        -o Acquire::Languages=none -o Acquire::IndexTargets::deb::Contents-deb::DefaultEnabled=false)
    apt-get "${apt_opts[@]}" update
    (cd "$apt_dir/debs" && apt-get "${apt_opts[@]}" download "${packages[@]/%/:armel}")

    rm -rf "$sysroot"
    mkdir -p "$sysroot"
    for deb in "$apt_dir"/debs/*.deb; do
        echo "armel-sysroot: unpacking $(basename "$deb")"
        dpkg-deb -x "$deb" "$sysroot"
    done
    # Absolute links in the packages point into the build machine's root; point them into ours.
    while IFS= read -r -d '' link; do
        target=$(readlink "$link")
        if [[ $target == /* ]]; then
            ln -sfn "$(realpath -m --relative-to="$(dirname "$link")" "$sysroot$target")" "$link"
        fi
    done < <(find "$sysroot" -type l -print0)
    rm -rf "$apt_dir"
    echo "$want" >"$stamp"
    echo "armel-sysroot: ready ($sysroot)"
} >&2

echo "$sysroot"
