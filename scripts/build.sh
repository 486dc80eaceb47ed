#!/usr/bin/env bash
# Configures and builds the app and its tests in build/ (Ninja, two jobs: this machine has two cores).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${VANTREL_BUILD_DIR:-$root/build}
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE:-RelWithDebInfo} "$@" >/dev/null
cmake --build "$build" -j2
