#include <cmath>

#include "foundation/CheckedMath.h"
#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/LinearSplineGenerator.h"
#include "foundation/Message.h"
#include "material/KeywordList.h"
#include "material/MaterialConstants.h"
#include "material/MoistureStorage.h"
#include "material/MrcGAUSS.h"

namespace MM {

namespace {

const char* const PREPARE_ID = "[MoistureStorage::prepareCalculation]";

constexpr double LOG_PC_DRY = 12.0;  ///< log10(pC / Pa) at which a tabulated material is dry

void progress(const TKL::FormatString& text) {
  const char* const FUNC_ID = PREPARE_ID;
  TKL::message(text, TKL::MSG_STANDARD, FUNC_ID, 3);
}

void rebuild(TKL::LinearSpline& spline) {
  const char* const FUNC_ID = PREPARE_ID;
  std::string errorText;
  if (!spline.makeSpline(errorText)) throw TKL::Exception(errorText, FUNC_ID);
}

}  // namespace

void MoistureStorage::prepareCalculation(const MaterialBase& material) {
  const char* const FUNC_ID = PREPARE_ID;
  constexpr double SLOPE_OVER_SATURATION = 1e-07;
  constexpr double PL_ANALYTIC_LIMIT = -100.0;
  try {
    kind = K_NONE;
    slopeOverSaturation = SLOPE_OVER_SATURATION;
    progress(TKL::FormatString("Initializing moisture storage functions.\n"));
    const TKL::MessageIndentor indentor;
    isAir = material.isAir();
    if (isAir) return;
    denormalize(material);
    if (!material.checkParameter(MaterialBase::PS_THETA_EFF, "moisture storage models", FUNC_ID)) return;
    ThetaEff = material.thetaEff();
    chooseCurve();
    if (kind == K_NONE) return;
    if (kind == K_SPLINE) doReverseCheck();
    checkLimits(material);
    const bool tabulated = !functions[F_Theta_pC_de].empty() || !functions[F_Theta_RH].empty();
    plLimit = tabulated ? 0.0 : PL_ANALYTIC_LIMIT;
    ThetaLimit = tabulated ? ThetaEff : Thetal_pl(PL_ANALYTIC_LIMIT, T_STORAGE);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error initializing moisture storage functionality for calculation.", FUNC_ID);
  }
}

void MoistureStorage::chooseCurve() {
  if (!functions[F_Theta_pC_de].empty()) {
    kind = K_SPLINE;
    prepareTable();
  } else if (!functions[F_Theta_RH].empty()) {
    kind = K_RH;
    inverseRH.setValues(functions[F_Theta_RH].y, functions[F_Theta_RH].x);
  } else if (!models.empty()) {
    prepareModel();
  }
}

void MoistureStorage::prepareTable() {
  TKL::LinearSpline& curve = functions[F_Theta_pC_de];
  if (curve.y.back() == 0.0 && curve.x.back() < LOG_PC_DRY) {
    curve.x.back() = LOG_PC_DRY;
    rebuild(curve);
    TKL::LinearSpline& inverse = functions[F_pC_Theta_de];
    if (!inverse.empty()) {
      inverse.y.front() = LOG_PC_DRY;
      rebuild(inverse);
    }
  }
  fitNearSaturation();
}

void MoistureStorage::prepareModel() {
  const char* const FUNC_ID = PREPARE_ID;
  if (models.size() > 1)
    throw TKL::Exception("There must not be more than one moisture storage model parameter section.",
                         FUNC_ID);
  const auto& [identifier, model] = *models.begin();
  if (!KeywordList::KeywordExists("MoistureStorage::ModelTypes", identifier)) {
    TKL::message(TKL::FormatString("Unknown MRC model type '%1'.").arg(identifier), TKL::MSG_WARNING, FUNC_ID,
                 2);
    return;
  }
  switch (KeywordList::Enumeration("MoistureStorage::ModelTypes", identifier)) {
    case MT_GAUSS:
      return generateGaussTable(model);
    case MT_VAN_GENUCHTEN:
      return TKL::message("VAN GENUCHTEN Model is recognized, but not supported yet.", TKL::MSG_ERROR,
                          FUNC_ID, -1);
    default:
      // For models that the keyword list may learn before this class does.
      TKL::message(
          TKL::FormatString("MRC Model type '%1' is recognized, but not supported yet.").arg(identifier),
          TKL::MSG_WARNING, FUNC_ID, 2);
  }
}

void MoistureStorage::generateGaussTable(const ModelDataContainer& model) {
  constexpr double X_MIN = 0.0, X_MAX = 10.0, ABS_TOL = 1e-05, REL_TOL = 0.0001;
  constexpr std::size_t MAX_POINTS = 10000;
  modelType = MT_GAUSS;
  MrcGAUSS curve;
  curve.setData(ThetaEff, model);
  progress(TKL::FormatString("Generating MRC spline data from GAUSS model.\n"));
  TKL::LinearSpline table;
  TKL::LinearSplineGenerator::generate(table, curve, X_MIN, X_MAX, ABS_TOL, REL_TOL, MAX_POINTS, false);
  table.x.push_back(LOG_PC_DRY);
  table.y.push_back(0.0);
  functions[F_Theta_pC_de].setValues(table.x, table.y);
  kind = K_SPLINE;
  // The coefficients of the near saturation polynomial stay 0: it belongs to measured tables.
  progress(TKL::FormatString("MRC spline generated with %1 points.\n").arg(functions[F_Theta_pC_de].size()));
}

/// Cubic through value and slope of the curve at -100 Pa and through the slope over saturation, with the best
/// fit of the effective saturation. If it has a turning point in between, a parabola that reaches the
/// effective saturation at -1 Pa takes its place.
void MoistureStorage::fitNearSaturation() {
  const TKL::LinearSpline& curve = functions[F_Theta_pC_de];
  NearSaturationFit fit;
  const double E = ThetaEff;
  const double s = slopeOverSaturation;
  const double y2 = curve.value(2.0);
  const double m = (curve.value(TKL::f_log10(105.9)) - curve.value(TKL::f_log10(94.406))) / -11.494;
  const double d = y2 - E;
  fit.a0 = (151 * y2 + 500000 * E + 5050 * (101 * s + m)) / 500151;
  fit.a1 = s;
  fit.a2 = ((333333 * m + 656667 * s) / 200 + 50 * d) / 166717;
  fit.a3 = ((10001 * m + 9799 * s) / 200 + d) / 500151;

  const double t = (s / 3) / fit.a3;
  const double D = t * t - (fit.a2 / 3) / fit.a3;
  const auto inBand = [](double pl) { return pl > -100.0 && pl < 0.0; };
  if (D > 0.0) {
    const double r = std::sqrt(D);
    fit.useCubic = !inBand(r - t) && !inBand(-t - r);
  }
  const double g = E - y2;
  fit.b0 = ((10000 * E - 199 * y2) / 99 - 100 * m) / 99;
  fit.b1 = (200 * g / 99 - 101 * m) / 99;
  fit.b2 = (g / 99 - m) / 99;
  nearSaturationFit = fit;
}

}  // namespace MM
