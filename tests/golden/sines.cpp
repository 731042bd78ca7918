// Sine and cosine for the tables of transforms, in place of the C library's: theirs
// differ in last bits from library to library, and so would transforms.
#include <cmath>

extern "C" {

double sin(double x) {
    return static_cast<double>(std::sin(static_cast<long double>(x)));
}
double cos(double x) {
    return static_cast<double>(std::cos(static_cast<long double>(x)));
}
void sincos(double x, double* sine, double* cosine) {
    *sine = sin(x);
    *cosine = cos(x);
}
}
