#include "project/VelMaterialsNames.h"

#include <array>

namespace VELMORA {

namespace {

// A row without a new name has no successor in the database yet. It keeps its place: the first row that fits
// decides, and some names are contained in others.
constexpr std::array<MaterialSuccessor, 69> ROWS = {{
    {"AAC Haniel - Xella.mat", "AutoclavedAeratedConcrete_1.m6"},
    {"Autoclaved Aerated Concrete.mat", ""},
    {"Adhesive Covering Plaster.mat", "AdhesiveCoveringPlaster_2.m6"},
    {"Air Layer 3 mm (closed) - vertical.mat", "AirGapVertical03mm_13.m6"},
    {"Air Layer 5 mm (closed) - vertical.mat", ""},
    {"Air Layer 10 mm (closed) - vertical.mat", ""},
    {"Air Layer 25 mm (closed) - vertical.mat", ""},
    {"Air Layer 40 mm (closed) - vertical.mat", ""},
    {"Air Layer 50 mm (closed) - vertical.mat", ""},
    {"Bitumen.mat", ""},
    {"Brick Bernhard.mat", ""},
    {"Brick Joens.mat", ""},
    {"Calciumsilicate.mat", ""},
    {"Cellulose_Insulation.mat", ""},
    {"Clay Tu2_PV 0_439.mat", ""},
    {"Concrete_C20_25.mat", ""},
    {"Floating Floor Screed.mat", ""},
    {"Foamglas.mat", ""},
    {"MULTIPOR adhesive.mat", ""},
    {"Gypsum Board.mat", ""},
    {"Haacke_Cellco_KAPI.mat", ""},
    {"Haniel Fermacell (Fa. Xella International).mat", ""},
    {"Historical Brick Cluster (edge).mat", ""},
    {"Historical Brick Cluster 4-DD.mat", ""},
    {"Historical Brick Cluster.mat", ""},
    {"Historical clay mortar.mat", ""},
    {"Insulation plaster.mat", ""},
    {"Insulation-Clay-Cork-FW.mat", ""},
    {"Climate Plaster (Fa. Hufgard Tubag).mat", ""},
    {"Climate plaster.mat", ""},
    {"LightClayMortar.mat", ""},
    {"Lime-cement mortar.mat", ""},
    {"Lime Cement Plaster (Transputz SG).mat", ""},
    {"Lime Plaster (hist.).mat", ""},
    {"Lime plaster for fettling machine.mat", ""},
    {"Lime plaster for fine surface coating.mat", ""},
    {"Lime sand brick industrial.mat", ""},
    {"Lime sand brick traditional.mat", ""},
    {"Limesandstone.mat", ""},
    {"Lime Trass Light Mortar.mat", ""},
    {"Loam LMH (Hist.).mat", ""},
    {"Minerally insulation board.mat", ""},
    {"Mineralic insulation plaster.mat", ""},
    {"Mineral Wool.mat", ""},
    {"OSB Board.mat", ""},
    {"Particle board.mat", ""},
    {"PE-Foil.mat", ""},
    {"PSFoam-expanded.mat", ""},
    {"PSFoam-extruded.mat", ""},
    {"PU-Foam.mat", ""},
    {"Restoration Render.mat", ""},
    {"Roofing membrane.mat", ""},
    {"Sand mS_PV 0_413.mat", ""},
    {"Sandstone (Cotta).mat", ""},
    {"Sandstone (Posta).mat", ""},
    {"Sandstone (Reinhardsdorf).mat", ""},
    {"Silt Ut4_PV 0_38.mat", ""},
    {"Silt Ut4_PV 0_468.mat", ""},
    {"Spruce SW_Fi across grain.mat", ""},
    {"Steel.mat", ""},
    {"Surface coating plaster.mat", ""},
    {"Trass-Mineral Insulation Plaster.mat", ""},
    {"Vapour Retarder (open).mat", ""},
    {"Weathered granite.mat", ""},
    {"Wienerberger Normal Brick.mat", ""},
    {"Wood fibre insulation board.mat", "WoodFibreInsulationBoard_270.m6"},
    {"Wood Fibreboard.mat", ""},
    {"Wood wool cement board.mat", ""},
    {"WoodCementBoard.mat", "WoodCementBoard_279.m6"},
}};

}  // namespace

std::span<const MaterialSuccessor> materialSuccessors() {
  return ROWS;
}

}  // namespace VELMORA
