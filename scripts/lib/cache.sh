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

# cache_build NAME FUNCTION [ARGS...]: where the entry is missing, runs FUNCTION FOLDER ARGS and
# publishes the folder that it filled. Runs that want the same entry wait for each other.
cache_build() {
    local name=$1
    if cache_has "$name"; then
        message_skip "$name is in the cache"
        return
    fi
    mkdir -p "$CACHE_ROOT"
    (
        flock 9
        if cache_has "$name"; then
            message_skip "$name is in the cache by now"
        else
            cache_build_locked "$@" 9>&-
        fi
    ) 9>"$CACHE_ROOT/.$name.lock"
}

cache_build_locked() {
    local name=$1 build=$2 folder
    shift 2
    message_work "making $name"
    rm -rf "$CACHE_ROOT/.$name".?????? # of a run that was killed
    folder=$(mktemp -d "$CACHE_ROOT/.$name.XXXXXX")
    # shellcheck disable=SC2064  # the folder's name of this moment is meant
    trap "rm -rf '$folder'" EXIT
    "$build" "$folder" "$@"
    chmod 755 "$folder"
    touch "$folder/.complete"
    rm -rf "${CACHE_ROOT:?}/$name"
    mv -T "$folder" "$CACHE_ROOT/$name"
    message_done "$name is in $CACHE_ROOT/$name"
}
