#include "soak/statements.h"

#include <cstdio>
#include <cstdlib>
#include <cwchar>

namespace soak {
namespace {

constexpr uint32_t kEntries = 24;
constexpr uint32_t kCharacters = 48;  // of each key and value buffer; longer text is truncated

std::vector<Statement> make_statements() {
  std::vector<Statement> all;
  const auto wide = [&all](std::wstring text) {
    all.emplace_back();
    all.back().wide = std::move(text);
  };
  const auto bytes = [&all](std::string text, uint32_t code_page) {
    all.emplace_back();
    all.back().bytes = std::move(text);
    all.back().code_page = code_page;
  };
  wide(L"PRO=CCN, PAT=6C");
  wide(L"PRO=HASH, DSTFLD=\"a \\\"b\\\" \u00E9\", ALGO=SHA256, SEED=HMAC");
  wide(L"PRO=EML, MTD=HASH, ALGO=SHA256, SEED=\"12\"");
  wide(L"LIB=MYLIB, A=1, B=\"x\", C=@HOME");
  wide(L"PRO=CCN, FLDDEF1=(NAME=A, LEN=3), FLDDEF2=(NAME=B, TYPE=CHAR)");
  wide(L"PRO=CCN /* \U0001F600 and " + std::wstring(600, L'x') + L" */, PAT=6C");
  wide(L"PRO=HASH, DSTFLD=\"" + std::wstring(300, L'v') + L"\"");  // truncated
  wide(L"TRCLEVEL=\"0\"");
  wide(L"PRO=CCN, TRCLEVEL=\"OFF\"");
  wide(L"PRO=HASH");  // 7144
  wide(L"PRO=CCN, FLDDEF1=(NAME=A), FLDDEF1=(NAME=B)");
  wide(L"PRO=CCN,\n NONSENSE=1");
  wide(L"PRO=CCN ; PAT=6C");
  wide(L"PRO=CCN // \n \"never closed");
  wide(L"");
  wide(L"PRO=CCN, TRCLEVEL=\"LOUD\"");
  wide(L"PRO=CCN \xD800");  // not valid Unicode
  bytes("PRO=HASH, DSTFLD=\"\xE9t\xE9\"", 819);
  bytes("PRO=HASH, DSTFLD=\"\xC3\xA9\"", 1208);
  bytes("PRO=HASH, DSTFLD=\"\xC3\"", 1208);  // malformed
  bytes("PRO=CCN, WRONG", 1208);
  bytes("PRO=CCN", 424242);  // no such code page
  std::wstring many = L"PRO=CCN";
  for (int i = 1; i < 100; ++i) {
    many += L", FLDDEF" + std::to_wstring(i) + L"=(NAME=N" + std::to_wstring(i) + L", LEN=10)";
  }
  wide(many);  // more pairs than the array holds
  return all;
}

std::vector<Statement>& own_statements() {
  static std::vector<Statement> all = make_statements();
  return all;
}

class Fingerprint {
 public:
  void add(uint64_t number) {
    value_ = (value_ ^ number) * 0x100000001B3u;
  }
  void add(const wchar_t* text) {
    for (; *text != L'\0'; ++text) add(static_cast<uint64_t>(*text));
    add(uint64_t{0xFFFFFFFF});
  }
  uint64_t value() const {
    return value_;
  }

 private:
  uint64_t value_ = 0xCBF29CE484222325u;
};

}  // namespace

std::string Statement::name() const {
  if (!is_wide()) return bytes;
  std::string name;
  for (const wchar_t c : wide.substr(0, 60)) name.push_back(c < 0x7F ? static_cast<char>(c) : '?');
  return name;
}

const std::vector<Statement>& statements() {
  return own_statements();
}

void learn_outcomes(uint32_t (*service)(RequestRecord*)) {
  size_t accepted = 0;
  for (Statement& statement : own_statements()) {
    for (const bool filling : {false, true}) {
      Request request(statement, filling);
      Outcome& outcome = filling ? statement.filling : statement.sizing;
      outcome.status = service(request.get());
      outcome.fingerprint = request.fingerprint();
    }
    accepted += statement.filling.status == 0 ? 1 : 0;
  }
  if (accepted >= 10 && own_statements().size() - accepted >= 10) return;
  std::fprintf(stderr, "soak: %zu statements are accepted\n", accepted);
  std::exit(1);
}

Request::Request(const Statement& statement, bool filling) {
  request_.sStructVer = TAVO_REQUEST_VERSION;
  if (statement.is_wide()) {
    const size_t characters = statement.wide.size();
    wide_ = std::make_unique<wchar_t[]>(characters);
    statement.wide.copy(wide_.get(), characters);
    wide_text_.text = wide_.get();
    request_.form = 'W';
    request_.textLength = static_cast<int32_t>(characters * sizeof(wchar_t));
    request_.parmText = &wide_text_;
  } else {
    bytes_ = std::make_unique<char[]>(statement.bytes.size());
    statement.bytes.copy(bytes_.get(), statement.bytes.size());
    byte_text_.codePage = statement.code_page;
    byte_text_.text = bytes_.get();
    request_.form = 'M';
    request_.textLength = static_cast<int32_t>(statement.bytes.size());
    request_.parmText = &byte_text_;
  }
  if (!filling) return;
  entries_.resize(kEntries);
  for (KeyValueEntry& entry : entries_) {
    entry.key = buffers_.emplace_back(std::make_unique<wchar_t[]>(kCharacters)).get();
    entry.value = buffers_.emplace_back(std::make_unique<wchar_t[]>(kCharacters)).get();
    entry.keySize = entry.valueSize = kCharacters * sizeof(wchar_t);
  }
  request_.pKeyValueArr = entries_.data();
  request_.capacity = kEntries;
}

uint64_t Request::fingerprint() const {
  Fingerprint print;
  print.add(static_cast<uint64_t>(request_.count));
  print.add(static_cast<uint64_t>(request_.maxKeySize));
  print.add(static_cast<uint64_t>(request_.maxValueSize));
  print.add(uint64_t{request_.errorFlag});
  for (int32_t i = 0; i < request_.count && !entries_.empty(); ++i) {
    const KeyValueEntry& entry = entries_[static_cast<size_t>(i)];
    print.add(uint64_t{entry.keyId});
    print.add(entry.key);
    print.add(uint64_t{entry.valueId});
    print.add(entry.value);
    print.add(uint64_t{entry.valueLength});
    print.add(uint64_t{entry.status});
  }
  return print.value();
}

}  // namespace soak
