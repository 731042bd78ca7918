// Streams that delete themselves, and draws of all three kinds by the type of number.
#pragma once

#include <qorkes/kes.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <type_traits>
#include <unistd.h>
#include <vector>

namespace qorkes::test {

struct StreamDeleter {
    void operator()(StreamState* stream) const { __kesDeleteStream(&stream); }
};
using Stream = std::unique_ptr<StreamState, StreamDeleter>;

inline Stream newStream(int brng, const std::vector<uint32_t>& seed) {
    StreamState* stream = nullptr;
    EXPECT_EQ(
        __kesNewStreamEx(&stream, brng, static_cast<int>(seed.size()), seed.data()),
        KesStatusOk);
    return Stream(stream);
}

inline Stream copyOf(const Stream& source) {
    StreamState* stream = nullptr;
    EXPECT_EQ(__kesCopyStream(&stream, source.get()), KesStatusOk);
    return Stream(stream);
}

using Words = std::vector<uint32_t>;

/// The state behind the header.
inline const uint32_t* stateOf(const Stream& stream) {
    return reinterpret_cast<const uint32_t*>(stream.get() + 1);
}
inline Words stateOf(const Stream& stream, std::size_t n) {
    return {stateOf(stream), stateOf(stream) + n};
}

/// The stream that a file of this one holds.
inline Stream reloaded(const Stream& source) {
    const std::string path =
        testing::TempDir() + "qorkes-" + std::to_string(getpid()) + ".stream";
    StreamState* stream = nullptr;
    EXPECT_EQ(__kesSaveStreamF(source.get(), path.c_str(), -1), KesStatusOk);
    EXPECT_EQ(__kesLoadStreamF(&stream, path.c_str()), KesStatusOk);
    std::remove(path.c_str());
    return Stream(stream);
}

template <class T> struct Range { T a, b; };

/// n elements to r: words for uint32_t, else real numbers of the range.
template <class T>
int draw(const Stream& stream, int n, T* r, Range<T> range = {T(0), T(1)}) {
    if constexpr (std::is_same_v<T, uint32_t>)
        return _kesiRngUniformBits(0, stream.get(), n, r);
    else if constexpr (std::is_same_v<T, float>)
        return _kessRngUniform(0, stream.get(), n, r, range.a, range.b);
    else
        return _kesdRngUniform(0, stream.get(), n, r, range.a, range.b);
}

/// Array elements that a draw of one number of this kind writes.
template <class T> int width(const Stream& stream) {
    if constexpr (!std::is_same_v<T, uint32_t>) return 1;
    BrngProperties row;
    EXPECT_EQ(__kesGetBrngProperties(stream->BrngId, &row), KesStatusOk);
    return row.WordSize / 4;
}

/// The next n numbers.
template <class T>
std::vector<T> take(const Stream& stream, int n, Range<T> range = {T(0), T(1)}) {
    std::vector<T> r(static_cast<std::size_t>(n * width<T>(stream)));
    EXPECT_EQ(draw(stream, n, r.data(), range), KesStatusOk);
    return r;
}

} // namespace qorkes::test
