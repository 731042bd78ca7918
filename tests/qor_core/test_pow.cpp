// Pow and Powx in all precisions and accuracies.
#include <catalogue.hpp>
#include <support/compare.hpp>
#include <support/fpu.hpp>
#include <support/kernels.hpp>
#include <support/oracle.hpp>
#include <support/platform.hpp>
#include <support/reports.hpp>

#include <cstring>

using namespace qorkes;
using namespace qorkes::test;
using catalogue::Form;
using catalogue::Kernel;

namespace {

/// A kernel of Pow or Powx as a function of two numbers.
template <class T> struct Subject {
    const Kernel<T>& kernel;
    Form form;

    bool isPowx() const { return form == Form::arrayAndScalar; }
    bool isHigh() const { return std::strstr(kernel.reportsAs, "_HA"); }
    void operator()(int n, const T* x, const T* y, T* result) const {
        call<T>(form, kernel.entry, n, x, y, result, nullptr);
    }
    T operator()(T x, T y) const {
        T result;
        (*this)(1, &x, &y, &result);
        return result;
    }
};

template <class T, class Check> void forEachKernel(Check&& check) {
    for (const char* name : {"Pow", "Powx"}) {
        const catalogue::Function& function = *catalogue::find(name);
        for (const Kernel<T>& kernel : kernelsOf<T>(function)) {
            SCOPED_TRACE(kernel.symbol);
            check(Subject<T>{kernel, function.form});
        }
    }
}

template <class T> class Powers : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(Powers, Precisions);

template <class T> struct Case {
    T x, y, result;
    int status = QOR_STATUS_OK;
};

/// Each case as the second of three elements, of which the others report nothing.
template <class T> void expectCases(const std::vector<Case<T>>& cases) {
    forEachKernel<T>([&](const Subject<T>& pow) {
        for (const Case<T>& c : cases) {
            SCOPED_TRACE(testing::Message() << c.x << " ^ " << c.y);
            const T x[3] = {2, c.x, 3}, y[3] = {c.y, c.y, c.y};
            T result[3] = {};
            Reports reports;
            pow(3, x, y, result);
            EXPECT_TRUE(sameBits(&c.result, result + 1, 1));
            EXPECT_EQ(_qorGetErrStatus(), c.status);
            ASSERT_EQ(reports.seen.size(), c.status ? 1u : 0u);
            if (c.status == QOR_STATUS_OK) continue;
            const QorErrorRecord& report = reports.seen[0];
            const double expected[3] = {c.x, pow.isPowx() ? c.x : c.y, c.result};
            EXPECT_TRUE(sameBits(expected, &report.argument1, 3));
            EXPECT_EQ(report.index, 1);
            EXPECT_STREQ(report.funcName, pow.kernel.reportsAs);
        }
    });
}

TYPED_TEST(Powers, SpecialCases) {
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    constexpr T inf = Limits::infinity(), nan = Limits::quiet_NaN(), third = T{1} / 3;
    constexpr T least = Limits::denorm_min();
    // clang-format off
    expectCases<T>({
        // The zeroth power, and what is 1 to any power.
        {nan, 0, 1}, {0, 0, 1}, {-inf, -0.0, 1}, {-3, -0.0, 1}, {1, nan, 1},
        {1, -inf, 1}, {-1, inf, 1}, {-1, -inf, 1},
        // NaNs, which come out with their sign.
        {nan, 2, nan}, {-nan, nan, -nan}, {2, -nan, -nan}, {-1, nan, nan},
        {0, nan, nan},
        // Infinite exponents.
        {0, -inf, inf, 1}, {-0.0, -inf, inf, 1}, {2, -inf, 0}, {-2, -inf, 0},
        {inf, -inf, 0}, {2, inf, inf}, {-inf, inf, inf}, {0.5, -inf, inf},
        {-0.5, -inf, inf}, {0.5, inf, 0}, {-0.0, inf, 0},
        // Infinite bases.
        {-inf, 3, -inf}, {-inf, 2, inf}, {-inf, 0.5, inf}, {-inf, -3, -0.0},
        {-inf, -2, 0}, {-inf, -0.5, 0}, {inf, -2, 0}, {inf, third, inf},
        // Negative bases.
        {-8, third, -nan, 1}, {-2, -0.5, -nan, 1}, {-least, 1.5, -nan, 1},
        {-2, 2, 4}, {-1, 4, 1}, {-2, 3, -8}, {-1, -3, -1}, {-0.5, -3, -8},
        // Zeros.
        {-0.0, 3, -0.0}, {-0.0, 2, 0}, {-0.0, 0.5, 0}, {0, 3, 0},
        {-0.0, -3, -inf, 1}, {-0.0, -2, inf, 1}, {-0.0, -0.5, inf, 1},
        {0, -3, inf, 1}, {4, 0.5, 2},
    });
    // clang-format on
}

TYPED_TEST(Powers, RangeOfResults) {
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    constexpr T inf = Limits::infinity(), least = Limits::denorm_min();
    constexpr int end = Limits::max_exponent, first = Limits::min_exponent - 1;
    constexpr int denormal = first - Limits::digits + 1;
    const auto exp2 = [](int k) { return std::ldexp(T{1}, k); };
    // clang-format off
    expectCases<T>({
        // Too large and too small, unreported.
        {2, end, inf}, {-2, end + 1, -inf}, {-2, end, inf}, {least, -1, inf},
        {2, denormal - 1, 0}, {-2, 3001, -inf}, {-2, -3001, -0.0}, {-2, -3000, 0},
        {3, Limits::max(), inf}, {3, -Limits::max(), 0}, {0.25, Limits::max(), 0},
        {1, Limits::max(), 1}, {-1, Limits::max(), 1}, {3, least, 1},
        {inf, least, inf},
        // The last powers of two on both sides.
        {2, end - 1, exp2(end - 1)}, {-0.25, (1 - end) / 2, -exp2(end - 2)},
        {2, first, exp2(first)}, {4, first / 2, exp2(first)},
        {2, first - 1, exp2(first - 1)}, {2, denormal + 1, 2 * least},
        {2, denormal, least}, {0.5, -denormal, least},
        // Denormal bases.
        {least, 1, least}, {-least, 1, -least},
        {-exp2(first - 2), -0.5, -Limits::quiet_NaN(), 1},
        {exp2(first - 2), -0.5, exp2((2 - first) / 2)},
    });
    // clang-format on
}

/// (-1)^y tells what y counts as.
TYPED_TEST(Powers, ParityOfExponents) {
    using T = TypeParam;
    constexpr T unit = T{1} / std::numeric_limits<T>::epsilon(); // 2^52, 2^23
    const T nan = -std::numeric_limits<T>::quiet_NaN();
    // clang-format off
    struct {
        T y, result;
    } const rows[] = {
        {1, -1}, {2, 1}, {3, -1}, {65537, -1}, {65538, 1}, {1.5, nan}, {0.75, nan},
        {1 - 1 / unit, nan}, {65536.5, nan}, {unit / 2, 1}, {unit / 2 + 1, -1},
        {unit / 2 + T{0.5}, nan}, {unit - 1, -1}, {unit - T{0.5}, nan}, {unit, 1},
        {2 * unit, 1}, {2 * unit + 2, 1}, {4 * unit + 4, 1}, {T{1e30f}, 1},
    };
    // clang-format on
    forEachKernel<T>([&](const Subject<T>& pow) {
        for (const auto& row : rows)
            for (const T y : {row.y, -row.y}) {
                const T result = pow(-1, y);
                EXPECT_TRUE(sameBits(&row.result, &result, 1)) << y;
            }
        // The last odd numbers count as even, but where a float is taken as a double.
        const bool isWidened = std::is_same_v<T, float> && pow.isHigh();
        EXPECT_EQ(pow(-1, unit + 1), isWidened ? -1 : 1);
    });
}

/// Errors over the whole range of results, and where they begin to be denormal. A
/// denormal result that is rounded twice is off by up to 0.75 ulp.
TYPED_TEST(Powers, ErrorsOverTheRange) {
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    constexpr bool isDouble = std::is_same_v<T, double>;
    constexpr int first = Limits::min_exponent - 1, end = Limits::max_exponent;
    constexpr int n = 1500;
    constexpr double highLimit = isDouble ? 0.52 : 0.501;
    struct {
        double smallest, largest; // of log2 x^y
        double exponent, limit;   // largest log2 |y|; of errors where not HA
    } const regions[] = {
        {-20, 20, 7, isDouble ? 0.55 : 0.65},
        {first, end, 7, isDouble ? 1.4 : 0.65},
        {first, end, 20, isDouble ? 1.75 : 1.4},
        {first - Limits::digits - 1.0, first, 7, isDouble ? 1.4 : 0.65},
        {first - 1e-4, first + 1e-4, 7, isDouble ? 1.4 : 0.65}};
    Oracle oracle("Pow");
    Random random(1);
    const auto between = [&](double smallest, double largest) {
        return smallest + random() * 0x1p-32 * (largest - smallest);
    };
    forEachKernel<T>([&](const Subject<T>& pow) {
        for (const auto& region : regions) {
            std::vector<T> x(n), y(n), result(n);
            for (std::size_t i = 0; i < n; ++i) {
                const double exponent =
                    std::exp2(between(1, region.exponent)) * (random() % 2 ? 1 : -1);
                y[i] = pow.isPowx() && i > 0 ? y[0] : static_cast<T>(exponent);
                x[i] = static_cast<T>(
                    std::exp2(between(region.smallest, region.largest) / y[i]));
            }
            pow(n, x.data(), y.data(), result.data());
            for (std::size_t i = 0; i < n; ++i)
                ASSERT_LE(oracle.ulps(result[i], x[i], y[i]),
                          pow.isHigh() ? highLimit : region.limit)
                    << x[i] << " ^ " << y[i] << " = " << result[i];
        }
    });
}

/// Ordinary, special and extreme elements in any order: each gets what it gets alone.
TYPED_TEST(Powers, ElementsDoNotTouchEachOther) {
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    constexpr T tiny = Limits::denorm_min(), max = Limits::max();
    constexpr T infinity = Limits::infinity(), nan = Limits::quiet_NaN();
    const T special[] = {0, -0.0, -2, 1e5, tiny, max, infinity, nan};
    Random random(2);
    const auto number = [&]() -> T {
        if (random() % 3 == 0) return special[random() % std::size(special)];
        return static_cast<T>(std::exp2(random() * 0x1p-28 - 8));
    };
    constexpr int n = 1001;
    std::vector<T> x(n), y(n), together(n);
    for (T& value : x) value = number();
    for (T& value : y) value = number();
    forEachKernel<T>([&](const Subject<T>& pow) {
        pow(n, x.data(), y.data(), together.data());
        for (std::size_t i = 0; i < n; ++i) {
            const T alone = pow(x[i], y[pow.isPowx() ? 0 : i]);
            ASSERT_TRUE(sameBits(&alone, &together[i], 1)) << x[i] << " ^ " << y[i];
        }
    });
}

/// By its bits, since a double passed by value may become quiet on its way.
TEST(Powx, SignalingExponentBecomesQuiet) {
    const auto powx50 =
        reinterpret_cast<void (*)(int, const double*, PassedDouble, double*)>(
            reinterpret_cast<void*>(_qordPowx_50));
    constexpr uint64_t signaling = 0xFFF0000000012345;
    const double a[2] = {2, 1};
    const auto passed = std::bit_cast<PassedDouble>(signaling);
    double y[2] = {};
    EXPECT_TRUE(flagsRaised([&] { powx50(0, a, passed, y); }) & invalidFlag);
    powx50(2, a, passed, y);
    EXPECT_EQ(bitsOf(y[0]), signaling | 0x0008000000000000);
    EXPECT_EQ(y[1], 1);
}

} // namespace
