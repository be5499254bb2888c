#!/usr/bin/env bash
# Writes the seeds of the wave and MP3 fuzz targets: short sounds made with
# sox and lame, behind the few bytes each target reads first (the cut's
# start and end, and for MP3 the thinning).
set -euo pipefail
cd "$(dirname "$0")/.."
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
mkdir -p fuzz/seeds/wave fuzz/seeds/mp3

seed() {  # seed FILE PREFIX-BYTES SOURCE
  printf "$2" >"$1"
  cat "$3" >>"$1"
}

sox -n -r 8000 -c 1 -b 8 "$tmp/m8.wav" synth 0.05 sine 300
sox -n -r 11025 -c 2 -b 16 "$tmp/s16.wav" synth 0.03 sine 500
sox -n -r 22050 -c 1 -b 16 "$tmp/m16.wav" synth 0.04 square 200
# An 18-byte format chunk and a LIST chunk before the data, as some editors write.
python3 - "$tmp/m16.wav" "$tmp/ext.wav" <<'PY'
import struct, sys
src = open(sys.argv[1], 'rb').read()
fmt = src[20:36] + b'\0\0'
data = src[src.index(b'data') + 8:]
body = b'WAVE' + b'fmt ' + struct.pack('<I', 18) + fmt + b'LIST' + struct.pack('<I', 5) + b'INFOx\0' \
    + b'data' + struct.pack('<I', len(data)) + data
open(sys.argv[2], 'wb').write(b'RIFF' + struct.pack('<I', len(body)) + body)
PY
seed fuzz/seeds/wave/mono8 '\x00\xff' "$tmp/m8.wav"
seed fuzz/seeds/wave/stereo16 '\x01\x02' "$tmp/s16.wav"
seed fuzz/seeds/wave/extended '\x00\x03' "$tmp/ext.wav"

lame --quiet -b 32 --resample 22.05 "$tmp/m16.wav" "$tmp/a.mp3"
lame --quiet -b 8 --resample 8 "$tmp/m8.wav" "$tmp/b.mp3"
lame --quiet -b 64 --resample 44.1 --tt seed --ta tqcomm --add-id3v2 "$tmp/s16.wav" "$tmp/c.mp3"
seed fuzz/seeds/mp3/mpeg2 '\x00\xff\x01' "$tmp/a.mp3"
seed fuzz/seeds/mp3/mpeg25 '\x01\x02\x00' "$tmp/b.mp3"
seed fuzz/seeds/mp3/id3stereo '\x00\x03\x01' "$tmp/c.mp3"
ls -l fuzz/seeds/wave fuzz/seeds/mp3
