#include "project/VelSaltSettings.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

void VelSaltSettings::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelSaltSettings::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "SALT_DATABASE") {
      saltDatabase = TKL::Path(line.value);
    } else if (line.keyword == "SALT_SPECIES_IDS") {
      saltSpeciesIds = line.value;
    } else if (line.keyword == "USE_EXTRA_SALT_OUTPUT") {
      useExtraSaltOutput = isYes(line.value);
    } else if (line.keyword == "USE_DENSITY") {
      useDensity = isYes(line.value);
    } else if (line.keyword == "FLOW_RESISTANCE_FACTOR") {
      if (!TKL::tryString2val(line.value, flowResistanceFactor))
        throw TKL::Exception(TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!")
                                 .arg(quotedText(line.value))
                                 .arg(line.keyword),
                             FUNC_ID);
    } else if (line.keyword == "USE_OVERSATURATION") {
      useOversaturation = isYes(line.value);
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

}  // namespace VELMORA
