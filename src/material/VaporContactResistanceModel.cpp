#include "material/VaporContactResistanceModel.h"

#include <istream>
#include <ostream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "material/KeywordList.h"

namespace MM {

namespace {

constexpr const char* CONTACT_FUNCTIONS = "VaporContactResistanceModel::Functions";
constexpr const char* PARAM = "VaporContactResistanceModel::Param";

}  // namespace

void VaporContactResistanceModel::read(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[VaporContactResistanceModel::read]";
  try {
    readFunctions(lines, {CONTACT_FUNCTIONS, functions, FUNC_ID});
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading vapor transport resistance section!", FUNC_ID);
  }
}

void VaporContactResistanceModel::read(const std::string& text) {
  read(splitLines(text));
}

void VaporContactResistanceModel::readKeyword(const std::string& keyword, const std::string& value,
                                              const char* functionId) {
  if (!KeywordList::KeywordExists(PARAM, keyword))
    return MaterialFunctionBase::readKeyword(keyword, value, functionId);
  parameters[static_cast<std::size_t>(KeywordList::Enumeration(PARAM, keyword))] =
      TKL::string2val<double>(value);
}

void VaporContactResistanceModel::writeBinary(std::ostream& out) const {
  writeBinaryFunctions(out, functions);
  out.write(reinterpret_cast<const char*>(parameters.data()), sizeof(parameters));
}

void VaporContactResistanceModel::write(std::ostream& out, int indent) const {
  const char* const FUNC_ID = "[VaporContactResistanceModel::write]";
  writeDirectionTitle(out, indent, "VAPOR_CONTACT_RESISTANCE", 0, FUNC_ID);
  writeFunctions(out, indent, CONTACT_FUNCTIONS, functions);
  if (parameters[P_WEIGHT_FACTOR_POS] == 1.0) return;
  const std::string blanks(static_cast<std::size_t>(indent), ' ');
  for (std::uint32_t i = 0; i < NUM_P; ++i)
    out << blanks << KeywordList::Keyword(PARAM, i) << " = " << TKL::val2string(parameters[i]) << '\n';
}

void VaporContactResistanceModel::readBinary(std::istream& in) {
  const char* const FUNC_ID = "[VaporContactResistanceModel::readBinary]";
  readBinaryFunctions(in, functions);
  std::array<double, NUM_P> values{};
  if (!in.read(reinterpret_cast<char*>(values.data()), sizeof(values)))
    throw TKL::Exception("Error reading from input stream!", FUNC_ID);
  parameters = values;
}

void VaporContactResistanceModel::clear() {
  *this = VaporContactResistanceModel();
}

}  // namespace MM
