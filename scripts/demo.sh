#!/bin/bash
# Installs what is missing, builds the product and the simulated boards, and grabs pictures from every
# channel under Wine. Some channels play photographs: what comes out of them must be what went in. Two of their
# cameras play the two eyes of a stereo pair, and take each picture at one moment.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

demo=$repository/build/demo
bin=$demo/installation/bin
boards=$demo/boards
pictures=$demo/pictures
photographChannel=2   # after the two of the first board
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

# As Windows programs know it.
windowsPath() { echo "Z:${1//\//\\}"; }

aikctl() { "$repository/scripts/wine.sh" "$bin/aikctl.exe" "$@" | tr -d '\r'; }

# What the simulated boards wrote down, in the order of the channels.
ledger() {
    echo "channel  produced  delivered  no free block  asked pictures/s  held"
    awk -F '[:,]' '
        /"board"/          { channel = rows++ }
        /"produced"/       { produced = $2 }
        /"delivered"/      { delivered = $2 }
        /"droppedNoBlock"/ { dropped = $2 }
        /"askedRate"/      { asked = $2 }
        /"heldRate"/       { printf "%-7d  %8d  %9d  %13d  %16.1f  %4.1f\n",
                                    channel, produced, delivered, dropped, asked, $2 }' "$1"
}

# comparePhotographs <pictures> <ending> <photographs> <command> <command>: what the first command makes of each
# picture must be what the second makes of one of the photographs in that folder.
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
            echo "$picture is none of the photographs that went in" >&2
            return 1
        fi
        compared=$((compared + 1))
    done
    echo "each of the $compared pictures is one of the photographs that went in, pixel by pixel"
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
echo "The channels of an installation with three simulated boards:"
aikctl list

echo
echo "A GigE Vision camera, led step by step:"
aikctl do 0 exec InitializeCameraConnector get PortCount exec Detect get CameraName \
    set CameraFeatureKey=ExposureTime get CameraFloatValue set CameraFloatValue=2500 get CameraFloatValue \
    exec StartAcquisition exec StopAcquisition exec CloseCameraConnector

echo
echo "And one behind the other kind of board, which has no ports before they are looked for:"
aikctl do "$photographChannel" exec InitializeCameraConnector exec Detect get PortCount get CameraName \
    set CameraFeatureKey=TestPattern get CameraEnumerationValue set CameraEnumerationValue=ColorBar \
    get CameraEnumerationValue exec StartAcquisition exec StopAcquisition exec CloseCameraConnector

echo
echo "$count pictures from every channel, whose cameras are connected, started, stopped and closed:"
# A machine that is too slow for the rates of the applets loses pictures; that is counted and no failure.
aikctl grab all --count "$count" --strategy OldestFirstOverwrite --progress --output "$(windowsPath "$pictures/packed")"
echo
echo "What the boards themselves counted:"
ledger "$boards/ledger.json"

echo
echo "Channel $photographChannel again, split into colour planes by the adapter:"
aikctl grab "$photographChannel" --count 6 --strategy OldestFirstOverwrite --planar --raw \
    --output "$(windowsPath "$pictures/planar")"

echo
echo "Two cameras with twice the exposure, mirrored, that take each picture by one action command:"
aikctl grab "$leftChannel" "$rightChannel" --count 5 --action --set Width=740 --set ReverseX=True --set ExposureTime=20000 \
    --output "$(windowsPath "$pictures/mirrored")"
echo
echo "The same two as the eyes of a stereo pair:"
aikctl grab "$leftChannel" "$rightChannel" --count 5 --action --output "$(windowsPath "$pictures/stereo")"

echo
photographs=$boards/photographs
packed=$(comparePhotographs "$pictures/packed/channel$photographChannel" png "$photographs" pixels pixels)
planar=$(comparePhotographs "$pictures/planar/channel$photographChannel" raw "$photographs" cat planes)
left=$(comparePhotographs "$pictures/stereo/channel$leftChannel" png "$boards/left" pixels pixels)
right=$(comparePhotographs "$pictures/stereo/channel$rightChannel" png "$boards/right" pixels pixels)
echo "Packed:    $packed."
echo "Planar:    $planar."
echo "Left eye:  $left."
echo "Right eye: $right."
echo
echo "The pictures lie in $pictures; all of it took $SECONDS s."
