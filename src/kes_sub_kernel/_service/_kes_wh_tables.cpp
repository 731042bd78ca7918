// The parameters of the 273 members of WH.
#include <qorkes/kes.h>

#include "_kes_wh_tables.inc"
