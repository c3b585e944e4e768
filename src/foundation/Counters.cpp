#include "foundation/Counters.h"

namespace TKL {

std::uint32_t iceIterationCount = 0;
std::int32_t mrcIterationCount = 0;

}  // namespace TKL
