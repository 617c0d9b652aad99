#include "support/failing_allocation.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool next_fails = false;

}  // namespace

// In place of the library's own, for the whole test program.
void* operator new(std::size_t size) {
    void* const memory = next_fails ? nullptr : std::malloc(size != 0 ? size : 1);
    next_fails = false;
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace tidemark {

FailingAllocation::FailingAllocation() {
    next_fails = true;
}

FailingAllocation::~FailingAllocation() {
    next_fails = false;
}

bool FailingAllocation::Failed() {
    return !next_fails;
}

}  // namespace tidemark
