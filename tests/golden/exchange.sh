#!/bin/sh
# exchange.sh BUILD-FOLDER BUILD-FOLDER: two builds deliver the same numbers, and a stream
# that one of them saves goes on in the other: the same numbers, and the same file again.
set -eu
one=$1 other=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "$1"
    exit 1
}

"$one"/qorkes-golden >"$work/one" && "$other"/qorkes-golden >"$work/other"
diff "$work/one" "$work/other" || fail "the builds differ"

# goOn FROM TO GENERATOR: FROM saves a stream in use; both go on with it.
goOn() {
    "$1"/qorkes stream save "$work/a" --generator "$3"
    "$1"/qorkes stream load "$work/a" gaussian --method 1 --count 7 --update >"$work/before"
    cp "$work/a" "$work/b"
    "$1"/qorkes stream load "$work/a" gaussian --method 1 --count 999 --update >"$work/one"
    "$2"/qorkes stream load "$work/b" gaussian --method 1 --count 999 --update >"$work/other"
    cmp "$work/one" "$work/other" || fail "$3: other numbers follow"
    cmp "$work/a" "$work/b" || fail "$3: another stream is saved"
}

for generator in $("$one"/qorkes list | sed -n '/^Generators/,/^$/s/^  \([A-Z0-9a-z]*\).*/\1/p'); do
    goOn "$one" "$other" "$generator"
    goOn "$other" "$one" "$generator"
done
