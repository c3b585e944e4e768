#pragma once

#include <string>

#include "foundation/Unit.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// What an output file holds: the quantity and its treatment in space and time, and how numbers look.
class VelOutputFormat {
 public:
  /// Indices of the keywords of "VelOutputFormat::type_t"; `NUM_T` means not set.
  enum type_t { T_FIELD, T_FLUX, NUM_T };
  /// Indices of the keywords of "VelOutputFormat::field_t".
  enum field_t {
    Q_TEMPER,
    Q_ENERGY,
    Q_MOISTURE,
    Q_WATERMASS,
    Q_VAPORMASS,
    Q_THETAL,
    Q_ULIQU,
    Q_OVHWATCONT,
    Q_OVHWATMASS,
    Q_RELHUM,
    Q_GASPRESS,
    Q_GASPRESS_DIFF,
    Q_LIQUIDPRESS,
    Q_CAPILLARYPRESS,
    Q_VAPPRESS,
    Q_SALT,
    Q_SALTMOLAL,
    Q_SALTMOLNUM,
    Q_SOLUTION,
    Q_VOCG,
    Q_VOCS,
    Q_VOCPRESS,
    Q_VOCDENSG,
    Q_THERMAL_EXPANSION,
    Q_HYGRIC_EXPANSION,
    Q_TOTAL_EXPANSION,
    Q_HEATSOURCE,
    Q_MOISTSOURCE,
    Q_VOCSOURCE,
    Q_LOCALERROR_U,
    Q_LOCALERROR_MWV,
    Q_FREEZE_THAW,
    Q_RHO_ICE,
    Q_ICE_VOLUME_RATIO,
    Q_HP_FLOW_TEMPERATURE,
    Q_HP_RETURN_FLOW_TEMPERATURE,
    Q_SATDEGREE,
    Q_CONVECTIVE_MOISTURE_SOURCE,
    Q_CONVECTIVE_AIR_FLOW,
    Q_HEATFLUXMEAN,
    Q_AIRFLUXMEAN,
    Q_AIRFLUXMAX_X,
    Q_AIRFLUXMAX_Y,
    Q_AIRENTHALPYFLUX,
    Q_AIRFLOWENTHALPY_IN,
    Q_AIRFLOWENTHALPY_OUT,
    Q_HP_HEAT_FLUX,
    Q_DEW_POINT,
    NUM_Q,
    Q_ICEPROB = NUM_Q  ///< an old quantity outside the keyword list, without values
  };
  /// Indices of the keywords of "VelOutputFormat::flux_t".
  enum flux_t {
    X_HEATFLUX,
    X_MOISTFLUX,
    X_WATFLUX,
    X_VAPDIFF,
    X_VAPCONV,
    X_AIRFLUX,
    X_VOCFLUX,
    X_VOCDIFF,
    X_VOCCONV,
    X_NORMRAIN,
    X_SHWRAD,
    X_LWRAD,
    X_AIRENTH,
    X_RAINRUNOFF,
    X_RAINRUNOFFENTH,
    X_WATENTH,
    NUM_X
  };
  /// Indices of the keywords of "VelOutputFormat::space_type_t"; `NUM_S` means not set.
  enum space_type_t { S_SINGLE, S_MEAN, S_INTEGRAL, NUM_S };
  /// Indices of the keywords of "VelOutputFormat::time_type_t"; `NUM_M` means not set.
  enum time_type_t { M_NONE, M_MEAN, M_INTEGRAL, NUM_M };
  /// Values of `numberFormat`; the default is both bits.
  enum number_format_t : int { N_SCIENTIFIC = 0x1000, N_FIXED = 0x2000, N_DEFAULT = 0x3000 };

  std::string name;
  type_t type = NUM_T;
  int quantity = -1;  ///< a `field_t` or a `flux_t`, as `type` tells; -1 means not set
  space_type_t spaceType = NUM_S;
  time_type_t timeType = NUM_M;
  TKL::Unit timeUnit;   ///< undefined: times stay in s
  TKL::Unit valueUnit;  ///< undefined: values stay in their base unit
  int precision = 9;
  int width = 12;
  int numberFormat = N_DEFAULT;
  bool binary = false;

  /// Reads the lines of one `OUTPUT_FORMAT` block.
  /// @throws TKL::Exception for a line that is no keyword line, an unknown word of a list, an unknown unit
  /// or a number that cannot be read
  void read(const SectionText& text);
};

}  // namespace VELMORA
