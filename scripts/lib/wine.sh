# shellcheck shell=bash
# Runs Windows programs of this tree in a Wine prefix of their own, under the build folder.
# After: messages.sh, tree.sh, display.sh; wine_deploy also wants cache.sh and setup.d/dxvk_windows.sh.

WINE_PREFIX=$BUILD_ROOT/wine-prefix

# Debian leaves the 64-bit loader off the path; plain "wine" asks for a 32-bit half first.
wine_loader() {
    local candidate
    for candidate in wine64 /usr/lib/wine/wine64 wine; do
        command -v "$candidate" && return
    done
    return 1
}

# wine_with_settings COMMAND...: no debug output, DXVK's Direct3D where it lies beside the
# program, and no offers to install Mono or Gecko. Wine's debugger stays away, since a program that
# crashed under it ends with exit status 0. DXVK keeps no cache: the thread that compiles from it starts
# the compilers of a device again while the device waits for their end, for ever.
wine_with_settings() {
    WINEPREFIX=$WINE_PREFIX WINEARCH=win64 WINEDEBUG=-all \
        WINEDLLOVERRIDES='d3d11,dxgi=n,b;mscoree,mshtml,winedbg.exe=' \
        DXVK_STATE_CACHE=disable DXVK_LOG_LEVEL=none DXVK_LOG_PATH=none "$@"
}

# Wine keeps its hands off the display's modes, and so reports 60 Hz: Xvfb's 0 Hz is a number that
# DXVK divides by.
wine_registry() {
    cat <<'END'
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Software\Wine\X11 Driver]
"UseXRandR"="N"
"UseXVidMode"="N"
END
}

# A new prefix takes some 15 seconds. The lock lets programs that start together share it.
wine_make_prefix() {
    local loader=$1
    mkdir -p "$BUILD_ROOT"
    (
        flock 9
        [[ ! -e $WINE_PREFIX/.complete ]] || exit 0
        message_work "making the Wine prefix $WINE_PREFIX" >&2
        rm -rf "$WINE_PREFIX"
        wine_with_settings "$loader" wineboot --init >/dev/null 2>&1 9>&- || exit 1
        wine_with_settings "$loader" regedit /S - >/dev/null 2>&1 9>&- < <(wine_registry) || exit 1
        touch "$WINE_PREFIX/.complete"
    ) 9>"$WINE_PREFIX.lock" || fail "Wine could not make the prefix $WINE_PREFIX"
}

# wine_install_direct3d FOLDER: puts the Direct3D that lies there into the prefix's system folder, the only place from
# which the module takes it by itself.
wine_install_direct3d() {
    local folder=$1 name
    [[ -e $folder/d3d11.dll ]] || return 0
    (
        flock 9
        for name in d3d11.dll dxgi.dll; do
            cmp -s "$folder/$name" "$WINE_PREFIX/drive_c/windows/system32/$name" ||
                install -m 644 "$folder/$name" "$WINE_PREFIX/drive_c/windows/system32/$name"
        done
    ) 9>"$WINE_PREFIX.lock"
}

# wine_session COMMAND...: runs a command, which may be a whole test run, with one display, since
# Wine finds the graphics card through X11. The programs of a prefix share one desktop, and so
# one display: sessions that make a virtual display wait for each other. Every window of the stress test
# has room on it.
wine_session() (
    if [[ -n ${DISPLAY:-} ]]; then
        "$@"
        exit
    fi
    mkdir -p "$BUILD_ROOT"
    exec 8>"$WINE_PREFIX.session"
    flock 8
    VIRTUAL_SCREEN=1920x1080x24 display_run wine_end_after "$@" 8>&-
)

# Wine's server outlives its programs by some seconds; it must not meet the next session's display.
wine_end_after() (
    trap 'wine_with_settings wineserver -k || true' EXIT
    "$@"
)

# wine_run PROGRAM ARGS...: runs it in the current folder, and returns its exit status.
wine_run() {
    wine_session wine_run_on_display "$@"
}

wine_run_on_display() {
    local loader
    loader=$(wine_loader) || fail "Wine is not installed: run scripts/setup --windows"
    wine_make_prefix "$loader"
    wine_install_direct3d "$(dirname "$1")"
    wine_with_settings "$loader" "$@"
}

# wine_deploy FOLDER: puts DXVK's Direct3D and the compiler's run-time libraries beside programs.
wine_deploy() {
    local folder=$1 name
    cp -u "$(cache_entry "$DXVK_WINDOWS_ENTRY")"/{d3d11,dxgi}.dll "$folder/"
    for name in libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll; do
        cp -u "$(x86_64-w64-mingw32-g++-posix -print-file-name="$name")" "$folder/"
    done
}
