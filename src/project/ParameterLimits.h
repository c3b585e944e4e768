#pragma once

#include "foundation/Parameter.h"

namespace VELMORA {

/// Whether a limit itself is allowed.
enum limit_t { LIMIT_INCLUDED, LIMIT_EXCLUDED };

/// Tests of a parameter against a limit in `unit`. A limit in "-" also serves a parameter that is given in
/// "---" or "%". `name` is the keyword of the parameter.
/// @throws TKL::Exception the name and " is required" if the parameter is not set; "Invalid or unrecognized
/// unit in parameter ..."; "Parameter '%1' out of range ..."
void requireAtLeast(const TKL::Parameter& parameter, const char* name, double limit, const char* unit,
                    limit_t kind = LIMIT_INCLUDED);
void requireAtMost(const TKL::Parameter& parameter, const char* name, double limit, const char* unit,
                   limit_t kind = LIMIT_INCLUDED);

/// Tests both limits, the lower one first.
void requireWithin(const TKL::Parameter& parameter, const char* name, double lower, double upper,
                   const char* unit);

/// True for a parameter of the group of "---", to which "%" belongs.
bool isRatio(const TKL::Parameter& parameter);

}  // namespace VELMORA
