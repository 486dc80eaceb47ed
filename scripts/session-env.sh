#!/usr/bin/env bash
# Sourced inside a private D-Bus session (dbus-run-session): gives the programs of this
# session a runtime directory and an unlocked Secret Service of their own.
#
# Without VANTREL_KEYRING_DIR the keyring is a throwaway one (tests): its password is random,
# lives only in this shell's memory, and the keyring disappears with the session.
#
# With VANTREL_KEYRING_DIR (scripts/run.sh on a machine without a desktop session) the keyring
# is kept in that directory between runs, so a signed-in session and the saved password
# survive a restart. A machine without a desktop session has no login password to unlock it
# with, so it is unlocked with a random password kept beside it in a file only its owner can
# read (the same protection as any credential store on a headless machine).
#
# The runtime directory is removed when the sourcing shell exits: do not `exec` after
# sourcing this file.

session_dir=$(mktemp -d "${TMPDIR:-/tmp}/vantrel-session.XXXXXX")
chmod 700 "$session_dir"
trap 'rm -rf "$session_dir"' EXIT
export XDG_RUNTIME_DIR="$session_dir/run"
mkdir -m 700 -p "$XDG_RUNTIME_DIR"

if [ -n "${VANTREL_KEYRING_DIR:-}" ]; then
  keyring_home=$VANTREL_KEYRING_DIR
  (umask 077; mkdir -p "$keyring_home/keyrings")
  chmod 700 "$keyring_home" "$keyring_home/keyrings"
  unlock_file="$keyring_home/unlock.key"
  if [ ! -s "$unlock_file" ]; then
    # A keyring without its password cannot be opened again: keep it aside and start afresh.
    if [ -e "$keyring_home/keyrings/login.keyring" ]; then
      mv "$keyring_home/keyrings/login.keyring" "$keyring_home/keyrings/login.keyring.unopenable-$(date +%s)"
      echo "The keyring in $keyring_home had lost its password; a new one is made (sign in again)." >&2
    fi
    (umask 077; head -c 24 /dev/urandom | base64 > "$unlock_file")
  fi
  keyring_password=$(cat "$unlock_file")
else
  keyring_home="$session_dir/data"
  export XDG_DATA_HOME="$keyring_home"
  mkdir -m 700 -p "$keyring_home"
  keyring_password=$(head -c 24 /dev/urandom | base64)
fi
eval "$(printf '%s' "$keyring_password" |
  XDG_DATA_HOME="$keyring_home" gnome-keyring-daemon --unlock --components=secrets 2>/dev/null)"
eval "$(XDG_DATA_HOME="$keyring_home" gnome-keyring-daemon --start --components=secrets 2>/dev/null)"
unset keyring_password unlock_file keyring_home
export GNOME_KEYRING_CONTROL
