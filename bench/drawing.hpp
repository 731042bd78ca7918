// What streams and distributions are timed with: a stream of ours against a generator
// that a peer fills arrays from.
#pragma once

#include "driver.hpp"
#include "peers.hpp"

#include <qorkes/kes.h>

#include <memory>
#include <stdexcept>
#include <string_view>

namespace qorkes::bench {

template <class T>
const StreamPeer<T>& peerOf(std::span<const StreamPeer<T>> peers, const char* name) {
    for (const StreamPeer<T>& peer : peers)
        if (peer.name == std::string_view(name)) return peer;
    throw std::logic_error("a row without a peer: " + std::string(name));
}

/// A stream seeded with one word, and room for n numbers.
template <class T> struct Drawing {
    StreamState* stream = nullptr;
    std::vector<T> numbers;

    Drawing(int brng, std::uint32_t seed, int n)
        : numbers(static_cast<std::size_t>(n)) {
        if (__kesNewStreamEx(&stream, brng, 1, &seed) != KesStatusOk)
            throw std::runtime_error("a stream could not be made");
    }
    ~Drawing() { __kesDeleteStream(&stream); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
};

/// draw(stream, n, r) against the peer of this name in one of the tables of Peers.
template <class T, class Draw>
Contest drawingContest(int n, int brng, std::uint32_t seed, Draw draw,
                       std::span<const StreamPeer<T>> Peers::*table, const char* peer) {
    const auto drawing = std::make_shared<Drawing<T>>(brng, seed, n);
    const auto fill = [=](const Peers& peers) {
        return [=, f = peerOf<T>(peers.*table, peer).fill] {
            f(n, drawing->numbers.data());
        };
    };
    return {[=] { draw(drawing->stream, n, drawing->numbers.data()); },
            fill(narrowPeers()), fill(widePeers())};
}

} // namespace qorkes::bench
