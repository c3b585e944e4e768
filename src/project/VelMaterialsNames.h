#pragma once

#include <span>

namespace VELMORA {

/// A material file of the older generation and the one of the current generation that replaces it.
struct MaterialSuccessor {
  const char* oldName;
  const char* newName;  ///< empty where the database has none
};

/// The shorter table, in the order of testing.
std::span<const MaterialSuccessor> materialSuccessors();

/// The longer table, in the order of testing. The shorter one holds names that this one lacks.
std::span<const MaterialSuccessor> materialSuccessorsExtended();

}  // namespace VELMORA
