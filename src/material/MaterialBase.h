#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "foundation/Parameter.h"
#include "foundation/Path.h"
#include "material/MaterialIdentification.h"

namespace MM {

/// Identification and base parameters of a material: what its function groups need to know of it.
class MaterialBase {
 public:
  enum ParaStorage {
    PS_RHO,
    PS_CE,
    PS_THETA_POR,
    PS_THETA_EFF,
    PS_THETA_CAP,
    PS_THETA_LIM_HYG,
    PS_THETA_80,
    NUM_PS
  };

  enum ParaTransport {
    PT_LAMBDA,
    PT_AW,
    PT_MEW,
    PT_SD,
    PT_KLEFF,
    PT_DLEFF,
    PT_KG,
    PT_LAMBDA_V,
    PT_AW_V,
    PT_MEW_V,
    PT_SD_V,
    PT_KLEFF_V,
    PT_DLEFF_V,
    PT_KG_V,
    PT_LAMBDA_W,
    PT_AW_W,
    PT_MEW_W,
    PT_SD_W,
    PT_KLEFF_W,
    PT_DLEFF_W,
    PT_KG_W,
    PT_LAMBDA_DESIGN,
    NUM_PT
  };

  enum ParaMechanical {
    PM_ALPHA,
    PM_BETA_THETA_L,
    PM_BETA_THETA_L2,
    PM_ALPHA_V,
    PM_BETA_THETA_L_V,
    PM_BETA_THETA_L2_V,
    PM_ALPHA_W,
    PM_BETA_THETA_L_W,
    PM_BETA_THETA_L2_W,
    NUM_PM
  };

  TKL::Path filename;    ///< as passed to `Material::read`
  int directions = 3;    ///< 0: isotropic (U only), 1: U and V, 2: U, V and W, 3: not read yet
  std::uint32_t id = 0;  ///< number in the file name, 0 for none
  MaterialIdentification identification;
  std::array<TKL::Parameter, NUM_PS> paraStorage;     ///< by `ParaStorage`, base units
  std::array<TKL::Parameter, NUM_PT> paraTransport;   ///< by `ParaTransport`, base units
  std::array<TKL::Parameter, NUM_PM> paraMechanical;  ///< by `ParaMechanical`, base units

  bool hasFlag(MaterialIdentification::Flags flag) const { return identification.hasFlag(flag); }
  bool isAir() const { return hasFlag(MaterialIdentification::F_AIR); }
  bool isAirTight() const { return hasFlag(MaterialIdentification::F_AIR_TIGHT); }
  bool isVaporTight() const { return hasFlag(MaterialIdentification::F_VAPOR_TIGHT); }
  bool isWaterTight() const { return hasFlag(MaterialIdentification::F_WATER_TIGHT); }

  /// English name, "" if there is none.
  std::string name() const { return identification.englishName(); }

  /// Volumetric heat capacity of the dry material, RHO times CE [J/m3K]; 0 if one of them is not set.
  double rhoCDry() const { return paraStorage[PS_RHO].value * paraStorage[PS_CE].value; }

  /// Volume that can hold a fluid [m3/m3]: THETA_POR, else THETA_EFF, else 1.
  double thetaPor() const;

  /// Effective saturation THETA_EFF [m3/m3], 0 if not set.
  double thetaEff() const { return paraStorage[PS_THETA_EFF].value; }

  /// True for a parameter that is set and lies in [1e-20, largest double].
  static bool isUsable(const TKL::Parameter& parameter);

  /// Tests that a parameter that a model needs is usable; `keyword` is its name. Warns "Parameter %1 missing
  /// for %2." with the name of the model if not.
  static bool checkParameter(const TKL::Parameter& parameter, const std::string& keyword,
                             const char* modelName, const char* functionId);

  /// The test for an entry of one of the three parameter lists.
  bool checkParameter(ParaStorage index, const char* modelName, const char* functionId) const;
  bool checkParameter(ParaTransport index, const char* modelName, const char* functionId) const;
};

}  // namespace MM
