#pragma once

#include <string>
#include <string_view>

#include "foundation/Path.h"

namespace VELMORA {

/// Walks over a text line by line without copying it. A carriage return at the end of a line is dropped, and
/// so is a UTF-8 byte order mark in front of the first.
class LineScanner {
 public:
  explicit LineScanner(std::string_view text);

  /// Goes to the next line. @return false at the end of the text
  bool next();
  std::string_view line() const { return line_; }
  /// Number of the line, counted from 1.
  int number() const { return number_; }

 private:
  std::string_view rest_;
  std::string_view line_;
  int number_ = 0;
};

/// White space of the C locale.
inline bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The text without white space at both ends.
std::string_view trimmed(std::string_view text);

/// Takes white space and a 32-bit integer off the front of `text`, as a formatted stream read would. A
/// character `blank` counts as white space too.
/// @return false if there is none or it is too large
bool takeInteger(std::string_view& text, int& value, char blank = ' ');

/// Takes white space and a number off the front of `text`, as a formatted stream read would. A character
/// `blank` counts as white space too.
/// @return false if there is none or it is too large
bool takeNumber(std::string_view& text, double& value, char blank = ' ');

/// Reads a whole file. @return false if the path is no file that can be read
bool readWholeFile(const TKL::Path& path, std::string& content);

}  // namespace VELMORA
