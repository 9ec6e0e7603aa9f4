# shellcheck shell=bash
# Direct3D 11 under Wine: DXVK's Windows libraries, built by Debian. Wine's own Direct3D has
# neither doubles nor the resolve of multisampled textures. Debian gives them the suffix .so,
# but they are plain PE files.

DXVK_WINDOWS_ENTRY=dxvk-windows-2.6
DXVK_WINDOWS_PACKAGE=dxvk-wine64=2.6+ds-1

setup_dxvk_windows() {
    cache_build "$DXVK_WINDOWS_ENTRY" build_dxvk_windows
}

build_dxvk_windows() {
    local entry=$1 work=$1/work library
    debian_download trixie "$work" "$DXVK_WINDOWS_PACKAGE"
    dpkg -x "$work"/dxvk-wine64_*.deb "$work/unpacked"
    for library in d3d11 dxgi; do
        cp "$work/unpacked/usr/lib/dxvk/wine64/$library.dll.so" "$entry/$library.dll"
    done
    rm -rf "$work"
}
