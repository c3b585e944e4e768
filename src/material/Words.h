#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace MM {

/// The words of a text that is separated by blanks, tabs and carriage returns.
std::vector<std::string> splitWords(std::string_view text);

/// True where `word` stands in `text` with no letter, digit or underscore beside it.
bool containsWord(std::string_view text, std::string_view word);

}  // namespace MM
