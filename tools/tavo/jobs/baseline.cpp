#include "jobs/baseline.h"

#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "statement/finding_identity.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr char kVersion[] = "tavo-baseline";
constexpr int kThisVersion = 1;

}  // namespace

Baseline::Baseline(const std::string& path)
    : folder_(fs::absolute(path).lexically_normal().parent_path().string()) {}

std::string Baseline::name_of(const std::string& file) const {
  return printable_bytes(
      fs::absolute(file).lexically_normal().lexically_relative(folder_).string());
}

Baseline::Key Baseline::key_of(const std::string& file, const StatementText& statement,
                               const Finding& finding) const {
  return {name_of(file), finding.rule, finding.number, identity_of(statement)};
}

Baseline Baseline::of_text(const std::string& path, const std::string& text) {
  Baseline baseline(path);
  try {
    const Json json = Json::parse(text);
    if (json.at(kVersion) != kThisVersion) {
      throw BaselineError("is a baseline of another version of tavo");
    }
    for (const Json& entry : json.at("findings")) {
      const Key key{entry.at("file"), entry.at("rule"), entry.at("number"), entry.at("statement")};
      const Json& count = entry.at("count");
      if (!count.is_number_unsigned()) throw BaselineError("is no baseline: a count is wrong");
      baseline.counts_[key] += count.get<size_t>();
    }
  } catch (const Json::exception&) {
    // What it holds is not repeated: it may be any file.
    throw BaselineError("is no baseline of tavo check");
  }
  return baseline;
}

void Baseline::add(const std::string& file, const StatementText& statement,
                   const Finding& finding) {
  ++counts_[key_of(file, statement, finding)];
}

bool Baseline::hides(const std::string& file, const StatementText& statement,
                     const Finding& finding) {
  const auto entry = counts_.find(key_of(file, statement, finding));
  if (entry == counts_.end() || entry->second == 0) return false;
  --entry->second;
  return true;
}

void Baseline::saw(const std::string& file) {
  seen_.insert(name_of(file));
}

size_t Baseline::gone() const {
  size_t gone = 0;
  for (const auto& [key, count] : counts_) {
    if (seen_.contains(std::get<0>(key))) gone += count;
  }
  return gone;
}

std::string Baseline::to_json() const {
  std::string text = fmt::format("{{\"{}\": {}, \"findings\": [", kVersion, kThisVersion);
  bool first = true;
  for (const auto& [key, count] : counts_) {
    const auto& [file, rule, number, statement] = key;
    const Json entry = {{"file", file},
                        {"rule", rule},
                        {"number", number},
                        {"statement", statement},
                        {"count", count}};
    text += first ? "\n" : ",\n";
    text += escape_json(entry.dump());
    first = false;
  }
  return text + "\n]}\n";
}

}  // namespace tavo::cli
