#pragma once

#include <string>

namespace TKL {

/// Local 8-bit encoding to wide characters. The local encoding of this platform is UTF-8.
/// @throws Exception "Cannot create wide string from Ansi (local encoding) string."
std::wstring ANSIToWstring(const std::string& text, bool useThreadCodePage = false);

/// UTF-8 to wide characters, strict: no overlong forms, no surrogates, nothing above U+10FFFF.
/// @throws Exception "Cannot create wide string from UTF8 string."
std::wstring UTF8ToWstring(const std::string& text);

/// Wide characters to UTF-8.
/// @throws Exception "Cannot create UTF8 string from wide string."
std::string WstringToUTF8(const std::wstring& text);

/// Wide characters to the local 8-bit encoding.
/// @throws std::logic_error if a character has no such form
std::string WstringToANSI(const std::wstring& text, bool useThreadCodePage = false);

}  // namespace TKL
