#!/usr/bin/env bash
# Makes the letter sounds that spell a word in an audio lesson, into
# data/sound/letters/ (or the folder given): "a1.wav" is the letter said
# inside a word (a level or rising voice, as before a comma), "a2.wav" the
# last letter of a word (falling, as before a full stop), the same for the
# capital letters ("A1.wav", "A2.wav"), and "blank.wav", the short gap for
# a blank, a hyphen or any other byte of a word.
#
# Speech is espeak-ng's (British English, a little slower than its normal
# rate), cut of its leading and trailing silence and kept as 11,025 samples
# a second, 16-bit mono, so the whole set stays small.
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:-data/sound/letters}
mkdir -p "$out"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# speak TEXT OUT.wav
speak() {
  espeak-ng -v en -s 150 -w "$work/raw.wav" "$1"
  sox -D "$work/raw.wav" -r 11025 -c 1 -b 16 "$2" \
    silence 1 0.01 0.5% reverse silence 1 0.01 0.5% reverse
}

for l in a b c d e f g h i j k l m n o p q r s t u v w x y z; do
  speak "$l," "$out/${l}1.wav"
  speak "$l." "$out/${l}2.wav"
  upper=$(printf '%s' "$l" | tr a-z A-Z)
  cp "$out/${l}1.wav" "$out/${upper}1.wav"
  cp "$out/${l}2.wav" "$out/${upper}2.wav"
done
sox -D -n -r 11025 -c 1 -b 16 "$out/blank.wav" trim 0 0.15
echo "letter sounds in $out: $(ls "$out" | wc -l) files, $(du -sh "$out" | cut -f1)"
