// Syntax diagrams as SVG. All lengths are whole pixels, so that a document is the same everywhere.
#include <fmt/format.h>

#include <algorithm>

#include "TAVOParserCpp.hpp"
#include "language/railroad.h"

namespace tavo::cli {
namespace {

constexpr int kCharacter = 8;  // width of one, in the monospaced font
constexpr int kPadding = 10;   // left and right of a box's text
constexpr int kHalf = 12;      // half the height of a box
constexpr int kGap = 14;       // between the parts of a sequence
constexpr int kBetween = 8;    // between branches
constexpr int kRadius = 8;     // of a curve; a branch needs two
constexpr int kMargin = 20;

// Colors for light pages, and for dark ones. The document has a background of its own, so that it
// is readable on a page that does not follow the reader's choice.
constexpr std::string_view kStyle =
    ".page{fill:#ffffff}.track{fill:none;stroke:#8b97a6;stroke-width:1.5}"
    ".word{fill:#ffffff;stroke:#8ba2c0}.pattern{fill:#fdf3e3;stroke:#c9a25c}"
    ".reference{fill:#e8f1e4;stroke:#87ab78}.text{fill:#1f2937}.dim{fill:#5d6a7a}"
    ".arrow{fill:#8b97a6}\n"
    "@media (prefers-color-scheme: dark){.page{fill:#0d1117}.track{stroke:#6b7684}"
    ".word{fill:#0d1f36;stroke:#3f6ea8}.pattern{fill:#2b2011;stroke:#8a6a2c}"
    ".reference{fill:#12261a;stroke:#3f7a4d}.text{fill:#e6edf3}.dim{fill:#94a0ae}"
    ".arrow{fill:#6b7684}}";

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '&') {
      result += "&amp;";
    } else if (c == '<') {
      result += "&lt;";
    } else if (c == '>') {
      result += "&gt;";
    } else {
      result += c;
    }
  }
  return result;
}

// The space of a part: its width, and how far it reaches above and below its track.
struct Extent {
  int width = 0;
  int up = 0;
  int down = 0;
};

Extent extent_of(const Railroad& railroad);

// How far the track of the next branch lies below the track of a branch.
int step_to(const Extent& branch, const Extent& next) {
  return std::max(branch.down + kBetween + next.up, 2 * kRadius);
}

Extent extent_of_choice(const std::vector<Railroad>& branches) {
  Extent all = extent_of(branches.front());
  Extent previous = all;
  int track = 0;
  for (size_t i = 1; i < branches.size(); ++i) {
    const Extent branch = extent_of(branches[i]);
    track += step_to(previous, branch);
    all.width = std::max(all.width, branch.width);
    all.down = std::max(all.down, track + branch.down);
    previous = branch;
  }
  all.width += 4 * kRadius;
  return all;
}

Extent extent_of(const Railroad& railroad) {
  switch (railroad.kind()) {
    case Railroad::Kind::kLine: return {2 * kRadius, 0, 0};
    case Railroad::Kind::kSequence: {
      Extent all;
      for (const Railroad& part : railroad.parts()) {
        const Extent extent = extent_of(part);
        all.width += (all.width == 0 ? 0 : kGap) + extent.width;
        all.up = std::max(all.up, extent.up);
        all.down = std::max(all.down, extent.down);
      }
      return all;
    }
    case Railroad::Kind::kChoice: return extent_of_choice(railroad.parts());
    case Railroad::Kind::kLoop: {
      const Extent body = extent_of(railroad.parts().front());
      return {body.width + 4 * kRadius, body.up, std::max(body.down + kBetween, 2 * kRadius) + 5};
    }
    case Railroad::Kind::kWord:
    case Railroad::Kind::kPattern:
    case Railroad::Kind::kReference: break;
  }
  const auto characters = static_cast<int>(from_utf8(railroad.text()).size());
  return {characters * kCharacter + 2 * kPadding, kHalf, kHalf};
}

class Drawing {
 public:
  // Draws a part whose track begins at x and y.
  void draw(const Railroad& railroad, int x, int y) {
    switch (railroad.kind()) {
      case Railroad::Kind::kLine: track("M{} {}h{}", x, y, 2 * kRadius); return;
      case Railroad::Kind::kSequence: draw_sequence(railroad.parts(), x, y); return;
      case Railroad::Kind::kChoice: draw_choice(railroad, x, y); return;
      case Railroad::Kind::kLoop: draw_loop(railroad.parts().front(), x, y); return;
      case Railroad::Kind::kWord: draw_box("word", kHalf, railroad, x, y); return;
      case Railroad::Kind::kPattern: draw_box("pattern", kHalf, railroad, x, y); return;
      case Railroad::Kind::kReference: draw_box("reference", 3, railroad, x, y); return;
    }
  }

  template <typename... Values>
  void track(fmt::format_string<Values...> path, Values... values) {
    tracks_ += fmt::vformat(path, fmt::make_format_args(values...));
  }

  void add(const std::string& element) {
    shapes_ += element + "\n";
  }

  std::string drawn() const {
    return fmt::format("<path class=\"track\" d=\"{}\"/>\n{}", tracks_, shapes_);
  }

 private:
  void draw_box(std::string_view kind, int radius, const Railroad& railroad, int x, int y) {
    const int width = extent_of(railroad).width;
    add(fmt::format("<rect class=\"{}\" x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\" rx=\"{}\"/>",
                    kind, x, y - kHalf, width, 2 * kHalf, radius));
    add(fmt::format("<text class=\"text\" x=\"{}\" y=\"{}\" text-anchor=\"middle\">{}</text>",
                    x + width / 2, y + 4, escaped(railroad.text())));
  }

  void draw_sequence(const std::vector<Railroad>& parts, int x, int y) {
    bool first = true;
    for (const Railroad& part : parts) {
      if (!first) {
        track("M{} {}h{}", x, y, kGap);
        x += kGap;
      }
      first = false;
      draw(part, x, y);
      x += extent_of(part).width;
    }
  }

  void draw_choice(const Railroad& railroad, int x, int y) {
    const std::vector<Railroad>& branches = railroad.parts();
    const int right = x + extent_of(railroad).width;
    const int inner = x + 2 * kRadius;
    Extent previous;
    int at = y;
    for (size_t i = 0; i < branches.size(); ++i) {
      const Extent branch = extent_of(branches[i]);
      if (i == 0) {
        track("M{} {}H{}", x, y, inner);
        track("M{} {}H{}", inner + branch.width, y, right);
      } else {
        at += step_to(previous, branch);
        const int end = inner + branch.width;
        const int straight = right - 2 * kRadius;
        // Down from the track, along the branch, and up again.
        track("M{0} {1}q{2} 0 {2} {2}V{3}q0 {2} {2} {2}", x, y, kRadius, at - kRadius);
        track("M{} {}H{}q{} 0 {} {}V{}q0 {} {} {}", end, at, straight, kRadius, kRadius, -kRadius,
              y + kRadius, -kRadius, kRadius, -kRadius);
      }
      draw(branches[i], inner, at);
      previous = branch;
    }
  }

  void draw_loop(const Railroad& body, int x, int y) {
    const Extent extent = extent_of(body);
    const int left = x + 2 * kRadius, right = left + extent.width;
    const int below = y + std::max(extent.down + kBetween, 2 * kRadius);
    track("M{} {}H{}M{} {}H{}", x, y, left, right, y, right + 2 * kRadius);
    // Back from the right end to the left one.
    track("M{0} {1}q{2} 0 {2} {2}V{3}q0 {2} {4} {2}H{5}", right, y, kRadius, below - kRadius,
          -kRadius, left);
    track("q{0} 0 {0} {0}V{1}q0 {0} {2} {0}", -kRadius, y + kRadius, kRadius);
    const int middle = (left + right) / 2;
    add(fmt::format("<path class=\"arrow\" d=\"M{} {}l8 -5v10z\"/>", middle - 4, below));
    draw(body, left, y);
  }

  std::string tracks_;
  std::string shapes_;
};

}  // namespace

std::string railroad_svg(std::string_view title, const std::vector<CaptionedRailroad>& diagrams) {
  Drawing drawing;
  int width = 0, y = kMargin;
  for (const CaptionedRailroad& captioned : diagrams) {
    if (!captioned.caption.empty()) {
      drawing.add(fmt::format("<text class=\"dim\" x=\"{}\" y=\"{}\">{}</text>", kMargin, y + 6,
                              escaped(captioned.caption)));
      y += 24;
    }
    const Extent extent = extent_of(captioned.diagram);
    y += extent.up;
    const int begin = kMargin + kGap, end = begin + extent.width;
    drawing.track("M{} {}v12M{} {}h{}", kMargin, y - 6, kMargin, y, kGap);
    drawing.track("M{} {}h{}m0 -6v12", end, y, kGap);
    drawing.draw(captioned.diagram, begin, y);
    y += extent.down + kMargin;
    width = std::max(width, end + kGap + kMargin);
  }
  return fmt::format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0} {1}\" width=\"{0}\" "
      "height=\"{1}\" role=\"img\" aria-labelledby=\"t\" font-size=\"13\" "
      "font-family=\"ui-monospace,Consolas,'DejaVu Sans Mono',monospace\">\n"
      "<title id=\"t\">{2}</title>\n<style>{3}</style>\n"
      "<rect class=\"page\" width=\"100%\" height=\"100%\" rx=\"8\"/>\n{4}</svg>\n",
      width, y, escaped(title), kStyle, drawing.drawn());
}

}  // namespace tavo::cli
