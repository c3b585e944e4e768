#pragma once

#include "project/ActivityWindow.h"

namespace VELMORA_SOLVER {

using VELMORA::ActivityWindow;

}  // namespace VELMORA_SOLVER
