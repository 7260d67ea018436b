#include "tests/ioshare/counted_allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> allocations = 0;

}  // namespace

long counted_allocations() { return allocations; }

void* operator new(std::size_t size) {
    ++allocations;
    void* const place = std::malloc(size ? size : 1);
    if (!place) throw std::bad_alloc();
    return place;
}

void operator delete(void* place) noexcept { std::free(place); }

void operator delete(void* place, std::size_t) noexcept { std::free(place); }
