// The polynomials of Niederreiter's sequence.
#include <qorkes/kes.h>

#include "_kes_niederr_tables.inc"
