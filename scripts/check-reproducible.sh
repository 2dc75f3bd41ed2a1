#!/bin/bash
# Builds the last commit for Windows twice, in two clones with different paths, and compares byte by byte what an
# integrator gets.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

# The cache folder remembers the commits that passed.
commit=$(git -C "$repository" rev-parse HEAD)
passed=$cache/reproducible/$commit
if [[ -e $passed ]]; then
    echo "commit $commit passed before:"
    cat "$passed"
    exit
fi

place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
clones=("$place/one" "$place/further/down/another")

for clone in "${clones[@]}"; do
    git clone --quiet --no-hardlinks "$repository" "$clone"
    (cd "$clone" && build windows OrvoCognexAdapter)
    (cd "$clone/build/windows" && find . -name '*OrvoCognexAdapter.dll*' -exec sha256sum {} + | sort -k 2) \
        >"$clone.sums"
done

echo "checksums:"
cat "${clones[0]}.sums"
grep -q '/OrvoCognexAdapter.dll$' "${clones[0]}.sums"
cmp "${clones[@]/%/.sums}"
mkdir -p "$(dirname "$passed")"
cp "${clones[0]}.sums" "$passed"
