// Memory of a stream: the record itself, and the list of chunks that hangs on it.
#include <kes_sub_kernel/stream_record.hpp>

#include <cstdlib>

using namespace qorkes;

namespace {

void setHead(StreamState* stream, Chunk* head) {
    stream->Chunks = reinterpret_cast<intptr_t>(head);
}

} // namespace

int __kesAllocateStream(StreamState** stream, const BrngRecord* table, int brng,
                        int row, int offset) {
    const int status = __kesIsBrngValid(table, row, offset);
    if (status < 0) return status;
    const auto size = static_cast<std::size_t>(table[row].StateSize);
    auto* record = static_cast<StreamState*>(std::malloc(size));
    *stream = record;
    if (!record) return KesStatusNoMemory;
    record->BrngId = brng;
    setHead(record, nullptr);
    record->Flag = 1;
    return KesStatusOk;
}

int __kesDeleteStream(StreamState** stream) {
    __kesDeleteChunks(*stream);
    std::free(*stream);
    *stream = nullptr;
    return KesStatusOk;
}

int __kesAddChunk(StreamState* stream, int id, void* data, int size) {
    auto* chunk = static_cast<Chunk*>(std::malloc(sizeof(Chunk)));
    if (!chunk) return KesStatusNoMemory;
    *chunk = {id, size, data, headOf(stream)};
    setHead(stream, chunk);
    return KesStatusOk;
}

void* __kesSearchChunk(const StreamState* stream, int id) {
    for (const Chunk* chunk = headOf(stream); chunk; chunk = chunk->next)
        if (chunk->id == id) return chunk->data;
    return nullptr;
}

int __kesGetNumChunks(const StreamState* stream) {
    int count = 0;
    for (const Chunk* chunk = headOf(stream); chunk; chunk = chunk->next) ++count;
    return count;
}

void __kesDeleteChunks(StreamState* stream) {
    for (Chunk* chunk = headOf(stream); chunk;) {
        Chunk* next = chunk->next;
        std::free(chunk->data);
        std::free(chunk);
        chunk = next;
    }
    setHead(stream, nullptr);
}
