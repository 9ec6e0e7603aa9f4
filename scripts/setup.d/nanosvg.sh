# shellcheck shell=bash
# The reader of SVG pictures for dialogs, two headers. Qt's own is a library of its own, whose source the mirrors no
# longer have for Windows to be built from.

NANOSVG_ENTRY=nanosvg-20241219-r1
NANOSVG_PACKAGE=libnanosvg-dev=0.0~git20241219.ea6a6ac-1

setup_nanosvg() {
    cache_build "$NANOSVG_ENTRY" build_nanosvg
}

build_nanosvg() {
    local entry=$1 work=$1/work
    debian_download trixie "$work" "$NANOSVG_PACKAGE"
    dpkg -x "$work"/libnanosvg-dev_*.deb "$work/unpacked"
    cp -r "$work/unpacked/usr/include" "$entry/"
    cp "$work/unpacked/usr/share/doc/libnanosvg-dev/copyright" "$entry/"
    rm -rf "$work"
}
