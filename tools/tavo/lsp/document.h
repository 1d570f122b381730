// An open document: its lines, and its statements. After a change only the statements that it can
// have touched are read again.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lsp/statement_view.h"

namespace tavo::cli::lsp {

// A line of the protocol: it ends with "\n", "\r\n" or "\r", or with the document.
struct Line {
  std::string bytes;  // with its end
  uint8_t end = 0;    // bytes of the end

  std::string_view content() const {
    return std::string_view(bytes).substr(0, bytes.size() - end);
  }
};

struct Piece {
  uint32_t first_line = 0;
  uint32_t lines = 0;
  uint32_t looked_past = 0;   // the reader looked at lines up to here to find where it ends
  bool has_findings = false;  // so that a statement without any is not looked at
  std::shared_ptr<const StatementView> view;

  uint32_t past_line() const {
    return first_line + lines;
  }
  // Farther than the line after it.
  bool looks_far() const {
    return looked_past > past_line() + 1;
  }
};

class Document {
 public:
  // configuration: what the project says of the document; null for nothing.
  Document(std::string_view text, int64_t version,
           std::shared_ptr<const Configuration> configuration = nullptr);

  void set_text(std::string_view text);
  // Reads everything again.
  void set_configuration(std::shared_ptr<const Configuration> configuration);
  // A range that lies past the end of a line or of the document ends there.
  void replace(PositionRange range, std::string_view text, Encoding encoding);

  // How it is divided into statements.
  Layout layout() const {
    return configuration_->layout.value_or(Layout::kAuto);
  }
  int64_t version() const {
    return version_;
  }
  void set_version(int64_t version) {
    version_ = version;
  }
  // Differs after every change.
  uint64_t state() const {
    return state_;
  }

  const std::vector<Line>& lines() const {
    return lines_;
  }
  const std::vector<Piece>& pieces() const {
    return pieces_;
  }
  // The statement that a line belongs to, or null.
  const Piece* piece_at(uint32_t line) const;
  // The first statement that ends after a line.
  size_t first_piece_from(uint32_t line) const;
  Position end(Encoding encoding) const;
  std::string text() const;

  // How many statements were read so far.
  uint64_t statements_read() const {
    return statements_read_;
  }

 private:
  size_t piece_to_read_again(uint32_t changed_line) const;
  void read_statements(size_t first_piece, uint32_t from_line, uint32_t changed_past,
                       int64_t lines_added);

  std::shared_ptr<const Configuration> configuration_;
  std::vector<Line> lines_;  // at least one
  std::vector<Piece> pieces_;
  int64_t version_ = 0;
  size_t far_looks_ = 0;  // how many of them look far
  uint64_t state_ = 0;
  uint64_t statements_read_ = 0;
};

}  // namespace tavo::cli::lsp
