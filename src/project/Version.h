#pragma once

namespace VELMORA {

/// Version of the model and of the solver.
inline constexpr char MODEL_VERSION[] = "5.9.6";

}  // namespace VELMORA
