#include "material/MaterialCategory.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "material/KeywordList.h"
#include "material/Words.h"

namespace MM {

void MaterialCategory::read(const std::string& text) {
  const char* const FUNC_ID = "[MaterialCategory::read]";
  constexpr std::size_t MAX_IDS = 3;
  std::vector<CategoryID> read;
  for (const std::string& word : splitWords(text)) {
    if (read.size() == MAX_IDS)
      throw TKL::Exception(
          TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!").arg(text).arg("CATEGORY"),
          FUNC_ID);
    read.push_back(static_cast<CategoryID>(KeywordList::Enumeration("MaterialCategory::CategoryID", word)));
  }
  ids = read;
}

}  // namespace MM
