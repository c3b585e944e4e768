#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "material/MoistureTransport.h"

namespace MM {

namespace {

const char* const DENORMALIZE_ID = "[MoistureTransport::denormalize]";
const char* const POTENTIAL_ID = "[MoistureTransport::prepareKichhoffPotential]";

/// Kirchhoff potential over liquid content while it is built.
struct PotentialTable {
  std::vector<double> theta;
  std::vector<double> psi;

  void add(double Theta_l, double potential) {
    theta.push_back(Theta_l);
    psi.push_back(potential);
  }
};

/// Normalised: over 0..1, with a conductivity of 1 at saturation and a small one of the dry material.
bool isNormalized(const TKL::LinearSpline& spline) {
  constexpr double DRY_VALUE = -5.0;
  const auto near = [](double a, double b) { return std::fabs(a - b) <= LIMIT_TOLERANCE; };
  return !spline.empty() && near(spline.x.back(), 1.0) && near(spline.y.back(), 0.0) &&
         near(spline.x.front(), 0.0) && spline.y.front() <= DRY_VALUE;
}

/// What the functions differ in when they are brought from a normalised to the absolute form.
struct Reference {
  MaterialBase::ParaTransport parameter;
  const char* missing;
  const char* invalid;
  const char* done;
};

double referenceValue(const MaterialBase& material, const Reference& reference) {
  const char* const FUNC_ID = DENORMALIZE_ID;
  const TKL::Parameter& parameter = material.paraTransport[reference.parameter];
  if (!parameter.isSet()) throw TKL::Exception(reference.missing, FUNC_ID);
  if (parameter.value <= 0.0)
    throw TKL::Exception(TKL::FormatString(reference.invalid).arg(parameter.value), FUNC_ID);
  return parameter.value;
}

void rescale(TKL::LinearSpline& spline, double xFactor, double yShift, const Reference& reference) {
  const char* const FUNC_ID = DENORMALIZE_ID;
  for (double& x : spline.x) x *= xFactor;
  for (double& y : spline.y) y += yShift;
  std::string errorText;
  if (!spline.makeSpline(errorText)) throw TKL::Exception(errorText, FUNC_ID);
  TKL::message(std::string(reference.done), TKL::MSG_STANDARD, FUNC_ID, 3);
}

void store(TKL::LinearSpline& Psi, const PotentialTable& table) {
  const char* const FUNC_ID = POTENTIAL_ID;
  Psi.setValues(table.theta, table.psi);
  if (!Psi.valid) throw TKL::Exception("Error while generating Psi spline!", FUNC_ID);
}

}  // namespace

void MoistureTransport::denormalize(const MaterialBase& material) {
  if (isNormalized(functions[F_lgKl])) denormalizeKl(material);
  if (isNormalized(functions[F_lgDl])) denormalizeDl(material);
  if (isNormalized(functions[F_lgKv])) denormalizeKv(material);
}

void MoistureTransport::denormalizeKl(const MaterialBase& material) {
  const Reference reference{
      MaterialBase::PT_KLEFF, "Require KLEFF parameter for denormalization of Kl_Thetal spline.",
      "Invalid KLEFF value (%1 s) for denormalization of Kl_Thetal spline, must be > 0 s.",
      "Denormalizing Kl(Theta_l) spline.\n"};
  const double KLEFF = referenceValue(material, reference);
  rescale(functions[F_lgKl], material.thetaEff(), TKL::f_log10(KLEFF), reference);
}

void MoistureTransport::denormalizeDl(const MaterialBase& material) {
  const Reference reference{
      MaterialBase::PT_DLEFF, "Require DLEFF parameter for denormalization of Dl_Thetal spline.",
      "Invalid DLEFF value (%1 m2/s) for denormalization of Dl_Thetal spline, must be > 0 m2/s.",
      "Denormalizing Dl(Theta_l) spline.\n"};
  const double DLEFF = referenceValue(material, reference);
  rescale(functions[F_lgDl], material.thetaEff(), TKL::f_log10(DLEFF), reference);
}

void MoistureTransport::denormalizeKv(const MaterialBase& material) {
  const Reference reference{MaterialBase::PT_MEW,
                            "Require MEW parameter for denormalization of Kv_Thetal spline.",
                            "Invalid MEW value (%1 -) for denormalization of Kv_Thetal spline, must be > 0.",
                            "Denormalizing Kv(Theta_l) spline.\n"};
  const double MEW = referenceValue(material, reference);
  const double thetaPor = material.paraStorage[MaterialBase::PS_THETA_POR].value;
  rescale(functions[F_lgKv], thetaPor, TKL::f_log10(D_VAPOUR / (MEW * TKL::R_V * T_DIFFUSION)), reference);
}

void MoistureTransport::checkLiquidFunctionMonotony(const MaterialBase& material) const {
  const char* const FUNC_ID = "[MoistureTransport::checkLiquidFunctionMonotony]";
  const auto warn = [FUNC_ID](const TKL::FormatString& text) {
    TKL::message(text, TKL::MSG_WARNING, FUNC_ID, 2);
  };
  if (liquidKind == L_NONE)
    return warn(
        TKL::FormatString("Liquid transport function for material '%1' missing. Either one of lgKl(Ol) "
                          "or lgDl(Ol) is required!")
            .arg(material.name()));
  const TKL::LinearSpline& function = functions[liquidKind == L_KL ? F_lgKl : F_lgDl];
  for (std::size_t i = 0; i < function.slope.size(); ++i) {
    if (function.slope[i] >= 0.0) continue;
    return warn(
        TKL::FormatString("Check for monotonic liquid conductivity function failed for material '%1'. "
                          "Invalid spline data for %3(Thetal), found negative slope in interval #%2.")
            .arg(material.name())
            .arg(i + 1)
            .arg(liquidKind == L_KL ? "lgKl" : "lgDl"));
  }
}

void MoistureTransport::prepareKichhoffPotential(const MaterialBase& material,
                                                 const MoistureStorage& storage) {
  const char* const FUNC_ID = POTENTIAL_ID;
  TKL::message("Generating Kirchhoff potential functions.\n", TKL::MSG_STANDARD, FUNC_ID, 3);
  if (liquidKind == L_KL) {
    TKL::message("Converting: Kl -> Psi\n", TKL::MSG_STANDARD, FUNC_ID, 3);
    integrateKl(material, storage);
  } else {
    TKL::message("Converting: Dl -> Psi\n", TKL::MSG_STANDARD, FUNC_ID, 3);
    integrateDl(storage);
  }
}

/// Psi = integral of Kl dpl along the retention curve, by trapezoids.
void MoistureTransport::integrateKl(const MaterialBase& material, const MoistureStorage& storage) {
  constexpr double LOG_PC_START = 10.0;
  constexpr double LOG_PC_STEP = 0.01;
  constexpr int STEPS = 1000;
  constexpr double GAP = 1e-06;         // [m3/m3]
  constexpr double ROUNDING = 1e-14;    // of an interpolation, which a flat part of the curve shows
  constexpr double PL_OVER = 200000.0;  // [Pa] far enough for the over-saturated branch of the storage
  double plOld = -TKL::f_pow10(LOG_PC_START);
  double KOld = 0.0;
  PotentialTable table;
  table.add(storage.Thetal_pl(plOld, T_STORAGE), 0.0);
  KOld = Kl(table.theta.back());
  for (int i = 1; i <= STEPS; ++i) {
    const double pl = -TKL::f_pow10(LOG_PC_START - i * LOG_PC_STEP);
    const double theta = storage.Thetal_pl(pl, T_STORAGE);
    if (!(theta > table.theta.back() * (1.0 + ROUNDING))) continue;  // nothing is gained
    const double K = Kl(theta);
    table.add(theta, (K + KOld) * 0.5 * (pl - plOld) + table.psi.back());
    plOld = pl;
    KOld = K;
  }
  if (material.thetaEff() > table.theta.back() + GAP)
    table.add(material.thetaEff(), (0.0 - plOld) * KOld + table.psi.back());
  table.add(storage.Thetal_pl(PL_OVER, T_STORAGE), KOld * PL_OVER + table.psi.back());
  store(Psi, table);
}

/// Psi = integral of the density of water times Dl dTheta_l, by trapezoids.
void MoistureTransport::integrateDl(const MoistureStorage& storage) {
  constexpr double LOG_RHO_WATER = 3.0;
  constexpr double PL_OVER = 1000.0;  // [Pa]
  const TKL::LinearSpline& lgDl = functions[F_lgDl];
  PotentialTable table;
  table.add(lgDl.x.front(), 0.0);
  double DOld = TKL::f_pow10(lgDl.y.front() + LOG_RHO_WATER);
  for (std::size_t i = 1; i < lgDl.size(); ++i) {
    const double D = TKL::f_pow10(lgDl.y[i] + LOG_RHO_WATER);
    table.add(lgDl.x[i], (D + DOld) * 0.5 * (lgDl.x[i] - lgDl.x[i - 1]) + table.psi.back());
    DOld = D;
  }
  const double theta = storage.Thetal_pl(PL_OVER, T_STORAGE);
  table.add(theta, (theta - table.theta.back()) * DOld + table.psi.back());
  store(Psi, table);
}

}  // namespace MM
