#include <algorithm>
#include <array>
#include <string_view>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "material/KeywordList.h"
#include "material/MaterialIdentification.h"
#include "material/Words.h"

namespace MM {

namespace {

constexpr const char* const LANGUAGE = "en";  ///< the only language of the older generation

/// In the order in which a line is tested for them.
constexpr std::array<const char*, 18> KEYWORDS = {
    "UNIQUE_ID", "NAME",         "COLOR",          "COLOUR", "PRODUCER",     "PRODUCT_ID",
    "FLAGS",     "SAMPLINGDATE", "SAMPLINGMETHOD", "SOURCE", "INVESTIGATOR", "MM_ID",
    "CATEGORY",  "COMMENTS",     "DBTYPE",         "DATE",   "COUNTRY",      "DEPRICATED_STATE"};

struct Obsolete {
  const char* keyword;
  const char* text;
};

constexpr std::array<Obsolete, 4> OBSOLETE = {{{"CLASSIFICATION", "CLASSIFICATION is obsolete!"},
                                               {"MASTERFORMAT1", "MASTERFORMAT1 is obsolete!"},
                                               {"MASTERFORMAT2", "MASTERFORMAT2N is obsolete!"},
                                               {"MASTERFORMAT3", "MASTERFORMAT3 is obsolete!"}}};

constexpr std::array<std::string_view, 22> DATABASE_TYPES = {"Standard",
                                                             "Demo",
                                                             "Nassregister",
                                                             "Haacke",
                                                             "Knauf",
                                                             "Xelator-Demo",
                                                             "Xelator-Pro",
                                                             "Xelator-Standard",
                                                             "Xelator-Standard::Bauplatten",
                                                             "Xelator-Standard::Betone",
                                                             "Xelator-Standard::Daemmstoffe",
                                                             "Xelator-Standard::Folien",
                                                             "Xelator-Standard::Haacke_Cellco",
                                                             "Xelator-Standard::HolzDaemmPlatten",
                                                             "Xelator-Standard::Mauersteine",
                                                             "Xelator-Standard::MineralDaemmPlatten",
                                                             "Xelator-Standard::Natursteine",
                                                             "Xelator-Standard::Naturstoffe",
                                                             "Xelator-Standard::Putze_1",
                                                             "Xelator-Standard::Putze_2",
                                                             "Xelator-Standard::Sonstiges",
                                                             "Xelator-Standard::Ziegel"};

MaterialIdentification::SamplingMethods samplingMethodOf(const std::string& value) {
  const char* const FUNC_ID = "[MaterialIdentification::readLinePreV6]";
  unsigned int index = 0;
  const bool isNumber = !value.empty() && value.front() >= '0' && value.front() <= '9';
  if (!isNumber || !TKL::tryString2val(value, index) || index >= MaterialIdentification::NUM_SM)
    throw TKL::Exception(
        "An unsigned int must be selected for sampling method! Please check Velmora 6 material file "
        "specification!",
        FUNC_ID);
  return static_cast<MaterialIdentification::SamplingMethods>(index);
}

}  // namespace

void MaterialIdentification::readPreV6(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[MaterialIdentification::read]";
  try {
    for (const std::string& line : lines) readLinePreV6(line);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading material identification section!", FUNC_ID);
  }
}

void MaterialIdentification::readLinePreV6(const std::string& line) {
  const char* const FUNC_ID = "[MaterialIdentification::readLinePreV6]";
  std::string left, value;
  if (!TKL::extract_keyword(line, left, value)) value.clear();
  const auto has = [&line](const char* keyword) { return containsWord(line, keyword); };

  const auto keyword = std::find_if(KEYWORDS.begin(), KEYWORDS.end(), has);
  if (keyword != KEYWORDS.end()) {
    if (!value.empty()) setValuePreV6(*keyword, value);
    return;
  }
  for (const Obsolete& obsolete : OBSOLETE)
    if (has(obsolete.keyword)) return TKL::message(std::string(obsolete.text), TKL::MSG_WARNING, FUNC_ID, 2);
  TKL::message(TKL::FormatString("Invalid keyword found in identification section '%1'.").arg(line),
               TKL::MSG_WARNING, FUNC_ID, 3);
  unknownKeywords.push_back(left.empty() ? line : left);
}

void MaterialIdentification::setValuePreV6(const std::string& keyword, const std::string& value) {
  if (keyword == "NAME") {
    name.setString(value, LANGUAGE);
  } else if (keyword == "COLOR" || keyword == "COLOUR") {
    setColour(keyword, value);
  } else if (keyword == "PRODUCER") {
    producer.setString(value, LANGUAGE);
  } else if (keyword == "PRODUCT_ID") {
    productId.setString(value, LANGUAGE);
  } else if (keyword == "FLAGS") {
    setFlagsPreV6(value);
  } else if (keyword == "SAMPLINGDATE") {
    samplingDate = value;
  } else if (keyword == "SAMPLINGMETHOD") {
    samplingMethod = samplingMethodOf(value);
  } else if (keyword == "SOURCE") {
    laboratory.setString(value, LANGUAGE);
  } else if (keyword == "INVESTIGATOR") {
    investigator.setString(value, LANGUAGE);
  } else if (keyword == "CATEGORY") {
    category.read(value);
  } else if (keyword == "COMMENTS") {
    comments.setString(value, LANGUAGE);
  } else if (keyword == "DBTYPE") {
    const bool known = std::find(DATABASE_TYPES.begin(), DATABASE_TYPES.end(), value) != DATABASE_TYPES.end();
    if (known) dbType = value;
  } else if (keyword == "DATE") {
    date = value;
  } else if (keyword == "COUNTRY") {
    country = value;
  }
}

void MaterialIdentification::setFlagsPreV6(const std::string& text) {
  const char* const FUNC_ID = "[MaterialIdentification::setFlagsPreV6] ";
  constexpr int ONLY_HYGROSCOPIC = 64;
  for (const std::string& word : splitWords(text)) {
    if (!KeywordList::KeywordExists("MaterialIdentification::FlagsPreV6", word)) {
      TKL::message("Unknown flag found! Skipping it for now...", TKL::MSG_WARNING, FUNC_ID, 2);
      continue;
    }
    const int bit = KeywordList::Enumeration("MaterialIdentification::FlagsPreV6", word);
    if (bit == ONLY_HYGROSCOPIC)
      TKL::message("Flag ONLY_HYGROSCOPIC is no longer supported! Skipping it now.", TKL::MSG_WARNING,
                   FUNC_ID, 2);
    else
      flags |= static_cast<unsigned int>(bit);  // the other bits are those of the current flags
  }
}

}  // namespace MM
