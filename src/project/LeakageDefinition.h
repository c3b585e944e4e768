#pragma once

#include <array>
#include <bitset>
#include <ostream>
#include <string>

#include "foundation/Parameter.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// What a `FIELD_COND` block of the type `CONVECTIVE_SOURCE` says of the leaks of a construction. The block
/// has keywords of its own.
class LeakageDefinition {
 public:
  /// Indices of the keywords of "WTAConvectionModel::convectionModelClimate_t".
  enum convectionModelClimate_t { CMC_INDOOR_TEMPER, CMC_OUTDOOR_TEMPER, CMC_INDOOR_RELHUM, NUM_CMC };
  /// Indices of the keywords of "WTAConvectionModel::convectionModelParam_t".
  enum convectionModelParam_t {
    CMP_Q50,                ///< [m3/m2s] air that passes the envelope at 50 Pa
    CMP_HEIGHT,             ///< [m] height of the connected air space of the building
    CMP_DIFFPRESSURE_MECH,  ///< [Pa] by fans
    NUM_CMP
  };
  /// As many as "VelFieldCond::flag_t" has keywords.
  static constexpr std::size_t NUM_FLAGS = 4;

  std::string name;
  TKL::Parameter startTime;
  TKL::Parameter endTime;
  std::bitset<NUM_FLAGS> flags;                   ///< by `VelFieldCond::flag_t`
  std::array<std::string, NUM_CMC> climateNames;  ///< of the climate conditions
  std::array<TKL::Parameter, NUM_CMP> para;
  double leakCoefficient = 0.0;  ///< [m3/m2sPa] `CMP_Q50` by 750, 0 if that is not given

  /// Reads the lines of the block. An unknown keyword is warned about and skipped.
  /// @throws TKL::Exception "Expected keyword, got '%1'!", "Missing value for keyword '%1'!", an unknown word
  /// of `FLAGS`; "Invalid parameter value '%1' for keyword '%2'!", which also goes out as an error
  void read(const SectionText& text);

  /// Writes the block without its title, one keyword a line.
  /// @throws TKL::Exception when the stream does not take it
  void write(std::ostream& stream) const;

  /// Tests that the parameters are set and in range.
  /// @throws TKL::Exception of the parameter, its name and " is required" if it is missing
  void checkParameters() const;

 private:
  void readKeyword(const KeywordLine& line);
};

}  // namespace VELMORA
