// The rows for vector kernels: arguments are drawn evenly from the interval named.
#include "driver.hpp"
#include "peers.hpp"

#include <support/kernels.hpp>

#include <memory>
#include <random>
#include <sstream>

namespace qorkes::bench {
namespace {

struct Interval {
    double low, high;
};

/// Of both arguments, where there are two. A function may have several rows; those that
/// the catalogue does not have are left out.
struct Arguments {
    const char* function;
    Interval a, b;
};

constexpr Arguments table[] = {
    {"Acos", {-1, 1}, {}},
    {"Acosh", {1, 100}, {}},
    {"Asin", {-1, 1}, {}},
    {"Asinh", {-100, 100}, {}},
    {"Atan", {-10, 10}, {}},
    {"Atan2", {-10, 10}, {-10, 10}},
    {"Atanh", {-1, 1}, {}},
    {"Cbrt", {-1000, 1000}, {}},
    {"Cos", {-10, 10}, {}},
    {"Cosh", {-10, 10}, {}},
    {"Div", {-1000, 1000}, {0.01, 1000}},
    {"Erf", {-3, 3}, {}},
    {"Erfc", {-3, 6}, {}},
    {"Exp", {-10, 10}, {}},
    {"Inv", {0.01, 1000}, {}},
    {"InvCbrt", {-1000, 1000}, {}},
    {"InvSqrt", {0.01, 1000}, {}},
    {"Ln", {0.01, 1000}, {}},
    {"Log10", {0.01, 1000}, {}},
    {"Pow", {0.25, 4}, {-10, 10}},
    {"Pow", {0.01, 1000}, {-5, 5}},
    {"Powx", {0.01, 1000}, {2.5, 2.5}},
    {"Sin", {-10, 10}, {}},
    {"SinCos", {-10, 10}, {}},
    {"Sinh", {-10, 10}, {}},
    {"Sqrt", {0.01, 1000}, {}},
    {"Tan", {-10, 10}, {}},
    {"Tanh", {-3, 3}, {}},
};

template <class T> std::vector<T> drawn(int n, Interval interval, unsigned seed) {
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> distribution(interval.low, interval.high);
    std::vector<T> values(static_cast<std::size_t>(n));
    for (T& value : values) value = static_cast<T>(distribution(engine));
    return values;
}

template <class T> struct Arrays {
    std::vector<T> a, b, y, z;

    Arrays(int n, const Arguments& arguments)
        : a(drawn<T>(n, arguments.a, 1)), b(drawn<T>(n, arguments.b, 2)), y(a), z(a) {}
};

template <class T> std::span<const KernelPeer<T>> kernelPeersOf(const Peers& peers) {
    if constexpr (std::is_same_v<T, double>)
        return peers.doubles;
    else
        return peers.singles;
}

std::string text(Interval interval) {
    std::ostringstream out;
    if (interval.low == interval.high)
        out << interval.low;
    else
        out << '[' << interval.low << ", " << interval.high << ')';
    return out.str();
}

template <class T>
Row row(const catalogue::Function& function, const catalogue::Kernel<T>& kernel,
        const Arguments& arguments) {
    const KernelPeer<T>& narrow =
        peerOf(kernelPeersOf<T>(narrowPeers()), function.name);
    const KernelPeer<T>& wide = peerOf(kernelPeersOf<T>(widePeers()), function.name);
    const auto prepare = [&function, &kernel, &arguments, &narrow, &wide](int n) {
        const auto v = std::make_shared<Arrays<T>>(n, arguments);
        const auto loop = [=](const KernelPeer<T>& peer) {
            return [=, f = peer.loop] {
                f(n, v->a.data(), v->b.data(), v->y.data(), v->z.data());
            };
        };
        const auto ours = [=, form = function.form, entry = kernel.entry] {
            call(form, entry, n, v->a.data(), v->b.data(), v->y.data(), v->z.data());
        };
        return Contest{ours, loop(narrow), loop(wide)};
    };
    const bool isUnary = arguments.b.low == 0 && arguments.b.high == 0;
    return {std::string(precisionName<T>) + ' ' + function.name + '_' + kernel.accuracy,
            text(arguments.a) + (isUnary ? "" : " and " + text(arguments.b)),
            narrow.name, prepare};
}

template <class T> void addRows(std::vector<Row>& rows) {
    for (const Arguments& arguments : table) {
        const catalogue::Function* function = catalogue::find(arguments.function);
        if (!function) continue;
        for (const catalogue::Kernel<T>& kernel : kernelsOf<T>(*function))
            if (isOwnCode(kernel)) rows.push_back(row(*function, kernel, arguments));
    }
}

} // namespace

std::vector<Row> kernelRows() {
    std::vector<Row> rows;
    addRows<double>(rows);
    addRows<float>(rows);
    return rows;
}

} // namespace qorkes::bench
