// __kesdSqrt: the square root that the x87 unit gives.
#include <common/ext.hpp>
#include <qorkes/kes.h>

double __kesdSqrt(double x) { return qorkes::round64(qorkes::squareRoot(x)); }
