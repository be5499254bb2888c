#!/usr/bin/env bash
# Builds the fuzz targets with libFuzzer and runs each for a while.
#
#   fuzz/run.sh [SECONDS] [TARGET...]
#
# SECONDS defaults to 60 per target; the targets are the *_fuzz.cpp files
# here (text, word_readers, dict, html, cedict, notebook, quiz_choice, quiz_fill, quiz_usage, feed, wave, mp3, digest). Needs clang and Debian's libclang-rt-14-dev.
# Builds land in build-fuzz/, the growing corpora in fuzz/corpus-TARGET/
# (started from fuzz/seeds/TARGET/), and any finding in fuzz/crash-*.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for f in fuzz/*_fuzz.cpp; do targets+=("$(basename "$f" _fuzz.cpp)"); done
fi

CXX=${CXX:-clang++}
flags=(-std=c++17 -g -O1 -fno-omit-frame-pointer -fsanitize=fuzzer,address,undefined
       -fno-sanitize-recover=undefined -Iinclude -Isrc)
# Only what the targets stand on, so that libraries other parts link to are
# not needed here.
sources=(src/core/text.cpp src/core/word_text.cpp src/core/streams.cpp src/core/random.cpp
         src/platform/env_posix.cpp src/platform/drives_linux.cpp)
mkdir -p build-fuzz
for t in "${targets[@]}"; do
  echo "== building $t"
  # A target names any further sources it stands on in fuzz/TARGET.sources.
  extra=()
  [ -f "fuzz/$t.sources" ] && mapfile -t extra < <(grep -v '^#' "fuzz/$t.sources")
  "$CXX" "${flags[@]}" "fuzz/${t}_fuzz.cpp" "${sources[@]}" "${extra[@]}" -lpthread -o "build-fuzz/${t}_fuzz"
done

export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
status=0
for t in "${targets[@]}"; do
  corpus="fuzz/corpus-$t"
  mkdir -p "$corpus"
  seeds=()
  [ -d "fuzz/seeds/$t" ] && seeds=("fuzz/seeds/$t")
  echo "== running $t for ${seconds}s"
  if ! "build-fuzz/${t}_fuzz" -max_total_time="$seconds" -max_len=12000 -timeout=10 -rss_limit_mb=2048 \
      -artifact_prefix=fuzz/ -print_final_stats=1 "$corpus" "${seeds[@]}" 2>"build-fuzz/$t.log"; then
    echo "!! $t found a problem; see build-fuzz/$t.log and fuzz/crash-*"
    status=1
  fi
  grep -E '^(#[0-9]+ +DONE|stat::number_of_executed_units|stat::average_exec_per_sec|stat::peak_rss_mb)' \
    "build-fuzz/$t.log" || tail -5 "build-fuzz/$t.log"
  grep -E '^#[0-9]+' "build-fuzz/$t.log" | tail -1
done
exit $status
