#include "project/SetupCalculation.h"

#include "foundation/Message.h"

namespace VELMORA {

namespace setup {

void progress(const std::string& text) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  TKL::message(text, TKL::MSG_STANDARD, FUNC_ID, 2);
}

}  // namespace setup

void VelProject::setup_calculation(CalculationData& data) {
  const TKL::MessageIndentor indentor;
  data = CalculationData();

  setup::progress("Transferring materials and conditions\n");
  setup::transferMaterials(*this, data);
  setup::transferBoundaryConds(*this, data);
  setup::transferFieldConds(*this, data);
  setup::transferWallData(*this, data);
  setup::transferClimateConds(*this, data);
  setup::transferInitialConds(*this, data);
  setup::transferContactConds(*this, data);

  data.indexMatrix = setup::createElements(*this, data);
  const IndexMatrix& indexMatrix = data.indexMatrix;
  setup::assignToElements(*this, indexMatrix, data);

  SideMatrices sides = setup::createSides(*this, indexMatrix, data);
  setup::assignToSides(*this, data, sides);
  setup::collectSides(sides, data);
  setup::linkSides(data);

  setup::createOutputDirectory(*this, data);
  setup::transferOutputs(*this, data);
  setup::assignOutputs(*this, indexMatrix, data);
}

}  // namespace VELMORA
