#include "keywords/KeywordTables.h"

namespace VELMORA {

namespace {

constexpr KeywordRow VEL_CONTACT_COND_CONDITION[] = {
    {"AIR_MAT_HEATCOND", "Heat conduction at air-material interface"},
    {"AIR_MAT_VAPDIFF", "Vapor diffusion at air-material interface"},
    {"FOIL", "Vapor retarder (no liquid flux, no air flow, constant vapor diffusion barrier)"},
    {"FOIL_ADAPTIVE",
     "Vapor retarder (no liquid flux, no air flow, moisture-dependent vapor diffusion barrier)"},
    {"ADDITIONAL_RESISTANCE", "Additional resistances between material layers"},
};

constexpr KeywordRow VEL_CONTACT_COND_KIND[] = {
    {"EXCHANGE", "Exchange coefficient"},
    {"EXCHANGE_VEL", "Boundary layer (variable air velocity)"},
    {"DIRECTION_DEPENDENT", "Resistance depending on flow direction."},
    {"DIRECTION_INDEPENDENT", "Resistance independent on flow direction."},
};

constexpr KeywordRow VEL_CONTACT_COND_PARA[] = {
    {"HEATCONDRES", "Heat conduction resistance"},
    {"VAPDIFFRES", "Vapor diffusion resistance"},
    {"WATCONDRES", "Water conduction resistance"},
    {"AIRCONVRES", "Air convection resistance"},
    {"SALDIFFRES", "Salt diffusion resistance"},
    {"EXCOEFF", "Exchange coefficient for still air"},
    {"EXCH_SLOPE", "Slope coefficient for moving air"},
    {"EXCH_EXP", "Exponent for moving air"},
    {"WEIGHT_FACTOR_POS", "Weighting factor for adaptive vapor retarder model positive direction"},
    {"WEIGHT_FACTOR_NEG", "Weighting factor for adaptive vapor retarder model negative direction"},
    {"SCALING_A_POS",
     "Parameter a for square scaling function for adaptive vapor retarder model positive direction"},
    {"SCALING_B_POS",
     "Parameter b for square scaling function for adaptive vapor retarder model positive direction"},
    {"SCALING_C_POS",
     "Parameter c for square scaling function for adaptive vapor retarder model positive direction"},
    {"SCALING_A_NEG",
     "Parameter a for square scaling function for adaptive vapor retarder model negative direction"},
    {"SCALING_B_NEG",
     "Parameter b for square scaling function for adaptive vapor retarder model negative direction"},
    {"SCALING_C_NEG",
     "Parameter c for square scaling function for adaptive vapor retarder model negative direction"},
};

constexpr KeywordRow VEL_CONTACT_COND_FUNCTION[] = {
    {"sd+(rh)", "Relative humidity dependent sd-value (bidirectional/positive flow direction)"},
    {"sd-(rh)", "Relative humidity dependent sd-value (negative flow direction)"},
};

constexpr KeywordRow VEL_DISC_GEOMETRY[] = {
    {"PLANE2D", "2D construction"},
    {"RSYM", "3D construction (rotation symmetric)"},
};

constexpr KeywordRow VEL_FIELD_COND_CONDITION[] = {
    {"WATSOURCE", "Simple water source"},
    {"VOCSOURCE", "Simple pollutant source to the gas phase"},
    {"ENESOURCE", "Simple energy source"},
    {"LW_RADIATION", "Long wave radiation exchange in a gap"},
    {"REMWATSOUR", "Remote water source"},
    {"REMWATSINK", "Remote water sink"},
    {"REMENESOUR", "Remote energy source"},
    {"REMENESINK", "Remote energy sink"},
    {"PCMENESOUR", "PCM energy source"},
    {"PCMENESINK", "PCM energy sink"},
    {"AIRCHANGE", "Air change rate"},
    {"WATERFLOW", "Thermal effecs of water flow layer"},
    {"VOCADSORPTION", "Adsorption exchange (overide)"},
    {"VOCCHEMISORPTION", "Sink term (if negative) for VOC component in solid phase"},
    {"GAS_CONVECTION", "Changed thermal conductivity due to gas convection in a gap"},
    {"CONVECTIVE_SOURCE", "Moisture source due to air flow through leakages WTA 6.2"},
    {"AMBIENTRADIATION",
     "Longwave radiation exchange with the surrounding (e.g. interior radiation exchange)"},
    {"AIRFLOW", "Air flow in one direction through the material."},
    {"MEDIAFLOW", "Flow of a fluid given by material selection in one direction through the construction."},
};

constexpr KeywordRow VEL_FIELD_COND_PARA[] = {
    {"WATTRANSFCOEFF", "Remote water mass transfer coefficient"},
    {"ENETRANSFCOEFF", "Remote energy transfer coefficient"},
    {"PCM_MELT_TEMP", "Mean phase transition temperature of PCM"},
    {"PCM_DEL_TEMP", "Temperature range of phase transition of PCM"},
    {"FLUID_CAPACITY", "Volumetric heat capacity of fluid to transfer heat"},
    {"LIM_SATDEGREE", "Limitation parameter for remote water mass transfer"},
    {"LIM_SNK_TEMPERATURE", "Limitation sink temperature"},
    {"WATTRANS_EXPONENT", "Remote water mass transfer exponent"},
    {"LEFT_EMISS_COEFF", "Left emission coefficient"},
    {"RIGHT_EMISS_COEFF", "Right emission coefficient"},
    {"TOP_EMISS_COEFF", "Top emission coefficient"},
    {"BOTTOM_EMISS_COEFF", "Bottom emission coefficient"},
    {"GAS2SOLID_TRANSFER_COEFF", "Mass transfer coefficient for adsorption flux from gas to solid phase"},
    {"CHEMISORPTION_CONST", "Chemi-sorption reaction constant"},
    {"GC_GASTYPE", "Gas type for gap convection"},
    {"GC_GASPROPORTION", "Proportion of filling gas for gap convection"},
    {"GC_INCLINATION", "Inclination of gap for gap convection"},
    {"MAX_WATCONT", "Maximum water content for water source"},
    {"MIN_WATCONT", "Minimum water content for water source"},
    {"FLOW_DIRECTION", "Direction of flow (0-left, 1-right, 2-top, 3-bottom)"},
};

constexpr KeywordRow VEL_FIELD_COND_FLAG[] = {
    {"USE_FLOWRATE", "Use air flow rate"},
    {"LW_RADIATION_X", "Radiation in x-direction"},
    {"LW_RADIATION_Y", "Radiation in y-direction"},
    {"CONVECTION_X", "Convection in x-direction"},
};

constexpr KeywordCategory FIELD_CATEGORIES[] = {
    {"VelContactCond::condition_t", Descriptions::SENTENCES, VEL_CONTACT_COND_CONDITION},
    {"VelContactCond::kind_t", Descriptions::SENTENCES, VEL_CONTACT_COND_KIND},
    {"VelContactCond::para_t", Descriptions::SENTENCES, VEL_CONTACT_COND_PARA},
    {"VelContactCond::function_t", Descriptions::SENTENCES, VEL_CONTACT_COND_FUNCTION},
    {"VelDisc::geometry_t", Descriptions::SENTENCES, VEL_DISC_GEOMETRY},
    {"VelFieldCond::condition_t", Descriptions::SENTENCES, VEL_FIELD_COND_CONDITION},
    {"VelFieldCond::para_t", Descriptions::SENTENCES, VEL_FIELD_COND_PARA},
    {"VelFieldCond::flag_t", Descriptions::SENTENCES, VEL_FIELD_COND_FLAG},
};

}  // namespace

std::span<const KeywordCategory> fieldCategories() {
  return FIELD_CATEGORIES;
}

}  // namespace VELMORA
