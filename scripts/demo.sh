#!/bin/bash
# Installs what is missing, builds the product and the simulated boards, and grabs pictures from every channel
# under Wine. Some channels play photographs, and must deliver exactly these. Two of those channels play the two
# sides of a stereo pair; their cameras are triggered at the same moment.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

demo=$repository/build/demo
bin=$demo/installation/bin
boards=$demo/boards
pictures=$demo/pictures
photographChannel=2   # the first two channels belong to the first board
leftChannel=3
rightChannel=4
count=30

layOut() {
    local stage=$repository/build/windows/stage/bin
    rm -rf "$demo"
    mkdir -p "$bin" "$boards"/{photographs,left,right} "$pictures"
    cp "$stage"/{OrvoCognexAdapter,brdlib5,ethlib,orvo_genicam,orvo_sim,common-logging-dispatcher}.dll "$stage/aikctl.exe" "$bin"
    cp "$repository"/scripts/demo/* "$boards"
    cp "$cache"/photographs/motorcycle_{left,right}.png "$boards/photographs"
    cp "$cache"/photographs/motorcycle_left.png "$boards/left"
    cp "$cache"/photographs/motorcycle_right.png "$boards/right"
}

# The path as Windows programs see it.
windowsPath() { echo "Z:${1//\//\\}"; }

aikctl() { "$repository/scripts/wine.sh" "$bin/aikctl.exe" "$@" | tr -d '\r'; }

# The ledger of the simulated boards as a table, in the order of the channels.
ledger() {
    echo "channel  produced  delivered  no free block  rate asked for  reached"
    awk -F '[:,]' '
        /"board"/          { channel = rows++ }
        /"produced"/       { produced = $2 }
        /"delivered"/      { delivered = $2 }
        /"droppedNoBlock"/ { dropped = $2 }
        /"askedRate"/      { asked = $2 }
        /"heldRate"/       { printf "%-7d  %8d  %9d  %13d  %14.1f  %7.1f\n",
                                    channel, produced, delivered, dropped, asked, $2 }' "$1"
}

# comparePhotographs <pictures> <ending> <photographs> <command> <command>: every picture, read by the first
# command, must equal one of the photographs in the folder, read by the second command.
comparePhotographs() {
    local pictures=$1 ending=$2 photographs=$3 ofPicture=$4 ofPhotograph=$5 picture photograph found compared=0
    for picture in "$pictures"-*."$ending"; do
        found=
        for photograph in "$photographs"/*.png; do
            if cmp --silent <("$ofPicture" "$picture") <("$ofPhotograph" "$photograph"); then
                found=$photograph
            fi
        done
        if [[ ! $found ]]; then
            echo "$picture does not equal any of the photographs in $photographs" >&2
            return 1
        fi
        compared=$((compared + 1))
    done
    echo "each of the $compared pictures equals one of the played photographs, pixel by pixel"
}

pixels() { pngtopnm "$1"; }

# All red samples, then the green ones, then the blue ones.
planes() {
    local folder plane
    folder=$(mktemp -d)
    (cd "$folder" && pngtopnm "$1" >photograph.ppm && ppmtorgb3 photograph.ppm)
    for plane in red grn blu; do
        pamtopnm "$folder/photograph.$plane" | tail --bytes "$(pamfile "$folder/photograph.$plane" |
            sed 's/.* \([0-9]*\) by \([0-9]*\) .*/\1 * \2/' | xargs expr)"
    done
    rm -r "$folder"
}

cd "$repository"
scripts/setup.sh
run "build" "$repository/build/log/demo-build.log" \
    build windows OrvoCognexAdapter brdlib5 ethlib orvo_genicam common-logging-dispatcher aikctl
((status == 0)) || { tail -n 40 "$repository/build/log/demo-build.log" && exit 1; }
layOut
enterWine
export ORVO_SIM_BOARDS ORVO_COGNEX_APPLET_0 ORVO_COGNEX_APPLET_1 ORVO_COGNEX_APPLET_2
ORVO_SIM_BOARDS=$(windowsPath "$boards/boards.json")
ORVO_COGNEX_APPLET_0=$(windowsPath "$boards/patterns.hap")
ORVO_COGNEX_APPLET_1=$(windowsPath "$boards/photographs.hap")
ORVO_COGNEX_APPLET_2=$(windowsPath "$boards/stereo.hap")

echo
echo "The channels of three simulated boards:"
aikctl list

echo
echo "A GigE Vision camera, step by step:"
aikctl do 0 exec InitializeCameraConnector get PortCount exec Detect get CameraName \
    set CameraFeatureKey=ExposureTime get CameraFloatValue set CameraFloatValue=2500 get CameraFloatValue \
    exec StartAcquisition exec StopAcquisition exec CloseCameraConnector

echo
echo "A camera of another kind of board, which has no ports until they are detected:"
aikctl do "$photographChannel" exec InitializeCameraConnector exec Detect get PortCount get CameraName \
    set CameraFeatureKey=TestPattern get CameraEnumerationValue set CameraEnumerationValue=ColorBar \
    get CameraEnumerationValue exec StartAcquisition exec StopAcquisition exec CloseCameraConnector

echo
echo "$count pictures from every channel. aikctl connects, starts, stops and disconnects the cameras:"
# A ring for two seconds. A machine that is too slow all the same loses pictures; they are counted, and that is not a
# failure.
aikctl grab all --count "$count" --buffers 60 --strategy OldestFirstOverwrite --progress --output "$(windowsPath "$pictures/packed")"
echo
echo "What the simulated boards counted; \"delivered\" is the adapter's \"counted\":"
ledger "$boards/ledger.json"

echo
echo "Channel $photographChannel again, split into colour planes by the adapter:"
aikctl grab "$photographChannel" --count 6 --strategy OldestFirstOverwrite --planar --raw \
    --output "$(windowsPath "$pictures/planar")"

echo
echo "Two cameras, mirrored and with twice the exposure. One action command triggers both for each picture:"
aikctl grab "$leftChannel" "$rightChannel" --count 5 --action --set Width=740 --set ReverseX=True --set ExposureTime=20000 \
    --output "$(windowsPath "$pictures/mirrored")"
echo
echo "The same two cameras as the sides of a stereo pair:"
aikctl grab "$leftChannel" "$rightChannel" --count 5 --action --output "$(windowsPath "$pictures/stereo")"

echo
photographs=$boards/photographs
packed=$(comparePhotographs "$pictures/packed/channel$photographChannel" png "$photographs" pixels pixels)
planar=$(comparePhotographs "$pictures/planar/channel$photographChannel" raw "$photographs" cat planes)
left=$(comparePhotographs "$pictures/stereo/channel$leftChannel" png "$boards/left" pixels pixels)
right=$(comparePhotographs "$pictures/stereo/channel$rightChannel" png "$boards/right" pixels pixels)
echo "Packed: $packed."
echo "Planar: $planar."
echo "Left:   $left."
echo "Right:  $right."
echo
echo "The pictures are in $pictures. Total time: $SECONDS s."
