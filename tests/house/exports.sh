#!/bin/sh
# exports.sh LIBRARY INCLUDE-FOLDER COMPILER: the object exports what the public headers
# declare, functions and tables, and nothing else.
set -eu
library=$1 include=$2 compiler=$3
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

marker='extern __attribute__((visibility("default")))'
for header in "$include"/qorkes/*.h; do
    "$compiler" -m32 -E -P -x c -I "$include" "$header"
done | tr '\n' ' ' | sed "s/$marker/\n&/g" |
    sed -n "s/^$marker \([^;([]*\)[;([].*/\1/p" | sed 's/ *$//; s/.*[ *]//' |
    sort -u >"$work/declared"
nm -D --defined-only "$library" | awk '{ print $NF }' | sort -u >"$work/exported"

[ -s "$work/declared" ] || { echo "no declaration found in $include" >&2; exit 1; }
comm -23 "$work/declared" "$work/exported" | sed 's/^/declared, not exported: /' >"$work/wrong"
comm -13 "$work/declared" "$work/exported" | sed 's/^/exported, not declared: /' >>"$work/wrong"
cat "$work/wrong"
[ ! -s "$work/wrong" ]
