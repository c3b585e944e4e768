#pragma once

#include <string>

#include "foundation/LinearSpline.h"

namespace POLLUTANT_LIB {

/// A property of a substance over temperature [K].
class SubstanceCurve : public TKL::LinearSpline {
 public:
  /// @param missingMessage text of the error for a curve without points, with its tag; a literal
  explicit SubstanceCurve(const char* missingMessage) : missingMessage_(missingMessage) {}

  /// The value at T [K]; that of a single point holds at any T. `makeSpline` must have gone before.
  /// @throws TKL::Exception for a curve without points
  double operator()(double T) const {
    if (empty()) fail();
    return value(T);
  }

 private:
  [[noreturn]] void fail() const;

  const char* missingMessage_;
};

/// A volatile organic compound.
class VocData {
 public:
  /// Reads an entry of the table `VOC_DATA`, from its line ENTITY on.
  /// @return false, with the reason in `errmsg`, for data that are missing or no numbers
  bool read(const std::string& entry, std::string& errmsg);

  static constexpr double UNSET = -1e-100;

  std::string id;
  std::string text1;         ///< for people; empty where the file says "undefined"
  std::string text2;         ///< for people; empty where the file says "undefined"
  double M = UNSET;          ///< [kg/mol] molar mass
  double rhoLiquid = UNSET;  ///< [kg/m3] density of the liquid, for people
  /// [kg/m3] saturation density over temperature
  SubstanceCurve rhosat{"[VocData::rhosat]  Missing saturation density spline data!"};
  /// [m2/s] diffusion coefficient in air over temperature
  SubstanceCurve Dair{"[VocData::Dair]  Missing diffusion coefficient spline data!"};
};

}  // namespace POLLUTANT_LIB
