#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TKL {

class MultiLanguageString;
class Path;
class Unit;

/// Message builder: "%1" to "%n" stand for the arguments in order of their arrival, "%%" for one "%".
/// Never fails: a placeholder without argument is left as it stands, surplus arguments are ignored.
class FormatString {
 public:
  explicit FormatString(std::string_view pattern);

  /// `fieldWidth` 0 takes the text as it stands; otherwise it is filled up to that width, right-aligned for a
  /// positive and left-aligned for a negative width.
  FormatString& arg(const std::string& text, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(std::string_view text, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(const char* text, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(char character, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(int value, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(unsigned int value, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(long value, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(unsigned long value, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(long long value, int fieldWidth = 0, char fill = ' ');
  FormatString& arg(unsigned long long value, int fieldWidth = 0, char fill = ' ');
  /// Formats 'g' (shortest), 'f' (fixed), 'e' or 'E' (scientific); precision -1 is six digits.
  FormatString& arg(double value, int fieldWidth = 0, char format = 'g', int precision = -1, char fill = ' ');
  /// The text form of the path.
  FormatString& arg(const Path& path);
  /// The name of the unit.
  FormatString& arg(const Unit& unit);
  /// The English text, else the one that is valid for all languages.
  FormatString& arg(const MultiLanguageString& text, int fieldWidth = 0, char fill = ' ');

  /// Renders the pattern with the arguments given so far.
  std::string str() const;

 private:
  /// A literal text, or, where `literal` is empty, the argument with number `argument`.
  struct Token {
    std::string literal;
    std::size_t argument = 0;
    std::string digits;  ///< the number as written, to put it back unchanged
  };

  std::vector<Token> tokens_;
  std::vector<std::string> arguments_;
};

}  // namespace TKL
