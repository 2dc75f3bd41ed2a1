#!/bin/bash
# Builds the benches and runs them natively and under Wine: bench.sh [--smoke] [bench...]. Prints one table, and
# writes it and a JSON file per bench and platform to build/bench. docs/performance.md says how to read it.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

all=(copy handoff road features opening log simulator)
arguments=()
benches=()
for argument in "$@"; do
    case $argument in
    --smoke) arguments+=(--smoke) ;;
    *)
        if [[ " ${all[*]} " != *" $argument "* ]]; then
            echo "usage: scripts/bench.sh [--smoke] [bench...], with benches from: ${all[*]}" >&2
            exit 2
        fi
        benches+=("$argument")
        ;;
    esac
done
((${#benches[@]} > 0)) || benches=("${all[@]}")

# runBench <bench> <preset> <command...>: adds its rows to the table; those of the first bench begin with the head.
runBench() {
    local name=$1 preset=$2 head=1
    shift 2
    [[ ! -s $results/table.txt ]] || head=2
    "$@" "${arguments[@]}" --json "$preset-$name.json" | tr -d '\r' | tail -n +$head | tee -a "$results/table.txt"
}

cd "$repository"
results=$repository/build/bench
rm -rf "$results" && mkdir -p "$results"
for preset in linux windows; do
    run "$preset: build" "$repository/build/log/$preset-bench.log" build "$preset" "${benches[@]/#/bench_}"
    ((status == 0)) || { tail -n 40 "$repository/build/log/$preset-bench.log" && exit 1; }
done
enterWine
cd "$results"   # a relative path is one of both systems
echo "load of the machine when this began: $(cut -d' ' -f1-3 /proc/loadavg), $(nproc) cores"
for name in "${benches[@]}"; do
    runBench "$name" linux "$repository/build/linux/bench/bin/bench_$name"
    runBench "$name" windows "$repository/scripts/wine.sh" "$repository/build/windows/bench/bin/bench_$name.exe"
done
echo
echo "The table and the JSON files are in $results."
