#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <atomic>
#include <thread>

#include "material/MaterialTestSupport.h"
#include "support/TempFolder.h"

namespace MM {

namespace {

const std::string HEADER = "V6MARLZ! 006.012";
const std::string BRICK =
    "\n[IDENTIFICATION]\nNAME = en:Brick|de:Ziegel\nFLAGS = AIR_TIGHT\n"
    "[STORAGE_BASE_PARAMETERS]\nRHO = 1800 kg/m3\nCE = 1 kJ/kgK\nTHETA_EFF = 0.3 m3/m3\n"
    "[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.8 W/mK\n";
const std::string OLD_BRICK =
    "; an old file\n\n  [MATERIAL]  \n[IDENTIFICATION]\nNAME = Old Brick\nFLAGS = AIRTIGHT\n"
    "[PARAMETER]\nRHO = 1700 kg/m3\nCE = 900 J/kgK\nLAMBDA = 0.7 W/mK\nOEFF = 0.3 m3/m3\n";

Records readFailure(const TKL::Path& path) {
  const TKL::MessageCapture capture;
  return thrown([&] { Material().read(path); });
}

/// A named pipe that holds a text: readable to its end, but without positions as a file has them.
class FilledPipe {
 public:
  FilledPipe(const std::string& path, const std::string& text) {
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int pipe = ::open(path.c_str(), O_RDWR);
    EXPECT_EQ(::write(pipe, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    // The end of the text shows to its reader when no writer is left.
    closer_ = std::thread([this, pipe] {
      int left = 1;
      while (!unread_ && left > 0 && ioctl(pipe, FIONREAD, &left) == 0) std::this_thread::yield();
      ::close(pipe);
    });
  }
  ~FilledPipe() {
    unread_ = true;
    closer_.join();
  }
  FilledPipe(const FilledPipe&) = delete;
  FilledPipe& operator=(const FilledPipe&) = delete;

 private:
  std::atomic<bool> unread_ = false;
  std::thread closer_;
};

class MaterialFile : public ::testing::Test {
 protected:
  TKL::Path write(const std::string& name, const std::string& content) const {
    return TKL::Path(folder.write(name, content));
  }

  const TKL::TempFolder folder;
};

}  // namespace

TEST_F(MaterialFile, currentFile_isReadAndReady) {
  const TKL::MessageCapture capture;
  Material material;
  material.read(write("Brick_123.m6", HEADER + BRICK));
  EXPECT_EQ(material.name(), "Brick");
  EXPECT_EQ(material.identification.name.string("de"), "Ziegel");
  EXPECT_EQ(material.id, 123U);
  EXPECT_EQ(material.directions, 0);
  EXPECT_EQ(material.versionMajor, 6);
  EXPECT_EQ(material.versionMinor, 12);
  EXPECT_DOUBLE_EQ(material.rhoCDry(), 1.8e6);
  EXPECT_DOUBLE_EQ(material.conductivity(0.1, 300.0, 0.0), 0.8);
  EXPECT_TRUE(
      capture.has("Reading material file 'Brick_123.m6'.\n", TKL::MSG_STANDARD, "[Material::read]", 1));
  EXPECT_TRUE(capture.has("Preparing material 'Brick' ID: 123 for calculation.\n", TKL::MSG_STANDARD,
                          "[Material::prepareCalculation]", 2));
}

TEST_F(MaterialFile, reading_indentsItsMessagesAndComesBack) {
  TKL::MessageCapture capture;
  Material().read(write("Brick_1.m6", HEADER + BRICK));
  EXPECT_EQ(capture.messages.front().indentation, 0);
  EXPECT_EQ(capture.messages[1].indentation, 1);  // "Preparing material ..."
  EXPECT_EQ(capture.messages[2].indentation, 2);
  EXPECT_EQ(capture.indentation, 0);
}

TEST_F(MaterialFile, olderFile_isVersion5_6) {
  const TKL::MessageCapture capture;
  Material material;
  material.read(write("Old.mat", OLD_BRICK));
  EXPECT_EQ(material.name(), "Old Brick");
  EXPECT_EQ(material.versionMajor, 5);
  EXPECT_EQ(material.versionMinor, 6);
  EXPECT_DOUBLE_EQ(material.rhoCDry(), 1700.0 * 900.0);
  EXPECT_DOUBLE_EQ(material.thetaEff(), 0.3);
  EXPECT_DOUBLE_EQ(material.conductivity(0.0, 300.0, 0.0), 0.7);
  EXPECT_TRUE(material.isAirTight());
}

TEST_F(MaterialFile, id_isTheNumberBehindTheLastUnderscore) {
  const TKL::MessageCapture capture;
  Material material;
  material.read(write("Brick_7_123.m6", HEADER + BRICK));
  EXPECT_EQ(material.id, 123U);
}

TEST_F(MaterialFile, matWithoutNumber_hasId0WithoutWarning) {
  const TKL::MessageCapture capture;
  Material material;
  material.read(write("Brick.mat", HEADER + BRICK));
  EXPECT_EQ(material.id, 0U);
  EXPECT_FALSE(capture.contains("Invalid format for material file"));
}

TEST_F(MaterialFile, m6WithoutNumber_hasId0WithWarning) {
  for (const std::string name : {"Brick.m6", "Brick_x.m6"}) {
    const TKL::MessageCapture capture;
    Material material;
    const TKL::Path path = write(name, HEADER + BRICK);
    material.read(path);
    EXPECT_EQ(material.id, 0U);
    EXPECT_TRUE(
        capture.has("Invalid format for material file, '<name>_xxx.m6' expected, with xxx as ID number. "
                    "Filename was '" +
                        path.str() + "'.",
                    TKL::MSG_WARNING, "[Material::read]", 2));
  }
}

TEST_F(MaterialFile, versionDigits_areNotChecked) {
  const TKL::MessageCapture capture;
  Material material;
  material.read(write("Brick_1.m6", "V6MARLZ!xAAA?123" + BRICK));
  EXPECT_EQ(material.versionMajor, 111 * ('A' - '0'));
  EXPECT_EQ(material.versionMinor, 123);
}

TEST_F(MaterialFile, missingFile_cannotBeOpened) {
  const TKL::Path path = TKL::Path(folder.file("Missing_1.m6"));
  EXPECT_TRUE(has(readFailure(path), "Cannot open file: '" + path.str() + "'", "[Material::read]"));
}

TEST_F(MaterialFile, binaryFile_cannotBeOpened) {
  const TKL::Path path = write("Brick_1.m6", "V6MBRLZ! 006.000" + BRICK);
  EXPECT_TRUE(has(readFailure(path), "Cannot open file: '" + path.str() + "'", "[Material::read]"));
}

TEST_F(MaterialFile, fileThatFailsBehindItsFirstBytes_isRefused) {
  const std::string path = folder.file("Pipe.mat");
  const FilledPipe pipe(path, std::string(40000, 'x'));
  const Records records = readFailure(TKL::Path(path));
  EXPECT_EQ(records.front().what, "Wrong position in stream after reading lines from file.");
  EXPECT_TRUE(has(records, "Error opening material file (again) in ASCII mode.", "[Material::read]"));
}

TEST_F(MaterialFile, wrongSecondMagicNumber_isRefused) {
  EXPECT_TRUE(has(readFailure(write("Brick_1.m6", "V6MARLZ? 006.000" + BRICK)),
                  "Wrong second magic number in V6 - ASCII material file!", "[Material::read]"));
}

TEST_F(MaterialFile, fileShorterThanAHeader_isRefused) {
  EXPECT_TRUE(has(readFailure(write("Brick_1.m6", "V6MARLZ! 006.00")),
                  "Error reading requested number of bytes from file.", "[FileReader::firstBytes]"));
}

TEST_F(MaterialFile, olderFileOfCommentsOnly_hasABadHeader) {
  EXPECT_TRUE(has(readFailure(write("Brick.mat", "; nothing but\n  ; comments\n \t\n")),
                  "Bad header in material file.", "[Material::read]"));
}

TEST_F(MaterialFile, olderFileWithoutMaterialTitle_isReadFromItsFirstSection) {
  const TKL::MessageCapture capture;
  Material material;
  material.read(
      write("Old.mat", "; comment of some length\n[PARAMETER]\nRHO = 1700 kg/m3\nFLAGS = AIRTIGHT\n"));
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_RHO].value, 1700.0);
}

TEST_F(MaterialFile, olderFileWithItsTitleInsideALine_losesThatLine) {
  const TKL::MessageCapture capture;
  Material material;
  material.read(write("Old.mat", "old [MATERIAL] file\n[PARAMETER]\nRHO = 1700 kg/m3\n"));
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_RHO].value, 1700.0);
}

TEST_F(MaterialFile, failureInTheText_namesTheFile) {
  const TKL::Path path = write("Brick_1.m6", HEADER + "\n[IDENTIFICATION]\nNAME\n");
  const Records records = readFailure(path);
  EXPECT_TRUE(has(records, "Error reading material from file '" + path.str() + "'.", "[Material::read]"));
  EXPECT_TRUE(has(records, "Error reading material file '" + path.str() + "'.", "[Material::readASCII]"));
}

TEST_F(MaterialFile, secondRead_startsFromTheEmptyState) {
  const TKL::MessageCapture capture;
  Material material;
  material.read(write("Brick_1.m6", HEADER + BRICK));
  material.read(write("Empty.mat", HEADER + "\n[IDENTIFICATION]\nNAME = en:Empty\n"));
  EXPECT_EQ(material.id, 0U);
  EXPECT_DOUBLE_EQ(material.rhoCDry(), 0.0);
  EXPECT_EQ(material.thermalTransport[0].kind, ThermalTransport::K_NONE);
}

TEST_F(MaterialFile, megabytesOfBytes_areRefusedOrReadInTime) {
  std::string bytes(10'000'000, ' ');
  unsigned int state = 12345;
  for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525U + 1013904223U) >> 24);
  EXPECT_FALSE(readFailure(write("Random.mat", bytes)).empty());
  EXPECT_FALSE(readFailure(write("Random_1.m6", HEADER + bytes)).empty());
}

TEST_F(MaterialFile, directoryInPlaceOfAFile_isRefused) {
  EXPECT_FALSE(readFailure(TKL::Path(folder.path().string())).empty());
}

}  // namespace MM
