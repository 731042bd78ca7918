#!/bin/sh
# headers.sh INCLUDE-FOLDER C-COMPILER C++-COMPILER: each public header stands alone, in
# old C, new C and C++.
set -eu
include=$1 c=$2 cxx=$3
for header in "$include"/qorkes/*.h; do
    name=qorkes/$(basename "$header")
    for standard in c99 c17; do
        echo "#include <$name>" |
            "$c" -m32 -std=$standard -pedantic-errors -Wall -Wextra -Werror \
                -fsyntax-only -I "$include" -x c -
    done
    for standard in c++98 c++20; do
        echo "#include <$name>" |
            "$cxx" -m32 -std=$standard -pedantic-errors -Wno-long-long -Wall -Wextra \
                -Werror -fsyntax-only -I "$include" -x c++ -
    done
done
