#include "project/LeakageDefinition.h"

#include <cstdint>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "keywords/KeywordList.h"
#include "project/ConditionReader.h"
#include "project/ParameterLimits.h"

namespace VELMORA {

namespace {

constexpr double LEAK_PRESSURE = 750.0;  // [Pa] turns the air flow of the envelope into a leak by pressure

const char* const LEAK_READ_ID = "[WTAConvectionModel::read]";
const char* const LEAK_CLIMATE = "WTAConvectionModel::convectionModelClimate_t";
const char* const LEAK_PARA = "WTAConvectionModel::convectionModelParam_t";

/// A value that cannot be read is reported where it stands and ends the reading.
void readLeakParameter(const KeywordLine& line, TKL::Parameter& parameter) {
  try {
    readParameter(line, parameter, LEAK_READ_ID);
  } catch (const TKL::Exception& failure) {
    TKL::message(std::string(failure.what()), TKL::MSG_ERROR, LEAK_READ_ID, -1);
    throw;
  }
}

}  // namespace

void LeakageDefinition::read(const SectionText& text) {
  forEachKeywordLine(text, LEAK_READ_ID, [this](const KeywordLine& line) { readKeyword(line); });
  if (para[CMP_Q50].isSet()) leakCoefficient = para[CMP_Q50].get_value("m3/m2s") / LEAK_PRESSURE;
}

void LeakageDefinition::readKeyword(const KeywordLine& line) {
  const std::string& keyword = line.keyword;
  if (keyword == "TYPE") return;  // it has led here
  if (keyword == "NAME") {
    name = line.value;
  } else if (keyword == "START_TIME") {
    readLeakParameter(line, startTime);
  } else if (keyword == "END_TIME") {
    readLeakParameter(line, endTime);
  } else if (keyword == "FLAGS") {
    readFlags("VelFieldCond::flag_t", line.value, flags);
  } else if (KeywordList::KeywordExists(LEAK_CLIMATE, keyword)) {
    climateNames[static_cast<std::size_t>(KeywordList::Enumeration(LEAK_CLIMATE, keyword))] = line.value;
  } else if (KeywordList::KeywordExists(LEAK_PARA, keyword)) {
    readLeakParameter(line, para[static_cast<std::size_t>(KeywordList::Enumeration(LEAK_PARA, keyword))]);
  } else {
    warnUnknownKeyword(line, LEAK_READ_ID);
  }
}

void LeakageDefinition::write(std::ostream& stream) const {
  const char* const FUNC_ID = "WTAConvectionModel::write";
  stream << "TYPE = CONVECTIVE_SOURCE\nNAME = " << name << "\n";
  for (const TKL::Parameter* time : {&startTime, &endTime})
    if (time->isSet()) time->write(stream);
  if (flags.any()) {
    stream << "FLAGS =";
    for (std::uint32_t k = 0; k < NUM_FLAGS; ++k)
      if (flags[k]) stream << " " << KeywordList::Keyword("VelFieldCond::flag_t", k);
    stream << "\n";
  }
  for (std::uint32_t k = 0; k < NUM_CMC; ++k)
    if (!climateNames[k].empty())
      stream << KeywordList::Keyword(LEAK_CLIMATE, k) << " = " << climateNames[k] << "\n";
  for (const TKL::Parameter& parameter : para)
    if (parameter.isSet()) parameter.write(stream);
  if (!stream)
    throw TKL::Exception(TKL::FormatString("Field condition '%1' cannot be written.").arg(name), FUNC_ID);
}

void LeakageDefinition::checkParameters() const {
  requireAtLeast(para[CMP_Q50], "CMP_Q50", 0.0, "m3/m2s");
  requireAtLeast(para[CMP_HEIGHT], "CMP_HEIGHT", 0.0, "m", LIMIT_EXCLUDED);
  requireAtLeast(para[CMP_DIFFPRESSURE_MECH], "CMP_DIFFPRESSURE_MECH", 0.0, "Pa");
}

}  // namespace VELMORA
