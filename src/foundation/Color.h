#pragma once

#include <string>

namespace TKL {

/// A colour of 8-bit components; black unless set.
struct Color {
  unsigned char red = 0;
  unsigned char green = 0;
  unsigned char blue = 0;
  unsigned char alpha = 255;

  /// Colour of a text "#RRGGBB" or "#AARRGGBB", the "#" optional. The alpha digits are read over.
  /// @throws Exception "Invalid colour '%1'!"
  static Color fromHtml(const std::string& text);

  /// As `fromHtml`, into this object; white space around the text is cut.
  void read(const std::string& text);

  /// "#RRGGBB" in lower-case digits.
  std::string toHtml() const;

  bool operator==(const Color&) const = default;
};

}  // namespace TKL
