#!/usr/bin/env bash
# Sets up, builds, and runs the main job on the bundled sample data: a day's
# learning with tqcomm learn, driven by a few scripted answers so that it ends
# on its own (it keeps the rest of the day's list for the next run). Before
# that, a sound library of the sample words goes into the data folder (once:
# a few seconds of speech), so that "tqcomm say WORD" answers from it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
export XDG_DATA_HOME="${XDG_DATA_HOME:-$PWD/build/demo-data}"
sndlib="$XDG_DATA_HOME/tqcomm/sndlib"
if [ ! -f "$sndlib/words.idx" ]; then
  build/bin/tqcomm sndlib build data/sample/words.txt -o "$sndlib" ||
    echo "== no sound library (speech unavailable); tqcomm say will not find the sample words"
fi
build/bin/tqcomm say apple --play -o build/demo-apple || true
printf '1\n2\n1\n3\n4\n5\n1\n1\nq\n' | build/bin/tqcomm learn
