# shellcheck shell=bash
# as_root COMMAND...: runs the command as root, through sudo where need be.

as_root() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "this needs root, and there is no sudo: $*"
    fi
}
