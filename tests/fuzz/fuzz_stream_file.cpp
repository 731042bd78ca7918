// Stream files: whatever the bytes, loading ends with a stream or a status and loses no
// memory; a loaded stream saves to a file that loads as the same stream. Nothing is
// drawn from it: a state is taken as it stands.
#include "fuzz.hpp"

#include <qorkes/kes.h>

#include <algorithm>
#include <vector>

using namespace qorkes::fuzz;

namespace {

StreamState* loaded(const MemoryFile& file) {
    StreamState* stream = nullptr;
    const int status = __kesLoadStreamF(&stream, file.path().c_str());
    require((status >= 0) == (stream != nullptr), "a stream or a failure");
    return stream;
}

/// Identifiers of the chunks, from the head of the list on.
std::vector<int32_t> chunksOf(const StreamState* stream) {
    std::vector<int32_t> ids;
    const auto* chunk =
        reinterpret_cast<const Chunk*>(static_cast<intptr_t>(stream->Chunks));
    for (; chunk; chunk = chunk->next) ids.push_back(chunk->id);
    return ids;
}

void compare(const StreamState* first, const StreamState* second) {
    BrngProperties row;
    require(__kesGetBrngProperties(first->BrngId, &row) >= 0, "a generator's row");
    const auto size = static_cast<size_t>(row.StateSize) - sizeof(StreamState);
    require(first->BrngId == second->BrngId, "the same generator");
    require(std::memcmp(first + 1, second + 1, size) == 0, "the same state");
    std::vector<int32_t> ids = chunksOf(second);
    std::reverse(ids.begin(), ids.end());
    require(chunksOf(first) == ids, "the same chunks, reversed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const MemoryFile file(Bytes(data, size));
    StreamState* stream = loaded(file);
    if (!stream) return 0;
    const MemoryFile copy;
    if (__kesSaveStreamF(stream, copy.path().c_str(), -1) >= 0) {
        StreamState* again = loaded(copy);
        require(again != nullptr, "a saved stream loads");
        compare(stream, again);
        __kesDeleteStream(&again);
    }
    __kesDeleteStream(&stream);
    return 0;
}
