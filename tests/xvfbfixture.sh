#!/bin/sh
# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# Runs one test program under a virtual X server of its own:
#   xvfbfixture.sh /usr/bin/Xvfb <test> [arguments]
# Xvfb picks a free display number itself (-displayfd), so parallel runs never collide; the server
# (and with it every X client the test left behind) ends with the test.
set -u
xvfb=$1
shift
dir=$(mktemp -d "${TMPDIR:-/tmp}/cg-xvfb-XXXXXX") || exit 1
"$xvfb" -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$dir/display" 2>"$dir/log" &
server=$!
cleanup() {
    kill "$server" 2>/dev/null
    wait "$server" 2>/dev/null
    rm -rf "$dir"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

tries=0
while ! grep -q '^[0-9][0-9]*$' "$dir/display" 2>/dev/null; do
    if ! kill -0 "$server" 2>/dev/null || [ $tries -ge 300 ]; then
        echo "xvfbfixture: Xvfb did not start:" >&2
        cat "$dir/log" >&2
        exit 1
    fi
    tries=$((tries + 1))
    sleep 0.1
done

# No session bus: Qt then uses the X11 tray protocol, which is what the test is about.
DISPLAY=:$(head -n 1 "$dir/display") QT_QPA_PLATFORM=xcb DBUS_SESSION_BUS_ADDRESS=disabled: "$@"
status=$?
exit $status
