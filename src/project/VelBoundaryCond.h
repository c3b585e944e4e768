#pragma once

#include <array>
#include <bitset>
#include <span>
#include <string>
#include <vector>

#include "climate/VelClimateCond.h"
#include "foundation/Parameter.h"
#include "grid/Element.h"
#include "keywords/SectionText.h"
#include "project/HeatPipe.h"
#include "project/VelWallData.h"

namespace VELMORA {

struct RoomModel;

/// What happens at a surface of the construction: a quantity (`condition`), the model by which it acts
/// (`kind`), the parameters of the model and the climate conditions that drive it.
class VelBoundaryCond {
 public:
  /// Indices of the keywords of "VelBoundaryCond::condition_t"; `NUM_C` means not set.
  enum condition_t {
    C_HEATCOND,
    C_VAPDIFF,
    C_RAIN,
    C_SHWRAD,
    C_LOWRAD,
    C_WATCONTC,
    C_AIRPRESS,
    C_VOCDIFF,
    C_SOLCONTC,
    C_ROOM,
    NUM_C
  };

  /// Indices of the keywords of "VelBoundaryCond::kind_t"; `NUM_K` means not set.
  enum kind_t {
    K_SURFVAL,
    K_IMPFLUX,
    K_EXCHANGE,
    K_EXCHANGE_VEL,
    K_HEATPIPE,
    K_STDRAIN,
    K_SUNRADM,
    K_LRADCOMP,
    K_SOLARCOLL,
    K_BOLTZMAN,
    K_HYDROSTATIC,
    K_DEFAULT,
    K_FLOWCOEFF,
    NUM_K
  };

  /// Indices of `para`, those of the keywords of "VelBoundaryCond::para_t".
  enum para_t {
    P_EXCOEFF,     ///< [W/m2K], [s/m] or [m/s] by the quantity
    P_EXCH_SLOPE,  ///< [J/m3K] or [s2/m2]
    P_EXCH_EXP,    ///< [-] exponent of the wind velocity, 1 if not set
    P_EXPCOEFF,    ///< [-]
    P_MINRTEMP,    ///< [K]
    P_MINRFLUX,    ///< [l/m2s]
    P_SURABSOR,    ///< [-]
    P_GRDREFLE,    ///< [-]
    P_SUREMISS,    ///< [-]
    P_GRDEMISS,    ///< [-]
    P_SOLAR_ETA0,  ///< [-]
    P_SOLAR_K0,    ///< [W/m2K]
    P_SOLAR_K1,    ///< [W/m2K2]
    P_SD_VALUE,    ///< [m]
    P_HP_RADIUS,   ///< [m]
    P_HP_LENGTH,   ///< [m]
    P_HP_CAPACITY,
    P_HP_TRANSFER,  ///< [W/m2K]
    P_HP_SUPPTEMP,  ///< [K]
    P_HP_QTHERM_T0,
    P_HP_COP_T0,
    P_HP_TMIN,
    P_HP_COP_MIN,
    P_HP_TMAX,
    P_HP_COP_MAX,
    P_HP_RELAX,
    P_HP_TEMPER_UPPER_LIMIT,  ///< [K]
    P_HP_TEMPER_UPPER_HYST,   ///< [K]
    P_HP_TEMPER_LOWER_LIMIT,  ///< [K]
    P_HP_TEMPER_LOWER_HYST,   ///< [K]
    P_AP_FLOWCOEFF,           ///< [-]
    NUM_P
  };

  /// Indices of `idNames`, those of the keywords of "VelBoundaryCond::id_name_t".
  enum id_name_t { I_WALLDATA, I_SOLUTION, I_ROOM, NUM_I };

  /// Indices of `flags`, those of the keywords of "VelBoundaryCond::flag_t".
  enum flag_t { F_USE_VAPOR_PRESSURE, F_INCLUDE_RH_CLOUD, F_INCLUDE_GROUND, NUM_F };

  condition_t condition = NUM_C;
  kind_t kind = NUM_K;
  std::string name;
  TKL::Parameter startTime;  ///< [s] acts from here on; from the start if not set
  TKL::Parameter endTime;    ///< [s] acts up to here; to the end if not set
  std::array<TKL::Parameter, NUM_P> para;
  std::array<std::string, NUM_I> idNames;
  std::bitset<NUM_F> flags;
  std::array<std::string, VelClimateCond::NUM_C> climateNames;
  bool used = false;                                                   ///< an assignment refers to it
  std::array<const VelClimateCond*, VelClimateCond::NUM_C> climate{};  ///< not owned
  const VelWallData* wallData = nullptr;                               ///< not owned
  RoomModel* room = nullptr;                                           ///< not owned
  HeatPipe heatPipe;                                                   ///< working fields of `K_HEATPIPE`

  /// Reads the lines of one `BOUND_COND` block. An unknown keyword is warned about and skipped.
  /// @throws TKL::Exception "Expected keyword, got '%1'!", "Missing value for keyword '%1'!", "Invalid
  /// parameter value '%1' for keyword '%2'!", and an unknown word of a keyword list
  void read(const SectionText& text);

  /// Tests that the parameters which the quantity and its model need are set and in range. Combinations
  /// without a rule, also with an unset quantity or model, pass.
  /// @return true
  /// @throws TKL::Exception of the parameter, its name and " is required" if it is missing
  bool checkParameters() const;

  /// Derives the working fields of a heat pipe from the parameters. To be called after `checkParameters`.
  void prepareParameters();

  /// Collects the elements that a heat pipe reaches. To be called when elements and sides are linked.
  void prepareElements(const std::vector<Element>& elements);

  /// Points `climate` to the conditions that are named in `climateNames`. The vector must keep its size.
  /// @throws TKL::Exception "Error linking climate conditions to boundary condtions!" after an error message
  /// for each name that does not exist; "Invalid climate condition assignment with name '%1', should be of
  /// type '%2'"
  void assignClimateCond(const std::vector<VelClimateCond>& climateConds);

  /// Points `wallData` to the wall that `idNames` names. The vector must keep its size.
  /// @throws TKL::Exception "Error linking wall data to boundary condtions!" after an error message
  void assignWallData(const std::vector<VelWallData>& walls);

  /// Brings the running values of a heat pipe up to date with the temperatures [K] of all elements and the
  /// current climate; does nothing for other conditions.
  void update(std::span<const double> temperature);

  /// The attached climate condition of a quantity, for the caller `functionId`.
  /// @throws TKL::Exception "Error in boundary condition '%1' with type '%2'.\nClimate condition of type '%1'
  /// needs to be specified!"
  const VelClimateCond& requireClimate(VelClimateCond::condition_t quantity, const char* functionId) const {
    if (climate[quantity] == nullptr) failMissingClimate(quantity, functionId);
    return *climate[quantity];
  }

  /// The attached wall, for the caller `functionId`.
  /// @throws TKL::Exception "Error in boundary condition '%1' with type '%2'.\nWall definition needs to be
  /// specified!"
  const VelWallData& requireWallData(const char* functionId) const {
    if (wallData == nullptr) failMissingWall(functionId);
    return *wallData;
  }

 private:
  bool isHeatPipe() const { return condition == C_HEATCOND && kind == K_HEATPIPE; }
  void readKeyword(const KeywordLine& line);
  void readOldFlag(const KeywordLine& line);
  void checkHeatConduction() const;
  void checkVapourDiffusion() const;
  void checkRain() const;
  void checkShortWave() const;
  void checkLongWave() const;
  void checkAirPressure() const;
  [[noreturn]] void failMissingClimate(VelClimateCond::condition_t quantity, const char* functionId) const;
  [[noreturn]] void failMissingWall(const char* functionId) const;
};

}  // namespace VELMORA
