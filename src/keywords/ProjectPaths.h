#pragma once

#include <map>
#include <string>

#include "foundation/Path.h"

namespace VELMORA {

/// Names that a path of a project may begin with, as in `$(CLIMATE_DIR)/dresden.ccd`, and their directories.
using PlaceholderMap = std::map<std::string, TKL::Path>;

/// Name of the directory of the project file in a `PlaceholderMap`.
inline constexpr char PROJECT_DIR_PLACEHOLDER[] = "PROJECT_DIR";

/// The path with its placeholder replaced. A path that is relative then begins at the directory of the
/// project file, or is left alone where the map has no such directory.
/// @throws TKL::Exception of `TKL::Path::withReplacedPlaceholders`
TKL::Path resolvedPath(const TKL::Path& path, const PlaceholderMap& placeholders);

/// `resolvedPath` for a file that is read: where nothing lies at the resolved place, a relative path is
/// looked for in the current directory as well.
/// @throws TKL::Exception of `TKL::Path::withReplacedPlaceholders`
TKL::Path resolvedInputPath(const TKL::Path& path, const PlaceholderMap& placeholders);

}  // namespace VELMORA
