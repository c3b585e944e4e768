#include "pollutant/PollutantLibrary.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

#include "foundation/Exception.h"
#include "foundation/Parameter.h"
#include "foundation/QuotedText.h"

namespace POLLUTANT_LIB {

namespace {

constexpr double GAS_CONSTANT = 8.314472;  ///< [J/molK]

[[noreturn]] void failIndex(const char* function, const char* reason) {
  throw std::runtime_error("[PollutantLibrary::" + std::string(function) + "]  " + reason);
}

}  // namespace

void PollutantLibrary::clear() {
  clearChoice();
  vocData.clear();
  vocMatData.clear();
}

void PollutantLibrary::clearChoice() {
  materialNames.clear();
  vocNames.clear();
  mu.clear();
  Opor.clear();
  vocs.clear();
  table.clear();
}

bool PollutantLibrary::init(const std::vector<std::string>& vocIds, const std::vector<std::string>& names,
                            const std::vector<double>& resistances, const std::vector<double>& porosities,
                            std::string& errmsg) {
  const std::string FUNC_ID = "[PollutantLibrary::init]  ";
  clearChoice();
  if (resistances.size() != names.size() || porosities.size() != names.size()) {
    errmsg = FUNC_ID + "Invalid input, different sizes of material related vectors!";
    return false;
  }
  if (vocIds.empty() || names.empty()) {
    errmsg = FUNC_ID + "Invalid input (vector is empty)!";
    return false;
  }
  mu = resistances;
  Opor = porosities;
  materialNames = names;
  vocNames = vocIds;
  if (chooseCompounds(errmsg) && choosePairs(errmsg)) return true;
  clearChoice();  // what is chosen in part must not be asked for its values
  return false;
}

bool PollutantLibrary::chooseCompounds(std::string& errmsg) {
  const std::string FUNC_ID = "[PollutantLibrary::init]  ";
  for (const std::string& name : vocNames) {
    const auto found = std::find_if(vocData.begin(), vocData.end(),
                                    [&](const VocData& compound) { return compound.id == name; });
    if (found == vocData.end()) {
      errmsg = FUNC_ID + "VOCData '" + TKL::quotedText(name) + "' not in database!";
      return false;
    }
    for (TKL::LinearSpline* curve :
         {static_cast<TKL::LinearSpline*>(&found->rhosat), static_cast<TKL::LinearSpline*>(&found->Dair)})
      if (!curve->empty() && !curve->makeSpline(errmsg)) {
        errmsg = FUNC_ID + errmsg;
        return false;
      }
    vocs.push_back(&*found);
  }
  return true;
}

bool PollutantLibrary::choosePairs(std::string& errmsg) {
  const std::string FUNC_ID = "[PollutantLibrary::init]  ";
  // by material and compound; of repeated records the first counts
  std::unordered_map<std::string_view, std::unordered_map<std::string_view, const VocMatData*>> records;
  for (const VocMatData& record : vocMatData) records[record.materialId].emplace(record.vocId, &record);
  table.resize(materialNames.size(), vocNames.size());
  for (std::size_t m = 0; m < materialNames.size(); ++m) {
    const auto ofMaterial = records.find(materialNames[m]);
    if (ofMaterial == records.end()) {
      errmsg = FUNC_ID + "Material '" + TKL::quotedText(materialNames[m]) +
               "' unknown/not referenced in database!";
      return false;
    }
    for (std::size_t v = 0; v < vocNames.size(); ++v) {
      const auto pair = ofMaterial->second.find(vocNames[v]);
      if (pair == ofMaterial->second.end()) {
        errmsg = FUNC_ID + "Data missing in DB for combination of VOC '" + TKL::quotedText(vocNames[v]) +
                 "' and material '" + TKL::quotedText(materialNames[m]) + "'!";
        return false;
      }
      table(m, v) = pair->second;
    }
  }
  return checkPairs(errmsg);
}

bool PollutantLibrary::checkPairs(std::string& errmsg) const {
  for (std::size_t m = 0; m < table.rows(); ++m)
    for (std::size_t v = 0; v < table.cols(); ++v) try {
        checkParameters(static_cast<std::uint32_t>(v), static_cast<std::uint32_t>(m));
      } catch (const TKL::Exception& error) {
        errmsg = error.location() + "  " + error.what();
        return false;
      }
  return true;
}

void PollutantLibrary::checkParameters(std::uint32_t voc, std::uint32_t material) const {
  const char* const FUNC_ID = "[PollutantLibrary::checkParameters]";
  const VocMatData& pair = *table(material, voc);
  const TKL::Unit unit("---");
  try {
    TKL::Parameter("partCoeff", pair.partCoeff, unit)
        .test(TKL::Parameter("partCoeff", 1.0, unit), TKL::Parameter::OP_GREATER_EQUAL);
    TKL::Parameter("muFactor", pair.muFactor, unit)
        .test(TKL::Parameter("muFactor", 0.0, unit), TKL::Parameter::OP_GREATER);
  } catch (const TKL::Exception& cause) {
    throw TKL::Exception(cause,
                         std::string(cause.what()) + " (VOC '" + TKL::quotedText(pair.vocId) +
                             "', material '" + TKL::quotedText(pair.materialId) + "')",
                         FUNC_ID);
  }
}

double PollutantLibrary::Rv(std::uint32_t voc) const {
  if (voc >= vocs.size()) failIndex("Rv", "Index out of bounds");
  return GAS_CONSTANT / vocs[voc]->M;
}

double PollutantLibrary::rhoSat(std::uint32_t voc, double T) const {
  if (voc >= vocs.size()) failIndex("rhoSat", "Index out of bounds");
  return vocs[voc]->rhosat(T);
}

void PollutantLibrary::checkIndices(std::uint32_t voc, std::uint32_t material, const char* function) const {
  if (voc >= vocs.size()) failIndex(function, "VOC index out of bounds");
  if (material >= materialNames.size()) failIndex(function, "Material index out of bounds");
}

double PollutantLibrary::partC(std::uint32_t voc, std::uint32_t material) const {
  checkIndices(voc, material, "partC");
  return table(material, voc)->partCoeff;
}

double PollutantLibrary::muFactor(std::uint32_t voc, std::uint32_t material) const {
  checkIndices(voc, material, "muFactor");
  return table(material, voc)->muFactor;
}

double PollutantLibrary::logKVOC(std::uint32_t voc, std::uint32_t material, double T, double Theta) const {
  checkIndices(voc, material, "logKVOC");
  if (Opor.empty()) failIndex("logKVOC", "Opor-vector not initialized");
  if (mu.empty()) failIndex("logKVOC", "mu-vector not initialized");
  const double permeability =
      vocs[voc]->Dair(T) / (table(material, voc)->muFactor * mu[material] * Rv(voc) * T);
  return permeability * (Opor[material] - Theta) / Opor[material];
}

}  // namespace POLLUTANT_LIB
