#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "foundation/Message.h"

/// What the fuzz targets share. A target reads one input and must return, whatever the input is.
namespace VELMORA_FUZZ {

/// A promise of the code under test; a broken one counts as a crash.
inline void require(bool holds) {
  if (!holds) std::abort();
}

/// Takes all messages and forgets them.
class SilentMessages : public TKL::MessageHandler {
 public:
  SilentMessages() { TKL::MessageHandlerRegistry::instance().setMessageHandler(this); }
  void msg(const std::string&, int, const char*, int) override {}
};

/// A directory of this process, removed at its end.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "velmora_fuzz_XXXXXX").string();
    require(mkdtemp(name.data()) != nullptr);
    path_ = name;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string file(const std::string& name) const { return (path_ / name).string(); }

  /// Writes a file and returns its full name.
  std::string write(const std::string& name, std::string_view content) const {
    std::ofstream(file(name), std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
    return file(name);
  }

 private:
  std::filesystem::path path_;
};

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace VELMORA_FUZZ

/// Entry of a target, called once for each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
