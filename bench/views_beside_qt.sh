#!/usr/bin/env bash
# The native views of Windows under Wine beside those in Qt on the same display: the two take turns, and the median
# of each turn's ratio counts. With --check it ends with 1 beyond a limit.
#
#   cmake --build --preset release --target views_bench
#   cmake --build --preset windows-x64 --target views_bench
#   bench/views_beside_qt.sh [--check]
set -euo pipefail
root=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd)
# Programs, display and Wine's server on one processor, the last one: on two, one would fall asleep whenever it waits
# for the other, and take longer to wake up than the other for its answer.
processor=$(taskset -cp $$ | grep -o '[0-9]*$')
[ -n "${BESIDE_QT_DISPLAY:-}" ] ||
  BESIDE_QT_DISPLAY=1 exec taskset -c "$processor" "$root/tests/outside/on_a_display.sh" "$0" "$@"

figures=$(mktemp)
trap 'rm -f "$figures"' EXIT
for turn in 1 2 3 4 5; do
  QT_QPA_PLATFORM=xcb "$root/build/release/bin/views_bench" | sed "s/^/qt $turn /" >>"$figures"
  "$root/scripts/wine.sh" "$root/build/windows-x64/bin/views_bench.exe" | tr -d '\r' | sed "s/^/wine $turn /" >>"$figures"
done
awk -v check="${1-}" '
  function median(values, count, i, j, swap) {
    for (i = 2; i <= count; ++i)
      for (j = i; j > 1 && values[j] < values[j - 1]; --j) { swap = values[j]; values[j] = values[j - 1]; values[j - 1] = swap }
    return values[int((count + 1) / 2)]
  }
  $1 == "qt" && $2 == 1 { names[++named] = $3 }
  { figure[$1, $2, $3] = $4; if ($2 > turns) turns = $2 }
  END {
    most["change-of-set"] = most["move-in-the-list"] = most["key-in-a-field"] = most["picker"] = 2
    printf "%-22s %10s %10s %8s\n", "", "Qt", "native", "ratio"
    for (n = 1; n <= named; ++n) {
      name = names[n]
      for (t = 1; t <= turns; ++t) {
        qt[t] = figure["qt", t, name]; native[t] = figure["wine", t, name]; ratio[t] = qt[t] ? native[t] / qt[t] : 0
      }
      r = median(ratio, turns)
      printf "%-22s %10.2f %10.2f %8.2f\n", name, median(qt, turns), median(native, turns), r
      if (name in most && r > most[name]) { printf "FAILED %s: at most %.1f\n", name, most[name]; failed = 1 }
    }
    exit (check == "--check" && failed)
  }' "$figures"
