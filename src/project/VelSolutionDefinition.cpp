#include "project/VelSolutionDefinition.h"

#include <iterator>
#include <sstream>

#include "foundation/StringUtilities.h"
#include "project/ConditionReader.h"

namespace VELMORA {

void VelSolutionDefinition::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelSolutionDefinition::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "NAME") {
      name = line.value;
    } else if (line.keyword == "CONCENTRATION_TYPE") {
      concentrationType =
          readEnumerator<concentration_t>("VelSolutionDefinition::concentration_t", line.value);
    } else if (line.keyword == "SPECIES_NAMES") {
      std::istringstream stream(line.value);
      speciesNames.assign(std::istream_iterator<std::string>(stream), {});
    } else if (line.keyword == "SPECIES_CONCENTRATIONS") {
      speciesConcentrations.clear();
      TKL::string2valueVector(line.value, speciesConcentrations);
    } else if (line.keyword == "PERCENTAGE") {
      percentage = line.value;
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

}  // namespace VELMORA
