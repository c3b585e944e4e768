#include <algorithm>
#include <stdexcept>
#include <vector>

#include "climate/ClimateFile.h"
#include "climate/VelClimateCond.h"
#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/UnitVector.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

/// The two blanks belong to the tags.
const char* const PREPARE_DATA_ID = "[VelClimateCond::prepareCalculation]  ";
const char* const READ_DATA_ID = "[VelClimateCond::readClimateData]  ";

bool isTemperature(std::int32_t condition) {
  return condition == VelClimateCond::C_TEMPER || condition == VelClimateCond::C_SKYTEMP ||
         condition == VelClimateCond::C_GRNDTEMP;
}

bool isRain(std::int32_t condition) {
  return condition == VelClimateCond::C_NORRAIN || condition == VelClimateCond::C_HORRAIN;
}

/// Quantities without a physical meaning below zero.
bool isNonNegative(VelClimateCond::condition_t condition) {
  switch (condition) {
    case VelClimateCond::C_RELHUM:
    case VelClimateCond::C_VAPPRESS:
    case VelClimateCond::C_NORRAIN:
    case VelClimateCond::C_HORRAIN:
    case VelClimateCond::C_WINDVEL:
    case VelClimateCond::C_CLOUDCOV:
    case VelClimateCond::C_GASPRESS:
    case VelClimateCond::C_VOCDENSG:
      return true;
    default:
      return false;
  }
}

}  // namespace

void VelClimateCond::readClimateData(const TKL::Path& path, std::string& typeName, TKL::Unit& unit) {
  const char* const FUNC_ID = READ_DATA_ID;
  std::vector<double> times;
  TKL::UnitVector values;
  std::string unitName, comment, errorText;
  if (!read_climate_file(path, times, values.data, typeName, unitName, comment, errorText)) {
    // the readers do not name the file in all of their messages
    const TKL::Exception cause(TKL::FormatString("Cannot read climate data file '%1'.").arg(path), FUNC_ID);
    throw TKL::Exception(cause, errorText, FUNC_ID);
  }
  unit.set(unitName);
  values.IO_unit = unit;
  values.convert(unit.base());
  data.setValues(times, values.data);
  if (!data.makeSpline(errorText)) throw std::runtime_error(errorText);
}

void VelClimateCond::prepareData(const PlaceholderMap& placeholders) {
  std::string typeName;
  TKL::Unit fileUnit;
  readClimateData(resolvedInputPath(fileName, placeholders), typeName, fileUnit);
  checkFileCondition(typeName);
  ioUnit = fileUnit;
  if (isSet(P_SHIFTVALUE)) shiftData();
  checkDataRange();
}

void VelClimateCond::checkFileCondition(const std::string& typeName) const {
  const char* const FUNC_ID = PREPARE_DATA_ID;
  // by index, since older files have other words for some quantities
  const std::int32_t inFile = KeywordList::Enumeration("VelClimateCond::condition_t", typeName);
  if (inFile == condition) return;
  if (isTemperature(inFile) && isTemperature(condition)) return;
  if (isRain(inFile) && isRain(condition)) return;
  throw TKL::Exception("Mismatch of condition type '" + quotedText(typeName) + "' in CC file '" +
                           fileName.str() + " and condition type set in CC '" + name + "'!",
                       FUNC_ID);
}

void VelClimateCond::shiftData() {
  for (double& value : data.y) value += para[P_SHIFTVALUE].value;
  std::string errorText;
  if (!data.makeSpline(errorText)) throw std::runtime_error(errorText);
}

void VelClimateCond::checkDataRange() const {
  const char* const FUNC_ID = PREPARE_DATA_ID;
  constexpr double LOWEST = -1000000.0;  // measured series scatter around zero
  constexpr double HIGHEST_HUMIDITY = 1.0000001;
  if (!isNonNegative(condition)) return;
  const auto [lowest, highest] = std::minmax_element(data.y.begin(), data.y.end());
  if (*lowest < LOWEST)
    throw TKL::Exception("Climate data for condition '" + name +
                             "' has negative values, most likely due to a value shift. Please check the "
                             "shifting value you have entered! ",
                         FUNC_ID);
  if (condition == C_RELHUM && *highest > HIGHEST_HUMIDITY)
    throw TKL::Exception(
        "Climate data for condition '" + name +
            "' exceeds 100% relative humidity, likely due to a value shift. Please check the "
            "shifting value you have entered! ",
        FUNC_ID);
}

void VelClimateCond::checkTimeInData(double t) const {
  const char* const FUNC_ID = "[VelClimateCond::calcCurrentValue]";
  constexpr double TOLERANCE = 1e-05;  // [s]
  const double first = data.x.front();
  const double last = data.x.back();
  if (t + TOLERANCE < first || t - TOLERANCE > last)
    throw TKL::Exception(TKL::FormatString("Time point %1 out of range %2..%3 of climatic data for climate "
                                           "condition condition '%4': ")
                             .arg(t)
                             .arg(first)
                             .arg(last)
                             .arg(name),
                         FUNC_ID);
}

double VelClimateCond::dataValue(double t) {
  const char* const FUNC_ID = "[VelClimateCond::calcCurrentValue]";
  if (data.empty())
    throw TKL::Exception("Missing climatic data in linear spline for climatic condition '" + name + "'.",
                         FUNC_ID);
  if (!extendData) checkTimeInData(t);

  const std::vector<double>& x = data.x;
  const bool inside = t > x.front() && t <= x.back();
  if (!inside || data.xStep != 0.0) return useInterpolation ? data.value(t) : data.nonInterpolatedValue(t);

  // the same expressions as in the spline, without its search
  const std::size_t k = intervalEnd(t);
  if (!useInterpolation) return t == x[k] ? data.y[k] : data.y[k - 1];
  const double a = (t - x[k - 1]) / (x[k] - x[k - 1]);
  return (1.0 - a) * data.y[k - 1] + a * data.y[k];
}

/// The first node that is not before `t`, for `t` behind the first node. Successive times mostly lie in the
/// same interval or in the next.
std::size_t VelClimateCond::intervalEnd(double t) {
  const std::vector<double>& x = data.x;
  const auto holds = [&](std::size_t k) { return k < x.size() && x[k - 1] < t && t <= x[k]; };
  if (holds(lastInterval_)) return lastInterval_;
  if (holds(lastInterval_ + 1)) return ++lastInterval_;
  lastInterval_ = static_cast<std::size_t>(std::lower_bound(x.begin(), x.end(), t) - x.begin());
  return lastInterval_;
}

}  // namespace VELMORA
