// Reads the database file of the library.

#include <algorithm>
#include <iostream>
#include <string_view>
#include <utility>

#include "foundation/Exception.h"
#include "foundation/FileReader.h"
#include "foundation/QuotedText.h"
#include "foundation/StringUtilities.h"
#include "pollutant/EntryLines.h"
#include "pollutant/PollutantLibrary.h"

namespace POLLUTANT_LIB {

namespace {

constexpr std::string_view TABLE_KEYWORD = "TABLE";

bool isComment(std::string_view line) {
  return line.starts_with('#') || line.find_first_not_of(TKL::TRIM_CHARS) == std::string_view::npos;
}

std::string quoted(std::string_view text) {
  return TKL::quotedText(std::string(text));
}

/// A block of the file: its identifier and its lines without comments.
struct TableText {
  std::string id;
  std::string text;
};

/// Cuts the lines of a file into its tables.
class TableSplitter : public TKL::AbstractFileReaderDataProcessor {
 public:
  void processLine(const std::string& line) override {
    using std::string_view_literals::operator""sv;
    std::string_view content = line;
    if (std::exchange(atStart_, false) && content.starts_with("\xEF\xBB\xBF"sv)) content.remove_prefix(3);
    if (strayLine.empty() && !isComment(content)) addLine(content);
  }

  std::vector<TableText> tables;
  std::string strayLine;  ///< the first line in front of all tables

 private:
  void addLine(std::string_view line) {
    const std::size_t keyword = line.find(TABLE_KEYWORD);
    if (keyword != std::string_view::npos)
      tables.push_back({TKL::trim_copy(line.substr(keyword + TABLE_KEYWORD.size())), {}});
    else if (tables.empty())
      strayLine = line;
    else
      tables.back().text.append(line).append("\n");
  }

  bool atStart_ = true;
};

bool splitFile(const TKL::Path& path, std::vector<TableText>& tables, std::string& errmsg) {
  const std::string FUNC_ID = "[PollutantLibrary::readDatabase]  ";
  TableSplitter splitter;
  try {
    TKL::FileReader(path).readAll(&splitter);
  } catch (const TKL::Exception&) {
    errmsg = FUNC_ID + "Couldn't open database '" + TKL::quotedText(path.str()) + "'!";
    return false;
  }
  if (!splitter.strayLine.empty()) {
    errmsg =
        FUNC_ID + "Expected table keyword 'TABLE', got line '" + TKL::quotedText(splitter.strayLine) + "'";
    return false;
  }
  tables = std::move(splitter.tables);
  return true;
}

/// Position of the line that holds the next ENTITY at or behind `from`.
std::size_t findEntity(std::string_view text, std::size_t from) {
  const std::size_t keyword = text.find(ENTITY, from);
  if (keyword == std::string_view::npos) return keyword;
  const std::size_t lineEnd = text.rfind('\n', keyword);
  return lineEnd == std::string_view::npos ? 0 : lineEnd + 1;
}

/// Appends the records of a table.
template <typename Record>
bool read_table(const TableText& table, std::vector<Record>& records, std::string& errmsg) {
  const std::string FUNC_ID = "[POLLUTANT_LIB::read_table]  ";
  std::size_t begin = findEntity(table.text, 0);
  if (begin == std::string::npos) {
    errmsg = FUNC_ID + "Error in data base table: '" + table.id + "', missing keyword '" +
             std::string(ENTITY) + "'";
    return false;
  }
  while (begin < table.text.size()) {
    const std::size_t lineEnd = table.text.find('\n', begin);
    const std::size_t end = std::min(findEntity(table.text, lineEnd), table.text.size());
    const std::string entry = table.text.substr(begin, end - begin);
    Record record;
    if (!record.read(entry, errmsg)) {
      errmsg += "\n" + FUNC_ID + "Error reading entry from in data base table: '" + table.id +
                "'. Entry was:\n" + quoted(entry);
      return false;
    }
    records.push_back(std::move(record));
    begin = end;
  }
  return true;
}

}  // namespace

bool PollutantLibrary::readDatabase(const TKL::Path& path, std::string& errmsg) {
  clear();
  std::vector<TableText> tables;
  if (!splitFile(path, tables, errmsg)) return false;
  for (const TableText& block : tables) {
    if (block.id == "VOC_DATA") {
      if (!read_table(block, vocData, errmsg)) return false;
    } else if (block.id == "VOC_MATERIAL_DATA") {
      if (!read_table(block, vocMatData, errmsg)) return false;
    } else {
      const std::string notice = "Unknown table id '" + quoted(block.id) + "'! Ignoring table...\n";
      std::cout << notice;
    }
  }
  return true;
}

}  // namespace POLLUTANT_LIB
