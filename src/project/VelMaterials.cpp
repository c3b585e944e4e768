#include "project/VelMaterials.h"

#include <algorithm>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

std::string joined(const SectionText& text) {
  std::string all;
  for (const TextLine& line : text) all += line.text + '\n';
  return all;
}

std::vector<MaterialDescription> readRange(const std::vector<SectionText>& blocks) {
  const char* const FUNC_ID = "[read_range]";
  std::vector<MaterialDescription> entries;
  for (const SectionText& block : blocks) {
    try {
      entries.emplace_back().read(block);
    } catch (TKL::Exception& ex) {
      TKL::Exception failure(ex, TKL::FormatString("Error reading entry %1!").arg(entries.size()), FUNC_ID);
      if (failure.inputLine() == 0 && !block.empty()) failure.setInputLine(block.begin()->number);
      throw failure;
    }
  }
  return entries;
}

}  // namespace

void VelMaterials::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelMaterials::read]";
  TKL::message("Reading embedded materials and material references\n", TKL::MSG_STANDARD, FUNC_ID, 2);
  const TKL::MessageIndentor indentor;
  std::vector<SectionText> blocks;
  for (const TextLine& line : text) {
    const std::string plain = TKL::trim_copy(TKL::remove_comment(line.text));
    const std::string title = TKL::section_title(plain);
    if (title.empty()) continue;
    if (title == "MATERIAL") {
      blocks.emplace_back();
      continue;
    }
    if (blocks.empty()) {
      TKL::Exception error(TKL::FormatString("Expected [MATERIAL] section header while reading material data "
                                             "block from string:\n%1\n")
                               .arg(quotedText(joined(text))),
                           FUNC_ID);
      error.setInputLine(line.number);
      throw error;
    }
    blocks.back().append({plain, line.number});
  }
  materials.clear();
  try {
    materials = readRange(blocks);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(
        ex, TKL::FormatString("Error reading material data section:\n%1").arg(quotedText(joined(text))),
        FUNC_ID);
  }
}

const MaterialDescription* VelMaterials::find(const std::string& reference) const {
  const auto first = [this](const auto& test) -> const MaterialDescription* {
    const auto found = std::find_if(materials.begin(), materials.end(), test);
    return found == materials.end() ? nullptr : &*found;
  };
  if (const MaterialDescription* byName =
          first([&](const MaterialDescription& entry) { return entry.idName() == reference; }))
    return byName;
  return first([&](const MaterialDescription& entry) { return entry.matchesFileName(reference); });
}

}  // namespace VELMORA
