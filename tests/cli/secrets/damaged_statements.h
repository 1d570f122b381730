// Statements with a marker as their secret, damaged at random.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace tavo_test {

// Text that must never be shown; no part of kMarkerPart characters occurs elsewhere.
inline const std::vector<std::string> kMarkers = {"hunTer2xQz", "geheimniskrug", "7391528406"};
inline constexpr size_t kMarkerPart = 5;

class DamagedStatements {
 public:
  explicit DamagedStatements(uint32_t seed) : random_(seed) {}

  // A statement, valid or not, whose secrets hold the marker.
  std::string statement(const std::string& marker);
  // One to three damages anywhere in the text: characters removed, inserted, changed, doubled or
  // swapped; signs swapped; the end cut off.
  std::string damaged(std::string text);

 private:
  size_t below(size_t limit) {
    return std::uniform_int_distribution<size_t>(0, limit - 1)(random_);
  }
  const std::string& one_of(const std::vector<std::string>& list) {
    return list[below(list.size())];
  }
  std::string secret(const std::string& marker);
  void damage_once(std::string& text);
  void exchange_signs(std::string& text);

  std::mt19937 random_;
};

// Every way to damage a text at one byte: the byte removed, replaced by or preceded by each sign,
// swapped with its neighbour, the rest cut off.
std::vector<std::string> damaged_at_every_byte(const std::string& text);

// The first part of the marker in a text, ignoring case; empty if there is none.
std::string leak_in(const std::string& shown, const std::string& marker);

// The marker of which a text holds a part; empty when it holds none.
std::string marker_of(const std::string& text);

// Whether the library accepts the statement and stores the marker where no secret is, or as the
// name of a seed: the damage made another statement of it, which means what it says.
bool stores_marker_openly(const std::string& statement, const std::string& marker);

}  // namespace tavo_test
