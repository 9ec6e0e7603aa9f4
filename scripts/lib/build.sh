# shellcheck shell=bash
# Configures and builds a preset. After: messages.sh, tree.sh.

# build_preset PRESET TARGET...: quiet unless something fails; the whole output stands in build/PRESET.log.
build_preset() {
    local preset=$1
    shift
    message_work "building $preset ($*)"
    quietly "$BUILD_ROOT/$preset.log" build_preset_loudly "$preset" "$@"
    message_done "building $preset"
}

build_preset_loudly() {
    local preset=$1
    shift
    # Paths below the tree do not count for the compiler cache: a fresh clone finds what another one compiled.
    export CCACHE_BASEDIR=$TREE CCACHE_NOHASHDIR=1
    (cd "$TREE" && cmake --preset "$preset" && cmake --build --preset "$preset" --target "$@")
}
