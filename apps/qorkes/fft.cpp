// qorkes fft: the spectrum of a real series.
#include "arguments.hpp"
#include "commands.hpp"
#include "failure.hpp"
#include "input.hpp"
#include "output.hpp"

#include <qorkes/zubs.h>

#include <CLI/CLI.hpp>

#include <bit>

namespace qorkes {
namespace {

struct Options {
    Source source;
    std::string precision = "double";
    bool pad = false;
    bool power = false;
    bool binary = false;
};

/// The transforms of one precision.
template <class T> struct Transform;
template <> struct Transform<double> {
    static constexpr auto make = zubsFFTInitAlloc_R_64f;
    static constexpr auto forward = zubsFFTFwd_RToPerm_64f;
    static constexpr auto release = zubsFFTFree_R_64f;
};
template <> struct Transform<float> {
    static constexpr auto make = zubsFFTInitAlloc_R_32f;
    static constexpr auto forward = zubsFFTFwd_RToPerm_32f;
    static constexpr auto release = zubsFFTFree_R_32f;
};

/// The order of the transform, the series grown by zeros if that is wanted.
template <class T> int orderFor(std::vector<T>& series, const Options& options) {
    const size_t whole = std::bit_ceil(series.size());
    if (whole != series.size() && !options.pad)
        fail(nameOf(options.source) + " holds " + std::to_string(series.size()) +
             " numbers; a power of two is needed, or --pad");
    series.resize(whole);
    return std::countr_zero(whole);
}

template <class T> std::vector<T> spectrumOf(const std::vector<T>& series, int order) {
    std::vector<T> spectrum(series.size());
    FftCtx* plan = nullptr;
    int status = Transform<T>::make(&plan, order, ZubFftNoDiv, 0);
    if (status == ZubStatusOk) {
        status = Transform<T>::forward(series.data(), spectrum.data(), plan, nullptr);
        Transform<T>::release(plan);
    }
    if (status != ZubStatusOk) fail("fft: not enough memory", statusOfOutputTrouble);
    return spectrum;
}

/// Real and imaginary parts of X[0] to X[N/2], from the Perm layout.
template <class T> std::vector<T> partsOf(const std::vector<T>& spectrum) {
    const size_t n = spectrum.size();
    std::vector<T> parts{spectrum[0], 0};
    if (n > 1) {
        parts.insert(parts.end(), spectrum.begin() + 2, spectrum.end());
        parts.insert(parts.end(), {spectrum[1], 0});
    }
    return parts;
}

template <class T> std::vector<T> powersOf(const std::vector<T>& parts) {
    std::vector<T> powers;
    for (size_t i = 0; i < parts.size(); i += 2)
        powers.push_back(parts[i] * parts[i] + parts[i + 1] * parts[i + 1]);
    return powers;
}

template <class T> void transform(const Options& options) {
    auto series = readNumbers<T>(options.source).values;
    const int order = orderFor(series, options);
    auto numbers = partsOf(spectrumOf(series, order));
    if (options.power) numbers = powersOf(numbers);
    writeNumbers(numbers, options.power ? 1 : 2, options.binary);
}

} // namespace

void addFft(CLI::App& app) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("fft", "Transform a real series");
    addInput(*command, options->source);
    addPrecision(*command, options->precision);
    command->add_flag("--pad", options->pad, "fill up with zeros to a power of two");
    command->add_flag("--power", options->power, "squared magnitudes only");
    addBinary(*command, options->binary);
    command->footer("Prints X[0] to X[N/2], real and imaginary part a line, where\n"
                    "X[k] is the sum of x[n] exp(-2 pi i k n / N), unscaled.\n\n"
                    "Examples:\n"
                    "  echo 1 0 0 0 | qorkes fft\n"
                    "  qorkes fft nile.csv --column volume --pad --power\n");
    command->callback([options] {
        if (isSingle(options->precision))
            transform<float>(*options);
        else
            transform<double>(*options);
    });
}

} // namespace qorkes
