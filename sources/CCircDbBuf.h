// A circular buffer of the newest samples whose storage is doubled: every sample is stored twice, a capacity
// apart, so that the valid ones always form one array, oldest first. Appending is constant in time and free
// of allocation; a full buffer overwrites its oldest sample.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <type_traits>
#include <utility>

template <class T>
class CCircDbBuf {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    // Without memory the capacity is 0, and a buffer of capacity 0 takes nothing.
    explicit CCircDbBuf(std::uint32_t capacity) { Allocate(capacity); }
    virtual ~CCircDbBuf() { std::free(static_cast<void*>(buffer)); }
    CCircDbBuf(const CCircDbBuf&) = delete;
    CCircDbBuf& operator=(const CCircDbBuf&) = delete;

    std::uint32_t GetSize() const { return size; }
    std::uint32_t GetCount() const { return count; }
    // The index of the newest sample, and where the next one goes; both below the capacity.
    std::uint32_t GetHead() const { return head; }
    std::uint32_t GetNext() const { return head + 1 == size ? 0 : head + 1; }
    // The storage by index: the first of the two copies.
    const T* GetStorage() const { return buffer; }
    // The oldest sample; GetCount() of them follow one another. Null with a capacity of 0.
    T* GetOldest() const { return buffer ? buffer + GetStart() : nullptr; }
    const T& GetNewest() const { return buffer[head]; }

    // With a capacity above 0 only.
    void Push(const T& sample) {
        head = GetNext();
        buffer[head] = sample;
        buffer[head + std::size_t{size}] = sample;
        if (count < size) ++count;
    }
    // Appends n samples, which fit between GetNext() and the end of the storage.
    template <class Sample>
    void PushRun(const Sample* samples, std::uint32_t n) {
        const std::uint32_t at = GetNext();
        std::copy_n(samples, n, buffer + at);
        std::copy_n(samples, n, buffer + at + std::size_t{size});
        head = at + n - 1;
        count += std::min(n, size - count);
    }
    // Empties the buffer; the storage stays.
    void Clear() {
        count = 0;
        head = size - 1;
    }
    // Keeps the oldest samples that fit. False, and nothing changed, without memory.
    bool Resize(std::uint32_t capacity) {
        CCircDbBuf resized(capacity);
        if (resized.size != capacity) return false;
        const std::uint32_t kept = std::min(capacity, count);
        if (kept > 0) {
            std::copy_n(GetOldest(), kept, resized.buffer);
            std::copy_n(GetOldest(), kept, resized.buffer + capacity);
        }
        std::swap(buffer, resized.buffer);
        size = capacity;
        count = kept;
        head = kept - 1;  // of none: the next sample goes to 0
        return true;
    }

  private:
    void Allocate(std::uint32_t capacity) {
        if (capacity > 0) buffer = static_cast<T*>(std::calloc(2 * std::size_t{capacity}, sizeof(T)));
        size = buffer ? capacity : 0;
        head = size - 1;
    }
    std::uint32_t GetStart() const {
        const std::uint32_t next = GetNext();
        return next >= count ? next - count : next + (size - count);
    }

    std::uint32_t head = 0;
    std::uint32_t size = 0;
    std::uint32_t count = 0;
    T* buffer = nullptr;  // 2 * size, zero at first
};
