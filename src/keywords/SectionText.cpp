#include "keywords/SectionText.h"

#include <algorithm>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/UnknownKeywords.h"

namespace VELMORA {

SectionText::SectionText(std::string_view text, int firstNumber) {
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines_.push_back({TKL::trim_copy(std::string(text.substr(begin, end - begin))), firstNumber++});
    begin = end + 1;
  }
}

KeywordLine splitKeywordLine(const TextLine& line, const char* functionId) {
  KeywordLine result;
  result.line = &line;
  if (!TKL::extract_keyword(line.text, result.keyword, result.value))
    throw TKL::Exception(TKL::FormatString("Expected keyword, got '%1'!").arg(line.text), functionId);
  if (result.value.empty())
    throw TKL::Exception(TKL::FormatString("Missing value for keyword '%1'!").arg(result.keyword),
                         functionId);
  return result;
}

void forEachLine(const SectionText& text, const std::function<void(const TextLine&)>& read) {
  for (const TextLine& line : text) {
    try {
      read(line);
    } catch (TKL::Exception& error) {
      if (error.inputLine() == 0) error.setInputLine(line.number);
      throw;
    }
  }
}

void forEachKeywordLine(const SectionText& text, const char* functionId,
                        const std::function<void(const KeywordLine&)>& read) {
  forEachLine(text, [&](const TextLine& line) { read(splitKeywordLine(line, functionId)); });
}

void warnUnknownKeyword(const KeywordLine& line, const char* functionId) {
  constexpr int VERBOSITY = 3;
  UnknownKeywords& record = unknownKeywords();
  if (record.count++ == 0) {
    record.firstKeyword = line.keyword;
    record.firstLine = line.line == nullptr ? 0 : line.line->number;
  }
  TKL::message(TKL::FormatString("Invalid or deprecated keyword '%1' in this section!").arg(line.keyword),
               TKL::MSG_WARNING, functionId, VERBOSITY);
}

bool isYes(const std::string& value) {
  return TKL::string_nocase_compare(value, "yes");
}

void readParameter(const KeywordLine& line, TKL::Parameter& parameter, const char* functionId) {
  const std::string text = TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!")
                               .arg(line.value)
                               .arg(line.keyword)
                               .str();
  bool valid = false;
  try {
    valid = parameter.set(line.keyword, line.value);
  } catch (const TKL::Exception& error) {
    throw TKL::Exception(error, text, functionId);
  }
  if (!valid) throw TKL::Exception(text, functionId);
}

}  // namespace VELMORA
