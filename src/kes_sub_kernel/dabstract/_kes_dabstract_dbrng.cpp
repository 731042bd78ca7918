// __kesdBRngdAbstract: (v - Low) * S + a for the caller's doubles v from [Low, High),
// all of it extended, S = (b - a) / (High - Low) too, and rounded once.
#include <kes_sub_kernel/abstract.hpp>
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

int __kesdBRngdAbstract(StreamState* stream, int n, double* r, double a, double b) {
    const auto& state = stateOf<RealAbstractState<double>>(stream);
    const ext low = state.Low, shift = a;
    const ext scale = (ext{b} - shift) / (state.High - low);
    return drawAbstract<RealAbstractState<double>>(
        stream, n, r, [=](double* to, const double* from, int count) {
            for (int i = 0; i < count; ++i)
                to[i] = round64((from[i] - low) * scale + shift);
        });
}
