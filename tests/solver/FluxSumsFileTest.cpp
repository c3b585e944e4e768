#include "solver/FluxSumsFile.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace VELMORA_SOLVER {
namespace {

/// Sums of `nSides` sides; each slot has a value of its own, with all digits of a double.
FluxRecords sumsOf(std::size_t nSides, double factor) {
  FluxRecords sums;
  sums.heatFlux = RecordArray(nSides, VELMORA::NUM_HF);
  sums.moistureFlux = RecordArray(nSides, VELMORA::NUM_MF);
  sums.vocFlux = RecordArray(nSides, VELMORA::NUM_VF);
  sums.additionalFlux = RecordArray(nSides, VELMORA::NUM_AF);
  double value = 1.0;
  for (auto* records : {&sums.heatFlux, &sums.moistureFlux, &sums.vocFlux, &sums.additionalFlux})
    for (double& sum : records->values()) sum = factor / value++;
  return sums;
}

bool sameSums(const FluxRecords& one, const FluxRecords& other, std::size_t side) {
  for (auto array : {&FluxRecords::heatFlux, &FluxRecords::moistureFlux, &FluxRecords::vocFlux,
                     &FluxRecords::additionalFlux})
    for (std::size_t slot = 0; slot < (one.*array).nSlots(); ++slot)
      if ((one.*array)[side][slot] != (other.*array)[side][slot]) return false;
  return true;
}

TEST(FluxSumsFile, sums_comeBackToTheLastDigit) {
  const TKL::TempFolder folder;
  FluxSumsFile file(folder.path().string());
  const FluxRecords written = sumsOf(5, -1.0);
  file.write(3600.1234, {1, 4}, written);
  FluxRecords read = sumsOf(5, 0.0);
  ASSERT_TRUE(file.read(3600.123, {1, 4}, read));
  EXPECT_TRUE(sameSums(read, written, 1));
  EXPECT_TRUE(sameSums(read, written, 4));
  EXPECT_TRUE(sameSums(read, sumsOf(5, 0.0), 0));
  EXPECT_FALSE(sameSums(read, sumsOf(5, 2.0), 1));
}

TEST(FluxSumsFile, sumsOfAnotherTime_areNotTaken) {
  const TKL::TempFolder folder;
  FluxSumsFile file(folder.path().string());
  file.write(3600.0, {0}, sumsOf(1, 1.0));
  FluxRecords read = sumsOf(1, 0.0);
  EXPECT_FALSE(file.read(3600.001, {0}, read));
  EXPECT_TRUE(sameSums(read, sumsOf(1, 0.0), 0));
}

TEST(FluxSumsFile, backup_isTakenIfItFitsTheRestartFile) {
  // killed between the sums and the restart file of 7200 s
  const TKL::TempFolder folder;
  FluxSumsFile file(folder.path().string());
  file.write(3600.0, {0}, sumsOf(1, 1.0));
  file.write(7200.0, {0}, sumsOf(1, 2.0));
  FluxRecords read = sumsOf(1, 0.0);
  ASSERT_TRUE(file.read(3600.0, {0}, read));
  EXPECT_TRUE(sameSums(read, sumsOf(1, 1.0), 0));
  // and stays the backup of the next state
  file.write(5400.0, {0}, sumsOf(1, 3.0));
  EXPECT_TRUE(file.read(3600.0, {0}, read));
}

TEST(FluxSumsFile, sideThatIsMissing_makesTheFileUseless) {
  const TKL::TempFolder folder;
  FluxSumsFile file(folder.path().string());
  file.write(1.0, {0, 2}, sumsOf(3, 1.0));
  FluxRecords read = sumsOf(3, 0.0);
  EXPECT_FALSE(file.read(1.0, {0, 1}, read));
}

TEST(FluxSumsFile, damagedFiles_areNotTaken) {
  const TKL::TempFolder folder;
  FluxSumsFile file(folder.path().string());
  file.write(1.0, {0}, sumsOf(1, 1.0));
  const std::string whole = folder.read("restart.sums");
  FluxRecords read = sumsOf(1, 0.0);
  for (std::size_t size = 0; size + 1 < whole.size(); size += 7) {
    folder.write("restart.sums", whole.substr(0, size));
    EXPECT_FALSE(file.read(1.0, {0}, read)) << size;
  }
  folder.write("restart.sums", "1.000\n0 1 2 x\nEND\n");
  EXPECT_FALSE(file.read(1.0, {0}, read));
  folder.write("restart.sums", "1.000\n-1e300 1 2\nEND\n");
  EXPECT_FALSE(file.read(1.0, {0}, read));
  folder.write("restart.sums", whole);
  EXPECT_TRUE(file.read(1.0, {0}, read));
}

}  // namespace
}  // namespace VELMORA_SOLVER
