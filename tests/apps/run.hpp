// Runs the built program as a user does.
#pragma once

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

} // namespace qorkes
