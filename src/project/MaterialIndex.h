#pragma once

#include <string>
#include <vector>

#include "project/NameIndex.h"
#include "project/VelMaterials.h"

namespace VELMORA {

/// Finds the material that an assignment means: by its id name, else by its file name with or without
/// extension.
class MaterialIndex {
 public:
  explicit MaterialIndex(const std::vector<MaterialDescription>& materials) {
    for (std::size_t k = 0; k < materials.size(); ++k) {
      idNames_.add(materials[k].idName(), k);
      if (!materials[k].filename.isValid()) continue;
      fileNames_.add(materials[k].filename.filename(), k);
      fileNames_.add(materials[k].filename.filenameWithoutExtension(), k);
    }
  }

  /// Position of the first material that fits, `NameIndex::NONE` if there is none.
  std::size_t find(const std::string& name) const {
    const std::size_t position = idNames_.find(name);
    return position == NameIndex::NONE ? fileNames_.find(name) : position;
  }

  /// True if two materials have this id name.
  bool isAmbiguous(const std::string& name) const { return idNames_.isAmbiguous(name); }

 private:
  NameIndex idNames_;
  NameIndex fileNames_;
};

}  // namespace VELMORA
