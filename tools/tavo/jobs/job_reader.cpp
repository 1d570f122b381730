#include "jobs/job_reader.h"

#include <fmt/format.h>

#include "terminal/visible_text.h"

namespace tavo::cli {

ParseResult parse_bytes(const std::string& bytes, std::optional<uint32_t> code_page) {
  return code_page ? parse(bytes, CodePage{*code_page, 0}) : parse(bytes);
}

JobTotals read_jobs(const JobOptions& options, Output& output,
                    const std::function<void(const JobStatement&)>& visit,
                    const std::function<void(const std::string&)>& begin_file) {
  JobTotals totals;
  const auto complain = [&](const std::string& name, const std::string& why) {
    ++totals.unreadable;
    output.complain(fmt::format("{}: {}", name, why));
  };
  const auto read = [&](const std::string& file) {
    try {
      const auto text = options.texts.find(file);
      Input input = text == options.texts.end() ? Input(file, options.input)
                                                : Input::of_text(text->second, text->first);
      const size_t number_of_file = totals.files++;
      if (begin_file) begin_file(input.name());
      StatementReader reader(input, options.layout);
      for (FileStatement statement; reader.next(statement);) {
        ++totals.statements;
        const ParseResult result = parse_bytes(statement.bytes, options.input.code_page);
        visit({input.name(), number_of_file, statement, result});
      }
    } catch (const InputError& error) {
      complain(file == "-" ? options.input.stdin_name : file, error.what());
    }
  };
  if (!options.texts.empty()) {
    for (const std::string& file : options.files) read(file);
    return totals;
  }
  list_files(options.files, options.selection, read, complain);
  return totals;
}

}  // namespace tavo::cli
