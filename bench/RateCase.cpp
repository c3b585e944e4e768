#include "bench/RateCase.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numbers>
#include <stdexcept>

#include "foundation/PhysicalConstants.h"

namespace VELMORA_BENCH {

namespace {

constexpr std::size_t NUM_STATES = 16;    // before they come again
constexpr double SPRING = 100 * 86400.0;  // [s] of the year
constexpr double INTERVAL = 600.0;        // [s] between two evaluations
constexpr double OUTSIDE = 268.15;        // [K] at the left surface
constexpr double ROOM = 291.15;           // [K] at the right surface
constexpr double SWING_T = 0.2;           // [K]
constexpr double SWING_WATER = 0.005;     // of the water content
constexpr double POLLUTANT = 1e-6;        // [kg/m3] in gas and solid, swinging likewise

std::string climate(const std::string& name, const std::string& type, const std::string& file) {
  return "[CLIMATE_COND]\nNAME = " + name + "\nTYPE = " + type +
         "\nKIND = DATLINEAR\nFILENAME = " + database() + "/DB_climate_data/germany_" + file + ".ccd\n";
}

std::string constant(const std::string& name, const std::string& type, const std::string& value) {
  return "[CLIMATE_COND]\nNAME = " + name + "\nTYPE = " + type + "\nKIND = CONSTANT\nCONSTVALUE = " + value +
         "\n";
}

std::string boundary(const std::string& name, const std::string& type, const std::string& kind,
                     const std::string& lines) {
  return "[BOUND_COND]\nNAME = " + name + "\nTYPE = " + type + "\nKIND = " + kind + "\n" + lines;
}

std::string selection(const std::string& type, const std::string& box, const std::string& name,
                      const std::string& location) {
  return "[SELECTION]\nTYPE = " + type + "\nRANGE = " + box + "\nNAME = " + name +
         "\nLOCATION = " + location + "\n";
}

std::string range(int left, int top, int right, int bottom) {
  char text[80];
  std::snprintf(text, sizeof text, "%d %d %d %d", left, top, right, bottom);
  return text;
}

/// Widths that grow from both ends to the middle [mm].
std::string steps(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    const int fromEnd = std::min(i, count - 1 - i);
    char width[24];
    std::snprintf(width, sizeof width, "%.4g ", std::fmin(std::pow(1.3, fromEnd), 10.0));
    text += width;
  }
  return text + "mm\n";
}

constexpr const char* MATERIALS[] = {"Brick_2001", "MineralWool_2004", "LimePlaster_2003", "Concrete_2002"};

/// The text of a shipped material, which lets air through in any case.
std::string airyMaterial(const std::string& name) {
  std::ifstream file(database() + "/DB_material_data/" + name + ".m6", std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const std::string section = "[TRANSPORT_BASE_PARAMETERS]\n", tight = "\nFLAGS = AIR_TIGHT\n";
  const std::size_t place = text.find(section);
  if (place == std::string::npos) throw std::runtime_error("No transport parameters of " + name);
  if (text.find("\nKG = ") == std::string::npos) text.insert(place + section.size(), "KG = 1e-6 s\n");
  if (const std::size_t flag = text.find(tight); flag != std::string::npos)
    text.erase(flag, tight.size() - 1);
  return text;
}

std::string materials() {
  std::string text = "[MATERIALS]\n";
  for (const std::string name : MATERIALS)
    text += "[MATERIAL]\nNAME = " + name + "\nFILENAME = $(PROJECT_DIR)/" + name + ".m6\n";
  return text;
}

std::string climates() {
  return "[WALLS]\n[WALL_DATA]\nNAME = West\nORIENTATION = 270 Deg\nINCLINATION = 90 Deg\nLATITUDE = 51 Deg\n"
         "LONGITUDE = 10 Deg\nTIMEZONE = 1 h\n[CLIMATE_CONDITIONS]\n" +
         climate("Out T", "TEMPER", "temperature") + climate("Out RH", "RELHUM", "relative_humidity") +
         climate("Rain", "HORRAIN", "rain") + climate("Wind", "WINDVEL", "wind_velocity") +
         climate("Wind direction", "WINDDIR", "wind_direction") +
         climate("Direct", "DIRRAD", "direct_radiation") + climate("Diffuse", "DIFRAD", "diffuse_radiation") +
         climate("Sky", "SKYEMISS", "sky_radiation") + constant("In T", "TEMPER", "20 C") +
         constant("In RH", "RELHUM", "50 %") + constant("Out p", "GASPRESS", "101325 Pa") +
         constant("In p", "GASPRESS", "101328 Pa") + constant("Clean", "VOCDENSG", "0 kg/m3");
}

/// A boundary condition and the surface where it acts.
struct Surface {
  std::string equation;  ///< which needs it
  std::string name;
  std::string type;
  std::string kind;
  std::string lines;
  bool outside;
};

const std::vector<Surface>& surfaces() {
  static const std::vector<Surface> ALL{
      {"ENERGY", "Outside heat", "HEATCOND", "EXCHANGE_VEL",
       "EXCOEFF = 4 W/m2K\nEXCH_SLOPE = 4 J/m3K\nTEMPER = Out T\nWINDVEL = Wind\n", true},
      {"ENERGY", "Sun", "SHWRAD", "SUNRADM",
       "SURABSOR = 0.5 -\nGRDREFLE = 0.2 -\nWALLDATA = West\nDIRRAD = Direct\nDIFRAD = Diffuse\n", true},
      {"ENERGY", "Long wave", "LOWRAD", "LRADCOMP", "SUREMISS = 0.9 -\nWALLDATA = West\nSKYEMISS = Sky\n",
       true},
      {"ENERGY", "Inside heat", "HEATCOND", "EXCHANGE", "EXCOEFF = 8 W/m2K\nTEMPER = In T\n", false},
      {"MOISTURE", "Outside vapour", "VAPDIFF", "EXCHANGE_VEL",
       "EXCOEFF = 2.8e-8 s/m\nEXCH_SLOPE = 2.8e-8 s2/m2\nTEMPER = Out T\nRELHUM = Out RH\nWINDVEL = Wind\n",
       true},
      {"MOISTURE", "Driving rain", "RAIN", "STDRAIN",
       "EXPCOEFF = 0.7 -\nMINRTEMP = 0 C\nMINRFLUX = 0 l/m2s\nWALLDATA = West\nTEMPER = Out T\nRELHUM = Out "
       "RH\n"
       "HORRAIN = Rain\nWINDVEL = Wind\nWINDDIR = Wind direction\n",
       true},
      {"MOISTURE", "Inside vapour", "VAPDIFF", "EXCHANGE",
       "EXCOEFF = 2.5e-8 s/m\nTEMPER = In T\nRELHUM = In RH\n", false},
      {"AIR", "Outside air", "AIRPRESS", "EXCHANGE",
       "EXCOEFF = 1 s/m\nTEMPER = Out T\nRELHUM = Out RH\nGASPRESS = Out p\nVOCDENSG = Clean\n", true},
      {"AIR", "Inside air", "AIRPRESS", "EXCHANGE",
       "EXCOEFF = 1 s/m\nTEMPER = In T\nRELHUM = In RH\nGASPRESS = In p\nVOCDENSG = Clean\n", false},
      {"POLLUTANT", "Outside pollutant", "VOCDIFF", "EXCHANGE", "EXCOEFF = 0.01 m/s\nVOCDENSG = Clean\n",
       true},
      {"POLLUTANT", "Inside pollutant", "VOCDIFF", "EXCHANGE", "EXCOEFF = 0.001 m/s\nVOCDENSG = Clean\n",
       false},
  };
  return ALL;
}

}  // namespace

std::string database() {
  return VELMORA_SOURCE_DIR "/database";
}

void writeMaterials(const Folder& folder) {
  for (const std::string name : MATERIALS) folder.write(name + ".m6", airyMaterial(name));
}

Folder::Folder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "velmora_bench_XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("No folder " + pattern);
  path_ = pattern;
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string Folder::write(const std::string& name, const std::string& text) const {
  const std::string file = path_ + "/" + name;
  std::ofstream(file, std::ios::binary) << text;
  return file;
}

std::string RateBody::text() const {
  const int right = nColumns - 1, bottom = nRows - 1, wool = nColumns / 3, plaster = nColumns * 9 / 10;
  std::string conditions = "[BOUNDARY_CONDITIONS]\n";
  std::string places =
      selection("MATERIAL", range(0, 0, wool - 1, bottom), "Brick_2001", "ELEMENT") +
      selection("MATERIAL", range(wool, 0, plaster - 1, bottom), "MineralWool_2004", "ELEMENT") +
      selection("MATERIAL", range(plaster, 0, right, bottom), "LimePlaster_2003", "ELEMENT") +
      selection("INITIALCOND", range(0, 0, right, bottom), "Start T", "ELEMENT") +
      selection("INITIALCOND", range(0, 0, wool - 1, bottom), "Wet", "ELEMENT") +
      selection("INITIALCOND", range(wool, 0, right, bottom), "Damp", "ELEMENT");
  if (nRows > 1)
    places += selection("MATERIAL", range(wool, nRows / 3, right, nRows * 2 / 3), "Concrete_2002", "ELEMENT");
  for (const Surface& surface : surfaces()) {
    if (balances.find(surface.equation) == std::string::npos) continue;
    conditions += boundary(surface.name, surface.type, surface.kind, surface.lines);
    places +=
        selection("BOUNDARYCOND", surface.outside ? range(0, 0, 0, bottom) : range(right, 0, right, bottom),
                  surface.name, surface.outside ? "LEFT" : "RIGHT");
  }
  return "[PROJECT_INFO]\nFILE_VERSION = 5.9\n[INIT]\n[GENERAL]\nBALANCE_EQUATIONS = " + balances +
         "\nDURATION = 365 d\nVOC_DATABASE = $(VOC_DIR)/common.voc\nVOC_IDS = TVOC\n" + materials() +
         "[CONDITIONS]\n" + climates() + conditions +
         "[INITIAL_CONDITIONS]\n[INIT_COND]\nNAME = Start T\nTYPE = TEMPER\nVALUE = 10 C\n"
         "[INIT_COND]\nNAME = Wet\nTYPE = RELHUM\nVALUE = 98 %\n[INIT_COND]\nNAME = Damp\nTYPE = RELHUM\n"
         "VALUE = 80 %\n[DISCRETISATION]\nGEOMETRY = PLANE2D\nX_STEPS = " +
         steps(nColumns) + "Y_STEPS = " + (nRows > 1 ? steps(nRows) : "1 m\n") +
         "Z_STEPS = 1 m\n[ASSIGNMENTS]\n" + places;
}

RateCase::RateCase(const std::string& projectText) {
  writeMaterials(folder_);
  const std::string directories = "[DIRECTORIES]\nMATERIALS = " + database() +
                                  "/DB_material_data\nCLIMATE = " + database() +
                                  "/DB_climate_data\nVOC = " + database() + "/DB_VOC_data\n";
  std::string error;
  if (project_.read(TKL::Path(folder_.write("body.vel", directories + projectText)), error) != 0)
    throw std::runtime_error("Project cannot be read: " + error);
  if (!solver_.init(project_)) throw std::runtime_error("Solver cannot be initialised");
  solver_.initStep();
  makeStates();
}

/// Temperatures from frost at the left to the room at the right, swinging around them like the water around
/// its start.
void RateCase::makeStates() {
  const auto& start = solver_.state();
  const bool energy = project_.m_init.balanceEquations[VELMORA::VelInit::B_ENERGY];
  const bool moisture = project_.m_init.balanceEquations[VELMORA::VelInit::B_MOISTURE];
  const bool pollutant = project_.m_init.balanceEquations[VELMORA::VelInit::B_POLLUTANT];
  int nColumns = 0;
  for (const VELMORA::Element& element : solver_.data().elements)
    nColumns = std::max(nColumns, element.i + 1);
  states_.resize(NUM_STATES);
  for (std::size_t k = 0; k < NUM_STATES; ++k) {
    for (const VELMORA::Element& element : solver_.data().elements) {
      const auto e = static_cast<std::size_t>(element.number);
      const double phase =
          2.0 * std::numbers::pi * static_cast<double>(k) / NUM_STATES + 0.7 * element.i + 0.3 * element.j;
      const double T = OUTSIDE + (ROOM - OUTSIDE) * (element.i + 0.5) / nColumns + SWING_T * std::sin(phase);
      const double mw = moisture ? start.mw[e] * (1.0 + SWING_WATER * std::cos(phase)) : 0.0;
      if (energy) states_[k].push_back((start.rhoCDry[e] + TKL::C_W * mw) * T);
      if (moisture) states_[k].push_back(mw);
      if (pollutant)
        states_[k].insert(states_[k].end(), 2, POLLUTANT * (1.0 + SWING_WATER * std::cos(phase)));
    }
  }
  rates_.resize(states_.front().size());
}

void RateCase::evaluate() {
  const double t = SPRING + INTERVAL * static_cast<double>(count_);
  if (solver_.calculate(t, states_[count_ % NUM_STATES].data(), rates_.data()) != 0)
    throw std::runtime_error("No rates");
  ++count_;
}

}  // namespace VELMORA_BENCH
