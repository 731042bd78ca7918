#!/bin/sh
# object.sh LIBRARY: no start-up code, no text relocation, no dependency beyond the C
# library, no C++ runtime.
set -eu
library=$1
status=0
fail() {
    echo "$*"
    status=1
}

# The one entry, a pointer, is the compiler's own.
case $(readelf -h "$library") in
*ELF64*) pointer=000008 ;;
*) pointer=000004 ;;
esac
size=$(readelf -SW "$library" | sed -n 's/^ *\[ *[0-9]*\] \.init_array  *[A-Z_]* *//p' |
    awk '{ print $3 }')
[ "$size" = $pointer ] || fail ".init_array has 0x$size bytes, should have one entry"
! readelf -SW "$library" | grep -w '\.ctors' || fail "there are constructors"

! readelf -dW "$library" | grep TEXTREL || fail "the text has relocations"

for needed in $(readelf -dW "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'); do
    case $needed in
    libc.so.6 | libm.so.6 | libpthread.so.0) ;;
    *) fail "needs $needed" ;;
    esac
done

undefined=$(nm -D --undefined-only "$library" | awk '{ print $2 }' |
    grep -E '^(_Z|__cxa_|__gxx_|_Unwind_)' | grep -v '^__cxa_finalize@' || true)
[ -z "$undefined" ] || fail "C++ runtime:" $undefined

exit $status
