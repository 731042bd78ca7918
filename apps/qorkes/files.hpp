// Files as a whole; errno tells what went wrong.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace qorkes {

/// Standard input stays open.
struct CloseFile {
    void operator()(std::FILE* file) const {
        if (file != stdin) std::fclose(file);
    }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// What is left to read.
inline std::string readRest(std::FILE* file) {
    std::string text;
    char block[65536];
    while (const size_t n = std::fread(block, 1, sizeof block, file))
        text.append(block, n);
    return text;
}

/// Writes and flushes; false if either failed.
inline bool writeWhole(std::FILE* file, std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), file) == text.size() &&
           std::fflush(file) == 0;
}

} // namespace qorkes
