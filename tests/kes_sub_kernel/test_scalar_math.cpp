// The scalar helpers: logarithms against MPFR on every path, floors and roots against
// the C library, special values.
#include <qorkes/kes.h>
#include <support/compare.hpp>
#include <support/oracle.hpp>

#include <random>

using namespace qorkes;
using namespace qorkes::test;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

bool same(const double& x, const double& y) { return bitsOf(x) == bitsOf(y); }

TEST(ScalarLogarithm, IsNearlyRoundedOnEveryPath) {
    Oracle oracle("Ln");
    std::mt19937_64 bits(1);
    const struct {
        double low, high;
    } paths[] = {{0x1p-1074, 0x1p-1022},
                 {0x1p-1022, 0x1p-1000},
                 {0.5, 2},
                 {0.98, 1.02},
                 {0.984374, 0.984376},
                 {1 - 0x1p-40, 1 + 0x1p-40},
                 {1, 1 + 400 * 0x1p-20},
                 {1.015624, 1.015626},
                 {0x1p1000, 0x1.fffffffffffffp1023}};
    for (const auto& [low, high] : paths)
        for (int i = 0; i < 5000; ++i) {
            const uint64_t from = bitsOf(low), to = bitsOf(high);
            double x, y;
            setBits(x, from + bits() % (to - from));
            y = __kesdLn(x);
            ASSERT_LE(oracle.ulps(y, x), 0.51) << std::hexfloat << x;
            const auto single = static_cast<float>(x);
            const float z = __kessLn(single),
                        wide = static_cast<float>(__kesdLn(single));
            ASSERT_EQ(bitsOf(z), bitsOf(wide)) << std::hexfloat << single;
        }
}

TEST(ScalarLogarithm, HasItsSpecialValues) {
    for (const double zero : {0.0, -0.0}) EXPECT_EQ(__kesdLn(zero), -infinity);
    EXPECT_TRUE(same(__kesdLn(1), 0.0));
    EXPECT_EQ(__kesdLn(infinity), infinity);
    for (const double x : {-1.0, -0x1p-1074, -infinity, std::nan("")})
        EXPECT_TRUE(std::isnan(__kesdLn(x))) << x;
}

TEST(ScalarFloor, IsTheGreatestIntegerNotAbove) {
    std::mt19937_64 bits(2);
    std::vector<double> arguments = {0.0,    0.5,    1,      0x1p20, 0x1p21,
                                     0x1p31, 0x1p32, 0x1p51, 0x1p52, infinity};
    for (int i = 0; i < 20000; ++i)
        arguments.push_back(std::ldexp(1 + std::ldexp(double(bits() >> 12), -52),
                                       static_cast<int>(bits() % 56) - 2));
    for (const double a : arguments)
        for (const double near :
             {a, std::nextafter(a, infinity), std::nextafter(a, 0.0)})
            for (const double x : {near, -near, std::trunc(near), -std::trunc(near)})
                ASSERT_TRUE(same(__kesdFloor(x), std::floor(x))) << std::hexfloat << x;
    EXPECT_TRUE(std::isnan(__kesdFloor(std::nan(""))));
}

TEST(ScalarRoot, IsTheRoundedRoot) {
    for (const double x : {0.0, -0.0, 2.0, 0x1p-1074, 1e300, infinity})
        EXPECT_TRUE(same(__kesdSqrt(x), std::sqrt(x))) << x;
    EXPECT_TRUE(std::isnan(__kesdSqrt(-1)));
}

} // namespace
