#!/usr/bin/env bash
# The sound centre's costs as ratios:
#
#   bench/sndcentre_bench.sh [BUILD_DIR]     (default build)
#
#   speech of one word, adapter / "espeak-ng -w"        (target: at most 1.0)
#   lookup in 100,000 records, halving on the open index
#     file / bisection of the index in memory           (no target: the price
#                                                        of never loading it)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
csv=$(TQ_BENCH_DIR="$scratch" "$build/bin/sndcentre_bench" --benchmark_format=csv 2>/dev/null)
echo "the least of the runs (clock, processor):"
echo "$csv" | grep '_least"' | awk -F, '{gsub(/"/, "", $1); sub(/\/.*/, "", $1); sub(/_least$/, "", $1);
  printf "  %-26s %10.3f %s %10s\n", $1, $3, $5, ($NF == "" ? "" : sprintf("%.3f ms", $NF))}'
field() { echo "$csv" | awk -F, -v n="$1" -v c="$2" 'index($1, n "_least") || index($1, n "/") && $1 ~ /_least"$/ {print (c ? $c : $NF)}'; }
ratio() { awk -v a="$(field "$1" "$3")" -v b="$(field "$2" "$3")" 'BEGIN {printf "%.3f", a / b}'; }
echo "speech of a word, adapter / espeak-ng -w:  clock $(ratio BM_SpeakWord BM_EspeakProgram 3), processor $(ratio BM_SpeakWord BM_EspeakProgram 0)  (target <= 1.0)"
echo "lookup, halving on disk / in memory:       clock $(ratio BM_LookupHalvingOnDisk BM_LookupBisectInMemory 3)"
