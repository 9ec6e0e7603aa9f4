# shellcheck shell=bash
# Direct3D 11 on Linux: DXVK built natively over Vulkan, from Debian's source package.
# The version is fixed: later ones need a newer Mesa than Debian 12 has.

DXVK_NATIVE_ENTRY=dxvk-native-2.6-r1
DXVK_SOURCE_VERSION=2.6+ds-1
DXVK_VULKAN_HEADERS_VERSION=1.4.309.0-1
DXVK_SPIRV_HEADERS_VERSION=1.6.1+1.4.309.0-1

setup_dxvk_native() {
    cache_build "$DXVK_NATIVE_ENTRY" build_dxvk_native
}

build_dxvk_native() {
    local entry=$1 packages=$CACHE_DOWNLOADS/dxvk-native work=$1/work source log
    source=$work/source
    log=$CACHE_LOGS/$DXVK_NATIVE_ENTRY
    mkdir -p "$source"
    debian_download_source trixie "$packages" "dxvk=$DXVK_SOURCE_VERSION"
    debian_download trixie "$packages" "libvulkan-dev=$DXVK_VULKAN_HEADERS_VERSION" \
        "spirv-headers=$DXVK_SPIRV_HEADERS_VERSION"
    unpack_dxvk_source "$packages" "$source" "$work/headers"
    mend_dxvk_refresh_rate "$source/src/wsi/sdl2/wsi_monitor_sdl2.cpp"

    # The run path lets Direct3D find DXGI beside itself.
    message_work "building DXVK (some minutes; log: $log.build.log)"
    # shellcheck disable=SC2016  # the loader expands it
    quietly "$log.configure.log" meson setup "$work/build" "$source" --buildtype release --strip \
        '-Dcpp_link_args=-Wl,-rpath,$ORIGIN' \
        -Denable_d3d8=false -Denable_d3d9=false -Denable_d3d10=false
    # Without a repository DXVK calls itself by the version of its meson.build.
    quietly "$log.build.log" env GIT_DIR=/nonexistent ninja -C "$work/build"

    install_dxvk_native "$work/build" "$source" "$entry"
    rm -rf "$work"
}

# DXVK's submodules are separate tar balls of the source package. The Vulkan and SPIR-V
# headers come from the same suite as DXVK, since Debian 12's are too old for it.
unpack_dxvk_source() {
    local packages=$1 source=$2 headers=$3 name=dxvk_${DXVK_SOURCE_VERSION%-*}.orig
    unpack_tar "$packages/$name.tar.gz" "$source"
    unpack_tar "$packages/$name-libdisplay-info.tar.gz" "$source/subprojects/libdisplay-info"
    unpack_tar "$packages/$name-mingw-directx-headers.tar.gz" "$source/include/native/directx"
    dpkg -x "$packages/libvulkan-dev_${DXVK_VULKAN_HEADERS_VERSION}_amd64.deb" "$headers"
    dpkg -x "$packages/spirv-headers_${DXVK_SPIRV_HEADERS_VERSION}_all.deb" "$headers"
    mkdir -p "$source"/include/{vulkan,spirv}/include
    cp -r "$headers"/usr/include/{vulkan,vk_video} "$source/include/vulkan/include/"
    cp -r "$headers/usr/include/spirv" "$source/include/spirv/include/"
}

# A display without a refresh rate (Xvfb's) reports 0, by which DXVK divides: take it as 60 Hz.
mend_dxvk_refresh_rate() {
    local old='uint32_t(mode.refresh_rate) \* 1000'
    local new='uint32_t(mode.refresh_rate != 0 ? mode.refresh_rate : 60) * 1000'
    sed -i "s/$old/$new/" "$1"
    grep -qF "$new" "$1" || fail "DXVK's source has changed: its refresh rate could not be mended"
}

# The headers keep the layout of DXVK's source: native/windows, native/directx, native/wsi.
install_dxvk_native() {
    local build=$1 source=$2 entry=$3 library
    mkdir -p "$entry/lib" "$entry/include/native"
    for library in d3d11 dxgi; do
        find "$build/src/$library" -maxdepth 1 -name "libdxvk_$library.so*" ! -type d \
            -exec cp -P -t "$entry/lib" {} +
        strip --strip-unneeded "$entry/lib/libdxvk_$library.so"
    done
    cp -r "$source"/include/native/{windows,directx,wsi} "$entry/include/native/"
    cp "$source/LICENSE" "$entry/"
}
