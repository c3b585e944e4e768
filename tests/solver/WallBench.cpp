#include "solver/WallBench.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <stdexcept>

namespace VELMORA_SOLVER {

namespace {

std::string widths(const std::vector<double>& values) {
  std::string text;
  for (const double value : values) text += number(value) + " ";
  return text + "m\n";
}

std::string block(const std::string& title, const std::string& name) {
  return "[" + title + "]\nNAME = " + name + "\n";
}

void readProject(VELMORA::VelProject& project, const TKL::Path& path) {
  std::string error;
  if (project.read(path, error) != 0) throw std::runtime_error("Project cannot be read: " + error);
}

const VELMORA::Element& elementAt(const VELMORA::CalculationData& data, int i, int j) {
  const auto found = std::find_if(data.elements.begin(), data.elements.end(),
                                  [=](const VELMORA::Element& e) { return e.i == i && e.j == j; });
  if (found == data.elements.end()) throw std::out_of_range("No such element");
  return *found;
}

std::size_t index(int n) {
  return static_cast<std::size_t>(n);
}

}  // namespace

std::string number(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

WallProblem::WallProblem(std::vector<double> dx, std::vector<double> dy)
    : dx_(std::move(dx)), dy_(std::move(dy)) {}

WallProblem::Range WallProblem::all() const {
  return {0, 0, static_cast<int>(dx_.size()) - 1, static_cast<int>(dy_.size()) - 1};
}

WallProblem::Range WallProblem::column(int i) const {
  Range range = all();
  if (i >= 0) range.right = i;
  range.left = range.right;
  return range;
}

WallProblem::Range WallProblem::row(int j) const {
  Range range = all();
  if (j >= 0) range.bottom = j;
  range.top = range.bottom;
  return range;
}

void WallProblem::material(const Range& range, const std::string& name, const Conduction& values) {
  constexpr double RHO = 1000.0;
  materials_ += block("MATERIAL", name) + "RHO = " + number(RHO) +
                " kg/m3\nCE = " + number(values.rhoC / RHO) + " J/kgK\nLAMBDA = " + number(values.lambda) +
                " W/mK\n";
  if (*values.flags != '\0')
    materials_ += std::string("[IDENTIFICATION]\nNAME = en:") + name + "\nFLAGS = " + values.flags + "\n";
  assign("MATERIAL", range, name, "ELEMENT");
}

void WallProblem::materialText(const Range& range, const std::string& name, const std::string& lines) {
  materials_ += block("MATERIAL", name) + lines;
  assign("MATERIAL", range, name, "ELEMENT");
}

void WallProblem::materialFile(const Range& range, const std::string& name, const std::string& path) {
  materialText(range, name, "FILENAME = " + path + "\n");
}

void WallProblem::hollow(const Range& range) {
  assign("MATERIAL", range, "VOID", "ELEMENT");
}

void WallProblem::initial(const Range& range, double celsius) {
  initial(range, "TEMPER", number(celsius) + " C");
}

void WallProblem::initial(const Range& range, const std::string& type, const std::string& value) {
  const std::string name = "Start " + std::to_string(++initialCount_);
  initials_ += block("INIT_COND", name) + "TYPE = " + type + "\nVALUE = " + value + "\n";
  assign("INITIALCOND", range, name, "ELEMENT");
}

void WallProblem::profile(const std::vector<double>& celsius) {
  for (std::size_t i = 0; i < celsius.size(); ++i) initial(column(static_cast<int>(i)), celsius[i]);
}

void WallProblem::constantClimate(const std::string& name, const std::string& type,
                                  const std::string& value) {
  climate(name, type, "KIND = CONSTANT\nCONSTVALUE = " + value + "\n");
}

void WallProblem::climate(const std::string& name, const std::string& type, const std::string& lines) {
  climates_ += block("CLIMATE_COND", name) + "TYPE = " + type + "\n" + lines;
}

void WallProblem::boundary(const std::string& name, const std::string& kind, const std::string& lines) {
  boundary("HEATCOND", name, kind, lines);
}

void WallProblem::boundary(const std::string& type, const std::string& name, const std::string& kind,
                           const std::string& lines) {
  boundaries_ += block("BOUND_COND", name) + "TYPE = " + type + "\nKIND = " + kind + "\n" + lines;
}

void WallProblem::contact(const std::string& name, const std::string& type, const std::string& lines) {
  contacts_ += block("CONTACT_COND", name) + "TYPE = " + type + "\n" + lines;
}

void WallProblem::field(const std::string& name, const std::string& type, const std::string& lines) {
  fields_ += block("FIELD_COND", name) + "TYPE = " + type + "\n" + lines;
}

void WallProblem::assign(const std::string& type, const Range& range, const std::string& name,
                         const std::string& location) {
  assignments_ += "[SELECTION]\nTYPE = " + type + "\nRANGE = " + std::to_string(range.left) + " " +
                  std::to_string(range.top) + " " + std::to_string(range.right) + " " +
                  std::to_string(range.bottom) + "\nNAME = " + name + "\nLOCATION = " + location + "\n";
}

void WallProblem::film(const std::string& name, double coefficient, double celsius, const Range& range,
                       const std::string& location) {
  constantClimate(name + " climate", "TEMPER", number(celsius) + " C");
  boundary(name, "EXCHANGE", "EXCOEFF = " + number(coefficient) + " W/m2K\nTEMPER = " + name + " climate\n");
  assign("BOUNDARYCOND", range, name, location);
}

void WallProblem::surface(const std::string& name, double celsius, const Range& range,
                          const std::string& location) {
  constantClimate(name + " climate", "TEMPER", number(celsius) + " C");
  boundary(name, "SURFVAL", "TEMPER = " + name + " climate\n");
  assign("BOUNDARYCOND", range, name, location);
}

std::string WallProblem::text() const {
  std::string text = "[PROJECT_INFO]\nFILE_VERSION = 5.9\n[INIT]\n[GENERAL]\nBALANCE_EQUATIONS = ";
  text += balances + "\n" + general + "DURATION = " + number(duration) +
          " s\n[SOLVER_SETTINGS]\n[CVODE_SOLVER_SETTINGS]\n";
  text += "MAX_DT = " + number(maxStep) + " s\nREL_TOL = " + number(relTol) + "\nABS_TOL_ENERGY = 1e-3\n" +
          settings;
  text += "[MATERIALS]\n" + materials_ + "[CONDITIONS]\n[CLIMATE_CONDITIONS]\n" + climates_;
  text += "[BOUNDARY_CONDITIONS]\n" + boundaries_ + "[INITIAL_CONDITIONS]\n" + initials_;
  text += "[CONTACT_CONDITIONS]\n" + contacts_ + "[FIELD_CONDITIONS]\n" + fields_;
  text += std::string("[DISCRETISATION]\nGEOMETRY = ") + (rotational ? "RSYM" : "PLANE2D") + "\n";
  text += "X_STEPS = " + widths(dx_) + "Y_STEPS = " + widths(dy_);
  return text + "[ASSIGNMENTS]\n" + assignments_;
}

ProjectFolder::ProjectFolder() {
  static int counter = 0;
  path_ = ::testing::TempDir() + "heat_" + std::to_string(::getpid()) + "_" + std::to_string(++counter);
  std::filesystem::create_directories(path_);
}

ProjectFolder::~ProjectFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

TKL::Path ProjectFolder::write(const std::string& text) const {
  std::ofstream(file("problem.vel"), std::ios::binary) << text;
  return TKL::Path(file("problem.vel"));
}

WallRun::WallRun(const std::string& projectText) {
  readProject(project, folder_.write(projectText));
  if (!solver.init(project)) {
    std::string reasons;
    for (const auto& message : capture.messages)
      if (message.type == TKL::MSG_ERROR) reasons += message.text + "\n";
    throw std::runtime_error("Solver cannot be initialised: " + reasons);
  }
}

void WallRun::advance(double time) {
  if (solver.t == 0.0) solver.initStep();
  if (time <= solver.t) throw std::logic_error("The integrator has passed this time: lower maxStep");
  solver.runStep(time, false);
}

void WallRun::runAll() {
  solver.run();
}

double WallRun::celsius(int i, int j) const {
  return solver.state().T[index(element(i, j).number)] - KELVIN;
}

double WallRun::celsiusAt(double x) const {
  return at(x, solver.state().T) - KELVIN;
}

double WallRun::at(double x, const std::vector<double>& quantity) const {
  const std::vector<double> centre = centres();
  std::vector<double> value;
  for (const VELMORA::Element& e : solver.data().elements)
    if (e.j == 0) value.push_back(quantity[index(e.number)]);
  const auto right =
      std::clamp(std::upper_bound(centre.begin(), centre.end(), x), centre.begin() + 1, centre.end() - 1);
  const auto k = static_cast<std::size_t>(right - centre.begin());
  return value[k - 1] + (value[k] - value[k - 1]) * (x - centre[k - 1]) / (centre[k] - centre[k - 1]);
}

std::vector<double> WallRun::rowCelsius(int j) const {
  std::vector<double> T;
  for (const VELMORA::Element& e : solver.data().elements)
    if (e.j == j) T.push_back(solver.state().T[index(e.number)] - KELVIN);
  return T;
}

std::vector<double> WallRun::centres() const {
  std::vector<double> x;
  for (const VELMORA::Element& e : solver.data().elements)
    if (e.j == 0) x.push_back(e.x);
  return x;
}

double WallRun::flow(const VELMORA::Side* side) const {
  if (side == nullptr) return 0.0;
  return solver.records().heatFlux[index(side->number)][VELMORA::HF_SUM];
}

double WallRun::flowLeft(int i, int j) const {
  return flow(element(i, j).sideLeft);
}
double WallRun::flowRight(int i, int j) const {
  return flow(element(i, j).sideRight);
}
double WallRun::flowTop(int i, int j) const {
  return flow(element(i, j).sideTop);
}
double WallRun::flowBottom(int i, int j) const {
  return flow(element(i, j).sideBottom);
}

double WallRun::energy() const {
  double sum = 0.0;
  for (const VELMORA::Element& e : solver.data().elements)
    sum += solver.state().U[index(e.number)] * e.volume;
  return sum;
}

double WallRun::water() const {
  double sum = 0.0;
  for (const VELMORA::Element& e : solver.data().elements)
    sum += solver.state().mw[index(e.number)] * e.volume;
  return sum;
}

const VELMORA::Element& WallRun::element(int i, int j) const {
  return elementAt(solver.data(), i, j);
}

WallRates::WallRates(const WallProblem& problem) {
  readProject(project_, folder_.write(problem.text()));
  project_.setup_calculation(data_);
  for (auto& condition : data_.climateConds)
    condition.prepareCalculation(project_.m_placeholders.placeholderMap());
  rhs_ = std::make_unique<RightHandSide>(data_, ModelSettings::of(project_.m_init, project_.m_disc));
  y_.resize(data_.elements.size());
  ydot_.resize(data_.elements.size());
}

void WallRates::evaluate(double time, double celsius) {
  for (std::size_t e = 0; e < y_.size(); ++e) y_[e] = rhs_->state.rhoCDry[e] * (celsius + KELVIN);
  if (rhs_->calculate(time, y_.data(), ydot_.data()) != 0) throw std::runtime_error("No derivatives");
}

const VELMORA::Element& WallRates::element(int i, int j) const {
  return elementAt(data_, i, j);
}

double WallRates::flow(const VELMORA::Side* side) const {
  return side == nullptr ? 0.0 : rhs_->records.heatFlux[index(side->number)][VELMORA::HF_SUM];
}

double WallRates::flowLeft(int i, int j) const {
  return flow(element(i, j).sideLeft);
}
double WallRates::flowRight(int i, int j) const {
  return flow(element(i, j).sideRight);
}
double WallRates::flowTop(int i, int j) const {
  return flow(element(i, j).sideTop);
}
double WallRates::rate(int i, int j) const {
  return ydot_[index(element(i, j).number)];
}

testing::AssertionResult agree(const std::vector<double>& actual, const std::vector<double>& expected,
                               double tolerance) {
  if (actual.size() != expected.size())
    return testing::AssertionFailure() << actual.size() << " values instead of " << expected.size();
  for (std::size_t i = 0; i < actual.size(); ++i)
    // negated, so that "not a number" fails
    if (!(std::fabs(actual[i] - expected[i]) <= tolerance))
      return testing::AssertionFailure() << "value " << i << ": " << actual[i] << " instead of "
                                         << expected[i] << ", tolerance " << tolerance;
  return testing::AssertionSuccess();
}

std::string shippedMaterial(const std::string& file) {
  return std::string(VELMORA_SOURCE_DIR) + "/database/DB_material_data/" + file;
}

std::vector<double> uniform(int n, double length) {
  return std::vector<double>(index(n), length / n);
}

std::vector<double> growing(double first, double ratio, double length) {
  std::vector<double> result;
  double width = first;
  double rest = length;
  for (; rest > width; width *= ratio) {
    result.push_back(width);
    rest -= width;
  }
  result.back() += rest;
  return result;
}

std::vector<double> reversed(std::vector<double> widthsOfCells) {
  std::reverse(widthsOfCells.begin(), widthsOfCells.end());
  return widthsOfCells;
}

std::vector<double> joined(std::vector<double> left, const std::vector<double>& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

std::vector<double> centresOf(const std::vector<double>& widthsOfCells) {
  std::vector<double> centres;
  double x = 0.0;
  for (const double width : widthsOfCells) {
    centres.push_back(x + width / 2.0);
    x += width;
  }
  return centres;
}

}  // namespace VELMORA_SOLVER
