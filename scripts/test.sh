#!/usr/bin/env bash
# Builds Vellacore and runs its tests, suite by suite, each in its own build folder:
#
#   host    host compiler, RelWithDebInfo; unit tests and the install/consumer check  (build/host)
#   asan    host compiler with AddressSanitizer, LeakSanitizer and UBSan              (build/asan)
#   arm926  ARMv5TE soft-float cross build, run under qemu-arm -cpu arm926            (build/arm926)
#
#   scripts/test.sh [host|asan|arm926|all]...      default: all
#
# Missing Debian packages are installed first (scripts/install-deps.sh). Every requested suite runs
# even when an earlier one failed; a summary closes the output and the exit status is non-zero if
# any suite failed.
#
# Environment: VELLACORE_JOBS (default 2), VELLACORE_BUILD_ROOT (default build/),
# VELLACORE_SKIP_DEPS=1, VELLACORE_ARMEL_SYSROOT (extra armel libraries for the cross build),
# CTEST_ARGS (extra ctest arguments, e.g. "-R Fixed").
set -uo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

usage() {
    sed -n '2,/^set -uo/{/^set -uo/d;s/^# \{0,1\}//;p}' "${BASH_SOURCE[0]}"
}

suites=()
for arg in "$@"; do
    case $arg in
        host | asan | arm926) suites+=("$arg") ;;
        all) suites+=(host asan arm926) ;;
        -h | --help) usage; exit 0 ;;
        *) echo "unknown suite '$arg'" >&2; usage >&2; exit 2 ;;
    esac
done
[[ ${#suites[@]} -eq 0 ]] && suites=(host asan arm926)

groups=(base)
[[ " ${suites[*]} " == *" arm926 "* ]] && groups+=(arm)
vc_log "checking packages"
bash "$VELLACORE_ROOT/scripts/install-deps.sh" "${groups[@]}" || vc_die "could not install the packages the build needs"

# The sanitized test program carries its own ASan/UBSan defaults (tests/CMakeLists.txt); options
# set in the environment are passed through and take precedence.

declare -A result detail took
total_passed=0
total_failed=0

# run_suite NAME CMAKE_ARGS... — configure, build, ctest; sets result/detail/took for NAME.
run_suite() {
    local name=$1
    shift
    local dir=$VELLACORE_BUILD_ROOT/$name
    local start=$SECONDS
    local log=$dir/ctest.log

    vc_log "[$name] configure ($dir)"
    if ! vc_configure "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELLACORE_BUILD_TESTS=ON "$@"; then
        result[$name]=FAIL detail[$name]="configure failed" took[$name]=$((SECONDS - start))
        total_failed=$((total_failed + 1))
        return
    fi
    vc_log "[$name] build"
    if ! vc_build "$dir"; then
        result[$name]=FAIL detail[$name]="build failed" took[$name]=$((SECONDS - start))
        total_failed=$((total_failed + 1))
        return
    fi
    if [[ $name == arm926 ]]; then
        vc_log "[$name] binaries"
        file -L "$dir"/libvellacore.so "$dir"/tests/vellacore_tests 2>/dev/null || true
    fi
    vc_log "[$name] ctest"
    # shellcheck disable=SC2086
    ctest --test-dir "$dir" --output-on-failure --no-tests=error -j "$VELLACORE_JOBS" \
        --output-junit "$dir/ctest-junit.xml" ${CTEST_ARGS:-} 2>&1 | tee "$log"
    local rc=${PIPESTATUS[0]}
    took[$name]=$((SECONDS - start))

    local line failed total
    line=$(grep -E '[0-9]+% tests passed, [0-9]+ tests? failed out of [0-9]+' "$log" | tail -n1)
    if [[ -n $line ]]; then
        failed=$(sed -E 's/.* ([0-9]+) tests? failed out of.*/\1/' <<<"$line")
        total=$(sed -E 's/.*failed out of ([0-9]+).*/\1/' <<<"$line")
        total_passed=$((total_passed + total - failed))
        total_failed=$((total_failed + failed))
        detail[$name]="$((total - failed)) passed, $failed failed"
    else
        detail[$name]="ctest ran no tests"
        [[ $rc -eq 0 ]] && rc=1
    fi
    if [[ $rc -eq 0 ]]; then
        result[$name]=PASS
    else
        result[$name]=FAIL
        # ctest itself failing (no tests, discovery error) still counts as a failure.
        [[ ${failed:-0} -eq 0 ]] && total_failed=$((total_failed + 1))
    fi
}

overall_start=$SECONDS
for suite in "${suites[@]}"; do
    case $suite in
        host) run_suite host ;;
        asan) run_suite asan -DVELLACORE_SANITIZE=address,undefined ;;
        arm926)
            # Target libraries (scripts/armel-packages.txt) go into a sysroot of our own.
            if [[ -z ${VELLACORE_ARMEL_SYSROOT:-} ]]; then
                vc_log "[arm926] armel sysroot"
                if ! VELLACORE_ARMEL_SYSROOT=$(bash "$VELLACORE_ROOT/scripts/armel-sysroot.sh"); then
                    result[arm926]=FAIL detail[arm926]="armel sysroot failed" took[arm926]=0
                    total_failed=$((total_failed + 1))
                    continue
                fi
            fi
            # The toolchain turns the sysroot into linker flags on the first configure only.
            cache=$VELLACORE_BUILD_ROOT/arm926/CMakeCache.txt
            if [[ -f $cache ]] && ! grep -qxF "VELLACORE_ARMEL_SYSROOT:PATH=$VELLACORE_ARMEL_SYSROOT" "$cache"; then
                echo "note: armel sysroot changed; configuring build/arm926 afresh"
                rm -rf "$cache" "$VELLACORE_BUILD_ROOT/arm926/CMakeFiles"
            fi
            run_suite arm926 -DCMAKE_TOOLCHAIN_FILE="$VELLACORE_ROOT/cmake/arm926-linux-gnueabi.cmake" \
                -DVELLACORE_ARMEL_SYSROOT="$VELLACORE_ARMEL_SYSROOT"
            ;;
    esac
done

vc_log "summary"
status=0
for suite in "${suites[@]}"; do
    printf '  %-7s %-4s  %-32s %s\n' "$suite" "${result[$suite]}" "${detail[$suite]}" "$(vc_duration "${took[$suite]}")"
    [[ ${result[$suite]} == PASS ]] || status=1
done
printf '  %-7s %-4s  %-32s %s\n' total "$([[ $status -eq 0 ]] && echo PASS || echo FAIL)" "" "$(vc_duration $((SECONDS - overall_start)))"
echo
echo "tests: $total_passed passed, $total_failed failed"
exit $status
