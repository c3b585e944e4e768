#include "keywords/KeywordTables.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "keywords/KeywordList.h"

namespace VELMORA {
namespace {

/// A line of the committed table: category, index, keywords, description.
struct Row {
  std::string category;
  std::uint32_t index = 0;
  std::string keywords;
  std::string description;  ///< "=" where the keyword stands for itself, "-" where there is none

  bool operator==(const Row&) const = default;
};

std::string withTabs(std::string text) {
  const std::string mark = "<TAB>";
  for (std::size_t i = text.find(mark); i != std::string::npos; i = text.find(mark, i))
    text.replace(i, mark.size(), "\t");
  return text;
}

std::vector<Row> committedRows() {
  std::ifstream file(VELMORA_SOURCE_DIR "/tests/keywords/keyword_tables.tsv");
  std::vector<Row> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    std::istringstream fields(line);
    Row row;
    std::string index;
    std::getline(fields, row.category, '\t');
    std::getline(fields, index, '\t');
    std::getline(fields, row.keywords, '\t');
    std::getline(fields, row.description, '\t');
    row.index = static_cast<std::uint32_t>(std::stoul(index));
    row.keywords = withTabs(row.keywords);
    rows.push_back(row);
  }
  return rows;
}

/// The same row as the program has it, through its public functions where they tell.
Row programRow(const Row& wanted) {
  Row row = wanted;
  row.keywords = keywordString(categoryNumber(wanted.category), wanted.index);
  const KeywordCategory* category = keywordCategory(categoryNumber(wanted.category));
  if (category != nullptr && category->descriptions == Descriptions::NONE) {
    row.description = "-";
    return row;
  }
  bool noDescription = false;
  row.description = KeywordList::Description(wanted.category, wanted.index, &noDescription);
  if (noDescription) row.description = "=";
  return row;
}

std::string text(const Row& row) {
  return row.category + "|" + std::to_string(row.index) + "|" + row.keywords + "|" + row.description;
}

TEST(KeywordTables, everyRow_isTheCommittedOne) {
  const std::vector<Row> rows = committedRows();
  ASSERT_EQ(rows.size(), 385U);
  for (const Row& row : rows) EXPECT_EQ(text(programRow(row)), text(row));
}

TEST(KeywordTables, everyRow_isInTheCommittedTable) {
  const std::vector<Row> rows = committedRows();
  std::size_t position = 0;
  for (std::int32_t number = 0; number < 47; ++number) {
    const KeywordCategory* category = keywordCategory(number);
    ASSERT_NE(category, nullptr);
    for (std::uint32_t index = 0; index < category->rows.size(); ++index, ++position) {
      ASSERT_LT(position, rows.size());
      EXPECT_EQ(rows[position].category, category->name);
      EXPECT_EQ(rows[position].index, index);
    }
  }
  EXPECT_EQ(position, rows.size());
  EXPECT_EQ(keywordCategory(47), nullptr);
}

TEST(KeywordTables, changedLetter_isSeen) {
  Row row = committedRows().front();
  row.description[3] = 'x';
  EXPECT_NE(text(programRow(row)), text(row));
  row = committedRows().front();
  row.keywords[0] = 's';
  EXPECT_NE(text(programRow(row)), text(row));
}

TEST(KeywordTables, everyKeyword_findsItsIndex) {
  for (const Row& row : committedRows()) {
    const std::string keyword = KeywordList::Keyword(row.category, row.index);
    EXPECT_EQ(KeywordList::Enumeration(row.category, keyword), static_cast<std::int32_t>(row.index));
  }
}

}  // namespace
}  // namespace VELMORA
