#pragma once

#include <array>
#include <string>

#include "foundation/LinearSpline.h"
#include "foundation/Parameter.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// What acts at the face between two elements: an exchange between air and material, a vapour retarder, or
/// resistances in addition to those of the materials.
class VelContactCond {
 public:
  /// Indices of the keywords of "VelContactCond::condition_t"; `NUM_C` means not set.
  enum condition_t {
    C_AIR_MAT_HEATCOND,
    C_AIR_MAT_VAPDIFF,
    C_FOIL,
    C_FOIL_ADAPTIVE,
    C_ADDITIONAL_RESISTANCE,
    NUM_C
  };

  /// Indices of the keywords of "VelContactCond::kind_t"; `NUM_K` means not set.
  enum kind_t { K_EXCHANGE, K_EXCHANGE_VEL, K_DIRECTION_DEPENDENT, K_DIRECTION_INDEPENDENT, NUM_K };

  /// Indices of `para`, those of the keywords of "VelContactCond::para_t".
  enum para_t {
    P_HEATCONDRES,  ///< [m2K/W]
    P_VAPDIFFRES,   ///< [m/s], as an sd-value in [m] before `prepareParameters`
    P_WATCONDRES,   ///< [m/s]
    P_AIRCONVRES,   ///< [m/s]
    P_SALDIFFRES,   ///< [m2s/kg]
    P_EXCOEFF,      ///< [W/m2K] or [s/m] by the condition
    P_EXCH_SLOPE,   ///< [J/m3K] or [s2/m2]
    P_EXCH_EXP,     ///< [-] exponent of the air velocity, 1 if not set
    P_WEIGHT_FACTOR_POS,
    P_WEIGHT_FACTOR_NEG,
    P_SCALING_A_POS,
    P_SCALING_B_POS,
    P_SCALING_C_POS,
    P_SCALING_A_NEG,
    P_SCALING_B_NEG,
    P_SCALING_C_NEG,
    NUM_P
  };

  /// Indices of `functions`, those of the keywords of "VelContactCond::function_t".
  enum function_t {
    FUN_SD_POS,  ///< sd-value [m] over relative humidity [-], in both directions or in the positive one
    FUN_SD_NEG,  ///< likewise in the negative direction
    NUM_FUN
  };

  std::string name;
  condition_t condition = NUM_C;
  kind_t kind = NUM_K;
  std::array<TKL::Parameter, NUM_P> para;
  std::string foilName;
  std::array<TKL::LinearSpline, NUM_FUN> functions;
  bool sdPositiveDirection = true;  ///< the positive direction of the foil is that of the side
  bool used = false;                ///< an assignment refers to it

  /// Reads the lines of one `CONTACT_COND` block. The points of a function are one list of all x values and
  /// one of all y values, with or without one of `;` `,` `|` `:` between them, or pairs of x and y.
  /// @throws TKL::Exception "Invalid keyword '%1' in this section!" for an unknown keyword, "Expected
  /// keyword, got '%1'!", "Missing value for keyword '%1'!", "Invalid parameter value '%1' for keyword
  /// '%2'!", and an unknown word of a keyword list
  void read(const SectionText& text);

  /// Tests that the condition has the data it needs and that they are in range.
  /// @throws std::runtime_error
  void checkParameters() const;

  /// Turns the sd-values into resistances, closes foils for liquid and air, and gives unset scaling
  /// parameters of adaptive foils the value 0. To be called once, after `checkParameters`.
  void prepareParameters();

  /// Resistance to vapour diffusion [m/s] between the relative humidities of the two elements of a side. That
  /// of an adaptive foil depends on the humidities and, if it works in one direction, on which is the higher.
  /// @param horizontal  the side lies between an element and the one below it
  double vaporResistance(double rhLeft, double rhRight, bool horizontal) const;

 private:
  void readKeyword(const KeywordLine& line);
  void readFunction(const KeywordLine& line);
  void checkCondition() const;
  void checkExchange(const char* unit, const char* slopeUnit) const;
  void checkAdditionalResistance() const;
  void checkFoil() const;
  void checkFoilAdaptive() const;
  void checkFunction(function_t index) const;
  void prepareFoil();
  void prepareScaling();
  void convertSdValue();
};

}  // namespace VELMORA
