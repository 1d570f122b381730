#include "cli/secrets/damaged_statements.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "TAVOParserCpp.hpp"

namespace tavo_test {
namespace {

constexpr std::string_view kSigns = "\"'=,;:()/\\#@*.-_+ \n|";

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

void replace_all(std::string& text, std::string_view what, const std::string& by) {
  for (size_t at = text.find(what); at != text.npos; at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
}

}  // namespace

// Values as people write them: quoted or not, with signs of the language inside, over two lines.
std::string DamagedStatements::secret(const std::string& marker) {
  static const std::vector<std::string> forms = {"\"M\"",
                                                 "\"M\"",
                                                 "M",
                                                 "\"a, ID=M, b\"",
                                                 "\"Server=db;Uid=sa;Pwd=M\"",
                                                 "\"x\\\"M\"",
                                                 "\"x\\\", ID=M, y\"",
                                                 "\"two\nlines M\nand more\"",
                                                 "'M'",
                                                 "\"M==\"",
                                                 "\"M/*x\"",
                                                 "\"//M\"",
                                                 "\"a b M\"",
                                                 "\"CASE=M\"",
                                                 "\"M, SRC=x\"",
                                                 "\"x,\nPRO=M\"",
                                                 "\"(M)\"",
                                                 "\"@M\"",
                                                 "@M",
                                                 "#M",
                                                 "HMAC(\"M\")",
                                                 "Server=db,Pwd=M",
                                                 "\"\\\"M\\\"\"",
                                                 "\"/*\"M",
                                                 "M\"",
                                                 "\"M",
                                                 "\"LIB=M\""};
  std::string text = one_of(forms);
  replace_all(text, "M", marker);
  return text;
}

std::string DamagedStatements::statement(const std::string& marker) {
  static const std::vector<std::string> frames = {
      "PRO=LKP, SEARCH=\"a\", DEST=\"b\", REPLACE=\"c\", PASS=%, ID=me, CONN=%",
      "PRO=LKP, CONN=%, USER=sa, PASS=%, SRCH=\"a,b\", CACHE=NO",
      "PRO=HASH_LKP, ID=\"x\", PASS = % , SRC=\"y\", DEST=\"z\", SEED=%",
      "PRO=AFF, MTD=REP, ALGO=FPE, KEY=%, SEED=%, COPY=(1,4)(7,2,\"X\")",
      "PRO=AFF,MTD=HASH,SEED=%,WHENMATCH=PREFIX(\"ab\"),LEN=4",
      "PRO=HASH, DSTFLD=X, SEED=%, FLDDEF1=(NAME=\"n\", DT=CHAR, LEN=5)",
      "pro=eml, mtd=rep, /* about */ seed=%, dom=KEY, pat=6C // end\n, sep=.",
      "PRO=HASH,\n  SEED=%,\n  ALGO=SHA256, // choice\n  DSTFLD=ADDRESS\n",
      "PRO=DS, SWAPFIELD=\"a\", SEED=%, TRCLEVEL=\"OFF\"",
      "LIB=mine, pw=%, db_pw=%, color=red, pin=%",
      "LIBRARY=mine, K=%, FLDDEF1=(NAME=x,DT=CHAR), ID=%, USER=%, token=%",
      "PRO=HASH, DSTFLD=X\nSEED=%",
      "PRO=LKP, USER=sa, PASS=/* keep */% /* so */, ID=x",
      "PRO=RAN_LKP, DEST=\"b\", REPLACE=\"c\" PASS=%"};
  std::string text = one_of(frames);
  for (size_t at = text.find('%'); at != text.npos; at = text.find('%', at)) {
    const std::string value = secret(marker);
    text.replace(at, 1, value);
    at += value.size();
  }
  return text;
}

void DamagedStatements::exchange_signs(std::string& text) {
  std::vector<size_t> signs;
  for (size_t i = 0; i < text.size(); ++i) {
    if (std::ispunct(static_cast<unsigned char>(text[i])) != 0) signs.push_back(i);
  }
  if (signs.size() < 2) return;
  std::swap(text[signs[below(signs.size())]], text[signs[below(signs.size())]]);
}

void DamagedStatements::damage_once(std::string& text) {
  if (text.size() < 2) return;
  const size_t at = below(text.size());
  const char sign = kSigns[below(kSigns.size())];
  switch (below(9)) {
    case 0: text.erase(at, 1 + below(4)); break;
    case 1: text.insert(at, 1, sign); break;
    case 2: text[at] = sign; break;
    case 3: text.insert(at, 1, text[at]); break;
    case 4: std::swap(text[at], text[std::min(at + 1, text.size() - 1)]); break;
    case 5: exchange_signs(text); break;
    case 6: text.insert(at, below(2) == 0 ? "//" : "/*"); break;
    case 7: text[at] = static_cast<char>('A' + below(26)); break;
    default: text.resize(at + 1); break;
  }
}

std::string DamagedStatements::damaged(std::string text) {
  for (size_t left = 1 + below(3); left > 0; --left) damage_once(text);
  return text;
}

std::vector<std::string> damaged_at_every_byte(const std::string& text) {
  std::vector<std::string> all;
  for (size_t at = 0; at < text.size(); ++at) {
    all.push_back(text.substr(0, at) + text.substr(at + 1));
    all.push_back(text.substr(0, at + 1));
    for (const char sign : kSigns) {
      std::string changed = text;
      changed[at] = sign;
      all.push_back(changed);
      all.push_back(text.substr(0, at) + sign + text.substr(at));
    }
    if (at + 1 == text.size()) continue;
    std::string swapped = text;
    std::swap(swapped[at], swapped[at + 1]);
    all.push_back(swapped);
  }
  return all;
}

std::string leak_in(const std::string& shown, const std::string& marker) {
  const std::string folded = lower(shown);
  const std::string wanted = lower(marker);
  for (size_t i = 0; i + kMarkerPart <= wanted.size(); ++i) {
    const std::string part = wanted.substr(i, kMarkerPart);
    if (folded.find(part) != folded.npos) return part;
  }
  return "";
}

std::string marker_of(const std::string& text) {
  for (const std::string& marker : kMarkers) {
    if (!leak_in(text, marker).empty()) return marker;
  }
  return "";
}

bool stores_marker_openly(const std::string& statement, const std::string& marker) {
  constexpr std::array kSecretKeys = {
      TAVO_PARSER_LDS_PARM_PASSWORD, TAVO_PARSER_LDS_PARM_CONNECTION_STRING,
      TAVO_PARSER_AFF_PARM_KEY, TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_USER_PROVIDER_KEY};
  for (const tavo::Pair& pair : tavo::parse(std::string_view(statement)).pairs) {
    const bool secret =
        std::find(kSecretKeys.begin(), kSecretKeys.end(), pair.key_type) != kSecretKeys.end();
    if (!leak_in(tavo::to_utf8(pair.key), marker).empty()) return true;
    const bool named =
        pair.value_type == TAVO_PARSER_SEED_ENVVAR || pair.value_type == TAVO_PARSER_SEED_FLDNAME;
    if ((!secret || named) && !leak_in(tavo::to_utf8(pair.value), marker).empty()) return true;
  }
  return false;
}

}  // namespace tavo_test
