#include <filesystem>

#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

struct Shipped {
  const char* file;
  const char* english;
  const char* german;
  std::uint32_t id;
  double rho;
  double c;
  double lambda;
  double mew;
};

// Density, heat capacity, conductivity and vapour resistance (0: none) of the sources that the files name.
const Shipped SHIPPED[] = {
    {"Brick_2001.m6", "Brick masonry 1800 kg/m3", "Ziegelmauerwerk 1800 kg/m3", 2001, 1800, 1000, 0.81, 10},
    {"Concrete_2002.m6", "Concrete 2200 kg/m3", "Beton 2200 kg/m3", 2002, 2200, 1000, 1.65, 120},
    {"LimePlaster_2003.m6", "Lime plaster", "Kalkputz", 2003, 1600, 1000, 0.8, 10},
    {"MineralWool_2004.m6", "Mineral wool", "Mineralwolle", 2004, 50, 1030, 0.04, 1},
    {"ExpandedPolystyrene_2005.m6", "Expanded polystyrene (EPS)", "Expandiertes Polystyrol (EPS)", 2005, 20,
     1450, 0.04, 60},
    {"Spruce_2006.m6", "Spruce", "Fichte", 2006, 450, 1600, 0.12, 50},
    {"GypsumBoard_2007.m6", "Gypsum board", "Gipskartonplatte", 2007, 900, 1000, 0.25, 10},
    {"StillAir_2008.m6", "Still air", "Ruhende Luft", 2008, 1.23, 1008, 0.025, 1},
    {"Steel_2009.m6", "Steel", "Stahl", 2009, 7800, 450, 50, 1e6},
    {"CementScreed_2010.m6", "Cement screed", "Zementestrich", 2010, 2000, 1000, 1.4, 35},
    {"PvcFloorCovering_2011.m6", "PVC floor covering", "PVC-Bodenbelag", 2011, 1700, 1400, 0.25, 10000},
    {"EN15026_3001.m6", "EN 15026 benchmark material", "Material des Benchmarks EN 15026", 3001, 2280, 800,
     1.5, 200},
    {"HamstadDrying_3002.m6", "HAMSTAD benchmark 2 material", "Material des HAMSTAD-Benchmarks 2", 3002, 525,
     800, 0.15, 0},
    {"HamstadLoadBearing_3003.m6", "HAMSTAD benchmark 4 load bearing material",
     "Tragendes Material des HAMSTAD-Benchmarks 4", 3003, 2005, 840, 0.5, 30},
    {"HamstadFinishing_3004.m6", "HAMSTAD benchmark 4 finishing material",
     "Deckschicht des HAMSTAD-Benchmarks 4", 3004, 790, 870, 0.2, 3},
    {"HamstadBrick_3005.m6", "HAMSTAD benchmark 5 brick", "Ziegel des HAMSTAD-Benchmarks 5", 3005, 1600, 1000,
     0.682, 7.5},
    {"HamstadMortar_3006.m6", "HAMSTAD benchmark 5 adhesive mortar", "Klebemörtel des HAMSTAD-Benchmarks 5",
     3006, 230, 920, 0.6, 50},
    {"HamstadInsulation_3007.m6", "HAMSTAD benchmark 5 capillary active insulation",
     "Kapillaraktive Dämmung des HAMSTAD-Benchmarks 5", 3007, 212, 1000, 0.06, 5.6},
};

TKL::Path database() {
  return TKL::Path(VELMORA_SOURCE_DIR) / TKL::Path("database/DB_material_data");
}

}  // namespace

TEST(MaterialDatabase, shippedFiles_giveTheValuesOfTheirStandards) {
  for (const Shipped& shipped : SHIPPED) {
    const TKL::MessageCapture capture;
    Material material;
    material.read(database() / TKL::Path(shipped.file));
    EXPECT_EQ(material.name(), shipped.english);
    EXPECT_EQ(material.identification.name.string("de"), shipped.german);
    EXPECT_EQ(material.id, shipped.id);
    EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_RHO].value, shipped.rho) << shipped.file;
    EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_CE].value, shipped.c) << shipped.file;
    EXPECT_DOUBLE_EQ(material.conductivity(0.0, 293.15, 0.0), shipped.lambda) << shipped.file;
    EXPECT_DOUBLE_EQ(material.paraTransport[Material::PT_MEW].value, shipped.mew) << shipped.file;
    EXPECT_TRUE(material.can(Material::TC_HEAT)) << shipped.file;
  }
}

TEST(MaterialDatabase, everyFile_isReadWithoutWarning) {
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(database().str())) {
    if (entry.path().extension() != ".m6") continue;
    ++files;
    const TKL::MessageCapture capture;
    Material material;
    material.read(TKL::Path(entry.path().string()));
    for (const auto& message : capture.messages)
      EXPECT_NE(message.type, TKL::MSG_WARNING) << entry.path() << ": " << message.text;
    EXPECT_FALSE(material.identification.name.string("de").empty()) << entry.path();
    const bool moist = material.moistureStorage.kind != MoistureStorage::K_NONE;
    EXPECT_EQ(material.identification.laboratory.string("en").empty(), !moist) << entry.path();
    EXPECT_GT(material.rhoCDry(), 0.0) << entry.path();
    EXPECT_NE(material.id, 0U) << entry.path();
  }
  EXPECT_EQ(files, std::size(SHIPPED));
}

}  // namespace MM
