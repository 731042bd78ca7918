// Bad input ends the program in one place: whoever finds it throws, runGuarded() prints
// one line on standard error. Nothing has been written by then.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace qorkes {

constexpr int statusOfBadInput = 2;
constexpr int statusOfOutputTrouble = 1;

struct Failure {
    std::string message; // what is wrong and what would be right
    int exitStatus;
};

[[noreturn]] void fail(std::string message, int exitStatus = statusOfBadInput);

/// Parses the command line, which runs the subcommand. Returns the exit status.
int runGuarded(CLI::App& app, int argc, char** argv);

} // namespace qorkes
