#!/usr/bin/env bash
# usage: write_screens.sh PROGRAM FOLDER: runs the program at three resolutions on a virtual display of its own.
set -euo pipefail

tree=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)
for file in messages display; do
    # shellcheck source=/dev/null
    source "$tree/scripts/lib/$file.sh"
done

run_program() {
    local dpi
    for dpi in 96 144 192; do
        QT_QPA_PLATFORM=xcb QT_ENABLE_HIGHDPI_SCALING=0 QT_FONT_DPI=$dpi "$@"
    done
}

unset DISPLAY # pictures must not depend on the desktop that is there
display_run run_program "$@"
