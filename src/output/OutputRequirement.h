#pragma once

#include <bitset>

#include "project/VelInit.h"
#include "project/VelOutputFormat.h"

namespace VELMORA {

/// The balance equation without which a quantity has no values.
enum requirement_t {
  REQ_ENERGY,
  REQ_MOISTURE,
  REQ_AIR,
  REQ_SALT,
  REQ_POLLUTANT,
  REQ_ICE,   ///< freezing, which needs moisture as well
  REQ_NEVER  ///< quantities that are not offered
};

/// What the quantity of a format needs.
requirement_t outputRequirement(const VelOutputFormat& format);

/// Whether the calculated balance equations meet a requirement; `REQ_NEVER` is never met.
bool isMet(requirement_t requirement, const std::bitset<VelInit::NUM_B>& balanceEquations);

/// Name of a requirement in messages; null for `REQ_NEVER`.
const char* requirementName(requirement_t requirement);

}  // namespace VELMORA
