# shellcheck shell=bash
# Qt for the Windows build: Core, Gui and Widgets, cross-built from the source package of the machine's own release, so
# that both homes run the same version.

QT_WINDOWS_ENTRY=qt-windows-6.4.2-r1
QT_BASE_VERSION=6.4.2+dfsg-10

setup_qt_windows() {
    cache_build "$QT_WINDOWS_ENTRY" build_qt_windows
}

build_qt_windows() {
    local entry=$1 packages=$CACHE_DOWNLOADS/qt-windows work=$1/work log=$CACHE_LOGS/$QT_WINDOWS_ENTRY
    local toolchain=$TREE/cmake/mingw-w64.cmake
    debian_download_source bookworm "$packages" "qt6-base=$QT_BASE_VERSION"
    unpack_tar "$packages/qt6-base_${QT_BASE_VERSION%-*}.orig.tar.xz" "$work/base"

    message_work "building Qt for Windows (15 minutes and more; log: $log.build.log)"
    quietly "$log.configure.log" configure_qt_base "$work" "$toolchain" "$entry"
    quietly "$log.build.log" cmake --build "$work/base-build"
    quietly "$log.install.log" cmake --install "$work/base-build" --strip
    mkdir -p "$entry/licences"
    cp "$work/base/LICENSES"/* "$entry/licences/"
    rm -rf "$work"
}

# Debian's source is without wintab.h, which is not free; the rest that is switched off is not used here.
configure_qt_base() {
    local work=$1 toolchain=$2 prefix=$3
    cmake -G Ninja -S "$work/base" -B "$work/base-build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_BUILD_TYPE=Release \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF \
        -DFEATURE_sql=OFF -DFEATURE_network=OFF -DFEATURE_dbus=OFF -DFEATURE_printsupport=OFF \
        -DFEATURE_xml=OFF -DFEATURE_concurrent=OFF -DFEATURE_opengl=OFF -DINPUT_opengl=no \
        -DFEATURE_vulkan=OFF -DFEATURE_system_zlib=OFF -DFEATURE_tabletevent=OFF
}
