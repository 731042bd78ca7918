// The registry: a table for each numbering of the generators, and the way from an
// identifier to a row.
#include <kes_sub_kernel/iabstract/iabstract.hpp>

using namespace qorkes;

namespace {

#define ROW(name, stateSize, seedCount, hasZero, wordSize, bitCount)                   \
    {                                                                                  \
        stateSize, seedCount, hasZero, wordSize, bitCount,                             \
            __kesBRng##name##InitStream, __kessBRng##name, __kesdBRng##name,           \
            __kesiBRng##name                                                           \
    }

/// The bytes of a stream whose state holds pointers.
template <class State> constexpr int sizeWith = sizeof(StreamState) + sizeof(State);

// State size, seed count, zero delivered, bytes and bits of a word.
// clang-format off
// 0x100000, 0 in the first numbering
constexpr BrngRecord rowMCG31M1 = ROW(MCG31M1, 24, 1, 0, 4, 31);
// 0x200000, 1
constexpr BrngRecord rowR250 = ROW(R250, 1024, 252, 1, 4, 32);
// 0x300000, 2
constexpr BrngRecord rowMRG32K3A = ROW(MRG32K3A, 40, 6, 1, 4, 32);
// 0x400000, 3
constexpr BrngRecord rowMCG59 = ROW(MCG59, 32, 1, 0, 8, 59);
// 0x500000 and the 272 after it, 4 to 276
constexpr BrngRecord rowWH = ROW(WH, 48, 4, 1, 16, 24);
// 0x600000, 277
constexpr BrngRecord rowSobol = ROW(Sobol, 5472, 1324, 0, 4, 32);
// 0x700000, 278
constexpr BrngRecord rowNiederr = ROW(Niederr, 43280, 10498, 0, 4, 32);
// 0x800000
constexpr BrngRecord rowMT19937 = ROW(MT19937, 2516, 625, 1, 4, 32);
// 0x900000 and the 1023 after it
constexpr BrngRecord rowMT2203 = ROW(MT2203, 308, 70, 1, 4, 32);
// 0xa00000
constexpr BrngRecord rowiAbstract = ROW(iAbstract, sizeWith<IntegerAbstractState>, 0, 1, 4, 32);
// 0xb00000
constexpr BrngRecord rowdAbstract = ROW(dAbstract, sizeWith<RealAbstractState<double>>, 0, 1, 4, 32);
// 0xc00000
constexpr BrngRecord rowsAbstract = ROW(sAbstract, sizeWith<RealAbstractState<float>>, 0, 1, 4, 32);
// clang-format on

constexpr int firstNewIdentifier = 0x100000;
constexpr int identifierShift = 20;
constexpr int memberMask = firstNewIdentifier - 1;

constexpr int rowOfWH = 4;

constexpr int NRegBrngs = 279;
int NRegBrngsNew = 12;

/// Members of each family; 0 behind the last row.
int NumOffsets[KesBrngTableRows] = {1, 1, 1, 1, KesWHMembers, 1, 1, 1, KesMt2203Members,
                                    1, 1, 1};

int checkProperties(const BrngProperties& props) {
    // The count of the first numbering, which never changes: registrations are not
    // counted here, and the table of the current numbering can run over.
    if (NRegBrngs >= KesBrngTableRows) return KesStatusBrngTableFull;
    if (props.StateSize < 0) return KesStatusBadStateSize;
    if (props.WordSize != 4 && props.WordSize != 8 && props.WordSize != 16)
        return KesStatusBadWordSize;
    if (props.SeedCount < 1) return KesStatusBadSeedCount;
    if (props.BitCount < 1) return KesStatusBadBitCount;
    if (!props.dBRng || !props.sBRng || !props.iBRng || !props.InitStream)
        return KesStatusNullPointer;
    return KesStatusOk;
}

} // namespace

#define TIMES4(x)  x, x, x, x
#define TIMES16(x) TIMES4(x), TIMES4(x), TIMES4(x), TIMES4(x)
#define TIMES64(x) TIMES16(x), TIMES16(x), TIMES16(x), TIMES16(x)

static_assert(KesWHMembers == 4 * 64 + 16 + 1);

constinit const BrngRecord __RegBrngs[KesBrngTableRows] = {
    rowMCG31M1,     rowR250,        rowMRG32K3A,    rowMCG59,
    TIMES64(rowWH), TIMES64(rowWH), TIMES64(rowWH), TIMES64(rowWH),
    TIMES16(rowWH), rowWH,          rowSobol,       rowNiederr};

constinit BrngRecord __RegBrngsNew[KesBrngTableRows] = {
    rowMCG31M1, rowR250,    rowMRG32K3A, rowMCG59,     rowWH,        rowSobol,
    rowNiederr, rowMT19937, rowMT2203,   rowiAbstract, rowdAbstract, rowsAbstract};

const BrngRecord* __kesGetBrngBaseOffset(int brng, int* row, int* offset) {
    if (brng >= firstNewIdentifier) {
        *row = (brng >> identifierShift) - 1;
        *offset = brng & memberMask;
        return __RegBrngsNew;
    }
    const bool isWH = brng >= rowOfWH && brng < rowOfWH + KesWHMembers;
    *row = isWH ? rowOfWH : brng;
    *offset = isWH ? brng - rowOfWH : 0;
    return __RegBrngs;
}

int __kesIsBrngValid(const BrngRecord* table, int row, int offset) {
    const bool isNumbered = table == __RegBrngs
                                ? row < NRegBrngs
                                : row < NRegBrngsNew && offset < NumOffsets[row];
    return isNumbered ? KesStatusOk : KesStatusInvalidBrng;
}

int __kesGetBrngProperties(int brng, BrngProperties* props) {
    int row, offset;
    const BrngRecord* table = __kesGetBrngBaseOffset(brng, &row, &offset);
    const int status = __kesIsBrngValid(table, row, offset);
    if (status >= 0) *props = table[row];
    return status;
}

int __kesGetNumRegBrngs(void) { return NRegBrngsNew; }

int __kesRegisterBrng(const BrngProperties* props) {
    const int status = checkProperties(*props);
    if (status < 0) return status;
    const int row = NRegBrngsNew;
    __RegBrngsNew[row] = *props;
    NumOffsets[row] = 1;
    NRegBrngsNew = row + 1;
    return (row + 1) << identifierShift;
}
