// Numbers from a file or standard input.
//
// Each line is a record. Fields are separated by commas if the first record has one,
// else by blanks. The first record is a header if none of its fields is a number. Empty
// lines and lines that start with # are passed over.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace qorkes {

struct Source {
    std::string path;   // "-" is standard input
    std::string column; // name, or number from 1; empty: the only one, or all fields
};

/// FILE and --column; standard input if FILE is missing.
void addInput(CLI::App& command, Source& source);

template <class T> struct Numbers {
    std::vector<T> values;
    std::vector<int> lines; // where each value stands, from 1
};

/// All numbers of the source, one at least; any that is missing or not a number ends
/// the program.
template <class T> Numbers<T> readNumbers(const Source& source);

/// How messages name a source.
std::string nameOf(const Source& source);

} // namespace qorkes
