// What every kernel of the catalogue owes its caller, whatever function it computes.
#include <catalogue.hpp>
#include <support/compare.hpp>
#include <support/fpu.hpp>
#include <support/guard.hpp>
#include <support/kernels.hpp>
#include <support/oracle.hpp>
#include <support/reports.hpp>
#include <support/samples.hpp>
#include <support/stack.hpp>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <span>

using namespace qorkes;
using namespace qorkes::test;
using catalogue::Form;
using catalogue::Function;
using catalogue::Kernel;

namespace {

constexpr int largest = 1000;

/// Below, on and above all group sizes; a long array last.
std::vector<int> counts() {
    std::vector<int> all = {INT_MIN};
    for (int n = -3; n <= 17; ++n) all.push_back(n);
    all.push_back(largest);
    return all;
}

std::size_t sizeFor(int n) { return n > 0 ? static_cast<std::size_t>(n) : 0; }

template <class T> struct Arguments {
    std::vector<T> a, b;
    int count() const { return static_cast<int>(a.size()); }
};

/// What a call leaves: its results, and its reports in order.
template <class T> struct Outcome {
    std::vector<T> y, z;
    std::vector<QorErrorRecord> reports;
};

template <class T> struct Subject {
    const Function& function;
    const Kernel<T>& kernel;
    const Samples& samples;

    void operator()(int n, const T* a, const T* b, T* y, T* z) const {
        call(function.form, kernel.entry, n, a, b, y, z);
    }
    bool hasTwoResults() const { return function.form == Form::oneToTwo; }

    /// A scalar second argument is there for n of 0 too.
    Arguments<T> ordinary(int n) const {
        return {draw<T>(samples.a, n, 1), draw<T>(samples.b, std::max(n, 1), 2)};
    }

    /// Ordinary arguments, with every third one special, as are the first and the last.
    Arguments<T> mixed() const {
        using Limits = std::numeric_limits<T>;
        std::vector<Special> specials = samples.specials;
        for (const T a : {Limits::quiet_NaN(), Limits::infinity(), Limits::denorm_min(),
                          Limits::max(), Limits::min(), T{0}})
            specials.push_back({a, samples.b.smallest, 0});
        Arguments<T> arguments = ordinary(3 * static_cast<int>(specials.size()) + 1);
        for (std::size_t i = 0; i < arguments.a.size(); i += 3) {
            const Special& special = specials[i / 3 % specials.size()];
            arguments.a[i] = static_cast<T>(special.a);
            if (function.form == Form::twoToOne)
                arguments.b[i] = static_cast<T>(special.b);
        }
        return arguments;
    }

    Outcome<T> run(const Arguments<T>& arguments) const {
        return runUnder(arguments, [](auto&& run) { run(); });
    }

    /// `around` is handed the bare call.
    template <class Around>
    Outcome<T> runUnder(const Arguments<T>& arguments, Around&& around,
                        std::function<int(QorErrorRecord&)> then = {}) const {
        const int n = arguments.count();
        Outcome<T> outcome{std::vector<T>(sizeFor(n)), std::vector<T>(sizeFor(n)), {}};
        Reports reports;
        reports.then = then;
        around([&] {
            (*this)(n, arguments.a.data(), arguments.b.data(), outcome.y.data(),
                    outcome.z.data());
        });
        outcome.reports = std::move(reports.seen);
        return outcome;
    }
};

/// Float InvSqrt and the cheaper float Atan compute groups with a special element at
/// their caller's settings, the cheaper float Atan2 computes all so.
template <class T> bool followsCaller(const Subject<T>& kernel, bool hasSpecials) {
    const std::string worker = kernel.kernel.worker;
    return worker == "_qorsAtan2_21" ||
           (hasSpecials && (worker == "_qorsInvSqrt_HA" || worker == "_qorsAtan_21"));
}

template <class T, class Check> void forEachKernel(Check&& check) {
    for (const Function& function : catalogue::functions())
        for (const Kernel<T>& kernel : kernelsOf<T>(function)) {
            SCOPED_TRACE(kernel.symbol);
            check(Subject<T>{function, kernel, samplesOf(function.name)});
        }
}

template <class T>
testing::AssertionResult areSame(const Outcome<T>& expected, const Outcome<T>& actual) {
    const int n = static_cast<int>(expected.y.size());
    if (auto same = sameBits(expected.y.data(), actual.y.data(), n); !same) return same;
    if (auto same = sameBits(expected.z.data(), actual.z.data(), n); !same)
        return same << " (second result)";
    if (expected.reports.size() != actual.reports.size())
        return testing::AssertionFailure()
               << actual.reports.size() << " reports for " << expected.reports.size();
    for (std::size_t i = 0; i < expected.reports.size(); ++i) {
        const QorErrorRecord &e = expected.reports[i], &a = actual.reports[i];
        if (std::memcmp(&e, &a, offsetof(QorErrorRecord, funcName)) != 0)
            return testing::AssertionFailure()
                   << "report " << i << ": status " << a.status << " of element "
                   << a.index << ", expected " << e.status << " of " << e.index;
    }
    return testing::AssertionSuccess();
}

/// Wide enough for every accuracy: errors have limits elsewhere; here an element is
/// either right or another one's.
template <class T> bool isNear(const Kernel<T>& kernel, T expected, T actual) {
    constexpr double epsilon = std::numeric_limits<T>::epsilon();
    const double tolerance =
        kernel.accuracy == std::string("HA") ? 8 * epsilon : std::sqrt(epsilon);
    return std::fabs(static_cast<double>(actual) - expected) <=
           tolerance * std::fabs(expected);
}

template <class T> class Catalogue : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(Catalogue, Precisions);

TYPED_TEST(Catalogue, OrdinaryElementsGiveTheFunctionAndNoReport) {
    using T = TypeParam;
    forEachKernel<T>([](const Subject<T>& kernel) {
        const Arguments<T> arguments = kernel.ordinary(largest);
        const Outcome<T> outcome = kernel.run(arguments);
        EXPECT_TRUE(outcome.reports.empty());
        for (int output = 0; output <= kernel.hasTwoResults(); ++output) {
            Oracle oracle(kernel.function.name, output);
            const bool isScalar = kernel.function.form == Form::arrayAndScalar;
            for (std::size_t i = 0; i < largest; ++i) {
                const T a = arguments.a[i], b = arguments.b[isScalar ? 0 : i];
                const T result = output == 0 ? outcome.y[i] : outcome.z[i];
                ASSERT_TRUE(isNear(kernel.kernel, oracle.rounded(a, b), result))
                    << "f(" << a << ", " << b << ") = " << result;
            }
        }
    });
}

/// Every count, with the arrays against a page that must not be touched, below or
/// above, aligned or not: the results are those of the first elements of a long array,
/// near enough, and the same bits wherever the arrays lie.
TYPED_TEST(Catalogue, CountAndPlaceOfArrays) {
    using T = TypeParam;
    constexpr std::size_t room = largest * sizeof(T) + sizeof(T);
    GuardedMemory memoryA(room), memoryB(room), memoryY(room), memoryZ(room);
    forEachKernel<T>([&](const Subject<T>& kernel) {
        const Arguments<T> all = kernel.ordinary(largest);
        const Outcome<T> whole = kernel.run(all);
        for (const int n : counts()) {
            SCOPED_TRACE(n);
            const std::size_t size = sizeFor(n);
            Outcome<T> expected{std::vector<T>(size), std::vector<T>(size), {}};
            kernel(n, all.a.data(), all.b.data(), expected.y.data(), expected.z.data());
            for (std::size_t i = 0; i < size; ++i)
                ASSERT_TRUE(isNear(kernel.kernel, whole.y[i], expected.y[i]) &&
                            isNear(kernel.kernel, whole.z[i], expected.z[i]));

            for (const bool isAtEnd : {false, true})
                for (const std::size_t offset :
                     {std::size_t{0}, std::size_t{1}, sizeof(T) / 2, sizeof(T) - 1}) {
                    const auto place = [&](GuardedMemory& memory, const T* content) {
                        T* array = isAtEnd ? memory.atEnd<T>(size, offset)
                                           : memory.atStart<T>(offset);
                        if (content) std::memcpy(array, content, size * sizeof(T));
                        return array;
                    };
                    const T* const a = place(memoryA, all.a.data());
                    const T* const b = place(memoryB, all.b.data());
                    T* const y = place(memoryY, nullptr);
                    T* const z = place(memoryZ, nullptr);
                    // A scalar second argument is passed by value.
                    const bool hasScalar = kernel.function.form == Form::arrayAndScalar;
                    kernel(n, a, hasScalar ? all.b.data() : b, y, z);
                    const auto expectBytes = [&](const std::vector<T>& wanted,
                                                 const T* r) {
                        EXPECT_TRUE(std::ranges::equal(
                            std::as_bytes(std::span(r, size)),
                            std::as_bytes(std::span(wanted.data(), size))));
                    };
                    expectBytes(expected.y, y);
                    if (kernel.hasTwoResults()) expectBytes(expected.z, z);
                    expectBytes(all.a, a);
                    if (kernel.function.form == Form::twoToOne) expectBytes(all.b, b);
                }
        }
    });
}

TYPED_TEST(Catalogue, ResultsMayReplaceArguments) {
    using T = TypeParam;
    forEachKernel<T>([](const Subject<T>& kernel) {
        for (const Arguments<T>& arguments :
             {kernel.ordinary(17), kernel.ordinary(3), kernel.mixed()}) {
            const int n = arguments.count();
            const Outcome<T> expected = kernel.run(arguments);
            std::vector<T> other(arguments.a.size());

            Arguments<T> inA = arguments;
            kernel(n, inA.a.data(), inA.b.data(), inA.a.data(), other.data());
            EXPECT_TRUE(sameBits(expected.y.data(), inA.a.data(), n));

            if (kernel.function.form == Form::twoToOne) {
                Arguments<T> inB = arguments;
                kernel(n, inB.a.data(), inB.b.data(), inB.b.data(), nullptr);
                EXPECT_TRUE(sameBits(expected.y.data(), inB.b.data(), n));
            }
            if (kernel.hasTwoResults()) {
                Arguments<T> second = arguments;
                kernel(n, second.a.data(), nullptr, other.data(), second.a.data());
                EXPECT_TRUE(sameBits(expected.z.data(), second.a.data(), n));
            }
        }
    });
}

TYPED_TEST(Catalogue, CallersSettingsComeBackAndChangeNothing) {
    using T = TypeParam;
    forEachKernel<T>([](const Subject<T>& kernel) {
        const Arguments<T> none = kernel.ordinary(0), ordinary = kernel.ordinary(17),
                           mixed = kernel.mixed();
        for (const Arguments<T>* arguments : {&none, &ordinary, &mixed}) {
            const Outcome<T> expected = kernel.run(*arguments);
            for (const Fpu& setting : fpuSettings()) {
                const Outcome<T> outcome = kernel.runUnder(*arguments, [&](auto&& run) {
                    EXPECT_TRUE(leavesFpuAlone(setting, run));
                });
                if (followsCaller(kernel, arguments == &mixed)) continue;
                ASSERT_TRUE(areSame(expected, outcome))
                    << std::hex << setting.controlWord << ' ' << setting.mxcsr;
            }
        }
    });
}

/// A callback that leaves other control words and other SSE registers behind.
int disturb(QorErrorRecord&) {
    static const uint16_t controlWord = 0x0C7F;
    static const uint32_t mxcsr = 0xFF80, ones[4] = {~0u, ~0u, ~0u, ~0u};
    asm volatile("fldcw %0\n\tldmxcsr %1\n\t"
                 "movups %2, %%xmm0\n\tmovups %2, %%xmm1\n\t"
                 "movups %2, %%xmm2\n\tmovups %2, %%xmm3\n\t"
                 "movups %2, %%xmm4\n\tmovups %2, %%xmm5\n\t"
                 "movups %2, %%xmm6\n\tmovups %2, %%xmm7"
                 :
                 : "m"(controlWord), "m"(mxcsr), "m"(ones));
    return 0;
}

TYPED_TEST(Catalogue, CallbackCannotDisturbTheLoop) {
    using T = TypeParam;
    forEachKernel<T>([](const Subject<T>& kernel) {
        const Arguments<T> mixed = kernel.mixed();
        const Outcome<T> disturbed = kernel.runUnder(
            mixed, [](auto&& run) { EXPECT_TRUE(leavesFpuAlone(defaultFpu, run)); },
            disturb);
        EXPECT_TRUE(areSame(kernel.run(mixed), disturbed));
    });
}

/// A special element in each lane of groups and tail: it alone is reported, under the
/// name of the kernel that does the work, and its neighbours stay right.
TYPED_TEST(Catalogue, SpecialElementInEachLane) {
    using T = TypeParam;
    constexpr int n = 19;
    static constexpr Special quietNaN = {std::numeric_limits<double>::quiet_NaN(), 1,
                                         0};
    forEachKernel<T>([](const Subject<T>& kernel) {
        const Arguments<T> ordinary = kernel.ordinary(n);
        const Outcome<T> plain = kernel.run(ordinary);
        std::vector<Special> specials = kernel.samples.specials;
        specials.push_back(quietNaN);
        for (const Special& special : specials) {
            SCOPED_TRACE(special.a);
            Arguments<T> alone = kernel.ordinary(1);
            alone.a[0] = static_cast<T>(special.a);
            if (kernel.function.form == Form::twoToOne)
                alone.b[0] = static_cast<T>(special.b);
            const Outcome<T> expected = kernel.run(alone);

            for (std::size_t lane = 0; lane < n; ++lane) {
                SCOPED_TRACE(lane);
                Arguments<T> arguments = ordinary;
                arguments.a[lane] = alone.a[0];
                if (kernel.function.form == Form::twoToOne)
                    arguments.b[lane] = alone.b[0];
                const Outcome<T> outcome = kernel.run(arguments);

                for (std::size_t i = 0; i < n; ++i)
                    ASSERT_TRUE(i == lane ||
                                (isNear(kernel.kernel, plain.y[i], outcome.y[i]) &&
                                 isNear(kernel.kernel, plain.z[i], outcome.z[i])))
                        << "beside it, element " << i;
                EXPECT_TRUE(sameBits(expected.y.data(), &outcome.y[lane], 1));
                EXPECT_TRUE(sameBits(expected.z.data(), &outcome.z[lane], 1));
                EXPECT_TRUE(special.status || std::isnan(outcome.y[lane]));

                ASSERT_EQ(outcome.reports.size(), special.status ? 1u : 0u);
                if (special.status == 0) continue;
                const QorErrorRecord& report = outcome.reports[0];
                EXPECT_EQ(report.status, special.status);
                EXPECT_EQ(report.index, static_cast<int>(lane));
                EXPECT_STREQ(report.funcName, kernel.kernel.reportsAs);
                EXPECT_EQ(report.argument1, arguments.a[lane]);
                const bool hasB = kernel.function.form == Form::twoToOne;
                EXPECT_EQ(report.argument2, (hasB ? arguments.b : arguments.a)[lane]);
                const double y = outcome.y[lane];
                const double z = kernel.hasTwoResults() ? outcome.z[lane] : y;
                EXPECT_TRUE(sameBits(&y, &report.result1, 1));
                EXPECT_TRUE(sameBits(&z, &report.result2, 1));
            }
        }
    });
}

TYPED_TEST(Catalogue, CallbacksResultsReachTheArrays) {
    using T = TypeParam;
    const auto replace = [](QorErrorRecord& record) {
        record.result1 = 42;
        record.result2 = 43;
        return 0;
    };
    forEachKernel<T>([&](const Subject<T>& kernel) {
        const Arguments<T> mixed = kernel.mixed();
        Outcome<T> expected = kernel.run(mixed);
        for (const QorErrorRecord& report : expected.reports) {
            const auto i = static_cast<std::size_t>(report.index);
            expected.y[i] = 42;
            if (kernel.hasTwoResults()) expected.z[i] = 43;
        }
        const Outcome<T> outcome = kernel.runUnder(
            mixed, [](auto&& run) { run(); }, replace);
        EXPECT_TRUE(areSame(expected, outcome));
    });
}

TYPED_TEST(Catalogue, ForwardingEntriesGiveTheBitsOfTheKernelTheyName) {
    using T = TypeParam;
    forEachKernel<T>([](const Subject<T>& kernel) {
        const Kernel<T>* worker = nullptr;
        for (const Kernel<T>& k : kernelsOf<T>(kernel.function))
            if (std::strcmp(k.symbol, kernel.kernel.worker) == 0) worker = &k;
        ASSERT_NE(worker, nullptr) << kernel.kernel.worker;
        const Subject<T> other{kernel.function, *worker, kernel.samples};
        for (const Arguments<T>& arguments : {kernel.ordinary(17), kernel.mixed()})
            EXPECT_TRUE(areSame(other.run(arguments), kernel.run(arguments)));
    });
}

#ifndef __SANITIZE_ADDRESS__ // whose own frames need an aligned stack
template <class T>
void runInto(const Subject<T>* kernel, const Arguments<T>* arguments,
             Outcome<T>* outcome) {
    *outcome = kernel->run(*arguments);
}

/// As old callers do.
TYPED_TEST(Catalogue, StackNeedsNoAlignment) {
    using T = TypeParam;
    forEachKernel<T>([](const Subject<T>& kernel) {
        const Arguments<T> mixed = kernel.mixed();
        const Outcome<T> expected = kernel.run(mixed);
        for (const uintptr_t offset : {4u, 8u, 12u}) {
            Outcome<T> outcome;
            callOffBoundary(offset, runInto<T>, &kernel, &mixed, &outcome);
            EXPECT_TRUE(areSame(expected, outcome));
        }
    });
}
#endif

} // namespace
