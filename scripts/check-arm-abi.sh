#!/usr/bin/env bash
# Checks that ELF files are built for the handheld: 32-bit ARM, EABI version 5, soft-float ABI, and
# nothing newer than ARMv5TE and no floating-point hardware in their build attributes (the linker
# records the highest architecture of all objects it linked).
#
#   scripts/check-arm-abi.sh READELF FILE...
set -euo pipefail

if [[ $# -lt 2 ]]; then
    echo "usage: $0 READELF FILE..." >&2
    exit 2
fi
readelf=$1
shift

status=0
file_ok=1
fail() {
    echo "FAIL: $1: $2" >&2
    status=1
    file_ok=0
}

for f in "$@"; do
    file_ok=1
    if [[ ! -f $f ]]; then
        fail "$f" "no such file"
        continue
    fi
    header=$("$readelf" -h "$f")
    attrs=$("$readelf" -A "$f")

    grep -Eq 'Class:[[:space:]]+ELF32' <<<"$header" || fail "$f" "not a 32-bit ELF file"
    grep -Eq 'Machine:[[:space:]]+ARM' <<<"$header" || fail "$f" "not ARM code"
    grep -q 'Version5 EABI' <<<"$header" || fail "$f" "not EABI version 5"
    grep -q 'soft-float ABI' <<<"$header" || fail "$f" "not the soft-float ABI"
    grep -q 'hard-float ABI' <<<"$header" && fail "$f" "hard-float ABI"

    arch=$(sed -n 's/^[[:space:]]*Tag_CPU_arch:[[:space:]]*//p' <<<"$attrs")
    [[ $arch == v5TE || $arch == v5TEJ ]] || fail "$f" "CPU architecture '${arch:-none}', want v5TE"
    # Any FP or SIMD unit in the attributes means instructions the ARM926 does not have.
    if grep -Eq 'Tag_(FP_arch|VFP_arch|Advanced_SIMD_arch|NEON_arch|WMMX_arch)' <<<"$attrs"; then
        fail "$f" "uses floating-point or SIMD hardware: $(grep -E 'Tag_(FP|VFP|Advanced_SIMD|NEON|WMMX)' <<<"$attrs" | tr -s ' ' | tr '\n' ';')"
    fi
    grep -q 'Tag_ABI_VFP_args: VFP registers' <<<"$attrs" && fail "$f" "passes floats in VFP registers"

    if [[ $file_ok -eq 1 ]]; then
        echo "ok: $f: ELF32 ARM, EABI5 soft-float, Tag_CPU_arch $arch"
    fi
done
exit $status
