#!/usr/bin/env bash
# The private session of scripts/run.sh on a machine without a desktop: a secret saved in one
# run is there in the next (the keyring lives in the app's data directory, for its owner
# only), a throwaway session keeps nothing, and no run leaves anything in the temporary folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export TMPDIR="$work/tmp"
mkdir "$TMPDIR"

fail() { echo "FAIL: $*" >&2; exit 1; }
in_session() { dbus-run-session -- bash -c 'source "$0"; "$@"' "$root/scripts/session-env.sh" "$@" 2>/dev/null; }
save() { printf '%s' "$2" | in_session secret-tool store --label=test service "Vantrel Pro" account "$1"; }
read_back() { in_session secret-tool lookup service "Vantrel Pro" account "$1" || true; }

export VANTREL_KEYRING_DIR="$work/app data/keyring"
save ada@example.test 'Secret1x'
[ "$(read_back ada@example.test)" = 'Secret1x' ] || fail "the saved password did not survive a new session"
[ "$(stat -c %a "$VANTREL_KEYRING_DIR")" = 700 ] || fail "the keyring folder is open to others"
[ "$(stat -c %a "$VANTREL_KEYRING_DIR/unlock.key")" = 600 ] || fail "the unlock key is readable by others"

# Its unlock key lost: the keyring is kept aside and a fresh one works.
rm "$VANTREL_KEYRING_DIR/unlock.key"
[ -z "$(read_back ada@example.test)" ] || fail "a keyring opened without its key"
save ada@example.test 'Secret2y'
[ "$(read_back ada@example.test)" = 'Secret2y' ] || fail "no fresh keyring after the key was lost"

unset VANTREL_KEYRING_DIR
save bo@example.test 'Secret3z'
[ -z "$(read_back bo@example.test)" ] || fail "a throwaway session kept its secret"

left=$(ls -A "$TMPDIR")
[ -z "$left" ] || fail "left in the temporary folder: $left"
echo "PASS"
