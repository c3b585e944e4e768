#include "project/VelContactCond.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/QuotedText.h"
#include "project/ConditionReader.h"

namespace VELMORA {

namespace {

const std::string LIST_SEPARATORS[] = {";", ",", "|", ":"};

/// True for values that rise strictly from exactly 0 to exactly 1.
bool runsFromZeroToOne(const std::vector<double>& values) {
  return !values.empty() && values.front() == 0.0 && values.back() == 1.0 &&
         std::adjacent_find(values.begin(), values.end(), [](double a, double b) { return !(a < b); }) ==
             values.end();
}

/// Reads one list of numbers, without a mark between x and y values.
void readUnseparated(const std::string& text, TKL::LinearSpline& function) {
  std::istringstream stream(text);
  const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
  const std::size_t half = words.size() / 2;
  std::string first, second, even, odd;
  for (std::size_t k = 0; k < words.size(); ++k) {
    (k < half ? first : second) += words[k] + ' ';
    (k % 2 == 0 ? even : odd) += words[k] + ' ';
  }
  std::vector<double> x;
  TKL::string2valueVector(first, x);
  if (words.size() % 2 != 0 || (x.size() == half && runsFromZeroToOne(x))) {
    function.read(first, second);
  } else {
    function.read(even, odd);
  }
}

/// Reads the points of a function from one line.
void readPoints(const std::string& text, TKL::LinearSpline& function) {
  for (const std::string& separator : LIST_SEPARATORS) {
    const std::size_t position = text.find(separator);
    if (position == std::string::npos) continue;
    function.read(text.substr(0, position), text.substr(position + 1));
    return;
  }
  readUnseparated(text, function);
}

}  // namespace

void VelContactCond::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelContactCond::read]";
  forEachKeywordLine(text, FUNC_ID, [this](const KeywordLine& line) { readKeyword(line); });
}

void VelContactCond::readKeyword(const KeywordLine& line) {
  const char* const FUNC_ID = "[VelContactCond::read]";
  const char* const PARA = "VelContactCond::para_t";
  const std::string& keyword = line.keyword;
  if (keyword == "TYPE") {
    condition = readEnumerator<condition_t>("VelContactCond::condition_t", line.value);
  } else if (keyword == "NAME") {
    name = line.value;
  } else if (keyword == "KIND") {
    kind = readEnumerator<kind_t>("VelContactCond::kind_t", line.value);
  } else if (KeywordList::KeywordExists(PARA, keyword)) {
    readParameter(line, para[readEnumerator<para_t>(PARA, keyword)], FUNC_ID);
  } else if (keyword == "FOIL_NAME") {
    foilName = line.value;
  } else if (keyword == "SD_POSITIVE_DIRECTION") {
    sdPositiveDirection = isYes(line.value);
  } else if (KeywordList::KeywordExists("VelContactCond::function_t", keyword)) {
    readFunction(line);
  } else {
    throw TKL::Exception(TKL::FormatString("Invalid keyword '%1' in this section!").arg(quotedText(keyword)),
                         FUNC_ID);
  }
}

void VelContactCond::readFunction(const KeywordLine& line) {
  const char* const FUNC_ID = "[VelContactCond::read]";
  const auto index = readEnumerator<function_t>("VelContactCond::function_t", line.keyword);
  try {
    readPoints(line.value, functions[index]);
  } catch (const TKL::Exception& cause) {
    throw TKL::Exception(cause,
                         TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!")
                             .arg(quotedText(line.value))
                             .arg(line.keyword),
                         FUNC_ID);
  }
}

}  // namespace VELMORA
