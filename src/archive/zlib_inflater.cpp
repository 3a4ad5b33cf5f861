#include <zlib.h>

#include <algorithm>
#include <limits>
#include <new>

#include "archive/inflater.h"

namespace tarvo {
namespace {

// zlib takes unsigned pointers that it does not write through.
Bytef* BytesOf(std::string_view bytes) {
  return reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
}

uInt CountOf(std::size_t size) {
  return static_cast<uInt>(std::min<std::size_t>(size, std::numeric_limits<uInt>::max()));
}

}  // namespace

struct Inflater::State {
  State() {
    // Negative: deflated bytes without a header.
    if (::inflateInit2(&stream, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
  }
  ~State() { ::inflateEnd(&stream); }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  z_stream stream{};
  std::uint64_t taken = 0;
};

Inflater::Inflater() : state_(std::make_unique<State>()) {}
Inflater::~Inflater() = default;

void Inflater::Restart() {
  ::inflateReset(&state_->stream);
  state_->taken = 0;
}

Inflater::Step Inflater::Run(std::string_view input, std::span<char> output) {
  z_stream& stream = state_->stream;
  stream.next_in = BytesOf(input);
  stream.avail_in = CountOf(input.size());
  stream.next_out = reinterpret_cast<Bytef*>(output.data());
  stream.avail_out = CountOf(output.size());
  const uInt in = stream.avail_in;
  const uInt out = stream.avail_out;
  const int result = ::inflate(&stream, Z_NO_FLUSH);
  // Z_BUF_ERROR only says that nothing could be done with what was at hand.
  const bool isDamaged = result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR;
  state_->taken += in - stream.avail_in;
  return {state_->taken, out - stream.avail_out, result == Z_STREAM_END, isDamaged};
}

std::uint32_t Crc32(std::uint32_t before, std::string_view bytes) {
  return static_cast<std::uint32_t>(::crc32_z(before, BytesOf(bytes), bytes.size()));
}

}  // namespace tarvo
