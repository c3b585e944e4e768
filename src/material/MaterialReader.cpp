#include <charconv>

#include "foundation/Exception.h"
#include "foundation/FileReader.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "material/KeywordList.h"
#include "material/Material.h"

namespace MM {

namespace {

constexpr std::size_t BLOCK_SIZE = 4096;
constexpr std::size_t HEADER_SIZE = 16;

/// Three characters as a decimal number, whatever they are.
int versionNumber(const std::string& header, std::size_t offset) {
  const auto digit = [&](std::size_t i) { return static_cast<unsigned char>(header[offset + i]) - '0'; };
  return 100 * digit(0) + 10 * digit(1) + digit(2);
}

/// The number behind the last "_" of a file name, 0 if there is none.
std::uint32_t idOf(const TKL::Path& path) {
  const std::string stem = path.filenameWithoutExtension();
  const std::size_t mark = stem.rfind('_');
  std::uint32_t id = 0;
  if (mark != std::string::npos) std::from_chars(stem.data() + mark + 1, stem.data() + stem.size(), id);
  return id;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

std::vector<std::string> titlesOf(const char* category) {
  std::vector<std::string> titles;
  for (std::int32_t i = 0; i <= KeywordList::MaxIndex(category); ++i)
    titles.push_back(KeywordList::Keyword(category, static_cast<std::uint32_t>(i)));
  return titles;
}

/// Hands a section to its group: the older generation as one text.
void readGroup(MaterialFunctionBase& group, const std::vector<std::string>& lines, bool preV6) {
  if (preV6)
    group.read(joined(lines));
  else
    group.read(lines);
}

}  // namespace

void Material::read(const TKL::Path& path) {
  const char* const FUNC_ID = "[Material::read]";
  TKL::message(TKL::FormatString("Reading material file '%1'.\n").arg(path.filename()), TKL::MSG_STANDARD,
               FUNC_ID, 1);
  const TKL::MessageIndentor indentor;
  clear();
  const TKL::FileReader reader(path, BLOCK_SIZE);
  if (!reader.valid()) throw TKL::Exception(TKL::FormatString("Cannot open file: '%1'").arg(path), FUNC_ID);
  filename = path;
  id = idOf(path);
  if (id == 0 && path.extension() != "mat")
    TKL::message(
        TKL::FormatString("Invalid format for material file, '<name>_xxx.m6' expected, with xxx as ID "
                          "number. Filename was '%1'.")
            .arg(path),
        TKL::MSG_WARNING, FUNC_ID, 2);

  const bool preV6 = readHeader(path);
  Lines lines;
  try {
    reader.readAll(lines, preV6 ? 0 : HEADER_SIZE);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error opening material file (again) in ASCII mode.", FUNC_ID);
  }
  if (preV6) removePreV6Header(lines);
  try {
    readASCII(lines, preV6);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, TKL::FormatString("Error reading material from file '%1'.").arg(path), FUNC_ID);
  }
}

bool Material::readHeader(const TKL::Path& path) {
  const char* const FUNC_ID = "[Material::read]";
  std::string header;
  TKL::FileReader(path, BLOCK_SIZE).firstBytes(HEADER_SIZE, header);
  const std::string first = header.substr(0, 4);
  if (first == "V6MB") throw TKL::Exception(TKL::FormatString("Cannot open file: '%1'").arg(path), FUNC_ID);
  if (first != "V6MA") {
    versionMajor = 5;
    versionMinor = 6;
    return true;
  }
  if (header.compare(4, 4, "RLZ!") != 0)
    throw TKL::Exception("Wrong second magic number in V6 - ASCII material file!", FUNC_ID);
  versionMajor = versionNumber(header, 9);
  versionMinor = versionNumber(header, 13);
  return false;
}

void Material::removePreV6Header(Lines& lines) {
  const char* const FUNC_ID = "[Material::read]";
  for (auto line = lines.begin(); line != lines.end(); ++line) {
    const std::string trimmed = TKL::trim_copy(*line);
    if (trimmed.empty() || trimmed.front() == ';') continue;
    if (trimmed.find("[MATERIAL]") != std::string::npos) ++line;
    lines.erase(lines.begin(), line);
    return;
  }
  throw TKL::Exception("Bad header in material file.", FUNC_ID);
}

void Material::readASCII(const std::string& text, bool preV6) {
  Lines lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  readASCII(lines, preV6);
}

void Material::readASCII(const Lines& lines, bool preV6) {
  const char* const FUNC_ID = "[Material::readASCII]";
  try {
    readSections(splitSections(lines, preV6), preV6);
    prepareCalculation();
  } catch (TKL::Exception& ex) {
    const std::string known = name();
    throw TKL::Exception(ex,
                         known.empty() ? TKL::FormatString("Error reading material file '%1'.").arg(filename)
                                       : TKL::FormatString("Error reading material '%1'.").arg(known),
                         FUNC_ID);
  }
}

std::vector<Material::Lines> Material::splitSections(const Lines& lines, bool preV6) {
  std::vector<Lines> sections;
  TKL::explode_sections(lines, titlesOf(preV6 ? "Material::SectionsPreV6" : "Material::Sections"), sections,
                        ";#");
  if (!preV6) return sections;
  std::vector<Lines> current(NUM_S);
  current[S_IDENTIFICATION] = sections[SP_IDENTIFICATION];
  current[S_STORAGE_BASE_PARAMETERS] =
      sections[SP_GENERAL].empty() ? sections[SP_PARAMETER] : sections[SP_GENERAL];
  current[S_MOISTURE_STORAGE] = sections[SP_MRC];
  current[S_MOISTURE_TRANSPORT] = sections[SP_MOISTTRANS];
  current[S_HEAT_TRANSPORT] = sections[SP_HEATTRANS];
  current[S_AIR_TRANSPORT] = sections[SP_AIRTRANS];
  current[S_THERMAL_STORAGE] = sections[SP_PCMMATERIAL];
  return current;
}

void Material::readSections(const std::vector<Lines>& sections, bool preV6) {
  const char* const FUNC_ID = "[Material::readASCII]";
  if (preV6) {
    identification.readPreV6(sections[S_IDENTIFICATION]);
    readASCIIPreV6Parameters(sections[S_STORAGE_BASE_PARAMETERS]);
  } else {
    identification.read(sections[S_IDENTIFICATION]);
    readASCIIParameters(sections);
  }
  readGroup(thermalStorage, sections[S_THERMAL_STORAGE], preV6);
  readGroup(moistureStorage, sections[S_MOISTURE_STORAGE], preV6);
  readDirection(sections, D_U, preV6);

  directions = 0;
  const auto any = [&](Sections moisture) {
    return !sections[moisture].empty() || !sections[moisture + 1U].empty() ||
           !sections[moisture + 2U].empty();
  };
  if (any(S_MOISTURE_TRANSPORT_V)) {
    directions = 1;
    readDirection(sections, D_V, preV6);
  }
  if (any(S_MOISTURE_TRANSPORT_W)) {
    if (directions != 1)
      throw TKL::Exception(
          "Found W-direction parameters but no V-direction parameters are given. Invalid anisotropic "
          "material "
          "format!",
          FUNC_ID);
    directions = 2;
    readDirection(sections, D_W, preV6);
  }
  try {
    vaporContactResistance.read(sections[S_VAPOR_CONTACT_RESISTANCE]);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading material vapor transport resistance section!", FUNC_ID);
  }
}

void Material::readDirection(const std::vector<Lines>& sections, Direction direction, bool preV6) {
  // The three sections of a direction stand one behind the other.
  const std::size_t first = S_MOISTURE_TRANSPORT + 3U * static_cast<std::size_t>(direction);
  readGroup(moistureTransport[direction], sections[first], preV6);
  readGroup(thermalTransport[direction], sections[first + 1], preV6);
  readGroup(airTransport[direction], sections[first + 2], preV6);
}

}  // namespace MM
