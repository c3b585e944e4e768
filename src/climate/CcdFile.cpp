#include <cstdint>

#include "climate/ClimateFile.h"
#include "climate/TextScanner.h"
#include "foundation/NumberScanner.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

constexpr char COMMENT_SIGN = '#';
/// Counts as a blank in a data line, wherever it stands.
constexpr char COLON = ':';

std::string lineText(const LineScanner& lines, std::string_view shownLine) {
  return "line #" + std::to_string(lines.number()) + ", line data was '" +
         quotedText(std::string(shownLine)) + "'!";
}

std::string lineBeforeText(const LineScanner& lines, std::string_view shownLine) {
  return "Time point in line #" + std::to_string(lines.number()) +
         " lies before the previous time point, line data was '" + quotedText(std::string(shownLine)) + "'!";
}

/// Text behind the comment sign, without the blank that follows a sign in the first column.
std::string_view commentText(std::string_view line) {
  const std::size_t sign = line.find(COMMENT_SIGN);
  const bool dropBlank = sign == 0 && line.size() > 1 && line[1] == ' ';
  return line.substr(sign + (dropBlank ? 2 : 1));
}

/// Reads comments and the line of quantity and unit.
bool parseHeader(LineScanner& lines, std::string& typeName, std::string& unitName, std::string& comment,
                 std::string& errorText) {
  std::string_view typeLine;
  while (lines.next()) {
    const std::string_view line = trimmed(lines.line());
    if (line.empty()) continue;
    if (line.front() == COMMENT_SIGN) {
      comment.append(commentText(lines.line())).append("\n");
      continue;
    }
    typeLine = line;
    break;
  }
  if (comment.ends_with('\n')) comment.pop_back();
  std::string_view rest = typeLine;
  typeName = TKL::scanWord(rest);
  unitName = TKL::scanWord(rest);
  if (!unitName.empty()) return true;
  errorText = "Could not read climate component type and unit in " + lineText(lines, typeLine);
  return false;
}

/// Takes the integers day, hour, minute and second.
bool takeTime(std::string_view& text, double& time) {
  constexpr std::int64_t HOURS_PER_DAY = 24, MINUTES_PER_HOUR = 60, SECONDS_PER_MINUTE = 60;
  int day = 0, hour = 0, minute = 0, second = 0;
  if (!takeInteger(text, day, COLON) || !takeInteger(text, hour, COLON) ||
      !takeInteger(text, minute, COLON) || !takeInteger(text, second, COLON))
    return false;
  const std::int64_t hours = day * HOURS_PER_DAY + hour;
  time = static_cast<double>((hours * MINUTES_PER_HOUR + minute) * SECONDS_PER_MINUTE + second);
  return true;
}

/// The line without a comment at its end.
std::string_view dataPart(std::string_view line) {
  return trimmed(line.substr(0, line.find(COMMENT_SIGN)));
}

}  // namespace

bool parse_CCD(std::string_view content, std::vector<double>& times, std::vector<double>& values,
               std::string& typeName, std::string& unitName, std::string& comment, std::string& errorText) {
  times.clear();
  values.clear();
  comment.clear();
  LineScanner lines(content);
  if (!parseHeader(lines, typeName, unitName, comment, errorText)) return false;

  double previousTime = -1.0;
  while (lines.next()) {
    const std::string_view line = dataPart(lines.line());
    if (line.empty()) continue;
    std::string_view rest = line;
    double time = 0.0;
    double value = 0.0;
    if (!takeTime(rest, time) || !takeNumber(rest, value, COLON) || !rest.empty()) {
      errorText = "Error reading data entry in " + lineText(lines, line);
      return false;
    }
    if (previousTime > time) {
      errorText = lineBeforeText(lines, line);
      return false;
    }
    previousTime = time;
    times.push_back(time);
    values.push_back(value);
  }
  return true;
}

bool read_CCD(const TKL::Path& path, std::vector<double>& times, std::vector<double>& values,
              std::string& typeName, std::string& unitName, std::string& comment, std::string& errorText) {
  times.clear();
  values.clear();
  std::string content;
  if (!readWholeFile(path, content)) {
    errorText = "Could not open CCD file '" + path.str() + "'!";
    return false;
  }
  return parse_CCD(content, times, values, typeName, unitName, comment, errorText);
}

}  // namespace VELMORA
