// Memory for the length of one call.
#pragma once

#include <stdlib.h>

namespace platform {

// Owns memory for a record or for bytes; ok() is false when there is none to be had.
template <class T>
class Heap {
public:
    explicit Heap(size_t count) : memory_(static_cast<T*>(malloc(count * sizeof(T)))) {}
    Heap(const Heap&) = delete;
    Heap& operator=(const Heap&) = delete;
    ~Heap() { free(memory_); }

    bool ok() const { return memory_ != nullptr; }
    T* get() const { return memory_; }

private:
    T* memory_;
};

}  // namespace platform
