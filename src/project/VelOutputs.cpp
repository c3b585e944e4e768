#include "project/VelOutputs.h"

#include <array>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"
#include "project/TextBlocks.h"

namespace VELMORA {

namespace {

template <class T>
void readList(const SectionText& text, const std::string& header, const char* functionId,
              std::vector<T>& list) {
  for (const SectionText& block : splitBlocks(text, header, functionId)) {
    T record;
    record.read(block);
    list.push_back(std::move(record));
  }
}

int readThawBegin(const KeywordLine& line, const char* functionId) {
  const int kind = TKL::string2val<int>(line.value);
  if (kind >= 0 && kind < VelOutputs::NUM_TB) return kind;
  throw TKL::Exception(TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!")
                           .arg(quotedText(line.value))
                           .arg(line.keyword),
                       functionId);
}

}  // namespace

VelOutputs::VelOutputs()
    : maxHygRelHum("MAX_HYG_RELHUM", 95.0, "%"),
      expRefTemper("EXP_REF_TEMPER", 0.0, "C"),
      expRefRelHum("EXP_REF_RELHUM", 60.0, "%"),
      freezeBegin("FREEZE_BEGIN", 0.01, "---") {
  defaultGrid.durations.emplace_back("DURATION", 0.0, "h");
  defaultGrid.steps.emplace_back("STEP", 1.0, "h");
}

void VelOutputs::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelOutputs::read]";
  const char* const CATEGORY = "VelOutputs::outputSections_t";
  std::array<SectionText, NUM_O> parts;
  SectionText* current = nullptr;
  forEachLine(text, [&](const TextLine& line) {
    const std::string title = TKL::section_title(line.text);
    if (title.empty()) return;
    if (KeywordList::KeywordExists(CATEGORY, title)) {
      current = &parts[static_cast<std::size_t>(KeywordList::Enumeration(CATEGORY, title))];
    } else if (current == nullptr) {
      throw TKL::Exception(TKL::FormatString("Expected keyword, got '%1'!").arg(quotedText(title)), FUNC_ID);
    } else {
      current->append(line);
    }
  });
  readOutputParameters(parts[O_GENERAL]);
  readOutputGrids(parts[O_GRIDS]);
  readOutputFormats(parts[O_FORMATS]);
  readOutputFiles(parts[O_FILES]);
}

void VelOutputs::readOutputParameters(const SectionText& text) {
  const char* const FUNC_ID = "[VelOutputs::readOutputParameters]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "OUTPUT_FOLDER") {
      outputFolder = TKL::Path(line.value);
    } else if (line.keyword == "MAX_HYG_RELHUM") {
      readParameter(line, maxHygRelHum, FUNC_ID);
    } else if (line.keyword == "EXP_REF_TEMPER") {
      readParameter(line, expRefTemper, FUNC_ID);
    } else if (line.keyword == "EXP_REF_RELHUM") {
      readParameter(line, expRefRelHum, FUNC_ID);
    } else if (line.keyword == "FREEZE_BEGIN") {
      readParameter(line, freezeBegin, FUNC_ID);
    } else if (line.keyword == "THAW_BEGIN") {
      thawBegin = readThawBegin(line, FUNC_ID);
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

void VelOutputs::readOutputGrids(const SectionText& text) {
  const char* const FUNC_ID = "[VelOutputs::readOutputGrids]";
  readList(text, "OUTPUT_GRID", FUNC_ID, outputGrids);
}

void VelOutputs::readOutputFormats(const SectionText& text) {
  const char* const FUNC_ID = "[VelOutputs::readOutputFormats]";
  readList(text, "OUTPUT_FORMAT", FUNC_ID, outputFormats);
}

void VelOutputs::readOutputFiles(const SectionText& text) {
  const char* const FUNC_ID = "[VelOutputs::readOutputFiles]";
  readList(text, "OUTPUT_FILE", FUNC_ID, outputFiles);
}

void VelOutputs::setDefaultFolder(const TKL::Path& projectFile) {
  if (outputFolder.isValid()) return;
  outputFolder = TKL::Path("$(PROJECT_DIR)") / (projectFile.filenameWithoutExtension() + ".results");
}

}  // namespace VELMORA
