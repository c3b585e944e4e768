#include "architecture/IncludeRules.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace VELMORA {

namespace {

/// "grid" of "grid/Element.h", empty without a folder.
std::string folderOf(const std::string& file) {
  const std::size_t slash = file.find('/');
  return slash == std::string::npos ? std::string() : file.substr(0, slash);
}

std::string arrow(const std::string& from, const std::string& to) {
  return from + " -> " + to;
}

/// Depth first walk along the includes that notes every way back into the path behind it.
class CircleSearch {
 public:
  explicit CircleSearch(const IncludeMap& files) : files_(files) {}

  std::vector<std::string> run() {
    for (const auto& [file, includes] : files_) {
      visit(file);
    }
    return found_;
  }

 private:
  void visit(const std::string& file) {
    const auto onPath = std::find(path_.begin(), path_.end(), file);
    if (onPath != path_.end()) {
      std::string circle;
      for (auto step = onPath; step != path_.end(); ++step) {
        circle += *step + " -> ";
      }
      found_.push_back(circle + file);
      return;
    }
    const auto entry = files_.find(file);
    if (entry == files_.end() || !done_.insert(file).second) {
      return;
    }
    path_.push_back(file);
    for (const std::string& include : entry->second) {
      visit(include);
    }
    path_.pop_back();
  }

  const IncludeMap& files_;
  std::vector<std::string> path_;
  std::set<std::string> done_;
  std::vector<std::string> found_;
};

}  // namespace

const std::map<std::string, std::set<std::string>>& allowedArrows() {
  static const std::map<std::string, std::set<std::string>> arrows = [] {
    const std::set<std::string> base{"foundation"};
    const std::set<std::string> project{"foundation", "keywords", "grid", "material", "climate"};
    std::set<std::string> models = project;
    models.insert("project");
    std::set<std::string> solver = models;
    solver.insert({"output", "models", "airflow", "pollutant"});
    std::set<std::string> app = solver;
    app.insert("solver");
    return std::map<std::string, std::set<std::string>>{{"foundation", {}},
                                                        {"keywords", base},
                                                        {"grid", base},
                                                        {"material", base},
                                                        {"climate", {"foundation", "keywords"}},
                                                        {"project", project},
                                                        {"output", models},
                                                        {"models", models},
                                                        {"airflow", models},
                                                        {"pollutant", models},
                                                        {"solver", solver},
                                                        {"app", app}};
  }();
  return arrows;
}

std::vector<std::string> quotedIncludes(const std::string& source) {
  std::vector<std::string> includes;
  std::istringstream lines(source);
  for (std::string line; std::getline(lines, line);) {
    std::string_view rest = line;
    const auto skip = [&rest](std::string_view word) {
      rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
      const bool there = rest.starts_with(word);
      rest.remove_prefix(there ? word.size() : 0);
      return there;
    };
    if (skip("#") && skip("include") && skip("\"")) {
      includes.emplace_back(rest.substr(0, rest.find('"')));
    }
  }
  return includes;
}

IncludeMap readIncludes(const std::string& directory) {
  IncludeMap files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    const std::string extension = entry.path().extension().string();
    if (!entry.is_regular_file() || (extension != ".h" && extension != ".cpp")) {
      continue;
    }
    std::ostringstream text;
    text << std::ifstream(entry.path()).rdbuf();
    files[std::filesystem::relative(entry.path(), directory).generic_string()] = quotedIncludes(text.str());
  }
  return files;
}

std::vector<std::string> forbiddenArrows(const IncludeMap& files) {
  std::vector<std::string> found;
  for (const auto& [file, includes] : files) {
    const auto allowed = allowedArrows().find(folderOf(file));
    for (const std::string& include : includes) {
      const std::string target = folderOf(include);
      const bool inside = target == folderOf(file);
      if (!inside && allowed != allowedArrows().end() && !allowed->second.contains(target)) {
        found.push_back(arrow(file, include));
      }
    }
  }
  return found;
}

std::vector<std::string> strayFolders(const IncludeMap& files) {
  std::vector<std::string> found;
  for (const auto& [file, includes] : files) {
    if (!allowedArrows().contains(folderOf(file))) {
      found.push_back(file);
    }
    for (const std::string& include : includes) {
      if (!allowedArrows().contains(folderOf(include))) {
        found.push_back(arrow(file, include));
      }
    }
  }
  return found;
}

std::vector<std::string> circles(const IncludeMap& files) {
  return CircleSearch(files).run();
}

std::vector<std::string> missingFiles(const IncludeMap& files) {
  std::vector<std::string> found;
  for (const auto& [file, includes] : files) {
    for (const std::string& include : includes) {
      if (!files.contains(include)) {
        found.push_back(arrow(file, include));
      }
    }
  }
  return found;
}

}  // namespace VELMORA
