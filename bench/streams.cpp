// The rows for streams: raw words of a generator against those of a peer's.
#include "driver.hpp"
#include "peers.hpp"

#include <qorkes/kes.h>

#include <memory>
#include <stdexcept>
#include <string_view>

namespace qorkes::bench {
namespace {

struct WordRow {
    const char* ours;
    int brng;
    const char* peer; // a generator of peers.cpp
};

constexpr WordRow table[] = {
    {"words of MCG31M1", KesBrngMCG31M1, "std minstd_rand"},
    {"words of MCG31M1", KesBrngMCG31M1, "Boost minstd_rand"},
    {"words of MCG31M1", KesBrngMCG31M1, "GSL minstd"},
};

const WordPeer& peerOf(const Peers& peers, std::string_view name) {
    for (const WordPeer& peer : peers.words)
        if (peer.name == name) return peer;
    throw std::logic_error("a row without a peer: " + std::string(name));
}

/// A stream seeded with 1, and room for n elements.
struct Source {
    StreamState* stream = nullptr;
    BrngProperties generator{};
    std::vector<std::uint32_t> words;

    Source(int brng, int n) : words(static_cast<std::size_t>(n)) {
        const std::uint32_t seed = 1;
        __kesGetBrngProperties(brng, &generator);
        if (__kesNewStreamEx(&stream, brng, 1, &seed) != KesStatusOk)
            throw std::runtime_error("a stream could not be made");
    }
    ~Source() { __kesDeleteStream(&stream); }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
};

Contest prepare(const WordRow& row, int n) {
    const auto source = std::make_shared<Source>(row.brng, n);
    const auto fill = [=](const WordPeer& peer) {
        return [=, f = peer.fill] { f(n, source->words.data()); };
    };
    const auto ours = [=] {
        source->generator.iBRng(source->stream, n, source->words.data());
    };
    return {ours, fill(peerOf(x87Peers(), row.peer)),
            fill(peerOf(sse2Peers(), row.peer))};
}

} // namespace

std::vector<Row> streamRows() {
    std::vector<Row> rows;
    for (const WordRow& row : table)
        rows.push_back(
            {row.ours, "", row.peer, [&row](int n) { return prepare(row, n); }});
    return rows;
}

} // namespace qorkes::bench
