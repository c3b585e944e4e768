#pragma once

namespace VELMORA_SOLVER {

/// Whether this process has been asked from outside to end its run.
bool stopRequested() noexcept;
/// Asks for the end of the run; may be called by a signal handler.
void requestStop() noexcept;
/// Takes the request back.
void clearStopRequest() noexcept;

/// While it lives, SIGTERM and SIGINT ask for the end of the run instead of ending the process: the run ends
/// behind its current step and leaves a restart file. A second signal ends the process at once. A signal that
/// the process ignores, as under nohup, stays ignored.
class StopSignals {
 public:
  StopSignals();
  ~StopSignals();
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;
};

}  // namespace VELMORA_SOLVER
