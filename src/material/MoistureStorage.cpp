#include "material/MoistureStorage.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "foundation/CheckedMath.h"
#include "foundation/Counters.h"
#include "foundation/Exception.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "material/MaterialConstants.h"

namespace MM {

namespace {

constexpr const char* STORAGE_FUNCTIONS = "MoistureStorage::Functions";
constexpr double PL_TABLE_END = -100.0;           ///< [Pa] from here to 0 a polynomial takes over
constexpr double KELVIN = TKL::RHO_W * TKL::R_V;  ///< [Pa/K] pl = KELVIN * T * ln(RH)
constexpr double SMALLEST_RH = 1e-10;             ///< keeps the logarithm of a dry material finite

}  // namespace

double MoistureStorage::Thetal_pl(double pl, double T) const {
  const char* const FUNC_ID = "[MoistureStorage::Thetal_pl]";
  if (kind > K_RESERVED)
    throw TKL::Exception("Unsupported type of moisture storage function or missing initialisation.", FUNC_ID);
  if (pl == 0.0) return ThetaEff;
  switch (kind) {
    case K_SPLINE:
      if (pl < PL_TABLE_END) return functions[F_Theta_pC_de].value(TKL::f_log10(-pl));
      if (pl < 0.0) return nearSaturationFit.value(pl);
      return pl * slopeOverSaturation + ThetaEff;
    case K_RH:
      if (pl < 0.0) return functions[F_Theta_RH].value(std::exp(pl / (T * KELVIN)));
      return pl * slopeOverSaturation + ThetaEff;
    default:
      break;
  }
  if (pl >= plLimit) return (pl - plLimit) * slopeOverSaturation + ThetaLimit;
  if (kind == K_RESERVED) return ThetaLimit;
  return modelType == MT_VAN_GENUCHTEN ? vanGenuchten(pl) * ThetaEff : 0.0;
}

/// Pressure of a liquid content beyond the limit, and of a curve without a tabulated inverse over log10(pC).
double MoistureStorage::otherPressure(double Theta_l, double T, double plGuess) const {
  const char* const FUNC_ID = "[MoistureStorage::pl_Thetal]";
  constexpr double LARGEST_GUESS = -1.0;
  if (kind > K_RESERVED)
    throw TKL::Exception("Unsupported type of moisture storage function or missing initialization.", FUNC_ID);
  if (Theta_l >= ThetaLimit) return (Theta_l - ThetaLimit) / slopeOverSaturation + plLimit;
  if (kind == K_SPLINE || kind == K_ANALYTIC) {
    const double guess = TKL::f_log10(-std::min(plGuess, LARGEST_GUESS));
    return -TKL::f_pow10(pC_Thetal_iterative(Theta_l, guess));
  }
  if (!inverseRH.valid) return 0.0;
  return TKL::f_log(std::max(inverseRH.value(Theta_l), SMALLEST_RH)) * KELVIN * T;
}

double MoistureStorage::contentAtLog(double logpC) const {
  const char* const FUNC_ID = "[MoistureStorage::pC_Thetal_iterative]";
  if (kind == K_SPLINE) return functions[F_Theta_pC_de].value(logpC);
  if (kind == K_ANALYTIC) return Thetal_pl(-TKL::f_pow10(logpC), T_STORAGE);
  throw TKL::Exception("Invalid MRC function type.", FUNC_ID);
}

double MoistureStorage::pC_Thetal_iterative(double Theta_l, double logpCGuess) const {
  const char* const FUNC_ID = "[MoistureStorage::pC_Thetal_iterative]";
  constexpr double DRY = 14.0;
  constexpr int MAX_PASSES = 49;
  constexpr double REL_TOL = 1e-10, ABS_TOL = 1e-12, TINY = 1e-20, MAX_STEP = 1.1;
  if (Theta_l == 0.0) return DRY;
  const double lower = plLimit < 0.0 ? TKL::f_log10(-plLimit) : 0.0;
  double x = std::max(lower + ABS_TOL, logpCGuess);
  double xOld = 0.0;
  double fOld = 0.0;
  for (int pass = 1; pass <= MAX_PASSES; ++pass) {
    ++TKL::mrcIterationCount;
    const double f = contentAtLog(x) - Theta_l;
    if (f == 0.0) return x;
    if (pass == 1) {
      xOld = x * REL_TOL + x + ABS_TOL;
      fOld = contentAtLog(xOld) - Theta_l;
    }
    const double step = -(f / ((f - fOld) + TINY)) * (x - xOld);
    const double xNew = std::max(lower, x + std::clamp(step, -MAX_STEP, MAX_STEP));
    const double change = (xNew - x) / (std::fabs(x) * REL_TOL + ABS_TOL);
    if (change * change < 1.0) return xNew;
    fOld = f;
    xOld = x;
    x = xNew;
  }
  TKL::message(
      "Error converging on rMRC calculation with given number of iteration. Returning best bet so far (may "
      "lead to Newton convergence errors).",
      TKL::MSG_WARNING, FUNC_ID, 1);
  return x;
}

void MoistureStorage::read(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[MoistureStorage::read]";
  try {
    readFunctions(lines, {STORAGE_FUNCTIONS, functions, FUNC_ID});
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading moisture storage data!", FUNC_ID);
  }
}

void MoistureStorage::read(const std::string& text) {
  read(splitLines(text));
}

void MoistureStorage::writeBinary(std::ostream& out) const {
  writeBinaryFunctions(out, functions);
}

void MoistureStorage::write(std::ostream& out, int indent) const {
  const char* const FUNC_ID = "[MoistureStorage::write]";
  if (!anyFunction(functions) && models.empty()) return;
  writeDirectionTitle(out, indent, "MOISTURE_STORAGE", 0, FUNC_ID);
  writeFunctions(out, indent, STORAGE_FUNCTIONS, functions);
}

void MoistureStorage::readBinary(std::istream& in) {
  readBinaryFunctions(in, functions);
}

void MoistureStorage::clear() {
  *this = MoistureStorage();
}

}  // namespace MM
