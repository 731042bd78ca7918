// Arrays placed against inaccessible pages: a read or write outside of them ends the
// program.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>

namespace qorkes::test {

/// Memory between two inaccessible pages, for one array at a time.
class GuardedMemory {
public:
    explicit GuardedMemory(std::size_t bytes) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        size_ = (bytes + page - 1) / page * page;
        mappedSize_ = size_ + 2 * page;
        void* map =
            mmap(nullptr, mappedSize_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (map == MAP_FAILED) std::abort();
        map_ = static_cast<char*>(map);
        if (mprotect(map_ + page, size_, PROT_READ | PROT_WRITE) != 0) std::abort();
        memory_ = map_ + page;
    }
    ~GuardedMemory() { munmap(map_, mappedSize_); }
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    /// An array that starts `offset` bytes behind the page below.
    template <class T> T* atStart(std::size_t offset = 0) {
        return reinterpret_cast<T*>(memory_ + offset);
    }

    /// An array of n elements that ends `offset` bytes before the page above. Offsets
    /// below the size of an element unalign it and still catch the first access beyond.
    template <class T> T* atEnd(std::size_t n, std::size_t offset = 0) {
        return reinterpret_cast<T*>(memory_ + size_ - offset - n * sizeof(T));
    }

private:
    char* map_;
    char* memory_;
    std::size_t size_;
    std::size_t mappedSize_;
};

} // namespace qorkes::test
