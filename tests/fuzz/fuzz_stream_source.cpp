// What the command line says of a stream, one setting a line: generator, seed,
// leapfrog, skip and dimensions. Whatever the text, there is a stream that draws, or
// one message.
#include "fuzz.hpp"

#include <failure.hpp>
#include <stream_source.hpp>
#include <text.hpp>

using namespace qorkes;
using namespace qorkes::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> lines = split(text, '\n');
    lines.resize(5);
    try {
        const Stream stream =
            newStream({lines[0], lines[1], {lines[3], lines[2]}, lines[4]});
        double r[16];
        require(_kesdRngUniform(0, stream.get(), 16, r, 0, 1) >= 0, "numbers");
        for (const double x : r) require(x >= 0 && x <= 1, "numbers of the range");
    } catch (const Failure& failure) {
        require(failure.message.find('\n') == std::string::npos, "a message of a line");
    }
    return 0;
}
