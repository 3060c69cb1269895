#!/usr/bin/env bash
# Runs a command on an X display and a session bus of its own: on_a_display.sh [--if-none] command...
# With --if-none it takes a display that is there: Wine's desktop is on one, and knows no windows of another.
set -euo pipefail
if [ "$1" = --if-none ]; then
  shift
  [ -z "${DISPLAY:-}" ] || exec "$@"
fi
# Xvfb tells the number of its display as soon as programs can connect to it. Without -noreset it begins
# anew, and drops whoever is connecting, when its first client leaves.
coproc display { exec Xvfb -displayfd 1 -noreset -screen 0 1280x1024x24 2>/dev/null; }
trap 'kill "${display_PID:-}" 2>/dev/null || true' EXIT
read -r -t 60 number <&"${display[0]}" || { echo "on_a_display: Xvfb does not start" >&2; exit 1; }
# Any desktop has resources. Where a display has none, Xlib looks for files of them whenever it is asked for one, and
# Wine asks at each font that it selects.
resources=$(dirname "$(readlink -f "$0")")/x_resources
DISPLAY=":$number" XENVIRONMENT="$resources" dbus-run-session -- "$@"
