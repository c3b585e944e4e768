#include "foundation/Encoding.h"

#include <cstdint>
#include <stdexcept>

#include "foundation/Exception.h"

namespace TKL {

namespace {

static_assert(sizeof(wchar_t) == 4, "a wide character holds a whole code point");

constexpr std::uint32_t LAST_CODE_POINT = 0x10FFFF;

bool isSurrogate(std::uint32_t code) {
  return code >= 0xD800 && code <= 0xDFFF;
}

/// Number of bytes that a code point takes; 0 above the last one.
std::size_t encodedLength(std::uint32_t code) {
  if (code > LAST_CODE_POINT) {
    return 0;
  }
  return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

/// Decodes the character at `position` and moves behind it; false for a malformed one.
bool decode(const std::string& text, std::size_t& position, std::uint32_t& code) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned int lead = byteAt(position);
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (length == 0 || length > text.size() - position || lead > 0xF4) {
    return false;
  }
  code = length == 1 ? lead : lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned int next = byteAt(position + i);
    if ((next & 0xC0U) != 0x80U) {
      return false;
    }
    code = (code << 6U) | (next & 0x3FU);
  }
  position += length;
  return encodedLength(code) == length && !isSurrogate(code);
}

bool decodeAll(const std::string& text, std::wstring& wide) {
  wide.reserve(text.size());
  std::size_t position = 0;
  while (position < text.size()) {
    std::uint32_t code = 0;
    if (!decode(text, position, code)) {
      return false;
    }
    wide.push_back(static_cast<wchar_t>(code));
  }
  return true;
}

/// First pass: the number of bytes needed; false for a number that is no code point.
bool measure(const std::wstring& text, std::size_t& length) {
  length = 0;
  for (const wchar_t character : text) {
    const std::size_t bytes = encodedLength(static_cast<std::uint32_t>(character));
    if (bytes == 0) {
      return false;
    }
    length += bytes;
  }
  return true;
}

/// Second pass: the bytes; false for a surrogate, which is no character.
bool encode(const std::wstring& text, std::string& bytes) {
  for (const wchar_t character : text) {
    const auto code = static_cast<std::uint32_t>(character);
    if (isSurrogate(code)) {
      return false;
    }
    const std::size_t length = encodedLength(code);
    if (length == 1) {
      bytes.push_back(static_cast<char>(code));
      continue;
    }
    const std::uint32_t marks[] = {0, 0, 0xC0, 0xE0, 0xF0};
    bytes.push_back(static_cast<char>(marks[length] | (code >> (6 * (length - 1)))));
    for (std::size_t i = length - 1; i > 0; --i) {
      bytes.push_back(static_cast<char>(0x80U | ((code >> (6 * (i - 1))) & 0x3FU)));
    }
  }
  return true;
}

}  // namespace

std::wstring ANSIToWstring(const std::string& text, bool /*useThreadCodePage*/) {
  const char* const FUNC_ID = "[TKL::ANSIToWstring]";
  std::wstring wide;
  if (!decodeAll(text, wide)) {
    throw Exception("Cannot create wide string from Ansi (local encoding) string.", FUNC_ID);
  }
  return wide;
}

std::wstring UTF8ToWstring(const std::string& text) {
  const char* const FUNC_ID = "[TKL::UTF8ToWstring]";
  std::wstring wide;
  if (!decodeAll(text, wide)) {
    throw Exception("Cannot create wide string from UTF8 string.", FUNC_ID);
  }
  return wide;
}

std::string WstringToUTF8(const std::wstring& text) {
  const char* const FUNC_ID = "[TKL::WstringToUTF8]";
  std::size_t length = 0;
  std::string bytes;
  if (!measure(text, length) || (bytes.reserve(length), !encode(text, bytes))) {
    throw Exception("Cannot create UTF8 string from wide string.", FUNC_ID);
  }
  return bytes;
}

std::string WstringToANSI(const std::wstring& text, bool /*useThreadCodePage*/) {
  std::size_t length = 0;
  if (!measure(text, length)) {
    throw std::logic_error("Cannot create wide string from UTF8 string.");
  }
  std::string bytes;
  bytes.reserve(length);
  if (!encode(text, bytes)) {
    throw std::logic_error("Cannot create  UTF8 string from wide string.");
  }
  return bytes;
}

}  // namespace TKL
