#include "material/Material.h"

#include "foundation/CheckedMath.h"
#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "material/MaterialConstants.h"

namespace MM {

void Material::prepareCalculation() {
  const char* const FUNC_ID = "[Material::prepareCalculation]";
  try {
    TKL::message(TKL::FormatString("Preparing material '%1' ID: %2 for calculation.\n").arg(name()).arg(id),
                 TKL::MSG_STANDARD, FUNC_ID, 2);
    const TKL::MessageIndentor indentor;
    thermalStorage.prepareCalculation();
    moistureStorage.prepareCalculation(*this);
    deriveTheta80();
    for (int d = D_U; d < NUM_D && d <= directions; ++d) {
      const auto i = static_cast<std::size_t>(d);
      airTransport[i].prepareCalculation(*this, d);
      thermalTransport[i].prepareCalculation(*this, d);
      moistureTransport[i].prepareCalculation(*this, moistureStorage, d);
    }
    transportCapabilities = capabilities();
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, TKL::FormatString("Error initializing material '%1'.").arg(name()), FUNC_ID);
  }
}

void Material::deriveTheta80() {
  constexpr double RH = 0.8;
  TKL::Parameter& theta80 = paraStorage[PS_THETA_80];
  if (theta80.isSet()) return;
  const TKL::Unit unit("m3/m3");
  if (isAir()) {
    const double density = TKL::pSat(T_STORAGE) * RH / (TKL::R_V * T_STORAGE);
    theta80.set("THETA_80", density / TKL::RHO_W, unit);
  } else if (moistureStorage.kind != MoistureStorage::K_NONE) {
    const double pl = TKL::f_log(RH) * TKL::RHO_W * TKL::R_V * T_STORAGE;
    theta80.set("THETA_80", moistureStorage.Thetal_pl(pl, T_STORAGE), unit);
  }
}

int Material::capabilities() const {
  bool heat = true;
  bool air = !isAirTight();
  bool liquid = !isAir() && !isWaterTight();
  bool vapour = !isVaporTight();
  for (std::size_t d = D_U; d < NUM_D && static_cast<int>(d) <= directions; ++d) {
    heat = heat && thermalTransport[d].kind != ThermalTransport::K_NONE;
    air = air && airTransport[d].kind != AirTransport::K_NONE;
    liquid = liquid && moistureTransport[d].liquidKind != MoistureTransport::L_NONE;
    vapour = vapour && moistureTransport[d].vaporKind != MoistureTransport::V_NONE;
  }
  int bits = (heat ? 1 << TC_HEAT : 0) | (air ? 1 << TC_AIR : 0);
  // Without a retention curve a material holds no moisture that could be moved; air holds vapour.
  if (moistureStorage.kind == MoistureStorage::K_NONE && !isAir()) return bits;
  return bits | (liquid ? 1 << TC_LIQUID : 0) | (vapour ? 1 << TC_VAPOUR : 0);
}

std::vector<std::string> Material::unknownKeywords() const {
  std::vector<std::string> words;
  const auto add = [&words](const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
  };
  add(identification.unknownKeywords);
  add(unknownParameters_);
  add(thermalStorage.unknownKeywords);
  add(moistureStorage.unknownKeywords);
  for (std::size_t d = D_U; d < NUM_D; ++d) {
    add(moistureTransport[d].unknownKeywords);
    add(thermalTransport[d].unknownKeywords);
    add(airTransport[d].unknownKeywords);
  }
  add(vaporContactResistance.unknownKeywords);
  return words;
}

void Material::clear() {
  *this = Material();
}

}  // namespace MM
