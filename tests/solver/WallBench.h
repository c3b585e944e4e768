#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "foundation/Path.h"
#include "project/CalculationData.h"
#include "project/VelProject.h"
#include "solver/VelmoraCvodeSolver.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

constexpr double KELVIN = 273.15;  ///< [K] zero of the Celsius scale

/// A calculation as text of a project file, put together piece by piece; heat conduction alone to begin with.
/// Column 0 is at the left, row 0 at the top. Without a boundary condition a surface is sealed.
class WallProblem {
 public:
  /// Inclusive columns and rows.
  struct Range {
    int left, top, right, bottom;
  };
  struct Conduction {
    double lambda;           ///< [W/mK]
    double rhoC;             ///< [J/m3K]
    const char* flags = "";  ///< of the identification of the material
  };

  /// @param dx, dy widths of the columns and heights of the rows [m]
  explicit WallProblem(std::vector<double> dx, std::vector<double> dy = {1.0});

  Range all() const;
  Range column(int i) const;  ///< all rows of a column; -1 is the last one
  Range row(int j) const;     ///< all columns of a row; -1 is the last one

  void material(const Range& range, const std::string& name, const Conduction& values);
  /// A material of any text behind its name: base parameters, or sections of a material file.
  void materialText(const Range& range, const std::string& name, const std::string& lines);
  /// A material of a file.
  void materialFile(const Range& range, const std::string& name, const std::string& path);
  void hollow(const Range& range);                   ///< no material there
  void initial(const Range& range, double celsius);  ///< start temperature
  void profile(const std::vector<double>& celsius);  ///< start temperature of each column
  /// Any initial condition, such as RELHUM "50 %".
  void initial(const Range& range, const std::string& type, const std::string& value);
  void constantClimate(const std::string& name, const std::string& type, const std::string& value);
  void climate(const std::string& name, const std::string& type, const std::string& lines);
  /// A boundary condition of heat conduction, not assigned yet.
  void boundary(const std::string& name, const std::string& kind, const std::string& lines);
  /// A boundary condition of any type, not assigned yet.
  void boundary(const std::string& type, const std::string& name, const std::string& kind,
                const std::string& lines);
  void contact(const std::string& name, const std::string& type, const std::string& lines);
  /// A source of any type, not assigned yet.
  void field(const std::string& name, const std::string& type, const std::string& lines);
  void assign(const std::string& type, const Range& range, const std::string& name,
              const std::string& location);

  /// An exchange with a constant temperature over a film, assigned to an edge of a range.
  void film(const std::string& name, double coefficient, double celsius, const Range& range,
            const std::string& location);
  /// A given temperature at an edge of a range.
  void surface(const std::string& name, double celsius, const Range& range, const std::string& location);

  std::string text() const;

  bool rotational = false;   ///< columns are rings around the left edge
  double duration = 1e9;     ///< [s]
  double maxStep = 86400.0;  ///< [s]
  double relTol = 1e-8;
  std::string balances = "ENERGY";
  std::string general;   ///< more lines of the general settings
  std::string settings;  ///< more lines of the integrator's settings

 private:
  std::vector<double> dx_;
  std::vector<double> dy_;
  std::string materials_, climates_, boundaries_, contacts_, fields_, initials_, assignments_;
  int initialCount_ = 0;
};

/// The folder of one project file; it goes with all its files.
class ProjectFolder {
 public:
  ProjectFolder();
  ~ProjectFolder();
  ProjectFolder(const ProjectFolder&) = delete;
  ProjectFolder& operator=(const ProjectFolder&) = delete;

  /// Writes the text as project file and returns its path.
  TKL::Path write(const std::string& text) const;
  std::string file(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

/// Runs a problem in process, all messages kept.
class WallRun {
 public:
  explicit WallRun(const WallProblem& problem) : WallRun(problem.text()) {}
  /// Reads the text of a project file and prepares the run. Fluxes and temperatures are those of the start.
  explicit WallRun(const std::string& projectText);

  /// Brings temperatures and flows to this very time [s], which must lie behind the steps made so far.
  void advance(double time);
  /// From the start to the end of the simulated time, with all outputs.
  void runAll();

  double celsius(int i, int j = 0) const;
  double celsiusAt(double x) const;  ///< in row 0, linear between the centres of the columns
  std::vector<double> rowCelsius(int j = 0) const;
  std::vector<double> centres() const;        ///< x of the centres of row 0 [m], over used cells
  double flowLeft(int i, int j = 0) const;    ///< [W] through the left side of a cell, positive to the right
  double flowRight(int i, int j = 0) const;   ///< [W]
  double flowTop(int i, int j = 0) const;     ///< [W] positive downwards
  double flowBottom(int i, int j = 0) const;  ///< [W]
  double energy() const;                      ///< [J] internal energy of all elements
  double water() const;                       ///< [kg] moisture of all elements
  /// A quantity of the state at x [m] in row 0, linear between the centres of the columns.
  double at(double x, const std::vector<double>& quantity) const;

  const VELMORA::Element& element(int i, int j = 0) const;
  const ProjectFolder& folder() const { return folder_; }

  TKL::MessageCapture capture;
  VELMORA::VelProject project;
  VelmoraCvodeSolver solver;

 private:
  double flow(const VELMORA::Side* side) const;

  ProjectFolder folder_;
};

/// The right hand side alone, to be evaluated at any time and state.
class WallRates {
 public:
  explicit WallRates(const WallProblem& problem);

  /// Evaluates at this time [s], all elements at one temperature.
  void evaluate(double time, double celsius);
  double flowLeft(int i, int j = 0) const;   ///< [W], 0 for a side without a condition
  double flowRight(int i, int j = 0) const;  ///< [W]
  double flowTop(int i, int j = 0) const;    ///< [W]
  double rate(int i, int j = 0) const;       ///< [W/m3] growth of the energy density

 private:
  const VELMORA::Element& element(int i, int j) const;
  double flow(const VELMORA::Side* side) const;

  TKL::MessageCapture capture_;
  ProjectFolder folder_;
  VELMORA::VelProject project_;
  VELMORA::CalculationData data_;
  std::unique_ptr<RightHandSide> rhs_;
  std::vector<double> y_, ydot_;
};

/// Whether two lists have the same length and agree within `tolerance` everywhere.
testing::AssertionResult agree(const std::vector<double>& actual, const std::vector<double>& expected,
                               double tolerance);

/// A material that the program ships, by the name of its file.
std::string shippedMaterial(const std::string& file);

std::vector<double> uniform(int n, double length);
/// Widths from `first` on, each `ratio` times the one before, until `length` is filled; the last one takes
/// the rest.
std::vector<double> growing(double first, double ratio, double length);
std::vector<double> reversed(std::vector<double> widths);
std::vector<double> joined(std::vector<double> left, const std::vector<double>& right);
/// x of the centres of cells of these widths.
std::vector<double> centresOf(const std::vector<double>& widths);
std::string number(double value);  ///< with all its digits

}  // namespace VELMORA_SOLVER
