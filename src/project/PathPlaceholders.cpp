#include "project/PathPlaceholders.h"

#include <array>
#include <utility>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"
#include "keywords/UnknownKeywords.h"

namespace VELMORA {

namespace {

const char* const DIRECTORY_CATEGORY = "PathPlaceholders::data_directories_t";
const char* const EXAMPLES_FOLDER = "examples";

/// A part of a path below a directory; a directory that is not known has nothing below it.
TKL::Path below(const TKL::Path& directory, const char* part) {
  return directory.isValid() ? directory / part : TKL::Path();
}

/// A line of an older file that holds `placeholder`, written against the directory itself. A relative text
/// before the placeholder moves behind the directory, an absolute one gives way to it.
std::string withDirectoryInFront(const std::string& line, const std::string& placeholder,
                                 const TKL::Path& directory) {
  const std::size_t position = line.find(placeholder);
  if (position == std::string::npos || !directory.isValid()) return line;
  const TKL::Path before(line.substr(0, position));
  const TKL::Path behind(line.substr(position + placeholder.size()));
  TKL::Path result = directory;
  if (!before.isAbsolute()) result /= before;
  result /= behind;
  return result.str();
}

/// Replaces the three placeholders that older files use inside the section itself.
std::string convertOldFormat(const std::string& text, const TKL::Path& installDir,
                             const TKL::Path& projectDir) {
  const std::array<std::pair<const char*, TKL::Path>, 3> directories = {
      {{"$(EXAMPLES_DIR)", below(installDir, EXAMPLES_FOLDER)},
       {"$(INSTALL_DIR)", installDir},
       {"$(PROJECT_DIR)", projectDir}}};
  std::string result;
  for (const TextLine& line : SectionText(text)) {
    std::string converted = line.text;
    for (const auto& [placeholder, directory] : directories)
      converted = withDirectoryInFront(converted, placeholder, directory);
    result += converted + "\n";
  }
  if (!result.empty()) result.pop_back();
  return result;
}

}  // namespace

const char* PathPlaceholders::placeholderName(data_directories_t index) {
  static constexpr std::array<const char*, NUM_D> NAMES = {
      "MATERIALS_DIR",    "USER_MATERIALS_DIR",    "CLIMATE_DIR", "SALT_DIR",     "VOC_DIR",
      "USER_CLIMATE_DIR", PROJECT_DIR_PLACEHOLDER, "INSTALL_DIR", "PROJECT_FILE", "EXAMPLES_DIR"};
  return NAMES.at(index);
}

void PathPlaceholders::set(data_directories_t index, const TKL::Path& path) {
  placeholders_[placeholderName(index)] = path;
}

TKL::Path PathPlaceholders::get(data_directories_t index) const {
  const auto found = placeholders_.find(placeholderName(index));
  return found == placeholders_.end() ? TKL::Path() : found->second;
}

void PathPlaceholders::setDefault(data_directories_t index, const TKL::Path& path) {
  const char* const FUNC_ID = "[PathPlaceholders::readFromString()]";
  constexpr int VERBOSITY = 2;
  if (get(index).isValid()) return;
  set(index, path);
  TKL::message(TKL::FormatString("Setting path placeholder %1 = %2\n")
                   .arg(KeywordList::Keyword(DIRECTORY_CATEGORY, index))
                   .arg(path),
               TKL::MSG_STANDARD, FUNC_ID, VERBOSITY);
}

void PathPlaceholders::readFromString(const SectionText& text, const TKL::Path& installDir,
                                      const TKL::Path& projectDir) {
  set(D_INSTALL, installDir);
  set(D_PROJECT, projectDir);
  set(D_EXAMPLES, installDir / EXAMPLES_FOLDER);
  forEachLine(text, [&](const TextLine& line) { readLine(line, installDir, projectDir); });

  if (!installDir.isValid()) return;
  const TKL::Path userDir = userDataDirectory();
  setDefault(D_MATERIALS, installDir / "DB_material_data");
  setDefault(D_USER_MATERIALS, below(userDir, "TKL/material_data"));
  setDefault(D_CLIMATE, installDir / "DB_climate_data");
  setDefault(D_USER_CLIMATE, below(userDir, "TKL/climate_data"));
  setDefault(D_SALT, installDir / "DB_salt_data");
  setDefault(D_VOC, installDir / "DB_VOC_data");
}

void PathPlaceholders::readLine(const TextLine& line, const TKL::Path& installDir,
                                const TKL::Path& projectDir) {
  const char* const FUNC_ID = "[PathPlaceholders::readFromString()]";
  if (line.text.empty() || line.text.starts_with(';')) return;
  std::string keyword;
  std::string value;
  if (!TKL::extract_keyword(line.text, keyword, value))
    throw TKL::Exception(
        TKL::FormatString("Unexpected data in this section: '%1'!").arg(quotedText(line.text)), FUNC_ID);
  keyword = TKL::section_title(keyword);
  if (!KeywordList::KeywordExists(DIRECTORY_CATEGORY, keyword)) {
    constexpr int VERBOSITY = 3;
    noteUnknownKeyword(keyword, line.number);
    TKL::message(TKL::FormatString("Invalid keyword '%1' in this section!").arg(quotedText(keyword)),
                 TKL::MSG_WARNING, FUNC_ID, VERBOSITY);
    return;
  }
  const auto index = static_cast<data_directories_t>(KeywordList::Enumeration(DIRECTORY_CATEGORY, keyword));
  set(index, TKL::Path(convertOldFormat(value, installDir, projectDir)));
}

}  // namespace VELMORA
