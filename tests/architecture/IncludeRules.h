#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace VELMORA {

/// Files below `src/` with the files that they include, both as "folder/File.h".
using IncludeMap = std::map<std::string, std::vector<std::string>>;

/// Folders of `src/` with all folders that they may include besides themselves.
const std::map<std::string, std::set<std::string>>& allowedArrows();

/// Reads the lines `#include "..."` of a source text.
std::vector<std::string> quotedIncludes(const std::string& source);

/// Reads all C++ files below a directory.
IncludeMap readIncludes(const std::string& directory);

/// Includes that run between folders in a direction which is not allowed, each as "a/A.h -> b/B.h".
std::vector<std::string> forbiddenArrows(const IncludeMap& files);

/// Files in a folder that has no place in the layout, and includes that name such a folder or none at all.
std::vector<std::string> strayFolders(const IncludeMap& files);

/// Circles of files that include each other, each as "a/A.h -> a/B.h -> a/A.h".
std::vector<std::string> circles(const IncludeMap& files);

/// Included files that are not there.
std::vector<std::string> missingFiles(const IncludeMap& files);

}  // namespace VELMORA
