// Stream files: their bytes, the names they go by, chunks, and how each kind of damage
// is refused.
#include "stream.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

using namespace qorkes;
using namespace qorkes::test;

/// The address sanitizer is to refuse a block too large as malloc does, not to stop.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

namespace {

const std::string path = testing::TempDir() + "qorkes-test.stream";

std::string contents(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void replaceContents(const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

int save(const Stream& stream) {
    return __kesSaveStreamF(stream.get(), path.c_str(), -1);
}

void addChunk(const Stream& stream, int id, const std::string& bytes) {
    void* block = std::malloc(bytes.size() + 1);
    std::memcpy(block, bytes.data(), bytes.size());
    const int size = static_cast<int>(bytes.size());
    ASSERT_EQ(__kesAddChunk(stream.get(), id, block, size), KesStatusOk);
}

class StreamFile : public testing::Test {
protected:
    ~StreamFile() override { std::remove(path.c_str()); }

    /// The status of loading these bytes into a null variable, which must stay null.
    static int refusal(const std::string& bytes) {
        replaceContents(bytes);
        StreamState* loaded = nullptr;
        const int status = __kesLoadStreamF(&loaded, path.c_str());
        EXPECT_EQ(loaded, nullptr);
        if (loaded) __kesDeleteStream(&loaded);
        return status;
    }
};

TEST_F(StreamFile, HoldsHeaderStateAndChunks) {
    using namespace std::string_literals;
    const Stream stream = newStream(KesBrngMCG31M1, {0x01020304});
    ASSERT_EQ(save(stream), KesStatusOk);
    const std::string bare = "RNG\0\x10\0\x08\0\0\0\0\0\0\0\x10\0"
                             "\x04\x03\x02\x01\x20\x6C\x80\x43"s;
    EXPECT_EQ(contents(path), bare);

    addChunk(stream, 2, "abcde");
    addChunk(stream, 7, "fg");
    ASSERT_EQ(save(stream), KesStatusOk);
    std::string expected = bare;
    expected[8] = 2;
    const std::string newest = "\x07\0\0\0\x02\0\0\0fg"s, older = "\x02\0\0\0\x05\0\0\0"
                                                                  "abcde"s;
    EXPECT_EQ(contents(path), expected + newest + older);

    // The list comes back in reverse order, which a second file shows.
    StreamState* loaded = nullptr;
    ASSERT_EQ(__kesLoadStreamF(&loaded, path.c_str()), KesStatusOk);
    const Stream copy(loaded);
    EXPECT_EQ(copy->Flag, 1);
    EXPECT_EQ(__kesGetNumChunks(loaded), 2);
    EXPECT_EQ(std::memcmp(__kesSearchChunk(loaded, 2), "abcde", 5), 0);
    EXPECT_EQ(std::memcmp(__kesSearchChunk(loaded, 7), "fg", 2), 0);
    EXPECT_EQ(take<uint32_t>(copy, 9), take<uint32_t>(stream, 9));
    ASSERT_EQ(__kesSaveStreamF(loaded, path.c_str(), -1), KesStatusOk);
    EXPECT_EQ(contents(path).substr(24), older + newest);
}

TEST_F(StreamFile, NamesEndByZeroOrByLength) {
    const Stream stream = newStream(KesBrngMCG59, {});
    const std::string longer = path + "-and-more";
    const int length = static_cast<int>(path.size());
    EXPECT_EQ(__kesSaveStreamF(stream.get(), longer.c_str(), length), KesStatusOk);
    EXPECT_EQ(contents(path).size(), 32u);
    EXPECT_EQ(std::remove(longer.c_str()), -1);
    EXPECT_EQ(__kesSaveStreamF(stream.get(), longer.c_str(), -1), KesStatusOk);
    EXPECT_EQ(std::remove(longer.c_str()), 0);
    EXPECT_EQ(__kesSaveStreamF(stream.get(), "x", 0), KesStatusFileOpen);
}

TEST_F(StreamFile, RefusesShortOnes) {
    const Stream stream = newStream(KesBrngMRG32K3A, {1, 2, 3});
    addChunk(stream, 1, "12345678");
    addChunk(stream, 2, "123");
    ASSERT_EQ(save(stream), KesStatusOk);
    const std::string whole = contents(path);
    for (std::size_t size = 0; size < whole.size(); ++size)
        ASSERT_EQ(refusal(whole.substr(0, size)), KesStatusFileRead) << size;
}

TEST_F(StreamFile, RefusesAlteredOnesByTheFirstFault) {
    const Stream stream = newStream(KesBrngR250, {5});
    addChunk(stream, 1, "1234");
    ASSERT_EQ(save(stream), KesStatusOk);
    const std::string whole = contents(path);
    const std::size_t chunk = 16 + 1008;
    const struct {
        std::vector<std::pair<std::size_t, int>> bytes; // place and value
        int status;
    } rows[] = {
        {{{0, 'r'}}, KesStatusBadFileFormat},
        {{{2, 'g'}, {3, 1}}, KesStatusBadFileFormat},
        {{{3, 1}}, KesStatusBadFileVersion},
        {{{3, 1}, {6, 0}, {15, 0x7F}}, KesStatusBadFileVersion},
        {{{4, 15}}, KesStatusBadFileFormat},
        {{{6, 0xEF}}, KesStatusBadFileFormat},
        {{{6, 0xF1}}, KesStatusBadFileFormat},
        {{{12, 1}}, KesStatusBadFileFormat},    // a member that R250 has not
        {{{14, 0x30}}, KesStatusBadFileFormat}, // MRG32K3A, by its state size
        {{{15, 0x7F}}, KesStatusBadFileFormat}, // no such row
        {{{15, 0x9A}}, KesStatusBadFileFormat}, // negative
        {{{8, 2}}, KesStatusFileRead},          // chunks that do not follow
        {{{chunk + 4, 5}}, KesStatusFileRead},
        {{{chunk + 4, 0}}, KesStatusFileRead}, // a block of no bytes
        {{{chunk + 7, 0xFF}}, KesStatusNoMemory},
    };
    for (const auto& [bytes, status] : rows) {
        std::string altered = whole;
        for (const auto& [place, value] : bytes)
            altered[place] = static_cast<char>(value);
        EXPECT_EQ(refusal(altered), status)
            << bytes[0].first << " became " << bytes[0].second;
    }
    // Neither a larger header nor what follows the last chunk changes what is read.
    std::string longer = whole + "more";
    longer[4] = 20;
    replaceContents(longer);
    StreamState* loaded = nullptr;
    ASSERT_EQ(__kesLoadStreamF(&loaded, path.c_str()), KesStatusOk);
    EXPECT_EQ(take<uint32_t>(Stream(loaded), 9), take<uint32_t>(stream, 9));
}

TEST_F(StreamFile, FailedLoadDeletesWhatTheVariableHolds) {
    std::remove(path.c_str());
    StreamState* held = newStream(KesBrngMCG59, {}).release();
    EXPECT_EQ(__kesLoadStreamF(&held, path.c_str()), KesStatusFileOpen);
    EXPECT_EQ(held, nullptr);
}

TEST_F(StreamFile, SavingTellsWhatWentWrong) {
    const Stream stream = newStream(KesBrngMCG59, {});
    EXPECT_EQ(__kesSaveStreamF(stream.get(), "/dev/full", -1), KesStatusFileClose);
    EXPECT_EQ(__kesSaveStreamF(stream.get(), "/", -1), KesStatusFileOpen);
    addChunk(stream, 1, "");
    EXPECT_EQ(save(stream), KesStatusFileWrite);
    EXPECT_EQ(contents(path).size(), 16u + 16 + 8);
}

/// Registered generators with states too large for the size field of the header.
TEST_F(StreamFile, CutsStateSizesToSixteenBits) {
    BrngProperties row;
    ASSERT_EQ(__kesGetBrngProperties(KesBrngMCG59, &row), KesStatusOk);
    row.StateSize = 16 + 0x10000 + 24;
    const Stream stream = newStream(__kesRegisterBrng(&row), {});
    ASSERT_EQ(save(stream), KesStatusOk);
    EXPECT_EQ(contents(path).size(), 16u + 24);
    EXPECT_EQ(refusal(contents(path)), KesStatusBadFileFormat);

    row.StateSize = 16 + 0x10000;
    EXPECT_EQ(save(newStream(__kesRegisterBrng(&row), {})), KesStatusFileWrite);
}

} // namespace
