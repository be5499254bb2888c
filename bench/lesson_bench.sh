#!/usr/bin/env bash
# The lesson maker as ratios and figures in one run:
#
#   bench/lesson_bench.sh [BUILD_DIR]     (default build)
#
# Makes the sounds once into BUILD_DIR/bench-lesson: each sample word spoken
# by espeak-ng (22,050 a second, mono, the lesson's own format) as a user
# recording, and pauses of one and two seconds for sox. Then runs
# lesson_bench and prints
#   assembling a lesson / sox concatenating the same files and pauses
#                                                        (target: at most 1.2)
#   peak memory of a 5-minute and a 60-minute lesson, made and compressed
#                                                        (target: equal within
#                                                         2 MB, under 20 MB)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
dir="$build/bench-lesson"
mkdir -p "$dir/user" "$dir/tmp" "$dir/letters"
if [ ! -f "$dir/words.txt" ]; then
  echo "== speaking the sample words"
  # The English lines of the sample list: every other line, before the
  # pronunciation.
  awk 'NR % 2 == 1 {sub(/ \[.*/, ""); sub(/\r$/, ""); print}' data/sample/words.txt >"$dir/words.part"
  while read -r w; do espeak-ng -w "$dir/user/$w.wav" "$w"; done <"$dir/words.part"
  sox -n -r 22050 -c 1 -b 16 "$dir/pause1.wav" trim 0 1
  sox -n -r 22050 -c 1 -b 16 "$dir/pause2.wav" trim 0 2
  mv "$dir/words.part" "$dir/words.txt"
fi
run() { TQ_BENCH_LESSON="$PWD/$dir" "$build/bin/lesson_bench" "$@" 2>/dev/null; }
csv=$(run --benchmark_format=csv --benchmark_filter=-PeakMemory)
echo "the least of the runs (clock ms, processor ms, lesson s):"
echo "$csv" | grep '_least"' | awk -F, '{gsub(/"/, "", $1); sub(/\/.*/, "", $1); sub(/_least$/, "", $1);
  printf "  %-22s %10.1f %10.1f %8.1f\n", $1, $3, $(NF-1), $NF}'
field() { echo "$csv" | awk -F, -v n="$1/" -v c="$2" 'index($1, n) && $1 ~ /_least"$/ {print (c ? $c : $(NF-1))}'; }
ratio() { awk -v a="$(field "$1" "$3")" -v b="$(field "$2" "$3")" 'BEGIN {printf "%.3f", a / b}'; }
echo "lesson assembly / sox:   clock $(ratio BM_LessonAssembly BM_SoxConcatenation 3), processor $(ratio BM_LessonAssembly BM_SoxConcatenation 0)  (target <= 1.2)"
# Each length in a process of its own, so that neither starts from what the
# other left in the heap.
for minutes in 5 60; do run --benchmark_filter="PeakMemory/$minutes/"; done |
  awk '/BM_LessonPeakMemory/ {
    for (i = 1; i <= NF; i++) { split($i, kv, "="); v[kv[1]] = kv[2] }
    printf "peak memory, %5.1f-minute lesson: %5.1f MB above the start, %5.1f MB in all\n",
      v["lesson_min"], v["peak_above_start_MB"], v["peak_MB"] }'
echo "  (target: the two equal within 2 MB, under 20 MB)"
rm -f "$dir"/out_*
