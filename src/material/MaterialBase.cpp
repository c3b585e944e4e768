#include "material/MaterialBase.h"

#include <limits>

#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "material/KeywordList.h"

namespace MM {

double MaterialBase::thetaPor() const {
  for (const ParaStorage index : {PS_THETA_POR, PS_THETA_EFF})
    if (paraStorage[index].isSet()) return paraStorage[index].value;
  return 1.0;
}

bool MaterialBase::isUsable(const TKL::Parameter& parameter) {
  constexpr double SMALLEST = 1e-20;
  return parameter.isSet() && parameter.value >= SMALLEST &&
         parameter.value <= std::numeric_limits<double>::max();
}

bool MaterialBase::checkParameter(const TKL::Parameter& parameter, const std::string& keyword,
                                  const char* modelName, const char* functionId) {
  const char* const FUNC_ID = functionId;
  if (isUsable(parameter)) return true;
  TKL::message(TKL::FormatString("Parameter %1 missing for %2.").arg(keyword).arg(modelName),
               TKL::MSG_WARNING, FUNC_ID, 2);
  return false;
}

bool MaterialBase::checkParameter(ParaStorage index, const char* modelName, const char* functionId) const {
  return checkParameter(paraStorage[index], KeywordList::Keyword("Material::ParaStorage", index), modelName,
                        functionId);
}

bool MaterialBase::checkParameter(ParaTransport index, const char* modelName, const char* functionId) const {
  return checkParameter(paraTransport[index], KeywordList::Keyword("Material::ParaTransport", index),
                        modelName, functionId);
}

}  // namespace MM
