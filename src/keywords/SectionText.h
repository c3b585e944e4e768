#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Parameter.h"

namespace VELMORA {

/// One line of a project file. Every reader of a section works on such lines, so that a message about bad
/// input can name the line.
struct TextLine {
  std::string text;  ///< trimmed of blanks, tabs and carriage returns
  int number = 0;    ///< line number in the project file, counted from 1; 0 where it is not known
};

/// The data lines of a section, or of a part of one, in file order.
class SectionText {
 public:
  SectionText() = default;
  /// Splits a text at its line feeds and trims each line; lines are numbered from `firstNumber`.
  explicit SectionText(std::string_view text, int firstNumber = 1);

  void append(TextLine line) { lines_.push_back(std::move(line)); }
  bool empty() const { return lines_.empty(); }
  std::size_t size() const { return lines_.size(); }
  auto begin() const { return lines_.begin(); }
  auto end() const { return lines_.end(); }

 private:
  std::vector<TextLine> lines_;
};

/// A line of the form `KEYWORD = value`, cut and trimmed.
struct KeywordLine {
  std::string keyword;
  std::string value;
  const TextLine* line = nullptr;
};

/// Cuts a line at its first "=".
/// @throws TKL::Exception "Expected keyword, got '%1'!" without "=", "Missing value for keyword '%1'!"
KeywordLine splitKeywordLine(const TextLine& line, const char* functionId);

/// Calls `read` for every line. A `TKL::Exception` that passes through here takes the number of the line
/// along (`TKL::Exception::inputLine`), unless an inner call has set it already.
void forEachLine(const SectionText& text, const std::function<void(const TextLine&)>& read);

/// Calls `read` for every line after `splitKeywordLine`; line numbers as in `forEachLine`.
void forEachKeywordLine(const SectionText& text, const char* functionId,
                        const std::function<void(const KeywordLine&)>& read);

/// Warning "Invalid or deprecated keyword '%1' in this section!" at verbosity 3. Reading goes on.
void warnUnknownKeyword(const KeywordLine& line, const char* functionId);

/// True for `yes` in any case, false for all else.
bool isYes(const std::string& value);

/// Reads "<number> <unit>" into `parameter` under the name of the keyword.
/// @throws TKL::Exception "Invalid parameter value '%1' for keyword '%2'!"
void readParameter(const KeywordLine& line, TKL::Parameter& parameter, const char* functionId);

}  // namespace VELMORA
