#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "material/Material.h"
#include "pollutant/PollutantLibrary.h"
#include "pollutant/PollutantSupport.h"
#include "support/MessageCapture.h"

namespace POLLUTANT_LIB {

namespace {

constexpr double BAR = 1e5;  ///< [Pa]

class ShippedDatabase : public ::testing::Test {
 protected:
  void SetUp() override {
    const TKL::MessageCapture capture;
    std::string errmsg;
    const TKL::Path file = TKL::Path(VELMORA_SOURCE_DIR) / "database/DB_VOC_data/common.voc";
    ASSERT_TRUE(library.readDatabase(file, errmsg)) << errmsg;
    EXPECT_TRUE(capture.messages.empty());
  }

  std::set<std::string> pairedMaterials() const {
    std::set<std::string> names;
    for (const VocMatData& pair : library.vocMatData) names.insert(pair.materialId);
    return names;
  }

  const VocData& compound(const std::string& id) const {
    return *std::find_if(library.vocData.begin(), library.vocData.end(),
                         [&](const VocData& each) { return each.id == id; });
  }

  PollutantLibrary library;
};

/// Density [kg/m3] of saturated vapour by lg(p/bar) = A - B / (T + C).
double antoineDensity(double A, double B, double C, double M, double T) {
  return std::pow(10.0, A - B / (T + C)) * BAR * M / (8.314472 * T);
}

/// Diffusion coefficient [m2/s] in air at normal pressure, after Fuller, Schettler and Giddings.
double fullerDiffusion(double volume, double M, double T) {
  const double roots = std::cbrt(volume) + std::cbrt(20.1);
  return 1e-7 * std::pow(T, 1.75) * std::sqrt(1.0 / (1000.0 * M) + 1.0 / 28.97) / (roots * roots);
}

std::vector<MM::Material> shippedPorousMaterials() {
  std::vector<MM::Material> materials;
  const std::string folder = VELMORA_SOURCE_DIR "/database/DB_material_data";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".m6") continue;
    const TKL::MessageCapture quiet;
    materials.emplace_back().read(TKL::Path(entry.path().string()));
    if (materials.back().paraStorage[MM::Material::PS_THETA_POR].value <= 0.0) materials.pop_back();
  }
  return materials;
}

}  // namespace

TEST_F(ShippedDatabase, holdsFormaldehydeTolueneAndTvoc) {
  ASSERT_EQ(library.vocData.size(), 3U);
  EXPECT_EQ(library.vocData[0].id, "formaldehyde");
  EXPECT_EQ(library.vocData[1].id, "toluene");
  EXPECT_EQ(library.vocData[2].id, "TVOC");
}

TEST_F(ShippedDatabase, molarMasses_areTheSumsOfTheAtoms) {
  const double C = 12.011, H = 1.008, O = 15.999;
  EXPECT_NEAR(compound("formaldehyde").M, (C + 2 * H + O) / 1000.0, 1e-6);
  EXPECT_NEAR(compound("toluene").M, (7 * C + 8 * H) / 1000.0, 5e-6);
}

TEST_F(ShippedDatabase, curves_followTheirFormulas) {
  const VocData& formaldehyde = compound("formaldehyde");
  const VocData& toluene = compound("toluene");
  ASSERT_EQ(formaldehyde.rhosat.size(), 10U);
  for (const double T : formaldehyde.rhosat.x) {
    EXPECT_NEAR(formaldehyde.rhosat(T) / antoineDensity(4.28176, 959.43, -29.758, formaldehyde.M, T), 1.0,
                1e-4);
    EXPECT_NEAR(formaldehyde.Dair(T) / fullerDiffusion(25.94, formaldehyde.M, T), 1.0, 1e-4);
    EXPECT_NEAR(toluene.rhosat(T) / antoineDensity(4.07827, 1343.943, -53.773, toluene.M, T), 1.0, 1e-4);
    EXPECT_NEAR(toluene.Dair(T) / fullerDiffusion(111.14, toluene.M, T), 1.0, 1e-4);
  }
}

TEST_F(ShippedDatabase, saturationPressuresAt25C_areThoseOfHandbooks) {
  const double T = 298.15, R = 8.314472;
  const VocData& formaldehyde = compound("formaldehyde");
  const VocData& toluene = compound("toluene");
  // CRC Handbook of Chemistry and Physics: 518 kPa and 3.79 kPa; the chords of the tables are a little high
  EXPECT_NEAR(formaldehyde.rhosat(T) * R / formaldehyde.M * T, 518e3, 0.03 * 518e3);
  EXPECT_NEAR(toluene.rhosat(T) * R / toluene.M * T, 3.79e3, 0.05 * 3.79e3);
}

TEST_F(ShippedDatabase, tvoc_isToluene) {
  const VocData& toluene = compound("toluene");
  const VocData& tvoc = compound("TVOC");
  EXPECT_EQ(tvoc.M, toluene.M);
  EXPECT_EQ(tvoc.rhosat.y, toluene.rhosat.y);
  EXPECT_EQ(tvoc.Dair.y, toluene.Dair.y);
}

TEST_F(ShippedDatabase, pairs_areThoseOfTheShippedBuildingMaterials) {
  std::set<std::string> expected;
  for (const MM::Material& material : shippedPorousMaterials())
    if (material.id < 3000) expected.insert(material.name());
  EXPECT_GE(expected.size(), 9U);
  EXPECT_EQ(pairedMaterials(), expected);
}

TEST_F(ShippedDatabase, everyPair_canBeChosen) {
  std::vector<std::string> names;
  std::vector<double> mu, porosity;
  for (const MM::Material& material : shippedPorousMaterials())
    if (pairedMaterials().count(material.name()) == 1) {
      names.push_back(material.name());
      mu.push_back(material.paraTransport[MM::Material::PT_MEW].value);
      porosity.push_back(material.paraStorage[MM::Material::PS_THETA_POR].value);
    }
  std::string errmsg;
  ASSERT_TRUE(library.init({"formaldehyde", "toluene", "TVOC"}, names, mu, porosity, errmsg)) << errmsg;
  EXPECT_EQ(library.vocMatData.size(), 3 * names.size());
}

TEST_F(ShippedDatabase, measuredPairs_giveTheMeasuredDiffusion) {
  struct Measured {
    const char* voc;
    const char* material;
    double mu, D, K;
  };
  const Measured measured[] = {{"toluene", "PVC floor covering", 10000.0, 6.9e-13, 980.0},
                               {"TVOC", "PVC floor covering", 10000.0, 4.5e-13, 3000.0},
                               {"TVOC", "Spruce", 50.0, 7.65e-11, 3289.0}};
  const double T = 296.15;
  for (const Measured& each : measured) {
    std::string errmsg;
    ASSERT_TRUE(library.init({each.voc}, {each.material}, {each.mu}, {0.5}, errmsg)) << errmsg;
    EXPECT_EQ(library.partC(0, 0), each.K);
    // permeability times R T is the diffusivity over the density in the pore gas
    EXPECT_NEAR(library.logKVOC(0, 0, T, 0.0) * library.Rv(0) * T / (each.D * each.K), 1.0, 0.03)
        << each.voc << " " << each.material;
  }
}

TEST(DocumentedDatabase, isRead) {
  std::ostringstream content;
  content << std::ifstream(VELMORA_SOURCE_DIR "/docs/formats.md").rdbuf();
  const std::string document = content.str();
  const std::string fence = "```\n";
  const std::size_t section = document.find("\n## Database of pollutants\n");
  ASSERT_NE(section, std::string::npos);
  const std::size_t begin = document.find(fence, section) + fence.size();
  PollutantLibrary library;
  EXPECT_EQ(readText(library, document.substr(begin, document.find(fence, begin) - begin)), "");
  std::string errmsg;
  EXPECT_TRUE(library.init({"toluene"}, {"Gypsum board"}, {10.0}, {0.61}, errmsg)) << errmsg;
  EXPECT_EQ(library.partC(0, 0), 30.0);
}

}  // namespace POLLUTANT_LIB
