#include "keywords/KeywordTables.h"

namespace VELMORA {

namespace {

constexpr KeywordRow VEL_PROJECT_PROJECT_PARTS[] = {
    {"PROJECT_INFO"}, {"DIRECTORIES"},    {"INIT"},    {"MATERIALS"},
    {"CONDITIONS"},   {"DISCRETISATION"}, {"OUTPUTS"}, {"ASSIGNMENTS"},
};

constexpr KeywordRow VEL_PROJECT_DATA_DIRECTORIES[] = {
    {"MATERIALS", "Material database directory"},
    {"USER_MATERIALS", "User material database directory"},
    {"CLIMATE", "Climate data directory"},
    {"SALT", "Salt data directory"},
    {"VOC", "VOC data directory"},
    {"USER_CLIMATE", "User climate data directory"},
};

constexpr KeywordRow VEL_SELECTION_ASSIGNMENT[] = {
    {"MATERIAL", "Material"},
    {"BOUNDARYCOND", "Boundary condition"},
    {"INITIALCOND", "Initial condition"},
    {"FIELDCOND", "Field condition"},
    {"CONTACTCOND", "Contact condition"},
    {"FIELDOUTPUT  OUTPUT", "Field output"},
    {"FLUXOUTPUT   OUTPUT", "Flux output"},
    {"Interface", "Construction Interface/Surface"},
};

constexpr KeywordRow VEL_SELECTION_LOCATION[] = {
    {"ELEMENT"}, {"LEFT"}, {"RIGHT"}, {"TOP"}, {"BOTTOM"},
};

constexpr KeywordRow VEL_SOLUTION_DEFINITION_CONCENTRATION[] = {
    {"MASSFRAC", "Mass fraction of salt species mass over water mass"},
    {"MOLALITY", "Molality of the salt species"},
};

constexpr KeywordRow VEL_SOLVER_CVODE_SETTINGS_SOLVER_PARA[] = {
    {"INITIAL_DT", "Initial time step"},
    {"MAX_DT", "Maximum time step"},
    {"MIN_DT", "Lower time step limit"},
};

constexpr KeywordRow VEL_WALL_DATA_PARA[] = {
    {"ORIENTATION", "Orientation of the building element"},
    {"INCLINATION", "Inclination of the building element"},
    {"LATITUDE", "Latitude of the location"},
    {"WALLAREA", "Area of the building element"},
    {"LONGITUDE", "Longitude of location"},
    {"TIMEZONE", "time zone of location"},
};

constexpr KeywordCategory PROJECT_CATEGORIES[] = {
    {"VelProject::projectParts_t", Descriptions::NONE, VEL_PROJECT_PROJECT_PARTS},
    {"VelProject::data_directories_t", Descriptions::SENTENCES, VEL_PROJECT_DATA_DIRECTORIES},
    {"VelSelection::assignment_t", Descriptions::SENTENCES, VEL_SELECTION_ASSIGNMENT},
    {"VelSelection::location_t", Descriptions::KEYWORDS, VEL_SELECTION_LOCATION},
    {"VelSolutionDefinition::concentration_t", Descriptions::SENTENCES,
     VEL_SOLUTION_DEFINITION_CONCENTRATION},
    {"VelSolverCVODESettings::solver_para_t", Descriptions::SENTENCES, VEL_SOLVER_CVODE_SETTINGS_SOLVER_PARA},
    {"VelWallData::para_t", Descriptions::SENTENCES, VEL_WALL_DATA_PARA},
};

}  // namespace

std::span<const KeywordCategory> projectCategories() {
  return PROJECT_CATEGORIES;
}

}  // namespace VELMORA
