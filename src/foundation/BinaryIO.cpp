#include "foundation/BinaryIO.h"

#include <algorithm>
#include <bit>
#include <istream>
#include <ostream>

#include "foundation/Exception.h"

namespace TKL {

namespace {

static_assert(std::endian::native == std::endian::little, "binary files are little-endian");

/// Elements read at a time: memory grows with what is there, not with the number that a file claims.
constexpr std::size_t CHUNK = 65536;

template <typename Container>
void readBinary(std::istream& stream, Container& target, std::uint32_t maxSize, const char* tooLong,
                const char* functionId) {
  using Value = typename Container::value_type;
  const auto readBytes = [&](void* bytes, std::size_t count) {
    if (!stream.read(static_cast<char*>(bytes), static_cast<std::streamsize>(count))) {
      throw Exception("Error reading from input stream!", functionId);
    }
  };
  std::uint32_t size = 0;
  readBytes(&size, sizeof(size));
  if (size > maxSize) {
    throw Exception(tooLong, functionId);
  }
  Container values;
  while (values.size() < size) {
    const std::size_t begin = values.size();
    const std::size_t count = std::min(CHUNK, size - begin);
    values.resize(begin + count);
    readBytes(values.data() + begin, count * sizeof(Value));
  }
  target = std::move(values);
}

template <typename Container>
void writeBinary(std::ostream& stream, const Container& values) {
  const auto size = static_cast<std::uint32_t>(values.size());
  stream.write(reinterpret_cast<const char*>(&size), sizeof(size));
  stream.write(reinterpret_cast<const char*>(values.data()),
               static_cast<std::streamsize>(values.size() * sizeof(typename Container::value_type)));
}

}  // namespace

void read_vector_binary(std::istream& stream, std::vector<double>& values, std::uint32_t maxSize) {
  const char* const FUNC_ID = "[read_vector_binary]";
  readBinary(stream, values, maxSize, "Vector length exceeds given maximum!", FUNC_ID);
}

void read_string_binary(std::istream& stream, std::string& text, std::uint32_t maxSize) {
  const char* const FUNC_ID = "[read_string_binary]";
  readBinary(stream, text, maxSize, "String length exceeds given maximum!", FUNC_ID);
}

void write_vector_binary(std::ostream& stream, const std::vector<double>& values) {
  writeBinary(stream, values);
}

void write_string_binary(std::ostream& stream, const std::string& text) {
  writeBinary(stream, text);
}

}  // namespace TKL
