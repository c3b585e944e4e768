#include "solver/StopRequest.h"

#include <array>
#include <csignal>

namespace VELMORA_SOLVER {

namespace {

constexpr std::array<int, 2> STOP_SIGNALS{SIGTERM, SIGINT};

volatile std::sig_atomic_t stopIsRequested = 0;
std::array<struct sigaction, 2> formerActions;

extern "C" void takeStopSignal(int number) {
  if (stopIsRequested != 0) {
    // comes through when this handler returns
    std::signal(number, SIG_DFL);
    std::raise(number);
  }
  stopIsRequested = 1;
}

}  // namespace

bool stopRequested() noexcept {
  return stopIsRequested != 0;
}

void requestStop() noexcept {
  stopIsRequested = 1;
}

void clearStopRequest() noexcept {
  stopIsRequested = 0;
}

StopSignals::StopSignals() {
  clearStopRequest();
  for (std::size_t i = 0; i < STOP_SIGNALS.size(); ++i) {
    sigaction(STOP_SIGNALS[i], nullptr, &formerActions[i]);
    if (formerActions[i].sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = &takeStopSignal;
    action.sa_flags = SA_RESTART;  // files and console do not notice the signal
    sigaction(STOP_SIGNALS[i], &action, nullptr);
  }
}

StopSignals::~StopSignals() {
  for (std::size_t i = 0; i < STOP_SIGNALS.size(); ++i)
    sigaction(STOP_SIGNALS[i], &formerActions[i], nullptr);
}

}  // namespace VELMORA_SOLVER
