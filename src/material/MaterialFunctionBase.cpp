#include "material/MaterialFunctionBase.h"

#include <algorithm>
#include <ostream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "material/KeywordList.h"

namespace MM {

namespace {

bool isBracketed(const std::string& line) {
  return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

/// Reads the two lines of a table into its slot.
void readTable(TKL::LinearSpline& spline, const std::string& xText, const std::string& yText,
               const std::string& name, const char* badTable, const char* functionId) {
  try {
    spline.read(xText, yText);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, TKL::FormatString(badTable).arg(name).arg("reading its values"), functionId);
  }
}

}  // namespace

void MaterialFunctionBase::readFunctions(const std::vector<std::string>& lines, const Grammar& grammar) {
  const char* const FUNC_ID = grammar.functionId;
  std::vector<std::string> rest(lines);
  extractModelData(rest);
  for (std::size_t i = 0; i < rest.size(); ++i) {
    std::string keyword, value;
    if (!TKL::extract_keyword(rest[i], keyword, value))
      throw TKL::Exception(TKL::FormatString("Expected keyword, got '%1'!").arg(rest[i]), FUNC_ID);
    if (value.empty())
      throw TKL::Exception(TKL::FormatString("Missing value for keyword '%1'!").arg(keyword), FUNC_ID);
    if (keyword == "FUNCTION") {
      if (rest.size() - i < 3)
        throw TKL::Exception(TKL::FormatString(grammar.tooFewLines).arg(value), FUNC_ID);
      readFunction(value, rest[i + 1], rest[i + 2], grammar);
      i += 2;
    } else if (keyword == "MODEL") {
      readModelsASCII(value, i + 1 < rest.size() ? rest[i + 1] : std::string());
      ++i;
    } else {
      readKeyword(keyword, value, FUNC_ID);
    }
  }
}

void MaterialFunctionBase::readFunction(const std::string& name, const std::string& xText,
                                        const std::string& yText, const Grammar& grammar) {
  const char* const FUNC_ID = grammar.functionId;
  if (!KeywordList::KeywordExists(grammar.category, name)) {
    TKL::message("Unknown function type '" + name + "'.", TKL::MSG_WARNING, FUNC_ID, 3);
    unknownKeywords.push_back(name);
    return;
  }
  const auto slot = static_cast<std::size_t>(KeywordList::Enumeration(grammar.category, name));
  readTable(grammar.functions[slot], xText, yText, name, grammar.badTable, FUNC_ID);
}

void MaterialFunctionBase::readKeyword(const std::string& keyword, const std::string& /*value*/,
                                       const char* functionId) {
  const char* const FUNC_ID = functionId;
  TKL::message(TKL::FormatString("Invalid or deprecated keyword '%1' in this section!").arg(keyword),
               TKL::MSG_WARNING, FUNC_ID, 3);
  unknownKeywords.push_back(keyword);
}

void MaterialFunctionBase::extractModelData(std::vector<std::string>& lines) {
  std::vector<std::string> rest;
  std::vector<std::string> block;
  bool inBlock = false;
  for (const std::string& line : lines) {
    const std::string trimmed = TKL::trim_copy(line);
    if (isBracketed(trimmed)) {
      if (inBlock) storeModelData(block);
      block.clear();
      inBlock = trimmed == "[MODEL]";
      if (inBlock) continue;
    }
    (inBlock ? block : rest).push_back(line);
  }
  if (inBlock) storeModelData(block);
  lines.swap(rest);
}

void MaterialFunctionBase::storeModelData(const std::vector<std::string>& block) {
  const char* const FUNC_ID = "[MaterialFunctionBase::extractModelData]";
  ModelDataContainer model;
  model.read(block);
  if (model.type.empty()) {
    std::string text;
    for (const std::string& line : block) text += line + '\n';
    throw TKL::Exception(TKL::FormatString("Missing TYPE keyword in model data block:\n%1").arg(text),
                         FUNC_ID);
  }
  if (models.count(model.type) != 0)
    TKL::message(TKL::FormatString("Duplicate model parametrization block with type '%1' found. "
                                   "Overwriting first parameter block.\n")
                     .arg(model.type),
                 TKL::MSG_STANDARD, FUNC_ID, 2);
  models[model.type] = model;
}

void MaterialFunctionBase::writeFunctions(std::ostream& out, int indent, const char* category,
                                          std::span<const TKL::LinearSpline> functions) const {
  const std::string blanks(static_cast<std::size_t>(indent), ' ');
  for (std::size_t i = 0; i < functions.size(); ++i) {
    if (functions[i].empty()) continue;
    out << blanks << "FUNCTION = " << KeywordList::Keyword(category, static_cast<std::uint32_t>(i)) << '\n';
    functions[i].write(out, indent);
  }
  for (const auto& [type, model] : models) model.write(out, indent);
}

void MaterialFunctionBase::writeDirectionTitle(std::ostream& out, int indent, const char* title,
                                               int direction, const char* functionId) {
  const char* const FUNC_ID = functionId;
  static const char* const ENDS[] = {"]\n", "_V]\n", "_W]\n"};
  if (direction < 0 || direction > 2)
    throw TKL::Exception("Invalid material transport direction type!", FUNC_ID);
  out << std::string(static_cast<std::size_t>(indent), ' ') << '[' << title << ENDS[direction];
}

void MaterialFunctionBase::writeBinaryFunctions(std::ostream& out,
                                                std::span<const TKL::LinearSpline> functions) {
  for (const TKL::LinearSpline& function : functions) function.write_binary(out);
}

void MaterialFunctionBase::readBinaryFunctions(std::istream& in, std::span<TKL::LinearSpline> functions) {
  const char* const FUNC_ID = "[MaterialFunctionBase::readBinaryFunctions]";
  for (TKL::LinearSpline& function : functions) {
    function.read_binary(in);
    std::string errorText;
    if (!function.empty() && !function.makeSpline(errorText)) throw TKL::Exception(errorText, FUNC_ID);
  }
}

bool MaterialFunctionBase::anyFunction(std::span<const TKL::LinearSpline> functions) {
  return std::any_of(functions.begin(), functions.end(),
                     [](const TKL::LinearSpline& function) { return !function.empty(); });
}

std::vector<std::string> MaterialFunctionBase::splitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    std::string line = text.substr(begin, end - begin);
    if (!TKL::trim_copy(line).empty()) lines.push_back(std::move(line));
    begin = end + 1;
  }
  return lines;
}

}  // namespace MM
