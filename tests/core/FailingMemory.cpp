#include "tests/core/FailingMemory.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr long kUnlimited = std::numeric_limits<long>::max();
thread_local long left = kUnlimited;
thread_local bool failed = false;

void* Allocate(std::size_t size) {
    if (left <= 0) {
        failed = true;
        return nullptr;
    }
    if (left != kUnlimited) --left;
    return std::malloc(size > 0 ? size : 1);
}

}  // namespace

FailingMemory::FailingMemory(long granted) {
    left = granted;
    failed = false;
}

FailingMemory::~FailingMemory() { left = kUnlimited; }

bool FailingMemory::HasFailed() const { return failed; }

void* operator new(std::size_t size) {
    if (void* block = Allocate(size)) return block;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }
