#!/usr/bin/env bash
# Runs the fuzz targets for some seconds each, two at a time: [SEED=number] fuzz/run.sh seconds [target...]
# What they find goes to build/fuzz/artifacts and ends this with 1; their logs are in build/fuzz/logs.
# With SEED every run takes the same way; without it each goes on from what earlier ones gathered.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
[ $# -gt 0 ] || { sed -n '2,4s/^# //p' fuzz/run.sh >&2; exit 2; }
seconds=$1
shift
[ $# -gt 0 ] || set -- $(ls fuzz/seeds)
mkdir -p build/fuzz/artifacts build/fuzz/logs

fuzz_one() {
  local log=build/fuzz/logs/$2.log corpus=build/fuzz/corpus/$2
  [ -z "${SEED:-}" ] || { corpus=build/fuzz/corpus-of-seed/$2 && rm -rf "$corpus"; }
  mkdir -p "$corpus"
  if build/fuzz/bin/"$2"_fuzz -max_total_time="$1" -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 \
    -seed="${SEED:-0}" -artifact_prefix=build/fuzz/artifacts/"$2"- "$corpus" fuzz/seeds/"$2" >"$log" 2>&1; then
    echo "$2: $(sed -n 's/.*number_of_executed_units: *//p' "$log") executions, $(grep -o 'Seed: [0-9]*' "$log")"
  else
    tail -40 "$log"
    echo "$2: FAILED"
    return 1
  fi
}
export -f fuzz_one
printf '%s\n' "$@" | xargs -P 2 -I {} bash -c "fuzz_one $seconds {}" || exit 1
