#pragma once

namespace TKL {

/// Version of the foundation library.
inline constexpr char LIBRARY_VERSION[] = "4.2.4";

}  // namespace TKL
