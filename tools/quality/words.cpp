// qorkes-words NAME[:MEMBER][+SEEDER]: the numbers of a generator as words of 32 random
// bits, without an end, on standard output. The seed is 1, or as many words as the
// generator takes, of another generator that is seeded with 1.
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

/// A stream of the generator of random numbers that the text names, or null.
StreamState* newStream(std::string_view text, const Words& seeds) {
    const std::size_t colon = text.find(':');
    const int member =
        colon == text.npos ? 0 : std::atoi(std::string(text.substr(colon + 1)).c_str());
    StreamState* stream = nullptr;
    for (const auto& generator : catalogue::generators())
        if (generator.name == text.substr(0, colon) && generator.dimensions == 0 &&
            member >= 0 && member < generator.members)
            __kesNewStreamEx(&stream, generator.identifier + member,
                             static_cast<int>(seeds.size()), seeds.data());
    return stream;
}

BrngProperties rowOf(const StreamState* stream) {
    BrngProperties row = {};
    __kesGetBrngProperties(__kesGetStreamStateBrng(stream), &row);
    return row;
}

/// The same by the whole of an argument.
StreamState* streamOf(std::string_view argument) {
    const std::size_t plus = argument.find('+');
    StreamState* stream = newStream(argument.substr(0, plus), {1});
    if (!stream || plus == argument.npos) return stream;
    StreamState* seeder = newStream(argument.substr(plus + 1), {1});
    if (!seeder) return nullptr;
    Words seeds = nextBlock(seeder, rowOf(seeder));
    seeds.resize(static_cast<std::size_t>(rowOf(stream).SeedCount));
    return newStream(argument.substr(0, plus), seeds);
}

} // namespace

int main(int argc, char** argv) {
    StreamState* stream = argc == 2 ? streamOf(argv[1]) : nullptr;
    if (!stream) {
        std::fputs("usage: qorkes-words NAME[:MEMBER][+SEEDER], generators of random "
                   "numbers\n",
                   stderr);
        return 2;
    }
    const BrngProperties row = rowOf(stream);
    for (;;) {
        const Words words = nextBlock(stream, row);
        if (std::fwrite(words.data(), sizeof words[0], words.size(), stdout) !=
            words.size())
            return 0;
    }
}
