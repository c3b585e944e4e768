#include "project/VelInitialCond.h"

#include "project/ConditionReader.h"

namespace VELMORA {

void VelInitialCond::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelInitialCond::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "TYPE") {
      condition = readEnumerator<condition_t>("VelInitialCond::condition_t", line.value);
    } else if (line.keyword == "NAME") {
      name = line.value;
    } else if (line.keyword == "REFERENCED_NAME") {
      referencedName = line.value;
    } else if (line.keyword == "VALUE") {
      readParameter(line, value, FUNC_ID);
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

}  // namespace VELMORA
