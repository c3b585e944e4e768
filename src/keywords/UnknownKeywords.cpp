#include "keywords/UnknownKeywords.h"

namespace VELMORA {

UnknownKeywords& unknownKeywords() {
  static UnknownKeywords record;
  return record;
}

void noteUnknownKeyword(const std::string& keyword, int line) {
  UnknownKeywords& record = unknownKeywords();
  if (record.count++ > 0) return;
  record.firstKeyword = keyword;
  record.firstLine = line;
}

}  // namespace VELMORA
