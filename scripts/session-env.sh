#!/usr/bin/env bash
# Sourced inside a private D-Bus session (dbus-run-session): gives the programs of this
# session a runtime directory and an unlocked Secret Service of their own, so the app and
# the tests keep secrets in a real keyring that disappears with the session.
# The keyring's password is random and lives only in this shell's memory.

session_dir=$(mktemp -d /tmp/vantrel-session.XXXXXX)
chmod 700 "$session_dir"
export XDG_RUNTIME_DIR="$session_dir/run"
export XDG_DATA_HOME="$session_dir/data"
mkdir -m 700 -p "$XDG_RUNTIME_DIR" "$XDG_DATA_HOME"
keyring_password=$(head -c 24 /dev/urandom | base64)
eval "$(printf '%s' "$keyring_password" | gnome-keyring-daemon --unlock --components=secrets 2>/dev/null)"
eval "$(gnome-keyring-daemon --start --components=secrets 2>/dev/null)"
unset keyring_password
export GNOME_KEYRING_CONTROL
trap 'rm -rf "$session_dir"' EXIT
