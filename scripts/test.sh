#!/usr/bin/env bash
# The whole test suite on a fresh Debian 12 machine: installs what is missing, builds with
# warnings as errors, then runs CTest inside a private D-Bus session with its own keyring.
# CTest starts a throwaway backend (temporary directory, free ports) first and stops it last.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${VANTREL_BUILD_DIR:-$root/build}

"$root/scripts/install-deps.sh"
(cd "$root/server" && { [ -d node_modules ] && [ node_modules/.package-lock.json -nt package-lock.json ] || npm ci --no-audit --no-fund --loglevel=error; })
"$root/scripts/build.sh" -DVANTREL_WERROR=ON

cd "$build"
# Tests keep their secrets in a throwaway keyring, never in the one of scripts/run.sh.
unset VANTREL_KEYRING_DIR
exec dbus-run-session -- bash -c '
  source "'"$root"'/scripts/session-env.sh"
  ctest --output-on-failure --timeout 600 -j2 "$@"
' ctest "$@"
