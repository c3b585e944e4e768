#include "project/VelWallData.h"

#include "keywords/KeywordList.h"
#include "project/ParameterLimits.h"

namespace VELMORA {

namespace {

constexpr double PI = 3.141592653589793;
constexpr double SECONDS_PER_HOUR = 3600.0;

bool isTime(const TKL::Parameter& parameter) {
  return parameter.IO_unit.base().name() == "s";
}

}  // namespace

void VelWallData::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelWallData::read]";
  const char* const CATEGORY = "VelWallData::para_t";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "NAME") {
      name = line.value;
    } else if (KeywordList::KeywordExists(CATEGORY, line.keyword)) {
      const auto index = static_cast<std::size_t>(KeywordList::Enumeration(CATEGORY, line.keyword));
      readParameter(line, para[index], FUNC_ID);
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

void VelWallData::checkParameters() const {
  requireWithin(para[P_ORIENTATION], "ORIENTATION", 0.0, 2.0 * PI, "Rad");
  requireWithin(para[P_INCLINATION], "INCLINATION", 0.0, 0.5 * PI, "Rad");
  requireWithin(para[P_LATITUDE], "LATITUDE", -0.5 * PI, 0.5 * PI, "Rad");
  if (para[P_LONGITUDE].isSet()) {
    requireWithin(para[P_LONGITUDE], "LONGITUDE", -PI, PI, "Rad");
    requireWithin(para[P_TIMEZONE], "TIMEZONE", -12.0, 12.0, isTime(para[P_TIMEZONE]) ? "h" : "-");
  }
}

double VelWallData::timeZone() const {
  const TKL::Parameter& zone = para[P_TIMEZONE];
  return isTime(zone) ? zone.value : zone.value * SECONDS_PER_HOUR;
}

}  // namespace VELMORA
