# shellcheck shell=bash
# What x11-session and sway-session share: a person with an empty home, a session bus, helpers in
# the background, and an end that leaves no process and no file behind. Sourced, not run.
set -u
# shellcheck source=tests/rig/until.sh
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/until.sh"
rig_name=${0##*/}
if [ $# -eq 0 ]; then
    sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$0" >&2
    exit 64
fi
RIG_DIR=$(mktemp -d "${TMPDIR:-/tmp}/$rig_name.XXXXXX") || exit 70
export RIG_DIR
logs=${RIG_LOGS:-$RIG_DIR/logs}
mkdir -p "$logs"
: >"$RIG_DIR/groups"

# --- the end ------------------------------------------------------------------

# Everything that was started in here carries this very RIG_DIR in its environment, so that
# what left its process group (services that the bus activates, daemons) is found as well.
ours() {
    grep -lzxF "RIG_DIR=$RIG_DIR" /proc/[0-9]*/environ 2>/dev/null | grep -o '[0-9]\+'
}

signal_all() { # signal_all SIGNAL: the process groups, last started first, then the strays
    local group pid
    while read -r group; do
        kill "-$1" -- "-$group" 2>/dev/null
    done < <(tac "$RIG_DIR/groups" 2>/dev/null)
    for pid in $(ours); do
        kill "-$1" "$pid" 2>/dev/null
    done
}

all_gone() {
    local group
    while read -r group; do
        kill -0 -- "-$group" 2>/dev/null && return 1
    done < <(cat "$RIG_DIR/groups" 2>/dev/null)
    [ -z "$(ours)" ]
}

# An X server that was killed outright leaves its lock and its socket; one that ends while another
# looks for a free display was seen to leave the socket.
remove_x_lock() {
    local display pid
    { read -r display pid <"$RIG_DIR/xserver"; } 2>/dev/null || return
    local lock=/tmp/.X$display-lock socket=/tmp/.X11-unix/X$display
    if [ -e "$lock" ]; then
        [ "$(tr -d ' ' 2>/dev/null <"$lock")" = "$pid" ] || return
        rm -f -- "$lock" "$socket"
    elif ! grep -q " $socket\$" /proc/net/unix; then
        rm -f -- "$socket"
    fi
}

clean_up() {
    local i
    signal_all TERM
    signal_all CONT # a stopped process can end as well
    for i in {1..60}; do
        all_gone && break
        [ "$i" -lt 40 ] || signal_all KILL
        sleep 0.05
    done
    remove_x_lock
    rm -rf -- "$RIG_DIR"
}

# The janitor outlives this script, even one that is killed outright together with all its
# children: the pipe ends with its only writer, and then the janitor clears up in its stead.
start_janitor() {
    mkfifo "$RIG_DIR/alive"
    (
        trap '' INT TERM HUP
        export -f ours signal_all all_gone remove_x_lock clean_up
        # shellcheck disable=SC2016  # expanded by the janitor
        env -u RIG_DIR JANITOR_DIR="$RIG_DIR" setsid bash -c '
            read -r _ <"$JANITOR_DIR/alive"
            RIG_DIR=$JANITOR_DIR
            [ ! -d "$RIG_DIR" ] || clean_up' </dev/null >/dev/null 2>&1 &
    )
    exec {alive}>"$RIG_DIR/alive"
}

finish() { # finish STATUS
    trap '' INT TERM HUP
    trap - EXIT
    clean_up
    wait 2>/dev/null
    exit "$1"
}

fail() { # fail MESSAGE...: the desktop did not come up
    echo "$rig_name: $*" >&2
    tail -n 15 "$logs"/*.log >&2
    finish 70
}

trap 'finish 130' INT
trap 'finish 143' TERM HUP
trap 'finish $?' EXIT
start_janitor

# --- helpers ------------------------------------------------------------------

# start NAME COMMAND...: a helper in the background, in a session and process group of its own.
start() {
    local name=$1
    shift
    setpriv --pdeathsig TERM setsid "$@" >"$logs/$name.log" 2>&1 </dev/null {alive}>&- &
    echo "$!" >>"$RIG_DIR/groups"
}

# run_command COMMAND...: the command all this is for; the script ends with its status.
run_command() {
    setpriv --pdeathsig TERM setsid "$@" <&0 {alive}>&- &
    echo "$!" >>"$RIG_DIR/groups"
    wait "$!"
    finish $?
}

until_ok() { # until_ok WHAT COMMAND...
    local what=$1
    shift
    until_true "$@" || fail "$what did not come up"
}

# --- a person with an empty home -------------------------------------------------

mkdir -p "$RIG_DIR"/{home,config,data,cache,state}
mkdir -m 700 "$RIG_DIR/run"
export HOME=$RIG_DIR/home XDG_CONFIG_HOME=$RIG_DIR/config XDG_DATA_HOME=$RIG_DIR/data \
    XDG_CACHE_HOME=$RIG_DIR/cache XDG_STATE_HOME=$RIG_DIR/state XDG_RUNTIME_DIR=$RIG_DIR/run
# Programs stay with the processor, memory-only settings and no accessibility bus.
export LANG=${LANG:-C.UTF-8} NO_AT_BRIDGE=1 GTK_A11Y=none GSETTINGS_BACKEND=memory LIBGL_ALWAYS_SOFTWARE=1
unset DISPLAY XAUTHORITY WAYLAND_DISPLAY WAYLAND_SOCKET SWAYSOCK SESSION_MANAGER QT_QPA_PLATFORM \
    DBUS_SESSION_BUS_ADDRESS GTK_IM_MODULE QT_IM_MODULE XMODIFIERS DESKTOP_STARTUP_ID XDG_ACTIVATION_TOKEN XDG_CURRENT_DESKTOP

# --- session bus ----------------------------------------------------------------

# Started after the display is known, since the services that it activates inherit its environment.
start_bus() {
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$XDG_RUNTIME_DIR/bus
    start dbus dbus-daemon --session --nofork --nopidfile --address="$DBUS_SESSION_BUS_ADDRESS"
    until_ok "the session bus" test -S "$XDG_RUNTIME_DIR/bus"
}

has_tray_host() {
    dbus-send --session --print-reply --dest=org.kde.StatusNotifierWatcher /StatusNotifierWatcher \
        org.freedesktop.DBus.Properties.Get string:org.kde.StatusNotifierWatcher \
        string:IsStatusNotifierHostRegistered | grep -q 'boolean true'
}
