#include "jobs/listing.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "jobs/key_table.h"
#include "jobs/meaning.h"
#include "language/language.h"
#include "language/nearest.h"
#include "statement/secrets.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

// JSON in one line, safe to show.
std::string json_line(const Json& json) {
  return escape_json(json.dump()) + "\n";
}

const char* verdict_of(const ParseResult& result) {
  return result ? "accepted" : "rejected";
}

uint32_t number_of(const ParseResult& result) {
  return result || result.errors.empty() ? 0 : result.errors.front().number;
}

// One column of one statement; all pairs of one name, separated by blanks.
class Column {
 public:
  explicit Column(const std::string& name) : name_(name) {
    if (std::find(kListColumns.begin(), kListColumns.end(), name) != kListColumns.end()) return;
    is_option_ = true;
    const size_t dot = name.find('.');
    const std::string spelling = dot == name.npos ? name : name.substr(dot + 1);
    key_types_ = key_types_of(spelling);
    if (dot != name.npos) group_ = from_utf8(name.substr(0, dot));
    if (!key_types_.empty()) return;
    std::vector<std::string> known = kListColumns;
    known.insert(known.end(), option_spellings().begin(), option_spellings().end());
    const std::vector<std::string> near = nearest(name, known);
    throw std::invalid_argument(
        fmt::format("no column \"{}\"{}", name,
                    near.empty() ? "" : fmt::format("; did you mean \"{}\"?", near.front())));
  }

  const std::string& name() const {
    return name_;
  }

  std::string text(const ListedStatement& statement, const ValueText& values) const {
    const ParseResult& result = statement.result;
    if (is_option_) return option_text(result, values);
    if (name_ == "file") return statement.file;
    if (name_ == "line") return std::to_string(statement.line);
    if (name_ == "provider") return to_utf8(provider_of(result));
    if (name_ == "field") return to_utf8(field_of(result));
    if (name_ == "verdict") return verdict_of(result);
    if (name_ == "number") return number_of(result) == 0 ? "" : std::to_string(number_of(result));
    return all_options(result, values);
  }

 private:
  std::string option_text(const ParseResult& result, const ValueText& values) const {
    std::string text;
    for (const Pair& pair : result.pairs) {
      if (std::find(key_types_.begin(), key_types_.end(), pair.key_type) == key_types_.end() ||
          (!group_.empty() && !equal_folded(group_of(pair), group_))) {
        continue;
      }
      if (!text.empty()) text += ' ';
      text += values.of(pair);
    }
    return text;
  }

  // All options after the head.
  static std::string all_options(const ParseResult& result, const ValueText& values) {
    std::string text;
    for (const Pair& pair : result.pairs) {
      if (pair.key_type == TAVO_PARSER_PROVIDER || pair.key_type == TAVO_PARSER_USER_PROVIDER_LIB) {
        continue;
      }
      if (!text.empty()) text += ' ';
      text += to_utf8(key_name(pair)) + '=' + values.of(pair);
    }
    return text;
  }

  std::string name_;
  bool is_option_ = false;
  std::vector<uint32_t> key_types_;
  std::wstring group_;
};

std::vector<Column> make_columns(std::vector<std::string> names,
                                 const std::vector<std::string>& usual) {
  if (names.empty()) names = usual;
  return std::vector<Column>(names.begin(), names.end());
}

// Comma- or tab-separated values.
class SeparatedReport : public ListReport {
 public:
  SeparatedReport(char separator, std::vector<std::string> columns, const ValueText& values,
                  Output& output)
      : separator_(separator),
        columns_(make_columns(std::move(columns), kListColumns)),
        values_(values),
        output_(output) {}

  void begin() override {
    output_.use_english();
    write_line([](const Column& column) { return column.name(); });
  }
  void add(const ListedStatement& statement) override {
    write_line([&](const Column& column) { return column.text(statement, values_); });
  }

 private:
  template <typename TextOf>
  void write_line(TextOf text_of) {
    std::string line;
    for (size_t i = 0; i < columns_.size(); ++i) {
      if (i != 0) line += separator_;
      const std::string text = text_of(columns_[i]);
      if (is_plain(text) && text.find('\\') == text.npos) {
        line += separator_ == ',' ? quoted(text) : text;
        continue;
      }
      const std::wstring wide = from_utf8(text);
      line += separator_ == ',' ? quoted(printable(wide)) : tsv_field(wide);
    }
    output_.answer().write(line + (separator_ == ',' ? "\r\n" : "\n"));
  }

  static std::string quoted(const std::string& text) {
    if (text.find_first_of(",\"") == text.npos) return text;
    std::string result = "\"";
    for (const char c : text) {
      if (c == '"') result += '"';
      result += c;
    }
    return result + '"';
  }

  char separator_;
  std::vector<Column> columns_;
  const ValueText values_;
  Output& output_;
};

// The first rows determine the column widths, because optimal widths would need all rows in memory.
// The last column gets the rest.
class TableReport : public ListReport {
 public:
  TableReport(std::vector<std::string> columns, const ValueText& values, Output& output)
      : columns_(make_columns(std::move(columns),
                              {"file", "line", "provider", "field", "verdict", "options"})),
        values_(values),
        output_(output) {}

  void add(const ListedStatement& statement) override {
    std::vector<std::string> row;
    for (const Column& column : columns_) row.push_back(shown(column.text(statement, values_)));
    rows_.push_back(std::move(row));
    if (rows_.size() == kMeasured) flush();
  }
  void end() override {
    flush();
  }

 private:
  static constexpr size_t kMeasured = 1000;  // rows whose widths set those of the columns

  static std::string shown(const std::string& text) {
    return printable(from_utf8(text));
  }

  void flush() {
    if (widths_.empty()) {
      for (const Column& column : columns_) widths_.push_back(column.name().size());
      for (const std::vector<std::string>& row : rows_) {
        for (size_t i = 0; i < row.size(); ++i) {
          widths_[i] = std::max(widths_[i], width_of(from_utf8(row[i])));
        }
      }
      std::vector<std::string> head;
      for (const Column& column : columns_) head.push_back(upper(column.name()));
      if (!rows_.empty()) write_row(head);
    }
    for (const std::vector<std::string>& row : rows_) write_row(row);
    rows_.clear();
  }

  void write_row(const std::vector<std::string>& row) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 == row.size()) break;
      const size_t width = width_of(from_utf8(row[i]));
      line.append(widths_[i] > width ? widths_[i] - width + 2 : 2, ' ');
    }
    output_.answer().write(line.substr(0, line.find_last_not_of(' ') + 1) + "\n");
  }

  std::vector<Column> columns_;
  const ValueText values_;
  Output& output_;
  std::vector<size_t> widths_;
  std::vector<std::vector<std::string>> rows_;
};

class JsonLinesReport : public ListReport {
 public:
  JsonLinesReport(const ValueText& values, Output& output) : values_(values), output_(output) {}

  void begin() override {
    output_.use_english();
  }
  void add(const ListedStatement& statement) override {
    const ParseResult& result = statement.result;
    Json pairs = Json::array();
    for (const Pair& pair : result.pairs) {
      pairs.push_back({{"key", to_utf8(key_name(pair))},
                       {"keyType", pair.key_type},
                       {"value", values_.of(pair)},
                       {"valueType", pair.value_type},
                       {"secret", is_secret(pair)}});
    }
    Json record = {{"file", to_utf8(from_utf8(statement.file))},
                   {"line", statement.line},
                   {"provider", to_utf8(provider_of(result))},
                   {"field", to_utf8(field_of(result))},
                   {"verdict", verdict_of(result)},
                   {"pairs", std::move(pairs)}};
    if (number_of(result) != 0) record["number"] = number_of(result);
    output_.answer().write(json_line(record));
  }

 private:
  const ValueText values_;
  Output& output_;
};

}  // namespace

std::string ValueText::of(const Pair& pair) const {
  if (show_secrets_ || !is_secret(pair)) return to_utf8(pair.value);
  return digest_ == nullptr ? to_utf8(kMask) : digest_->of(to_utf8(pair.value));
}

std::string ValueText::canonical(const Pair& pair) const {
  switch (key_info(pair.key_type).classify(pair.value_type)) {
    case ValueClass::kKeyword: return value_name(pair.key_type, pair.value_type);
    case ValueClass::kFolded: return upper(of(pair));
    default: return of(pair);
  }
}

std::unique_ptr<ListReport> make_list_report(ListFormat format, std::vector<std::string> columns,
                                             const ValueText& values, Output& output) {
  switch (format) {
    case ListFormat::kCsv:
      return std::make_unique<SeparatedReport>(',', std::move(columns), values, output);
    case ListFormat::kTsv:
      return std::make_unique<SeparatedReport>('\t', std::move(columns), values, output);
    case ListFormat::kJsonLines: break;
    case ListFormat::kTable:
      return std::make_unique<TableReport>(std::move(columns), values, output);
  }
  if (!columns.empty()) throw std::invalid_argument("JSON lines hold all columns");
  return std::make_unique<JsonLinesReport>(values, output);
}

void ListStatistics::add(const ParseResult& result) {
  ++statements_;
  if (!result) {
    ++rejected_;
    return;
  }
  const std::wstring provider = provider_of(result);
  ++providers_[provider.starts_with(L"LIB=") ? "LIB" : to_utf8(provider)];
  for (const Pair& pair : result.pairs) {
    const KeyInfo& info = key_info(pair.key_type);
    const std::wstring name = key_name(pair);
    ++options_[info.is_user_key ? "(user's own)" : info.name];
    const auto value = [&] {
      const std::string known = value_name(pair.key_type, pair.value_type);
      return known.empty() ? to_utf8(pair.value) : known;
    };
    if (pair.key_type == TAVO_PARSER_CMN_PARM_METHOD) ++methods_[value()];
    if (pair.key_type == TAVO_PARSER_CMN_PARM_ALGORITHM) ++algorithms_[value()];
  }
}

void ListStatistics::write(Stream& stream) const {
  constexpr size_t kBar = 40;
  stream.write(fmt::format("{} file{}, {} statement{}, {} rejected\n", files_,
                           files_ == 1 ? "" : "s", statements_, statements_ == 1 ? "" : "s",
                           rejected_));
  const auto section = [&](const char* title, const Counts& counts) {
    if (counts.empty()) return;
    stream.write(fmt::format("\n{}\n", stream.styled(Style::kBold, title)));
    std::vector<std::pair<std::string, size_t>> sorted(counts.begin(), counts.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    size_t longest = 0;
    for (const auto& [name, count] : sorted) longest = std::max(longest, name.size());
    for (const auto& [name, count] : sorted) {
      std::string bar;
      if (stream.is_terminal()) {
        const size_t length = (count * kBar + sorted.front().second - 1) / sorted.front().second;
        for (size_t i = 0; i < length; ++i) bar += "█";
        bar = "  " + stream.styled(Style::kNote, bar);
      }
      stream.write(
          fmt::format("  {:{}}  {:>9}{}\n", printable(from_utf8(name)), longest, count, bar));
    }
  };
  section("Providers", providers_);
  section("Options", options_);
  section("Methods", methods_);
  section("Algorithms", algorithms_);
}

std::string ListStatistics::to_json() const {
  const Json json = {{"files", files_},          {"statements", statements_},
                     {"rejected", rejected_},    {"providers", providers_},
                     {"options", options_},      {"methods", methods_},
                     {"algorithms", algorithms_}};
  return json_line(json);
}

}  // namespace tavo::cli
