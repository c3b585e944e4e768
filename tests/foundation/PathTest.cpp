#include "foundation/Path.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "support/Thrown.h"

namespace TKL {
namespace {

const std::map<std::string, Path> PLACES = {{"CLIMATE_DIR", "/db/climate"}, {"EMPTY", ""}};

std::string replaced(const char* path) {
  return Path(path).withReplacedPlaceholders(PLACES).str();
}

TEST(Path, constructor_trimsAndTurnsBackslashes) {
  EXPECT_EQ(Path(" \tC:\\x\\y.m6\r").str(), "C:/x/y.m6");
  EXPECT_EQ(Path(std::string("a\\b ")).str(), "a/b");
}

TEST(Path, empty_isInvalid) {
  EXPECT_FALSE(Path().isValid());
  EXPECT_FALSE(Path(" \r").isValid());
  EXPECT_TRUE(Path("a").isValid());
}

TEST(Path, absolute_startsWithSlashOrDrive) {
  EXPECT_TRUE(Path("/a").isAbsolute());
  EXPECT_TRUE(Path("C:\\a").isAbsolute());
  EXPECT_FALSE(Path("a/b").isAbsolute());
  EXPECT_FALSE(Path("1:").isAbsolute());
  EXPECT_FALSE(Path().isAbsolute());
}

TEST(Path, appendingNothing_changesNothing) {
  for (const char* part : {"", ".", "/"}) {
    EXPECT_EQ((Path("a/b") / part).str(), "a/b") << part;
  }
}

TEST(Path, append_putsOneSlashBetween) {
  EXPECT_EQ((Path("a") / "b").str(), "a/b");
  EXPECT_EQ((Path("a") / "/b").str(), "a/b");
  EXPECT_EQ((Path("a/") / "b").str(), "a/b");
  EXPECT_EQ((Path("/") / "/b").str(), "/b");
}

TEST(Path, appendToNothing_isThePart) {
  EXPECT_EQ((Path() / "b").str(), "b");
  EXPECT_EQ((Path() / "/b").str(), "/b");
}

TEST(Path, append_removesLeadingDot) {
  EXPECT_EQ((Path(".") / "b").str(), "b");
  EXPECT_EQ((Path("./a") / std::string("b")).str(), "a/b");
}

TEST(Path, appendInPlace_givesTheSame) {
  Path path("a");
  path /= Path("b");
  EXPECT_EQ(path, Path("a") / "b");
}

TEST(Path, appendItself) {
  Path path("a");
  path /= path;
  EXPECT_EQ(path.str(), "a/a");
}

TEST(Path, partsOfAName) {
  const Path path("C:\\x\\y.m6");
  EXPECT_EQ(path.filename(), "y.m6");
  EXPECT_EQ(path.extension(), "m6");
  EXPECT_EQ(path.filenameWithoutExtension(), "y");
  EXPECT_EQ(path.parentPath().str(), "C:/x");
}

TEST(Path, lastPointCounts) {
  EXPECT_EQ(Path("a.b/c.d.e").extension(), "e");
  EXPECT_EQ(Path("a.b/c.d.e").filenameWithoutExtension(), "c.d");
}

TEST(Path, pointInTheDirectory_isNoExtension) {
  EXPECT_EQ(Path("a.b/c").extension(), "");
  EXPECT_EQ(Path("a.b/c").filenameWithoutExtension(), "c");
}

TEST(Path, trailingSlash_isNoComponent) {
  EXPECT_EQ(Path("a/b/").filename(), "b");
  EXPECT_EQ(Path("a/b/").parentPath().str(), "a");
}

TEST(Path, parentBelowRoot_isRoot) {
  EXPECT_EQ(Path("/a").parentPath().str(), "/");
  EXPECT_EQ(Path("C:/a").parentPath().str(), "C:/");
}

TEST(Path, invalid_hasNoNameAndNoParent) {
  EXPECT_EQ(thrownBy([] { Path().filename(); }), (Thrown{"Invalid path: ''", "[Path::filename]"}));
  EXPECT_EQ(thrownBy([] { Path().extension(); }), (Thrown{"Invalid path: ''", "[Path::filename]"}));
  EXPECT_EQ(thrownBy([] { Path().parentPath(); }), (Thrown{"Invalid path: ''", "[Path::parentPath]"}));
}

TEST(Path, oneComponent_hasNoParent) {
  for (const char* path : {"a", "/", "C:/", "a/"}) {
    EXPECT_EQ(thrownBy([&] { Path(path).parentPath(); }),
              (Thrown{"No parent possible.", "[Path::parentPath]"}))
        << path;
  }
}

TEST(Path, addExtension_hasOnePoint) {
  EXPECT_EQ(Path("a/b.x").addExtension("output").str(), "a/b.x.output");
  EXPECT_EQ(Path("a/b.x").addExtension(".output").str(), "a/b.x.output");
  EXPECT_EQ(Path("a").addExtension("").str(), "a");
}

TEST(Path, hasPlaceholder_forBothKindsOfBrackets) {
  EXPECT_TRUE(Path("$(A)/x").hasPlaceholder());
  EXPECT_TRUE(Path("x/{A}").hasPlaceholder());
  EXPECT_TRUE(Path("${A}").hasPlaceholder());
  EXPECT_FALSE(Path("(A)/$").hasPlaceholder());
  EXPECT_FALSE(Path("$(A").hasPlaceholder());
  EXPECT_FALSE(Path("{A").hasPlaceholder());
}

TEST(Path, placeholder_isReplacedInBothForms) {
  EXPECT_EQ(replaced("$(CLIMATE_DIR)/x.ccd"), "/db/climate/x.ccd");
  EXPECT_EQ(replaced("${CLIMATE_DIR}\\x.ccd"), "/db/climate/x.ccd");
  EXPECT_EQ(replaced("$(CLIMATE_DIR)x.ccd"), "/db/climate/x.ccd");
  EXPECT_EQ(replaced("$(CLIMATE_DIR)"), "/db/climate");
}

TEST(Path, withoutPlaceholder_isUnchanged) {
  EXPECT_EQ(replaced("a/b"), "a/b");
  EXPECT_EQ(replaced("{CLIMATE_DIR}/b"), "{CLIMATE_DIR}/b");
  EXPECT_EQ(replaced(""), "");
}

TEST(Path, emptyPlaceholder_failsWhereUsed) {
  EXPECT_EQ(thrownBy([] { replaced("$(EMPTY)/x"); }),
            (Thrown{"Path for placeholder 'EMPTY' is empty.", "[Path::withReplacedPlaceholders]"}));
}

TEST(Path, absoluteRest_fails) {
  EXPECT_EQ(thrownBy([] { replaced("$(CLIMATE_DIR)C:/x"); }),
            (Thrown{"Cannot add absolute path 'C:/x' (from replacing placeholder 'CLIMATE_DIR') to path part "
                    "'/db/climate'.",
                    "[Path::withReplacedPlaceholders]"}));
  EXPECT_EQ(thrownBy([] { replaced("$(CLIMATE_DIR)//x"); }).text,
            "Cannot add absolute path '/x' (from replacing placeholder 'CLIMATE_DIR') to path part "
            "'/db/climate'.");
}

TEST(Path, unknownPlaceholder_listsTheKnownOnes) {
  EXPECT_EQ(thrownBy([] { replaced("$(FOO)/x"); }),
            (Thrown{"Unknown or undefined path placeholder 'FOO'. Known placeholders are:\n"
                    "$(CLIMATE_DIR) = /db/climate\n$(EMPTY) = \n",
                    "[Project::replacePlaceHolders]"}));
}

TEST(Path, placeholderBehindTheStart_isUnknown) {
  for (const char* path : {"x/$(CLIMATE_DIR)", "$(CLIMATE_DIR)/${CLIMATE_DIR}"}) {
    EXPECT_TRUE(thrownBy([&] {
                  replaced(path);
                }).text.starts_with("Unknown or undefined path placeholder 'CLIMATE_DIR'."))
        << path;
  }
}

TEST(Path, placeholderWithoutEnd_isUnknown) {
  EXPECT_TRUE(thrownBy([] {
                replaced("$(FOO/x");
              }).text.starts_with("Unknown or undefined path placeholder 'FOO/x'."));
}

TEST(Path, placeholderName_isCaseSensitive) {
  EXPECT_EQ(thrownBy([] { replaced("$(climate_dir)"); }).location, "[Project::replacePlaceHolders]");
}

}  // namespace
}  // namespace TKL
