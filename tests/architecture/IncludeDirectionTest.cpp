#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "architecture/IncludeRules.h"

namespace VELMORA {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const IncludeMap& sources() {
  static const IncludeMap files = readIncludes(VELMORA_SOURCE_DIR "/src");
  return files;
}

// ---- the source tree ----

TEST(SourceTree, isRead) {
  EXPECT_TRUE(sources().contains("foundation/UnitList.cpp"));
  EXPECT_THAT(sources().at("foundation/UnitList.h"), ::testing::Contains("foundation/Unit.h"));
}

TEST(SourceTree, includesRunDownwards) {
  EXPECT_THAT(forbiddenArrows(sources()), IsEmpty());
}

TEST(SourceTree, filesDoNotIncludeEachOtherInACircle) {
  EXPECT_THAT(circles(sources()), IsEmpty());
}

TEST(SourceTree, hasNoFolderOutsideTheLayout) {
  EXPECT_THAT(strayFolders(sources()), IsEmpty());
}

TEST(SourceTree, includesExistingFiles) {
  EXPECT_THAT(missingFiles(sources()), IsEmpty());
}

// ---- the rules themselves, on made-up trees ----

TEST(AllowedArrows, containNoCircle) {
  for (const auto& [folder, targets] : allowedArrows()) {
    for (const std::string& target : targets) {
      EXPECT_FALSE(allowedArrows().at(target).contains(folder)) << folder << " <-> " << target;
    }
  }
}

TEST(AllowedArrows, hold_transitively) {
  for (const auto& [folder, targets] : allowedArrows()) {
    for (const std::string& target : targets) {
      for (const std::string& next : allowedArrows().at(target)) {
        EXPECT_TRUE(targets.contains(next)) << folder << " -> " << target << " -> " << next;
      }
    }
  }
}

TEST(ForbiddenArrows, everyPairOutsideTheListIsFound) {
  for (const auto& [folder, targets] : allowedArrows()) {
    for (const auto& [target, ignored] : allowedArrows()) {
      const std::string include = target + "/B.h";
      const bool allowed = target == folder || targets.contains(target);
      EXPECT_EQ(forbiddenArrows({{folder + "/A.h", {include}}}).empty(), allowed) << folder << " " << target;
    }
  }
}

TEST(ForbiddenArrows, upwardsIsFound) {
  EXPECT_THAT(forbiddenArrows({{"foundation/A.h", {"project/B.h"}}}),
              ElementsAre("foundation/A.h -> project/B.h"));
}

TEST(ForbiddenArrows, sidewardsIsFound) {
  EXPECT_THAT(forbiddenArrows({{"models/A.cpp", {"airflow/B.h", "project/C.h"}}}),
              ElementsAre("models/A.cpp -> airflow/B.h"));
}

TEST(ForbiddenArrows, gridUsesFoundationOnly) {
  EXPECT_THAT(forbiddenArrows({{"grid/A.h", {"foundation/B.h", "keywords/C.h"}}}),
              ElementsAre("grid/A.h -> keywords/C.h"));
}

TEST(ForbiddenArrows, climateMayUseKeywords) {
  EXPECT_THAT(forbiddenArrows({{"climate/A.h", {"keywords/B.h", "climate/C.h"}}}), IsEmpty());
}

TEST(StrayFolders, unknownFolderIsFound) {
  EXPECT_THAT(strayFolders({{"extras/A.h", {}}}), ElementsAre("extras/A.h"));
}

TEST(StrayFolders, includeOfTestCodeIsFound) {
  EXPECT_THAT(strayFolders({{"solver/A.cpp", {"support/B.h"}}}), ElementsAre("solver/A.cpp -> support/B.h"));
}

TEST(StrayFolders, fileBesideTheFoldersIsFound) {
  EXPECT_THAT(strayFolders({{"A.h", {}}}), ElementsAre("A.h"));
}

TEST(StrayFolders, includeWithoutFolderIsFound) {
  EXPECT_THAT(strayFolders({{"grid/A.h", {"B.h"}}}), ElementsAre("grid/A.h -> B.h"));
}

TEST(Circles, fileThatIncludesItselfIsFound) {
  EXPECT_THAT(circles({{"grid/A.h", {"grid/A.h"}}}), ElementsAre("grid/A.h -> grid/A.h"));
}

TEST(Circles, circleBehindATailIsFound) {
  EXPECT_THAT(circles({{"app/M.cpp", {"grid/A.h"}},
                       {"grid/A.h", {"grid/B.h"}},
                       {"grid/B.h", {"grid/C.h"}},
                       {"grid/C.h", {"grid/A.h"}}}),
              ElementsAre("grid/A.h -> grid/B.h -> grid/C.h -> grid/A.h"));
}

TEST(Circles, fileReachedOnTwoWaysIsNoCircle) {
  EXPECT_THAT(circles({{"grid/A.h", {"grid/B.h", "grid/C.h"}},
                       {"grid/B.h", {"grid/D.h"}},
                       {"grid/C.h", {"grid/D.h"}},
                       {"grid/D.h", {}}}),
              IsEmpty());
}

TEST(MissingFiles, includeOfNothingIsFound) {
  EXPECT_THAT(missingFiles({{"grid/A.h", {"grid/B.h"}}}), ElementsAre("grid/A.h -> grid/B.h"));
}

TEST(QuotedIncludes, areReadWithAnyBlanks) {
  EXPECT_THAT(quotedIncludes("#include \"a/A.h\"\n  #  include\t\"b/B.h\" // x\r\n#include<string>\n"),
              ElementsAre("a/A.h", "b/B.h"));
}

TEST(QuotedIncludes, otherLinesAreNone) {
  EXPECT_THAT(quotedIncludes("// #include \"a/A.h\"\n#define X \"include\"\nconst char* s = \"#include\";\n"),
              IsEmpty());
}

}  // namespace
}  // namespace VELMORA
