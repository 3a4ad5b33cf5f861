#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

#include <algorithm>
#include <limits>

#include "archive/inflater.h"

namespace tarvo {
namespace {

std::uint32_t CountOf(std::size_t size) {
  return static_cast<std::uint32_t>(
      std::min<std::size_t>(size, std::numeric_limits<std::uint32_t>::max()));
}

// ISA-L takes unsigned pointers that it does not write through.
std::uint8_t* BytesOf(std::string_view bytes) {
  return reinterpret_cast<std::uint8_t*>(const_cast<char*>(bytes.data()));
}

}  // namespace

struct Inflater::State {
  State() {
    ::isal_inflate_init(&stream);
    stream.crc_flag = ISAL_DEFLATE;  // deflated bytes without a header
  }

  // Bytes that were taken from the input and whose bits have not been used.
  std::uint64_t Unused() const { return static_cast<std::uint64_t>(stream.read_in_length) / 8; }

  inflate_state stream;
  std::uint64_t taken = 0;
};

Inflater::Inflater() : state_(std::make_unique<State>()) {}
Inflater::~Inflater() = default;

void Inflater::Restart() {
  ::isal_inflate_reset(&state_->stream);
  state_->taken = 0;
}

Inflater::Step Inflater::Run(std::string_view input, std::span<char> output) {
  inflate_state& stream = state_->stream;
  stream.next_in = BytesOf(input);
  stream.avail_in = CountOf(input.size());
  stream.next_out = reinterpret_cast<std::uint8_t*>(output.data());
  stream.avail_out = CountOf(output.size());
  const std::uint32_t in = stream.avail_in;
  const std::uint32_t out = stream.avail_out;
  const int result = ::isal_inflate(&stream);
  state_->taken += in - stream.avail_in;
  const bool hasEnded = stream.block_state == ISAL_BLOCK_FINISH;
  // ISAL_END_INPUT and ISAL_OUT_OVERFLOW only say what is needed to go on.
  return {state_->taken - (hasEnded ? state_->Unused() : 0), out - stream.avail_out, hasEnded,
          result < 0};
}

std::uint32_t Crc32(std::uint32_t before, std::string_view bytes) {
  return ::crc32_gzip_refl(before, reinterpret_cast<const unsigned char*>(bytes.data()),
                           bytes.size());
}

}  // namespace tarvo
