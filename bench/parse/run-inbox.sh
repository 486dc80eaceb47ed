#!/usr/bin/env bash
# Starts a throwaway backend, runs the inbox benchmark against it, stops it.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=${VANTREL_BUILD_DIR:-$root/build}
state=$(mktemp -d /tmp/vantrel-bench.XXXXXX)/state.env
"$root/server/backend" start --throwaway --state-file "$state" >/dev/null
trap '"$root/server/backend" stop --state-file "$state" >/dev/null' EXIT
"$build/bench/parse/bench_parse_inbox" "$state"
