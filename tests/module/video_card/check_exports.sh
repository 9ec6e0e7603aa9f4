#!/usr/bin/env bash
# usage: check_exports.sh NM LIBRARY NAME...
# Fails unless the library defines exactly these dynamic symbols.
set -euo pipefail
nm=$1 library=$2
shift 2
found=$("$nm" -D --defined-only --format=posix "$library" | awk '{ print $1 }' | LC_ALL=C sort)
wanted=$(printf '%s\n' "$@" | LC_ALL=C sort)
if [ "$found" != "$wanted" ]; then
    printf '%s exports\n%s\nand should export\n%s\n' "$library" "$found" "$wanted"
    exit 1
fi
