#include "material/MaterialTestSupport.h"

namespace MM {

TEST(MaterialTestSupport, thrown_isEmptyWithoutException) {
  EXPECT_TRUE(thrown([] {}).empty());
}

TEST(MaterialTestSupport, has_comparesTextAndTag) {
  const Records records = thrown([] { throw TKL::Exception("text", "[tag]"); });
  EXPECT_TRUE(has(records, "text", "[tag]"));
  EXPECT_FALSE(has(records, "other", "[tag]"));
  EXPECT_FALSE(has(records, "text", "[other]"));
}

}  // namespace MM
