# shellcheck shell=bash
# The parts that the private desktop sessions share; sourced by `session` and `sway-session`, not run.
#
# A session is a private folder, a mark in the environment of everything started in it, and a list of
# parts, each with its process id and its log. Whatever carries the mark is gone when the session ends.

readonly PART_DID_NOT_COME_UP=97
readonly USAGE_ERROR=96
readonly PATIENCE=30 # seconds for one part to come up
readonly PAUSE=0.05  # seconds between two looks

base=            # the session's private folder
mark=            # value of NOTEWICK_SESSION_MARK in this session
session_user=    # the user made for the session; empty: whoever started it
as_user=()       # prefix that runs a command as the session's user
keep_logs_in=    # folder that receives the logs at the end
declare -A pid_of=()
started=()       # names of the parts in the order of their start

refuse_options() {
  usage >&2
  exit $USAGE_ERROR
}

# Forgets the desktop from which the session is started, so that nothing in it can reach out.
forget_outer_desktop() {
  unset "${!XDG_@}" "${!DBUS_@}" DISPLAY WAYLAND_DISPLAY WAYLAND_SOCKET SWAYSOCK XAUTHORITY SESSION_MANAGER \
    DESKTOP_SESSION AT_SPI_BUS_ADDRESS NO_AT_BRIDGE GTK_A11Y GTK_MODULES GDK_BACKEND QT_QPA_PLATFORM \
    QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE QT_ACCESSIBILITY QT_LINUX_ACCESSIBILITY_ALWAYS_ON \
    GNOME_KEYRING_CONTROL SSH_AUTH_SOCK SSH_AGENT_PID "${!LC_@}" LANGUAGE
}

# Makes the private folder; its path is short because a socket's path must stay below 108 bytes.
make_private_folder() {
  base=$(mktemp -d /tmp/nw.XXXXXX) || exit $PART_DID_NOT_COME_UP
  mark="notewick-$$-${base##*.}"
  mkdir -m 700 "$base"/{home,run,tmp,log,services,files}
  mkdir -p "$base"/home/{.config,.cache,.local/share,.local/state}
  export HOME=$base/home TMPDIR=$base/tmp XDG_RUNTIME_DIR=$base/run NOTEWICK_SESSION_MARK=$mark LANG=C.UTF-8 \
    XDG_CONFIG_HOME=$base/home/.config XDG_CACHE_HOME=$base/home/.cache \
    XDG_DATA_HOME=$base/home/.local/share XDG_STATE_HOME=$base/home/.local/state \
    NOTEWICK_SESSION_LOGS=$base/log LIBGL_ALWAYS_SOFTWARE=1
}

# start NAME command...: starts a part; its output goes to its log, its input is the file given by
# part_input (nothing unless set).
start() {
  local name=$1
  shift
  "${as_user[@]}" "$@" <"${part_input:-/dev/null}" >"$base/log/$name.log" 2>&1 &
  pid_of[$name]=$!
  started+=("$name")
}

# Only a job of this shell is taken for running: its id cannot have passed to another process.
is_running() { [[ $'\n'$(jobs -rp)$'\n' = *$'\n'$1$'\n'* ]]; }

# came_up NAME condition...: waits until the condition holds; ends the session when the part has died
# or its time is over.
came_up() {
  local name=$1 deadline=$((SECONDS + PATIENCE))
  shift
  until "$@" >/dev/null 2>&1; do
    if ((SECONDS > deadline)) || ! is_running "${pid_of[$name]}"; then
      "$@" >/dev/null 2>&1 || give_up "$name"
      return
    fi
    sleep $PAUSE
  done
}

give_up() {
  echo "${0##*/}: $1 did not come up; its log:" >&2
  tail -n 20 "$base/log/$1.log" >&2
  exit $PART_DID_NOT_COME_UP
}

bus_call() { "${as_user[@]}" gdbus call --session --timeout "$PATIENCE" "$@"; }

bus_name_is_owned() {
  [[ $(bus_call -d org.freedesktop.DBus -o /org/freedesktop/DBus \
    -m org.freedesktop.DBus.NameHasOwner "$1") = *true* ]]
}

# Starts a session bus. What a session starts by itself, or leaves out on purpose, must not be started
# by the bus: such service files are left out, so that a missing service reads as ServiceUnknown.
start_bus() {
  grep -LZE '^Name=org\.(freedesktop\.(Notifications|secrets|impl\..*)|gnome\.keyring)$' \
    /usr/share/dbus-1/services/*.service | xargs -0 cp -t "$base/services"
  cat >"$base/bus.conf" <<XML
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <keep_umask/>
  <listen>unix:path=$base/run/bus</listen>
  <auth>EXTERNAL</auth>
  <servicedir>$base/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
XML
  [[ -z $session_user ]] || chown -R "$session_user:" "$base"/{services,bus.conf}
  export DBUS_SESSION_BUS_ADDRESS=unix:path=$base/run/bus
  start dbus dbus-daemon --config-file="$base/bus.conf" --nofork --nopidfile
}

# Programs look only once, at their start, whether accessibility is on: call this before any of them.
switch_accessibility() {
  if [[ $1 = off ]]; then
    export NO_AT_BRIDGE=1
    return
  fi
  export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
  bus_call -d org.a11y.Bus -o /org/a11y/bus -m org.freedesktop.DBus.Properties.Set \
    org.a11y.Status IsEnabled '<true>' >"$base/log/accessibility.log" 2>&1 || give_up accessibility
}

# run_command command...: runs the session's command, in the background because a signal to the session
# must not wait for it.
run_command() {
  "${as_user[@]}" "$@" <&0 &
  pid_of[command]=$!
  started+=(command)
  wait "${pid_of[command]}"
}

# stop PID: TERM, five seconds of patience, KILL (an X server killed leaves its socket behind).
stop() {
  local deadline=$((SECONDS + 6))
  is_running "$1" || return 0
  kill -TERM "$1"
  while is_running "$1" && ((SECONDS < deadline)); do sleep $PAUSE; done
  is_running "$1" && kill -KILL "$1"
  wait "$1" 2>/dev/null
}

# Ids of the processes that carry the session's mark: services that the bus started, and what the
# command left running.
marked_pids() {
  grep -lszxF "NOTEWICK_SESSION_MARK=$mark" /proc/[0-9]*/environ | cut -d/ -f3
}

end_marked_processes() {
  local signal pid deadline
  for signal in TERM KILL; do
    deadline=$((SECONDS + 3))
    for pid in $(marked_pids); do kill -"$signal" "$pid" 2>/dev/null; done
    while ((SECONDS < deadline)); do
      [[ -n $(marked_pids) ]] || return
      sleep $PAUSE
    done
  done
}

# Ends every part, the last one first, then the rest; then nothing of the session is left.
end_session() {
  trap '' INT TERM HUP
  local i
  for ((i = ${#started[@]} - 1; i >= 0; i--)); do stop "${pid_of[${started[i]}]}"; done
  [[ -n $base ]] || return
  unset NOTEWICK_SESSION_MARK # the search must not find itself
  end_marked_processes
  if [[ -n $keep_logs_in ]]; then mkdir -p "$keep_logs_in" && cp -r "$base/log/." "$keep_logs_in/"; fi
  remove_private_folder
}

# A browser's children do not show the mark and may still write for a moment after their parent's end.
remove_private_folder() {
  local deadline=$((SECONDS + 5))
  until rm -rf "$base" 2>/dev/null || ((SECONDS > deadline)); do sleep $PAUSE; done
}

end_session_on_exit() {
  trap end_session EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM HUP
}
