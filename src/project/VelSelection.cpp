#include "project/VelSelection.h"

#include <locale>
#include <sstream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

VelSelection::Range readRange(const std::string& value, const char* functionId) {
  std::istringstream stream(value);
  stream.imbue(std::locale::classic());
  VelSelection::Range range;
  if (!(stream >> range.left >> range.top >> range.right >> range.bottom)) {
    throw TKL::Exception(
        TKL::FormatString("Error reading selection range from string '%1'!").arg(quotedText(value)),
        functionId);
  }
  return range;
}

}  // namespace

void VelSelection::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelSelection::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "TYPE") {
      kind = static_cast<assignment_t>(KeywordList::Enumeration("VelSelection::assignment_t", line.value));
    } else if (line.keyword == "RANGE") {
      range = readRange(line.value, FUNC_ID);
      rangeLine = line.line->number;
    } else if (line.keyword == "NAME") {
      name = line.value;
      nameLine = line.line->number;
    } else if (line.keyword == "CONDITION_TYPE") {
      conditionType = line.value;
    } else if (line.keyword == "LOCATION") {
      std::istringstream words(line.value);
      std::string word;
      while (words >> word) {
        location.set(static_cast<std::size_t>(KeywordList::Enumeration("VelSelection::location_t", word)));
      }
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

}  // namespace VELMORA
