// Runs the built program as a user does.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace qorkes {

struct Outcome {
    int status; // exit status, or -1 if the program died otherwise
    std::string out, err;
};

/// Runs `qorkes` with these arguments and this text as standard input.
Outcome run(const std::vector<std::string>& arguments, const std::string& input = "");

/// A file of this text that is gone with the object.
struct TemporaryFile {
    std::string path;
    explicit TemporaryFile(const std::string& text);
    TemporaryFile(const TemporaryFile&) = delete;
    ~TemporaryFile();
};

/// Status 2, nothing on standard output, and one line that holds all of these words.
void expectRefusal(const Outcome& outcome, const std::vector<std::string>& words);

/// Text and binary forms of a run that gives 100 numbers hold the same bits.
template <class T> void expectSameBits(const std::vector<std::string>& arguments) {
    auto binaryArguments = arguments;
    binaryArguments.push_back("--binary");
    const std::string binary = run(binaryArguments).out;
    std::istringstream text(run(arguments).out);
    ASSERT_EQ(binary.size(), 100 * sizeof(T));
    for (size_t i = 0; i < 100; ++i) {
        std::string line;
        std::getline(text, line);
        const T value = static_cast<T>(std::is_same_v<T, double>
                                           ? std::strtod(line.c_str(), nullptr)
                                           : std::strtof(line.c_str(), nullptr));
        EXPECT_EQ(std::memcmp(&value, binary.data() + i * sizeof(T), sizeof(T)), 0)
            << line;
    }
}

} // namespace qorkes
