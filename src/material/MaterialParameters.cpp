#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "material/KeywordList.h"
#include "material/Material.h"

namespace MM {

namespace {

constexpr const char* READ_LINE_ID = "[Material::readASCIIParameterFromLine]";

/// The parameter of a keyword in a list, null if the list does not know it. An alias is warned about and
/// replaced by the current keyword.
template <std::size_t N>
TKL::Parameter* findIn(std::array<TKL::Parameter, N>& list, const char* category, std::string& keyword) {
  const char* const FUNC_ID = READ_LINE_ID;
  if (!KeywordList::KeywordExists(category, keyword)) return nullptr;
  bool alias = false;
  const std::int32_t index = KeywordList::Enumeration(category, keyword, &alias);
  const std::string current = KeywordList::Keyword(category, static_cast<std::uint32_t>(index));
  if (alias)
    TKL::message(TKL::FormatString("Keyword '%1' is deprecated (new -> '%2').").arg(keyword).arg(current),
                 TKL::MSG_WARNING, FUNC_ID, 2);
  keyword = current;
  return &list[static_cast<std::size_t>(index)];
}

}  // namespace

TKL::Parameter* Material::findParameter(std::string& keyword) {
  if (TKL::Parameter* found = findIn(paraTransport, "Material::ParaTransport", keyword)) return found;
  if (TKL::Parameter* found = findIn(paraStorage, "Material::ParaStorage", keyword)) return found;
  return findIn(paraMechanical, "Material::ParaMechanical", keyword);
}

void Material::readASCIIParameterFromLine(const std::string& line) {
  const char* const FUNC_ID = READ_LINE_ID;
  std::string keyword, value;
  if (!TKL::extract_keyword(line, keyword, value))
    throw TKL::Exception(TKL::FormatString("Expected keyword, got '%1'!").arg(line), FUNC_ID);
  if (value.empty())
    throw TKL::Exception(TKL::FormatString("Missing value to parameter %1.").arg(keyword), FUNC_ID);
  // Old files have these two among their parameters.
  if (keyword == "NAME") return identification.name.setString(value, "en");
  if (keyword == "FLAGS") return identification.setFlagsPreV6(value);

  TKL::Parameter* const parameter = findParameter(keyword);
  if (!parameter) {
    TKL::message(TKL::FormatString("Invalid or deprecated keyword '%1'.").arg(keyword), TKL::MSG_WARNING,
                 FUNC_ID, 3);
    unknownParameters_.push_back(keyword);
    return;
  }
  const TKL::FormatString failure =
      TKL::FormatString("Invalid format of argument '%2' to keyword '%1'.").arg(keyword).arg(value);
  std::string reason;
  bool read = false;
  try {
    read = parameter->set(keyword, value, &reason);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, failure, FUNC_ID);
  }
  if (!read) throw TKL::Exception(TKL::Exception(reason, FUNC_ID), failure, FUNC_ID);
}

void Material::readASCIIParameters(const std::vector<Lines>& sections) {
  const char* const FUNC_ID = "[Material::readASCIIParameters]";
  try {
    for (const Sections section :
         {S_TRANSPORT_BASE_PARAMETERS, S_STORAGE_BASE_PARAMETERS, S_MECHANICAL_BASE_PARAMETERS})
      for (const std::string& line : sections[section]) readASCIIParameterFromLine(line);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading material base parameter section!", FUNC_ID);
  }
}

void Material::readASCIIPreV6Parameters(const Lines& lines) {
  const char* const FUNC_ID = "[Material::readASCIIPreV6Parameters]";
  try {
    for (const std::string& line : lines) readASCIIParameterFromLine(line);
  } catch (TKL::Exception& ex) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    throw TKL::Exception(
        ex, TKL::FormatString("Error reading basic parameters from string:\n-----\n%1\n-----\n").arg(text),
        FUNC_ID);
  }
}

}  // namespace MM
