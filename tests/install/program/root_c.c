#include <qorkes/qorkes.h>

#include <stdio.h>

int main(void) {
    const double a = 4;
    double y;
    _qordSqrt_HA(1, &a, &y);
    printf("root_c %.17g\n", y);
    return 0;
}
