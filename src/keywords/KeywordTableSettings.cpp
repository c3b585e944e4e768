#include "keywords/KeywordTables.h"

namespace VELMORA {

namespace {

constexpr KeywordRow VEL_INIT_SECTIONS[] = {
    {"GENERAL"},
    {"SOLVER_SETTINGS"},
    {"SALT_SETTINGS"},
};

constexpr KeywordRow VEL_INIT_BALANCE_EQUATIONS[] = {
    {"ENERGY"}, {"MOISTURE"}, {"ICE"}, {"AIR"}, {"SALT"}, {"POLLUTANT"},
};

constexpr KeywordRow VEL_INIT_SOLVER_TYPE[] = {
    {"INTERNAL_CVODE_SOLVER", "CVODE based solver (internal)"},
    {"CVODE_SOLVER", "CVODE based solver (external)"},
    {"H_SOLVER", "Fast heat transfer solver (external)"},
};

constexpr KeywordRow VEL_INITIAL_COND_CONDITION[] = {
    {"TEMPER", "Temperature"},
    {"MSTCONT", "Volumetric liquid moisture content"},
    {"MSTMASS", "Total moisture mass density"},
    {"RELHUM", "Relative humidity"},
    {"CAPPRESS", "Capillary pressure"},
    {"GASPRESS", "Air (gas) pressure"},
    {"VOCMASS", "VOC mass density in the material (assumed to be in the solid phase)"},
    {"SOLMASS", "Solution mass density"},
    {"SOLCONT", "Volumetric solution content"},
    {"SALTMASS", "Salt mass density"},
};

constexpr KeywordCategory SETTINGS_CATEGORIES[] = {
    {"VelInit::sections_t", Descriptions::KEYWORDS, VEL_INIT_SECTIONS},
    {"VelInit::balance_equations_t", Descriptions::NONE, VEL_INIT_BALANCE_EQUATIONS},
    {"VelInit::solver_type_t", Descriptions::SENTENCES, VEL_INIT_SOLVER_TYPE},
    {"VelInitialCond::condition_t", Descriptions::SENTENCES, VEL_INITIAL_COND_CONDITION},
};

}  // namespace

std::span<const KeywordCategory> settingsCategories() {
  return SETTINGS_CATEGORIES;
}

}  // namespace VELMORA
