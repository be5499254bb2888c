#!/usr/bin/env bash
# MP3 speed and memory beside the peer programs, as ratios in one run:
#
#   bench/sound_bench.sh [BUILD_DIR]     (default build)
#
# Makes the sounds once into BUILD_DIR/bench-audio: ten minutes of 44.1 kHz
# stereo (a chord of tones, low pink noise and espeak-ng speech), as a wave
# and as a 128 kbit/s MP3 made by lame, and a one-hour MP3 of mono speech
# and tones. Then runs sound_bench and prints
#   vcMp3ToWav / mpg123 -w                     (target: at most 1.05)
#   vcEncodeWavToMp3 / lame, same settings     (target: at most 1.05)
#   peak memory of vcMp3ToWav on the hour      (target: under 10 MB above the start)
#   the MP3 digest job / mpg123 -s >/dev/null  (target: at most 1.00)
#   a picture from an hour's digest, whole and ten seconds of it (time each)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
audio="$build/bench-audio"
mkdir -p "$audio"

speech() {  # speech OUT.wav: a minute of English from espeak-ng, at 44.1 kHz stereo
  local text="The quick brown fox jumps over the lazy dog. Learning a new word every day is easier \
when you hear it spoken, see it written and use it in a sentence of your own. Practice makes perfect."
  espeak-ng -s 150 -w "$audio/voice.wav" "$text"
  sox "$audio/voice.wav" -r 44100 -c 2 "$audio/voice44.wav" repeat 6 pad 0 1
}

if [ ! -f "$audio/ten.mp3" ]; then
  echo "== making ten minutes of sound"
  speech
  sox -n -r 44100 -c 2 -b 16 "$audio/chord.wav" synth 600 sine 220 sine 277 sine 330 sine 440 pinknoise vol 0.3
  sox -m "$audio/chord.wav" "|sox $audio/voice44.wav -p repeat 10 trim 0 600" -b 16 "$audio/ten.wav"
  lame --quiet -b 128 "$audio/ten.wav" "$audio/ten.mp3"
fi
if [ ! -f "$audio/hour.mp3" ]; then
  echo "== making an hour of sound (takes a minute or two)"
  [ -f "$audio/voice44.wav" ] || speech
  sox "$audio/voice44.wav" -c 1 -r 22050 -t wav - repeat 60 trim 0 3600 \
    | lame --quiet -b 48 --resample 22.05 - "$audio/hour.mp3"
fi

run() { TQ_BENCH_AUDIO="$audio" "$build/bin/sound_bench" --benchmark_format=csv "$@" 2>/dev/null; }
csv=$(run --benchmark_filter='-PeakMemory')
echo "the least of the runs (clock ms, processor ms):"
echo "$csv" | grep '_least"' | awk -F, '{gsub(/"/, "", $1); sub(/\/.*/, "", $1); printf "  %-20s %10.0f %10.0f\n", $1, $3, $NF}'
# the least of the runs: clock time (column 3) and processor time (cpu_ms, the last column)
field() { echo "$csv" | awk -F, -v n="$1/" -v c="$2" 'index($1, n) && $1 ~ /_least"$/ {print (c ? $c : $NF)}'; }
ratio() { awk -v a="$(field "$1" "$3")" -v b="$(field "$2" "$3")" 'BEGIN {printf "%.3f", a / b}'; }
peak=$(run --benchmark_filter=PeakMemory --benchmark_format=console | awk '/peak_above_start_MB/ {sub(/.*peak_above_start_MB=/, ""); print $1}')
echo "vcMp3ToWav / mpg123 -w:      clock $(ratio BM_Mp3ToWav BM_Mpg123Program 3), processor $(ratio BM_Mp3ToWav BM_Mpg123Program 0)  (target <= 1.05)"
echo "vcEncodeWavToMp3 / lame:     clock $(ratio BM_EncodeWavToMp3 BM_LameProgram 3), processor $(ratio BM_EncodeWavToMp3 BM_LameProgram 0)  (target <= 1.05)"
printf 'vcMp3ToWav peak on one hour: %.1f MB above the start  (target < 10 MB)\n' "$peak"
echo "MP3 digest / mpg123 -s:      clock $(ratio BM_Mp3Digest BM_Mpg123Decode 3), processor $(ratio BM_Mp3Digest BM_Mpg123Decode 0)  (target <= 1.00)"
drawn() { echo "$csv" | awk -F, -v n="\"$1\"" '$1 == n {printf "%.3f", $3}'; }
echo "a picture of an hour's digest: whole hour $(drawn BM_DrawWholeHour) ms, ten seconds $(drawn BM_DrawTenSeconds) ms"
rm -f "$audio"/out_*
