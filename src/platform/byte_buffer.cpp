#include "platform/byte_buffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include <cstdint>
#include <sys/mman.h>

namespace tarnbeck {

ByteBuffer::~ByteBuffer() { std::free(data_); }

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
  if (this != &other) {
    std::free(data_);
    data_ = std::exchange(other.data_, nullptr);
    size_ = std::exchange(other.size_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
  }
  return *this;
}

void ByteBuffer::prefault(std::size_t from) {
#ifdef MADV_POPULATE_WRITE
  // Fault in the new room in one call rather than a page at a time as reads fill it.
  const std::uintptr_t page = 4096;
  const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(data_) + from + page - 1) & ~(page - 1);
  const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(data_) + capacity_) & ~(page - 1);
  if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
#else
  (void)from;
#endif
}

std::span<char> ByteBuffer::prepare(std::size_t atLeast) {
  if (capacity_ - size_ < atLeast) {
    // Grow by an eighth (at least 1 MiB): large blocks are remapped, not copied, so small
    // steps cost little and keep the slack, and so the peak, near the output's own size.
    std::size_t wanted = size_ + atLeast;
    std::size_t grown = capacity_ + std::max<std::size_t>(capacity_ / 8, std::size_t{1} << 20);
    std::size_t newCapacity = std::max(wanted, grown);
    char* moved = static_cast<char*>(std::realloc(data_, newCapacity));
    if (!moved) throw std::bad_alloc();
    const std::size_t oldCapacity = capacity_;
    data_ = moved;
    capacity_ = newCapacity;
    prefault(oldCapacity);
  }
  return std::span<char>(data_ + size_, capacity_ - size_);
}

void ByteBuffer::append(std::string_view bytes) {
  std::span<char> space = prepare(bytes.size());
  if (!bytes.empty()) std::memcpy(space.data(), bytes.data(), bytes.size());
  commit(bytes.size());
}

std::span<char> CountingSink::prepare(std::size_t atLeast) {
  if (scratch_.size() < atLeast) scratch_.resize(atLeast);
  return std::span<char>(scratch_.data(), scratch_.size());
}

}  // namespace tarnbeck
