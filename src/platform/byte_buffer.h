#pragma once
// Where a child process's standard output goes. The runner reads straight into the
// space a sink offers, so output is never copied between buffers on its way in.
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tarnbeck {

class OutputSink {
 public:
  virtual ~OutputSink() = default;
  // Space for at least `atLeast` bytes to read into.
  virtual std::span<char> prepare(std::size_t atLeast) = 0;
  // The first n bytes of the last prepared space now hold output.
  virtual void commit(std::size_t n) = 0;
};

// Keeps the whole output in one block. It grows with realloc, which moves large blocks
// by remapping pages rather than copying them, so a run of hundreds of megabytes is held
// once, in place, with little slack.
class ByteBuffer final : public OutputSink {
 public:
  ByteBuffer() = default;
  ~ByteBuffer() override;
  ByteBuffer(const ByteBuffer&) = delete;
  ByteBuffer& operator=(const ByteBuffer&) = delete;
  ByteBuffer(ByteBuffer&& other) noexcept;
  ByteBuffer& operator=(ByteBuffer&& other) noexcept;

  std::span<char> prepare(std::size_t atLeast) override;
  void commit(std::size_t n) override { size_ += n; }

  const char* data() const { return data_; }
  std::size_t size() const { return size_; }
  std::size_t capacity() const { return capacity_; }
  std::string_view view() const { return std::string_view(data_ ? data_ : "", size_); }
  void append(std::string_view bytes);

 private:
  void prefault(std::size_t from);
  char* data_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

// Counts the output and keeps none of it (a reused scratch block).
class CountingSink final : public OutputSink {
 public:
  std::span<char> prepare(std::size_t atLeast) override;
  void commit(std::size_t n) override { count_ += n; }
  std::size_t count() const { return count_; }

 private:
  std::size_t count_ = 0;
  std::string scratch_;
};

}  // namespace tarnbeck
