# shellcheck shell=bash
# The one way in which scripts wait. Sourced, not run.

# until_true COMMAND...: asks every 0.1 s, for up to 20 s. Fails when the command never succeeded.
until_true() {
    local _
    for _ in {1..200}; do
        "$@" >/dev/null 2>&1 && return
        sleep 0.1
    done
    return 1
}
