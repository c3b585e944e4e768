#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/TempFolder.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

TEST(ExampleKeywords, everyLineOfAnExample_isKnown) {
  // an unknown keyword is only warned of: the example would run without what it is meant to show
  int projects = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(std::string(VELMORA_SOURCE_DIR) + "/examples")) {
    if (entry.path().extension() != ".vel") continue;
    const TKL::TempFolder folder;
    for (const auto& file : std::filesystem::directory_iterator(entry.path().parent_path()))
      if (file.is_regular_file()) std::filesystem::copy(file, folder.path());
    const ProcessResult result =
        runSolver({"-x", "-t", "-v0", folder.file(entry.path().filename().string())});
    EXPECT_EQ(result.exitCode, 0) << entry.path() << result.err;
    EXPECT_EQ((result.out + result.err).find("unknown"), std::string::npos) << entry.path() << result.out;
    ++projects;
  }
  EXPECT_GE(projects, 15);
}

}  // namespace VELMORA_TEST
