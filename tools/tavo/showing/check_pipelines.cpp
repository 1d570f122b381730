// The findings of `tavo check` for build pipelines: GitHub annotations, the GitLab code quality
// report, JUnit and Checkstyle.
#include <fmt/format.h>

#include <map>
#include <nlohmann/json.hpp>

#include "showing/check_report.h"
#include "statement/finding_identity.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr char kNotRead[] = "not-read";

// A finding's place in its file: lines and columns from 1.
struct FilePlace {
  size_t line;
  size_t column;
  size_t end_line;
  size_t end_column;
};

FilePlace place_of(const CheckedStatement& statement, const Finding& finding) {
  const size_t above = statement.first_line - 1;
  return {above + finding.place.line, finding.place.column, above + finding.place.end_line,
          finding.place.end_column};
}

std::string title_of(const Finding& finding) {
  return finding.number == 0 ? finding.rule : fmt::format("{} {}", finding.number, finding.rule);
}

// These readers identify a file by its path in the project.
std::string path_of(std::string_view file) {
  while (file.starts_with("./")) file.remove_prefix(2);
  return printable_bytes(file);
}

std::string replaced(const std::string& text,
                     const std::vector<std::pair<char, std::string_view>>& escapes) {
  std::string result;
  for (const char c : text) {
    const auto escape = std::find_if(escapes.begin(), escapes.end(),
                                     [&](const auto& known) { return known.first == c; });
    escape == escapes.end() ? result += c : result += escape->second;
  }
  return result;
}

// ---- GitHub -------------------------------------------------------------------------------------

// One workflow command for each finding. A line end would end it, a comma ends a property.
class GithubReport : public CheckReport {
 public:
  explicit GithubReport(Stream& out) : out_(out) {}

  void add(const CheckedStatement& statement, const Finding& finding) override {
    const FilePlace place = place_of(statement, finding);
    std::string text = printable(finding.message);
    for (const FoundFix& fix : finding.fixes) text += "\n" + printable_bytes(help_of(fix));
    out_.write(fmt::format("::{} file={},line={},endLine={},col={},endColumn={},title={}::{}\n",
                           severity_name(finding), property(path_of(statement.file)), place.line,
                           place.end_line, place.column, place.end_column,
                           property(title_of(finding)), data(text)));
  }
  void add_unread(const std::string& file, const std::string& why) override {
    out_.write(fmt::format("::error file={},title={}::{}\n", property(path_of(file)), kNotRead,
                           data("this was not read: " + printable_bytes(why))));
  }
  void end(const CheckTotals& totals) override {
    if (totals.hidden.all() == 0) return;
    out_.write(fmt::format("::notice title=tavo check::{}\n", data(hidden_text(totals.hidden))));
  }

 private:
  static std::string data(const std::string& text) {
    return replaced(text, {{'%', "%25"}, {'\r', "%0D"}, {'\n', "%0A"}});
  }
  static std::string property(const std::string& text) {
    return replaced(data(text), {{':', "%3A"}, {',', "%2C"}});
  }

  Stream& out_;
};

// ---- GitLab -------------------------------------------------------------------------------------

// The fingerprint identifies a finding in the next run, wherever it has moved. It is made from the
// shown text, never from a secret. One entry for each finding stays in memory.
class GitlabReport : public CheckReport {
 public:
  explicit GitlabReport(Stream& out) : out_(out), list_(out) {}

  void begin() override {
    out_.write("[");
  }
  void add(const CheckedStatement& statement, const Finding& finding) override {
    const FilePlace place = place_of(statement, finding);
    add(statement.file, finding.rule, to_utf8(finding.message),
        finding.severity == Severity::kError ? "major" : "minor",
        fmt::format("{}\n{}", finding.number, identity_of(statement.text)), place.line,
        place.end_line);
  }
  void add_unread(const std::string& file, const std::string& why) override {
    add(file, kNotRead, "This was not read: " + printable_bytes(why), "blocker", "", 1, 1);
  }
  void end(const CheckTotals&) override {
    out_.write("\n]\n");
  }

 private:
  void add(const std::string& file, const std::string& rule, const std::string& description,
           const char* severity, const std::string& identity, size_t begin, size_t end) {
    const std::string path = path_of(file);
    const std::string kind = hash_of(fmt::format("{}\n{}\n{}", path, rule, identity));
    const Json json = {{"description", description},
                       {"check_name", rule},
                       {"fingerprint", hash_of(fmt::format("{}{}", kind, ++seen_[kind]))},
                       {"severity", severity},
                       {"location", {{"path", path}, {"lines", {{"begin", begin}, {"end", end}}}}}};
    list_.add(escape_json(json.dump()));
  }

  // FNV-1a, twice: an identifier, not a protection.
  static std::string hash_of(const std::string& text) {
    constexpr uint64_t kPrime = 0x100000001B3u;
    uint64_t a = 0xCBF29CE484222325u, b = 0x84222325CBF29CE4u;
    for (const char c : text) {
      a = (a ^ static_cast<unsigned char>(c)) * kPrime;
      b = (b + static_cast<unsigned char>(c)) * kPrime ^ (b >> 29);
    }
    return fmt::format("{:016x}{:016x}", a, b);
  }

  Stream& out_;
  StreamedList list_;
  std::map<std::string, size_t> seen_;
};

// ---- XML ----------------------------------------------------------------------------------------

constexpr char kXml[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string xml(const std::string& text) {
  return replaced(text, {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}});
}

class CheckstyleReport : public CheckReport {
 public:
  explicit CheckstyleReport(Stream& out) : out_(out) {}

  void begin() override {
    out_.write(fmt::format("{}<checkstyle version=\"10.0\">\n", kXml));
  }
  void add(const CheckedStatement& statement, const Finding& finding) override {
    const FilePlace place = place_of(statement, finding);
    open(statement.file);
    write_error(place.line, place.column, severity_name(finding), printable(finding.message),
                finding.rule);
  }
  void add_unread(const std::string& file, const std::string& why) override {
    open(file);
    write_error(1, 1, "error", "this was not read: " + printable_bytes(why), kNotRead);
  }
  void end(const CheckTotals&) override {
    close();
    out_.write("</checkstyle>\n");
  }

 private:
  void open(const std::string& file) {
    if (file_ == file) return;
    close();
    file_ = file;
    out_.write(fmt::format("  <file name=\"{}\">\n", xml(path_of(file))));
  }
  void close() {
    if (file_) out_.write("  </file>\n");
    file_.reset();
  }
  void write_error(size_t line, size_t column, const char* severity, const std::string& message,
                   const std::string& rule) {
    out_.write(
        fmt::format("    <error line=\"{}\" column=\"{}\" severity=\"{}\" message=\"{}\" "
                    "source=\"tavo.{}\"/>\n",
                    line, column, severity, xml(message), xml(rule)));
  }

  Stream& out_;
  std::optional<std::string> file_;
};

// A file with findings is a suite, an error a failed test, a warning a skipped one. A final summary
// suite keeps the report of a clean run from being empty. A suite begins with its counts, so the
// findings of one file stay in memory until the next.
class JunitReport : public CheckReport {
 public:
  explicit JunitReport(Stream& out) : out_(out) {}

  void begin() override {
    out_.write(fmt::format("{}<testsuites name=\"tavo check\">\n", kXml));
  }
  void add(const CheckedStatement& statement, const Finding& finding) override {
    const FilePlace place = place_of(statement, finding);
    const std::string message = xml(printable(finding.message));
    const std::string at = fmt::format("{}:{}", place.line, place.column);
    const bool error = finding.severity == Severity::kError;
    open(statement.file);
    ++(error ? suite_.failures : suite_.skipped);
    add_case(statement.file, fmt::format("{} {}", at, title_of(finding)),
             error ? fmt::format("<failure type=\"{}\" message=\"{}\">{}:{}: {}</failure>",
                                 xml(title_of(finding)), message, xml(path_of(statement.file)), at,
                                 message)
                   : fmt::format("<skipped message=\"{}\"/>", message));
  }
  void add_unread(const std::string& file, const std::string& why) override {
    const std::string message = xml(printable_bytes(why));
    open(file);
    ++suite_.errors;
    add_case(file, kNotRead, fmt::format("<error type=\"{}\" message=\"{}\"/>", kNotRead, message));
  }
  void end(const CheckTotals& totals) override {
    close();
    std::string text = fmt::format("{} statements in {} files", totals.statements, totals.files);
    if (totals.hidden.all() != 0) text += ", " + hidden_text(totals.hidden);
    open("summary");
    add_case("summary", text, "");
    close();
    out_.write("</testsuites>\n");
  }

 private:
  struct Suite {
    std::string name;
    size_t tests = 0, failures = 0, errors = 0, skipped = 0;
    std::string cases;
  };

  void open(const std::string& file) {
    if (suite_.name == file) return;
    close();
    suite_.name = file;
  }
  void add_case(const std::string& file, const std::string& name, const std::string& verdict) {
    ++suite_.tests;
    suite_.cases +=
        fmt::format("    <testcase classname=\"{}\" name=\"{}\" time=\"0\">{}</testcase>\n",
                    xml(path_of(file)), xml(name), verdict);
  }
  void close() {
    if (suite_.tests != 0) {
      out_.write(
          fmt::format("  <testsuite name=\"{}\" tests=\"{}\" failures=\"{}\" errors=\"{}\" "
                      "skipped=\"{}\" time=\"0\">\n{}  </testsuite>\n",
                      xml(path_of(suite_.name)), suite_.tests, suite_.failures, suite_.errors,
                      suite_.skipped, suite_.cases));
    }
    suite_ = {};
  }

  Stream& out_;
  Suite suite_;
};

}  // namespace

std::unique_ptr<CheckReport> make_pipeline_report(const std::string& format, Stream& out) {
  if (format == "github") return std::make_unique<GithubReport>(out);
  if (format == "gitlab") return std::make_unique<GitlabReport>(out);
  if (format == "checkstyle") return std::make_unique<CheckstyleReport>(out);
  if (format == "junit") return std::make_unique<JunitReport>(out);
  return nullptr;
}

}  // namespace tavo::cli
