#include <qorkes/qorkes.h>

#include <cstdio>
#include <vector>

int main() {
    const std::vector<double> a = {4};
    std::vector<double> y(a.size());
    _qordSqrt_HA(1, a.data(), y.data());
    std::printf("root_cxx %.17g\n", y[0]);
}
