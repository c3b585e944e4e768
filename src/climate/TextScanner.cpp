#include "climate/TextScanner.h"

#include <charconv>
#include <filesystem>
#include <fstream>

#include "foundation/NumberScanner.h"

namespace VELMORA {

namespace {

void skipBlanks(std::string_view& text, char blank) {
  std::size_t first = 0;
  while (first < text.size() && (isBlank(text[first]) || text[first] == blank)) ++first;
  text.remove_prefix(first);
}

}  // namespace

LineScanner::LineScanner(std::string_view text) : rest_(text) {
  constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
  if (rest_.starts_with(BYTE_ORDER_MARK)) rest_.remove_prefix(BYTE_ORDER_MARK.size());
}

bool LineScanner::next() {
  if (rest_.empty()) return false;
  const std::size_t end = rest_.find('\n');
  line_ = rest_.substr(0, end);
  rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  if (line_.ends_with('\r')) line_.remove_suffix(1);
  ++number_;
  return true;
}

std::string_view trimmed(std::string_view text) {
  skipBlanks(text, ' ');
  std::size_t length = text.size();
  while (length > 0 && isBlank(text[length - 1])) --length;
  return text.substr(0, length);
}

bool takeInteger(std::string_view& text, int& value, char blank) {
  skipBlanks(text, blank);
  const bool plus = text.starts_with('+');
  if (plus) text.remove_prefix(1);
  if (plus && text.starts_with('-')) return false;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc()) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return true;
}

bool takeNumber(std::string_view& text, double& value, char blank) {
  skipBlanks(text, blank);
  return TKL::scanNumber(text, value);
}

bool readWholeFile(const TKL::Path& path, std::string& content) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path.str(), error)) return false;
  const auto size = std::filesystem::file_size(path.str(), error);
  if (error) return false;
  std::ifstream file(path.str(), std::ios::binary);
  if (!file) return false;
  content.resize(size);
  file.read(content.data(), static_cast<std::streamsize>(size));
  content.resize(static_cast<std::size_t>(file.gcount()));
  return !file.bad();
}

}  // namespace VELMORA
