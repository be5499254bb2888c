#!/usr/bin/env bash
# Sets up, builds, and runs the main job on the bundled sample data: a day's
# learning with tqcomm learn, driven by a few scripted answers so that it ends
# on its own (it keeps the rest of the day's list for the next run).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
export XDG_DATA_HOME="${XDG_DATA_HOME:-$PWD/build/demo-data}"
printf '1\n2\n1\n3\n4\n5\n1\n1\nq\n' | build/bin/tqcomm learn
