#include <qorkes/qor.h>

int dll_cpu_version(void) { return 1; }
