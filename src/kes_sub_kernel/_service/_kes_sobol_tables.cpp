// The start numbers and primitive polynomials of Sobol's sequence, one dimension a row:
// Bratley and Fox, "Algorithm 659: Implementing Sobol's quasirandom sequence
// generator", ACM Transactions on Mathematical Software 14, 1988.
//
// Dimension d, from 1 on, has polynomial d - 1 and as many start numbers of row d as
// its degree: the rows are one further on than their polynomials. The sequences depend
// on that, and on the last dimension's row being the eight words behind the 39 rows,
// which are the first polynomials. Both tables are therefore one object with two names.
#include <kes_sub_kernel/sobol/sobol.hpp>

namespace qorkes {

// clang-format off
[[gnu::used]] extern const uint32_t sobolWords[] = {
    // Start numbers, filled up with zeros.
    1, 0, 0, 0, 0, 0, 0, 0,
    1, 1, 0, 0, 0, 0, 0, 0,
    1, 3, 7, 0, 0, 0, 0, 0,
    1, 1, 5, 0, 0, 0, 0, 0,
    1, 3, 1, 1, 0, 0, 0, 0,
    1, 1, 3, 7, 0, 0, 0, 0,
    1, 3, 3, 9, 9, 0, 0, 0,
    1, 3, 7, 13, 3, 0, 0, 0,
    1, 1, 5, 11, 27, 0, 0, 0,
    1, 3, 5, 1, 15, 0, 0, 0,
    1, 1, 7, 3, 29, 0, 0, 0,
    1, 3, 7, 7, 21, 0, 0, 0,
    1, 1, 1, 9, 23, 37, 0, 0,
    1, 3, 3, 5, 19, 33, 0, 0,
    1, 1, 3, 13, 11, 7, 0, 0,
    1, 1, 7, 13, 25, 5, 0, 0,
    1, 3, 5, 11, 7, 11, 0, 0,
    1, 1, 1, 3, 13, 39, 0, 0,
    1, 3, 1, 15, 17, 63, 13, 0,
    1, 1, 5, 5, 1, 27, 33, 0,
    1, 3, 3, 3, 25, 17, 115, 0,
    1, 1, 3, 15, 29, 15, 41, 0,
    1, 3, 1, 7, 3, 23, 79, 0,
    1, 3, 7, 9, 31, 29, 17, 0,
    1, 1, 5, 13, 11, 3, 29, 0,
    1, 3, 1, 9, 5, 21, 119, 0,
    1, 1, 3, 1, 23, 13, 75, 0,
    1, 3, 3, 11, 27, 31, 73, 0,
    1, 1, 7, 7, 19, 25, 105, 0,
    1, 3, 5, 5, 21, 9, 7, 0,
    1, 1, 1, 15, 5, 49, 59, 0,
    1, 1, 1, 1, 1, 33, 65, 0,
    1, 3, 5, 15, 17, 19, 21, 0,
    1, 1, 7, 11, 13, 29, 3, 0,
    1, 3, 7, 5, 7, 11, 113, 0,
    1, 1, 5, 3, 15, 19, 61, 0,
    1, 3, 1, 1, 9, 27, 89, 7,
    1, 1, 3, 7, 31, 15, 45, 23,
    1, 3, 3, 9, 9, 25, 107, 39,

    // Polynomials, the coefficient of t^i in bit i.
    3, 7, 11, 13, 19, 25, 37, 59, 47, 61, 55, 41, 67,
    97, 91, 109, 103, 115, 131, 193, 137, 145, 143, 241, 157, 185,
    167, 229, 171, 213, 191, 253, 203, 211, 239, 247, 285, 369, 299,
};
// clang-format on

} // namespace qorkes

// uint32_t uSobolMInit[39][8] and uint32_t uSobolIrredPoly[39]. The linker may give a
// program copies of tables that it names: to a copy of the first belongs all of it.
#define TABLE(name, offset, size)                                                      \
    asm(".globl " name "\n.type " name ", @object\n.size " name ", " size              \
        "\n.set " name ", _ZN6qorkes10sobolWordsE + " offset)
TABLE("uSobolMInit", "0", "1404");
TABLE("uSobolIrredPoly", "1248", "156");
static_assert(sizeof(uSobolMInit) == 1248 && sizeof(uSobolIrredPoly) == 156);

const int32_t iSobolIrredPolyDeg[qorkes::rowsOfSobolTables] = {
    1, 2, 3, 3, 4, 4, 5, 5, 5, 5, 5, 5, 6, 6, 6, 6, 6, 6, 7, 7,
    7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 8, 8, 8};
