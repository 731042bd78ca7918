// The kernels of the tasks: sums in their stated order, places, strides, tests.
#include "operation.hpp"

#include <support/stack.hpp>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <functional>

using namespace qorkes::test;

namespace {

/// Data of an operation, on the page of memory that its strides reach.
template <class T> struct Data {
    std::vector<T> x, y, z;

    Data(const Operation& o, std::minstd_rand& random)
        : x(randomArray<T>(o.x.room(o.rank), random)),
          y(randomArray<T>(o.y.room(o.rank), random)), z(o.z.room(o.rank), untouched) {}

    static constexpr T untouched = T(77);
};

/// Calls expect(output, q) with every output, and looks whether all else is untouched.
template <class T, class Expect>
void lookAtOutputs(const Operation& o, std::vector<T> z, Expect expect) {
    const int low[7] = {};
    forEachIndex(0, o.rank, low, o.z.shape, [&](const int* q) {
        T& place = z[size_t(o.z.offset(o.rank, q))];
        expect(place, q);
        place = Data<T>::untouched;
    });
    EXPECT_EQ(z, std::vector<T>(z.size(), Data<T>::untouched)) << "written between";
}

/// A sum of products and its size.
struct Magnitudes {
    static long double step(long double sum, long double a, long double b) {
        return sum + std::fabs(a * b);
    }
    static long double kept(long double sum) { return sum; }
};

template <class Arithmetic, class T>
void expectStatedOrder(const Pair<T>& kernels, int rank, int rounds) {
    std::minstd_rand random(unsigned(rank) + 1);
    for (int round = 0; round < rounds; ++round) {
        const Operation o = chooseOperation(rank, 70, random);
        Data<T> data(o, random);
        const auto& kernel = kernels[o.job - 1];
        SCOPED_TRACE(testing::Message() << kernel.name << " " << rank << " " << round);
        ASSERT_EQ(kernel.run(o, data.x.data(), data.y.data(), data.z.data()), 0);
        lookAtOutputs(o, data.z, [&](T z, const int* q) {
            volatile double kept = static_cast<double>(
                output<Arithmetic>(o, data.x.data(), data.y.data(), q));
            EXPECT_EQ(z, static_cast<T>(kept));
        });
        if (testing::Test::HasFailure()) return;
    }
}

TEST(DirectKernels, SumInTheStatedOrder) {
    for (int rank = 1; rank <= KesTaskMaxRank; ++rank) {
        const int rounds = rank == 1 ? 2000 : 300;
        expectStatedOrder<Extended>(rank == 1 ? ddDirect : ddAll, rank, rounds);
        expectStatedOrder<Extended>(rank == 1 ? sdDirect : sdAll, rank, rounds);
        if (rank > 1) expectStatedOrder<Single>(ssAll, rank, rounds);
    }
}

/// Every output within `bound(terms, magnitude)` of the exact sum.
template <class T, class Bound>
void expectClose(const Pair<T>& kernels, int longest, int rounds, Bound bound) {
    std::minstd_rand random(7);
    for (int round = 0; round < rounds; ++round) {
        const Operation o = chooseOperation(1, longest, random);
        Data<T> data(o, random);
        const auto& kernel = kernels[o.job - 1];
        SCOPED_TRACE(testing::Message() << kernel.name << " " << round);
        ASSERT_EQ(kernel.run(o, data.x.data(), data.y.data(), data.z.data()), 0);
        const T *x = data.x.data(), *y = data.y.data();
        long double size = 0; // of the largest output
        lookAtOutputs(o, data.z, [&](T, const int* q) {
            size = std::max(size, output<Magnitudes>(o, x, y, q));
        });
        lookAtOutputs(o, data.z, [&](T z, const int* q) {
            EXPECT_NEAR(double(z), double(output<Extended>(o, x, y, q)),
                        double(bound(o, size)));
        });
        if (testing::Test::HasFailure()) return;
    }
}

// Wherever y lies in memory, and whatever is left over by registers of four.
TEST(DirectKernels, FloatLinesWithinTheirRounding) {
    expectClose(ssDirect, 150, 1500, [](const Operation& o, long double size) {
        return std::min(o.x.shape[0], o.y.shape[0]) * Single::epsilon * size;
    });
}

#ifndef __SANITIZE_ADDRESS__ // whose own frames need an aligned stack
void runKernel(const Kernel<float>* kernel, const Operation* o, const float* x,
               const float* y, float* z) {
    EXPECT_EQ(kernel->run(*o, x, y, z), KesStatusOk);
}

/// Arrays off the boundaries of a float, and a stack off that of a register.
void expectAnywhere(const Kernel<float>& kernel, const Operation& o) {
    std::minstd_rand random(3);
    const Data<float> data(o, random);
    const auto bytes = [](const std::vector<float>& array) { return 4 * array.size(); };
    std::vector<char> x(bytes(data.x) + 32), y(bytes(data.y) + 32),
        z(bytes(data.z) + 32);
    const auto at = [](auto* place) { return reinterpret_cast<float*>(place); };
    for (size_t offset = 0; offset < 32; ++offset) {
        const auto xplace = x.data() + 31 - offset, yplace = y.data() + offset,
                   zplace = z.data() + offset;
        std::memcpy(xplace, data.x.data(), bytes(data.x));
        std::memcpy(yplace, data.y.data(), bytes(data.y));
        callOffBoundary<const Kernel<float>*, const Operation*, const float*,
                        const float*, float*>(offset % 16 / 4 * 4, runKernel, &kernel,
                                              &o, at(xplace), at(yplace), at(zplace));
        std::vector<float> result(data.z.size());
        std::memcpy(result.data(), zplace, bytes(result));
        lookAtOutputs(o, result, [&](float r, const int* q) {
            EXPECT_NEAR(r, double(output<Extended>(o, data.x.data(), data.y.data(), q)),
                        40 * 0x1p-23);
        });
    }
}

TEST(DirectKernels, FloatsOffTheirAlignment) {
    expectAnywhere(ssDirect[1],
                   {2, 1, {{40}, {1}}, {{80}, {1}}, {{101}, {1}}, {-30}, {1}});
    expectAnywhere(
        ssAll[1],
        {2, 2, {{5, 4}, {1, 5}}, {{9, 9}, {1, 9}}, {{9, 9}, {1, 9}}, {}, {1, 1}});
}
#endif

// The root of the mean square of a transform's error grows with the square root of its
// order; 2 log2(n) epsilon bounds every element in terms of the largest possible sum.
template <class T> void expectFftClose(const Pair<T>& kernels, long double epsilon) {
    for (const auto& [longest, rounds] : {std::pair{60, 400}, {700, 40}, {3000, 4}})
        expectClose(
            kernels, longest, rounds, [=](const Operation& o, long double size) {
                const int n = o.x.shape[0] + o.y.shape[0];
                return 2 * std::log2(n + 1.0L) * epsilon * (size + std::sqrt(n));
            });
}
TEST(FftKernels, AgreeWithDirectSums) {
    expectFftClose(ddFft, 0x1p-52L);
    expectFftClose(sdFft, 0x1p-24L);
    expectFftClose(ssFft, 0x1p-23L);
}

// The tests in their order, each with what fails it. All later ones fail as well.
struct Fault {
    int status;
    std::function<void(Operation&)> make;
};

template <class T>
void expectTests(const Kernel<T>& kernel, int rank, const std::vector<Fault>& faults,
                 const std::vector<int>& nulls) {
    SCOPED_TRACE(kernel.name);
    std::minstd_rand random(1);
    Operation valid = {kernel.job, rank, {}, {}, {}, {}, {}};
    for (int d = 0; d < rank; ++d) {
        valid.x.shape[d] = 3, valid.y.shape[d] = 5, valid.z.shape[d] = 3;
        valid.start[d] = valid.lastPlace(d) - 4;
        valid.dec[d] = 2;
        const int stride = d == 0 ? 1 : 12;
        valid.x.stride[d] = valid.y.stride[d] = valid.z.stride[d] = stride;
    }
    Data<T> data(valid, random);
    const auto run = [&](const Operation& o, int null) {
        return kernel.run(o, null == KesStatusCcNullX ? nullptr : data.x.data(),
                          null == KesStatusCcNullY ? nullptr : data.y.data(),
                          null == KesStatusCcNullZ ? nullptr : data.z.data());
    };
    Operation all = valid;
    for (auto fault = faults.rbegin(); fault != faults.rend(); ++fault) {
        Operation alone = valid;
        fault->make(alone);
        EXPECT_EQ(run(alone, 0), fault->status) << fault->status << " alone";
        fault->make(all);
        EXPECT_EQ(run(all, 0), fault->status) << fault->status << " and later ones";
    }
    for (int null : nulls) EXPECT_EQ(run(rank == 1 ? valid : all, null), null);
    lookAtOutputs(valid, data.z, [](T z, const int*) { EXPECT_EQ(z, 77); });

    const int status = run(valid, 0);
    EXPECT_EQ(status, KesStatusOk);
    lookAtOutputs(valid, data.z, [](T z, const int*) { EXPECT_NE(z, 77); });
}

std::vector<Fault> faultsOf(int d) {
    return {
        {KesStatusCcBadXShape, [=](Operation& o) { o.x.shape[d] = 0; }},
        {KesStatusCcBadYShape, [=](Operation& o) { o.y.shape[d] = -1; }},
        {KesStatusCcBadZShape, [=](Operation& o) { o.z.shape[d] = 0; }},
        {KesStatusCcBadZStride, [=](Operation& o) { o.z.stride[d] = 0; }},
        {KesStatusCcBadStart, [=](Operation& o) { o.start[d] = o.lastPlace(d) + 1; }},
        {KesStatusCcBadStart, [=](Operation& o) { o.start[d] = o.firstPlace(d) - 1; }},
        {KesStatusCcBadDecimation, [=](Operation& o) { o.dec[d] = 0; }},
        {KesStatusCcBadDecimation, [=](Operation& o) { o.z.shape[d] = 4; }},
        {KesStatusCcBadDecimation, [=](Operation& o) { ++o.start[d]; }},
        {KesStatusCcBadDecimation, [=](Operation& o) { o.dec[d] = INT_MAX; }},
        {KesStatusCcBadDecimation, [=](Operation& o) { o.z.shape[d] = INT_MAX; }}};
}

template <class T>
void expectTestsOfAll(const Pair<T>& lines, const Pair<T>& ffts, const Pair<T>& grids) {
    std::vector<Fault> ofGrid = faultsOf(0);
    for (const Fault& fault : faultsOf(1)) ofGrid.push_back(fault);
    for (int job : {0, 1}) {
        for (const Kernel<T>& kernel : {lines[job], ffts[job]})
            expectTests(kernel, 1, faultsOf(0),
                        {KesStatusCcNullX, KesStatusCcNullY, KesStatusCcNullZ});
        expectTests(grids[job], 2, ofGrid,
                    {KesStatusCcNullZ, KesStatusCcNullY, KesStatusCcNullX});
    }
}
TEST(Kernels, TestsInTheirOrder) {
    expectTestsOfAll(ddDirect, ddFft, ddAll);
    expectTestsOfAll(sdDirect, sdFft, sdAll);
    expectTestsOfAll(ssDirect, ssFft, ssAll);
}

// In one dimension the tests go array by array.
TEST(Kernels, NullAndShapeInTurns) {
    double a[4] = {};
    const auto status = [&](const double* x, int nx, const double* y, int ny,
                            double* z) {
        return _kesConvDDDirect1D_dec(x, 1, y, 1, z, 0, nx, ny, -1, 0, 0);
    };
    EXPECT_EQ(status(nullptr, 0, nullptr, 0, nullptr), KesStatusCcNullX);
    EXPECT_EQ(status(a, 0, nullptr, 0, nullptr), KesStatusCcBadXShape);
    EXPECT_EQ(status(a, 1, nullptr, 0, nullptr), KesStatusCcNullY);
    EXPECT_EQ(status(a, 1, a, 0, nullptr), KesStatusCcBadYShape);
    EXPECT_EQ(status(a, 1, a, 1, nullptr), KesStatusCcNullZ);
}

// Strides are compared in dimension 1 and up only; what passes is dense altogether.
TEST(DirectKernels, StrideOfDimension0OfADenseArrayIsNotRead) {
    std::minstd_rand random(1);
    for (int job : {1, 2}) {
        Operation o = {job, 2,     {{2, 2}, {1, 2}}, {{4, 4}, {1, 4}}, {{5, 5}, {1, 5}},
                       {},  {1, 1}};
        for (int d : {0, 1}) o.start[d] = o.firstPlace(d);
        Data<double> dense(o, random), odd = dense;
        ddAll[job - 1].run(o, dense.x.data(), dense.y.data(), dense.z.data());
        o.y.stride[0] = 2, o.z.stride[0] = -3;
        if (job == KesTaskCorrelation) o.x.stride[0] = 0;
        ddAll[job - 1].run(o, odd.x.data(), odd.y.data(), odd.z.data());
        EXPECT_EQ(dense.z, odd.z);
    }
}

TEST(Kernels, WithoutDecimation) {
    float x[40], y[90], z[129], expected[129];
    std::minstd_rand random(1);
    for (float& v : x) v = float(random() % 100);
    for (float& v : y) v = float(random() % 100);
    _kesConvSSDirect1D_dec(x, 1, y, 1, expected, 1, 40, 90, 0, 129, 1);
    EXPECT_EQ(_kesConvSSDirect1D_nodec(x, 1, y, 1, z, 1, 40, 90, 0, 129), 0);
    EXPECT_EQ(std::memcmp(z, expected, sizeof z), 0);
    _kesCorrSSDirect1D_dec(x, 1, y, 1, expected, 1, 40, 90, -39, 129, 1);
    EXPECT_EQ(_kesCorrSSDirect1D_nodec(x, 1, y, 1, z, 1, 40, 90, -39, 129), 0);
    EXPECT_EQ(std::memcmp(z, expected, sizeof z), 0);

    for (auto* entry :
         {_kesConvSDDirect1D_nodec, _kesCorrSDDirect1D_nodec, _kesConvSDFft1D_nodec,
          _kesCorrSDFft1D_nodec, _kesConvSSFft1D_nodec, _kesCorrSSFft1D_nodec})
        EXPECT_EQ(entry(x, 1, y, 1, z, 1, 40, 90, 0, 129), KesStatusCcNotImplemented);
    for (auto* entry : {_kesConvDDDirect1D_nodec, _kesCorrDDDirect1D_nodec,
                        _kesConvDDFft1D_nodec, _kesCorrDDFft1D_nodec})
        EXPECT_EQ(entry(0, 0, 0, 0, 0, 0, 0, 0, 0, 0), KesStatusCcNotImplemented);
    const auto expectNone = [](auto... grids) {
        for (const int status : {grids(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)...})
            EXPECT_EQ(status, KesStatusCcNotImplemented);
    };
    expectNone(_kesConvDDDirectAll_nodec, _kesCorrDDDirectAll_nodec,
               _kesConvSDDirectAll_nodec, _kesCorrSDDirectAll_nodec,
               _kesConvSSDirectAll_nodec, _kesCorrSSDirectAll_nodec);
    EXPECT_EQ(std::memcmp(z, expected, sizeof z), 0);
}

} // namespace
