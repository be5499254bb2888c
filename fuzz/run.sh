#!/usr/bin/env bash
# Builds the fuzz targets with libFuzzer and runs each for a while.
#
#   fuzz/run.sh [SECONDS] [TARGET...]
#
# SECONDS defaults to 60 per target; the targets are the *_fuzz.cpp files
# here. Needs clang and Debian's libclang-rt-14-dev. The library is built
# once with the fuzzing instrumentation into build-fuzz/ (CMake, TQ_FUZZ) and
# every target links it; the growing corpora go to fuzz/corpus-TARGET/
# (started from fuzz/seeds/TARGET/), any finding to fuzz/crash-*.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for f in fuzz/*_fuzz.cpp; do targets+=("$(basename "$f" _fuzz.cpp)"); done
fi

jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang \
  -DCMAKE_CXX_COMPILER=clang++ -DTQ_FUZZ=ON -DTQ_BUILD_TESTS=OFF -DTQ_BUILD_BENCH=OFF >/dev/null
echo "== building ${targets[*]}"
cmake --build build-fuzz -j"$jobs" --target "${targets[@]/%/_fuzz}" >build-fuzz/build.log 2>&1 ||
  { tail -30 build-fuzz/build.log; exit 1; }

export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export ASAN_OPTIONS=detect_leaks=1
[ -f tests/lsan.supp ] && export LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp
status=0
for t in "${targets[@]}"; do
  corpus="fuzz/corpus-$t"
  mkdir -p "$corpus"
  seeds=()
  [ -d "fuzz/seeds/$t" ] && seeds=("fuzz/seeds/$t")
  echo "== running $t for ${seconds}s"
  if ! "build-fuzz/bin/${t}_fuzz" -max_total_time="$seconds" -max_len=12000 -timeout=10 -rss_limit_mb=2048 \
      -artifact_prefix=fuzz/ -print_final_stats=1 "$corpus" "${seeds[@]}" 2>"build-fuzz/$t.log"; then
    echo "!! $t found a problem; see build-fuzz/$t.log and fuzz/crash-*"
    status=1
  fi
  grep -E '^(#[0-9]+ +DONE|stat::number_of_executed_units|stat::average_exec_per_sec|stat::peak_rss_mb)' \
    "build-fuzz/$t.log" || tail -5 "build-fuzz/$t.log"
  grep -E '^#[0-9]+' "build-fuzz/$t.log" | tail -1
done
exit $status
