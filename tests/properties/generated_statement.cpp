#include "properties/generated_statement.h"

#include <stdexcept>

#include "TAVOLanguage.h"

namespace tavo_test {
namespace {

constexpr uint32_t kNoParameter = TAVO_LANGUAGE_NO_PARAMETER;

// ---- the tables, walked ------------------------------------------------------------------------

template <typename Info, typename Get>
std::vector<Info> all(Get get) {
  std::vector<Info> list;
  Info info{};
  for (uint32_t i = 0; get(i, &info) == 0; ++i) list.push_back(info);
  return list;
}

struct Option {
  TAVOOptionInfo info{};
  std::vector<TAVOValueInfo> values;
  std::vector<Option> parameters;
};

struct Statement {
  TAVOStatementInfo info{};
  std::vector<Option> options;
};

Option read_option(uint32_t statement, uint32_t option, uint32_t parameter) {
  Option read;
  TAVOLanguage_GetOption(statement, option, parameter, &read.info);
  read.values = all<TAVOValueInfo>([&](uint32_t i, TAVOValueInfo* info) {
    return TAVOLanguage_GetValue(statement, option, parameter, i, info);
  });
  for (uint32_t i = 0; parameter == kNoParameter && i < read.info.parameters; ++i) {
    read.parameters.push_back(read_option(statement, option, i));
  }
  return read;
}

const std::vector<Statement>& language() {
  static const std::vector<Statement> statements = [] {
    std::vector<Statement> list;
    for (const TAVOStatementInfo& info : all<TAVOStatementInfo>(TAVOLanguage_GetStatement)) {
      list.push_back({info, {}});
      const auto statement = static_cast<uint32_t>(list.size() - 1);
      for (uint32_t i = 0; i < info.options; ++i) {
        list.back().options.push_back(read_option(statement, i, kNoParameter));
      }
    }
    return list;
  }();
  return statements;
}

// ---- texts of tokens ---------------------------------------------------------------------------

template <typename T>
const T& one_of(const std::vector<T>& list) {
  return list[*rc::gen::inRange<size_t>(0, list.size())];
}

bool coin() {
  return *rc::gen::inRange(0, 2) == 1;
}

std::wstring number(int from, int to) {
  return std::to_wstring(*rc::gen::inRange(from, to));
}

std::wstring characters_of(const std::wstring& set, size_t longest) {
  std::wstring text;
  for (size_t left = *rc::gen::inRange<size_t>(0, longest + 1); left > 0; --left) {
    text += set[*rc::gen::inRange<size_t>(0, set.size())];
  }
  return text;
}

std::wstring word() {
  return L"zq_" + characters_of(L"abcXYZ019-.:_", 12);  // no keyword begins like that
}

std::wstring quoted() {
  std::wstring text = L"\"";
  for (size_t left = *rc::gen::inRange<size_t>(0, 12); left > 0; --left) {
    const std::wstring one = characters_of(L"ab 12,=()/*#@'\u00e9\u4e00\n", 1);
    text += coin() ? one : L"\\\"";
  }
  return text + L"\"";
}

std::wstring in_any_case(const char* spelling) {
  std::wstring text;
  for (; *spelling != '\0'; ++spelling) {
    const auto c = static_cast<wchar_t>(*spelling);
    text += c >= L'A' && c <= L'Z' && coin() ? c + (L'a' - L'A') : c;
  }
  return text;
}

std::wstring copy_ranges() {
  std::wstring text;
  do {
    text += L"(" + number(-9, 99) + L"," + number(0, 99) + (coin() ? L"," + quoted() : L"") + L")";
  } while (coin());
  return text;
}

std::wstring pattern(uint32_t type) {
  switch (type) {
    case INTEGER: return (coin() ? L"" : L"+") + number(0, 99999);
    case TAVO_PARSER_COPY_COL_SYNTAX: return copy_ranges();
    case TAVO_PARSER_ENV_VAR: return L"@" + word();
    case TAVO_PARSER_SEED_FLDNAME: return L"#" + (coin() ? word() : quoted());
    case TAVO_PARSER_STRING_WITHOUT_QUOTES: return word();
    case TAVO_PARSER_STRING_WITH_QUOTES: return quoted();
    case TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX:
      return coin() ? L"PREFIX(" + quoted() + L")" : L"OVERLAY(1,2," + quoted() + L")";
    default: throw std::logic_error("no text for token " + std::to_string(type));
  }
}

std::wstring token_text(uint32_t type) {
  TAVOTokenInfo info{};
  TAVOLanguage_GetToken(type, &info);
  if (info.kind == TAVO_KIND_PATTERN) return pattern(type);
  const char* spelling =
      TAVOLanguage_GetSpelling(type, *rc::gen::inRange<uint32_t>(0, info.spellings));
  if (info.kind == TAVO_KIND_NUMBERED_KEYWORD) {
    return in_any_case(spelling) + (coin() ? number(1, 100) : L"");
  }
  return in_any_case(spelling);
}

std::wstring gap() {
  static const std::vector<std::wstring> gaps = {L"",   L"",     L"",     L" ",
                                                 L"\n", L" \t ", L"/**/", L"//x\n"};
  return one_of(gaps);
}

// ---- statements --------------------------------------------------------------------------------

std::wstring keyword_of(const uint32_t (&keywords)[4]) {
  std::vector<uint32_t> used;
  for (uint32_t keyword : keywords) {
    if (keyword != 0) used.push_back(keyword);
  }
  return token_text(one_of(used));
}

class Builder {
 public:
  explicit Builder(const Statement& statement) : statement_(statement) {}

  GeneratedStatement build() {
    const TAVOStatementInfo& info = statement_.info;
    built_.text = gap() + keyword_of(info.keywords) + gap() + L"=" + gap();
    built_.text += info.keyType == 0 ? L"\"OFF\"" : token_text(info.nameToken);
    if (info.keyType != 0) built_.keys.push_back(info.keyType);
    const size_t most = statement_.options.empty() ? 0 : 6;
    for (size_t left = *rc::gen::inRange<size_t>(0, most + 1); left > 0; --left) {
      built_.text += gap() + L"," + gap();
      add(one_of(statement_.options));
      ++built_.options;
    }
    return built_;
  }

 private:
  void add(const Option& option) {
    const bool pair_of_the_users = option.info.keywords[0] == TAVO_PARSER_STRING_WITHOUT_QUOTES;
    built_.text += pair_of_the_users ? word() : keyword_of(option.info.keywords);
    built_.text += gap() + L"=" + gap();
    switch (option.info.syntax) {
      case TAVO_SYNTAX_PARAMETERS: return add_parameters(option);
      case TAVO_SYNTAX_STRING:
        built_.text += coin() ? word() : quoted();
        built_.keys.push_back(option.info.keyType);
        return;
      default: return add_value(option);
    }
  }
  void add_parameters(const Option& option) {
    built_.text += L"(" + gap();
    for (bool first = true; first || coin(); first = false) {
      if (!first) built_.text += gap() + L"," + gap();
      add(one_of(option.parameters));
    }
    built_.text += gap() + L")";
  }
  void add_value(const Option& option) {
    const TAVOValueInfo& value = one_of(option.values);
    built_.text += option.info.setsTraceLevel != 0 ? L"\"OFF\"" : token_text(value.tokenType);
    built_.keys.push_back(value.keyType);
  }

  const Statement& statement_;
  GeneratedStatement built_;
};

}  // namespace

rc::Gen<GeneratedStatement> any_statement() {
  return rc::gen::exec([] { return Builder(one_of(language())).build(); });
}

rc::Gen<std::wstring> any_damaged_statement() {
  return rc::gen::exec([] {
    std::wstring text = (*any_statement()).text;
    for (size_t left = *rc::gen::inRange<size_t>(1, 4); left > 0 && text.size() > 1; --left) {
      const size_t place = *rc::gen::inRange<size_t>(0, text.size());
      const std::wstring other = characters_of(L",=()\"\\'#@+-/*AZ09 \n%\u00e9\U0001f600", 1);
      switch (*rc::gen::inRange(0, 4)) {
        case 0: text.erase(place, *rc::gen::inRange<size_t>(1, 5)); break;
        case 1: text.insert(place, other); break;
        case 2: text.replace(place, 1, other); break;
        default: text.resize(place + 1); break;
      }
    }
    return text.empty() ? std::wstring(L"=") : text;
  });
}

}  // namespace tavo_test
