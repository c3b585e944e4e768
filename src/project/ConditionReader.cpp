#include "project/ConditionReader.h"

#include <algorithm>
#include <cstdint>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"

namespace VELMORA {

namespace {

const char* const CLIMATE_CATEGORY = "VelClimateCond::condition_t";

}  // namespace

bool readClimateName(const KeywordLine& line, ClimateNames& names) {
  if (!KeywordList::KeywordExists(CLIMATE_CATEGORY, line.keyword)) return false;
  names[static_cast<std::size_t>(KeywordList::Enumeration(CLIMATE_CATEGORY, line.keyword))] = line.value;
  return true;
}

void linkClimate(const ClimateNames& names, const std::vector<VelClimateCond>& climateConds,
                 ClimatePointers& climate, const char* functionId) {
  bool complete = true;
  for (std::size_t k = 0; k < names.size(); ++k) {
    if (names[k].empty()) continue;
    const std::string type = KeywordList::Keyword(CLIMATE_CATEGORY, static_cast<std::uint32_t>(k));
    const auto found = std::find_if(climateConds.begin(), climateConds.end(),
                                    [&](const VelClimateCond& cc) { return cc.name == names[k]; });
    if (found == climateConds.end()) {
      TKL::message(TKL::FormatString("Could not find climate condition with type '%1' and name '%2'!")
                       .arg(type)
                       .arg(names[k]),
                   TKL::MSG_ERROR, functionId, -1);
      complete = false;
    } else if (static_cast<std::size_t>(found->condition) != k) {
      throw TKL::Exception(
          TKL::FormatString("Invalid climate condition assignment with name '%1', should be of type '%2'")
              .arg(names[k])
              .arg(type),
          functionId);
    } else {
      climate[k] = &*found;
    }
  }
  if (!complete) {
    throw TKL::Exception("Error linking climate conditions to boundary condtions!", functionId);
  }
}

}  // namespace VELMORA
