// The life of a stream: made by the InitStream of its generator's row, copied byte by
// byte, moved on by the same InitStream.
#include <kes_sub_kernel/stream_record.hpp>

#include <cstring>

using namespace qorkes;

namespace {

int callInitStream(int method, StreamState* stream, int n, const uint32_t* params) {
    return rowOf(stream).InitStream(method, stream, n, params);
}

/// The same in both numberings for generators 0 to 3 and WH.
int rowNumberOf(const StreamState* stream) {
    int row, offset;
    __kesGetBrngBaseOffset(stream->BrngId, &row, &offset);
    return row;
}

bool isAbstract(int brng) {
    return brng == KesBrngiAbstract || brng == KesBrngdAbstract ||
           brng == KesBrngsAbstract;
}

} // namespace

int __kesNewStreamEx(StreamState** stream, int brng, int n, const uint32_t* params) {
    if (isAbstract(brng)) return KesStatusInvalidBrng;
    const int status = allocateStream(stream, brng);
    if (status < 0) return status;
    return callInitStream(initialiseMethod, *stream, n, params);
}

int __kesCopyStream(StreamState** newStream, const StreamState* srcStream) {
    const int status = allocateStream(newStream, srcStream->BrngId);
    if (status < 0) return status;
    const auto size = static_cast<std::size_t>(rowOf(srcStream).StateSize);
    std::memcpy(*newStream, srcStream, size);
    return status;
}

int __kesCopyStreamState(StreamState* dstStream, const StreamState* srcStream) {
    if (dstStream == srcStream) return KesStatusOk;
    const BrngRecord& source = rowOf(srcStream);
    const bool isOneKind = rowNumberOf(dstStream) == rowNumberOf(srcStream);
    const int result = isOneKind ? dstStream->BrngId : KesStatusBrngsIncompatible;
    // What the row declares, whatever the result: more than a WH record holds.
    const auto size = static_cast<std::size_t>(source.WordSize * source.SeedCount);
    std::memcpy(dstStream + 1, srcStream + 1, size);
    return result;
}

int __kesLeapfrogStream(StreamState* stream, int k, int nstreams) {
    const auto index = static_cast<uint32_t>(k);
    return callInitStream(leapfrogMethod, stream, nstreams, &index);
}

int __kesSkipAheadStream(StreamState* stream, int nskip) {
    return callInitStream(skipAheadMethod, stream, nskip, nullptr);
}

int __kesGetStreamStateBrng(const StreamState* stream) { return stream->BrngId; }
