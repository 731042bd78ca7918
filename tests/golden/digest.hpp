// What a row is made of: first results as they are, and a digest of all.
#pragma once

#include "golden.hpp"

#include <common/bits.hpp>

#include <algorithm>
#include <cstdio>

namespace qorkes {

constexpr std::size_t arguments = 100'000;

/// The 64-bit digest of Fowler, Noll and Vo, by words of 32 bits.
class Digest {
public:
    void add(uint32_t word) { state = (state ^ word) * 0x100000001B3; }
    template <class T> void add(const T& x) {
        uint32_t words[sizeof(T) / 4];
        std::memcpy(words, &x, sizeof x);
        for (const uint32_t word : words) add(word);
    }
    std::string text() const { return hexadecimal(state); }

    template <class T> static std::string hexadecimal(T x) {
        char text[20];
        std::snprintf(text, sizeof text, "%0*llx", static_cast<int>(2 * sizeof x),
                      static_cast<unsigned long long>(x));
        return text;
    }

private:
    uint64_t state = 0xCBF29CE484222325;
};

inline std::string hexadecimal(double x) { return Digest::hexadecimal(bitsOf(x)); }
inline std::string hexadecimal(float x) { return Digest::hexadecimal(bitsOf(x)); }
inline std::string hexadecimal(uint32_t x) { return Digest::hexadecimal(x); }
inline std::string hexadecimal(int32_t x) { return std::to_string(x); }

/// The digest of all and the first ones as they are.
template <class T> std::string numbersOf(const std::vector<T>& results) {
    Digest digest;
    for (const T& x : results) digest.add(x);
    std::string text = digest.text();
    for (std::size_t i = 0; i < 3; ++i)
        text.append(" ").append(hexadecimal(results[i]));
    return text;
}

template <std::size_t n>
bool isAmong(const std::string& name, const char* const (&names)[n]) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

} // namespace qorkes
