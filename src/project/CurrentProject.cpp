#include "project/CurrentProject.h"

namespace VELMORA {

VelProject* currentProject = nullptr;

}  // namespace VELMORA
