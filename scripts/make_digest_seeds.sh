#!/usr/bin/env bash
# Writes the seeds of the digest fuzz target: short waves and an MP3 made
# with sox and lame, and a digest of a spoken word, behind the five bytes of
# settings the target reads first (block length, interval and blocks a
# point, height, width, start of the picture).
set -euo pipefail
cd "$(dirname "$0")/.."
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
seeds=fuzz/seeds/digest
mkdir -p "$seeds"

seed() {  # seed FILE PREFIX-BYTES SOURCE
  printf "$2" >"$1"
  cat "$3" >>"$1"
}

sox -D -r 8000 -c 1 -n -b 8 "$tmp/m8.wav" synth 0.2 sine 300 pad 0.1 0.1
sox -D -r 11025 -c 2 -n -b 16 "$tmp/s16.wav" synth 0.1 sine 500 vol 0.9 remix 1 0
lame --quiet -b 8 --resample 8 "$tmp/m8.wav" "$tmp/m8.mp3"
espeak-ng -w "$tmp/word.wav" "word"
build=${1:-build}
"$build/bin/tqcomm" digest "$tmp/word.wav" --block 10 --digest "$tmp/word.dig" -o "$tmp/word.png" >/dev/null

seed "$seeds/mono8" '\x09\x21\x60\x50\x10' "$tmp/m8.wav"
seed "$seeds/stereo16" '\xfc\x10\x50\x14\x10' "$tmp/s16.wav"
seed "$seeds/mp3" '\x13\x31\x60\x30\x20' "$tmp/m8.mp3"
seed "$seeds/digest" '\x09\x20\x70\xe4\x14' "$tmp/word.dig"
ls -l "$seeds"
