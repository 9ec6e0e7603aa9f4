#!/usr/bin/env bash
# usage: check_exports.sh TOOL LIBRARY NAME...
# Fails unless the library exports exactly these names. TOOL is nm for a shared object, objdump for a DLL.
set -euo pipefail
tool=$1 library=$2
shift 2
case $library in
    *.dll) found=$("$tool" -p "$library" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/.*\] *\([A-Za-z_].*\)/\1/p' | sed 1d) ;;
    *) found=$("$tool" -D --defined-only --format=posix "$library" | awk '{ print $1 }') ;;
esac
found=$(LC_ALL=C sort <<<"$found")
wanted=$(printf '%s\n' "$@" | LC_ALL=C sort)
if [ "$found" != "$wanted" ]; then
    printf '%s exports\n%s\nand should export\n%s\n' "$library" "$found" "$wanted"
    exit 1
fi
