#include "foundation/LinearSplineGenerator.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/LinearSpline.h"
#include "foundation/Message.h"
#include "foundation/ScalarFunction.h"

namespace TKL {

namespace {

const char* const FUNC_ID = "[LinearSplineGenerator::generate]";

/// Neighbouring points are not brought closer than this, relative to x.
constexpr double MIN_RELATIVE_SPACING = 1e-11;
/// Halving reaches the smallest spacing long before; a function on which refinement and thinning undo each
/// other would go on for ever.
constexpr int MAX_SWEEPS = 500;

/// The table under work, with a flag for each interval that is still to be tested.
struct Table {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<char> refine;

  void add(double xNew, double yNew) {
    x.push_back(xNew);
    y.push_back(yNew);
  }
};

struct Sweep {
  std::size_t refined = 0;  ///< intervals tested
  std::size_t calls = 0;    ///< evaluations of the function
  double maxError = 0.0;
};

/// Tests each flagged interval in its middle and halves it where the table is too coarse. Unlike absolute
/// tolerances elsewhere, the bound takes the function value with its sign.
Sweep refineIntervals(Table& table, const ScalarFunction& function, double absTol, double relTol) {
  Sweep sweep;
  sweep.maxError = absTol;
  Table out;
  for (std::size_t i = 0; i + 1 < table.x.size(); ++i) {
    const double left = table.x[i];
    const double right = table.x[i + 1];
    out.add(left, table.y[i]);
    if (!table.refine[i]) {
      out.refine.push_back(false);
      continue;
    }
    ++sweep.refined;
    const double middle = (left + right) * 0.5;
    if (middle == left) {
      throw Exception("Division by zero while adding spline points!", FUNC_ID);
    }
    const double value = function(middle);
    ++sweep.calls;
    const double error = std::fabs(value - (table.y[i] + table.y[i + 1]) * 0.5);
    bool split = false;
    if (error / (relTol * value + absTol) > 1.0) {
      sweep.maxError = std::max(sweep.maxError, error);
      const double spacing = std::min(std::fabs(middle - left), std::fabs(middle - right));
      split = spacing / std::max(left, right) > MIN_RELATIVE_SPACING;
    }
    out.refine.push_back(split);
    if (split) {
      out.add(middle, value);
      out.refine.push_back(true);
    }
  }
  out.add(table.x.back(), table.y.back());
  table = std::move(out);
  return sweep;
}

/// Removes inner points that lie within the tolerance on the chord of their current neighbours. The last
/// inner point always stays.
void thinOut(Table& table, double absTol, double relTol) {
  const std::size_t intervals = table.refine.size();
  if (intervals <= 2) {
    return;
  }
  std::size_t last = 0;  // position of the last point kept
  const auto keep = [&](std::size_t i) {
    ++last;
    table.x[last] = table.x[i];
    table.y[last] = table.y[i];
    if (i < intervals) {
      table.refine[last] = table.refine[i];
    }
  };
  for (std::size_t i = 1; i < table.x.size(); ++i) {
    if (i + 1 < intervals) {
      const double chord =
          (table.x[i] - table.x[last]) / (table.x[i + 1] - table.x[last]) * (table.y[i + 1] - table.y[last]) +
          table.y[last];
      if (std::fabs(chord - table.y[i]) / (relTol * chord + absTol) < 1.0) {
        continue;
      }
    }
    keep(i);
  }
  table.x.resize(last + 1);
  table.y.resize(last + 1);
  table.refine.resize(last);
}

Table startTable(const LinearSpline& spline, const ScalarFunction& function, double xMin, double xMax,
                 bool useExistingPoints) {
  Table table;
  if (useExistingPoints && spline.size() >= 2) {
    table.x = spline.x;
    table.y = spline.y;
  } else {
    table.add(xMin, function(xMin));
    table.add(xMax, function(xMax));
  }
  table.refine.assign(table.x.size() - 1, true);
  return table;
}

}  // namespace

void LinearSplineGenerator::generate(LinearSpline& spline, const ScalarFunction& function, double xMin,
                                     double xMax, double absTol, double relTol, std::size_t maxPoints,
                                     bool useExistingPoints) {
  if (!spline.empty()) {
    xMin = std::min(xMin, spline.x.front());
    xMax = std::max(xMax, spline.x.back());
    message(FormatString("Spline data already existing in generator, using min/max values: %1/%2")
                .arg(xMin)
                .arg(xMax),
            MSG_STANDARD, FUNC_ID, 3);
  }
  if (!(xMin < xMax)) {
    throw Exception("Invalid interval (xMin must be < than xMax)!", FUNC_ID);
  }
  Table table = startTable(spline, function, xMin, xMax, useExistingPoints);
  message(FormatString("Starting spline generation with %1 points, reltol = %2, abstol = %3.\n")
              .arg(table.x.size())
              .arg(relTol)
              .arg(absTol),
          MSG_STANDARD, FUNC_ID, 3);
  for (int sweeps = 0; sweeps < MAX_SWEEPS; ++sweeps) {
    const Sweep sweep = refineIntervals(table, function, absTol, relTol);
    message(FormatString("  Intervals refined = %1, max abs. error = %2, fEvals = %4, current spline size of "
                         "%3")
                .arg(sweep.refined)
                .arg(sweep.maxError)
                .arg(table.x.size())
                .arg(sweep.calls),
            MSG_STANDARD, FUNC_ID, 3);
    thinOut(table, absTol, relTol);
    message(FormatString(" [%1]\n").arg(table.x.size()), MSG_STANDARD, FUNC_ID, 3);
    if (sweep.refined == 0 || table.x.size() > maxPoints) {
      break;
    }
  }
  spline.x = std::move(table.x);
  spline.y = std::move(table.y);
  spline.slope.clear();
  spline.valid = false;
}

}  // namespace TKL
