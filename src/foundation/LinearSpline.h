#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "foundation/IntervalIndex.h"

namespace TKL {

/// Piecewise linear function on strictly increasing x values. A single point is a constant function.
/// x and y may be changed at will; `makeSpline` must follow before the next evaluation.
class LinearSpline {
 public:
  /// Values beyond the ends of the table.
  enum extrapolation_t {
    EM_CONSTANT,  ///< the end values hold on
    EM_LINEAR     ///< the end slopes hold on
  };

  LinearSpline() = default;
  LinearSpline(const LinearSpline&) = default;
  LinearSpline(LinearSpline&&) = default;
  LinearSpline& operator=(const LinearSpline&) = default;
  LinearSpline& operator=(LinearSpline&&) = default;
  virtual ~LinearSpline() = default;

  /// The interpolated value; exact at the nodes. The table must be valid. In line, since the material
  /// functions are tables.
  [[gnu::always_inline]] double value(double at) const {
    if (xStep != 0.0 || !index_.covers(at)) return valueWithoutIndex(at);
    const std::size_t k = index_.firstNotBelow(x.data(), at);
    return between(k, at);
  }
  /// The step value: y of the last node that is not above `at`. The table must be valid.
  double nonInterpolatedValue(double at) const;

  /// Reads two texts of numbers; points with repeated x are dropped with a warning.
  /// @throws Exception with the text of the other form
  void read(const std::string& xText, const std::string& yText);
  /// @return false, with the reason in `errorText`, for missing data, different counts or falling x values
  bool read(const std::string& xText, const std::string& yText, std::string& errorText);

  /// Takes the data over; points with repeated x are dropped with a warning. A table that is not strictly
  /// increasing is only warned about and leaves `valid` false.
  /// @throws Exception "X and Y vector size mismatch.", "Input vectors are empty."
  void setValues(const std::vector<double>& xValues, const std::vector<double>& yValues);

  /// Computes the slopes and `valid`.
  /// @return false, with the reason in `errorMessage`
  bool makeSpline(std::string& errorMessage);

  /// Copies the points and drops those whose x repeats the one before, with warnings. The first y of equal x
  /// wins, but at the end of the table the last.
  static void eliminateConsecutive(const std::vector<double>& xIn, const std::vector<double>& yIn,
                                   std::vector<double>& xOut, std::vector<double>& yOut);

  std::size_t size() const { return x.size(); }
  bool empty() const { return x.empty(); }
  /// Removes all points; the kind of extrapolation stays.
  void clear();

  /// Writes the line of the x values and the line of the y values, each behind `indent` blanks.
  void write(std::ostream& stream, int indent) const;

  /// Reads x and y as written by `write_binary`; `makeSpline` must follow.
  /// @throws Exception for a failing stream and for more than 10000 values
  void read_binary(std::istream& stream);
  /// Writes x and y, each as a 32-bit length and 8-byte numbers in the byte order of the machine.
  void write_binary(std::ostream& stream) const;

  int extrapolationMethod = EM_CONSTANT;  ///< one of `extrapolation_t`
  double xStep = 0.0;                     ///< spacing of an equidistant table, 0 for any other
  double xOffset = 0.0;                   ///< first x of an equidistant table
  std::vector<double> x;                  ///< strictly increasing
  std::vector<double> y;                  ///< as long as `x`
  std::vector<double> slope;              ///< one per interval
  bool valid = false;                     ///< true only after a successful `makeSpline`

 private:
  /// At a value that lies above the node before `k` and not above node `k`.
  double between(std::size_t k, double at) const {
    const double a = (at - x[k - 1]) / (x[k] - x[k - 1]);
    return (1.0 - a) * y[k - 1] + a * y[k];
  }
  double valueWithoutIndex(double at) const;
  std::size_t firstNotBelow(double at) const;

  IntervalIndex index_;  ///< of `x`
};

}  // namespace TKL
