// qorkes-words NAME[:MEMBER]: the numbers of a generator as words of 32 random bits,
// without an end, on standard output. The seed is 1.
//
// Generators of 32 bits give their own words. Of fewer bits two elements make a word by
// their upper 16 bits; of more bits the upper 32 are taken; of several components the
// first 32 bits of the real number in which they come together.
#include "generators.hpp"

#include <qorkes/kes.h>

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <vector>

using namespace qorkes;

namespace {

constexpr int blockSize = 1 << 16;

using Words = std::vector<uint32_t>;

Words draw(StreamState* stream, int wordsEach) {
    Words words(static_cast<std::size_t>(blockSize * wordsEach));
    _kesiRngUniformBits(0, stream, blockSize, words.data());
    return words;
}

Words upperHalves(StreamState* stream, int bits) {
    const Words elements = draw(stream, 1);
    Words words;
    for (std::size_t i = 0; i < elements.size(); i += 2)
        words.push_back(elements[i] >> (bits - 16) << 16 |
                        elements[i + 1] >> (bits - 16));
    return words;
}

Words upperWords(StreamState* stream, int bits) {
    const Words elements = draw(stream, 2);
    Words words;
    for (std::size_t i = 0; i < elements.size(); i += 2)
        words.push_back(elements[i + 1] << (64 - bits) | elements[i] >> (bits - 32));
    return words;
}

Words fractions(StreamState* stream) {
    std::vector<double> numbers(blockSize);
    _kesdRngUniform(0, stream, blockSize, numbers.data(), 0, 1);
    Words words;
    for (const double u : numbers)
        words.push_back(static_cast<uint32_t>(static_cast<int64_t>(u * 0x1p32)));
    return words;
}

Words nextBlock(StreamState* stream, const BrngProperties& row) {
    if (row.WordSize == 16) return fractions(stream);
    if (row.WordSize == 8) return upperWords(stream, row.BitCount);
    if (row.BitCount < 32) return upperHalves(stream, row.BitCount);
    return draw(stream, 1);
}

/// The identifier of a generator of random numbers, or -1.
int identifierOf(std::string_view text) {
    const std::size_t colon = text.find(':');
    const int member =
        colon == text.npos ? 0 : std::atoi(std::string(text.substr(colon + 1)).c_str());
    for (const auto& generator : catalogue::generators())
        if (generator.name == text.substr(0, colon) && generator.dimensions == 0 &&
            member >= 0 && member < generator.members)
            return generator.identifier + member;
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    const int brng = argc == 2 ? identifierOf(argv[1]) : -1;
    BrngProperties row;
    StreamState* stream = nullptr;
    const uint32_t seed = 1;
    if (brng < 0 || __kesGetBrngProperties(brng, &row) < 0 ||
        __kesNewStreamEx(&stream, brng, 1, &seed) < 0) {
        std::fputs("usage: qorkes-words NAME[:MEMBER], a generator of random numbers\n",
                   stderr);
        return 2;
    }
    for (;;) {
        const Words words = nextBlock(stream, row);
        if (std::fwrite(words.data(), sizeof words[0], words.size(), stdout) !=
            words.size())
            return 0;
    }
}
