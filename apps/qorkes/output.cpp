#include "output.hpp"

#include "failure.hpp"
#include "files.hpp"
#include "text.hpp"

#include <CLI/CLI.hpp>

#include <bit>
#include <cerrno>
#include <cstring>

namespace qorkes {

static_assert(std::endian::native == std::endian::little);

void writeOut(std::string_view bytes) {
    if (!writeWhole(stdout, bytes))
        fail(std::string("cannot write the results (") + std::strerror(errno) + ")",
             statusOfOutputTrouble);
}

CLI::Option* addBinary(CLI::App& command, bool& binary) {
    return command.add_flag("--binary", binary,
                            "write raw little-endian numbers instead of text");
}

template <class T> void writeText(std::span<const T> values, int perLine) {
    constexpr size_t blockSize = 65536;
    std::string text;
    int place = 0;
    for (const T value : values) {
        text += shortest(value);
        place = (place + 1) % perLine;
        text += place == 0 ? '\n' : ',';
        if (text.size() < blockSize) continue;
        writeOut(text);
        text.clear();
    }
    writeOut(text);
}
template void writeText(std::span<const double> values, int perLine);
template void writeText(std::span<const float> values, int perLine);
template void writeText(std::span<const int32_t> values, int perLine);
template void writeText(std::span<const uint32_t> values, int perLine);
template void writeText(std::span<const uint64_t> values, int perLine);

} // namespace qorkes
