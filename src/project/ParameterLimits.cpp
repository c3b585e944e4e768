#include "project/ParameterLimits.h"

#include <string>

namespace VELMORA {

namespace {

TKL::Parameter limitFor(const TKL::Parameter& parameter, const char* name, double limit, const char* unit) {
  const std::string wanted = unit;
  return {name, limit, wanted == "-" && isRatio(parameter) ? "---" : wanted};
}

}  // namespace

bool isRatio(const TKL::Parameter& parameter) {
  return parameter.IO_unit.base().name() == "---";
}

void requireAtLeast(const TKL::Parameter& parameter, const char* name, double limit, const char* unit,
                    limit_t kind) {
  parameter.checkIfValueIsUpperBound(limitFor(parameter, name, limit, unit), kind == LIMIT_INCLUDED);
}

void requireAtMost(const TKL::Parameter& parameter, const char* name, double limit, const char* unit,
                   limit_t kind) {
  parameter.checkIfValueIsLowerBound(limitFor(parameter, name, limit, unit), kind == LIMIT_INCLUDED);
}

void requireWithin(const TKL::Parameter& parameter, const char* name, double lower, double upper,
                   const char* unit) {
  requireAtLeast(parameter, name, lower, unit);
  requireAtMost(parameter, name, upper, unit);
}

}  // namespace VELMORA
