#include "material/ThermalStorage.h"

#include <ostream>

#include "foundation/Exception.h"

namespace MM {

namespace {

constexpr const char* THERMAL_STORAGE_FUNCTIONS = "ThermalStorage::Functions";

}  // namespace

void ThermalStorage::prepareCalculation() {
  const char* const FUNC_ID = "[ThermalStorage::prepareCalculation]";
  Tu.clear();
  const TKL::LinearSpline& uT = functions[F_u_T];
  if (uT.empty()) return;
  Tu.x = uT.y;
  Tu.y = uT.x;
  std::string errorText;
  if (!Tu.makeSpline(errorText))
    throw TKL::Exception("Error generating inverse thermal storage function T(u):\n" + errorText, FUNC_ID);
}

void ThermalStorage::read(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[ThermalStorage::read]";
  try {
    readFunctions(lines, {THERMAL_STORAGE_FUNCTIONS, functions, FUNC_ID});
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading thermal transport data!", FUNC_ID);
  }
}

void ThermalStorage::read(const std::string& text) {
  read(splitLines(text));
}

void ThermalStorage::writeBinary(std::ostream& out) const {
  writeBinaryFunctions(out, functions);
}

void ThermalStorage::write(std::ostream& out, int indent) const {
  const char* const FUNC_ID = "[ThermalStorage::write]";
  if (!anyFunction(functions) && models.empty()) return;
  writeDirectionTitle(out, indent, "THERMAL_STORAGE", 0, FUNC_ID);
  writeFunctions(out, indent, THERMAL_STORAGE_FUNCTIONS, functions);
}

void ThermalStorage::readBinary(std::istream& in) {
  readBinaryFunctions(in, functions);
}

void ThermalStorage::clear() {
  *this = ThermalStorage();
}

}  // namespace MM
