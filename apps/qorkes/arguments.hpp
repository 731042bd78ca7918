// Values of the command line: each is right, or named in the one line of a failure.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <strings.h>
#include <vector>

namespace CLI {
class App;
}

namespace qorkes {

/// The most numbers that are made at a time: with 16 bytes each they fit the address
/// space of the 32-bit program, and the other one has no other limit.
constexpr int mostNumbers = 100'000'000;

/// "a, b, c".
std::string listed(const std::vector<std::string>& words);

/// "FUNCTION: there is no 'Sqr'; there is Div, Inv, ...".
[[noreturn]] void failChoice(const std::string& argument, const std::string& given,
                             const std::vector<std::string>& choices);

/// The row of this name, in any case.
template <class Row>
const Row& rowNamed(const std::string& argument, const std::string& name,
                    std::span<const Row> rows) {
    std::vector<std::string> names;
    for (const Row& row : rows) {
        if (strcasecmp(row.name, name.c_str()) == 0) return row;
        names.push_back(row.name);
    }
    failChoice(argument, name, names);
}

/// --precision; double if it is not given.
void addPrecision(CLI::App& command, std::string& precision,
                  const char* help = "default: double");

/// Whether a --precision is single; else it is double.
bool isSingle(const std::string& precision);

/// The whole number that `text` is, if it lies from `low` to `high`.
int64_t wholeNumber(const std::string& argument, const std::string& text, int64_t low,
                    int64_t high);

} // namespace qorkes
