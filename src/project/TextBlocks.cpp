#include "project/TextBlocks.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

std::vector<SectionText> splitBlocks(const SectionText& text, const std::string& header,
                                     const char* functionId) {
  std::vector<SectionText> blocks;
  forEachLine(text, [&](const TextLine& line) {
    const std::string title = TKL::section_title(line.text);
    if (title.empty()) return;
    if (title == header) {
      blocks.emplace_back();
    } else if (blocks.empty()) {
      throw TKL::Exception(TKL::FormatString("Expected keyword, got '%1'!").arg(quotedText(title)),
                           functionId);
    } else {
      blocks.back().append(line);
    }
  });
  return blocks;
}

}  // namespace VELMORA
