#pragma once

#include <string>

#include "foundation/Parameter.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// The value of a state quantity at the start, for a range of elements.
class VelInitialCond {
 public:
  /// Indices of the keywords of "VelInitialCond::condition_t"; `NUM_C` means not set.
  enum condition_t {
    C_TEMPER,
    C_MSTCONT,
    C_MSTMASS,
    C_RELHUM,
    C_CAPPRESS,
    C_GASPRESS,
    C_VOCMASS,
    C_SOLMASS,
    C_SOLCONT,
    C_SALTMASS,
    NUM_C
  };

  condition_t condition = NUM_C;
  std::string name;
  std::string referencedName;  ///< kept as read
  TKL::Parameter value;        ///< the unit is taken as it is given
  bool used = false;           ///< an assignment refers to it

  /// Reads the lines of one `INIT_COND` block. An unknown keyword is warned about and skipped.
  /// @throws TKL::Exception "Expected keyword, got '%1'!", "Missing value for keyword '%1'!", "Invalid
  /// parameter value '%1' for keyword '%2'!", and an unknown `TYPE`
  void read(const SectionText& text);
};

}  // namespace VELMORA
