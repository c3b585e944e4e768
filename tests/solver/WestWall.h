#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

/// Replaces each occurrence of a piece of text, of which there must be one.
inline void replaceAll(std::string& text, const std::string& what, const std::string& by) {
  std::size_t at = text.find(what);
  if (at == std::string::npos) throw std::logic_error("The text has no " + what);
  for (; at != std::string::npos; at = text.find(what, at + by.size())) text.replace(at, what.size(), by);
}

/// The example of a wall in the weather, to run in process with daily outputs and, for the sake of time,
/// coarse steps.
/// @param startDay, days  of the year, start and length
inline std::string westWallText(double startDay, double days) {
  const std::string root = VELMORA_SOURCE_DIR;
  std::ostringstream content;
  content << std::ifstream(root + "/examples/west_wall/west_wall.vel").rdbuf();
  std::string text = content.str();
  replaceAll(text, "INTERVAL = 0 d 1 h", "INTERVAL = 0 d 1 d");
  replaceAll(text, "MAX_DT = 10 min\nREL_TOL = 5e-7", "MAX_DT = 30 min\nREL_TOL = 1e-5");
  replaceAll(text, "$(MATERIALS_DIR)", root + "/database/DB_material_data");
  replaceAll(text, "$(CLIMATE_DIR)", root + "/database/DB_climate_data");
  replaceAll(text, "DURATION = 365 d",
             "START_TIME = " + number(startDay * 86400.0) + "\nDURATION = " + number(days) + " d");
  return text;
}

}  // namespace VELMORA_SOLVER
