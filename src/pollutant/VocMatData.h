#pragma once

#include <string>

namespace POLLUTANT_LIB {

/// How a volatile organic compound moves in a material, and how much of it the material binds.
class VocMatData {
 public:
  /// Reads an entry of the table `VOC_MATERIAL_DATA`, from its line ENTITY on.
  /// @return false, with the reason in `errmsg`, for data that are missing or no numbers
  bool read(const std::string& entry, std::string& errmsg);

  static constexpr double UNSET = -1e-100;

  std::string vocId;
  std::string materialId;    ///< name of the material
  double muFactor = UNSET;   ///< [---] diffusion resistance to the compound over that to water vapour
  double partCoeff = UNSET;  ///< [---] density in the solid over that in the pore gas, at 23 C
};

}  // namespace POLLUTANT_LIB
