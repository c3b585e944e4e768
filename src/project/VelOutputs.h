#pragma once

#include <vector>

#include "foundation/Parameter.h"
#include "foundation/Path.h"
#include "keywords/SectionText.h"
#include "project/VelOutputFile.h"
#include "project/VelOutputFormat.h"
#include "project/VelOutputGrid.h"

namespace VELMORA {

/// The section `OUTPUTS`: what is written, where and when.
class VelOutputs {
 public:
  /// Indices of the keywords of "VelOutputs::outputSections_t".
  enum outputSections_t { O_GENERAL, O_GRIDS, O_FORMATS, O_FILES, NUM_O };
  /// Indices of the keywords of "VelOutputs::ThawBeginKind": what ends a freezing phase.
  enum ThawBeginKind { TB_ZEROTEMPERATURE, TB_ICEVOLUMERATE, NUM_TB };

  std::vector<VelOutputGrid> outputGrids;
  std::vector<VelOutputFormat> outputFormats;
  std::vector<VelOutputFile> outputFiles;
  TKL::Path outputFolder;       ///< may hold placeholders; empty means the default folder
  TKL::Parameter maxHygRelHum;  ///< end of the hygroscopic range, 95 %
  TKL::Parameter expRefTemper;  ///< temperature without thermal expansion, 0 C
  TKL::Parameter expRefRelHum;  ///< relative humidity without hygric expansion, 60 %
  VelOutputGrid defaultGrid;    ///< hourly to the end of the simulation
  int thawBegin = TB_ZEROTEMPERATURE;
  TKL::Parameter freezeBegin;  ///< ice to pore volume ratio that begins a freezing phase, 0.01

  VelOutputs();

  /// Reads the section: cuts it into its four subsections and reads each of them.
  /// @throws TKL::Exception "Expected keyword, got '%1'!" for a line before the first subsection, and what
  /// the readers of the subsections throw
  void read(const SectionText& text);

  /// Reads the subsection `GENERAL`.
  void readOutputParameters(const SectionText& text);
  /// Reads the subsection `GRIDS`: blocks that begin with `OUTPUT_GRID`.
  void readOutputGrids(const SectionText& text);
  /// Reads the subsection `FORMATS`: blocks that begin with `OUTPUT_FORMAT`.
  void readOutputFormats(const SectionText& text);
  /// Reads the subsection `FILES`: blocks that begin with `OUTPUT_FILE`.
  void readOutputFiles(const SectionText& text);

  /// Without an output folder of its own, a project writes into "<project name>.results" beside itself.
  void setDefaultFolder(const TKL::Path& projectFile);
};

}  // namespace VELMORA
