#include "material/ThermalTransport.h"

#include <ostream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"

namespace MM {

namespace {

constexpr const char* THERMAL_TRANSPORT_FUNCTIONS = "ThermalTransport::Functions";

MaterialBase::ParaTransport parameterOf(int direction) {
  const char* const FUNC_ID = "[ThermalTransport::prepareCalculation]";
  switch (direction) {
    case 0:
      return MaterialBase::PT_LAMBDA;
    case 1:
      return MaterialBase::PT_LAMBDA_V;
    case 2:
      return MaterialBase::PT_LAMBDA_W;
    default:
      throw TKL::Exception("Invalid value for material direction.", FUNC_ID);
  }
}

}  // namespace

/// Where the conductivity does not depend on moisture alone.
double ThermalTransport::otherConductivity(double Theta_l, double T, double iceContent) const {
  switch (kind) {
    case K_T:
      return functions[F_lambda_T].value(T);
    case K_THETA_AND_T:
      return functions[F_lambda_Theta].value(Theta_l) * functions[F_lambda_T].value(T) / lambda +
             ICE_GAIN * iceContent;
    case K_CONSTANT:
      return lambda;
    default:
      return 0.0;
  }
}

void ThermalTransport::prepareCalculation(const MaterialBase& material, int materialDirection) {
  const char* const FUNC_ID = "[ThermalTransport::prepareCalculation]";
  try {
    TKL::message("Initializing thermal transport functions.\n", TKL::MSG_STANDARD, FUNC_ID, 3);
    kind = K_NONE;
    direction = materialDirection;
    denormalize(material);
    const MaterialBase::ParaTransport parameter = parameterOf(direction);
    if (!material.checkParameter(parameter, "thermal transport model", FUNC_ID)) return;
    lambda = material.paraTransport[parameter].value;
    const bool overTheta = !functions[F_lambda_Theta].empty();
    const bool overT = !functions[F_lambda_T].empty();
    if (overTheta)
      kind = overT ? K_THETA_AND_T : K_THETA;
    else
      kind = overT ? K_T : K_CONSTANT;
    checkLimits(material);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error initializing thermal transport functionality for calculation.", FUNC_ID);
  }
}

void ThermalTransport::read(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[ThermalTransport::read]";
  try {
    readFunctions(lines, {THERMAL_TRANSPORT_FUNCTIONS, functions, FUNC_ID});
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading thermal transport data!", FUNC_ID);
  }
}

void ThermalTransport::read(const std::string& text) {
  read(splitLines(text));
}

void ThermalTransport::writeBinary(std::ostream& out) const {
  writeBinaryFunctions(out, functions);
}

void ThermalTransport::write(std::ostream& out, int indent) const {
  const char* const FUNC_ID = "[ThermalTransport::write]";
  if (!anyFunction(functions) && models.empty()) return;
  writeDirectionTitle(out, indent, "HEAT_TRANSPORT", direction, FUNC_ID);
  writeFunctions(out, indent, THERMAL_TRANSPORT_FUNCTIONS, functions);
}

void ThermalTransport::readBinary(std::istream& in) {
  readBinaryFunctions(in, functions);
}

void ThermalTransport::clear() {
  *this = ThermalTransport();
}

}  // namespace MM
