#pragma once

namespace VELMORA {

class VelProject;

/// The project of this run, null outside of it. Not owned.
extern VelProject* currentProject;

}  // namespace VELMORA
