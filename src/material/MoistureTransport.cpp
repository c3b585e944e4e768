#include "material/MoistureTransport.h"

#include <ostream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"

namespace MM {

namespace {

constexpr const char* TRANSPORT_FUNCTIONS = "MoistureTransport::Functions";

MaterialBase::ParaTransport mewOf(int direction) {
  const char* const FUNC_ID = "[MoistureTransport::prepareCalculation]";
  switch (direction) {
    case 0:
      return MaterialBase::PT_MEW;
    case 1:
      return MaterialBase::PT_MEW_V;
    case 2:
      return MaterialBase::PT_MEW_W;
    default:
      throw TKL::Exception("Invalid value for material direction.", FUNC_ID);
  }
}

}  // namespace

void MoistureTransport::prepareCalculation(const MaterialBase& material, const MoistureStorage& storage,
                                           int materialDirection) {
  const char* const FUNC_ID = "[MoistureTransport::prepareCalculation]";
  try {
    liquidKind = L_NONE;
    vaporKind = V_NONE;
    direction = materialDirection;
    TKL::message("Initializing moisture transport functions.\n", TKL::MSG_STANDARD, FUNC_ID, 3);
    const TKL::MessageIndentor indentor;
    denormalize(material);
    if (!material.isAir() && !material.isWaterTight() && !chooseLiquidKind(material, storage)) return;
    if (!material.isVaporTight()) chooseVaporKind(material);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error initializing moisture transport functionality for calculation.", FUNC_ID);
  }
}

bool MoistureTransport::chooseLiquidKind(const MaterialBase& material, const MoistureStorage& storage) {
  if (!functions[F_lgKl].empty())
    liquidKind = L_KL;
  else if (!functions[F_lgDl].empty())
    liquidKind = L_DL;
  else
    return false;
  checkLiquidFunctionMonotony(material);
  prepareKichhoffPotential(material, storage);
  return true;
}

void MoistureTransport::chooseVaporKind(const MaterialBase& material) {
  const char* const FUNC_ID = "[MoistureTransport::prepareCalculation]";
  if (material.isAir()) {
    ThetaPor = 1.0;
  } else {
    if (!material.checkParameter(MaterialBase::PS_THETA_POR, "standard vapor diffusion model", FUNC_ID))
      return;
    ThetaPor = material.paraStorage[MaterialBase::PS_THETA_POR].value;
  }
  if (!functions[F_lgKv].empty()) {
    vaporKind = V_KV;
  } else if (!functions[F_mew].empty()) {
    vaporKind = V_MEW_RH;
  } else if (const TKL::Parameter& parameter = material.paraTransport[mewOf(direction)]; parameter.isSet()) {
    mew = parameter.value;
    vaporKind = V_MEW;
  }
}

void MoistureTransport::read(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[MoistureTransport::read]";
  try {
    readFunctions(lines, {TRANSPORT_FUNCTIONS, functions, FUNC_ID,
                          "Error reading data for function '%1' because too less lines left.",
                          "Error reading data for function '%1' while %2."});
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading moisture transport material data!", FUNC_ID);
  }
}

void MoistureTransport::read(const std::string& text) {
  read(splitLines(text));
}

void MoistureTransport::writeBinary(std::ostream& out) const {
  writeBinaryFunctions(out, functions);
}

void MoistureTransport::write(std::ostream& out, int indent) const {
  const char* const FUNC_ID = "[MoistureTransport::write]";
  if (!anyFunction(functions) && models.empty()) return;
  writeDirectionTitle(out, indent, "MOISTURE_TRANSPORT", direction, FUNC_ID);
  writeFunctions(out, indent, TRANSPORT_FUNCTIONS, functions);
}

void MoistureTransport::readBinary(std::istream& in) {
  readBinaryFunctions(in, functions);
}

void MoistureTransport::clear() {
  *this = MoistureTransport();
}

}  // namespace MM
