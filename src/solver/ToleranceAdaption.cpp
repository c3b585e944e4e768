#include "solver/ToleranceAdaption.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"

namespace VELMORA_SOLVER {

namespace {
const char* const ADJUST_ID = "[VelmoraCvodeSolver::adjustTolerances]";
}

void ToleranceAdaption::startAt(double t) {
  lastReinitTime = t;
  reinitCount = 0;
}

void ToleranceAdaption::loosen(double t) {
  if (t == lastReinitTime) {
    ++reinitCount;
    if (reinitCount > MAX_REINITS_AT_ONE_TIME)
      throw TKL::Exception(
          "Giving up after 1000 solver re-inits! Maybe the tolerances are set too low or the minimum time "
          "step limit is too large?",
          ADJUST_ID);
  } else {
    reinitCount = 0;
    lastReinitTime = t;
  }
  ++toleranceLevel;
  relTol *= FACTOR;
  if (relTol > MAX_RELTOL)
    throw TKL::Exception(
        "Giving up after relative tolerance reached 1.0e-2! Maybe the tolerances are set too low or the "
        "minimum time step limit is too large?",
        ADJUST_ID);
  TKL::message(TKL::FormatString("Adjusting relative tolerance to %1 (level %2) and attempting "
                                 "re-initialization of solver!\n")
                   .arg(relTol)
                   .arg(toleranceLevel),
               TKL::MSG_WARNING, ADJUST_ID, -1);
}

bool ToleranceAdaption::tighten(long stepsSinceReinit) {
  if (stepsSinceReinit <= MIN_STEPS_BETWEEN_TIGHTENINGS) return false;
  --toleranceLevel;
  relTol /= FACTOR;
  // The text has two places for three values: the steps stand where the tolerance is announced.
  TKL::message(TKL::FormatString("% internal steps taken since tolerances were adjusted. Reducing relative "
                                 "tolerance to %1 (level %2).\n")
                   .arg(stepsSinceReinit)
                   .arg(relTol)
                   .arg(toleranceLevel),
               TKL::MSG_WARNING, ADJUST_ID, -1);
  return true;
}

}  // namespace VELMORA_SOLVER
