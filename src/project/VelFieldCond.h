#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "climate/VelClimateCond.h"
#include "foundation/Parameter.h"
#include "grid/Element.h"
#include "keywords/SectionText.h"
#include "project/LeakageDefinition.h"
#include "project/VelSelection.h"

namespace VELMORA {

/// What happens inside the construction: a source, an exchange or a model that acts on a range of elements.
class VelFieldCond {
 public:
  /// Indices of the keywords of "VelFieldCond::condition_t"; `NUM_C` means not set.
  enum condition_t {
    C_WATSOURCE,
    C_VOCSOURCE,
    C_ENESOURCE,
    C_LW_RADIATION,
    C_REMWATSOUR,
    C_REMWATSINK,
    C_REMENESOUR,
    C_REMENESINK,
    C_PCMENESOUR,
    C_PCMENESINK,
    C_AIRCHANGE,
    C_WATERFLOW,
    C_VOCADSORPTION,
    C_VOCCHEMISORPTION,
    C_GAS_CONVECTION,
    C_CONVECTIVE_SOURCE,
    C_AMBIENTRADIATION,
    C_AIRFLOW,
    C_MEDIAFLOW,
    NUM_C
  };

  /// Indices of `para`, those of the keywords of "VelFieldCond::para_t".
  enum para_t {
    P_WATTRANSFCOEFF,       ///< [kg/s]
    P_ENETRANSFCOEFF,       ///< [J/s]
    P_PCM_MELT_TEMP,        ///< [K]
    P_PCM_DEL_TEMP,         ///< [K]
    P_FLUID_CAPACITY,       ///< [J/m3K]
    P_LIM_SATDEGREE,        ///< [-]
    P_LIM_SNK_TEMPERATURE,  ///< [K]
    P_WATTRANS_EXPONENT,    ///< [-]
    P_LEFT_EMISS_COEFF,     ///< [-]
    P_RIGHT_EMISS_COEFF,    ///< [-]
    P_TOP_EMISS_COEFF,      ///< [-]
    P_BOTTOM_EMISS_COEFF,   ///< [-]
    P_GAS2SOLID_TRANSFER_COEFF,
    P_CHEMISORPTION_CONST,
    P_GC_GASTYPE,        ///< [-] index of the gas
    P_GC_GASPROPORTION,  ///< [-]
    P_GC_INCLINATION,    ///< [Rad]
    P_MAX_WATCONT,       ///< [m3/m3]
    P_MIN_WATCONT,       ///< [m3/m3]
    P_FLOW_DIRECTION,    ///< [-]
    NUM_P
  };

  /// Indices of `flags`, those of the keywords of "VelFieldCond::flag_t".
  enum flag_t { F_USE_FLOWRATE, F_LW_RADIATION_X, F_LW_RADIATION_Y, F_CONVECTION_X, NUM_F };

  condition_t condition = NUM_C;
  std::string name;
  TKL::Parameter startTime;  ///< [s] acts from here on; from the start if not set
  TKL::Parameter endTime;    ///< [s] acts up to here; to the end if not set
  std::array<TKL::Parameter, NUM_P> para;
  std::array<std::string, VelClimateCond::NUM_C> climateNames;
  std::string remoteName;  ///< the field condition at the other end of an exchange
  bool used = false;       ///< an assignment refers to it
  double volume = 0.0;     ///< [m3] of all its elements
  std::vector<int> elements;
  std::optional<LeakageDefinition> wtaModel;     ///< only for `C_CONVECTIVE_SOURCE`
  std::vector<VelSelection::Range> modelRanges;  ///< rectangles of a condition that acts by a model
  bool matchingVolumes = false;  ///< its elements pair with those of `remote`, see `matchRemoteElements`
  std::bitset<NUM_F> flags;
  std::array<const VelClimateCond*, VelClimateCond::NUM_C> climate{};  ///< not owned
  const VelFieldCond* remote = nullptr;                                ///< not owned
  double meanTemperature = 0.0;  ///< [K] running value over the elements, set by the solver
  double meanSaturation = 0.0;   ///< [-] likewise

  /// Reads the lines of one `FIELD_COND` block. The type is looked for first, wherever it stands. An unknown
  /// keyword is warned about and skipped, a parameter that cannot be read is reported as an error and
  /// skipped.
  /// @throws TKL::Exception "No condition found" without a `TYPE`, "Expected keyword, got '%1'!", "Missing
  /// value for keyword '%1'!", and an unknown word of a keyword list
  void read(const SectionText& text);

  /// Tests that the parameters which the condition needs are set and in range.
  /// @throws TKL::Exception of the parameter, its name and " is required" if it is missing
  void checkParameters() const;

  /// Whether the condition acts by a model that has to know the rectangle of its elements.
  bool hasModel() const {
    return condition == C_GAS_CONVECTION || condition == C_CONVECTIVE_SOURCE ||
           condition == C_AMBIENTRADIATION;
  }

  /// Points `climate` to the conditions that are named in `climateNames`. The vector must keep its size.
  /// @throws TKL::Exception "Error linking climate conditions to boundary condtions!" after an error message
  /// for each name that does not exist; "Invalid climate condition assignment with name '%1', should be of
  /// type '%2'"
  void assignClimateCond(const std::vector<VelClimateCond>& climateConds);

  /// Points `remote` to the condition of that name. The vector must keep its size.
  /// @throws TKL::Exception "Error linking remote field condition to field condtions!" after an error message
  void assignRemoteFieldCond(const std::vector<VelFieldCond>& fieldConds);

  /// Sets `matchingVolumes`: true for a remote energy source or a phase change source that has as many
  /// elements as its remote condition, of the same volumes one by one.
  void matchRemoteElements(const std::vector<Element>& allElements);

  /// Mean over the elements of the condition, weighted with their volumes; 0 without elements.
  /// @param valueOf gives the value for an element number
  template <class ValueOf>
  double volumeMean(const std::vector<Element>& allElements, ValueOf valueOf) const {
    double sum = 0.0, weight = 0.0;
    for (const int number : elements) {
      const std::size_t e = static_cast<std::size_t>(number);
      sum += valueOf(e) * allElements[e].volume;
      weight += allElements[e].volume;
    }
    return weight > 0.0 ? sum / weight : 0.0;
  }

  /// The attached climate condition of a quantity, for the caller `functionId`.
  /// @throws TKL::Exception "Error in in field condition '%1' with type '%2'.\nClimate condition of type '%1'
  /// needs to be specified!"
  const VelClimateCond& requireClimate(VelClimateCond::condition_t quantity, const char* functionId) const {
    if (climate[quantity] == nullptr) failMissingClimate(quantity, functionId);
    return *climate[quantity];
  }

  /// The condition at the other end, for the caller `functionId`.
  /// @throws TKL::Exception "Error in field condition '%1' with type '%2'.\nRemote field condition needs to
  /// be specified!"
  const VelFieldCond& requireRemote(const char* functionId) const {
    if (remote == nullptr) failMissingRemote(functionId);
    return *remote;
  }

 private:
  void readType(const SectionText& text);
  void readLeakageBlock(const SectionText& text);
  void readKeyword(const KeywordLine& line);
  void checkWaterSource() const;
  void checkRemoteWater() const;
  void checkPhaseChange() const;
  void checkEmission() const;
  void checkGasConvection() const;
  [[noreturn]] void failMissingClimate(VelClimateCond::condition_t quantity, const char* functionId) const;
  [[noreturn]] void failMissingRemote(const char* functionId) const;
};

}  // namespace VELMORA
