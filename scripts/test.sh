#!/bin/bash
# Installs what is missing, builds everything, runs all tests and checks, and prints what passed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

usage() {
    cat <<END
usage: scripts/test.sh [--quick] [preset...]

Without arguments: the presets windows, linux, linux-asan and linux-tsan, then the checks format, includes,
tidy and reproducible.
With presets: only the tests of these presets.
--quick: the preset linux, and the checks format and includes, which take seconds.
END
}

presets=()
checks=()
for argument in "$@"; do
    case $argument in
    --help | -h) usage && exit ;;
    --quick) presets+=(linux) checks=(format includes) ;;
    windows | linux | linux-asan | linux-tsan) presets+=("$argument") ;;
    *) usage >&2 && exit 2 ;;
    esac
done
if (($# == 0)); then
    presets=(windows linux linux-asan linux-tsan)
    checks=(format includes tidy reproducible)
fi

cd "$repository"
logs=$repository/build/log
passed=0
failed=0
skipped=0
summary=()

# conclude <name> <passed> <failed> <skipped> [log file]: adds to the summary; prints the end of the log if
# something failed.
conclude() {
    passed=$((passed + $2)) failed=$((failed + $3)) skipped=$((skipped + $4))
    summary+=("$(printf '%-12s %5d passed, %d failed, %d skipped' "$1" "$2" "$3" "$4")")
    if (($3 > 0)) && [[ -f ${5-} ]]; then
        echo "---- last lines of $5"
        tail -n 80 "$5"
        echo "----"
    fi
}

# recorded <record> <attribute>: the number in that attribute of a test record's first element, 0 if there is none.
recorded() {
    local number
    number=$(sed -n "s/.*[[:space:]]$2=\"\([0-9]*\)\".*/\1/p;/<testcase/q" "$1" | head -n 1)
    echo "${number:-0}"
}

testPreset() {
    local preset=$1 record=$logs/$1.xml total bad out again
    run "$preset: build" "$logs/$preset-build.log" build "$preset"
    if ((status != 0)); then
        conclude "$preset" 0 1 0 "$logs/$preset-build.log"
        return
    fi
    rm -f "$record"
    run "$preset: tests" "$logs/$preset-tests.log" ctest --preset "$preset" --output-junit "$record"
    touch "$record"
    # Once in some thousand starts Wine ends before the program has begun, so its preset runs a failed test again.
    # A skipped one has the same stars.
    again=$(grep -c '^ *[0-9]*/[0-9]* Test.*\*\*\*[^S]' "$logs/$preset-tests.log") || true
    ((status != 0 || again == 0)) || echo "$preset: $again failed at first and passed when run again; see the log"
    total=$(recorded "$record" tests)
    bad=$(recorded "$record" failures)
    out=$(($(recorded "$record" skipped) + $(recorded "$record" disabled)))
    # A run that failed as a whole, or ran no test, counts as a failure even if no test failed.
    ((bad > 0)) || { ((status == 0 && total > out)) || bad=1 total=$((total + 1)); }
    conclude "$preset" $((total - bad - out)) "$bad" "$out" "$logs/$preset-tests.log"
}

format() { git ls-files -z '*.h' '*.hpp' '*.c' '*.cpp' | xargs -0 clang-format-16 --dry-run --Werror; }

includes() {
    scripts/check-includes.sh --self-test
    scripts/check-includes.sh
}

tidy() {
    build linux-tsan
    build linux
    scripts/check-tidy.sh build/linux-tsan build/linux
}

reproducible() { scripts/check-reproducible.sh; }

scripts/setup.sh
[[ " ${presets[*]} " != *" windows "* ]] || enterWine
for preset in "${presets[@]}"; do
    testPreset "$preset"
done
for check in "${checks[@]}"; do
    run "$check" "$logs/$check.log" "$check"
    ((status == 0)) && conclude "$check" 1 0 0 || conclude "$check" 0 1 0 "$logs/$check.log"
done

echo
printf '%s\n' "${summary[@]}"
echo "Total time: $SECONDS s."
echo
((skipped == 0)) && echo "$passed passed, $failed failed" || echo "$passed passed, $failed failed, $skipped skipped"
((failed == 0))
