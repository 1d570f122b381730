// The table engine over the runtime's tokens: what a parse of Parser_Service runs.
#include "Grammar/engine/engine.h"

#include <cstddef>

#include "Grammar/engine/table_engine.h"

extern "C" {
// The last key prefix that any thread built. Deliberately process-wide, since callers read it;
// parses use their own copies, so that threads never mix their keys.
wchar_t Work1[50] = {};
}

namespace tavo {
namespace {

static_assert(static_cast<uint32_t>(SyntaxError::kMismatchedToken) ==
              ANTLR3_MISMATCHED_TOKEN_EXCEPTION);
static_assert(static_cast<uint32_t>(SyntaxError::kNoViableAlternative) ==
              ANTLR3_NO_VIABLE_ALT_EXCEPTION);
static_assert(static_cast<uint32_t>(SyntaxError::kMismatchedSet) ==
              ANTLR3_MISMATCHED_SET_EXCEPTION);

// A caller's own token stream, with the interface of TokenWindow.
class StreamTokens {
 public:
  using Token = pANTLR3_COMMON_TOKEN;

  explicit StreamTokens(pANTLR3_TOKEN_STREAM stream) : stream_(stream) {}

  pANTLR3_COMMON_TOKEN current() {
    return stream_->_LT(stream_, 1);
  }
  pANTLR3_COMMON_TOKEN take() {
    pANTLR3_COMMON_TOKEN token = current();
    stream_->istream->consume(stream_->istream);
    return token;
  }
  static constexpr bool skip(Sign) {
    return false;
  }
  static pANTLR3_COMMON_TOKEN take_after(Sign) {
    return nullptr;  // in a stream every sign is a token
  }

 private:
  pANTLR3_TOKEN_STREAM stream_;
};

void publish_prefix(const wchar_t* prefix) {
  size_t i = 0;
  do {
    if (__atomic_load_n(&Work1[i], __ATOMIC_RELAXED) != prefix[i]) {  // see Parser_Service
      __atomic_store_n(&Work1[i], prefix[i], __ATOMIC_RELAXED);
    }
  } while (prefix[i++] != 0);
}

// Stores pairs in the request, raises the runtime's exceptions.
class RequestActions {
 public:
  using Prefix = const wchar_t*;

  RequestActions(ParserObject& parser, RequestRecord* request)
      : parser_(parser), request_(request) {}
  RequestActions(const RequestActions&) = delete;
  RequestActions& operator=(const RequestActions&) = delete;

  void store(pANTLR3_COMMON_TOKEN key, uint32_t key_type, pANTLR3_COMMON_TOKEN value,
             uint32_t value_type, const wchar_t* prefix) {
    const TAVOStoreRoutine routine = __atomic_load_n(&SetKeyValuePair, __ATOMIC_RELAXED);
    note_result(routine(request_, key, key_type, value, value_type, prefix));
  }
  void set_trace_level(pANTLR3_COMMON_TOKEN key, uint32_t key_type, pANTLR3_COMMON_TOKEN value,
                       uint32_t value_type, const wchar_t* prefix) {
    note_result(SetTraceLevel(request_, key, key_type, value, value_type, prefix));
  }
  void run_trace_statement(pANTLR3_COMMON_TOKEN keyword, uint32_t key_type) {
    note_result(SetTraceLevel(request_, keyword, key_type, keyword, keyword->type, L""));
  }

  // The keyword as typed and ":", for the keys inside the parentheses.
  const wchar_t* make_prefix(pANTLR3_COMMON_TOKEN keyword) {
    uint32_t length = 0;
    note_result(
        TAVO_CnvANTLRTokenUtf16ToUtf32(request_, keyword, prefix_, sizeof prefix_, &length));
    constexpr uint32_t kLongest = kPrefixCharacters - 2;
    if (length > kLongest) length = kLongest;
    prefix_[length] = L':';
    prefix_[length + 1] = 0;
    publish_prefix(prefix_);
    return prefix_;
  }

  bool raise(SyntaxError error, pANTLR3_COMMON_TOKEN misfit) {
    return parser_.raise(static_cast<uint32_t>(error), misfit);
  }
  bool raise_mismatch(uint32_t expected, pANTLR3_COMMON_TOKEN misfit) {
    return parser_.raise_mismatch(expected, misfit);
  }

 private:
  // The key prefix buffer, as large as Work1.
  static constexpr uint32_t kPrefixCharacters = sizeof(Work1) / sizeof(Work1[0]);

  // The result of an action does not stop the grammar. But when the platform refuses an action and
  // cannot even record why, the statement must not look accepted: its pair is missing. Deliberate:
  // a full array alone is not a failure; callers compare the count.
  void note_result(uint32_t status) {
    if (status != 0 && status != TAVO_STATUS_ARRAY_FULL) request_->errorFlag = 1;
  }

  ParserObject& parser_;
  RequestRecord* request_;
  wchar_t prefix_[kPrefixCharacters];
};

template <typename Tokens>
bool run(Tokens& tokens, ParserObject& parser, RequestRecord* request) {
  return TableEngine<Tokens, RequestActions>(tokens, parser, request).parse_tavo_provider_syntax();
}

}  // namespace

bool run_grammar(TokenWindow& tokens, ParserObject& parser, RequestRecord* request) {
  return run(tokens, parser, request);
}

bool run_grammar(pANTLR3_TOKEN_STREAM stream, ParserObject& parser, RequestRecord* request) {
  StreamTokens tokens(stream);
  return run(tokens, parser, request);
}

}  // namespace tavo
