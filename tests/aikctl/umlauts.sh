#!/bin/bash
# umlauts.sh <folder> <folder of aikctl> <name of aikctl> [emulator]: grabs with umlauts in every path, from an
# installation that lies in such a folder.
set -eu
folder=$1 bin=$2 aikctl=$3
shift 3
rm -rf "$folder" && mkdir -p "$folder/Prüf/bin" "$folder/Prüf/Bücher" && cd "$folder/Prüf"
find "$bin" -maxdepth 1 \( -name "$aikctl" -o -name '*.dll' -o -name '*.so' \) -exec cp {} bin \;
echo '{ "width": 64, "height": 48, "picturesPerSecond": 100 }' >größe.hap
echo '{ "boards": [{ "index": 0, "type": 2897 }], "ledger": "Bücher/ledger.json" }' >wände.json
export ORVO_COGNEX_APPLET_0=größe.hap ORVO_SIM_BOARDS=wände.json

"$@" "bin/$aikctl" list
"$@" "bin/$aikctl" grab 0 --no-camera --count 2 --output Größe | tee out
"$@" "bin/$aikctl" do 0 set BrdFeatureKey=Größe get BrdFeatureKey | tee value
failed=0
expect() { if ! eval "$1"; then echo "does not hold: $1"; failed=1; fi; }
expect '[[ -s Größe/channel0-000002.png ]]'
expect '[[ -s Bücher/ledger.json ]]'
expect 'grep -q "saved 2 pictures in .*Prüf.Größe" out'
expect '[[ $(tr -d "\r" <value) == BrdFeatureKey=Größe ]]'
exit $failed
