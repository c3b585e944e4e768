#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "material/MaterialConstants.h"
#include "material/ThermalTransport.h"

namespace MM {

namespace {

constexpr double T_REFERENCE_C = 23.0;  ///< [C] at which a conductivity is measured

bool differ(double a, double b) {
  return std::fabs(a - b) > LIMIT_TOLERANCE;
}

void rebuild(TKL::LinearSpline& spline, const char* errorText, const char* functionId) {
  const char* const FUNC_ID = functionId;
  std::string reason;
  if (!spline.makeSpline(reason)) throw TKL::Exception(TKL::Exception(reason, FUNC_ID), errorText, FUNC_ID);
}

void warn(const TKL::FormatString& text) {
  const char* const FUNC_ID = "[ThermalTransport::checkLimits]";
  TKL::message(text, TKL::MSG_WARNING, FUNC_ID, 2);
}

TKL::FormatString text(const char* pattern, const MaterialBase& material) {
  return TKL::FormatString(pattern).arg(material.name());
}

}  // namespace

void ThermalTransport::denormalize(const MaterialBase& material) {
  const char* const FUNC_ID = "[ThermalTransport::denormalize]";
  denormalizeTheta(material);
  TKL::LinearSpline& overT = functions[F_lambda_T];
  if (overT.empty() || differ(overT.value(T_DIFFUSION), 1.0)) return;
  for (double& y : overT.y) y *= material.paraTransport[MaterialBase::PT_LAMBDA].value;
  rebuild(overT, "Error creating denormalized lambda(T) spline.", FUNC_ID);
  TKL::message("Denormalizing lambda(T) spline.\n", TKL::MSG_STANDARD, FUNC_ID, 3);
}

void ThermalTransport::denormalizeTheta(const MaterialBase& material) {
  const char* const FUNC_ID = "[ThermalTransport::denormalize]";
  TKL::LinearSpline& overTheta = functions[F_lambda_Theta];
  if (overTheta.empty() || differ(overTheta.y.front(), 1.0) || differ(overTheta.x.back(), 1.0) ||
      differ(overTheta.x.front(), 0.0))
    return;
  for (double& x : overTheta.x) x *= material.paraStorage[MaterialBase::PS_THETA_POR].value;
  for (double& y : overTheta.y) y *= material.paraTransport[MaterialBase::PT_LAMBDA].value;
  rebuild(overTheta, "Error creating denormalized lambda(Theta_l) spline.", FUNC_ID);
  TKL::message("Denormalizing lambda(Theta_l) spline.\n", TKL::MSG_STANDARD, FUNC_ID, 3);
}

void ThermalTransport::checkLimits(const MaterialBase& material) const {
  if (kind == K_THETA) checkThetaLimits(material);
  if (kind == K_T) {
    const double value = functions[F_lambda_T].value(T_REFERENCE_C);
    if (differ(value, lambda))
      warn(text("Material '%1' has an invalid lambda(T) spline:\n"
                "The lambda-value (%2 W/mK) at 23 C must match LAMBDA (%3 W/mK)!",
                material)
               .arg(value)
               .arg(lambda));
  }
  // `lambda` has passed the parameter test, so this guards against a caller that sets it by hand.
  if ((kind == K_CONSTANT || kind == K_THETA_AND_T) && lambda <= 0.0)
    warn(text("Material '%1' has an invalid lambda dry-value (negativ or zero).\n", material));
  if (kind == K_THETA_AND_T) checkScaling(material);
}

void ThermalTransport::checkThetaLimits(const MaterialBase& material) const {
  const TKL::LinearSpline& overTheta = functions[F_lambda_Theta];
  if (differ(overTheta.x.front(), 0.0))
    warn(text("Material '%1' has an invalid lambda(Theta_l) spline:\n"
              "The minimum Theta_l value (%2 m3/m3) should be zero!",
              material)
             .arg(overTheta.x.front()));
  if (differ(overTheta.x.back(), material.thetaEff()))
    warn(text("Material '%1' has an invalid lambda(Theta_l) spline:\n"
              "The maximum Thetal value (%2 m3/m3) should be equal to 'THETA_EFF' (%3 m3/m3)!",
              material)
             .arg(overTheta.x.back())
             .arg(material.thetaEff()));
  if (differ(overTheta.y.front(), lambda))
    warn(text("Material '%1' has an invalid lambda(Theta_l) spline:\n"
              "The lambda-value (%2 W/mK) at zero must match LAMBDA (%3 W/mK)!",
              material)
             .arg(overTheta.y.front())
             .arg(lambda));
}

/// With both curves present each should be absolute: a value of 1 at the reference point looks like a mere
/// scaling.
void ThermalTransport::checkScaling(const MaterialBase& material) const {
  const auto looksLikeScaling = [](double value) {
    return value > 1.0 - LIMIT_TOLERANCE && value < 1.0 + LIMIT_TOLERANCE;
  };
  const double atT = functions[F_lambda_T].value(T_REFERENCE_C);
  if (looksLikeScaling(atT))
    warn(text("Material '%1' has an invalid lambda(T) spline:\n"
              "The lambda(T) scaling value (%2) at 23 C must be 1!",
              material)
             .arg(atT));
  const double atZero = functions[F_lambda_Theta].value(0.0);
  if (looksLikeScaling(atZero))
    warn(text("Material '%1' has an invalid lambda(Theta_l) spline:\n"
              "The lambda(Theta_l) scaling value (%2) at 0 m3/m3 must be 1!",
              material)
             .arg(atZero));
}

}  // namespace MM
