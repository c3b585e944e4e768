#include "solver/OutputArrays.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace VELMORA_SOLVER {
namespace {

using ErrorValues = std::vector<double>;

/// The largest local errors of energy and moisture that have been noted.
std::pair<ErrorValues, ErrorValues> shownErrors(const OutputArrays& arrays) {
  VELMORA::OutputSource source;
  arrays.show(source);
  return {{source.localErrorU.begin(), source.localErrorU.end()},
          {source.localErrorMw.begin(), source.localErrorMw.end()}};
}

TEST(OutputArrays, localErrors_areTheLargestOfAllStepsInTolerances) {
  OutputArrays arrays;
  arrays.start(2);
  // energy and moisture of the first element, then those of the second
  arrays.noteErrors(ErrorValues{2.0, 10.0, 2.0, 10.0}, ErrorValues{0.25, 0.01, 0.1, 0.02});
  arrays.noteErrors(ErrorValues{2.0, 10.0, 2.0, 10.0}, ErrorValues{0.05, 0.03, 0.4, 0.01});
  EXPECT_EQ(shownErrors(arrays), std::make_pair(ErrorValues({0.5, 0.8}), ErrorValues({0.3, 0.2})));
}

TEST(OutputArrays, localErrors_areNeverLessThanASmallNumber) {
  OutputArrays arrays;
  arrays.start(1);
  EXPECT_EQ(shownErrors(arrays), std::make_pair(ErrorValues({0.0}), ErrorValues({0.0})));
  arrays.noteErrors(ErrorValues{1.0, 1.0}, ErrorValues{0.0, -3.0});
  EXPECT_EQ(shownErrors(arrays), std::make_pair(ErrorValues({1e-20}), ErrorValues({1e-20})));
}

TEST(OutputArrays, heatPipe_showsItsValuesAtItsElements) {
  std::vector<VELMORA::VelBoundaryCond> conditions(1);
  conditions[0].heatPipe.shares = {{1, 0.5}, {2, 0.5}};
  conditions[0].heatPipe.supplyTemperature = 310.0;
  conditions[0].heatPipe.returnTemperature = 300.0;
  conditions[0].heatPipe.heatFlux = 70.0;
  OutputArrays arrays;
  arrays.start(3);
  arrays.takeHeatPipes(conditions);
  VELMORA::OutputSource source;
  arrays.show(source);
  EXPECT_EQ(ErrorValues(source.heatPipeSupply.begin(), source.heatPipeSupply.end()),
            (ErrorValues{0.0, 310.0, 310.0}));
  EXPECT_EQ(ErrorValues(source.heatPipeReturn.begin(), source.heatPipeReturn.end()),
            (ErrorValues{0.0, 300.0, 300.0}));
  EXPECT_EQ(ErrorValues(source.heatPipeHeatFlux.begin(), source.heatPipeHeatFlux.end()),
            (ErrorValues{0.0, 70.0, 70.0}));
}

}  // namespace
}  // namespace VELMORA_SOLVER
