#!/bin/sh
# install.sh BUILD-FOLDER TOOLCHAIN C-COMPILER C++-COMPILER LIBRARY-FOLDER WIDTH-FLAG:
# installs into a folder of its own, moves that, and builds a C and a C++ program against
# it in both ways; the Debian package holds the same files.
set -eu
build=$1 toolchain=$2 c=$3 cxx=$4 libdir=$5 width=$6
programs=$(cd "$(dirname "$0")" && pwd)/program
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "$1"
    exit 1
}

cmake --install "$build" --prefix "$work/first" >"$work/log" || fail "no installation"
mv "$work/first" "$work/tree"
tree=$work/tree

# expectRoot PROGRAM: it prints the square root of 4 and its own name.
expectRoot() {
    [ "$(LD_LIBRARY_PATH="$tree/$libdir" "$1")" = "$(basename "$1") 2" ] || fail "$1 prints something else"
}

export PKG_CONFIG_PATH="$tree/$libdir/pkgconfig"
flags=$(pkg-config --cflags --libs qorkes)
# shellcheck disable=SC2086 # one word per flag is what is wanted
"$c" "$width" -std=c99 "$programs/root_c.c" -o "$work/root_c" $flags
# shellcheck disable=SC2086
"$cxx" "$width" -std=c++20 "$programs/root_cxx.cpp" -o "$work/root_cxx" $flags
expectRoot "$work/root_c"
expectRoot "$work/root_cxx"

cmake -G Ninja -S "$programs" -B "$work/cmake" --toolchain "$toolchain" \
    -DCMAKE_PREFIX_PATH="$tree" >"$work/log" || fail "the CMake package is not found"
cmake --build "$work/cmake" >"$work/log" || fail "no build by the CMake package"
expectRoot "$work/cmake/root_c"
expectRoot "$work/cmake/root_cxx"

[ "$(echo 4 | "$tree/bin/qorkes" apply Sqrt)" = 2 ] || fail "the program does not run"
for page in man1/qorkes.1 man7/qorkes.7; do
    mandoc -T lint -W warning "$tree/share/man/$page" || fail "$page has faults"
done

(cd "$build" && cpack -B "$work" >"$work/log") || fail "no package"
dpkg-deb --fsys-tarfile "$work"/*.deb | tar -t | grep -v '/$' | sed 's,^\./usr/,,' |
    sort >"$work/packed"
(cd "$tree" && find . -type f | sed 's,^\./,,' | sort) >"$work/installed"
diff "$work/installed" "$work/packed" || fail "the package holds other files"
