#pragma once

#include <cstdint>

namespace TKL {

/// Iterations of all decompositions into liquid water and ice of this process.
extern std::uint32_t iceIterationCount;

/// Iterations of all inverse look-ups of a moisture retention curve of this process.
extern std::int32_t mrcIterationCount;

}  // namespace TKL
