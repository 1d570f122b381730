#include "language/railroad.h"

#include <algorithm>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {

size_t Railroad::width() const {
  return lines_.empty() ? 0 : lines_.front().size();
}

void Railroad::widen(size_t width) {
  for (size_t i = 0; i < lines_.size(); ++i) {
    lines_[i].resize(std::max(width, lines_[i].size()), i == 0 ? L'─' : L' ');
  }
}

Railroad Railroad::word(const std::string& text) {
  Railroad piece;
  piece.lines_ = {from_utf8(" " + text + " ")};
  return piece;
}

Railroad Railroad::line() {
  Railroad piece;
  piece.lines_ = {L"──"};
  return piece;
}

Railroad Railroad::sequence(const std::vector<Railroad>& parts) {
  size_t height = 1;
  for (const Railroad& part : parts) height = std::max(height, part.lines_.size());
  Railroad piece;
  piece.lines_.resize(height);
  for (const Railroad& part : parts) {
    for (size_t i = 0; i < height; ++i) {
      const bool has_line = i < part.lines_.size();
      if (!piece.lines_[i].empty()) piece.lines_[i] += i == 0 ? L'─' : L' ';
      piece.lines_[i] += has_line ? part.lines_[i] : std::wstring(part.width(), L' ');
    }
  }
  return piece;
}

Railroad Railroad::choice(const std::vector<Railroad>& branches) {
  if (branches.size() == 1) return branches.front();
  size_t width = 0;
  for (const Railroad& branch : branches) width = std::max(width, branch.width());
  Railroad piece;
  for (size_t b = 0; b < branches.size(); ++b) {
    Railroad branch = branches[b];
    branch.widen(width);
    const bool first = b == 0, last = b + 1 == branches.size();
    for (size_t i = 0; i < branch.lines_.size(); ++i) {
      std::wstring left = L" │ ", right = L" │ ";
      if (i == 0) {
        left = first ? L"─┬─" : last ? L" └─" : L" ├─";
        right = first ? L"─┬─" : last ? L"─┘ " : L"─┤ ";
      } else if (last) {
        left = right = L"   ";
      }
      piece.lines_.push_back(left + branch.lines_[i] + right);
    }
  }
  return piece;
}

Railroad Railroad::loop(const Railroad& body) {
  Railroad piece;
  for (size_t i = 0; i < body.lines_.size(); ++i) {
    piece.lines_.push_back(i == 0 ? L"─┬─" + body.lines_[i] + L"─┬─"
                                  : L" │ " + body.lines_[i] + L" │ ");
  }
  const size_t before = body.width() / 2;
  piece.lines_.push_back(L" └─" + std::wstring(before, L'─') + L"◄" +
                         std::wstring(body.width() - before - 1, L'─') + L"─┘ ");
  return piece;
}

std::string Railroad::drawn() const {
  std::string text;
  for (size_t i = 0; i < lines_.size(); ++i) {
    std::wstring line = i == 0 ? L"├─" + lines_[i] + L"─┤" : L"  " + lines_[i];
    line.erase(line.find_last_not_of(L' ') + 1);
    text += to_utf8(line) + "\n";
  }
  return text;
}

}  // namespace tavo::cli
