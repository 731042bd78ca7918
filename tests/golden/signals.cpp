// Convolutions and correlations by their kernels, and transforms.
#include "digest.hpp"

#include <kes_kernel/operation.hpp>
#include <qorkes/zubs.h>
#include <support/platform.hpp>

#include <stdexcept>

namespace qorkes {
namespace {

/// Numbers from -1 to 1 that no library has a part in.
template <class T> std::vector<T> numbers(std::size_t n) {
    test::Random random(1);
    std::vector<T> x(n);
    for (T& value : x)
        value = static_cast<T>(static_cast<int32_t>(random()) >> 8) / (1 << 23);
    return x;
}

// ---- Convolutions and correlations
// ---------------------------------------------------

constexpr int operations = 100;

/// On the boundary to which float sums look.
template <class T> class Aligned {
public:
    explicit Aligned(const std::vector<T>& x)
        : copy_(static_cast<T*>(static_cast<void*>(
              zubsMalloc_8u(static_cast<int>(x.size() * sizeof(T)))))) {
        std::copy(x.begin(), x.end(), copy_);
    }
    ~Aligned() { zubsFree(copy_); }
    Aligned(const Aligned&) = delete;
    Aligned& operator=(const Aligned&) = delete;
    const T* data() const { return copy_; }

private:
    T* copy_;
};

/// Results of operations of all kinds; y is dense, so that no copy is made whose
/// address would count.
template <class T>
std::string resultsOf(const test::Kernel<T>& kernel, int rank, int longest) {
    std::minstd_rand random(1);
    std::vector<T> results;
    for (int i = 0; i < operations; ++i) {
        test::Operation o = test::chooseOperation(rank, longest, random);
        o.job = kernel.job;
        for (int d = 0; d < rank; ++d) {
            o.start[d] = o.firstPlace(d);
            o.y.stride[d] = d == 0 ? 1 : o.y.stride[d - 1] * o.y.shape[d - 1];
        }
        const std::vector<T> x = numbers<T>(o.x.room(rank));
        const Aligned<T> y(numbers<T>(o.y.room(rank)));
        std::vector<T> z(o.z.room(rank));
        if (kernel.run(o, x.data(), y.data(), z.data()) < 0)
            throw std::runtime_error("no result");
        results.insert(results.end(), z.begin(), z.end());
    }
    return numbersOf(results);
}

template <class T>
void addTasks(std::vector<GoldenRow>& rows, const test::Pair<T>& kernels, int rank,
              int longest) {
    for (const test::Kernel<T>& kernel : kernels)
        rows.push_back({kernel.name, resultsOf(kernel, rank, longest), false});
}

// ---- Transforms
// ----------------------------------------------------------------------

/// Lengths of every way that a transform goes.
constexpr int orders[] = {3, 5, 8, 11, 14, 17};

std::vector<double> transformOf(const std::vector<double>& x, FftCtx* plan) {
    std::vector<double> y(x.size());
    zubsFFTFwd_RToPerm_64f(x.data(), y.data(), plan, nullptr);
    return y;
}
std::vector<float> transformOf(const std::vector<float>& x, FftCtx* plan) {
    std::vector<float> y(x.size());
    zubsFFTFwd_RToPerm_32f(x.data(), y.data(), plan, nullptr);
    return y;
}

template <class T, auto initAlloc, auto release> std::string transforms() {
    std::vector<T> results;
    for (const int order : orders) {
        FftCtx* plan = nullptr;
        if (initAlloc(&plan, order, ZubFftNoDiv, 0) < 0)
            throw std::runtime_error("no plan");
        const std::vector<T> y = transformOf(numbers<T>(std::size_t{1} << order), plan);
        results.insert(results.end(), y.begin(), y.end());
        release(plan);
    }
    return numbersOf(results);
}

} // namespace

void addSignals(std::vector<GoldenRow>& rows) {
    addTasks(rows, test::ddDirect, 1, 100);
    addTasks(rows, test::sdDirect, 1, 100);
    addTasks(rows, test::ssDirect, 1, 100);
    addTasks(rows, test::ddAll, 3, 0);
    addTasks(rows, test::sdAll, 3, 0);
    addTasks(rows, test::ssAll, 3, 0);
    addTasks(rows, test::ddFft, 1, 500);
    addTasks(rows, test::sdFft, 1, 500);
    addTasks(rows, test::ssFft, 1, 500);
    rows.push_back({"transforms of doubles",
                    transforms<double, zubsFFTInitAlloc_R_64f, zubsFFTFree_R_64f>(),
                    false});
    rows.push_back({"transforms of floats",
                    transforms<float, zubsFFTInitAlloc_R_32f, zubsFFTFree_R_32f>(),
                    false});
}

} // namespace qorkes
