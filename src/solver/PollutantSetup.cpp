#include <algorithm>
#include <string>
#include <vector>

#include "foundation/Exception.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "material/Material.h"
#include "project/VelProject.h"
#include "solver/VelmoraCvodeSolver.h"

namespace VELMORA_SOLVER {

namespace {

const char* const POLLUTANT_INIT_ID = "[VelmoraCvodeSolver::initPollutantModule]";

/// The identifiers of a list, separated by semicolons or line ends.
std::vector<std::string> identifiers(std::string list) {
  std::replace(list.begin(), list.end(), ';', '\n');
  std::vector<std::string> result;
  for (std::size_t start = 0; start < list.size();) {
    const std::size_t end = std::min(list.find('\n', start), list.size());
    const std::string id = TKL::trim_copy(list.substr(start, end - start), " \t\r");
    if (!id.empty()) result.push_back(id);
    start = end + 1;
  }
  return result;
}

[[noreturn]] void failLibrary(const std::string& reason) {
  TKL::message(reason, TKL::MSG_ERROR, POLLUTANT_INIT_ID, -1);
  throw TKL::Exception("Error initializing pollutant/VOC lib!", POLLUTANT_INIT_ID);
}

double positive(double value, const char* symbol, const MM::Material& material) {
  if (!(value > 0.0))
    throw TKL::Exception(std::string(symbol) + " <= 0 for material " + material.name() + "!",
                         POLLUTANT_INIT_ID);
  return value;
}

/// Gas and solid exchange in every element. The condition is the last one of the calculation; it holds
/// wherever the project gives none.
void addAutomaticAdsorption(VELMORA::CalculationData& data) {
  using VELMORA::VelFieldCond;
  const auto isAdsorption = [](const VelFieldCond* condition) {
    return condition->condition == VelFieldCond::C_VOCADSORPTION;
  };
  for (VELMORA::Element& element : data.elements)
    if (std::none_of(element.fieldConds.begin(), element.fieldConds.end(), isAdsorption))
      element.fieldConds.push_back(&data.fieldConds.back());
}

}  // namespace

/// Reads the database of the project and chooses its compounds for the materials of the calculation.
void VelmoraCvodeSolver::initPollutantModule(const VELMORA::VelProject& project) {
  using MM::Material;
  if (!init_.balanceEquations[VELMORA::VelInit::B_POLLUTANT]) return;
  if (init_.vocDatabase.str().empty())
    throw TKL::Exception("Missing pollutant/VOC database file name!", POLLUTANT_INIT_ID);
  pollutants_ = std::make_unique<POLLUTANT_LIB::PollutantLibrary>();
  std::string reason;
  if (!pollutants_->readDatabase(project.resolvedInputPath(init_.vocDatabase), reason)) failLibrary(reason);

  std::vector<std::string> names;
  std::vector<double> mu;
  std::vector<double> porosity;
  for (const Material* material : data_.materials) {
    names.push_back(material->name());
    mu.push_back(positive(material->paraTransport[Material::PT_MEW].value, "MEW", *material));
    porosity.push_back(positive(material->paraStorage[Material::PS_THETA_POR].value, "OPOR", *material));
  }
  if (!pollutants_->init(identifiers(init_.vocIds), names, mu, porosity, reason)) failLibrary(reason);
  addAutomaticAdsorption(data_);
  pollutantMassFile_ = std::make_unique<PollutantMassFile>(resultsDirectory);
}

}  // namespace VELMORA_SOLVER
