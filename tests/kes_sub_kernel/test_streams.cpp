// The registry, the life of a stream and its chunks.
#include "stream.hpp"

#include <cstdlib>
#include <cstring>

using namespace qorkes;
using namespace qorkes::test;

namespace {

constexpr int firstRegistered = 0xd00000;

/// A caller's generator: delivers the count of numbers drawn so far.
struct CounterState {
    uint32_t drawn;
};
constexpr int stateSizeOfCounter = sizeof(StreamState) + sizeof(CounterState);

uint32_t& drawnOf(StreamState* stream) {
    return reinterpret_cast<CounterState*>(stream + 1)->drawn;
}
int initCounter(int method, StreamState* stream, int n, const uint32_t* params) {
    if (method != 0) return KesStatusBadMethod;
    if (n < 1) return KesStatusBadArgument;
    drawnOf(stream) = params[0];
    return KesStatusOk;
}
int countSingles(StreamState*, int, float*, float, float) { return 11; }
int countDoubles(StreamState*, int, double*, double, double) { return 12; }
int count(StreamState* stream, int n, uint32_t* r) {
    for (int i = 0; i < n; ++i) r[i] = drawnOf(stream)++;
    return KesStatusOk;
}
constexpr BrngProperties counter = {
    stateSizeOfCounter, 1, 1, 4, 32, initCounter, countSingles, countDoubles, count};

TEST(Registry, IdentifiersNameRowsAndMembers) {
    const struct {
        int brng;
        const BrngRecord* table;
        int row, offset;
    } rows[] = {
        {0, __RegBrngs, 0, 0},
        {3, __RegBrngs, 3, 0},
        {4, __RegBrngs, 4, 0},
        {5, __RegBrngs, 4, 1},
        {276, __RegBrngs, 4, 272},
        {277, __RegBrngs, 277, 0},
        {279, __RegBrngs, 279, 0},
        {0xFFFFF, __RegBrngs, 0xFFFFF, 0},
        {-1, __RegBrngs, -1, 0},
        {0x100000, __RegBrngsNew, 0, 0},
        {0x500001, __RegBrngsNew, 4, 1},
        {0x5FFFFF, __RegBrngsNew, 4, 0xFFFFF},
        {0x7FFFFFFF, __RegBrngsNew, 2046, 0xFFFFF},
    };
    for (const auto& expected : rows) {
        int row = -9, offset = -9;
        EXPECT_EQ(__kesGetBrngBaseOffset(expected.brng, &row, &offset), expected.table);
        EXPECT_EQ(row, expected.row) << std::hex << expected.brng;
        EXPECT_EQ(offset, expected.offset) << std::hex << expected.brng;
    }
}

#define SLOTS(name)                                                                    \
    __kesBRng##name##InitStream, __kessBRng##name, __kesdBRng##name, __kesiBRng##name

TEST(Registry, RowsOfBothNumberings) {
    const struct {
        int brng, first;
        BrngProperties row;
    } rows[] = {
        {KesBrngMCG31M1, 0, {24, 1, 0, 4, 31, SLOTS(MCG31M1)}},
        {KesBrngR250, 1, {1024, 252, 1, 4, 32, SLOTS(R250)}},
        {KesBrngMRG32K3A, 2, {40, 6, 1, 4, 32, SLOTS(MRG32K3A)}},
        {KesBrngMCG59, 3, {32, 1, 0, 8, 59, SLOTS(MCG59)}},
        {KesBrngWH + 272, 276, {48, 4, 1, 16, 24, SLOTS(WH)}},
        {KesBrngSobol, 277, {5472, 1324, 0, 4, 32, SLOTS(Sobol)}},
        {KesBrngNiederr, 278, {43280, 10498, 0, 4, 32, SLOTS(Niederr)}},
    };
    for (const auto& [brng, first, row] : rows)
        for (const int identifier : {brng, first}) {
            BrngProperties props;
            ASSERT_EQ(__kesGetBrngProperties(identifier, &props), KesStatusOk);
            EXPECT_EQ(std::memcmp(&props, &row, sizeof row), 0) << identifier;
        }
    EXPECT_EQ(std::memcmp(__RegBrngs, __RegBrngsNew, 5 * sizeof(BrngRecord)), 0);
    EXPECT_EQ(std::memcmp(__RegBrngs + 4, __RegBrngs + 276, sizeof(BrngRecord)), 0);
}

TEST(Registry, RefusesWhatIsNotThere) {
    for (const int brng : {279, 0x100001, 0x400001, 0x500000 + 273, 0x900000 + 1024,
                           firstRegistered + 0x100000, 0x7FFFFFFF}) {
        BrngProperties props;
        std::memcpy(&props, &counter, sizeof props);
        StreamState dummy;
        StreamState* stream = &dummy;
        EXPECT_EQ(__kesGetBrngProperties(brng, &props), KesStatusInvalidBrng);
        EXPECT_EQ(std::memcmp(&props, &counter, sizeof props), 0);
        EXPECT_EQ(__kesNewStreamEx(&stream, brng, 0, nullptr), KesStatusInvalidBrng);
        EXPECT_EQ(stream, &dummy);
    }
    for (const int brng : {KesBrngiAbstract, KesBrngdAbstract, KesBrngsAbstract}) {
        StreamState* stream = nullptr;
        EXPECT_EQ(__kesNewStreamEx(&stream, brng, 0, nullptr), KesStatusInvalidBrng);
    }
}

TEST(Registry, RefusesPropertiesInOrder) {
    BrngProperties props = {-1, 0, 0, 3, 0, nullptr, nullptr, nullptr, nullptr};
    EXPECT_EQ(__kesRegisterBrng(&props), KesStatusBadStateSize);
    props.StateSize = 0;
    EXPECT_EQ(__kesRegisterBrng(&props), KesStatusBadWordSize);
    props.WordSize = 16;
    EXPECT_EQ(__kesRegisterBrng(&props), KesStatusBadSeedCount);
    props.SeedCount = 1;
    EXPECT_EQ(__kesRegisterBrng(&props), KesStatusBadBitCount);
    BrngProperties incomplete[] = {counter, counter, counter, counter};
    incomplete[0].dBRng = nullptr;
    incomplete[1].sBRng = nullptr;
    incomplete[2].iBRng = nullptr;
    incomplete[3].InitStream = nullptr;
    for (const BrngProperties& row : incomplete)
        EXPECT_EQ(__kesRegisterBrng(&row), KesStatusNullPointer);
    EXPECT_EQ(__kesGetNumRegBrngs(), 12);
}

/// Registrations last as long as the program: this is the only test that makes one.
TEST(Registry, TakesGeneratorsOfCallers) {
    StreamState* made = nullptr;
    EXPECT_EQ(__kesNewStreamEx(&made, firstRegistered, 0, nullptr),
              KesStatusInvalidBrng);
    ASSERT_EQ(__kesRegisterBrng(&counter), firstRegistered);
    EXPECT_EQ(__kesGetNumRegBrngs(), 13);
    EXPECT_EQ(__kesNewStreamEx(&made, firstRegistered + 1, 0, nullptr),
              KesStatusInvalidBrng);

    const Stream stream = newStream(firstRegistered, {40});
    EXPECT_EQ(take<uint32_t>(stream, 3), (Words{40, 41, 42}));
    double x;
    float y;
    EXPECT_EQ(draw(stream, 1, &y), 11);
    EXPECT_EQ(draw(stream, 1, &x), 12);
    EXPECT_EQ(__kesLeapfrogStream(stream.get(), 0, 2), KesStatusBadMethod);

    // A refused seed leaves a stream behind, for the caller to delete.
    EXPECT_EQ(__kesNewStreamEx(&made, firstRegistered, 0, nullptr),
              KesStatusBadArgument);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(__kesDeleteStream(&made), KesStatusOk);
    EXPECT_EQ(made, nullptr);
}

TEST(Stream, HeaderOfANewOne) {
    const Stream stream = newStream(3, {5});
    EXPECT_EQ(__kesGetStreamStateBrng(stream.get()), 3);
    EXPECT_EQ(stream->Flag, 1);
    EXPECT_EQ(stream->Chunks, 0);
}

TEST(Stream, StateCopyTellsRowsNotNumberings) {
    const Stream first = newStream(0, {5}), current = newStream(KesBrngMCG31M1, {6});
    const Stream other = newStream(KesBrngMCG59, {7});
    EXPECT_EQ(__kesCopyStreamState(current.get(), current.get()), KesStatusOk);
    EXPECT_EQ(__kesCopyStreamState(current.get(), first.get()), KesBrngMCG31M1);
    EXPECT_EQ(current->BrngId, KesBrngMCG31M1);
    EXPECT_EQ(take<uint32_t>(current, 1)[0], 5u);
    // The destination's identifier: that of the first numbering is 0 here.
    EXPECT_EQ(__kesCopyStreamState(first.get(), current.get()), 0);
    // Refused, and yet four bytes of the state have been overwritten.
    EXPECT_EQ(__kesCopyStreamState(other.get(), first.get()),
              KesStatusBrngsIncompatible);
    EXPECT_EQ(take<uint32_t>(other, 1)[0], take<uint32_t>(first, 1)[0]);
}

TEST(Stream, WordsThatNoSeedLeadsToAreUnsigned) {
    const auto firstOf = [](int brng) {
        const Stream source = newStream(KesBrngMCG59, {0xF0000000, 5});
        const Stream stream = newStream(brng, {});
        EXPECT_EQ(__kesCopyStreamState(stream.get(), source.get()),
                  KesStatusBrngsIncompatible);
        const double first = take<double>(copyOf(stream), 1)[0];
        return std::pair(first, take<float>(stream, 1)[0]);
    };
    const auto mcg = firstOf(KesBrngMCG31M1), wh = firstOf(KesBrngWH);
    EXPECT_DOUBLE_EQ(mcg.first, 1.8750000008731149);
    EXPECT_EQ(mcg.second, 1.875f);
    EXPECT_DOUBLE_EQ(wh.first, 0.094007523979503099);
    EXPECT_FLOAT_EQ(wh.second, 0.0940075240f);
}

TEST(Stream, ChunksAreAListWithTheNewestFirst) {
    const Stream stream = newStream(KesBrngMCG31M1, {});
    void* const blocks[3] = {std::malloc(8), std::malloc(16), std::malloc(8)};
    EXPECT_EQ(__kesAddChunk(stream.get(), 1, blocks[0], 8), KesStatusOk);
    EXPECT_EQ(__kesAddChunk(stream.get(), 2, blocks[1], 16), KesStatusOk);
    EXPECT_EQ(__kesAddChunk(stream.get(), 1, blocks[2], 8), KesStatusOk);
    EXPECT_EQ(__kesAddChunk(stream.get(), 4, nullptr, 0), KesStatusOk);
    EXPECT_EQ(__kesGetNumChunks(stream.get()), 4);
    EXPECT_EQ(__kesSearchChunk(stream.get(), 1), blocks[2]);
    EXPECT_EQ(__kesSearchChunk(stream.get(), 2), blocks[1]);
    EXPECT_EQ(__kesSearchChunk(stream.get(), 3), nullptr);

    const auto* head =
        reinterpret_cast<const Chunk*>(static_cast<intptr_t>(stream->Chunks));
    EXPECT_EQ(stream->Chunks, int64_t{reinterpret_cast<intptr_t>(head)});
    EXPECT_EQ(head->id, 4);
    EXPECT_EQ(head->next->size, 8);

    // A copy has the same list, not one of its own.
    const Stream copy = copyOf(stream);
    EXPECT_EQ(copy->Chunks, stream->Chunks);
    copy->Chunks = 0;

    __kesDeleteChunks(stream.get());
    EXPECT_EQ(stream->Chunks, 0);
    EXPECT_EQ(__kesGetNumChunks(stream.get()), 0);
}

} // namespace
