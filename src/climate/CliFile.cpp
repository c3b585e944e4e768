#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "climate/ClimateFile.h"
#include "climate/TextScanner.h"
#include "foundation/NumberScanner.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

const char* const CLI_ID = "[read_CLI]";

/// Goes forward to the next line that contains a word.
bool findLine(LineScanner& lines, std::string_view word) {
  while (lines.next())
    if (lines.line().find(word) != std::string_view::npos) return true;
  return false;
}

/// The second word of a line `Key = value` or `Key value`.
std::string secondWord(std::string_view line) {
  std::string text(line);
  std::replace(text.begin(), text.end(), '=', ' ');
  std::string_view rest = text;
  TKL::scanWord(rest);
  return std::string(TKL::scanWord(rest));
}

/// Text of a comment line behind its key word.
std::string_view commentStart(std::string_view line, std::string_view key) {
  std::string_view text = trimmed(line.substr(line.find(key) + key.size()));
  if (text.starts_with('=')) text.remove_prefix(1);
  return trimmed(text);
}

/// Goes forward to the line containing `Data` and collects the comment on the way, if there is one.
bool findComment(LineScanner& lines, std::string& comment) {
  constexpr std::string_view COMMENT = "Comment", DATA = "Data";
  bool inComment = false;
  while (lines.next()) {
    const std::string_view line = lines.line();
    if (!inComment && line.find(COMMENT) != std::string_view::npos) {
      inComment = true;
      comment = commentStart(line, COMMENT);
      continue;
    }
    if (line.find(DATA) != std::string_view::npos) {
      comment.erase(comment.find_last_not_of(TKL::WHITE_SPACE) + 1);
      return true;
    }
    if (inComment) comment.append("\n").append(line);
  }
  return false;
}

/// Whether the line holds `Data=`; blanks may stand before the equals sign.
bool isDataMark(std::string_view line) {
  constexpr std::string_view DATA = "Data";
  std::size_t at = line.find(DATA);
  while (at != std::string_view::npos) {
    const std::size_t next = line.find_first_not_of(" \t", at + DATA.size());
    if (next != std::string_view::npos && line[next] == '=') return true;
    at = line.find(DATA, at + DATA.size());
  }
  return false;
}

/// Time [s] of a data line in the format `FULL`: years of 365 days, days, hours, minutes, seconds.
bool takeFullTime(std::string_view& text, double& time) {
  constexpr std::array<std::int64_t, 5> SECONDS{31536000, 86400, 3600, 60, 1};
  std::int64_t sum = 0;
  for (const std::int64_t seconds : SECONDS) {
    int count = 0;
    if (!takeInteger(text, count)) return false;
    sum += count * seconds;
  }
  time = static_cast<double>(sum);
  return true;
}

/// Seconds per unit of time of a format; 0 stands for the five integers of `FULL`.
std::optional<double> timeFactor(std::string_view format) {
  if (format == "FULL") return 0.0;
  if (format == "SEC") return 1.0;
  if (format == "MIN") return 60.0;
  if (format == "HOURS") return 3600.0;
  if (format == "DAYS") return 24.0 * 3600.0;
  return std::nullopt;
}

/// Reads the lines behind the data mark up to the first that is no data line.
void parseData(std::string_view content, double factor, std::vector<double>& times,
               std::vector<double>& values) {
  LineScanner lines(content);
  while (lines.next())
    if (isDataMark(lines.line())) break;
  while (lines.next()) {
    std::string_view rest = trimmed(lines.line());
    if (rest.empty()) continue;
    double time = 0.0;
    double value = 0.0;
    const bool hasTime = factor == 0.0 ? takeFullTime(rest, time) : takeNumber(rest, time);
    if (!hasTime || !takeNumber(rest, value)) return;
    times.push_back(factor == 0.0 ? time : time * factor);
    values.push_back(value);
  }
}

}  // namespace

bool parse_CLI(std::string_view content, const TKL::Path& path, std::vector<double>& times,
               std::vector<double>& values, std::string& typeName, std::string& unitName,
               std::string& comment, std::string& errorText) {
  times.clear();
  values.clear();
  comment.clear();
  const auto missing = [&](const char* keyword) {
    errorText =
        std::string(CLI_ID) + "  Keyword '" + keyword + "' not found in CLI-file '" + path.str() + "'!";
    return false;
  };
  LineScanner lines(content);
  if (!findLine(lines, "ClimaCond")) return missing("ClimaCond");
  typeName = secondWord(lines.line());
  if (!findLine(lines, "IO_Unit")) return missing("IO_Unit");
  unitName = secondWord(lines.line());
  if (!findLine(lines, "TimeFormat")) return missing("TimeFormat");
  const std::string format = secondWord(lines.line());
  if (!findLine(lines, "Usage")) return missing("Usage");
  if (!findComment(lines, comment)) return missing("Data");

  const std::optional<double> factor = timeFactor(format);
  if (!factor) {
    errorText = std::string(CLI_ID) + "  Time format '" + quotedText(format) + "' not supported (yet)!";
    return false;
  }
  parseData(content, *factor, times, values);
  return true;
}

bool read_CLI(const TKL::Path& path, std::vector<double>& times, std::vector<double>& values,
              std::string& typeName, std::string& unitName, std::string& comment, std::string& errorText) {
  times.clear();
  values.clear();
  std::string content;
  if (!readWholeFile(path, content)) {
    errorText = std::string(CLI_ID) + "  Could not open CLI file '" + path.str() + "'!";
    return false;
  }
  return parse_CLI(content, path, times, values, typeName, unitName, comment, errorText);
}

}  // namespace VELMORA
