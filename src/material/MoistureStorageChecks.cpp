#include <cmath>

#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "material/MaterialConstants.h"
#include "material/MoistureStorage.h"

namespace MM {

namespace {

bool near(double a, double b) {
  return std::fabs(a - b) <= LIMIT_TOLERANCE;
}

void scale(TKL::LinearSpline& spline, std::vector<double> TKL::LinearSpline::*values, double factor,
           const char* text) {
  const char* const FUNC_ID = "[MoistureStorage::denormalize]";
  for (double& value : spline.*values) value *= factor;
  spline.setValues(std::vector<double>(spline.x), std::vector<double>(spline.y));
  TKL::message(std::string(text), TKL::MSG_STANDARD, FUNC_ID, 3);
}

void warn(const TKL::FormatString& text) {
  const char* const FUNC_ID = "[MoistureStorage::checkLimits]";
  TKL::message(text, TKL::MSG_WARNING, FUNC_ID, 2);
}

void warn(const char* pattern, double value) {
  warn(TKL::FormatString(pattern).arg(value));
}

/// Reports, counted from 1, all intervals whose slope `isBad`.
template <typename Test>
void checkSlopes(const TKL::LinearSpline& spline, const char* pattern, Test isBad) {
  for (std::size_t i = 0; i < spline.slope.size(); ++i)
    if (isBad(spline.slope[i])) warn(TKL::FormatString(pattern).arg(i + 1));
}

}  // namespace

void MoistureStorage::denormalize(const MaterialBase& material) {
  const TKL::Parameter& thetaEff = material.paraStorage[MaterialBase::PS_THETA_EFF];
  if (!thetaEff.isSet()) return;
  TKL::LinearSpline& curve = functions[F_Theta_pC_de];
  if (!curve.empty() && near(curve.y.front(), 1.0) && near(curve.y.back(), 0.0) && near(curve.x.front(), 0.0))
    scale(curve, &TKL::LinearSpline::y, thetaEff.value, "Denormalizing Theta_l(pC) spline.\n");
  TKL::LinearSpline& inverse = functions[F_pC_Theta_de];
  if (!inverse.empty() && near(inverse.x.back(), 1.0) && near(inverse.x.front(), 0.0) &&
      near(inverse.y.back(), 0.0))
    scale(inverse, &TKL::LinearSpline::x, thetaEff.value, "Denormalizing pC(Theta_l) spline.\n");
  TKL::LinearSpline& overRH = functions[F_Theta_RH];
  if (!overRH.empty() && near(overRH.y.back(), 1.0))
    scale(overRH, &TKL::LinearSpline::y, thetaEff.value, "Denormalizing Theta_l(rh) spline.\n");
}

void MoistureStorage::checkLimits(const MaterialBase& /*material*/) const {
  const char* const FUNC_ID = "[MoistureStorage::checkLimits]";
  TKL::message("Checking parameter and function limits.\n", TKL::MSG_STANDARD, FUNC_ID, 3);
  if (kind == K_SPLINE) {
    checkTableLimits();
    if (!functions[F_pC_Theta_de].empty()) checkInverseLimits();
  }
  if (kind == K_RH) {
    const auto falls = [](double slope) { return slope < 0.0; };
    checkSlopes(functions[F_Theta_RH],
                "Invalid spline data for Theta_l(rh), found negative slope in interval #%1.", falls);
    checkSlopes(inverseRH, "Invalid spline data for rh(Theta_l), found negative slope in interval #%1.",
                falls);
  }
}

void MoistureStorage::checkTableLimits() const {
  const TKL::LinearSpline& curve = functions[F_Theta_pC_de];
  checkSlopes(curve, "Invalid spline data for Theta_l(pC), found positive slope in interval #%1.",
              [](double slope) { return slope > 0.0; });
  if (!near(curve.y.front(), ThetaEff))
    warn(
        "Material has an invalid Theta_l(pC) spline: the maximum Theta_l value (%1 m3/m3) must be equal to "
        "'THETA_EFF' (%1 m3/m3)!",
        curve.y.front());
  if (curve.y.back() != 0.0)
    warn("Material has an invalid Theta_l(pC) spline: the minimum Thetal value (%1 m3/m3) must be zero!",
         curve.y.back());
  if (!near(curve.x.front(), 0.0))
    warn("Material has an invalid Theta_l(pC) spline: the minimum pC value (%1 logPa) must be zero!",
         curve.x.front());
}

void MoistureStorage::checkInverseLimits() const {
  const TKL::LinearSpline& inverse = functions[F_pC_Theta_de];
  checkSlopes(inverse, "Invalid spline data for pC(Theta_l), found positive slope in interval #%1.",
              [](double slope) { return slope >= 0.0; });
  if (!near(inverse.x.back(), ThetaEff))
    warn(TKL::FormatString("Material has an invalid pC(Theta_l) spline: the maximum Thetal value (%1 m3/m3) "
                           "must be equal to 'THETA_EFF' (%2 m3/m3)!")
             .arg(inverse.x.back())
             .arg(ThetaEff));
  if (!near(inverse.x.front(), 0.0))
    warn("Material has an invalid pC(Theta_l) spline: the minimum Thetal value (%1 m3/m3) must be zero!",
         inverse.x.front());
  if (!near(inverse.y.back(), 0.0))
    warn("Material has an invalid pC(Theta_l) spline: the minimum pC value (%1 logPa) must be zero!",
         inverse.y.back());
}

void MoistureStorage::doReverseCheck() const {
  const char* const FUNC_ID = "[MoistureStorage::doReverseCheck]";
  const TKL::LinearSpline& curve = functions[F_Theta_pC_de];
  const TKL::LinearSpline& inverse = functions[F_pC_Theta_de];
  if (inverse.empty()) return;
  TKL::message("Performing consistency check between storage functions.\n", TKL::MSG_STANDARD, FUNC_ID, 3);

  const auto check = [FUNC_ID](const TKL::LinearSpline& there, const TKL::LinearSpline& back,
                               const char* single, const char* total) {
    int errors = 0;
    for (std::size_t i = 0; i < there.size(); ++i) {
      const double again = back.value(there.y[i]);
      if (near(again, there.x[i])) continue;
      ++errors;
      TKL::message(TKL::FormatString(single).arg(there.x[i]).arg(there.y[i]).arg(again), TKL::MSG_STANDARD,
                   FUNC_ID, 3);
    }
    if (errors > 0) TKL::message(TKL::FormatString(total).arg(errors), TKL::MSG_WARNING, FUNC_ID, 2);
  };
  check(curve, inverse, "pC = %1 -> Theta_l = %2 m3/m3 --(rMRC)-> pC = %3.\n",
        "Material may have inconsistant Theta_l(pC) and pC(Theta_l) functions (%1 errors in rMRC check).");
  check(inverse, curve, "Theta_l = %1 m3/m3 -> pC = %2 --(MRC)-> Theta_l = %3 m3/m3\n",
        "Material may have inconsistant Theta_l(pC) and pC(Theta_l) functions (%1 errors in MRC check).");
}

}  // namespace MM
