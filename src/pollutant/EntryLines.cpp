#include "pollutant/EntryLines.h"

#include <algorithm>

#include "foundation/NumberScanner.h"
#include "foundation/StringUtilities.h"

namespace POLLUTANT_LIB {

std::string_view EntryLines::next() {
  const std::size_t end = std::min(rest_.find('\n'), rest_.size());
  std::string_view line = rest_.substr(0, end);
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  line.remove_prefix(std::min(line.find_first_not_of(TKL::TRIM_CHARS), line.size()));
  return line.substr(0, line.find_last_not_of(TKL::TRIM_CHARS) + 1);
}

bool EntryLines::readEntity(std::string& word) {
  std::string_view line = next();
  const std::size_t keyword = line.find(ENTITY);
  if (keyword == std::string_view::npos) return false;
  line.remove_prefix(keyword + ENTITY.size());
  word = TKL::scanWord(line);
  return !word.empty();
}

bool EntryLines::readNumber(double& number) {
  std::string_view line = next();
  return TKL::scanNumber(line, number) &&
         (line.empty() || TKL::WHITE_SPACE.find(line.front()) != std::string_view::npos);
}

bool EntryLines::readCurve(TKL::LinearSpline& curve) {
  const std::string x(next());
  const std::string y(next());
  std::string reason;
  return curve.read(x, y, reason);
}

}  // namespace POLLUTANT_LIB
