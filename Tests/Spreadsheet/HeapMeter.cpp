#include "Spreadsheet/HeapMeter.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> held = 0;
std::atomic<std::size_t> most = 0;

void* counted(void* block) noexcept {
    if (!block) return nullptr;
    const std::size_t now = held += malloc_usable_size(block);
    if (now > most) most = now;
    return block;
}

void* allocate(std::size_t size) noexcept {
    return counted(std::malloc(std::max<std::size_t>(size, 1)));
}

void* allocate(std::size_t size, std::align_val_t alignment) noexcept {
    const auto step = static_cast<std::size_t>(alignment);
    return counted(std::aligned_alloc(step, (std::max<std::size_t>(size, 1) + step - 1) / step * step));
}

void* orThrow(void* block) {
    if (!block) throw std::bad_alloc();
    return block;
}

void release(void* block) noexcept {
    if (!block) return;
    held -= malloc_usable_size(block);
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
    return orThrow(allocate(size));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    return orThrow(allocate(size, alignment));
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocate(size, alignment);
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    release(block);
}

void operator delete(void* block, std::align_val_t) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    release(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    release(block);
}

void operator delete(void* block, std::align_val_t, const std::nothrow_t&) noexcept {
    release(block);
}

namespace quorvel::test {

HeapMeter::HeapMeter() : before_(held) {
    most = before_;
}

std::size_t HeapMeter::peak() const {
    return most - before_;
}

}  // namespace quorvel::test
