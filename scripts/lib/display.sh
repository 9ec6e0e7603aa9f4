# shellcheck shell=bash
# After: messages.sh.

# display_run COMMAND...: runs it on the display that is there, or on a virtual one for as long
# as it runs: the virtual one ends with its parent, even where that is killed. It is as large as VIRTUAL_SCREEN says, in
# the form 1920x1080x24, or has 1280 by 1024 pixels.
display_run() (
    if [[ -z ${DISPLAY:-} ]]; then
        command -v Xvfb >/dev/null || fail "there is no display, and no Xvfb: run scripts/setup"
        coproc VIRTUAL_DISPLAY {
            exec setpriv --pdeathsig TERM Xvfb -displayfd 1 -screen 0 "${VIRTUAL_SCREEN:-1280x1024x24}" -noreset -nolisten tcp 2>/dev/null
        }
        # shellcheck disable=SC2064  # the process of this moment is meant
        trap "kill $VIRTUAL_DISPLAY_PID 2>/dev/null || true" EXIT
        read -r -t 20 -u "${VIRTUAL_DISPLAY[0]}" number || fail "Xvfb did not start"
        export DISPLAY=:$number
    fi
    "$@"
)
