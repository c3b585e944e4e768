#include "project/VelMaterialsNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <vector>

namespace VELMORA {

namespace {

/// The old names in the order in which a path is tested for them, without their extension.
const std::string SHORTER_LIST =
    "AAC Haniel - Xella;Autoclaved Aerated Concrete;Adhesive Covering Plaster;"
    "Air Layer 3 mm (closed) - vertical;Air Layer 5 mm (closed) - vertical;"
    "Air Layer 10 mm (closed) - vertical;Air Layer 25 mm (closed) - vertical;"
    "Air Layer 40 mm (closed) - vertical;Air Layer 50 mm (closed) - vertical;Bitumen;Brick Bernhard;"
    "Brick Joens;Calciumsilicate;Cellulose_Insulation;Clay Tu2_PV 0_439;Concrete_C20_25;"
    "Floating Floor Screed;Foamglas;MULTIPOR adhesive;Gypsum Board;Haacke_Cellco_KAPI;"
    "Haniel Fermacell (Fa. Xella International);Historical Brick Cluster (edge);"
    "Historical Brick Cluster 4-DD;Historical Brick Cluster;Historical clay mortar;Insulation plaster;"
    "Insulation-Clay-Cork-FW;Climate Plaster (Fa. Hufgard Tubag);Climate plaster;LightClayMortar;"
    "Lime-cement mortar;Lime Cement Plaster (Transputz SG);Lime Plaster (hist.);"
    "Lime plaster for fettling machine;Lime plaster for fine surface coating;"
    "Lime sand brick industrial;Lime sand brick traditional;Limesandstone;Lime Trass Light Mortar;"
    "Loam LMH (Hist.);Minerally insulation board;Mineralic insulation plaster;Mineral Wool;OSB Board;"
    "Particle board;PE-Foil;PSFoam-expanded;PSFoam-extruded;PU-Foam;Restoration Render;"
    "Roofing membrane;Sand mS_PV 0_413;Sandstone (Cotta);Sandstone (Posta);Sandstone (Reinhardsdorf);"
    "Silt Ut4_PV 0_38;Silt Ut4_PV 0_468;Spruce SW_Fi across grain;Steel;Surface coating plaster;"
    "Trass-Mineral Insulation Plaster;Vapour Retarder (open);Weathered granite;"
    "Wienerberger Normal Brick;Wood fibre insulation board;Wood Fibreboard;Wood wool cement board;"
    "WoodCementBoard";

const std::string LONGER_LIST =
    "AAC Haniel - Xella;Adhesive Covering Plaster;Aerated Concrete;Aerated Concrete_1;"
    "Aerated Concrete_2;Aerated Concrete_3;Aerated Concrete_4;Aerated Concrete_5;"
    "Air gap (horizontal) 05 mm;Air gap (horizontal) 10 mm;Air gap (horizontal) 25 mm;"
    "Air gap (horizontal) 50 mm;Air gap (vertical) 03mm;Air gap (vertical) 05mm;"
    "Air gap (vertical) 10mm;Air gap (vertical) 25mm;Air gap (vertical) 40 mm;Air gap (vertical) 50 mm;"
    "Aluminium Foil;Anhydrite Flowing Screed;Asbestos Cement Board;Asbestos Cement Board_1;Asphalt;"
    "Bitumen Roof Sheeting;Bitumen Roof Sheeting_1;Bitumen;Bitumen_d5;Blast-furnace Slag Concrete;"
    "Blast-furnace Slag Concrete_1;Blast-furnace Slag Concrete_2;Blast-furnace Slag Concrete_3;"
    "Brick Bernhard;Brick Joens;Build-in Insulation Plaster;Calcium Silicate Board;"
    "Calcium Silicate Board_1;Calcium Silicate Board_2;Calcium Silicate Board_3;"
    "Calcium Silicate Board_4;Calcium Silicate Board_5;Calcium Silicate Board_Epatherm;"
    "Calsitherm_Kp_Kleber_Schomburg;Cellular Glass;Cellulose_Insulation;Cement Flooring;Cement Plaster;"
    "Cement Plaster_1;Ceramics And Glass Mosaic;Clay Mortar (hist.);Clay Plaster;Clay Tu2_PV 0_439;"
    "Clincker Brick;Concrete;Concrete_1;Concrete_2;Concrete_3;Concrete_C20_25;Coniferous Wood;Copper;"
    "Cork Board;Cork;Cork_1;Diatomite Brick;Dichtspachtel_Remmers;Fliesenkleber_FKA_Remmers_Baustoffe;"
    "Fliesenkleber_FKB_Remmers_Baustoffe;Floating Floor Screed;Foamglas;Gipsputz_MAXIT_MX_GP_GS;Glass;"
    "Glue Mortar (Climate Board);Glue Mortar (For Climate Board);Glue Mortar (For Climate Board)_2;"
    "Glue Mortar (For Mineral Insulation Board);Glue Mortar;Granite;Gypsum Board;Gypsum Board_1;"
    "Gypsum Board_d5;Gypsum Plaster;Gypsum Plaster_2;Gypsum Plaster_3;Gypsum Plaster_4;"
    "HaackeCellco_MatC;HaackeCellco_MatE;Haacke_Cellco_KAPI;Haacke_Cellco_KAPII;Haacke_Cellco_KAPI_1;"
    "Haniel Fermacell (Fa. Xella International);Hard-burnt Brick;Hard-grey-burnt Brick;"
    "Hard-grey-burnt Brick_1;Hardwood;Historical Brick Cluster (edge);Historical Brick Cluster 4-DD;"
    "Historical Brick Cluster;Historical Brick;Historical Brick_1;Historical Brick_2;"
    "Historical Brick_3;Historical clay mortar;Historical Clincker-Surface;Historical Clincker;"
    "Historical Clincker_1;Innenputz_Klimasan_KSPe;Insulating Clay;Insulating Clay_1;Insulating Clay_3;"
    "Insulating Clay_5;Insulating Clay_6;Insulation Concrete;Insulation Loam (Corc);Insulation Plaster;"
    "Insulation Plaster_1;Insulation plaster_d5;Insulation Stone;Insulation-Clay-Cork-FW;IQfill;"
    "IQtherm;IQtop;Klebemoertel_leicht_Schommburg;Klimaputz_Maschinenputz_Tubag;Klimaputz_MKK_Quickmix;"
    "Lean Concrete;Lean Concrete_1;Light-weight Wood Wool Magnesite Board;LightClayMortar;"
    "Lightweight Concrete;Lightweight Concrete_1;Lightweight Concrete_2;Lightweight Concrete_3;"
    "Lightweight Concrete_4;Lightweight Concrete_5;Lightweight Concrete_6;Lightweight Concrete_7;"
    "Lightweight-clay_mortar;Lightweight-clay_mortar_1;Lime Cement Mortar;Lime Cement Mortar_1;"
    "Lime Cement Mortar_2;Lime Cement Plaster (lightweight);Lime Cement Plaster (Transputz SG);"
    "Lime Cement Plaster;Lime Cement Plaster_1;Lime Plaster (hist.);Lime plaster for fettling machine;"
    "Lime plaster for fine surface coating;Lime Plaster;Lime sand brick industrial;"
    "Lime sand brick traditional;Lime Trass Light Plaster;Linoleum;Loam LMH (Hist.);Marble;"
    "Maxit_Leichtbeton915FB_G_LB15;Maxit_Porengrundputz_MXGP;Maxit_Sanierspritzbewurf_MXSV;"
    "Medium Density Fibreboard;Medium Density Fibreboard_2;Mineral Insulation Board_3;"
    "Mineral Insulation Board_Dennert;Mineral Insulation Board_Dennert_1;"
    "Mineral Insulation Board_Dennert_2;Mineral Insulation Board_Dennert_3;Mineral insulation plaster;"
    "Mineral Wool_d5;Mould Renovating Plaster;OSB Board_d5;Particle board;PE-Foil;"
    "Perlite bitumenummantelt;Perlite Clay Stone;Perlite Insulation Board;Perlite Insulation Board_1;"
    "Phenolic_resin_rigid_foam;Pine;Plump;Polyester Board;Polyethen;Polymethyl Acrylate;Polypropen;"
    "Polystyrene Board - Expanded;Polystyrene Board - Expanded_1;Polystyrene Board - Extruded;"
    "Polystyrene Board - Extruded_1;Polystyrene Foam Concrete;Polystyrene Foam Concrete_1;"
    "Polystyrene Foam Concrete_2;Polyurethane boards;Polyurethane boards_1;Polyurethane-foam;"
    "Pumice Concrete;Pumice Concrete_1;PVC Floor Covering;PVC Foam;PVC Foil;Quartz Glass;"
    "Rammed Insulating Clay;Rammed Insulating Clay_1;Red-burnt Brick;Red-burnt Brick_1;"
    "Red-burnt Brick_2;Reed Mat;Reed Mat_1;Reed Straw Chaffing Board;Renovating Plaster (lightweight);"
    "Restoration Render;Roofing membrane;Sand mS_PV 0_413;Sand-lime Brick Masonry;Sand-lime Brick;"
    "Sand-lime Brick_1;Sand-lime Brick_2;Sand-lime Brick_3;Sand-lime Brick_4;Sandstone (Cotta);"
    "Sandstone (Posta);Sandstone (Reinhardsdorf);Sandstone;Sandstone_1;Sandstone_10;Sandstone_3;"
    "Sandstone_4;Sandstone_7;Sandstone_9;Schimmelsanierputz_AISIT_Remmers_Baustoffe;"
    "Seccopor_Innenputz_ Keimfarben;Silt Ut4_PV 0_38;Silt Ut4_PV 0_468;Solid Brick;"
    "Spruce SW_Fi across grain;Spruce;Standard Building Brick_1;Steel;Straw Chaffing Board;Straw Clay;"
    "Sulfatex_Remmers;Surface coating plaster;Synthetic Resin Plaster_1;Teak;Tiles With Mortar;"
    "Tiles With Mortar_1;Timber Frame Mortar;TransputzSG_Hydroment_(Baustelle);"
    "Trass-lime Mineral Insulation Plaster;Trass-Mineral Insulation Plaster;"
    "TrassKalkFeinputz_Tubag_TKF;Trasskalk_MLP_Tubag_TKM;Triplex-Multiplex Board;Tuff Stone;"
    "Urea-formaldehyde Foam;Urea-formaldehyde Foam_1;Vapour Retarder (open);"
    "Vertically Perforated Brick;Vertically Perforated Brick_1;Vulcanized Rubber - Expanded;"
    "Vulcanized Rubber;Weathered granite;Wienerberger Normal Brick;Wood Cement Particle Board;"
    "Wood Fiber Insulation Board;Wood Fiber Insulation Board_2;Wood Fiber Insulation Board_Pavatex2;"
    "Wood Fiberboard;Wood fibre insulation board;Wood fibre insulation board_Pavatex1;Wood Fibreboard;"
    "Wood Particle Board;Wood Particle Board_1;Wood wool cement board;Wood Wool Light Building Board;"
    "Wood Wool Light Building Board_1;Wood Wool Light Building Board_2;WoodCementBoard;Zinc";

/// The names of a list, with their extension.
std::vector<std::string> namesOf(const std::string& list) {
  std::vector<std::string> names;
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(';', begin), list.size());
    names.push_back(list.substr(begin, end - begin) + ".mat");
    begin = end + 1;
  }
  return names;
}

std::vector<std::string> oldNamesOf(std::span<const MaterialSuccessor> table) {
  std::vector<std::string> names;
  for (const MaterialSuccessor& row : table) names.emplace_back(row.oldName);
  return names;
}

}  // namespace

TEST(OldMaterialNames, shorterTable_isCompleteAndInOrder) {
  EXPECT_EQ(oldNamesOf(materialSuccessors()), namesOf(SHORTER_LIST));
}

TEST(OldMaterialNames, longerTable_isCompleteAndInOrder) {
  EXPECT_EQ(oldNamesOf(materialSuccessorsExtended()), namesOf(LONGER_LIST));
}

TEST(OldMaterialNames, lists_haveTheirLength) {
  EXPECT_EQ(namesOf(SHORTER_LIST).size(), 69u);
  EXPECT_EQ(namesOf(LONGER_LIST).size(), 275u);
}

TEST(OldMaterialNames, namesOf_keepsOrderAndEnds) {
  EXPECT_EQ(namesOf("a;b"), (std::vector<std::string>{"a.mat", "b.mat"}));
}

}  // namespace VELMORA
