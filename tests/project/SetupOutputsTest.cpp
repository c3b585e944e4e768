#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "project/SetupFixture.h"

using namespace VELMORA;
using TKL::Thrown;

namespace {

constexpr VelSelection::Range ALL{0, 0, 1, 0};

VelOutputFile outputFile(const std::string& name, const std::string& grid = "g",
                         const std::string& format = "f") {
  auto file = named<VelOutputFile>(name);
  file.gridName = grid;
  file.formatName = format;
  return file;
}

/// Two cells with an output file "T.out", its grid "g" and its format "f" of field type.
class OutputSetup : public SetupFixture {
 public:
  OutputSetup() : SetupFixture({1, 1}, {1}) {
    VelOutputs& outputs = project.m_outputs;
    outputs.outputGrids = {named<VelOutputGrid>("g")};
    outputs.outputFormats = {named<VelOutputFormat>("f")};
    outputs.outputFormats[0].type = VelOutputFormat::T_FIELD;
    outputs.outputFiles = {outputFile("T.out")};
    assign(VelSelection::A_FIELDOUTPUT, "T.out", ALL);
  }
};

}  // namespace

TEST(SetupOutputs, file_isTiedToItsGridFormatAndElements) {
  OutputSetup setup;
  setup.run();
  ASSERT_EQ(setup.data.outputFiles.size(), 1u);
  const VelOutputFile& file = setup.data.outputFiles[0];
  EXPECT_EQ(file.grid, &setup.data.outputGrids.at(0));
  EXPECT_EQ(file.format, &setup.data.outputFormats.at(0));
  EXPECT_EQ(file.path.str(), setup.folder.str() + "/T.out");
  EXPECT_EQ(file.elements, (std::vector<Element*>{&setup.data.elements[0], &setup.data.elements[1]}));
}

TEST(SetupOutputs, fluxFile_pointsToTheFinalSides) {
  OutputSetup setup;
  setup.project.m_outputs.outputFormats[0].type = VelOutputFormat::T_FLUX;
  setup.assign(VelSelection::A_FLUXOUTPUT, "T.out", {0, 0, 0, 0},
               {VelSelection::L_RIGHT, VelSelection::L_LEFT});
  setup.run();
  EXPECT_EQ(setup.data.outputFiles[0].sides, std::vector<Side*>{&setup.data.sides[0]});
}

TEST(SetupOutputs, unusedFiles_areDropped) {
  OutputSetup setup;
  setup.project.m_outputs.outputFiles.push_back(outputFile("unused.out", "no grid", "no format"));
  setup.run();
  EXPECT_EQ(setup.data.outputFiles.size(), 1u);
}

TEST(SetupOutputs, gridsOfUsedFiles_areTakenOverOnceInProjectOrder) {
  OutputSetup setup;
  VelOutputs& outputs = setup.project.m_outputs;
  outputs.outputGrids = {named<VelOutputGrid>("g2"), named<VelOutputGrid>("unused"),
                         named<VelOutputGrid>("g")};
  outputs.outputFiles = {outputFile("T.out"), outputFile("U.out", "g2"), outputFile("V.out", "g2")};
  setup.assign(VelSelection::A_FIELDOUTPUT, "U.out", ALL);
  setup.assign(VelSelection::A_FIELDOUTPUT, "V.out", ALL);
  setup.run();
  ASSERT_EQ(setup.data.outputGrids.size(), 2u);
  EXPECT_EQ(setup.data.outputGrids[0].name, "g2");
  EXPECT_EQ(setup.data.outputGrids[1].name, "g");
  EXPECT_EQ(setup.data.outputFiles[2].grid, &setup.data.outputGrids[0]);
}

TEST(SetupOutputs, unusedFormats_areKept) {
  OutputSetup setup;
  setup.project.m_outputs.outputFormats.push_back(named<VelOutputFormat>("unused"));
  setup.run();
  EXPECT_EQ(setup.data.outputFormats.size(), 2u);
}

TEST(SetupOutputs, missingGrid_fails) {
  OutputSetup setup;
  setup.project.m_outputs.outputGrids.clear();
  EXPECT_EQ(setup.thrown(),
            (Thrown{"Output grid 'g' used by output file 'T.out' is not defined!", SETUP_TAG}));
}

TEST(SetupOutputs, missingFormat_fails) {
  OutputSetup setup;
  setup.project.m_outputs.outputFormats.clear();
  EXPECT_EQ(setup.thrown(),
            (Thrown{"Output format 'f' used by output file 'T.out' is not defined!", SETUP_TAG}));
}

TEST(SetupOutputs, twoFormatsOfOneName_fail) {
  OutputSetup setup;
  setup.project.m_outputs.outputFormats.push_back(named<VelOutputFormat>("f"));
  EXPECT_EQ(setup.thrown(), (Thrown{"Ambiguous assignment of output format with name 'f'", SETUP_TAG}));
}

TEST(SetupOutputs, twoGridsOfOneName_pass) {
  OutputSetup setup;
  setup.project.m_outputs.outputGrids.push_back(named<VelOutputGrid>("g"));
  EXPECT_EQ(setup.thrown(), (Thrown{"nothing thrown", ""}));
}

TEST(SetupOutputs, twoFilesOfOneName_fail) {
  OutputSetup setup;
  setup.project.m_outputs.outputFiles.push_back(outputFile("T.out"));
  EXPECT_EQ(setup.thrown(),
            (Thrown{"Ambiguous assignment 'T.out' with type 'FIELDOUTPUT'. Check whether there are multiple "
                    "definitions (materials, conditions, etc.) of the same identification name!",
                    "[mark_used]  "}));
}

TEST(SetupOutputs, assignmentWithoutFile_fails) {
  OutputSetup setup;
  setup.assign(VelSelection::A_FLUXOUTPUT, "U.out", ALL);
  EXPECT_EQ(
      setup.thrown(),
      (Thrown{"Invalid assignment 'U.out' with type 'FLUXOUTPUT'. Check the ID names of your assignments!",
              "[mark_used]  "}));
}

TEST(SetupOutputDirectory, isCreatedWithItsParents) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_outputs.outputFolder = setup.folder / "a/b";
  setup.run();
  EXPECT_TRUE((setup.folder / "a/b").isDirectory());
}

TEST(SetupOutputDirectory, relativePath_standsBesideTheProject) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_placeholders.set(PathPlaceholders::D_PROJECT, setup.folder);
  setup.project.m_outputs.outputFolder = "out";
  setup.run();
  EXPECT_EQ(setup.data.outputDir, setup.folder / "out");
}

TEST(SetupOutputDirectory, placeholder_isReplaced) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_placeholders.set(PathPlaceholders::D_PROJECT, setup.folder);
  setup.project.m_outputs.outputFolder = TKL::Path();
  setup.project.m_outputs.setDefaultFolder(setup.folder / "wall.proj");
  setup.run();
  EXPECT_EQ(setup.data.outputDir, setup.folder / "wall.results");
}

TEST(SetupOutputDirectory, fileOfThatName_fails) {
  SetupFixture setup({1, 1}, {1});
  std::ofstream(setup.folder.str()) << "in the way";
  EXPECT_EQ(setup.thrown(), (Thrown{"Couldn't create output directory '" + setup.folder.str() +
                                        "'. A file with this path exists already.",
                                    SETUP_TAG}));
}

TEST(SetupOutputDirectory, directoryThatCannotBeCreated_fails) {
  SetupFixture setup({1, 1}, {1});
  std::ofstream(setup.folder.str()) << "in the way";
  const TKL::Path below = setup.folder / "results";
  setup.project.m_outputs.outputFolder = below;
  EXPECT_EQ(setup.thrown(),
            (Thrown{"Couldn't create directory '" + below.str() + "' (access denied?)", SETUP_TAG}));
}

TEST(SetupOutputs, manyFiles_areTiedInLinearTime) {
  // searching each of 50,000 files in each of 50,000 assignments would take minutes
  SetupFixture setup({1, 1}, {1});
  VelOutputs& outputs = setup.project.m_outputs;
  for (int k = 0; k < 50000; ++k) {
    const std::string number = std::to_string(k);
    outputs.outputGrids.push_back(named<VelOutputGrid>("grid " + number));
    outputs.outputFormats.push_back(named<VelOutputFormat>("format " + number));
    outputs.outputFiles.push_back(outputFile("file " + number, "grid " + number, "format " + number));
    setup.assign(VelSelection::A_FIELDOUTPUT, "file " + number, ALL);
  }
  const auto start = std::chrono::steady_clock::now();
  setup.run();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_EQ(setup.data.outputFiles.back().grid->name, "grid 49999");
}
