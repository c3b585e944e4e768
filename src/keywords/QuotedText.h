#pragma once

#include "foundation/QuotedText.h"

namespace VELMORA {

using TKL::quotedText;

}  // namespace VELMORA
