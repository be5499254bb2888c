#!/usr/bin/env bash
# Sets up, builds, and runs the main job on the bundled sample data.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
export XDG_DATA_HOME="${XDG_DATA_HOME:-$PWD/build/demo-data}"
build/bin/tqcomm book sample
