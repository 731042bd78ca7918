// A word that every thread has for itself: created with its initial value on the first
// access from a thread, freed when the thread ends.
#pragma once

#include <cstdlib>
#include <pthread.h>

namespace qorkes {

/// One cell. `allocKey` has to create `key` with `free` behind it; the once-flag sees
/// to it that the first caller alone does so.
template <class T> struct ThreadCell {
    pthread_key_t* key;
    pthread_once_t* once;
    void (*allocKey)();
    T initial;
};

/// Every cell has the size of its largest possible content.
constexpr std::size_t threadCellSize = 8;

/// The calling thread's copy of a cell, or null if it could not be allocated.
template <class T> T* accessCell(const ThreadCell<T>& cell) {
    static_assert(sizeof(T) <= threadCellSize);
    pthread_once(cell.once, cell.allocKey);
    if (void* block = pthread_getspecific(*cell.key)) return static_cast<T*>(block);
    T* block = static_cast<T*>(std::malloc(threadCellSize));
    if (block == nullptr) return nullptr;
    *block = cell.initial;
    pthread_setspecific(*cell.key, block);
    return block;
}

} // namespace qorkes
