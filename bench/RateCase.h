#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/Message.h"
#include "project/VelProject.h"
#include "solver/VelmoraCvodeSolver.h"

namespace VELMORA_BENCH {

/// Drops all messages while it lives.
class Silence : public TKL::MessageHandler {
 public:
  Silence() : previous_(TKL::MessageHandlerRegistry::instance().current) {
    TKL::MessageHandlerRegistry::instance().setMessageHandler(this);
  }
  ~Silence() override { TKL::MessageHandlerRegistry::instance().setMessageHandler(previous_); }

  void msg(const std::string&, int, const char*, int) override {}

 private:
  TKL::MessageHandler* previous_;
};

/// A new folder for files that goes with all of them.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  /// Writes a file into the folder. @return its path
  std::string write(const std::string& name, const std::string& text) const;

 private:
  std::string path_;
};

/// Folder of the shipped materials and climate.
std::string database();

/// Writes the materials of a RateBody beside its project file.
void writeMaterials(const Folder& folder);

/// All combinations of balance equations, as in a project file.
constexpr const char* BALANCES[] = {"ENERGY",
                                    "MOISTURE",
                                    "ENERGY MOISTURE",
                                    "ENERGY MOISTURE ICE",
                                    "ENERGY AIR",
                                    "ENERGY MOISTURE AIR",
                                    "ENERGY POLLUTANT",
                                    "ENERGY MOISTURE POLLUTANT",
                                    "ENERGY AIR POLLUTANT",
                                    "ENERGY MOISTURE AIR POLLUTANT"};

/// A body of brick, wool and plaster, from the top to the bottom, whose left surface has rain, sun, sky and
/// wind of the shipped climate and whose right surface is in a room. In more than one row a slab of concrete
/// runs into it.
struct RateBody {
  int nColumns;
  int nRows;
  std::string balances;  ///< as BALANCE_EQUATIONS of a project file

  /// The project file. It writes nothing.
  std::string text() const;
};

/// Evaluations of the right-hand side of a body at states that go with the time in a fixed way: neither
/// steps nor linear equations have a part in it.
class RateCase {
 public:
  explicit RateCase(const RateBody& body) : RateCase(body.text()) {}
  /// The same of any project; its placeholders of materials and climate lead to the shipped ones.
  explicit RateCase(const std::string& projectText);

  std::size_t nCells() const { return solver_.data().elements.size(); }

  /// The next evaluation. Every cell differs from the last one.
  /// @throws std::runtime_error when there are no rates
  void evaluate();

 private:
  void makeStates();

  Silence silence_;
  Folder folder_;
  VELMORA::VelProject project_;
  VELMORA_SOLVER::VelmoraCvodeSolver solver_;
  std::vector<std::vector<double>> states_;  ///< one after the other, then from the start
  std::vector<double> rates_;
  std::size_t count_ = 0;
};

}  // namespace VELMORA_BENCH
