#include "foundation/LinearSpline.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <locale>
#include <ostream>
#include <sstream>
#include <utility>

#include "foundation/BinaryIO.h"
#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"

namespace TKL {

namespace {

constexpr std::uint32_t MAX_BINARY_SIZE = 10000;

/// Equidistant table without search; beyond the end the last value. The line of an interval is taken from
/// the origin of x, not from `xOffset`.
double equidistantValue(const LinearSpline& spline, double at) {
  const double position = (at - spline.xOffset) / spline.xStep;
  if (!(position < static_cast<double>(spline.slope.size()))) {
    return spline.y.back();
  }
  const std::size_t i = position > 0.0 ? static_cast<std::size_t>(position) : 0;
  return (at - static_cast<double>(i) * spline.xStep) * spline.slope[i] + spline.y[i];
}

void writeLine(std::ostream& stream, int indent, const std::vector<double>& values) {
  std::ostringstream line;
  line.imbue(std::locale::classic());
  line.precision(stream.precision());
  line << std::string(static_cast<std::size_t>(std::max(indent, 0)), ' ');
  for (const double value : values) {
    line << std::setw(15) << value << "  ";
  }
  stream << line.str() << '\n';
}

}  // namespace

/// Beyond the ends of the table, and wherever it has no index.
double LinearSpline::valueWithoutIndex(double at) const {
  assert(!x.empty() && x.size() == y.size());
  if (xStep != 0.0) {
    return equidistantValue(*this, at);
  }
  const std::size_t n = x.size();
  if (n == 1) {
    return y[0];
  }
  if (at > x[n - 1]) {
    return extrapolationMethod == EM_CONSTANT ? y[n - 1] : (at - x[n - 1]) * slope[n - 2] + y[n - 1];
  }
  const std::size_t k = firstNotBelow(at);
  if (k == 0) {
    return extrapolationMethod == EM_CONSTANT ? y[0] : (at - x[0]) * slope[0] + y[0];
  }
  return between(k, at);
}

/// Number of the first x that is not below `at`, which is not above the last one; 0 for NaN.
std::size_t LinearSpline::firstNotBelow(double at) const {
  if (index_.covers(at)) return index_.firstNotBelow(x.data(), at);
  if (!(at > x.front())) return 0;
  return static_cast<std::size_t>(std::lower_bound(x.begin(), x.end(), at) - x.begin());
}

double LinearSpline::nonInterpolatedValue(double at) const {
  assert(!x.empty() && x.size() == y.size());
  const std::size_t n = x.size();
  if (n == 1) {
    return y[0];
  }
  if (at > x[n - 1]) {
    return y[n - 1];
  }
  const std::size_t k = firstNotBelow(at);
  if (k == 0) {
    return y[0];
  }
  return at == x[k] ? y[k] : y[k - 1];
}

void LinearSpline::read(const std::string& xText, const std::string& yText) {
  const char* const FUNC_ID = "[LinearSpline::read]";
  std::string errorText;
  if (!read(xText, yText, errorText)) {
    throw Exception(errorText, FUNC_ID);
  }
}

bool LinearSpline::read(const std::string& xText, const std::string& yText, std::string& errorText) {
  std::vector<double> xRead;
  std::vector<double> yRead;
  string2valueVector(xText, xRead);
  string2valueVector(yText, yRead);
  if (xRead.empty()) {
    errorText = "Missing data to read!";
    return false;
  }
  if (xRead.size() != yRead.size()) {
    errorText =
        FormatString("Number of x [%1] and y [%2] values differs!").arg(xRead.size()).arg(yRead.size()).str();
    return false;
  }
  eliminateConsecutive(xRead, yRead, x, y);
  return makeSpline(errorText);
}

void LinearSpline::setValues(const std::vector<double>& xValues, const std::vector<double>& yValues) {
  const char* const FUNC_ID = "[LinearSpline::setValues]";
  if (xValues.size() != yValues.size()) {
    throw Exception("X and Y vector size mismatch.", FUNC_ID);
  }
  if (xValues.empty()) {
    throw Exception("Input vectors are empty.", FUNC_ID);
  }
  std::vector<double> xKept;
  std::vector<double> yKept;
  eliminateConsecutive(xValues, yValues, xKept, yKept);
  x = std::move(xKept);
  y = std::move(yKept);
  std::string errorText;
  if (!makeSpline(errorText)) {
    message(FormatString("Error while makeSpline in setValues. %1").arg(errorText), MSG_WARNING, FUNC_ID, 2);
  }
}

bool LinearSpline::makeSpline(std::string& errorMessage) {
  valid = false;
  slope.clear();
  index_ = IntervalIndex();
  if (x.empty() || x.size() != y.size()) {
    errorMessage = "Invalid vector dimensions.";
    return false;
  }
  for (std::size_t i = 0; i + 1 < x.size(); ++i) {
    if (!(x[i] < x[i + 1])) {
      errorMessage =
          FormatString("X values are not strictly monotonic increasing (at position/index %1).").arg(i).str();
      return false;
    }
  }
  slope.reserve(x.size() - 1);
  for (std::size_t i = 0; i + 1 < x.size(); ++i) {
    slope.push_back((y[i + 1] - y[i]) / (x[i + 1] - x[i]));
  }
  index_ = IntervalIndex(x);
  valid = true;
  return true;
}

void LinearSpline::eliminateConsecutive(const std::vector<double>& xIn, const std::vector<double>& yIn,
                                        std::vector<double>& xOut, std::vector<double>& yOut) {
  const char* const FUNC_ID = "[LinearSpline::eliminateConsecutive]";
  xOut.clear();
  yOut.clear();
  if (xIn.empty()) {
    return;
  }
  std::size_t dropped = 0;
  double lastReported = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < xIn.size(); ++i) {
    if (xOut.empty() || xIn[i] != xOut.back()) {
      xOut.push_back(xIn[i]);
      yOut.push_back(yIn[i]);
      continue;
    }
    ++dropped;
    if (xIn[i] != lastReported) {
      lastReported = xIn[i];
      message(FormatString("Duplicate x-value %1 found (and skipped).").arg(xIn[i]), MSG_WARNING, FUNC_ID, 2);
    }
  }
  if (xIn.back() == xOut.back() && yIn.back() != yOut.back()) {
    message(FormatString("Duplicate x-value found at the end. End y value %1 copied to the new spline (old y "
                         "value: %2.")
                .arg(yIn.back())
                .arg(yOut.back()),
            MSG_WARNING, FUNC_ID, 2);
    yOut.back() = yIn.back();
  }
  if (dropped > 0) {
    message(FormatString("Skipped a total of %1 values because of duplicate x-values.").arg(dropped),
            MSG_WARNING, FUNC_ID, 3);
  }
}

void LinearSpline::clear() {
  const int method = extrapolationMethod;
  *this = LinearSpline();
  extrapolationMethod = method;
}

void LinearSpline::write(std::ostream& stream, int indent) const {
  writeLine(stream, indent, x);
  writeLine(stream, indent, y);
}

void LinearSpline::read_binary(std::istream& stream) {
  std::vector<double> xRead;
  std::vector<double> yRead;
  read_vector_binary(stream, xRead, MAX_BINARY_SIZE);
  read_vector_binary(stream, yRead, MAX_BINARY_SIZE);
  x = std::move(xRead);
  y = std::move(yRead);
  slope.clear();
  valid = false;
}

void LinearSpline::write_binary(std::ostream& stream) const {
  write_vector_binary(stream, x);
  write_vector_binary(stream, y);
}

}  // namespace TKL
