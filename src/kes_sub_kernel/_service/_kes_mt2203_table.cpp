// The parameters of the 1024 members of MT2203.
#include <qorkes/kes.h>

const KesMt2203Row _kes_mt2203_table[KesMt2203Members] = {
#include "_kes_mt2203_table.inc"
};
