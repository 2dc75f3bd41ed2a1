#!/bin/bash
# Builds the benches and runs them natively and under Wine. docs/performance.md says how to read the tables.
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

all=(copy handoff road features opening log simulator)

usage() {
    cat <<END
usage: scripts/bench.sh [--smoke] [--repeat N] [--write-docs] [bench...]

Without benches: all of them, which are ${all[*]}.
--smoke: only shows that they run.
--repeat N: runs all N times. The goals are then judged by the best of the runs, and their median stands beside it.
--write-docs: puts the goals and the last run's table into docs/performance.md.

build/bench has a folder per run with the table and a JSON file per bench and platform, and goals.txt.
END
}

arguments=()
benches=()
repeat=1
writeDocs=0
while (($# > 0)); do
    case $1 in
    --help | -h) usage && exit ;;
    --smoke) arguments+=(--smoke) ;;
    --repeat)
        [[ ${2-} =~ ^[1-9][0-9]*$ ]] || { usage >&2 && exit 2; }
        repeat=$2
        shift
        ;;
    --write-docs) writeDocs=1 ;;
    *)
        [[ " ${all[*]} " == *" $1 "* ]] || { usage >&2 && exit 2; }
        benches+=("$1")
        ;;
    esac
    shift
done
((${#benches[@]} > 0)) || benches=("${all[@]}")

# runBench <bench> <preset> <command...>: adds its rows to the run's table; those of the first bench begin with the head.
runBench() {
    local name=$1 preset=$2 head=1
    shift 2
    [[ ! -s table.txt ]] || head=2
    "$@" "${arguments[@]}" --json "$preset-$name.json" | tr -d '\r' | tail -n +$head | tee -a table.txt
}

# replaceBlock <name> <file>: puts the file between the lines "<!-- begin <name> -->" and "<!-- end <name> -->" of
# the page, as a block of code.
replaceBlock() {
    local page=$repository/docs/performance.md
    awk -v name="$1" -v file="$2" '
        $0 == "<!-- end " name " -->" { inside = 0 }
        !inside
        $0 == "<!-- begin " name " -->" {
            inside = 1
            while ((getline line <file) > 0) print "    " line
        }
    ' "$page" >"$page.new" && mv "$page.new" "$page"
}

cd "$repository"
results=$repository/build/bench
rm -rf "$results" && mkdir -p "$results"
for preset in linux windows; do
    run "$preset: build" "$repository/build/log/$preset-bench.log" build "$preset" "${benches[@]/#/bench_}"
    ((status == 0)) || { tail -n 40 "$repository/build/log/$preset-bench.log" && exit 1; }
done
enterWine
load="load of the machine before the first: $(cut -d' ' -f1-3 /proc/loadavg), $(nproc) cores"
for ((number = 1; number <= repeat; ++number)); do
    mkdir "$results/run-$number" && cd "$results/run-$number"   # a relative path is one of both systems
    echo "run $number of $repeat"
    for name in "${benches[@]}"; do
        runBench "$name" linux "$repository/build/linux/bench/bin/bench_$name"
        runBench "$name" windows "$repository/scripts/wine.sh" "$repository/build/windows/bench/bin/bench_$name.exe"
    done
done
cd "$repository"
echo
{
    echo "Runs: $repeat; $load"
    awk -f bench/goals.awk bench/goals.txt "$results"/run-*/table.txt
} | tee "$results/goals.txt"
if ((writeDocs)); then
    replaceBlock goals "$results/goals.txt"
    replaceBlock table "$results/run-$repeat/table.txt"
fi
echo
echo "The tables and the JSON files are in $results."
