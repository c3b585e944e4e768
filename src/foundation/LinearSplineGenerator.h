#pragma once

#include <cstddef>

namespace TKL {

class LinearSpline;
class ScalarFunction;

/// Turns an analytic function into a table by adaptive refinement.
class LinearSplineGenerator {
 public:
  /// Replaces x and y of `spline` by a table on which linear interpolation meets the tolerances in the middle
  /// of each interval: |error| <= relTol * value + absTol. Meant for non-negative functions. Stops early once
  /// there are more than `maxPoints` points. The range is widened to that of the points which the spline
  /// already holds; with `useExistingPoints` (and at least two of them) refinement starts from these points.
  /// `makeSpline` is left to the caller.
  /// @throws Exception "Invalid interval (xMin must be < than xMax)!" or from `function`; the spline keeps
  /// its data
  static void generate(LinearSpline& spline, const ScalarFunction& function, double xMin, double xMax,
                       double absTol, double relTol, std::size_t maxPoints, bool useExistingPoints);
};

}  // namespace TKL
