#include "project/VelOutputFormat.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

/// No double has more decimal places than this; a longer field would only cost memory.
constexpr unsigned int MAX_NUMBER_LENGTH = 1100;

int readLength(const KeywordLine& line, const char* functionId) {
  const auto length = TKL::string2val<unsigned int>(line.value);
  if (length > MAX_NUMBER_LENGTH) {
    throw TKL::Exception(TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!")
                             .arg(quotedText(line.value))
                             .arg(line.keyword),
                         functionId);
  }
  return static_cast<int>(length);
}

int readFieldType(const std::string& value, const char* functionId) {
  if (value.find("ICEPROB") == std::string::npos) {
    return KeywordList::Enumeration("VelOutputFormat::field_t", value);
  }
  TKL::message(TKL::FormatString("Deprecated keyword '%1' found").arg(quotedText(value)), TKL::MSG_WARNING,
               functionId, 2);
  return VelOutputFormat::Q_ICEPROB;
}

int readNumberFormat(const std::string& value, const char* functionId) {
  if (TKL::string_nocase_compare(value, "FIXED")) return VelOutputFormat::N_FIXED;
  if (TKL::string_nocase_compare(value, "SCIENTIFIC")) return VelOutputFormat::N_SCIENTIFIC;
  if (!TKL::string_nocase_compare(value, "DEFAULT")) {
    TKL::message(
        TKL::FormatString("Invalid number format '%1', using default format!\n").arg(quotedText(value)),
        TKL::MSG_WARNING, functionId, 2);
  }
  return VelOutputFormat::N_DEFAULT;
}

}  // namespace

void VelOutputFormat::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelOutputFormat::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    const std::string& keyword = line.keyword;
    const std::string& value = line.value;
    if (keyword == "NAME") {
      name = value;
    } else if (keyword == "TYPE") {
      type = static_cast<type_t>(KeywordList::Enumeration("VelOutputFormat::type_t", value));
    } else if (keyword == "FIELD_TYPE") {
      quantity = readFieldType(value, FUNC_ID);
    } else if (keyword == "FLUX_TYPE") {
      quantity = KeywordList::Enumeration("VelOutputFormat::flux_t", value);
    } else if (keyword == "SPACE_TYPE") {
      spaceType = static_cast<space_type_t>(KeywordList::Enumeration("VelOutputFormat::space_type_t", value));
    } else if (keyword == "TIME_TYPE") {
      timeType = static_cast<time_type_t>(KeywordList::Enumeration("VelOutputFormat::time_type_t", value));
    } else if (keyword == "TIME_UNIT") {
      timeUnit.set(value);
    } else if (keyword == "VALUE_UNIT") {
      valueUnit.set(value);
    } else if (keyword == "PRECISION") {
      precision = readLength(line, FUNC_ID);
    } else if (keyword == "WIDTH") {
      width = readLength(line, FUNC_ID);
    } else if (keyword == "FORMAT") {
      numberFormat = readNumberFormat(value, FUNC_ID);
    } else if (keyword == "BINARY") {
      binary = isYes(value);
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

}  // namespace VELMORA
