// The rows for signal primitives. Real forward transforms against FFTW with measured
// plans, made beforehand on both sides; convolutions with the plans made inside the
// call; copies and clears against the C library.
#include "arrays.hpp"
#include "driver.hpp"

#include <qorkes/zubs.h>

#include <fftw3.h>

#include <cstring>
#include <memory>
#include <stdexcept>

namespace qorkes::bench {
namespace {

/// Keeps FFTW to its scalar code. Part of its interface, though not of its manual.
constexpr unsigned scalarOnly = 1u << 17;

// Both libraries, each precision under one name.
template <class T> struct Both;
template <> struct Both<double> {
    static constexpr auto name = "double";
    static constexpr auto initAlloc = zubsFFTInitAlloc_R_64f;
    static constexpr auto release = zubsFFTFree_R_64f;
    static constexpr auto bufSize = zubsFFTGetBufSize_R_64f;
    static constexpr auto forward = zubsFFTFwd_RToPerm_64f;
    static constexpr auto convolve = zubsConv_64f;
    static constexpr auto copy = zubsCopy_64f;
    static constexpr auto zero = zubsZero_64f;
    using Complex = fftw_complex;
    using Plan = fftw_plan;
    static constexpr auto planForward = fftw_plan_dft_r2c_1d;
    static constexpr auto planInverse = fftw_plan_dft_c2r_1d;
    static constexpr auto execute = fftw_execute;
    static constexpr auto destroy = fftw_destroy_plan;
};
template <> struct Both<float> {
    static constexpr auto name = "float";
    static constexpr auto initAlloc = zubsFFTInitAlloc_R_32f;
    static constexpr auto release = zubsFFTFree_R_32f;
    static constexpr auto bufSize = zubsFFTGetBufSize_R_32f;
    static constexpr auto forward = zubsFFTFwd_RToPerm_32f;
    static constexpr auto convolve = zubsConv_32f;
    static constexpr auto copy = zubsCopy_32f;
    static constexpr auto zero = zubsZero_32f;
    using Complex = fftwf_complex;
    using Plan = fftwf_plan;
    static constexpr auto planForward = fftwf_plan_dft_r2c_1d;
    static constexpr auto planInverse = fftwf_plan_dft_c2r_1d;
    static constexpr auto execute = fftwf_execute;
    static constexpr auto destroy = fftwf_destroy_plan;
};

template <class T> auto* complexOf(T* x) {
    return reinterpret_cast<typename Both<T>::Complex*>(x);
}

template <class T> std::function<void()> peerTransform(int n, unsigned flags) {
    using B = Both<T>;
    const auto x = randomArray<T>(n), y = randomArray<T>(n);
    auto* const plan = B::planForward(n, x.get(), complexOf(y.get()),
                                      FFTW_MEASURE | FFTW_PRESERVE_INPUT | flags);
    const std::shared_ptr<std::remove_pointer_t<typename B::Plan>> owner(plan,
                                                                         B::destroy);
    std::fill_n(x.get(), n, T(0.5));                   // measuring has written over it
    return [owner, x, y] { B::execute(owner.get()); }; // the plan works on x and y
}

template <class T> Contest transforms(int order) {
    using B = Both<T>;
    const int n = 1 << order;
    FftCtx* plan;
    int bytes;
    if (B::initAlloc(&plan, order, ZubFftNoDiv, 0) != ZubStatusOk)
        throw std::runtime_error("a plan could not be made");
    B::bufSize(plan, &bytes);
    const std::shared_ptr<FftCtx> owner(plan, B::release);
    const std::shared_ptr<void> buffer(zubsMalloc_8u(bytes + 1), zubsFree);
    const auto x = randomArray<T>(n), y = randomArray<T>(n);
    return {[=] {
                B::forward(x.get(), y.get(), owner.get(),
                           static_cast<unsigned char*>(buffer.get()));
            },
            peerTransform<T>(n, scalarOnly), peerTransform<T>(n, 0)};
}

/// What a program does that has FFTW only.
template <class T>
void convolveByPeer(const T* a, const T* b, int len, T* dst, unsigned flags) {
    using B = Both<T>;
    int n = 1;
    while (n < 2 * len - 1) n *= 2;
    const std::unique_ptr<T, decltype(&fftw_free)> memory(
        static_cast<T*>(fftw_malloc(2 * sizeof(T) * (size_t(n) + 2))), fftw_free);
    T *const x = memory.get(), *const y = x + n + 2;
    const auto run = [](auto plan) {
        B::execute(plan);
        B::destroy(plan);
    };
    for (const auto& [from, to] : {std::pair{a, x}, std::pair{b, y}}) {
        const auto plan = B::planForward(n, to, complexOf(to), FFTW_ESTIMATE | flags);
        std::memcpy(to, from, sizeof(T) * size_t(len));
        std::fill(to + len, to + n, T(0));
        run(plan);
    }
    for (int k = 0; k < n + 2; k += 2) {
        const T re = x[k] * y[k] - x[k + 1] * y[k + 1];
        y[k + 1] = (x[k] * y[k + 1] + x[k + 1] * y[k]) / T(n);
        y[k] = re / T(n);
    }
    run(B::planInverse(n, complexOf(y), y, FFTW_ESTIMATE | flags));
    std::memcpy(dst, y, sizeof(T) * (2 * size_t(len) - 1));
}

template <class T> Contest convolutions(int len) {
    const auto a = randomArray<T>(len), b = randomArray<T>(len),
               dst = randomArray<T>(2 * len);
    const auto peer = [=](unsigned flags) {
        return [=] { convolveByPeer(a.get(), b.get(), len, dst.get(), flags); };
    };
    return {[=] { Both<T>::convolve(a.get(), len, b.get(), len, dst.get()); },
            peer(scalarOnly), peer(0)};
}

template <class T> Contest copies(int n) {
    const auto x = randomArray<T>(n), y = randomArray<T>(n);
    const auto peer = [=] { std::memcpy(y.get(), x.get(), sizeof(T) * size_t(n)); };
    return {[=] { Both<T>::copy(x.get(), y.get(), n); }, peer, peer};
}

template <class T> Contest clears(int n) {
    const auto x = randomArray<T>(n);
    const auto peer = [=] { std::memset(x.get(), 0, sizeof(T) * size_t(n)); };
    return {[=] { Both<T>::zero(x.get(), n); }, peer, peer};
}

template <class T> void addRows(std::vector<SizedRow>& rows) {
    const std::string name = Both<T>::name;
    const auto bytes = [](int n) { return std::to_string(n) + " elements"; };
    for (int order = 6; order <= 20; ++order)
        rows.push_back({name + " real FFT", "2^" + std::to_string(order), "FFTW",
                        [=] { return transforms<T>(order); }});
    for (int n : {1000, 65536})
        rows.push_back({name + " convolution",
                        std::to_string(n) + " x " + std::to_string(n), "FFTW",
                        [=] { return convolutions<T>(n); }});
    // In every way of a copy and of a clear.
    for (int size : {4000, 12000, 64000, 64000000}) {
        const int n = size / int{sizeof(T)};
        rows.push_back(
            {name + " copy", bytes(n), "memcpy", [=] { return copies<T>(n); }});
        rows.push_back(
            {name + " clear", bytes(n), "memset", [=] { return clears<T>(n); }});
    }
}

} // namespace

std::vector<SizedRow> signalRows() {
    std::vector<SizedRow> rows;
    addRows<double>(rows);
    addRows<float>(rows);
    return rows;
}

} // namespace qorkes::bench
