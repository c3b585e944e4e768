#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "foundation/Parameter.h"
#include "keywords/SectionText.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {

/// A record of the project file from its text.
template <class Record>
Record readRecord(const std::string& text) {
  Record record;
  record.read(SectionText(text));
  return record;
}

/// What reading a record from a text throws.
template <class Record>
TKL::Thrown thrownByReading(const std::string& text) {
  return TKL::thrownBy([&] { readRecord<Record>(text); });
}

/// What checking a record from a text throws.
template <class Record>
TKL::Thrown thrownByChecking(const std::string& text) {
  const Record record = readRecord<Record>(text);
  return TKL::thrownBy([&] { record.checkParameters(); });
}

inline TKL::Thrown nothingThrown() {
  return {"nothing thrown", ""};
}

inline TKL::Thrown required(const std::string& keyword, const std::string& operation) {
  return {keyword + " is required", "[Parameter::" + operation + "]"};
}

/// Text of a violated limit, as in outOfRange("SUREMISS", "<= 1 -").
inline TKL::Thrown outOfRange(const std::string& keyword, const std::string& limit) {
  return {"Parameter '" + keyword + "' out of range (must be " + limit + ").", "[Parameter::test]"};
}

/// A lower limit is tested by an operation that is named after the other side.
constexpr const char* LOWER_LIMIT = "checkIfValueIsUpperBound";
constexpr const char* UPPER_LIMIT = "checkIfValueIsLowerBound";

/// One line `<keyword> = <k+1>.5 <unit>` for each keyword, k counting from 0.
inline std::string numberedParameters(const std::vector<std::string>& keywords, const std::string& unit) {
  std::string text;
  for (std::size_t k = 0; k < keywords.size(); ++k) {
    text += keywords[k] + " = " + std::to_string(k + 1) + ".5 " + unit + "\n";
  }
  return text;
}

/// Whether the parameters hold what `numberedParameters` has written, in the same order.
template <class Parameters>
testing::AssertionResult areNumbered(const Parameters& parameters, const std::vector<std::string>& keywords,
                                     const std::string& unit) {
  if (parameters.size() != keywords.size()) {
    return testing::AssertionFailure()
           << parameters.size() << " parameters, " << keywords.size() << " keywords";
  }
  for (std::size_t k = 0; k < keywords.size(); ++k) {
    const TKL::Parameter& parameter = parameters[k];
    if (parameter.name != keywords[k] || parameter.value != static_cast<double>(k + 1) + 0.5 ||
        parameter.IO_unit.name() != unit) {
      return testing::AssertionFailure() << "parameter " << k << " is " << parameter.name << " = "
                                         << parameter.value << ' ' << parameter.IO_unit.name();
    }
  }
  return testing::AssertionSuccess();
}

/// The keywords of the climate quantities in their order.
inline std::vector<std::string> climateKeywords() {
  return {"TEMPER",       "RELHUM",       "VAPPRESS",    "NORRAIN",       "HORRAIN",      "WINDDIR",
          "WINDVEL",      "SHWRAD",       "DIRRAD",      "DIFRAD",        "LOWRAD",       "SKYEMISS",
          "SKYTEMP",      "CLOUDCOV",     "GRNDEMISS",   "GRNDTEMP",      "PREHEAD",      "WATFLUXDENS",
          "HEATFLUXDENS", "MASSFLUXDENS", "HEATFLOW",    "GASPRESS",      "VOCDENSG",     "WATSOURCE",
          "ENESOURCE",    "VOCSOURCE",    "AIRFLOWRATE", "AIRCHANGERATE", "VOLFLUIDFLUX", "FLUIDVELOCITY",
          "PERCENTAGE"};
}

/// One line `<keyword> = climate <keyword>` for each climate quantity.
inline std::string climateLines() {
  std::string text;
  for (const std::string& keyword : climateKeywords()) text += keyword + " = climate " + keyword + "\n";
  return text;
}

/// Whether the names are those of `climateLines`.
template <class Names>
testing::AssertionResult areClimateNames(const Names& names) {
  const std::vector<std::string> keywords = climateKeywords();
  for (std::size_t k = 0; k < names.size(); ++k) {
    if (k >= keywords.size() || names[k] != "climate " + keywords[k]) {
      return testing::AssertionFailure() << "name " << k << " is '" << names[k] << "'";
    }
  }
  return testing::AssertionSuccess();
}

constexpr const char* UNKNOWN_KEYWORD = "Invalid or deprecated keyword 'COLOUR' in this section!";

}  // namespace VELMORA
