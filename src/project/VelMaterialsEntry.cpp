#include <algorithm>
#include <unordered_set>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/UnknownKeywords.h"
#include "material/KeywordList.h"
#include "project/VelMaterials.h"

namespace VELMORA {

namespace {

constexpr const char* SECTIONS = "Material::Sections";
constexpr const char* SECTIONS_PRE_V6 = "Material::SectionsPreV6";

std::string titleOf(const TextLine& line) {
  return TKL::trim_copy(TKL::section_title(line.text));
}

bool isTitle(const TextLine& line) {
  const std::string title = titleOf(line);
  return MM::KeywordList::KeywordExists(SECTIONS, title) ||
         MM::KeywordList::KeywordExists(SECTIONS_PRE_V6, title);
}

/// The first title that only one generation of the material format has tells the generation.
bool isPreV6(const std::vector<TextLine>& lines) {
  for (const TextLine& line : lines) {
    const std::string title = titleOf(line);
    const bool current = MM::KeywordList::KeywordExists(SECTIONS, title);
    const bool older = MM::KeywordList::KeywordExists(SECTIONS_PRE_V6, title);
    if (current != older) return older;
  }
  return false;
}

/// Whether the line names the keyword, or the function, of which the material reader speaks.
bool isAbout(const TextLine& line, const std::string& word) {
  std::string keyword, value;
  return TKL::extract_keyword(line.text, keyword, value) ? keyword == word || value == word
                                                         : line.text == word;
}

/// Notes the words that the material reader did not know, with the line of the first one. The own lines of
/// an entry are not among `sections`: their keywords have been noted before.
void noteUnknownWords(const std::vector<std::string>& words, const std::vector<TextLine>& parameters,
                      const std::vector<TextLine>& sections) {
  std::unordered_set<std::string> noted;
  for (const TextLine& line : parameters) {
    std::string keyword, value;
    if (TKL::extract_keyword(line.text, keyword, value)) noted.insert(keyword);
  }
  for (const std::string& word : words) {
    if (noted.count(word) != 0) continue;
    const bool first = unknownKeywords().count == 0;  // only this one is shown with its line
    const auto line =
        first ? std::find_if(sections.begin(), sections.end(),
                             [&word](const TextLine& candidate) { return isAbout(candidate, word); })
              : sections.end();
    noteUnknownKeyword(word, line != sections.end() ? line->number : 0);
  }
}

/// Whether the material reader knows the keyword on a line of parameters.
bool isParameter(const std::string& keyword) {
  if (keyword == "FLAGS") return true;
  return MM::KeywordList::KeywordExists("Material::ParaStorage", keyword) ||
         MM::KeywordList::KeywordExists("Material::ParaTransport", keyword) ||
         MM::KeywordList::KeywordExists("Material::ParaMechanical", keyword);
}

}  // namespace

std::string MaterialDescription::idName() const {
  if (!name.empty()) return name;
  const std::string english = material.name();
  if (!english.empty() || !filename.isValid()) return english;
  return filename.filenameWithoutExtension();
}

bool MaterialDescription::matchesFileName(const std::string& reference) const {
  return filename.isValid() &&
         (filename.filename() == reference || filename.filenameWithoutExtension() == reference);
}

void MaterialDescription::read(const SectionText& text) {
  const char* const FUNC_ID = "[MaterialDescription::read]";
  *this = MaterialDescription();
  std::vector<TextLine> parameters;
  std::vector<TextLine> sections;
  for (const TextLine& line : text) {
    if (!sections.empty() || isTitle(line))
      sections.push_back(line);
    else
      readOwnLine(line, parameters);
  }
  if (!parameters.empty() || !sections.empty()) readEmbedded(parameters, sections);
  if (!hasData && !filename.isValid())
    throw TKL::Exception("A material needs a file name or data of its own.", FUNC_ID);
}

void MaterialDescription::readOwnLine(const TextLine& line, std::vector<TextLine>& parameters) {
  const char* const FUNC_ID = "[MaterialDescription::read]";
  if (line.text.find('=') == std::string::npos) {
    filename = TKL::Path(line.text);
    return;
  }
  const KeywordLine pair = splitKeywordLine(line, FUNC_ID);
  if (pair.keyword == "NAME") {
    name = pair.value;
  } else if (pair.keyword == "FILENAME" || pair.keyword == "FILE") {
    filename = TKL::Path(pair.value);
  } else {
    // The material reader has no line numbers, and a misspelt file keyword ends up here too.
    if (!isParameter(pair.keyword)) noteUnknownKeyword(pair.keyword, line.number);
    parameters.push_back(line);
  }
}

void MaterialDescription::readEmbedded(const std::vector<TextLine>& parameters,
                                       const std::vector<TextLine>& sections) {
  const bool preV6 = isPreV6(sections);
  std::vector<std::string> lines;
  if (!name.empty()) {
    lines.emplace_back("[IDENTIFICATION]");
    lines.push_back("NAME = " + (preV6 ? name : "en:" + name));
  }
  if (!parameters.empty()) {
    // In the older generation a section GENERAL makes the reader ignore PARAMETER.
    const bool hasGeneral = preV6 && std::any_of(sections.begin(), sections.end(), [](const TextLine& line) {
                              return titleOf(line) == "GENERAL";
                            });
    lines.emplace_back(!preV6 ? "[STORAGE_BASE_PARAMETERS]" : hasGeneral ? "[GENERAL]" : "[PARAMETER]");
    for (const TextLine& line : parameters) lines.push_back(line.text);
  }
  for (const TextLine& line : sections) lines.push_back(line.text);
  material.readASCII(lines, preV6);
  noteUnknownWords(material.unknownKeywords(), parameters, sections);
  hasData = true;
}

}  // namespace VELMORA
