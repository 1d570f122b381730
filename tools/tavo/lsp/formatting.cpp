// The layout of `tavo fmt`, as edits of what differs from it.
#include <map>

#include "lsp/features.h"
#include "reading/format_text.h"
#include "reading/line_ends.h"

namespace tavo::cli::lsp {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The document without its byte-order mark, which is no part of a statement.
std::string text_without_mark(const Document& document) {
  std::string text = document.text();
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  return text;
}

// Positions of bytes of the document, asked for in ascending order.
class Positions {
 public:
  Positions(const Document& document, Encoding encoding)
      : lines_(document.lines()), encoding_(encoding) {}

  Position at(size_t byte) {
    for (; line_ + 1 < lines_.size() && byte >= begin_ + lines_[line_].bytes.size(); ++line_) {
      begin_ += lines_[line_].bytes.size();
    }
    const std::string_view before = lines_[line_].content().substr(0, byte - begin_);
    return {static_cast<uint32_t>(line_), width_of(from_utf8(before), encoding_)};
  }

 private:
  const std::vector<Line>& lines_;
  Encoding encoding_;
  size_t line_ = 0;
  size_t begin_ = 0;  // byte of the line
};

// Removes the line end that both have, so that an edit leaves it alone.
void drop_common_end(std::string_view& before, std::string_view& after) {
  const bool returns = before.ends_with("\r\n");
  if (!before.ends_with('\n') || !after.ends_with('\n') || returns != after.ends_with("\r\n")) {
    return;
  }
  before.remove_suffix(returns ? 2 : 1);
  after.remove_suffix(returns ? 2 : 1);
}

// New texts of some statements, by their index among the pieces.
using NewTexts = std::map<size_t, std::string>;

// Whether the document would still be divided into its statements.
bool divides_alike(const Document& document, const NewTexts& texts) {
  const auto& pieces = document.pieces();
  std::vector<std::string> statements;
  std::string text;
  uint32_t line = 0;
  const auto copy_lines = [&](uint32_t past) {
    for (; line < past; ++line) text += document.lines()[line].bytes;
  };
  for (size_t i = 0; i < pieces.size(); ++i) {
    const auto changed = texts.find(i);
    statements.push_back(changed != texts.end() ? changed->second : pieces[i].view->kept());
    copy_lines(pieces[i].first_line);
    if (changed != texts.end()) {
      line = pieces[i].past_line();
      const Line& last = document.lines()[line - 1];
      text.append(changed->second).append(last.bytes, last.content().size());
    }
    copy_lines(pieces[i].past_line());
  }
  copy_lines(static_cast<uint32_t>(document.lines().size()));
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  return is_divided_into(text, document.layout(), statements);
}

PositionRange lines_of(const Session& session, const Document& document, const Piece& piece) {
  const uint32_t last = piece.past_line() - 1;
  const std::string_view content = document.lines()[last].content();
  return {piece.view->position_of(0, piece.first_line, session.client.encoding),
          {last, width_of(from_utf8(content), session.client.encoding)}};
}

// Some statements of a document, those from `first` to before `past`.
Json format_pieces(Session& session, const Document& document, size_t first, size_t past) {
  const StatementStyle style = style_for(session, document);
  NewTexts texts;
  for (size_t i = first; i < past; ++i) {
    session.check_cancelled();
    const StatementView& view = *document.pieces()[i].view;
    const LaidOut laid_out = lay_out(view.text(), view.text().parse(), style,
                                     comment_lines_of(view.read().raw, std::nullopt));
    if (laid_out.text && *laid_out.text != view.kept()) texts[i] = *laid_out.text;
  }
  Json edits = Json::array();
  if (texts.empty() || !divides_alike(document, texts)) return edits;
  for (const auto& [index, text] : texts) {
    edits.push_back(text_edit(lines_of(session, document, document.pieces()[index]), text));
  }
  return edits;
}

}  // namespace

StatementStyle style_for(const Session& session, const Document& document) {
  StatementStyle style = session.style;
  style.line_end = from_utf8(usual_line_end(document.text()));
  return style;
}

Json format_document(Session& session, const Json& params) {
  const Document& document = session.document(params);
  object_member(params, "options");
  const std::string text = text_without_mark(document);
  const FormattedText formatted = format_text(text, std::nullopt, document.layout(), session.style,
                                              [&](const auto&...) { session.check_cancelled(); });
  Json edits = Json::array();
  Positions positions(document, session.client.encoding);
  size_t at = document.lines()[0].bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  for (const ChangedPart& part : formatted.parts) {
    std::string_view before = part.before, after = part.after;
    drop_common_end(before, after);
    if (before != after) {
      const Position start = positions.at(at);
      edits.push_back(text_edit({start, positions.at(at + before.size())}, std::string(after)));
    }
    at += part.before.size();
  }
  return edits;
}

Json format_range(Session& session, const Json& params) {
  const Document& document = session.document(params);
  object_member(params, "options");
  const PositionRange range = range_member(params, "range");
  const auto& pieces = document.pieces();
  // A range that ends at the beginning of a line does not reach into it.
  const auto reaches = [&](const Piece& piece) {
    return piece.first_line < range.end.line ||
           (piece.first_line == range.end.line &&
            (range.end.character > 0 || range.start == range.end));
  };
  const size_t first = document.first_piece_from(range.start.line);
  size_t past = first;
  while (past < pieces.size() && reaches(pieces[past])) ++past;
  return format_pieces(session, document, first, past);
}

// After a line end: the statement that it ended.
Json format_on_type(Session& session, const Json& params) {
  const Document& document = session.document(params);
  const Position position = position_member(params, "position");
  object_member(params, "options");
  string_member(params, "ch");
  if (position.line == 0 || document.piece_at(position.line) != nullptr) return Json::array();
  const size_t piece = document.first_piece_from(position.line - 1);
  const bool ended = document.piece_at(position.line - 1) != nullptr;
  return format_pieces(session, document, piece, ended ? piece + 1 : piece);
}

}  // namespace tavo::cli::lsp
