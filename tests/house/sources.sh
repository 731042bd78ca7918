#!/bin/sh
# sources.sh ROOT: sources are ASCII without tabs and trailing blanks, and an include
# goes down, never up or sideways.
set -eu
cd "$1"
export LC_ALL=C
status=0

sources=$(find CMakeLists.txt cmake include src apps tests tools bench examples scripts \
    -type f \( -name '*.[ch]' -o -name '*.[ch]pp' -o -name '*.inc' -o -name '*.cmake' \
    -o -name CMakeLists.txt -o -name '*.sollya' -o -name '*.sh' -o -path 'scripts/*' \) \
    2>/dev/null || true)
# shellcheck disable=SC2086 # names without blanks
if grep -nP '[^\x20-\x7E]|[ \t]$' $sources; then
    echo "^ a byte that is not printable ASCII, or a blank at the end of a line"
    status=1
fi

# floor NAME ALLOWED...: what files under src/NAME may include of the house.
floor() {
    name=$1
    shift
    allowed=$(echo "$*" | tr ' ' '|')
    house='common|signal|qor_core|kes_sub_kernel|kes_kernel|qorkes|apps|tools|tests'
    if grep -rnE "#include [<\"](($house)/|catalogue|\.\.)" "src/$name" |
        grep -vE "#include <($allowed)/"; then
        echo "^ in $name, which may include of: $*"
        status=1
    fi
}
for name in src/*/; do
    case $(basename "$name") in
    common) floor common common ;;
    signal) floor signal signal common qorkes ;;
    qor_core) floor qor_core qor_core common qorkes ;;
    kes_sub_kernel) floor kes_sub_kernel kes_sub_kernel common qorkes ;;
    kes_kernel) floor kes_kernel kes_kernel kes_sub_kernel common qorkes ;;
    *)
        echo "$name has no floor"
        status=1
        ;;
    esac
done
exit $status
