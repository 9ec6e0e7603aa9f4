# shellcheck shell=bash
# One line for each thing that a script does, skips or cannot do.

message_done() { printf '  done   %s\n' "$*"; }
message_skip() { printf '  skip   %s\n' "$*"; }
message_work() { printf '  ...    %s\n' "$*"; }
message_warn() { printf '  warn   %s\n' "$*" >&2; }

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# quietly LOG COMMAND...: keeps the output in LOG, and shows its end when the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        fail "this command failed: $* (all of its output: $log)"
    fi
}
