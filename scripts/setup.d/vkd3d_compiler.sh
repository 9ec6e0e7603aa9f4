# shellcheck shell=bash
# vkd3d-compiler, which turns HLSL into DXBC. Only scripts/compile-shaders needs it: the
# compiled shaders are part of the tree. Debian 12's own version cannot compile what is needed,
# and the current one needs a newer libc, so it runs on the loader and libraries of its suite.

VKD3D_VERSION=2.1
VKD3D_ENTRY=vkd3d-$VKD3D_VERSION

setup_vkd3d_compiler() {
    cache_build "$VKD3D_ENTRY" build_vkd3d_compiler
}

build_vkd3d_compiler() {
    local entry=$1 packages=$1/packages package
    debian_download sid "$packages" "vkd3d-compiler=$VKD3D_VERSION*" "libvkd3d-shader1=$VKD3D_VERSION*" \
        libc6 libtinfo6
    mkdir -p "$entry"/{bin,lib,unpacked}
    for package in "$packages"/*.deb; do
        dpkg -x "$package" "$entry/unpacked"
    done
    cp "$entry/unpacked/usr/bin/vkd3d-compiler" "$entry/bin/"
    cp -P -t "$entry/lib" "$entry"/unpacked/usr/lib/x86_64-linux-gnu/{ld-linux-x86-64.so.2,libc.so.6,libm.so.6} \
        "$entry"/unpacked/usr/lib/x86_64-linux-gnu/{libtinfo.so.6,libvkd3d-shader.so.1}*
    rm -rf "$packages" "$entry/unpacked"
    cat >"$entry/vkd3d-compiler" <<'END'
#!/bin/sh
here=$(dirname "$(readlink -f "$0")")
exec "$here/lib/ld-linux-x86-64.so.2" --library-path "$here/lib" "$here/bin/vkd3d-compiler" "$@"
END
    chmod 755 "$entry/vkd3d-compiler"
    "$entry/vkd3d-compiler" --version >/dev/null || fail "the unpacked vkd3d-compiler does not run"
}
