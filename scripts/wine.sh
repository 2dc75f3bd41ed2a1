#!/bin/bash
# Runs a Windows program in the project's own Wine prefix, which scripts/setup.sh creates.
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
useWine
startWine
# Processes that Wine leaves running must not hold the calling script's lock.
exec wine "$@" 8>&-
