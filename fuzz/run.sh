#!/usr/bin/env bash
# Runs the fuzz targets, two at a time, for some seconds each: fuzz/run.sh seconds [target...]
# What they find goes to build/fuzz/artifacts and ends this with 1; their logs are in build/fuzz/logs.
# Each goes on from what earlier runs gathered. With a seed every run is the same one, on every machine:
# the checked-in seeds in their order, addresses that stay, so many inputs: SEED=1 fuzz/run.sh inputs [target...]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
[ $# -gt 0 ] || { sed -n '2,5s/^# //p' fuzz/run.sh >&2; exit 2; }
amount=$1
shift
[ $# -gt 0 ] || set -- $(ls fuzz/seeds)
mkdir -p build/fuzz/artifacts build/fuzz/logs

fuzz_one() {
  local log=build/fuzz/logs/$2.log corpus=build/fuzz/corpus/$2 fuzz=("build/fuzz/bin/$2_fuzz")
  if [ -n "${SEED:-}" ]; then
    corpus=build/fuzz/corpus-of-seed/$2
    rm -rf "$corpus"
    fuzz=(setarch -R "${fuzz[@]}" -seed="$SEED" -runs="$1" -reload=0
      -seed_inputs="$(printf '%s\n' fuzz/seeds/"$2"/* | LC_ALL=C sort | paste -sd,)")
  else
    fuzz+=(-max_total_time="$1")
  fi
  mkdir -p "$corpus"
  [ -n "${SEED:-}" ] || set -- "$@" fuzz/seeds/"$2"
  if "${fuzz[@]}" -timeout=60 -rss_limit_mb=1024 -print_final_stats=1 \
    -artifact_prefix=build/fuzz/artifacts/"$2"- "$corpus" "${@:3}" >"$log" 2>&1; then
    echo "$2: $(sed -n 's/.*number_of_executed_units: *//p' "$log") executions, $(grep -o 'Seed: [0-9]*' "$log")"
  else
    tail -40 "$log"
    echo "$2: FAILED"
    return 1
  fi
}
export -f fuzz_one
printf '%s\n' "$@" | xargs -P 2 -I {} bash -c "fuzz_one $amount {}" || exit 1
