#!/usr/bin/env bash
# Runs Vantrel PRO on this machine: installs what is missing, builds, starts the local backend
# with its demo data, prints the demo sign-in and launches the app.
# Without a display the app runs on a virtual X display; a VNC server on loopback only lets you
# look at it (through an SSH tunnel from elsewhere).
#
# Environment (all optional):
#   VANTREL_BACKEND_DATA, VANTREL_BACKEND_PORT, VANTREL_BACKEND_PG_PORT
#       the local backend's data directory and ports (default server/data, 1337, 5433)
#   VANTREL_APP_DATA   the app's data directory (default ~/.local/share/vantrel-pro)
#   VANTREL_VNC_PORT   the loopback VNC port of a headless run (default 5901)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${VANTREL_BUILD_DIR:-$root/build}
run_dir="$build/run"
vnc_port=${VANTREL_VNC_PORT:-5901}
backend_data=${VANTREL_BACKEND_DATA:-$root/server/data}
app_data=${VANTREL_APP_DATA:-${XDG_DATA_HOME:-$HOME/.local/share}/vantrel-pro}

"$root/scripts/install-deps.sh"
"$root/scripts/build.sh"
"$root/server/backend" start --data "$backend_data" --port "${VANTREL_BACKEND_PORT:-1337}" \
  --pg-port "${VANTREL_BACKEND_PG_PORT:-5433}"
state="$backend_data/state.env"
server_url=$(grep '^VANTREL_SERVER_URL=' "$state" | cut -d= -f2-)
site_url=$(grep '^VANTREL_SITE_URL=' "$state" | cut -d= -f2-)

mkdir -p "$run_dir"
(umask 077; mkdir -p "$app_data")
app=("$build/vantrel-pro" --server "$server_url" --site "$site_url" --data-dir "$app_data" "$@")

# Without a desktop session the app gets a private session bus and a keyring of its own, kept
# in its data directory so that a signed-in session survives the next start.
in_private_session() {
  VANTREL_KEYRING_DIR="$app_data/keyring" dbus-run-session -- \
    bash -c 'source "$0"; "$@"' "$root/scripts/session-env.sh" "$@"
}

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  if [ -n "${DBUS_SESSION_BUS_ADDRESS:-}" ]; then
    exec "${app[@]}"
  fi
  in_private_session "${app[@]}"
  exit
fi

# Headless: a virtual display that takes no TCP connections, and a loopback-only VNC view of it.
display_number=99
while [ -e "/tmp/.X11-unix/X$display_number" ] || [ -e "/tmp/.X$display_number-lock" ]; do
  display_number=$((display_number + 1))
done
export DISPLAY=":$display_number"
Xvfb "$DISPLAY" -screen 0 1280x1024x24 -nolisten tcp >"$run_dir/xvfb.log" 2>&1 &
xvfb_pid=$!
x11vnc_pid=""
cleanup() {
  [ -n "$x11vnc_pid" ] && kill "$x11vnc_pid" 2>/dev/null || true
  kill "$xvfb_pid" 2>/dev/null || true
}
trap cleanup EXIT
# A busy machine can take several seconds to bring the display up.
for _ in $(seq 300); do
  [ -e "/tmp/.X11-unix/X$display_number" ] && break
  kill -0 "$xvfb_pid" 2>/dev/null || break
  sleep 0.1
done
if [ ! -e "/tmp/.X11-unix/X$display_number" ]; then
  echo "The virtual display $DISPLAY did not start; see $run_dir/xvfb.log" >&2
  exit 1
fi

if command -v x11vnc >/dev/null 2>&1; then
  x11vnc -display "$DISPLAY" -localhost -rfbport "$vnc_port" -forever -shared -nopw -quiet \
    >"$run_dir/x11vnc.log" 2>&1 &
  x11vnc_pid=$!
  cat <<MSG

No display here, so Vantrel PRO runs on the virtual display $DISPLAY.
To look at it, a VNC server listens on 127.0.0.1:$vnc_port (loopback only, nothing beyond this machine):
  from another machine:  ssh -L $vnc_port:127.0.0.1:$vnc_port <this machine>, then open a VNC viewer on localhost:$vnc_port
A screenshot of the first screen is written to $run_dir/screenshot.png after a few seconds.
Stop the app with Ctrl+C; the backend keeps running until: server/backend stop --data $backend_data

MSG
fi
( sleep 6; xwd -root -display "$DISPLAY" 2>/dev/null | convert xwd:- "$run_dir/screenshot.png" 2>/dev/null ) &
QT_QPA_PLATFORM=xcb in_private_session "${app[@]}"
