// Random legal calls over the stream services, against a model: a stream is a
// generator, a seed and a place in the sequence, and the sequence is what a new stream
// delivers.
#include "fuzz.hpp"

#include <generators.hpp>

#include <qorkes/kes.h>

#include <array>
#include <vector>

using namespace qorkes;
using namespace qorkes::fuzz;

namespace {

constexpr unsigned longestDraw = 700; // beyond every state's cycle
constexpr int farthest = 5000;

/// A stream with what the model knows of it.
struct Subject {
    StreamState* stream = nullptr;
    int brng = 0;
    uint32_t seed = 0;
    int place = 0;  // elements passed by
    int chunks = 0; // blocks that it keeps
};

/// The elements at `place` and on, from a stream that starts anew.
std::vector<double> expected(const Subject& subject, int n) {
    StreamState* stream = nullptr;
    require(__kesNewStreamEx(&stream, subject.brng, 1, &subject.seed) >= 0, "a stream");
    std::vector<double> r(static_cast<size_t>(subject.place + n) + 1);
    require(_kesdRngUniform(0, stream, subject.place + n, r.data(), 0, 1) >= 0,
            "numbers of a new stream");
    __kesDeleteStream(&stream);
    return {r.begin() + subject.place, r.begin() + subject.place + n};
}

void drop(Subject& subject) {
    if (!subject.stream) return;
    require(__kesDeleteStream(&subject.stream) >= 0 && !subject.stream, "a deletion");
    subject = {};
}

void renew(Subject& subject, Choices& choices) {
    drop(subject);
    const auto rows = catalogue::generators();
    const auto& row = rows[choices.below(static_cast<unsigned>(rows.size()))];
    subject.brng = row.identifier +
                   static_cast<int>(choices.below(static_cast<unsigned>(row.members)));
    // A seed, or a number of dimensions, of which there is no 0.
    subject.seed = row.dimensions == 0
                       ? choices.below(300)
                       : 1 + choices.below(static_cast<unsigned>(row.dimensions));
    require(__kesNewStreamEx(&subject.stream, subject.brng, 1, &subject.seed) >= 0,
            "a new stream");
    require(__kesGetStreamStateBrng(subject.stream) == subject.brng, "its generator");
}

void draw(Subject& subject, Choices& choices) {
    const int n = static_cast<int>(choices.below(longestDraw));
    if (subject.place + n > farthest) return;
    std::vector<double> r(static_cast<size_t>(n) + 1);
    require(_kesdRngUniform(0, subject.stream, n, r.data(), 0, 1) >= 0, "numbers");
    r.pop_back();
    require(r == expected(subject, n), "the sequence goes on");
    subject.place += n;
}

void skip(Subject& subject, Choices& choices) {
    const int n = static_cast<int>(choices.below(longestDraw));
    if (subject.place + n > farthest) return;
    // From inside a point Niederreiter goes elsewhere.
    if (subject.brng == KesBrngNiederr &&
        subject.place % static_cast<int>(subject.seed) != 0)
        return;
    const int status = __kesSkipAheadStream(subject.stream, n);
    require(status >= 0 || status == KesStatusSkipAheadUnsupported, "a skip or a no");
    if (status >= 0) subject.place += n;
}

/// Copies share their chunks, so only a stream without any is copied.
void copy(Subject& from, Subject& to) {
    if (&from == &to || from.chunks > 0) return;
    drop(to);
    to = from;
    require(__kesCopyStream(&to.stream, from.stream) >= 0, "a copy");
}

void throughFile(Subject& subject) {
    const MemoryFile file;
    const std::string path = file.path();
    require(__kesSaveStreamF(subject.stream, path.data(),
                             static_cast<int>(path.size())) >= 0,
            "a saved stream");
    __kesDeleteStream(&subject.stream);
    require(__kesLoadStreamF(&subject.stream, path.c_str()) >= 0, "a loaded stream");
}

void addChunk(Subject& subject, Choices& choices) {
    const int size = 1 + static_cast<int>(choices.below(64));
    void* block = std::calloc(1, static_cast<size_t>(size));
    require(__kesAddChunk(subject.stream, 100 + subject.chunks, block, size) >= 0,
            "a chunk");
    ++subject.chunks;
}

void inspect(const Subject& subject) {
    require(__kesGetNumChunks(subject.stream) == subject.chunks, "all chunks");
    for (int i = 0; i < subject.chunks; ++i)
        require(__kesSearchChunk(subject.stream, 100 + i) != nullptr, "each chunk");
    require(!__kesSearchChunk(subject.stream, 99), "no other chunk");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Choices choices(Bytes(data, size));
    std::array<Subject, 3> subjects;
    for (Subject& subject : subjects) renew(subject, choices);
    for (int calls = 0; calls < 40 && choices.areLeft(); ++calls) {
        Subject& subject = subjects[choices.below(3)];
        switch (choices.below(7)) {
        case 0:
            renew(subject, choices);
            break;
        case 1:
            draw(subject, choices);
            break;
        case 2:
            skip(subject, choices);
            break;
        case 3:
            copy(subject, subjects[choices.below(3)]);
            break;
        case 4:
            throughFile(subject);
            break;
        case 5:
            addChunk(subject, choices);
            break;
        case 6:
            inspect(subject);
            break;
        }
    }
    for (Subject& subject : subjects) drop(subject);
    return 0;
}
