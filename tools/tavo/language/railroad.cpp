#include "language/railroad.h"

#include <algorithm>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {
namespace {

// Lines of one width. The track enters at the left of the first line and leaves at its right.
using Lines = std::vector<std::wstring>;

Lines lines_of(const Railroad& railroad);

size_t width_of(const Lines& lines) {
  return lines.empty() ? 0 : lines.front().size();
}

// Widens to the right: the first line with track, the others with blanks.
void widen(Lines& lines, size_t width) {
  for (size_t i = 0; i < lines.size(); ++i) {
    lines[i].resize(std::max(width, lines[i].size()), i == 0 ? L'─' : L' ');
  }
}

Lines lines_of_sequence(const std::vector<Railroad>& parts) {
  std::vector<Lines> drawn;
  size_t height = 1;
  for (const Railroad& part : parts) {
    drawn.push_back(lines_of(part));
    height = std::max(height, drawn.back().size());
  }
  Lines lines(height);
  for (const Lines& part : drawn) {
    for (size_t i = 0; i < height; ++i) {
      if (!lines[i].empty()) lines[i] += i == 0 ? L'─' : L' ';
      lines[i] += i < part.size() ? part[i] : std::wstring(width_of(part), L' ');
    }
  }
  return lines;
}

Lines lines_of_choice(const std::vector<Railroad>& branches) {
  std::vector<Lines> drawn;
  size_t width = 0;
  for (const Railroad& branch : branches) {
    drawn.push_back(lines_of(branch));
    width = std::max(width, width_of(drawn.back()));
  }
  Lines lines;
  for (size_t b = 0; b < drawn.size(); ++b) {
    widen(drawn[b], width);
    const bool first = b == 0, last = b + 1 == drawn.size();
    for (size_t i = 0; i < drawn[b].size(); ++i) {
      std::wstring left = L" │ ", right = L" │ ";
      if (i == 0) {
        left = first ? L"─┬─" : last ? L" └─" : L" ├─";
        right = first ? L"─┬─" : last ? L"─┘ " : L"─┤ ";
      } else if (last) {
        left = right = L"   ";
      }
      lines.push_back(left + drawn[b][i] + right);
    }
  }
  return lines;
}

Lines lines_of_loop(const Railroad& body) {
  Lines lines = lines_of(body);
  const size_t width = width_of(lines);
  for (size_t i = 0; i < lines.size(); ++i) {
    lines[i] = i == 0 ? L"─┬─" + lines[i] + L"─┬─" : L" │ " + lines[i] + L" │ ";
  }
  const size_t before = width / 2;
  lines.push_back(L" └─" + std::wstring(before, L'─') + L"◄" +
                  std::wstring(width - before - 1, L'─') + L"─┘ ");
  return lines;
}

Lines lines_of(const Railroad& railroad) {
  switch (railroad.kind()) {
    case Railroad::Kind::kLine: return {L"──"};
    case Railroad::Kind::kSequence: return lines_of_sequence(railroad.parts());
    case Railroad::Kind::kChoice: return lines_of_choice(railroad.parts());
    case Railroad::Kind::kLoop: return lines_of_loop(railroad.parts().front());
    case Railroad::Kind::kWord:
    case Railroad::Kind::kPattern:
    case Railroad::Kind::kReference: break;
  }
  return {from_utf8(" " + railroad.text() + " ")};
}

}  // namespace

Railroad Railroad::word(const std::string& text) {
  return {text.find('<') == std::string::npos ? Kind::kWord : Kind::kPattern, text, {}};
}

Railroad Railroad::reference(const std::string& text) {
  return {Kind::kReference, text, {}};
}

Railroad Railroad::line() {
  return {Kind::kLine, "", {}};
}

Railroad Railroad::sequence(std::vector<Railroad> parts) {
  return {Kind::kSequence, "", std::move(parts)};
}

Railroad Railroad::choice(std::vector<Railroad> branches) {
  if (branches.size() == 1) return std::move(branches.front());
  return {Kind::kChoice, "", std::move(branches)};
}

Railroad Railroad::loop(const Railroad& body) {
  return {Kind::kLoop, "", {body}};
}

std::string Railroad::drawn() const {
  const Lines lines = lines_of(*this);
  std::string text;
  for (size_t i = 0; i < lines.size(); ++i) {
    std::wstring line = i == 0 ? L"├─" + lines[i] + L"─┤" : L"  " + lines[i];
    line.erase(line.find_last_not_of(L' ') + 1);
    text += to_utf8(line) + "\n";
  }
  return text;
}

}  // namespace tavo::cli
