#!/usr/bin/env bash
# Installs whatever Debian packages of scripts/packages.txt are missing
# (run as root on Debian 12), fetches CC-CEDICT into the cache for the
# dictionary builder, then configures and builds into build/.
set -euo pipefail
cd "$(dirname "$0")/.."

missing=()
while read -r pkg program; do
  [[ -z "$pkg" || "$pkg" == \#* ]] && continue
  # A second word names a program that stands in for the package when it is
  # already there (npm comes with some builds of nodejs).
  [[ -n "$program" ]] && command -v "$program" >/dev/null && continue
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done < scripts/packages.txt
if ((${#missing[@]})); then
  echo "== installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# Chinese meanings for dictionaries built from WordNet; without them the
# builder gives English meanings, so a failure here stops nothing.
bash scripts/fetch_cedict.sh || echo "== CC-CEDICT not fetched: dictionaries built from WordNet get English meanings"

jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs"
