// Streams of the command line: made of a generator and a seed, moved on, told apart.
#pragma once

#include "generators.hpp"

#include <qorkes/kes.h>

#include <memory>
#include <string>

namespace CLI {
class App;
}

namespace qorkes {

struct DeleteStream {
    void operator()(StreamState* stream) const { __kesDeleteStream(&stream); }
};
using Stream = std::unique_ptr<StreamState, DeleteStream>;

/// How far on a stream is to be moved before it is used.
struct Jumps {
    std::string skip;
    std::string leapfrog;
};

struct StreamSource {
    std::string generator = "MT19937";
    std::string seed; // empty: 1
    Jumps jumps;
    std::string dimensions; // of points; empty: 1
};

void addJumpOptions(CLI::App& command, Jumps& jumps);
void addSourceOptions(CLI::App& command, StreamSource& source);

Stream newStream(const StreamSource& source);
void moveOn(StreamState* stream, const Jumps& jumps);

/// The generator's row, or null if it is none of the library's own.
const catalogue::Generator* generatorOf(const StreamState* stream);

/// Ends the program if a call on the stream returned a failure.
void check(int status, const StreamState* stream, const std::string& what);

} // namespace qorkes
