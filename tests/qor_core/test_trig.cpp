// Sin, Cos, SinCos and Tan: limits between fast and scalar code, the state of the
// x87 unit, and errors.
#include "accuracy.hpp"

#include <support/compare.hpp>
#include <support/fpu.hpp>

#include <cmath>
#include <numbers>

using namespace qorkes;
using namespace qorkes::test;

namespace {

/// Half of a kernel with two results.
template <auto kernel, bool second, class T> void half(int n, const T* a, T* y) {
    std::vector<T> other(static_cast<std::size_t>(n));
    kernel(n, a, second ? other.data() : y, second ? y : other.data());
}

double sineOf(double x) {
    double s, c;
    _dSinCos(x, &s, &c);
    return s;
}
double cosineOf(double x) {
    double s, c;
    _dSinCos(x, &s, &c);
    return c;
}

template <class T> struct Kernel {
    const char* function;
    void (*run)(int n, const T* a, T* y);
    double (*scalar)(double);
    T last; // argument before the scalar code takes over
    double error;
};
template <class T> const std::vector<Kernel<T>> kernels;

constexpr double near = 0x1.f3fffffffffffp+16; // before 128000

template <>
const std::vector<Kernel<double>> kernels<double> = {
    {"Sin", _qordSin_HA, _dSin, near, 0.62},
    {"Cos", _qordCos_HA, _dCos, near, 0.62},
    {"Sin", half<_qordSinCos_HA, false>, sineOf, near, 0.65},
    {"Cos", half<_qordSinCos_HA, true>, cosineOf, near, 0.65},
    {"Tan", _qordTan_HA, _dTan, near, 1.0},
    {"Tan", _qordTan_50, _dTan, near, 2.6},
};
template <>
const std::vector<Kernel<float>> kernels<float> = {
    {"Sin", _qorsSin_HA, _dSin, 500000, 0.87},
    {"Cos", _qorsCos_HA, _dCos, 500000, 0.87},
    {"Sin", half<_qorsSinCos_HA, false>, _dSin, 1000000, 0.65},
    {"Cos", half<_qorsSinCos_HA, true>, _dCos, 1000000, 0.65},
    {"Tan", _qorsTan_HA, _dTan, 128000, 1.05},
    {"Sin", _qorsSin_21, _dSin, 1000000, 3.5},
    {"Cos", _qorsCos_21, _dCos, 10048, 3.5},
    {"Sin", half<_qorsSinCos_21, false>, _dSin, 1000000, 2.0},
    {"Cos", half<_qorsSinCos_21, true>, _dCos, 1000000, 2.0},
    {"Tan", _qorsTan_21, _dTan, 500000, 4.0},
};

template <class T> class Trig : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(Trig, Precisions);

/// The first argument whose result by the fast path is not that of the scalar code.
template <class T> T tellingArgument(const Kernel<T>& kernel) {
    for (T a = 1;; a += T{1} / 64) {
        T y;
        kernel.run(1, &a, &y);
        if (y != static_cast<T>(kernel.scalar(a))) return a;
    }
}

TYPED_TEST(Trig, LimitSendsTheWholeGroupToTheScalarCode) {
    using T = TypeParam;
    for (const Kernel<T>& kernel : kernels<T>) {
        SCOPED_TRACE(testing::Message() << kernel.function << ' ' << kernel.error);
        const T telling = tellingArgument(kernel);
        const T beyond = std::nextafter(kernel.last, T{1e9});
        const T scalar = static_cast<T>(kernel.scalar(telling));
        const std::vector<T> ordinary(9, telling);
        std::vector<T> fast(9), y(9);
        kernel.run(9, ordinary.data(), fast.data());
        for (const T sign : {T{1}, T{-1}})
            for (std::size_t place = 0; place < 9; ++place) {
                std::vector<T> a = ordinary;
                a[place] = sign * kernel.last;
                kernel.run(9, a.data(), y.data());
                const T atLast = y[place];
                for (std::size_t i = 0; i < 9; ++i)
                    EXPECT_TRUE(i == place || y[i] == fast[i]) << i;

                a[place] = sign * beyond;
                kernel.run(9, a.data(), y.data());
                EXPECT_EQ(y[place], static_cast<T>(kernel.scalar(a[place])));
                EXPECT_NEAR(y[place], atLast, 0.1 * (1 + std::fabs(atLast)));
                for (std::size_t i = 0; i < 9; ++i) {
                    const bool isNeighbour = i / 4 == place / 4;
                    EXPECT_TRUE(i == place || y[i] == (isNeighbour ? scalar : fast[i]))
                        << i << " beside " << place;
                }
            }
    }
}

TYPED_TEST(Trig, Errors) {
    using T = TypeParam;
    for (const Kernel<T>& kernel : kernels<T>) {
        SCOPED_TRACE(testing::Message() << kernel.function << ' ' << kernel.error);
        const double last = std::min<double>(kernel.last, 4e5);
        for (const Range& range : {Range{1e-12, 1, Sign::both},
                                   {0.5, 10, Sign::both},
                                   {1, last, Sign::both},
                                   {last / 2, last, Sign::both},
                                   {2e6, 1e37, Sign::both}})
            EXPECT_LE(
                largestError(kernel.run, kernel.function, draw<T>(range, 10000, 5)),
                kernel.error)
                << "up to " << range.largest;
        // Next to 0, and to multiples of pi/2, where most of the argument cancels.
        constexpr T tiny = std::numeric_limits<T>::denorm_min();
        std::vector<T> multiples = {0, -T{0}, tiny, -tiny};
        for (int k = 1; k < last / 1.6; k += 1 + k / 20) {
            multiples.push_back(static_cast<T>(k * (std::numbers::pi / 2)));
            multiples.push_back(std::nextafter(multiples.back(), T{1}));
        }
        EXPECT_LE(largestError(kernel.run, kernel.function, multiples), kernel.error);
    }
}

TEST(FloatSinCos, AbsoluteErrorBeyondTheReach) {
    const std::vector<float> a = draw<float>({4e5, 1e6, Sign::both}, 10000, 3);
    std::vector<float> s(a.size()), c(a.size());
    _qorsSinCos_HA(static_cast<int>(a.size()), a.data(), s.data(), c.data());
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_NEAR(s[i], std::sin(double{a[i]}), 0.65 * 0x1p-24) << a[i];
        EXPECT_NEAR(c[i], std::cos(double{a[i]}), 0.65 * 0x1p-24) << a[i];
    }
}

TEST(FloatTrig, ReductionThatIsSkippedChangesNothing) {
    const float inner[5] = {0.1f, -0.7f, 0x1.921fb6p-1f, -0x1.921fb6p-1f, 0.3f};
    for (const auto& kernel : kernels<float>) {
        float alone[5], beside[8];
        kernel.run(5, inner, alone);
        for (int lane = 0; lane < 4; ++lane) {
            float a[8] = {3, 3, 3, 3, 3, 3, 3, 3};
            a[lane] = inner[lane];
            kernel.run(8, a, beside);
            EXPECT_EQ(beside[lane], alone[lane])
                << kernel.function << ' ' << inner[lane];
        }
    }
}

// ---- Scalar code -------------------------------------------------------------------

template <class T> struct ScalarEntry {
    void (*run)(int i, const T* a, T* y);
    const char* name;
    double (*scalar)(double);
};

template <auto entry, class T> void one(int i, const T* a, T* y) {
    entry(i, a, y, nullptr);
}
template <auto entry, bool second, class T> void halfOf(int i, const T* a, T* y) {
    T other[3];
    entry(i, a, second ? other : y, second ? y : other, nullptr);
}

/// With element 2 infinite: names and indices; with huge ones: values, and the same
/// ones whatever the caller's control words.
template <class T> void expectScalarCode(const ScalarEntry<T>& entry) {
    SCOPED_TRACE(entry.name);
    constexpr T infinity = std::numeric_limits<T>::infinity();
    T a[3] = {1, 2, infinity}, y[3] = {7, 7, 7};
    Reports reports;
    entry.run(2, a, y);
    ASSERT_EQ(reports.seen.size(), 1u);
    EXPECT_STREQ(reports.seen[0].funcName, entry.name);
    EXPECT_EQ(reports.seen[0].index, 2);
    EXPECT_EQ(reports.seen[0].argument1, infinity);
    EXPECT_TRUE(std::isnan(reports.seen[0].result2));
    EXPECT_TRUE(y[0] == 7 && y[1] == 7 && std::isnan(y[2]));

    for (const T x : {T{0.1f}, T{1e6f}, -T{1e30f}, std::numeric_limits<T>::max()}) {
        a[2] = x;
        const T expected = static_cast<T>(entry.scalar(x));
        for (const Fpu& setting : fpuSettings()) {
            EXPECT_TRUE(leavesFpuAlone(setting, [&] { entry.run(2, a, y); }));
            EXPECT_EQ(bitsOf(y[2]), bitsOf(expected)) << x;
        }
    }
}

#define ENTRIES(T, p, accuracy)                                                        \
    {one<_qor##p##Sin_SC_##accuracy, T>, #p "Sin_" #accuracy, _dSin},                  \
        {one<_qor##p##Cos_SC_##accuracy, T>, #p "Cos_" #accuracy, _dCos},              \
        {one<_qor##p##Tan_SC_##accuracy, T>, #p "Tan_" #accuracy, _dTan},              \
        {halfOf<_qor##p##SinCos_SC_##accuracy, false, T>, #p "SinCos_" #accuracy,      \
         _dSin},                                                                       \
    {                                                                                  \
        halfOf<_qor##p##SinCos_SC_##accuracy, true, T>, #p "SinCos_" #accuracy, _dCos  \
    }

TEST(ScalarCode, NamesReportsAndValues) {
    const ScalarEntry<double> doubles[] = {
        ENTRIES(double, d, HA), ENTRIES(double, d, LA), ENTRIES(double, d, A11)};
    const ScalarEntry<float> singles[] = {ENTRIES(float, s, HA), ENTRIES(float, s, LA),
                                          ENTRIES(float, s, A11)};
    for (const auto& entry : doubles) expectScalarCode(entry);
    for (const auto& entry : singles) expectScalarCode(entry);
}
#undef ENTRIES

// ---- One argument ------------------------------------------------------------------

TEST(ScalarFunctions, ErrorsOnBothSidesOfTheirLimits) {
    // The double nearest to a multiple of pi/2, limits, and arguments at table angles.
    std::vector<double> arguments = {6381956970095103 * 0x1p797};
    for (const double limit : {0x1p-252, 12800.0, 0x1p17, 0x1p23, 0x1p30, 0x1p1023})
        arguments.insert(arguments.end(), {std::nextafter(limit, 0), limit});
    for (int j = 2; j < 128; ++j) arguments.push_back(j * (std::numbers::pi / 64));
    for (const Range& range : {Range{0x1p-260, 1e-3, Sign::both},
                               {1e-3, 0x1p17, Sign::both},
                               {0x1p17, 0x1p31, Sign::both},
                               {0x1p31, 1.7e308, Sign::both}})
        for (const double x : draw<double>(range, 5000, 9)) arguments.push_back(x);

    const auto errorOf = [&](const char* function, double (*scalar)(double)) {
        const auto run = [=](int n, const double* a, double* y) {
            std::transform(a, a + n, y, scalar);
        };
        return largestError(run, function, arguments);
    };
    EXPECT_LE(errorOf("Sin", _dSin), 0.53);
    EXPECT_LE(errorOf("Cos", _dCos), 0.53);
    EXPECT_LE(errorOf("Tan", _dTan), 0.6);
}

TEST(ScalarFunctions, SpecialArguments) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    double y, z;
    for (const double x : {0x1p-300, -0x1p-300, 5e-324}) {
        EXPECT_TRUE(_dSin(x) == x && _dTan(x) == x && _dCos(x) == 1);
        EXPECT_EQ(flagsRaised([&] { y = _dSin(x); }) & inexactFlag, inexactFlag);
        EXPECT_EQ(flagsRaised([&] { y = _dCos(x); }) & inexactFlag, inexactFlag);
    }
    EXPECT_TRUE(std::signbit(_dSin(-0.0)) && std::signbit(_dTan(-0.0)));
    EXPECT_EQ(flagsRaised([&] { _dSinCos(-0.0, &y, &z); }), 0u);
    EXPECT_TRUE(y == 0 && std::signbit(y) && z == 1);

    for (double (*f)(double) : {_dSin, _dCos, _dTan, sineOf, cosineOf}) {
        const unsigned flags = flagsRaised([&] { y = f(-infinity); });
        EXPECT_TRUE(std::isnan(y) && (flags & invalidFlag));
        EXPECT_TRUE(std::isnan(f(std::nan(""))));
        EXPECT_EQ(flagsRaised([&] { y = f(std::nan("")); }), 0u);
    }
    for (const double x : {1e-100, 0.7, -3.0, 1e5, 1e22, -1e300})
        EXPECT_TRUE(sineOf(x) == _dSin(x) && cosineOf(x) == _dCos(x)) << x;
}

TEST(ScalarFunctions, SameBitsUnderAllControlWords) {
    for (double (*f)(double) : {_dSin, _dCos, _dTan, sineOf, cosineOf})
        for (const double x : {1e-100, 0.7, -1.57, 3e4, 1e7, 1e9, -1e300}) {
            const double expected = f(x);
            for (const Fpu& setting : fpuSettings()) {
                double y;
                EXPECT_TRUE(leavesFpuAlone(setting, [&] { y = f(x); }));
                EXPECT_EQ(bitsOf(y), bitsOf(expected)) << x;
            }
        }
}

// ---- State of the x87 unit ---------------------------------------------------------

/// Whether a flag that was raised before the call is gone after it.
template <class Call> bool losesFlags(Call&& call) {
    return !(
        flagsRaised([&] {
            asm volatile("fld1\n\tfldz\n\tfdivrp\n\tfstp %%st(0)" ::: "st", "st(1)");
            call();
        }) &
        divideByZeroFlag);
}

TEST(DoubleTrig, FarGroupsReinitialiseTheUnitInSinAndCosAlone) {
    double close[5] = {1, 2, 3, 4, 5}, far[5] = {1, 2, 3, 4, 1e6}, y[5], z[5];
    for (const auto kernel : {_qordSin_HA, _qordCos_HA}) {
        EXPECT_FALSE(losesFlags([&] { kernel(5, close, y); }));
        EXPECT_TRUE(losesFlags([&] { kernel(5, far, y); }));
        // A caller's exception masks survive it: here denormals are not masked.
        EXPECT_TRUE(
            leavesFpuAlone({0x037D, defaultFpu.mxcsr}, [&] { kernel(5, far, y); }));
    }
    EXPECT_FALSE(losesFlags([&] { _qordTan_HA(5, far, y); }));
    EXPECT_FALSE(losesFlags([&] { _qordSinCos_HA(5, far, y, z); }));
    EXPECT_FALSE(losesFlags([&] { _dSin(far[4]); }));
}

} // namespace
