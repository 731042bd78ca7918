// Streams in files. Saving and loading are lines of stages that share one status word:
// a stage does nothing once that is negative, so the first failure is what the caller
// sees and the line has no branches.
#include <kes_sub_kernel/stream_record.hpp>

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace qorkes;

namespace {

/// What a file begins with. The state follows at once, then the chunks, each behind its
/// id and size.
struct FileHeader {
    char magic[3];
    uint8_t version;
    uint16_t headerSize;
    uint16_t stateSize;
    uint16_t chunkCount;
    uint16_t reserved;
    int32_t brng;
};
static_assert(sizeof(FileHeader) == 16);

constexpr char magic[3] = {'R', 'N', 'G'};
constexpr uint8_t version = 0;

uint16_t stateSizeOf(const BrngRecord& row) {
    return static_cast<uint16_t>(row.StateSize - int{sizeof(StreamState)});
}

// ---- Names and files ----------------------------------------------------------------

/// The name itself if it ends in a zero (length below 0), else a copy that does.
void __kesCreateString(int* status, char** string, const char* name, int length) {
    if (*status < 0) return;
    if (length < 0) {
        *string = const_cast<char*>(name);
        return;
    }
    const auto size = static_cast<std::size_t>(length);
    *string = static_cast<char*>(std::malloc(size + 1));
    if (!*string) {
        *status = KesStatusNoMemory;
        return;
    }
    std::memcpy(*string, name, size);
    (*string)[size] = 0;
}

void __kesDeleteString(char* string, int length) {
    if (length >= 0) std::free(string);
}

void openFile(int* status, std::FILE** file, const char* name, const char* mode) {
    if (*status < 0) return;
    *file = std::fopen(name, mode);
    if (!*file) *status = KesStatusFileOpen;
}
void __kesOpenFileToWrite(int* status, std::FILE** file, const char* name) {
    openFile(status, file, name, "wb");
}
void __kesOpenFileToRead(int* status, std::FILE** file, const char* name) {
    openFile(status, file, name, "rb");
}

/// Whatever has happened before.
void __kesCloseFile(int* status, std::FILE* file) {
    if (file && std::fclose(file) != 0) *status = KesStatusFileClose;
}

/// One item. Of no bytes there is none to write or read, which counts as a failure.
void writeItem(int* status, std::FILE* file, const void* item, std::size_t size) {
    if (*status < 0) return;
    if (std::fwrite(item, size, 1, file) != 1) *status = KesStatusFileWrite;
}
void readItem(int* status, std::FILE* file, void* item, std::size_t size) {
    if (*status < 0) return;
    if (std::fread(item, size, 1, file) != 1) *status = KesStatusFileRead;
}

// ---- The header ---------------------------------------------------------------------

void __kesFillInFileHeader(int* status, FileHeader* header, const StreamState* stream) {
    if (*status < 0) return;
    BrngProperties row;
    *status = __kesGetBrngProperties(stream->BrngId, &row);
    if (*status < 0) return;
    std::memcpy(header->magic, magic, sizeof magic);
    header->version = version;
    header->headerSize = sizeof *header;
    header->stateSize = stateSizeOf(row);
    header->chunkCount = static_cast<uint16_t>(__kesGetNumChunks(stream));
    header->brng = stream->BrngId;
}

void __kesWriteFileHeaderToFile(int* status, std::FILE* file,
                                const FileHeader* header) {
    writeItem(status, file, header, sizeof *header);
}
void __kesReadFileHeaderFromFile(int* status, std::FILE* file, FileHeader* header) {
    readItem(status, file, header, sizeof *header);
}

int statusOf(const FileHeader& header) {
    if (std::memcmp(header.magic, magic, sizeof magic) != 0)
        return KesStatusBadFileFormat;
    if (header.version != version) return KesStatusBadFileVersion;
    // The registry does not refuse negative identifiers: its callers have none.
    if (header.brng < 0) return KesStatusBadFileFormat;
    BrngProperties row;
    if (__kesGetBrngProperties(header.brng, &row) < 0) return KesStatusBadFileFormat;
    // In full: a state too large for its field cannot be right.
    if (header.stateSize != row.StateSize - int{sizeof(StreamState)})
        return KesStatusBadFileFormat;
    if (header.headerSize < sizeof header) return KesStatusBadFileFormat;
    return KesStatusOk;
}
void __kesValidateHeader(int* status, const FileHeader* header) {
    if (*status >= 0) *status = statusOf(*header);
}

// ---- The stream ---------------------------------------------------------------------

void __kesCreateStream(int* status, const FileHeader* header, StreamState** stream) {
    if (*status >= 0) *status = allocateStream(stream, header->brng);
}

/// Whatever the caller's variable holds, after any failure.
void __kesDeallocateStream(int* status, StreamState** stream) {
    if (*status < 0 && *stream) __kesDeleteStream(stream);
}

void __kesWriteStreamStateToFile(int* status, std::FILE* file, const FileHeader* header,
                                 const StreamState* stream) {
    writeItem(status, file, stream + 1, header->stateSize);
}
void __kesReadStreamStateFromFile(int* status, std::FILE* file,
                                  const FileHeader* header, StreamState* stream) {
    if (*status < 0) return;
    readItem(status, file, stream + 1, header->stateSize);
}

void __kesWriteChunksToFile(int* status, std::FILE* file, const FileHeader* header,
                            const StreamState* stream) {
    const Chunk* chunk = headOf(stream);
    for (int i = 0; i < header->chunkCount && *status >= 0; ++i, chunk = chunk->next) {
        writeItem(status, file, &chunk->id, sizeof chunk->id);
        writeItem(status, file, &chunk->size, sizeof chunk->size);
        writeItem(status, file, chunk->data, static_cast<std::size_t>(chunk->size));
    }
}

void readChunk(int* status, std::FILE* file, StreamState* stream) {
    int32_t id, size;
    readItem(status, file, &id, sizeof id);
    readItem(status, file, &size, sizeof size);
    if (*status < 0) return;
    void* data = std::malloc(static_cast<std::size_t>(size));
    if (!data) {
        *status = KesStatusNoMemory;
        return;
    }
    readItem(status, file, data, static_cast<std::size_t>(size));
    if (*status >= 0) *status = __kesAddChunk(stream, id, data, size);
    if (*status < 0) std::free(data);
}
void __kesReadChunksFromFile(int* status, std::FILE* file, const FileHeader* header,
                             StreamState* stream) {
    for (int i = 0; i < header->chunkCount && *status >= 0; ++i)
        readChunk(status, file, stream);
}

} // namespace

int __kesSaveStreamF(const StreamState* stream, const char* name, int length) {
    int status = KesStatusOk;
    char* string = nullptr;
    FileHeader header = {};
    std::FILE* file = nullptr;
    __kesCreateString(&status, &string, name, length);
    __kesFillInFileHeader(&status, &header, stream);
    __kesOpenFileToWrite(&status, &file, string);
    __kesWriteFileHeaderToFile(&status, file, &header);
    __kesWriteStreamStateToFile(&status, file, &header, stream);
    __kesWriteChunksToFile(&status, file, &header, stream);
    __kesCloseFile(&status, file);
    __kesDeleteString(string, length);
    return status;
}

int __kesLoadStreamF(StreamState** stream, const char* name) {
    int status = KesStatusOk;
    FileHeader header = {};
    std::FILE* file = nullptr;
    __kesOpenFileToRead(&status, &file, name);
    __kesReadFileHeaderFromFile(&status, file, &header);
    __kesValidateHeader(&status, &header);
    __kesCreateStream(&status, &header, stream);
    __kesReadStreamStateFromFile(&status, file, &header, *stream);
    __kesReadChunksFromFile(&status, file, &header, *stream);
    __kesCloseFile(&status, file);
    __kesDeallocateStream(&status, stream);
    return status;
}
