#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "material/MaterialFunctionBase.h"
#include "material/Words.h"

namespace MM {

namespace {

const char* const READ_MODELS_ID = "[MaterialFunctionBase::readModelsASCII]";

/// Takes the words of the line of numbers in their order.
class NumberLine {
 public:
  explicit NumberLine(const std::string& text) : words_(splitWords(text)) {}

  /// The next number as it is written.
  std::string next(double& value) {
    const char* const FUNC_ID = READ_MODELS_ID;
    if (next_ >= words_.size() || !TKL::tryString2val(words_[next_], value))
      throw TKL::Exception(TKL::FormatString("Error reading model parameter #%1.").arg(next_ + 1), FUNC_ID);
    return words_[next_++];
  }

  /// The next `count` numbers, each behind a blank.
  std::string next(std::size_t count) {
    std::string text;
    double value = 0.0;
    for (std::size_t i = 0; i < count; ++i) text += " " + next(value);
    return text;
  }

  /// A count that is not larger than the number of words of the line: larger ones cannot be served.
  std::size_t nextCount() {
    const char* const FUNC_ID = READ_MODELS_ID;
    double value = 0.0;
    next(value);
    if (!(value >= 1.0) || value > static_cast<double>(words_.size()) || value != std::floor(value))
      throw TKL::Exception(TKL::FormatString("Error reading model parameter #%1.").arg(next_), FUNC_ID);
    return static_cast<std::size_t>(value);
  }

 private:
  std::vector<std::string> words_;
  std::size_t next_ = 0;
};

std::string gaussText(NumberLine numbers) {
  const std::size_t modality = numbers.nextCount();
  std::string text = "TYPE = GAUSS\n";
  text += "GAUSS_MODALITY           = " + TKL::val2string(modality) + "\n";
  text += "GAUSS_Si                 =" + numbers.next(modality) + "\n";
  text += "GAUSS_Wi                 =" + numbers.next(modality) + "\n";
  text += "GAUSS_Ri                 =" + numbers.next(modality) + "\n";
  return text;
}

std::string serialParallelText(NumberLine numbers) {
  std::string text = "TYPE = SERIAL_PARALLEL\n";
  for (const char* const key :
       {"SP_KScale           =", "SP_SP               =", "SP_UNSAT         =", "SP_UseAdsorption    =",
        "SP_pCmax            =", "SP_ThetaLAdditional    =", "SP_Kl                  ="})
    text += key + numbers.next(1) + "\n";
  return text;
}

}  // namespace

void MaterialFunctionBase::readModelsASCII(const std::string& identifier, const std::string& numbers) {
  const char* const FUNC_ID = READ_MODELS_ID;
  std::string text;
  if (identifier == "GAUSS")
    text = gaussText(NumberLine(numbers));
  else if (identifier.find("SP_MODEL") != std::string::npos)
    text = serialParallelText(NumberLine(numbers));
  else
    text = "TYPE = " + identifier + "\n";

  ModelDataContainer model;
  model.read(splitLines(text));
  if (models.count(model.type) != 0)
    TKL::message(TKL::FormatString("Multiple definitions of model identifier '%1'!").arg(identifier),
                 TKL::MSG_WARNING, FUNC_ID, 2);
  models[model.type] = model;
}

}  // namespace MM
