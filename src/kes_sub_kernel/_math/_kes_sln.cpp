// __kessLn: the natural logarithm of a float.
#include <common/ext.hpp>
#include <qorkes/kes.h>

float __kessLn(float x) { return qorkes::round32(__kesdLn(x)); }
