#!/usr/bin/env bash
# The project as others get it, in a scratch folder of the build tree:
#   install_check.sh prefix BUILD SOURCE CC VERSION [CFLAGS]
#     `cmake --install` into a prefix; the layout; a small C program built
#     against it through pkg-config and through find_package, and run; the
#     installed tool run on its installed data.
#   install_check.sh deb BUILD SOURCE CC VERSION [CFLAGS]
#     `cpack -G DEB`; the package's fields; its files unpacked with
#     `dpkg-deb -x` into a scratch root and the tool run from there.
set -euo pipefail
mode=$1 build=$2 source=$3 cc=$4 version=$5 cflags=${6:-}
work=$build/install-check-$mode
rm -rf "$work"
mkdir -p "$work"
unset TQCOMM_DATA TQCOMM_SAMPLES

fail() {
  echo "install check ($mode): $*" >&2
  exit 1
}

expect_file() {
  [[ -f $1 ]] || fail "missing $1"
}

# The installed tool answers --version with the project's version and the
# bundled data beside it, runs a scripted day's learning on the sample
# book, which it makes from the installed sample list, and makes a lesson.
check_tool() {
  local tool=$1 data=$2 out
  out=$("$tool" --version) || fail "$tool --version failed"
  [[ $out == "tqcomm (tqcomm2006) $version"* ]] || fail "--version says: $out"
  [[ $out == *"bundled data: $(realpath "$data")"* ]] || fail "the tool does not take its data from $data: $out"
  mkdir -p "$work/home"
  out=$(printf '1\n2\n1\n1\n1\n1\n' |
        XDG_DATA_HOME=$work/home "$tool" learn --date 2026-01-05 --new 3 2>&1) || fail "learn failed: $out"
  [[ $out == *"0 words due by the curve, 3 new"* && $out == *"answered 6, left 0"* ]] ||
    fail "learn ran another day than the scripted one: $out"
  [[ $(stat -c %s "$work/home/tqcomm/sample.his") == $((98 * 48)) ]] ||
    fail "the sample book's history is not one record for each of the 98 sample words"
  # A short lesson spells its words with the installed letter sounds.
  out=$(XDG_DATA_HOME=$work/home "$tool" lesson --words 2 -o "$work/lesson.mp3" 2>&1) || fail "lesson failed: $out"
  [[ $out != *"no letter sounds"* && -s $work/lesson.mp3 && -s $work/lesson.lrc ]] ||
    fail "the lesson did not find the installed letter sounds: $out"
}

# Where a program finds libtqcomm2006 when it starts.
loaded_library() {
  local path
  path=$(ldd "$1" | sed -n 's/.*libtqcomm2006[^ ]* => \([^ ]*\) .*/\1/p')
  [[ -n $path && $path != "not" ]] && realpath "$path"
}

check_man() {
  local out
  out=$(LC_ALL=C MANWIDTH=80 man -l "$1" 2>&1) || fail "man -l $1 failed"
  [[ $out == *"EXIT STATUS"* ]] || fail "man -l $1 rendered no page: $out"
}

check_prefix() {
  local prefix=$work/prefix major=${version%%.*}
  cmake --install "$build" --prefix "$prefix" >/dev/null
  local pc libdir
  pc=$(find "$prefix" -name tqcomm2006.pc)
  [[ -n $pc ]] || fail "no tqcomm2006.pc under $prefix"
  export PKG_CONFIG_LIBDIR=${pc%/*}
  [[ $(pkg-config --modversion tqcomm2006) == "$version" ]] || fail "pkg-config gives another version"
  libdir=$(pkg-config --variable=libdir tqcomm2006)
  libdir=$(realpath "$libdir")
  [[ $libdir == "$prefix"/* ]] || fail "the .pc file points outside the prefix: $libdir"
  expect_file "$libdir/libtqcomm2006.so.$version"
  [[ $(readlink "$libdir/libtqcomm2006.so") == "libtqcomm2006.so.$major" ]] || fail "no link libtqcomm2006.so"
  readelf -d "$libdir/libtqcomm2006.so.$version" | grep -q "SONAME.*\[libtqcomm2006.so.$major\]" ||
    fail "the library's SONAME is not libtqcomm2006.so.$major"
  expect_file "$prefix/include/tqcomm2006/tqcomm2006.h"
  expect_file "$prefix/include/tqcomm2006/tqhost.h"
  expect_file "$prefix/share/man/man1/tqcomm.1.gz"
  expect_file "$prefix/share/bash-completion/completions/tqcomm"
  grep -q WordNet "$prefix/share/doc/tqcomm2006/copyright" && grep -q CC-CEDICT "$prefix/share/doc/tqcomm2006/copyright" ||
    fail "the copyright file lacks the notes on WordNet and CC-CEDICT"
  # Everything under data/ is installed, as it stands.
  diff -r "$source/data" "$prefix/share/tqcomm" >/dev/null || fail "share/tqcomm differs from the source's data/"

  # Built through pkg-config, the library found at run time by its path.
  mkdir -p "$work/pc" && cd "$work/pc"
  # shellcheck disable=SC2046,SC2086
  "$cc" -std=c11 -Wall -Wextra -Werror $cflags "$source/tests/install/consumer.c" \
    $(pkg-config --cflags --libs tqcomm2006) -o consumer || fail "cannot build through pkg-config"
  local out
  out=$(LD_LIBRARY_PATH=$libdir ./consumer) || fail "the pkg-config build does not run: $out"
  [[ $out == "2 words; 1: book [buk]" ]] || fail "the pkg-config build read back: $out"
  [[ $(LD_LIBRARY_PATH=$libdir loaded_library ./consumer) == "$libdir"/* ]] || fail "the pkg-config build took another library"

  # Built through find_package, the library found by the build's run path.
  out=$(cmake -S "$source/tests/install" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_C_COMPILER="$cc" \
          -DCMAKE_C_FLAGS="$cflags" 2>&1) || fail "find_package failed: $out"
  [[ $out == *"found tqcomm2006 $version"* ]] || fail "find_package found another version: $out"
  cmake --build "$work/cmake" >/dev/null || fail "cannot build through find_package"
  cd "$work/cmake"
  out=$(./consumer) || fail "the find_package build does not run: $out"
  [[ $out == "2 words; 1: book [buk]" ]] || fail "the find_package build read back: $out"

  check_tool "$prefix/bin/tqcomm" "$prefix/share/tqcomm"
  check_man "$prefix/share/man/man1/tqcomm.1.gz"
}

check_deb() {
  cpack -G DEB -B "$work/cpack" --config "$build/CPackConfig.cmake" >"$work/cpack.log" 2>&1 ||
    fail "cpack failed: $(cat "$work/cpack.log")"
  local deb
  deb=$(find "$work/cpack" -maxdepth 1 -name "tqcomm2006_${version}_*.deb")
  [[ -n $deb ]] || fail "no tqcomm2006_${version}_*.deb"
  [[ $(dpkg-deb -f "$deb" Package) == tqcomm2006 && $(dpkg-deb -f "$deb" Version) == "$version" ]] ||
    fail "the package is not tqcomm2006 $version"
  # What the host and the sound need at run time: the libraries linked (found
  # by dpkg-shlibdeps), the fonts, espeak-ng's voices.
  local depends pkg
  depends=$(dpkg-deb -f "$deb" Depends)
  for pkg in libc6 libstdc++6 libcairo2 libpangocairo-1.0-0 libmpg123-0 libmp3lame0 libespeak-ng1 \
             fonts-wqy-microhei fonts-dejavu-core espeak-ng-data; do
    [[ ", $depends," == *", $pkg "* || ", $depends," == *", $pkg,"* ]] || fail "Depends lacks $pkg: $depends"
  done
  dpkg-deb -x "$deb" "$work/root"
  local tool=$work/root/usr/bin/tqcomm
  [[ $(loaded_library "$tool") == "$work/root/usr/lib"* ]] || fail "the unpacked tool takes another library"
  check_tool "$tool" "$work/root/usr/share/tqcomm"
  check_man "$work/root/usr/share/man/man1/tqcomm.1.gz"
}

case $mode in
  prefix) check_prefix ;;
  deb) check_deb ;;
  *) fail "no mode $mode" ;;
esac
echo "install check ($mode): ok"
