#pragma once

#include <string>
#include <utility>
#include <vector>

namespace VELMORA_SOLVER {

/// What a feedback tells a program that drives the solver.
struct FeedbackRecord {
  int isOutput = 0;                 ///< 1 at an output time, 0 for a timed feedback
  double t = 0.0;                   ///< simulated time [s]
  double currentSpeed = 0.0;        ///< [s/s]
  double estimatedRemaining = 0.0;  ///< [s], -1 where unknown
};

/// Tells how far a run is: simulated time, date, real time used, speeds and the time left.
class Feedback {
 public:
  using callback_t = void (*)(const FeedbackRecord&);

  callback_t callback = nullptr;  ///< called at the end of each feedback
  bool quiet = false;             ///< no "*" at verbosity 0
  bool disableHeaders = false;    ///< no table headers
  int verbosity = 1;
  std::string projectFileName;   ///< shown between the lines of the table
  double startTimeOffset = 0.0;  ///< start of the simulation in its year [s]
  double feedbackStart = 0.0;    ///< simulated time at the start of the run [s]
  double tEndTotal = 0.0;        ///< end of the simulation [s]
  double nextRealTime = 0.0;     ///< next timed feedback, on the stop watch [s]

  double realTimeElapsed = 0.0;      ///< at the last feedback [ms]
  double meanSpeed = 0.0;            ///< since `feedbackStart` [s/s]
  double currentSpeed = 0.0;         ///< over the recent window [s/s]
  double estimatedRemaining = -1.0;  ///< [s], -1 where unknown
  int headerCountdown = 1;           ///< steps towards the next table header

  /// Empties the history and reserves its room.
  void clear();
  /// The run starts now: first entry of the history.
  void start();
  /// One feedback at simulated time t [s], `realTime` [ms] after the start of the run; an empty suffix marks
  /// an output time.
  void write(double t, const std::string& suffix, double realTime);

 private:
  void updateSpeeds(double t);
  std::string line(double t, const std::string& suffix);

  std::vector<std::pair<double, double>> history_;  ///< (real time [ms], simulated time [s])
};

/// Time span with its unit, from seconds to years of 365 days: "1.5 h".
std::string timeSpanText(double seconds);

/// Date of a time counted from the start of year 0 in the 365-day calendar: "dd.mm.yy hh:mm:ss".
std::string dateText(double seconds);

}  // namespace VELMORA_SOLVER
