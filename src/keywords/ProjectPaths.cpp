#include "keywords/ProjectPaths.h"

namespace VELMORA {

TKL::Path resolvedPath(const TKL::Path& path, const PlaceholderMap& placeholders) {
  const TKL::Path replaced = path.withReplacedPlaceholders(placeholders);
  if (!replaced.isValid() || replaced.isAbsolute()) return replaced;
  const auto projectDir = placeholders.find(PROJECT_DIR_PLACEHOLDER);
  if (projectDir == placeholders.end() || !projectDir->second.isValid()) return replaced;
  return projectDir->second / replaced;
}

TKL::Path resolvedInputPath(const TKL::Path& path, const PlaceholderMap& placeholders) {
  const TKL::Path resolved = resolvedPath(path, placeholders);
  if (!resolved.isValid() || resolved.exists()) return resolved;
  const TKL::Path replaced = path.withReplacedPlaceholders(placeholders);
  return !replaced.isAbsolute() && replaced.exists() ? replaced : resolved;
}

}  // namespace VELMORA
