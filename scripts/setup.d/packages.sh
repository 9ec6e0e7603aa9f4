# shellcheck shell=bash
# The packages of Debian 12 that everything is built and run with.

PACKAGES_BUILD=(
    g++ cmake ninja-build ccache pkgconf meson git dpkg-dev python3 ca-certificates
    clang         # CUDA kernels to PTX
    clang-format
    glslang-tools # DXVK's own shaders
)
PACKAGES_LIBRARIES=(
    qt6-base-dev qt6-base-dev-tools qt6-l10n-tools
    libcli11-dev nlohmann-json3-dev libfmt-dev libsqlite3-dev
    libgtest-dev libgmock-dev googletest libbenchmark-dev
    libsdl2-dev libvulkan-dev libxcb1-dev libxcb-randr0-dev
)
PACKAGES_RUN=(
    libvulkan1 mesa-vulkan-drivers # Direct3D without a graphics card
    fonts-lato xvfb pci.ids
    locales # from which a test makes a user that writes numbers with a comma
    dbus-daemon # tests of what the desktop tells over its bus
)
PACKAGES_WINDOWS=(
    g++-mingw-w64-x86-64-posix mingw-w64
    wine wine64
)

setup_packages() {
    install_packages "packages for Linux" \
        "${PACKAGES_BUILD[@]}" "${PACKAGES_LIBRARIES[@]}" "${PACKAGES_RUN[@]}"
}

setup_packages_windows() {
    install_packages "packages for Windows" "${PACKAGES_WINDOWS[@]}"
}

# install_packages WHAT PACKAGE...: installs those that are missing.
install_packages() {
    local what=$1 missing
    shift
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]} == 0)); then
        message_skip "$what are installed"
        return
    fi
    message_work "installing ${missing[*]}"
    quietly "$CACHE_LOGS/apt-update.log" as_root apt-get -q -o DPkg::Lock::Timeout=600 update
    quietly "$CACHE_LOGS/apt-install.log" as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -y -o DPkg::Lock::Timeout=600 install --no-install-recommends "${missing[@]}"
    message_done "installed ${#missing[@]} $what"
}

missing_packages() {
    local installed
    # dpkg-query complains of unknown names and fails; what it knows is printed all the same.
    # shellcheck disable=SC2016  # the fields are dpkg-query's
    installed=$(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' "$@" 2>/dev/null || true)
    comm -23 <(printf '%s\n' "$@" | sort -u) <(sed -n 's/^.i *//p' <<<"$installed" | sort -u)
}
