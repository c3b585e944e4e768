#include "project/VelFieldCond.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "project/ConditionReader.h"

namespace VELMORA {

namespace {

constexpr double VOLUME_TOLERANCE = 1e-8;  // [m3]

std::string typeOf(const VelFieldCond& fc) {
  if (fc.condition >= VelFieldCond::NUM_C) return {};
  return KeywordList::Keyword("VelFieldCond::condition_t", static_cast<std::uint32_t>(fc.condition));
}

/// Reads a parameter; one that cannot be read is reported and stays as it was.
void readParameterOrReport(const KeywordLine& line, TKL::Parameter& parameter, const char* functionId) {
  try {
    readParameter(line, parameter, functionId);
  } catch (const TKL::Exception& failure) {
    TKL::message(std::string(failure.what()), TKL::MSG_ERROR, functionId, -1);
  }
}

}  // namespace

void VelFieldCond::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelFieldCond::read]";
  readType(text);
  if (condition == NUM_C) {
    TKL::message("Error reading condition type!", TKL::MSG_ERROR, FUNC_ID, -1);
    throw TKL::Exception("No condition found", FUNC_ID);
  }
  if (condition == C_CONVECTIVE_SOURCE) {
    readLeakageBlock(text);
  } else {
    forEachKeywordLine(text, FUNC_ID, [this](const KeywordLine& line) { readKeyword(line); });
  }
}

void VelFieldCond::readType(const SectionText& text) {
  const char* const FUNC_ID = "[VelFieldCond::read]";
  forEachLine(text, [&](const TextLine& line) {
    std::string keyword, value;
    if (!TKL::extract_keyword(line.text, keyword, value) || keyword != "TYPE") return;
    condition =
        readEnumerator<condition_t>("VelFieldCond::condition_t", splitKeywordLine(line, FUNC_ID).value);
  });
}

void VelFieldCond::readLeakageBlock(const SectionText& text) {
  LeakageDefinition& leak = wtaModel.emplace();
  leak.read(text);
  name = leak.name;
  startTime = leak.startTime;
  endTime = leak.endTime;
  flags = leak.flags;
}

void VelFieldCond::readKeyword(const KeywordLine& line) {
  const char* const FUNC_ID = "[VelFieldCond::read]";
  const char* const PARA = "VelFieldCond::para_t";
  const std::string& keyword = line.keyword;
  if (keyword == "TYPE") return;  // read before all else
  if (keyword == "NAME") {
    name = line.value;
  } else if (keyword == "START_TIME") {
    readParameterOrReport(line, startTime, FUNC_ID);
  } else if (keyword == "END_TIME") {
    readParameterOrReport(line, endTime, FUNC_ID);
  } else if (keyword == "FLAGS") {
    readFlags("VelFieldCond::flag_t", line.value, flags);
  } else if (KeywordList::KeywordExists(PARA, keyword)) {
    readParameterOrReport(line, para[readEnumerator<para_t>(PARA, keyword)], FUNC_ID);
  } else if (keyword == "REMOTE_COND") {
    remoteName = line.value;
  } else if (!readClimateName(line, climateNames)) {
    warnUnknownKeyword(line, FUNC_ID);
  }
}

void VelFieldCond::assignClimateCond(const std::vector<VelClimateCond>& climateConds) {
  linkClimate(climateNames, climateConds, climate, "[VelFieldCond::assignClimateCond]");
}

void VelFieldCond::assignRemoteFieldCond(const std::vector<VelFieldCond>& fieldConds) {
  const char* const FUNC_ID = "[VelFieldCond::assignRemoteFieldCond]";
  if (remoteName.empty()) return;
  const auto found = std::find_if(fieldConds.begin(), fieldConds.end(),
                                  [this](const VelFieldCond& fc) { return fc.name == remoteName; });
  if (found == fieldConds.end()) {
    TKL::message(TKL::FormatString("Could not find remote field condition with name '%1'!").arg(remoteName),
                 TKL::MSG_ERROR, FUNC_ID, -1);
    throw TKL::Exception("Error linking remote field condition to field condtions!", FUNC_ID);
  }
  remote = &*found;
}

void VelFieldCond::matchRemoteElements(const std::vector<Element>& allElements) {
  matchingVolumes = false;
  const bool pairs = condition == C_REMENESOUR || condition == C_PCMENESOUR;
  if (!pairs || remote == nullptr || elements.size() != remote->elements.size()) return;
  for (std::size_t k = 0; k < elements.size(); ++k) {
    const double own = allElements[static_cast<std::size_t>(elements[k])].volume;
    const double other = allElements[static_cast<std::size_t>(remote->elements[k])].volume;
    if (!(std::abs(own - other) <= VOLUME_TOLERANCE)) return;
  }
  matchingVolumes = true;
}

void VelFieldCond::failMissingClimate(VelClimateCond::condition_t quantity, const char* functionId) const {
  const std::string type =
      KeywordList::Keyword("VelClimateCond::condition_t", static_cast<std::uint32_t>(quantity));
  throw TKL::Exception(
      TKL::FormatString("Error in in field condition '%1' with type '%2'.\n")
              .arg(name)
              .arg(typeOf(*this))
              .str() +
          TKL::FormatString("Climate condition of type '%1' needs to be specified!").arg(type).str(),
      functionId);
}

void VelFieldCond::failMissingRemote(const char* functionId) const {
  throw TKL::Exception(TKL::FormatString("Error in field condition '%1' with type '%2'.\n"
                                         "Remote field condition needs to be specified!")
                           .arg(name)
                           .arg(typeOf(*this)),
                       functionId);
}

}  // namespace VELMORA
