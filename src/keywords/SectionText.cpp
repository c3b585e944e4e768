#include "keywords/SectionText.h"

#include <algorithm>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/QuotedText.h"
#include "keywords/UnknownKeywords.h"

namespace VELMORA {

SectionText::SectionText(std::string_view text, int firstNumber) {
  std::size_t position = 0;
  int number = firstNumber;
  while (position < text.size()) {
    const std::size_t end = std::min(text.find('\n', position), text.size());
    append({TKL::trim_copy(text.substr(position, end - position)), number});
    position = end + 1;
    ++number;
  }
}

KeywordLine splitKeywordLine(const TextLine& line, const char* functionId) {
  KeywordLine result;
  result.line = &line;
  if (!TKL::extract_keyword(line.text, result.keyword, result.value)) {
    throw TKL::Exception(TKL::FormatString("Expected keyword, got '%1'!").arg(quotedText(line.text)),
                         functionId);
  }
  if (result.value.empty()) {
    throw TKL::Exception(TKL::FormatString("Missing value for keyword '%1'!").arg(quotedText(result.keyword)),
                         functionId);
  }
  return result;
}

void forEachLine(const SectionText& text, const std::function<void(const TextLine&)>& read) {
  for (const TextLine& line : text) {
    try {
      read(line);
    } catch (TKL::Exception& exception) {
      if (exception.inputLine() == 0) {
        exception.setInputLine(line.number);
      }
      throw;
    }
  }
}

void forEachKeywordLine(const SectionText& text, const char* functionId,
                        const std::function<void(const KeywordLine&)>& read) {
  forEachLine(text, [&](const TextLine& line) { read(splitKeywordLine(line, functionId)); });
}

void warnUnknownKeyword(const KeywordLine& line, const char* functionId) {
  noteUnknownKeyword(line.keyword, line.line != nullptr ? line.line->number : 0);
  TKL::message(
      TKL::FormatString("Invalid or deprecated keyword '%1' in this section!").arg(quotedText(line.keyword)),
      TKL::MSG_WARNING, functionId, 3);
}

bool isYes(const std::string& value) {
  return TKL::string_nocase_compare(value, "yes");
}

void readParameter(const KeywordLine& line, TKL::Parameter& parameter, const char* functionId) {
  const TKL::FormatString failure = TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!")
                                        .arg(quotedText(line.value))
                                        .arg(quotedText(line.keyword));
  try {
    if (parameter.set(line.keyword, line.value)) {
      return;
    }
  } catch (const TKL::Exception& cause) {
    throw TKL::Exception(cause, failure, functionId);
  }
  throw TKL::Exception(failure, functionId);
}

}  // namespace VELMORA
