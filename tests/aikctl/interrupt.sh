#!/bin/bash
# interrupt.sh <folder> <aikctl...>: starts a grab, presses Ctrl-C once pictures come, and checks how it ends. Then
# presses it twice. Then takes its reader or its standard output away.
set -u
folder=$1
shift
rm -rf "$folder" && mkdir -p "$folder" && cd "$folder" || exit 1

echo '{ "width": 64, "height": 48, "picturesPerSecond": 100 }' >applet.hap
# A background job of a script ignores Ctrl-C, unless job control is on.
set -m
ORVO_COGNEX_APPLET_0=applet.hap "$@" grab 0 1 --count 1000000 --output pictures >out 2>err &
job=$!
until [[ -e pictures/channel0-000003.png ]]; do
    kill -0 $job 2>/dev/null || { echo "aikctl ended before it was asked to:"; cat out err; exit 1; }
    sleep 0.05
done
kill -INT $job
wait $job
code=$?
cat out err

failed=0
expect() { if ! eval "$1"; then echo "does not hold: $1"; failed=1; fi; }
expect '((code == 130))'
expect 'grep -q "interrupted; saved [0-9]* pictures in" out'
expect '[[ -z $(find pictures -name "*.part") ]]'
expect '[[ $(grep -lca IEND pictures/* | wc -l) == $(ls pictures | wc -l) ]]'   # each whole to its last chunk
expect '[[ $(grep -o "saved [0-9][0-9]*" out) == "saved $(ls pictures | wc -l)" ]]'

# A second Ctrl-C ends it at once.
ORVO_COGNEX_APPLET_0=applet.hap "$@" grab 0 --no-camera --timeout 1000 --output none &
job=$!
until [[ -d none ]]; do
    kill -0 $job 2>/dev/null || { echo "aikctl ended before it was asked to"; exit 1; }
    sleep 0.05
done
kill -INT $job
sleep 0.01
kill -INT $job 2>/dev/null
wait $job
code=$?
expect '((code == 130))'

# So does a reader that has had enough, in order, and a closed standard output is no success.
ORVO_COGNEX_APPLET_0=applet.hap "$@" grab 0 --count 1000000 --output - 2>err | head -c 100 >out
code=${PIPESTATUS[0]}
expect '((code == 1))'
expect "grep -q \"Can't write to standard output: \" err"
expect 'grep -q "^saved [0-9]* pictures* in standard output" err'
if (($# == 1)); then   # an emulator has descriptors of its own
    "$@" list >&- 2>err
    code=$?
    expect '((code == 1))'
    expect "grep -q \"Can't write the results to standard output: \" err"
fi
exit $failed
