// Syntax diagrams, as text and as SVG.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavo::cli {

// A diagram, built from parts.
class Railroad {
 public:
  enum class Kind { kWord, kPattern, kReference, kLine, kSequence, kChoice, kLoop };

  static Railroad word(const std::string& text);  // a keyword, a sign or a pattern such as <word>
  static Railroad reference(const std::string& text);  // refers to another diagram
  static Railroad line();                              // nothing
  static Railroad sequence(std::vector<Railroad> parts);
  static Railroad choice(std::vector<Railroad> branches);  // at least one
  static Railroad loop(const Railroad& body);              // one or more times

  Kind kind() const {
    return kind_;
  }
  const std::string& text() const {
    return text_;
  }
  const std::vector<Railroad>& parts() const {
    return parts_;
  }

  // As text, between marks for start and end.
  std::string drawn() const;

 private:
  Railroad(Kind kind, std::string text, std::vector<Railroad> parts)
      : kind_(kind), text_(std::move(text)), parts_(std::move(parts)) {}

  Kind kind_;
  std::string text_;             // UTF-8
  std::vector<Railroad> parts_;  // of a sequence, a choice or a loop
};

struct CaptionedRailroad {
  std::string caption;  // UTF-8; may be empty
  Railroad diagram;
};

// The diagrams below each other as one SVG document, readable on light and dark pages.
std::string railroad_svg(std::string_view title, const std::vector<CaptionedRailroad>& diagrams);

}  // namespace tavo::cli
