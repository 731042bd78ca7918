// Results to standard output, once nothing in the input can be wrong any more.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace qorkes {

/// Writes and flushes; a full disk or the like ends the program.
void writeOut(std::string_view bytes);

/// --binary.
CLI::Option* addBinary(CLI::App& command, bool& binary);

/// `perLine` numbers a line between commas, each in its shortest form.
template <class T> void writeText(std::span<const T> values, int perLine = 1);

/// The numbers as they lie in memory, little-endian.
template <class T> void writeBinary(std::span<const T> values) {
    writeOut({reinterpret_cast<const char*>(values.data()), values.size_bytes()});
}

/// The one or the other.
template <class T>
void writeNumbers(const std::vector<T>& values, int perLine, bool binary) {
    if (binary)
        writeBinary<T>(values);
    else
        writeText<T>(values, perLine);
}

} // namespace qorkes
