#!/bin/sh
# The statement walk against CPython, back to back on this machine: the same
# two loops that a learner would write, "aumenta" in "ripeti per" and the
# mixed body (an assignment with an expression, a "se", an "aumenta", a
# "diminuisci"), CPython running them as a script at module level.
# Usage: bench/compare_with_python.sh [build folder]
set -e
build=${1:-build}
velant=$("$build/bench/velant_bench" --benchmark_filter='BM_walk_increase$|BM_walk_mixed_body$' \
  --benchmark_repetitions=5 --benchmark_report_aggregates_only=true 2>/dev/null | grep median)
python=$(python3 - <<'PY'
import time
def timed(src, statements):
    code = compile(src, "<learner>", "exec")
    best = 1e9
    for _ in range(5):
        t = time.perf_counter(); exec(code, {}); best = min(best, time.perf_counter() - t)
    return statements / best / 1e6
print("%.2f" % timed("X = 0\nfor _ in range(1000000):\n    X += 1\n", 1e6))
print("%.2f" % timed("X = 0\nY = 0\nZ = 0\nW = 0\nfor _ in range(100000):\n"
                     "    Y = X*2+1\n    if Y > 10:\n        Z += 1\n    X += 1\n    W -= 1\n", 4e5))
PY
)
rate() { echo "$velant" | grep "$1" | sed 's/.*items_per_second=\([0-9.]*\)M.*/\1/'; }
printf '%-28s %12s %12s %8s\n' "loop" "Velant M/s" "CPython M/s" "ratio"
set -- $python
for row in "BM_walk_increase_median:aumenta in ripeti per:$1" "BM_walk_mixed_body_median:mixed body:$2"; do
  name=${row%%:*}; rest=${row#*:}; label=${rest%%:*}; py=${rest#*:}
  v=$(rate "$name")
  printf '%-28s %12s %12s %8s\n' "$label" "$v" "$py" "$(awk -v v="$v" -v p="$py" 'BEGIN { printf "%.2f", v / p }')"
done
