// The settings that apply to a file, and where they are set.
#pragma once

#include <string>
#include <vector>

#include "jobs/configuration.h"

namespace tavo::cli {

struct HeldSetting {
  std::string name;
  std::string value;
  std::string source;  // "FILE:LINE", or "default"
};

// path: the file, or "-". Defaults included, in the order of the documentation.
std::vector<HeldSetting> held_settings(const Configuration& configuration, const std::string& path);

// As text for people, and as JSON for programs.
std::string held_text(const Configuration& configuration, const std::string& path);
std::string held_json(const Configuration& configuration, const std::string& path);

}  // namespace tavo::cli
