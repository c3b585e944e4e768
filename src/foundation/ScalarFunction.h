#pragma once

namespace TKL {

/// A function of one real variable.
class ScalarFunction {
 public:
  ScalarFunction() = default;
  ScalarFunction(const ScalarFunction&) = default;
  ScalarFunction(ScalarFunction&&) = default;
  ScalarFunction& operator=(const ScalarFunction&) = default;
  ScalarFunction& operator=(ScalarFunction&&) = default;
  virtual ~ScalarFunction() = default;

  virtual double operator()(double x) const = 0;
};

}  // namespace TKL
