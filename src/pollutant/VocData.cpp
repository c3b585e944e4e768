#include "pollutant/VocData.h"

#include <algorithm>
#include <string_view>

#include "foundation/Exception.h"
#include "foundation/QuotedText.h"
#include "pollutant/EntryLines.h"

namespace POLLUTANT_LIB {

namespace {

/// The text of a line, empty for the word that stands for no text.
/// @return false for an empty line
bool readRemark(EntryLines& lines, std::string& text) {
  const std::string_view line = lines.next();
  text = line == "undefined" ? std::string_view() : line;
  return !line.empty();
}

/// @return false for temperatures that do not rise
bool prepare(TKL::LinearSpline& curve) {
  std::string reason;
  return curve.size() == 1 || curve.makeSpline(reason);
}

double smallest(const TKL::LinearSpline& curve) {
  return *std::min_element(curve.y.begin(), curve.y.end());
}

}  // namespace

void SubstanceCurve::fail() const {
  const char* const FUNC_ID = "[SubstanceCurve::operator()]";
  throw TKL::Exception(missingMessage_, FUNC_ID);
}

bool VocData::read(const std::string& entry, std::string& errmsg) {
  const std::string FUNC_ID = "[VocData::read]";
  const auto fail = [&](const char* reason) {
    errmsg = FUNC_ID + "  " + reason + " VOC entry: \n  " + TKL::quotedText(entry);
    return false;
  };
  EntryLines lines(entry);
  if (!lines.readEntity(id)) return fail("Undefined or invalid");
  const bool withText1 = readRemark(lines, text1);
  const bool withText2 = readRemark(lines, text2);
  // a compound without mass would have an infinite gas constant
  if (!lines.readNumber(M) || M <= 0.0) return fail("Error reading molar mass in");
  if (!lines.readNumber(rhoLiquid)) return fail("Error reading liquid density in");
  if (!lines.readCurve(rhosat)) return fail("Error reading saturation density rhosat(T) of");
  // the solid is in equilibrium with the share of this density that the pores hold
  if (smallest(rhosat) <= 0.0 || !prepare(rhosat))
    return fail("Invalid saturation density rhosat(T) spline of");
  if (!lines.readCurve(Dair)) return fail("Error reading diffusion coefficient Dair(T) of");
  if (smallest(Dair) < 0.0 || !prepare(Dair)) return fail("Invalid diffusion coefficient Dair(T) spline of");
  if (!withText1 || !withText2) return fail("Missing data in");
  return true;
}

}  // namespace POLLUTANT_LIB
