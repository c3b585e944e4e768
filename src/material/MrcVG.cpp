#include "material/MrcVG.h"

#include "foundation/CheckedMath.h"

namespace MM {

double MrcVG::operator()(double pl) const {
  double sum = 0.0;
  for (const Mode& mode : modes) {
    const double base = 1.0 + TKL::f_pow(-(mode.a * pl), mode.n);
    sum += mode.w * TKL::f_pow(base, (1.0 - mode.n) / mode.n);
  }
  return sum;
}

}  // namespace MM
