// Memory for the length of one call.
#pragma once

#include <stdlib.h>

#include "src/support/unique.h"

namespace platform {

// Memory for a record or for bytes; ok() is false when there is none to be had.
template <class T>
class Heap : public Unique<T*, nullptr, free> {
public:
    explicit Heap(size_t count) : Heap::Unique(static_cast<T*>(malloc(count * sizeof(T)))) {}
};

}  // namespace platform
