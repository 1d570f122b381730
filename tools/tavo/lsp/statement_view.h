// One statement of a document: its text, its parts, what is wrong with it, and where its characters
// stand in the lines of the document. Everything is relative to the statement's first line, so that
// it stays true while other statements change.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "jobs/statement_check.h"
#include "lsp/outline.h"
#include "lsp/position.h"
#include "reading/statement_reader.h"
#include "statement/findings.h"
#include "statement/statement_text.h"

namespace tavo::cli::lsp {

class StatementView {
 public:
  // has_mark: a byte order mark, which the reader drops, begins the first line.
  StatementView(FileStatement read, bool has_mark, const Configuration& configuration);

  const StatementText& text() const {
    return text_;
  }
  const Outline& outline() const {
    return outline_;
  }
  // Those of `tavo check`, secrets masked.
  const std::vector<Finding>& findings() const {
    return findings_;
  }
  // About comment lines before the statement and within it; their lines count as those of read().
  const std::vector<LineRemark>& remarks() const {
    return remarks_;
  }
  // As it is in the document: comment lines between the lines of the statement, and the line ends.
  const FileStatement& read() const {
    return read_;
  }
  // The same without a carriage return that ends the last line.
  std::string kept() const;
  // Lines of the document.
  uint32_t lines() const {
    return lines_;
  }

  Position position_of(size_t offset, uint32_t first_line, Encoding encoding) const;
  PositionRange range_of(Range range, uint32_t first_line, Encoding encoding) const;
  // The character of the statement at a place in one of its lines.
  size_t offset_of(Position position, uint32_t first_line, Encoding encoding) const;

 private:
  // Where a line of the document begins in the statement's text. A comment line between lines of
  // the statement is an empty line of the text.
  struct LineStart {
    size_t offset;
    uint32_t line;
  };

  // The conversion before: places are mostly asked for in ascending order, and lines may be long.
  struct Converted {
    size_t line_offset = 0;
    size_t offset = 0;
    uint32_t width = 0;
    Encoding encoding = Encoding::kUtf16;
  };

  void find_lines();
  std::wstring_view line_text(size_t index) const;

  FileStatement read_;
  StatementText text_;
  Outline outline_;
  std::vector<Finding> findings_;
  std::vector<LineRemark> remarks_;
  std::vector<LineStart> starts_;
  uint32_t lines_ = 0;
  bool has_mark_;
  mutable Converted converted_;  // a document is used by one thread
};

}  // namespace tavo::cli::lsp
