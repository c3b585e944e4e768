#include "material/AirTransport.h"

#include <cmath>
#include <ostream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "material/MaterialConstants.h"

namespace MM {

namespace {

constexpr const char* AIR_FUNCTIONS = "AirTransport::Functions";
const char* const PREPARE_ID = "[AirTransport::prepareCalculation]";

MaterialBase::ParaTransport parameterOf(int direction) {
  const char* const FUNC_ID = PREPARE_ID;
  switch (direction) {
    case 0:
      return MaterialBase::PT_KG;
    case 1:
      return MaterialBase::PT_KG_V;
    case 2:
      return MaterialBase::PT_KG_W;
    default:
      throw TKL::Exception("Invalid value for material direction.", FUNC_ID);
  }
}

}  // namespace

void AirTransport::prepareCalculation(MaterialBase& material, int materialDirection) {
  const char* const FUNC_ID = PREPARE_ID;
  try {
    kind = K_NONE;
    direction = materialDirection;
    TKL::message("Initializing air transport functions.\n", TKL::MSG_STANDARD, FUNC_ID, 3);
    if (material.isAirTight()) return;
    if (!material.checkParameter(parameterOf(direction), "standard airflow model", FUNC_ID)) {
      material.identification.flags += MaterialIdentification::F_AIR_TIGHT;
      TKL::message("No KG in base parameter section given. Material is set to air tight.", TKL::MSG_WARNING,
                   FUNC_ID, 1);
      return;
    }
    // The other directions have the conductivity of the first one; their own value is only required.
    KG = material.paraTransport[MaterialBase::PT_KG].value;
    choosePorosity(material);
    kind = functions[F_Kg].empty() ? K_CONSTANT : K_SPLINE;
    checkLimits(material);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error initializing air transport functionality for calculation.", FUNC_ID);
  }
}

void AirTransport::choosePorosity(MaterialBase& material) {
  const char* const FUNC_ID = PREPARE_ID;
  TKL::Parameter& thetaPor = material.paraStorage[MaterialBase::PS_THETA_POR];
  TKL::Parameter& thetaEff = material.paraStorage[MaterialBase::PS_THETA_EFF];
  if (MaterialBase::isUsable(thetaPor)) {
    ThetaPor = thetaPor.value;
    return;
  }
  if (!MaterialBase::isUsable(thetaEff)) {
    if (!material.isAir())
      throw TKL::Exception("THETA_POR or THETA_EFF necessary for air flow model.", FUNC_ID);
    thetaPor.set("THETA_POR", 1.0, TKL::Unit("m3/m3"));
    thetaEff.set("THETA_EFF", 1.0, TKL::Unit("m3/m3"));
  }
  ThetaPor = thetaEff.value;
}

void AirTransport::checkLimits(const MaterialBase& material) const {
  const char* const FUNC_ID = "[AirTransport::checkLimits]";
  if (kind != K_SPLINE) return;
  const auto warn = [FUNC_ID](const TKL::FormatString& text) {
    TKL::message(text, TKL::MSG_WARNING, FUNC_ID, 2);
  };
  const TKL::LinearSpline& Kg = functions[F_Kg];
  if (Kg.x.front() > LIMIT_TOLERANCE)
    warn(TKL::FormatString("Material '%1' has an invalid Kg(Theta_l) spline:\n"
                           "the minimum Theta_l value (%2 m3/m3) should be zero!")
             .arg(material.name())
             .arg(Kg.x.front()));
  if (Kg.x.back() < ThetaPor - LIMIT_TOLERANCE)
    warn(TKL::FormatString("Material '%1' has an invalid Kg(Theta_l) spline:\n"
                           "the maximum Thetal value (%2 m3/m3) should be equal to 'THETA_POR' (%3 m3/m3)!")
             .arg(material.name())
             .arg(Kg.x.back())
             .arg(ThetaPor));
  if (std::fabs(Kg.y.front() - KG) > LIMIT_TOLERANCE)
    warn(TKL::FormatString("Material '%1' has an invalid Kg(Theta_l) spline:\n"
                           "the Kg-value (%2 s) at zero must match KG_DRY (%3 s)!")
             .arg(material.name())
             .arg(Kg.y.front())
             .arg(KG));
  if (std::any_of(Kg.y.begin(), Kg.y.end(), [](double y) { return y <= 0.0; }))
    warn(TKL::FormatString("Material '%1' has an invalid Kg(Theta_l) spline:\n"
                           "the Kg spline must be higher than 0!")
             .arg(material.name()));
}

void AirTransport::read(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[AirTransport::read]";
  try {
    readFunctions(lines, {AIR_FUNCTIONS, functions, FUNC_ID});
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading air transport data!", FUNC_ID);
  }
}

void AirTransport::read(const std::string& text) {
  read(splitLines(text));
}

void AirTransport::writeBinary(std::ostream& out) const {
  writeBinaryFunctions(out, functions);
}

void AirTransport::write(std::ostream& out, int indent) const {
  const char* const FUNC_ID = "[AirTransport::write]";
  if (!anyFunction(functions) && models.empty()) return;
  writeDirectionTitle(out, indent, "AIR_TRANSPORT", direction, FUNC_ID);
  writeFunctions(out, indent, AIR_FUNCTIONS, functions);
}

void AirTransport::readBinary(std::istream& in) {
  readBinaryFunctions(in, functions);
}

void AirTransport::clear() {
  *this = AirTransport();
}

}  // namespace MM
