#!/usr/bin/env bash
# Installs a built Vellacore into a scratch prefix, moves the prefix (the package files must not
# depend on where they were installed), and builds and runs tests/install/consumer.cpp twice: once
# as a CMake project using find_package(Vellacore), once with flags from pkg-config.
#
#   tests/install/check.sh --build-dir DIR --work-dir DIR [--version X.Y.Z] [--cmake CMAKE] [--cxx CXX]
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build_dir=
work_dir=
version=
cmake_bin=cmake
cxx=c++

while [[ $# -gt 0 ]]; do
    case $1 in
        --build-dir) build_dir=$2; shift 2 ;;
        --work-dir) work_dir=$2; shift 2 ;;
        --version) version=$2; shift 2 ;;
        --cmake) cmake_bin=$2; shift 2 ;;
        --cxx) cxx=$2; shift 2 ;;
        *) echo "unknown argument: $1" >&2; exit 2 ;;
    esac
done
[[ -n $build_dir && -n $work_dir ]] || { echo "usage: $0 --build-dir DIR --work-dir DIR [...]" >&2; exit 2; }

step() { echo "== $*"; }
die() { echo "FAIL: $*" >&2; exit 1; }

rm -rf "$work_dir"
mkdir -p "$work_dir"
staged=$work_dir/staged
prefix=$work_dir/prefix

step "install into $staged"
"$cmake_bin" --install "$build_dir" --prefix "$staged" >"$work_dir/install.log" \
    || { cat "$work_dir/install.log"; die "cmake --install failed"; }
mv "$staged" "$prefix"
step "moved to $prefix"

# Layout: one shared library with a versioned SONAME, the headers, both package descriptions.
lib=$(find "$prefix" -name 'libvellacore.so' | head -n1)
[[ -n $lib ]] || die "libvellacore.so not installed"
libdir=$(dirname "$lib")
[[ -L $lib ]] || die "libvellacore.so is not the development symlink"
real=$(readlink -f "$lib")
[[ -f $real ]] || die "libvellacore.so points at nothing"
soname=$(readelf -d "$real" | sed -n 's/.*Library soname: \[\(.*\)\].*/\1/p')
[[ $soname == libvellacore.so.* ]] || die "SONAME is '$soname', want libvellacore.so.<major>"
[[ -e $libdir/$soname ]] || die "$soname (the SONAME link) not installed"
if [[ -n $version ]]; then
    [[ $soname == "libvellacore.so.${version%%.*}" ]] || die "SONAME $soname does not match version $version"
    [[ $(basename "$real") == "libvellacore.so.$version" ]] || die "library file $(basename "$real"), want libvellacore.so.$version"
fi
if find "$prefix" -name 'libvellacore.a' | grep -q .; then die "a static library was installed as well"; fi
if find "$prefix" -name '*gtest*' -o -name '*gmock*' | grep -q .; then die "GoogleTest files were installed"; fi
[[ -f $prefix/include/Vellacore/Vellacore.h ]] || die "umbrella header include/Vellacore/Vellacore.h not installed"
[[ -f $prefix/include/Vellacore/Math/Fixed.h ]] || die "include/Vellacore/Math/Fixed.h not installed"
config=$(find "$prefix" -name VellacoreConfig.cmake | head -n1)
[[ -n $config ]] || die "VellacoreConfig.cmake not installed"
[[ -f $(dirname "$config")/VellacoreConfigVersion.cmake ]] || die "VellacoreConfigVersion.cmake not installed"
pc=$(find "$prefix" -name vellacore.pc | head -n1)
[[ -n $pc ]] || die "vellacore.pc not installed"
if grep -rq -- "$staged" "$prefix"; then
    die "installed files still name the install directory $staged: $(grep -rl -- "$staged" "$prefix" | tr '\n' ' ')"
fi
echo "library $real (SONAME $soname)"

# 1. CMake package.
step "CMake consumer (find_package)"
"$cmake_bin" -S "$here" -B "$work_dir/cmake-consumer" \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_BUILD_TYPE=Release \
    >"$work_dir/cmake-consumer.log" 2>&1 \
    || { cat "$work_dir/cmake-consumer.log"; die "consumer project did not configure"; }
"$cmake_bin" --build "$work_dir/cmake-consumer" >>"$work_dir/cmake-consumer.log" 2>&1 \
    || { cat "$work_dir/cmake-consumer.log"; die "consumer project did not build"; }
found=$(sed -n 's/^Vellacore_DIR:PATH=//p' "$work_dir/cmake-consumer/CMakeCache.txt")
[[ $found == "$prefix"/* ]] || die "find_package used $found, not the package in $prefix"
out=$("$work_dir/cmake-consumer/vellacore_consumer") || die "CMake consumer failed: $out"
echo "$out"
needed=$(ldd "$work_dir/cmake-consumer/vellacore_consumer" | grep libvellacore || true)
[[ $needed == *"$libdir"/* ]] || die "CMake consumer loads '$needed', not the installed library"

# 2. pkg-config.
step "pkg-config consumer"
PKG_CONFIG_PATH=$(dirname "$pc")
export PKG_CONFIG_PATH
pkg-config --exists vellacore || die "pkg-config does not find vellacore"
if [[ -n $version ]]; then
    [[ $(pkg-config --modversion vellacore) == "$version" ]] \
        || die "pkg-config version $(pkg-config --modversion vellacore), want $version"
fi
pc_libdir=$(pkg-config --variable=libdir vellacore)
[[ $(readlink -f "$pc_libdir") == $(readlink -f "$libdir") ]] || die "pkg-config libdir $pc_libdir, want $libdir"
# shellcheck disable=SC2046
"$cxx" -std=c++17 -Wall -Wextra -Werror "$here/consumer.cpp" -o "$work_dir/pkgconfig-consumer" \
    $(pkg-config --cflags vellacore) $(pkg-config --libs vellacore) -Wl,-rpath,"$pc_libdir" \
    || die "pkg-config consumer did not build"
out=$("$work_dir/pkgconfig-consumer") || die "pkg-config consumer failed: $out"
echo "$out"

echo "install check passed"
