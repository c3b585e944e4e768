#include "solver/MonitorFile.h"

#include <cerrno>
#include <ctime>
#include <iomanip>
#include <sstream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double SMALL_STEP = 1e-5;  // [s] shown in scientific notation below

std::string stepSizeText(double h) {
  std::ostringstream out;
  if (h < SMALL_STEP)
    out << std::scientific << std::setprecision(8) << h;
  else
    out << std::fixed << std::setprecision(6) << h;
  return out.str();
}

}  // namespace

void MonitorFile::open(const TKL::Path& projectFile, bool restart, bool withAir) {
  const char* const FUNC_ID = "[MonitorFile::open]";
  withAir_ = withAir;
  path_ = projectFile.str() + ".cvode_monitors";
  errno = 0;
  file_.open(path_, restart ? std::ios::app : std::ios::trunc);
  check("create", FUNC_ID);
  if (restart)
    file_ << std::endl;
  else
    writeHeader(projectFile.filename(), withAir);
  check("write", FUNC_ID);
}

/// Fails if the last calls have failed.
void MonitorFile::check(const char* action, const char* functionId) const {
  if (file_) return;
  const std::string reason = errno != 0 ? " " + TKL::systemErrorText(errno) : "";
  throw TKL::Exception(
      TKL::FormatString("Cannot %1 monitor file '%2'.").arg(action).arg(path_).str() + reason, functionId);
}

void MonitorFile::writeHeader(const std::string& projectFileName, bool withAir) {
  const std::time_t now = std::time(nullptr);
  file_ << "CVODE monitor variables, starting solver at: " << std::ctime(&now)
        << "Project: " << projectFileName << "\n\n"
        << std::left << std::setw(7) << "Steps" << ' ' << std::setw(25) << "             Time" << ' '
        << std::setw(8) << "RhsEvals" << ' ' << std::setw(8) << "JacEvals" << ' ' << std::setw(8) << "NNiters"
        << ' ' << std::setw(8) << "NNfails" << ' ' << std::setw(9) << "NErrfails" << ' ' << std::setw(5)
        << "Order" << ' ' << std::setw(12) << "StepSize" << ' ' << std::setw(10) << "RelTol";
  if (withAir) file_ << ' ' << std::setw(7) << "PressFieldUpdates";
  file_ << std::endl;
}

void MonitorFile::write(const IntegratorStatistics& s, double relTol, int pressureUpdates) {
  const char* const FUNC_ID = "[MonitorFile::write]";
  if (!isOpen() || s.steps == 0) return;
  errno = 0;
  std::ostringstream time;
  time << std::fixed << std::setprecision(10) << s.time;
  std::ostringstream tolerance;
  tolerance << std::scientific << relTol;
  file_ << std::left << std::setw(7) << s.steps << ' ' << std::setw(25) << time.str() << ' ' << std::setw(8)
        << s.rhsEvaluations << ' ' << std::setw(8) << s.jacobianEvaluations << ' ' << std::setw(8)
        << s.nonlinearIterations << ' ' << std::setw(8) << s.nonlinearFailures << ' ' << std::setw(9)
        << s.errorTestFailures << ' ' << std::setw(5) << s.order << ' ' << std::setw(12)
        << stepSizeText(s.stepSize) << ' ' << std::setw(10) << tolerance.str();
  if (withAir_) file_ << ' ' << std::setw(7) << pressureUpdates;
  file_ << std::endl;
  check("write", FUNC_ID);
}

void MonitorFile::close() {
  const char* const FUNC_ID = "[MonitorFile::close]";
  if (!isOpen()) return;
  errno = 0;
  file_.close();
  check("close", FUNC_ID);
}

}  // namespace VELMORA_SOLVER
