#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace TKL {

/// The characters that `trim` cuts by default. The line feed is not one of them.
inline constexpr std::string_view TRIM_CHARS = " \t\r";

/// Converts a text as the extraction operator of a stream in the C locale does: leading white space is
/// skipped, text behind the value ignored, "-1" read as unsigned wraps. For floating point types the exact
/// text "1.#QNAN" is not-a-number. Available for int, long, long long, their unsigned forms, float, double
/// and std::string (one word).
/// @throws Exception "Could not convert '%1' into value."
template <typename T>
T string2val(const std::string& text);

/// As `string2val`, without an exception: false if the text cannot be converted; `value` is then unchanged.
template <typename T>
[[nodiscard]] bool tryString2val(const std::string& text, T& value);

/// Text of a value as a stream writes it by default: six significant digits. Not-a-number is "1.#QNAN".
std::string val2string(double value);
std::string val2string(int value);
std::string val2string(unsigned int value);
std::string val2string(long value);
std::string val2string(unsigned long value);
std::string val2string(long long value);
std::string val2string(unsigned long long value);

/// Text of a number with a chosen format: 'g', 'f' (fixed), 'e' or 'E' (scientific); precision < 0 is 6.
std::string val2string(double value, char format, int precision);

/// Reads numbers separated by white space until none can be read, and appends them to `values`.
/// Available for int, unsigned int and double.
template <typename T>
void string2valueVector(const std::string& text, std::vector<T>& values);

/// Cuts the characters of `chars` from both ends.
void trim(std::string& text, std::string_view chars = TRIM_CHARS);
[[nodiscard]] std::string trim_copy(std::string_view text, std::string_view chars = TRIM_CHARS);

/// ASCII letters only; other bytes stay.
[[nodiscard]] std::string to_lower(std::string text);
[[nodiscard]] std::string to_upper(std::string text);

/// Fills a text up to |width| characters: right-aligned for a positive, left-aligned for a negative width.
[[nodiscard]] std::string pad_text(std::string text, int width, char fill = ' ');

/// Equality without regard to case.
[[nodiscard]] bool string_nocase_compare(std::string_view a, std::string_view b);

/// Position of the first occurrence without regard to case; -1 for an empty text or without a match, 0 for an
/// empty pattern.
[[nodiscard]] int string_nocase_find(std::string_view text, std::string_view pattern);

/// Splits a line at its first "=" into two trimmed parts and returns true. Without "=" `value` receives the
/// whole line as it stands, `keyword` becomes empty, and the result is false.
bool extract_keyword(const std::string& line, std::string& keyword, std::string& value);

/// The line up to its first ";".
[[nodiscard]] std::string remove_comment(std::string line);

/// The line without a leading "[", a trailing "]" and then a trailing "=". Blanks stay.
[[nodiscard]] std::string section_title(std::string line);

/// Collects the lines of the one section with that title. Comments (";") are cut; the section ends at the
/// next bracketed line that is not its own title.
/// @throws Exception "Expected keyword/section title!" for a line in front of any title
void explode_section(const std::string& text, const std::string& title, std::vector<std::string>& lines);

/// Sorts the lines of a text into one block for each title. Blank lines, and lines whose first non-blank
/// character is one of `commentChars`, are left out; the others are stored untrimmed.
/// @throws Exception "Expected section header in first non-empty line:\n'%1'"
void explode_sections(std::istream& input, const std::vector<std::string>& titles,
                      std::vector<std::string>& sections, std::string_view commentChars);
void explode_sections(const std::vector<std::string>& input, const std::vector<std::string>& titles,
                      std::vector<std::vector<std::string>>& sections, std::string_view commentChars);

}  // namespace TKL
