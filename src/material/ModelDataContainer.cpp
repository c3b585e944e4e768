#include "material/ModelDataContainer.h"

#include <ostream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"

namespace MM {

void ModelDataContainer::read(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[ModelDataContainer::read]";
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string keyword, value;
    if (!TKL::extract_keyword(lines[i], keyword, value))
      throw TKL::Exception(TKL::FormatString("Expected keyword, got '%1'!").arg(lines[i]), FUNC_ID);
    if (value.empty())
      throw TKL::Exception(TKL::FormatString("Missing value for keyword '%1'!").arg(keyword), FUNC_ID);
    if (keyword == "TYPE") {
      type = value;
    } else if (keyword == "FUNCTION") {
      if (lines.size() - i < 3)
        throw TKL::Exception(TKL::FormatString("Error reading data for function '%1'.").arg(value), FUNC_ID);
      readFunction(value, lines[i + 1], lines[i + 2]);
      i += 2;
    } else {
      readParameter(keyword, value);
    }
  }
}

void ModelDataContainer::readFunction(const std::string& name, const std::string& xText,
                                      const std::string& yText) {
  const char* const FUNC_ID = "[ModelDataContainer::read]";
  if (functions.count(name) != 0)
    TKL::message(TKL::FormatString("Duplicate definition of function '%1' within model data block. "
                                   "Overwriting previous definition.\n")
                     .arg(name),
                 TKL::MSG_WARNING, FUNC_ID, 2);
  try {
    functions[name].read(xText, yText);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, TKL::FormatString("Error reading data for function '%1'.").arg(name), FUNC_ID);
  }
}

void ModelDataContainer::readParameter(const std::string& keyword, const std::string& value) {
  const char* const FUNC_ID = "[ModelDataContainer::read]";
  if (texts.count(keyword) != 0)
    TKL::message(TKL::FormatString("Duplicate definition of parameter '%1' within model data block. "
                                   "Overwriting previous definition.\n")
                     .arg(keyword),
                 TKL::MSG_WARNING, FUNC_ID, 2);
  texts[keyword] = value;
  parameters.erase(keyword);
  TKL::Parameter parameter;
  try {
    if (parameter.set(keyword, value)) parameters[keyword] = parameter;
  } catch (TKL::Exception&) {
    // A list or a plain number has no unit: it is kept as text alone.
  }
}

void ModelDataContainer::write(std::ostream& out, int indent) const {
  const std::string blanks(static_cast<std::size_t>(indent), ' ');
  out << blanks << "[MODEL]\n" << blanks << "TYPE = " << type << '\n';
  for (const auto& [keyword, text] : texts) out << blanks << keyword << " = " << text << '\n';
  for (const auto& [name, function] : functions) {
    out << blanks << "FUNCTION = " << name << '\n';
    function.write(out, indent);
  }
}

}  // namespace MM
