// The C ABI of libTAVOParser for Node, through N-API. Strings are UTF-16, and places count UTF-16
// code units, like JavaScript string indices.
#include <node_api.h>

#include <cstdint>
#include <string>
#include <vector>

#include "TAVOBuilder.h"
#include "TAVODiagnostics.h"
#include "TAVOLanguage.h"
#include "TAVOParser.h"
#include "TAVOParserSimple.h"
#ifdef TAVO_WITH_LAYOUT
#include "layout.h"
#endif

namespace {

// ---- values ------------------------------------------------------------------------------------

napi_value number(napi_env env, double value) {
  napi_value result;
  napi_create_double(env, value, &result);
  return result;
}
napi_value boolean(napi_env env, bool value) {
  napi_value result;
  napi_get_boolean(env, value, &result);
  return result;
}
napi_value text(napi_env env, const char* value) {
  napi_value result;
  napi_create_string_utf8(env, value == nullptr ? "" : value, NAPI_AUTO_LENGTH, &result);
  return result;
}
napi_value undefined(napi_env env) {
  napi_value result;
  napi_get_undefined(env, &result);
  return result;
}
napi_value array(napi_env env) {
  napi_value result;
  napi_create_array(env, &result);
  return result;
}
void append(napi_env env, napi_value list, napi_value value) {
  uint32_t length = 0;
  napi_get_array_length(env, list, &length);
  napi_set_element(env, list, length, value);
}

class Object {
 public:
  explicit Object(napi_env env) : env_(env) {
    napi_create_object(env, &value_);
  }
  Object& set(const char* name, napi_value value) {
    napi_set_named_property(env_, value_, name, value);
    return *this;
  }
  Object& set(const char* name, double value) {
    return set(name, number(env_, value));
  }
  Object& set(const char* name, const char* value) {
    return set(name, text(env_, value));
  }
  napi_value value() const {
    return value_;
  }

 private:
  napi_env env_;
  napi_value value_;
};

// The arguments of a call.
class Call {
 public:
  Call(napi_env env, napi_callback_info info) : env_(env) {
    napi_get_cb_info(env, info, &count_, values_, nullptr, nullptr);
  }

  std::u16string utf16(size_t i) const {
    size_t length = 0;
    if (i >= count_ ||
        napi_get_value_string_utf16(env_, values_[i], nullptr, 0, &length) != napi_ok) {
      return {};
    }
    std::u16string result(length + 1, u'\0');
    napi_get_value_string_utf16(env_, values_[i], result.data(), length + 1, &length);
    result.resize(length);
    return result;
  }
  std::string utf8(size_t i) const {
    size_t length = 0;
    if (i >= count_ ||
        napi_get_value_string_utf8(env_, values_[i], nullptr, 0, &length) != napi_ok) {
      return {};
    }
    std::string result(length + 1, '\0');
    napi_get_value_string_utf8(env_, values_[i], result.data(), length + 1, &length);
    result.resize(length);
    return result;
  }
  uint32_t integer(size_t i) const {
    uint32_t value = 0;
    if (i < count_) napi_get_value_uint32(env_, values_[i], &value);
    return value;
  }
  bool is_number(size_t i) const {
    napi_valuetype type = napi_undefined;
    return i < count_ && napi_typeof(env_, values_[i], &type) == napi_ok && type == napi_number;
  }
  int64_t long_integer(size_t i) const {
    int64_t value = 0;
    if (i < count_) napi_get_value_int64(env_, values_[i], &value);
    return value;
  }
  std::string bytes(size_t i) const {
    void* data = nullptr;
    size_t length = 0;
    if (i >= count_ || napi_get_buffer_info(env_, values_[i], &data, &length) != napi_ok) return {};
    return std::string(static_cast<const char*>(data), length);
  }
  napi_value value(size_t i) const {
    return values_[i];
  }

 private:
  static constexpr size_t kMost = 4;
  napi_env env_;
  size_t count_ = kMost;
  napi_value values_[kMost] = {};
};

// ---- parse -------------------------------------------------------------------------------------

napi_value read_json(napi_env env, const void* data, size_t size, TAVOReadOptions options) {
  options.size = sizeof options;
  options.offsetUnit = TAVO_COUNT_UTF16;
  const size_t needed = TAVOParser_ReadJson(data, size, &options, nullptr, 0);
  std::string json(needed, '\0');
  if (needed == 0 || TAVOParser_ReadJson(data, size, &options, json.data(), needed) != needed) {
    napi_throw_error(env, nullptr, "no memory for the result");
    return nullptr;
  }
  napi_value result;
  napi_create_string_utf8(env, json.data(), needed - 1, &result);
  return result;
}

// (statement) -> JSON
napi_value read_text(napi_env env, napi_callback_info info) {
  const std::u16string statement = Call(env, info).utf16(0);
  TAVOReadOptions options{};
  options.encoding = TAVO_TEXT_UTF16;
  return read_json(env, statement.data(), statement.size() * sizeof(char16_t), options);
}

// (bytes, code page or 0 for UTF-8) -> JSON
napi_value read_bytes(napi_env env, napi_callback_info info) {
  const Call call(env, info);
  const std::string bytes = call.bytes(0);
  TAVOReadOptions options{};
  options.codePage = call.integer(1);
  options.encoding = options.codePage == 0 ? TAVO_TEXT_UTF8 : TAVO_TEXT_CODE_PAGE;
  return read_json(env, bytes.data(), bytes.size(), options);
}

// ---- diagnose ----------------------------------------------------------------------------------

// A statement as wide text, and the UTF-16 offset of each of its characters.
struct WideStatement {
  std::vector<wchar_t> characters;
  std::vector<uint32_t> units;  // one per character, and the end

  explicit WideStatement(const std::u16string& text) {
    for (size_t i = 0; i < text.size(); ++i) {
      units.push_back(static_cast<uint32_t>(i));
      uint32_t c = text[i];
      const bool pair = c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
                        text[i + 1] < 0xE000;
      if (pair) c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
      characters.push_back(static_cast<wchar_t>(c));
    }
    units.push_back(static_cast<uint32_t>(text.size()));
  }
  uint32_t unit(uint32_t character) const {
    return character < units.size() ? units[character] : units.back();
  }
};

struct Visit {
  napi_env env;
  const WideStatement& statement;
  napi_value list;

  Object place(uint32_t offset, uint32_t length) const {
    const uint32_t begin = statement.unit(offset);
    Object object(env);
    object.set("offset", begin).set("length", statement.unit(offset + length) - begin);
    return object;
  }
};

napi_value expected_of(napi_env env, const TAVODiagnostic* diagnostic) {
  napi_value list = array(env);
  for (uint32_t i = 0; i < diagnostic->expected; ++i) {
    const uint32_t token = TAVODiagnostic_GetExpected(diagnostic, i);
    uint32_t count = 0;
    while (const char* spelling = TAVOLanguage_GetSpelling(token, count)) {
      append(env, list, text(env, spelling));
      ++count;
    }
    TAVOTokenInfo token_info{};
    if (count == 0 && TAVOLanguage_GetToken(token, &token_info) == 0) {
      append(env, list, text(env, token_info.name));
    }
  }
  return list;
}

napi_value related_of(const Visit& visit, const TAVODiagnostic* diagnostic) {
  napi_value list = array(visit.env);
  TAVORelatedRange range{};
  for (uint32_t i = 0; i < diagnostic->related; ++i) {
    if (TAVODiagnostic_GetRelated(diagnostic, i, &range) != 0) continue;
    append(visit.env, list,
           visit.place(range.offset, range.length).set("message", range.message).value());
  }
  return list;
}

std::u16string to_utf16(const wchar_t* characters, uint32_t count) {
  std::u16string result;
  for (uint32_t i = 0; i < count; ++i) {
    auto c = static_cast<uint32_t>(characters[i]);
    if (c > 0xFFFF) {
      c -= 0x10000;
      result += static_cast<char16_t>(0xD800 + (c >> 10));
      c = 0xDC00 + (c & 0x3FF);
    }
    result += static_cast<char16_t>(c);
  }
  return result;
}

napi_value fixes_of(const Visit& visit, const TAVODiagnostic* diagnostic) {
  napi_value list = array(visit.env);
  for (uint32_t i = 0; i < diagnostic->fixes; ++i) {
    TAVOFix fix{};
    if (TAVODiagnostic_GetFix(diagnostic, i, &fix) != 0) continue;
    napi_value edits = array(visit.env);
    for (uint32_t k = 0; k < fix.edits; ++k) {
      TAVOEdit edit{};
      if (TAVODiagnostic_GetEdit(diagnostic, i, k, &edit) != 0) continue;
      const std::u16string replacement = to_utf16(edit.replacement, edit.characters);
      napi_value value;
      napi_create_string_utf16(visit.env, replacement.data(), replacement.size(), &value);
      append(visit.env, edits, visit.place(edit.offset, edit.length).set("text", value).value());
    }
    append(visit.env, list,
           Object(visit.env)
               .set("title", fix.title)
               .set("safe", boolean(visit.env, fix.safe != 0))
               .set("placeholder", boolean(visit.env, fix.placeholder != 0))
               .set("edits", edits)
               .value());
  }
  return list;
}

uint32_t visit_diagnostic(const TAVODiagnostic* diagnostic, void* context) {
  const Visit& visit = *static_cast<const Visit*>(context);
  const char* const severity = diagnostic->severity == TAVO_SEVERITY_ERROR     ? "error"
                               : diagnostic->severity == TAVO_SEVERITY_WARNING ? "warning"
                                                                               : "hint";
  append(visit.env, visit.list,
         visit.place(diagnostic->offset, diagnostic->length)
             .set("rule", diagnostic->ruleName)
             .set("severity", severity)
             .set("number", diagnostic->number)
             .set("message", diagnostic->message)
             .set("recorded", boolean(visit.env, diagnostic->recorded != 0))
             .set("expected", expected_of(visit.env, diagnostic))
             .set("related", related_of(visit, diagnostic))
             .set("fixes", fixes_of(visit, diagnostic))
             .value());
  return 0;
}

// (statement) -> list of diagnostics, or a status
napi_value diagnose(napi_env env, napi_callback_info info) {
  const WideStatement statement(Call(env, info).utf16(0));
  Visit visit{env, statement, array(env)};
  const wchar_t nothing = 0;
  const uint32_t status = TAVOParser_Diagnose(
      statement.characters.empty() ? &nothing : statement.characters.data(),
      static_cast<uint32_t>(statement.characters.size()), visit_diagnostic, &visit);
  return status == 0 ? visit.list : number(env, status);
}

// ---- build -------------------------------------------------------------------------------------

class Builder {
 public:
  Builder(const std::string& provider, bool library) {
    status_ = library ? TAVOBuilder_NewLibrary(provider.c_str(), &builder_)
                      : TAVOBuilder_New(provider.c_str(), &builder_);
  }
  ~Builder() {
    TAVOBuilder_Free(builder_);
  }
  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;

  uint32_t status() const {
    return status_;
  }
  TAVOBuilder* get() const {
    return builder_;
  }

 private:
  TAVOBuilder* builder_ = nullptr;
  uint32_t status_;
};

napi_value problem_of(napi_env env, const Builder& builder, uint32_t status) {
  return Object(env)
      .set("problem", builder.get() == nullptr ? "" : TAVOBuilder_GetProblem(builder.get()))
      .set("number", builder.get() == nullptr
                         ? 0.0
                         : double{1.0} * TAVOBuilder_GetProblemNumber(builder.get()))
      .set("status", status)
      .value();
}

// (provider, is a library, [key, value, key, value ...]) -> statement, or the problem
napi_value build(napi_env env, napi_callback_info info) {
  const Call call(env, info);
  bool library = false;
  napi_get_value_bool(env, call.value(1), &library);
  const Builder builder(call.utf8(0), library);
  if (builder.status() != 0) return problem_of(env, builder, builder.status());
  uint32_t length = 0;
  napi_get_array_length(env, call.value(2), &length);
  for (uint32_t i = 0; i + 1 < length; i += 2) {
    napi_value key, value;
    napi_get_element(env, call.value(2), i, &key);
    napi_get_element(env, call.value(2), i + 1, &value);
    const auto utf8 = [&](napi_value from) {
      size_t size = 0;
      napi_get_value_string_utf8(env, from, nullptr, 0, &size);
      std::string result(size + 1, '\0');
      napi_get_value_string_utf8(env, from, result.data(), size + 1, &size);
      return result;
    };
    napi_valuetype type = napi_undefined;
    napi_typeof(env, value, &type);
    uint32_t status;
    if (type == napi_number) {
      int64_t integer = 0;
      napi_get_value_int64(env, value, &integer);
      status = TAVOBuilder_AddNumber(builder.get(), utf8(key).c_str(), integer);
    } else {
      status = TAVOBuilder_Add(builder.get(), utf8(key).c_str(), utf8(value).c_str());
    }
    if (status != 0) return problem_of(env, builder, status);
  }
  const size_t size = TAVOBuilder_GetStatement(builder.get(), nullptr, 0);
  if (size == 0) return problem_of(env, builder, TAVO_BUILD_RULE_VIOLATED);
  std::string statement(size, '\0');
  TAVOBuilder_GetStatement(builder.get(), statement.data(), size);
  return text(env, statement.c_str());
}

// ---- layout ------------------------------------------------------------------------------------

#ifdef TAVO_WITH_LAYOUT
// (statement, spelling, one option a line) -> layout, or undefined if rejected
napi_value lay_out(napi_env env, napi_callback_info info) {
  const Call call(env, info);
  const std::string statement = call.utf8(0);
  char* result = nullptr;
  const size_t size =
      tavo_lay_out(statement.data(), statement.size(), static_cast<int>(call.integer(1)),
                   call.integer(2) != 0, &result);
  if (result == nullptr) return undefined(env);
  napi_value value;
  napi_create_string_utf8(env, result, size, &value);
  tavo_free_layout(result);
  return value;
}
#endif

// ---- language ----------------------------------------------------------------------------------

napi_value spellings_of(napi_env env, uint32_t token) {
  napi_value list = array(env);
  for (uint32_t i = 0; const char* spelling = TAVOLanguage_GetSpelling(token, i); ++i) {
    append(env, list, text(env, spelling));
  }
  return list;
}

napi_value all_spellings(napi_env env, const uint32_t (&tokens)[4]) {
  napi_value list = array(env);
  for (const uint32_t token : tokens) {
    for (uint32_t i = 0; token != 0; ++i) {
      const char* spelling = TAVOLanguage_GetSpelling(token, i);
      if (spelling == nullptr) break;
      append(env, list, text(env, spelling));
    }
  }
  return list;
}

napi_value values_of(napi_env env, uint32_t statement, uint32_t option, uint32_t parameter) {
  napi_value list = array(env);
  TAVOValueInfo info{};
  for (uint32_t i = 0; TAVOLanguage_GetValue(statement, option, parameter, i, &info) == 0; ++i) {
    TAVOTokenInfo token{};
    TAVOLanguage_GetToken(info.tokenType, &token);
    append(env, list,
           Object(env)
               .set("spellings", spellings_of(env, info.tokenType))
               .set("token", token.name)
               .set("valueType", info.valueType)
               .set("meaning", TAVOLanguage_GetValueMeaning(statement, option, parameter, i))
               .value());
  }
  return list;
}

napi_value option_of(napi_env env, uint32_t statement, uint32_t option, uint32_t parameter) {
  TAVOOptionInfo info{};
  if (TAVOLanguage_GetOption(statement, option, parameter, &info) != 0) return nullptr;
  static constexpr const char* kSyntaxes[] = {"token", "string", "parameters"};
  napi_value parameters = array(env);
  for (uint32_t i = 0; parameter == TAVO_LANGUAGE_NO_PARAMETER && i < info.parameters; ++i) {
    append(env, parameters, option_of(env, statement, option, i));
  }
  TAVOMeaning meaning{};
  TAVOLanguage_GetOptionMeaning(statement, option, parameter, &meaning);
  return Object(env)
      .set("spellings", all_spellings(env, info.keywords))
      .set("keyType", info.keyType)
      .set("syntax", kSyntaxes[info.syntax])
      .set("values", values_of(env, statement, option, parameter))
      .set("parameters", parameters)
      .set("meaning", meaning.meaning)
      .set("example", meaning.example)
      .value();
}

// () -> the tables
napi_value language(napi_env env, napi_callback_info) {
  napi_value list = array(env);
  TAVOStatementInfo info{};
  for (uint32_t i = 0; TAVOLanguage_GetStatement(i, &info) == 0; ++i) {
    napi_value options = array(env);
    for (uint32_t k = 0; k < info.options; ++k) {
      append(env, options, option_of(env, i, k, TAVO_LANGUAGE_NO_PARAMETER));
    }
    napi_value rules = array(env);
    TAVORuleInfo rule{};
    for (uint32_t k = 0; TAVOLanguage_GetRule(i, k, &rule) == 0; ++k) {
      napi_value keys = array(env);
      for (const uint32_t key : rule.keys) {
        if (key != 0) append(env, keys, number(env, key));
      }
      append(env, rules, Object(env).set("number", rule.number).set("keyTypes", keys).value());
    }
    const bool named = TAVOLanguage_GetSpelling(info.nameToken, 0) != nullptr;
    TAVOMeaning meaning{};
    TAVOLanguage_GetStatementMeaning(i, &meaning);
    append(env, list,
           Object(env)
               .set("names",
                    named ? spellings_of(env, info.nameToken) : all_spellings(env, info.keywords))
               .set("options", options)
               .set("rules", rules)
               .set("meaning", meaning.meaning)
               .set("example", meaning.example)
               .value());
  }
  return list;
}

// ---- module ------------------------------------------------------------------------------------

void stop(void*) {
  Parser_Term();
}

napi_value init(napi_env env, napi_value exports) {
  // Diagnostics of numbers need the platform's conversions. Init and Term calls are counted.
  if (Parser_Init() != 0) {
    napi_throw_error(env, nullptr, "the library does not start");
    return nullptr;
  }
  napi_add_env_cleanup_hook(env, stop, nullptr);
  const struct {
    const char* name;
    napi_callback function;
  } functions[] = {
      {"readText", read_text}, {"readBytes", read_bytes}, {"diagnose", diagnose},
      {"build", build},        {"language", language},
#ifdef TAVO_WITH_LAYOUT
      {"layOut", lay_out},
#endif
  };
  for (const auto& [name, function] : functions) {
    napi_value value;
    napi_create_function(env, name, NAPI_AUTO_LENGTH, function, nullptr, &value);
    napi_set_named_property(env, exports, name, value);
  }
  return exports;
}

}  // namespace

NAPI_MODULE(tavoparser, init)
