#include "project/VelDisc.h"

#include <numeric>

#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"

namespace VELMORA {

namespace {

double sum(const std::vector<double>& values) {
  return std::accumulate(values.begin(), values.end(), 0.0);
}

}  // namespace

void VelDisc::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelDisc::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "GEOMETRY") {
      geometry = static_cast<geometry_t>(KeywordList::Enumeration("VelDisc::geometry_t", line.value));
    } else if (line.keyword == "X_STEPS") {
      dx.read(line.value, true);
      width = sum(dx.data);
    } else if (line.keyword == "Y_STEPS") {
      dy.read(line.value, true);
      height = sum(dy.data);
    } else if (line.keyword == "Z_STEPS") {
      dz.read(line.value, true);
    } else if (line.keyword == "THETA_Z") {
      thetaZ = TKL::string2val<double>(line.value);
    } else if (line.keyword == "PIE_SLICE_ANGLE") {
      pieSliceAngle = TKL::string2val<double>(line.value);
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

double VelDisc::thickness() const {
  return dz.data.empty() ? 1.0 : dz.data.front();
}

}  // namespace VELMORA
