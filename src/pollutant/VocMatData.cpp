#include "pollutant/VocMatData.h"

#include "foundation/QuotedText.h"
#include "pollutant/EntryLines.h"

namespace POLLUTANT_LIB {

bool VocMatData::read(const std::string& entry, std::string& errmsg) {
  const std::string FUNC_ID = "[VocMatData::read]";
  const auto fail = [&](const char* reason) {
    errmsg = FUNC_ID + "  " + reason + " VOC-Material-Data entry: \n  " + TKL::quotedText(entry);
    return false;
  };
  EntryLines lines(entry);
  lines.next();  // ENTITY, without a name of its own
  vocId = lines.next();
  materialId = lines.next();
  if (!lines.readNumber(muFactor)) return fail("Error reading diffusion resistance correction factor in");
  if (!lines.readNumber(partCoeff)) return fail("Error reading partition coefficient in");
  if (vocId.empty() || materialId.empty()) return fail("Missing data in");
  return true;
}

}  // namespace POLLUTANT_LIB
