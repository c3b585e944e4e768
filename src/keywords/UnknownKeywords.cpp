#include "keywords/UnknownKeywords.h"

namespace VELMORA {

UnknownKeywords& unknownKeywords() {
  static UnknownKeywords record;
  return record;
}

}  // namespace VELMORA
