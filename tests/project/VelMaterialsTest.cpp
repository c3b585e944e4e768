#include "project/VelMaterials.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "foundation/Exception.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/UnknownKeywords.h"
#include "project/VelMaterialsNames.h"
#include "support/MessageCapture.h"
#include "support/TempFolder.h"

namespace VELMORA {

namespace {

const char* const EXTERNAL_TAG = "[VelMaterials::readExternalMaterials]";

const std::string FILE_TEXT =
    "V6MARLZ! 006.000\n[IDENTIFICATION]\nNAME = en:Zinc sheet\nFLAGS = AIR_TIGHT\n"
    "[STORAGE_BASE_PARAMETERS]\nRHO = 7200 kg/m3\nCE = 380 J/kgK\nTHETA_EFF = 0.01 m3/m3\n"
    "[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 110 W/mK\n";

VelMaterials read(const std::string& text, int firstNumber = 1) {
  VelMaterials materials;
  materials.read(SectionText(text, firstNumber));
  return materials;
}

TKL::Exception failure(const std::string& text, int firstNumber = 1) {
  const TKL::MessageCapture capture;
  try {
    read(text, firstNumber);
  } catch (const TKL::Exception& ex) {
    return ex;
  }
  return {"nothing thrown", ""};
}

bool has(const TKL::Exception& ex, const std::string& what, const std::string& location) {
  return std::any_of(ex.records().begin(), ex.records().end(), [&](const TKL::Exception::Record& record) {
    return record.what == what && record.location == location;
  });
}

/// A project directory and a material database beside each other.
class VelMaterialsFiles : public ::testing::Test {
 protected:
  TKL::Path write(const std::string& name, const std::string& content = FILE_TEXT) const {
    return TKL::Path(folder.write(name, content));
  }
  TKL::Path inFolder(const std::string& name) const { return TKL::Path(folder.file(name)); }

  void readFiles(const std::string& section, const VelMaterials::FileReader& reader = {}) {
    materials.read(SectionText(section));
    materials.readExternalMaterials(placeholders, newNames, reader);
  }

  const TKL::TempFolder folder;
  const PlaceholderMap placeholders{{"PROJECT_DIR", TKL::Path(folder.path().string())},
                                    {"MATERIALS_DIR", TKL::Path(folder.path().string())}};
  TKL::MessageCapture capture;
  VelMaterials materials;
  std::map<std::string, std::string> newNames;
};

}  // namespace

TEST(VelMaterials, blocks_becomeEntriesInOrder) {
  const TKL::MessageCapture capture;
  const VelMaterials list = read(
      "[MATERIAL]\nNAME = Wall\nFILENAME = $(MATERIALS_DIR)/Brick_1.m6\nMATERIAL\nFILE = "
      "a.m6\n[MATERIAL]\nb.m6\n");
  ASSERT_EQ(list.materials.size(), 3U);
  EXPECT_EQ(list.materials[0].name, "Wall");
  EXPECT_EQ(list.materials[0].filename.str(), "$(MATERIALS_DIR)/Brick_1.m6");
  EXPECT_EQ(list.materials[1].filename.str(), "a.m6");
  EXPECT_EQ(list.materials[2].filename.str(), "b.m6");
  EXPECT_FALSE(list.materials[0].hasData);
  EXPECT_TRUE(capture.has("Reading embedded materials and material references\n", TKL::MSG_STANDARD,
                          "[VelMaterials::read]", 2));
  EXPECT_EQ(capture.indentation, 0);
}

TEST(VelMaterials, comments_areCutAnywhere) {
  const TKL::MessageCapture capture;
  const VelMaterials list = read("; first\n[MATERIAL] ; the wall\nNAME = a;b\nFILE = x.m6\n  ;\n");
  ASSERT_EQ(list.materials.size(), 1U);
  EXPECT_EQ(list.materials[0].name, "a");
}

TEST(VelMaterials, secondRead_replacesTheList) {
  const TKL::MessageCapture capture;
  VelMaterials list = read("[MATERIAL]\na.m6\n[MATERIAL]\nb.m6\n");
  list.read(SectionText("[MATERIAL]\nc.m6\n"));
  EXPECT_EQ(list.materials.size(), 1U);
}

TEST(VelMaterials, emptySection_hasNoEntries) {
  const TKL::MessageCapture capture;
  EXPECT_TRUE(read("; nothing\n").materials.empty());
}

TEST(VelMaterials, dataBeforeTheFirstBlock_areRefused) {
  EXPECT_TRUE(has(failure("NAME = a\n[MATERIAL]\n"),
                  "Expected [MATERIAL] section header while reading material data block from string:\n"
                  "NAME = a\n[MATERIAL]\n\n",
                  "[VelMaterials::read]"));
}

TEST(VelMaterials, badBlock_isCountedFrom1) {
  const TKL::Exception ex = failure("[MATERIAL]\na.m6\n[MATERIAL]\nNAME = b\n", 10);
  EXPECT_TRUE(has(ex, "A material needs a file name or data of its own.", "[MaterialDescription::read]"));
  EXPECT_TRUE(has(ex, "Error reading entry 2!", "[read_range]"));
  EXPECT_TRUE(has(ex, "Error reading material data section:\n[MATERIAL]\na.m6\n[MATERIAL]\nNAME = b\n",
                  "[VelMaterials::read]"));
  EXPECT_EQ(ex.inputLine(), 13);
}

TEST(VelMaterials, entryWithoutValue_isRefused) {
  EXPECT_TRUE(has(failure("[MATERIAL]\nFILENAME =\n"), "Missing value for keyword 'FILENAME'!",
                  "[MaterialDescription::read]"));
}

TEST(VelMaterials, baseParametersAlone_areAMaterial) {
  const TKL::MessageCapture capture;
  const VelMaterials list =
      read("[MATERIAL]\nNAME = Wall: A\nRHO = 2000 kg/m3\nCE = 1000 J/kgK\nLAMBDA = 1.5 W/mK\n");
  ASSERT_EQ(list.materials.size(), 1U);
  const MaterialDescription& entry = list.materials[0];
  EXPECT_TRUE(entry.hasData);
  EXPECT_EQ(entry.idName(), "Wall: A");
  EXPECT_EQ(entry.material.name(), "Wall: A");
  EXPECT_DOUBLE_EQ(entry.material.rhoCDry(), 2e6);
  EXPECT_DOUBLE_EQ(entry.material.conductivity(0, 300, 0), 1.5);
}

TEST(VelMaterials, embeddedSections_areReadWithModelBlocks) {
  const TKL::MessageCapture capture;
  const VelMaterials list = read(
      "[MATERIAL]\nRHO = 2000 kg/m3\n[IDENTIFICATION]\nNAME = en:Brick\n[STORAGE_BASE_PARAMETERS]\nCE = 1000 "
      "J/kgK\n[HEAT_TRANSPORT]\nFUNCTION = lambda(T)\n273 300\n1.5 2\n[MOISTURE_STORAGE]\n[MODEL]\nTYPE = "
      "GAUSS\n");
  const MaterialDescription& entry = list.materials.at(0);
  EXPECT_EQ(entry.idName(), "Brick");
  EXPECT_DOUBLE_EQ(entry.material.rhoCDry(), 2e6);
  EXPECT_EQ(entry.material.thermalTransport[0].functions[1].size(), 2U);
  EXPECT_EQ(entry.material.moistureStorage.models.count("GAUSS"), 1U);
}

TEST(VelMaterials, embeddedSectionsOfTheOlderGeneration_areRead) {
  const TKL::MessageCapture capture;
  const VelMaterials list = read(
      "[MATERIAL]\nNAME = A\nCE = 900 J/kgK\n[IDENTIFICATION]\nFLAGS = AIRTIGHT\n[GENERAL]\nRHO = 1000 "
      "kg/m3\n"
      "[MATERIAL]\nCE = 800 J/kgK\n[PARAMETER]\nRHO = 1000 kg/m3\n");
  EXPECT_DOUBLE_EQ(list.materials.at(0).material.rhoCDry(), 9e5);
  EXPECT_EQ(list.materials.at(0).material.name(), "A");
  EXPECT_TRUE(list.materials.at(0).material.isAirTight());
  EXPECT_DOUBLE_EQ(list.materials.at(1).material.rhoCDry(), 8e5);
}

TEST(VelMaterials, unknownKeywordsOfEmbeddedData_areNotedOnceWithTheirLine) {
  const TKL::MessageCapture capture;
  unknownKeywords() = UnknownKeywords{};
  read("[MATERIAL]\nNAME = a\nRHO = 1 kg/m3\n[HEAT_TRANSPORT]\nFUNCTION = lamda(T)\n273 300\n1 2\n", 11);
  EXPECT_EQ(unknownKeywords().count, 1);
  EXPECT_EQ(unknownKeywords().firstKeyword, "lamda(T)");
  EXPECT_EQ(unknownKeywords().firstLine, 15);
  read("[MATERIAL]\nRHOO = 1 kg/m3\n[TRANSPORT_BASE_PARAMETERS]\nLAMDA = 1 W/mK\n");
  EXPECT_EQ(unknownKeywords().count, 3);
  unknownKeywords() = UnknownKeywords{};
  read("[MATERIAL]\nRHOO = 1 kg/m3\nCE = 1 J/kgK\n");
  EXPECT_EQ(unknownKeywords().count, 1);
  EXPECT_EQ(unknownKeywords().firstLine, 2);
  unknownKeywords() = UnknownKeywords{};
}

TEST(VelMaterials, idName_isNameElseMaterialNameElseFileStem) {
  MaterialDescription entry;
  EXPECT_EQ(entry.idName(), "");
  entry.filename = TKL::Path("x/Brick_12.m6");
  EXPECT_EQ(entry.idName(), "Brick_12");
  entry.material.identification.name.setString("Brick", "en");
  EXPECT_EQ(entry.idName(), "Brick");
  entry.name = "Wall";
  EXPECT_EQ(entry.idName(), "Wall");
}

TEST(VelMaterials, find_looksForIdNamesBeforeFileNames) {
  VelMaterials list;
  list.materials.resize(3);
  list.materials[0].filename = TKL::Path("Brick_12.m6");
  list.materials[0].name = "Wall";
  list.materials[1].name = "Brick_12";
  list.materials[2].filename = TKL::Path("Clay_13.m6");
  list.materials[2].name = "Inside";
  EXPECT_EQ(list.find("Brick_12"), &list.materials[1]);
  EXPECT_EQ(list.find("Brick_12.m6"), &list.materials[0]);
  EXPECT_EQ(list.find("Clay_13"), &list.materials[2]);
  EXPECT_EQ(list.find("Inside"), &list.materials[2]);
  EXPECT_EQ(list.find("Foo"), nullptr);
}

TEST_F(VelMaterialsFiles, existingFile_isRead) {
  write("Sheet_3.m6");
  readFiles("[MATERIAL]\nFILENAME = $(MATERIALS_DIR)/Sheet_3.m6\n[MATERIAL]\nRHO = 1 kg/m3\n");
  EXPECT_TRUE(materials.materials[0].hasData);
  EXPECT_EQ(materials.materials[0].idName(), "Zinc sheet");
  EXPECT_DOUBLE_EQ(materials.materials[0].material.conductivity(0, 300, 0), 110.0);
  EXPECT_TRUE(capture.has("Reading referenced material files\n", TKL::MSG_STANDARD, EXTERNAL_TAG, 2));
  EXPECT_TRUE(capture.has("Reading material file '$(MATERIALS_DIR)/Sheet_3.m6'\n", TKL::MSG_STANDARD,
                          EXTERNAL_TAG, 2));
  EXPECT_TRUE(newNames.empty());
  EXPECT_EQ(capture.indentation, 0);
}

TEST_F(VelMaterialsFiles, relativePath_beginsAtTheProject) {
  write("Sheet_3.m6");
  readFiles("[MATERIAL]\nSheet_3.m6\n");
  EXPECT_TRUE(materials.materials[0].hasData);
}

TEST_F(VelMaterialsFiles, existingOldFile_isReadAsItStandsWithAWarning) {
  const TKL::Path path = write("Zinc.mat");
  readFiles("[MATERIAL]\nZinc.mat\n");
  EXPECT_TRUE(materials.materials[0].hasData);
  EXPECT_EQ(materials.materials[0].material.filename, path);
  EXPECT_TRUE(capture.has("A newer material file 'Zinc_280.m6' that replaces '" + path.str() +
                              "' is available. Since the old file still exists, the solver will use the old "
                              "file.\n",
                          TKL::MSG_WARNING, EXTERNAL_TAG, 2));
  EXPECT_TRUE(newNames.empty());
}

TEST_F(VelMaterialsFiles, missingOldFile_isReplacedFromTheDatabase) {
  write("Zinc_280.m6");
  readFiles("[MATERIAL]\nold/ZINC.MAT\n");
  EXPECT_EQ(materials.materials[0].material.filename, inFolder("Zinc_280.m6"));
  EXPECT_EQ(newNames,
            (std::map<std::string, std::string>{{"ZINC", "Zinc sheet"}, {"ZINC.mat", "Zinc sheet"}}));
}

TEST_F(VelMaterialsFiles, namedEntry_keepsItsNameWhenReplaced) {
  write("Zinc_280.m6");
  readFiles("[MATERIAL]\nNAME = Roof\nFILE = Zinc.mat\n");
  EXPECT_EQ(materials.materials[0].idName(), "Roof");
  EXPECT_TRUE(newNames.empty());
}

TEST_F(VelMaterialsFiles, missingSuccessor_isAnError) {
  const std::string successor = inFolder("Zinc_280.m6").str();
  try {
    readFiles("[MATERIAL]\nZinc.mat\n");
    FAIL() << "read a file that is not there";
  } catch (const TKL::Exception& ex) {
    EXPECT_TRUE(has(ex, "Error reading material file 'Zinc.mat' (-> '" + successor + "')", EXTERNAL_TAG));
    EXPECT_TRUE(has(ex, "Cannot open file: '" + successor + "'", "[Material::read]"));
  }
}

TEST_F(VelMaterialsFiles, missingOldFile_isReplacedByTheCurrentOneBeside) {
  write("Brick.m6");
  readFiles("[MATERIAL]\nBrick.mat\n");
  EXPECT_TRUE(materials.materials[0].hasData);
  EXPECT_EQ(materials.materials[0].material.filename, inFolder("Brick.m6"));
  EXPECT_FALSE(capture.contains("Cannot find material file"));
  EXPECT_FALSE(capture.contains("newer material file"));
}

TEST_F(VelMaterialsFiles, rowWithoutSuccessor_isNoReplacement) {
  write("Brick Joens.m6");
  readFiles("[MATERIAL]\nBrick Joens.mat\n");
  EXPECT_EQ(materials.materials[0].material.filename, inFolder("Brick Joens.m6"));
}

TEST_F(VelMaterialsFiles, missingFile_leavesTheEntryWithoutData) {
  readFiles("[MATERIAL]\nBrick.mat\n");
  EXPECT_FALSE(materials.materials[0].hasData);
  EXPECT_TRUE(capture.has(
      "Cannot find material file '" + inFolder("Brick.mat").str() + "' and cannot find name substition.",
      TKL::MSG_WARNING, EXTERNAL_TAG, 1));
}

TEST_F(VelMaterialsFiles, defectiveFile_isAnError) {
  const TKL::Path path = write("Bad_3.m6", "V6MARLZ! 006.000\nfoo\n");
  try {
    readFiles("[MATERIAL]\n$(MATERIALS_DIR)/Bad_3.m6\n");
    FAIL() << "read a defective file";
  } catch (const TKL::Exception& ex) {
    EXPECT_TRUE(has(ex, "Error reading material file '$(MATERIALS_DIR)/Bad_3.m6' (-> '" + path.str() + "')",
                    EXTERNAL_TAG));
  }
}

TEST_F(VelMaterialsFiles, unknownKeywordsOfAFile_closeWithOneWarning) {
  const TKL::Path path = write("Zinc_1.m6", FILE_TEXT + "THETA_EF = 0.02 m3/m3\n[HEAT_TRANSPORT]\nFOO = 1\n");
  readFiles("[MATERIAL]\nFILENAME = " + path.str() + "\n");
  const std::string text = "2 unknown or deprecated keyword(s) in material file '" + path.str() +
                           "'. The first one is 'THETA_EF'. Verbosity -v3 lists them all.";
  EXPECT_TRUE(capture.has(text, TKL::MSG_WARNING, EXTERNAL_TAG, -1));
  EXPECT_EQ(capture.count(text), 1);
}

TEST_F(VelMaterialsFiles, fileWithoutUnknownKeywords_givesNoClosingWarning) {
  readFiles("[MATERIAL]\nFILENAME = " + write("Zinc_1.m6").str() + "\n");
  EXPECT_FALSE(capture.contains("unknown or deprecated"));
}

TEST_F(VelMaterialsFiles, libraryFailure_isAWarningAndTheLoopGoesOn) {
  write("A_1.m6");
  write("B_2.m6");
  const auto reader = [](MM::Material& material, const TKL::Path& path) {
    if (path.filename() == "A_1.m6") throw std::runtime_error("no memory");
    material.read(path);
  };
  readFiles("[MATERIAL]\nA_1.m6\n[MATERIAL]\nB_2.m6\n", reader);
  EXPECT_FALSE(materials.materials[0].hasData);
  EXPECT_TRUE(materials.materials[1].hasData);
  EXPECT_TRUE(capture.has("Cannot find material file '" + inFolder("A_1.m6").str() +
                              "' and cannot find name substition.\nno memory",
                          TKL::MSG_WARNING, EXTERNAL_TAG, 1));
}

TEST_F(VelMaterialsFiles, unknownPlaceholder_isAnError) {
  EXPECT_THROW(readFiles("[MATERIAL]\n$(FOO_DIR)/a.m6\n"), TKL::Exception);
}

TEST(MaterialNames, tables_haveTheirLength) {
  EXPECT_EQ(materialSuccessors().size(), 69U);
  EXPECT_EQ(materialSuccessorsExtended().size(), 275U);
}

TEST(MaterialNames, successors_areFoundByTheOldName) {
  EXPECT_EQ(substituteMaterialName("x/AAC Haniel - Xella.mat"), "AutoclavedAeratedConcrete_1.m6");
  EXPECT_EQ(substituteMaterialNameExtended("x/Adhesive Covering Plaster.mat"),
            "AdhesiveCoveringPlaster_2.m6");
  EXPECT_EQ(substituteMaterialName("x/Air Layer 3 mm (closed) - vertical.mat"), "AirGapVertical03mm_13.m6");
  EXPECT_EQ(substituteMaterialNameExtended("x/Aerated Concrete_1.mat"), "AeratedConcrete_4.m6");
  EXPECT_EQ(substituteMaterialName("x/Wood fibre insulation board.mat"), "WoodFibreInsulationBoard_270.m6");
  EXPECT_EQ(substituteMaterialName("x/WoodCementBoard.mat"), "WoodCementBoard_279.m6");
  EXPECT_EQ(substituteMaterialNameExtended("x/Zinc.mat"), "Zinc_280.m6");
}

TEST(MaterialNames, shorterTable_holdsNamesThatTheLongerOneLacks) {
  EXPECT_EQ(substituteMaterialNameExtended("x/Air Layer 3 mm (closed) - vertical.mat"), "");
  EXPECT_EQ(substituteMaterialName("x/Zinc.mat"), "");
}

TEST(MaterialNames, case_doesNotMatter) {
  EXPECT_EQ(substituteMaterialNameExtended("X/ZINC.MAT"), "Zinc_280.m6");
}

TEST(MaterialNames, oldName_isFoundAnywhereInThePath) {
  EXPECT_EQ(substituteMaterialNameExtended("/a/Zinc.mat.d/x.mat"), "Zinc_280.m6");
  EXPECT_EQ(substituteMaterialNameExtended("/a/MyZinc.mat"), "Zinc_280.m6");
}

TEST(MaterialNames, unknownName_hasNoSuccessor) {
  EXPECT_EQ(substituteMaterialName("x/Foo.mat"), "");
  EXPECT_EQ(substituteMaterialNameExtended(""), "");
}

TEST(MaterialNames, rowsThatAreContainedInLaterOnes_shadowThem) {
  const auto shadowed = [](std::span<const MaterialSuccessor> table) {
    long count = 0;
    for (std::size_t later = 0; later < table.size(); ++later) {
      bool hit = false;
      for (std::size_t first = 0; first < later && !hit; ++first)
        hit = TKL::string_nocase_find(table[later].oldName, table[first].oldName) >= 0;
      count += hit;
    }
    return count;
  };
  EXPECT_EQ(shadowed(materialSuccessors()), 2);
  EXPECT_EQ(shadowed(materialSuccessorsExtended()), 23);
}

}  // namespace VELMORA
