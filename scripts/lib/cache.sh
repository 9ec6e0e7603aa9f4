# shellcheck shell=bash
# The folder outside the tree that holds what is downloaded or built once.
# Every entry is a folder with its version in the name. It is put together under
# a temporary name and renamed when finished, so a broken build never looks complete.

CACHE_ROOT=${XDG_CACHE_HOME:-$HOME/.cache}/vexil
# shellcheck disable=SC2034  # other files use it
CACHE_DOWNLOADS=$CACHE_ROOT/downloads
# shellcheck disable=SC2034  # other files use it
CACHE_LOGS=$CACHE_ROOT/logs

cache_entry() { printf '%s/%s\n' "$CACHE_ROOT" "$1"; }

cache_has() { [[ -e $CACHE_ROOT/$1/.complete ]]; }

# cache_begin NAME: makes the empty folder in which the entry is put together, and prints its path.
cache_begin() {
    mkdir -p "$CACHE_ROOT"
    mktemp -d "$CACHE_ROOT/.$1.XXXXXX"
}

# cache_publish NAME FOLDER: marks FOLDER complete and gives it the entry's name.
cache_publish() {
    local entry=$CACHE_ROOT/$1 folder=$2
    touch "$folder/.complete"
    chmod 755 "$folder"
    rm -rf "$entry"
    mv -T "$folder" "$entry"
}

# cache_build NAME FUNCTION [ARGS...]: runs FUNCTION FOLDER ARGS where the entry is missing,
# and publishes the folder that it filled.
cache_build() {
    local name=$1 build=$2 folder
    shift 2
    if cache_has "$name"; then
        message_skip "$name is in the cache"
        return
    fi
    message_work "making $name"
    folder=$(cache_begin "$name")
    # shellcheck disable=SC2064  # the folder's name of this moment is meant
    trap "rm -rf '$folder'" EXIT
    "$build" "$folder" "$@"
    cache_publish "$name" "$folder"
    trap - EXIT
    message_done "$name is in $CACHE_ROOT/$name"
}
