#!/bin/bash
# Runs a Windows program in the project's own Wine prefix, which scripts/setup.sh makes.
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
useWine
startWine
# What Wine leaves running must not hold a script's lock.
exec wine "$@" 8>&-
