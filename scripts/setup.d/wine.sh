# shellcheck shell=bash
# Wine, in which the Windows programs run here: shows that it starts, once for a Wine version.

setup_wine() {
    local loader stamp version
    loader=$(wine_loader) || fail "found no Wine loader, though its packages are installed"
    version=$(dpkg-query -W -f '${Version}' wine64)
    stamp=wine-checked-${version//[^0-9A-Za-z.]/_}
    if cache_has "$stamp"; then
        message_skip "Wine $version starts ($loader)"
        return
    fi
    message_work "starting Wine $version"
    wine_run cmd /c exit 7 >/dev/null 2>&1 && fail "Wine lost the exit status of a program"
    (($? == 7)) || fail "Wine does not start: try $loader cmd"
    cache_build "$stamp" true
}
