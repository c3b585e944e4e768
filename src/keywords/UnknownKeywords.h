#pragma once

#include <string>

namespace VELMORA {

/// Keywords that no reader knew since the last reset. The single warnings are seen at a high verbosity only,
/// so the reading of a project closes with one warning made of this.
struct UnknownKeywords {
  int count = 0;
  int firstLine = 0;         ///< line of the first one, counted from 1; 0 where it is not known
  std::string firstKeyword;  ///< empty while there is none
};

/// The record that `warnUnknownKeyword` adds to. Reset it by assigning `UnknownKeywords{}`.
UnknownKeywords& unknownKeywords();

/// Adds a keyword to the record; `line` is its line number, 0 where it is not known.
void noteUnknownKeyword(const std::string& keyword, int line);

}  // namespace VELMORA
