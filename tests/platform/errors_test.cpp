#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

#include "TAVOErrorHandler.h"
#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

class Language : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"TAVO_LANG", "LC_ALL", "LC_MESSAGES", "LANG"}) {
      unsetenv(name);
    }
  }
};

// A block with up to three inserts in its own memory.
struct Block {
  alignas(8) unsigned char memory[32 + 16 * 3] = {};
  ErrorBlock& get() {
    return *reinterpret_cast<ErrorBlock*>(memory);
  }
  Block(uint32_t id, int16_t slots) {
    std::memcpy(get().eye, "ECBD", 4);
    get().version = 21;
    get().always48 = 48;
    get().slots = slots;
    get().messageId = id;
  }
  TokenSlot& slot(int i) {
    return reinterpret_cast<TokenSlot*>(memory + 32)[i];
  }
  void insert(int i, uint32_t id, const wchar_t* value) {
    slot(i).id = id;
    slot(i).value = const_cast<wchar_t*>(value);
  }
};

std::wstring message_of(const ErrorBlock* block, uint32_t id, uint32_t expected_status = kOk) {
  TAVOMessageRequest request = {};
  request.version = 21;
  request.size = sizeof request;
  request.block = block;
  request.messageId = id;
  EXPECT_EQ(GetFormattedErrorMsg(&request), expected_status);
  std::vector<wchar_t> text(request.neededBytes / sizeof(wchar_t) + 1, L'#');
  request.text = text.data();
  request.textBytes = request.neededBytes;
  EXPECT_EQ(GetFormattedErrorMsg(&request), expected_status);
  EXPECT_EQ(text.back(), L'#');
  EXPECT_EQ((std::wcslen(text.data()) + 1) * sizeof(wchar_t), request.neededBytes);
  return text.data();
}

TEST(ErrorCount, TellsTheNumberAndTheLargestEstimate) {
  ErrorState state = {};
  state.blocks = 3;
  state.largestEstimate = 80;
  uint32_t count = 9, largest = 9;
  EXPECT_EQ(GetErrorCount(&state, &count, &largest), kOk);
  EXPECT_EQ(count, 3U);
  EXPECT_EQ(largest, 80U);
  EXPECT_EQ(GetErrorCount(&state, nullptr, nullptr), kOk);
  EXPECT_EQ(GetErrorCount(nullptr, &count, &largest), kArgumentInvalid);
}

TEST(Error, IsFoundByItsIndex) {
  Block first(7117, 0), second(7139, 2);
  second.get().auxiliary = 5;
  first.get().next = &second.get();
  ErrorState state = {};
  state.first = &first.get();
  state.last = &second.get();
  state.blocks = 2;
  TAVOErrorRequest request = {};
  request.version = 21;
  request.size = sizeof request;
  EXPECT_EQ(GetError(&state, &request), kOk);
  EXPECT_EQ(request.messageId, 7117U);
  EXPECT_EQ(request.block, &first.get());
  request.index = 1;
  EXPECT_EQ(GetError(&state, &request), kOk);
  EXPECT_EQ(request.messageId, 7139U);
  EXPECT_EQ(request.auxiliary, 5U);
  EXPECT_EQ(request.slots, 2);
  request.index = 2;
  EXPECT_EQ(GetError(&state, &request), uint32_t{TAVO_ERROR_INDEX_OUT_OF_RANGE});
}

// The list of the thread's own block, as the library fills and fetches it.
class OwnList : public testing::Test {
 protected:
  static constexpr uint32_t kBlocks = 6;

  OwnList() {
    for (uint32_t i = 0; i < kBlocks; ++i) {
      blocks_.push_back(std::make_unique<Block>(7100 + i, 0));
      if (i > 0) blocks_[i - 1]->get().next = &blocks_[i]->get();
    }
    state_.first = &blocks_.front()->get();
    state_.last = &blocks_.back()->get();
    state_.blocks = kBlocks;
    EXPECT_EQ(TAVOGetThreadBlock(&thread_block_), kOk);
    set_slot(&state_);
  }
  ~OwnList() override {
    set_slot(nullptr);
  }
  void set_slot(ErrorState* state) {
    std::memcpy(static_cast<char*>(thread_block_) + kErrorStateSlotOffset, &state, sizeof state);
  }
  // As the library does it for a caller. Returns the message's number, 0 when it is not found.
  uint32_t fetch(uint32_t index) {
    void* block = nullptr;
    EXPECT_EQ(TAVOGetThreadBlock(&block), kOk);
    TAVOErrorRequest request = {};
    request.version = 21;
    request.size = sizeof request;
    request.index = index;
    return GetError(&state_, &request) == kOk ? request.messageId : 0;
  }
  static void fetch_block() {
    void* block = nullptr;
    EXPECT_EQ(TAVOGetThreadBlock(&block), kOk);
  }
  // From here on nothing after the first message is found from the start of the list.
  void cut_behind_the_first() {
    blocks_[0]->get().next = nullptr;
  }

  std::vector<std::unique_ptr<Block>> blocks_;
  ErrorState state_ = {};
  void* thread_block_ = nullptr;
};

TEST_F(OwnList, IsReadOnFromTheMessageBefore) {
  for (uint32_t i = 0; i < 3; ++i) EXPECT_EQ(fetch(i), 7100 + i);
  cut_behind_the_first();
  for (uint32_t i = 3; i < kBlocks; ++i) EXPECT_EQ(fetch(i), 7100 + i);
  EXPECT_EQ(fetch(kBlocks - 1), 7105U) << "the same once more";
  EXPECT_EQ(fetch(1), 0U) << "an earlier one is looked for from the start";
}

TEST_F(OwnList, IsReadOnAfterItsNumbersWereAskedFor) {
  EXPECT_EQ(fetch(2), 7102U);
  cut_behind_the_first();
  fetch_block();
  uint32_t count = 0;
  EXPECT_EQ(GetErrorCount(&state_, &count, nullptr), kOk);
  EXPECT_EQ(fetch(4), 7104U);
}

// The library renews a list after fetching the block, and not a word comes to the platform.
TEST_F(OwnList, IsReadFromItsStartWhenItMayBeAnotherOne) {
  EXPECT_EQ(fetch(2), 7102U);
  cut_behind_the_first();
  fetch_block();
  EXPECT_EQ(fetch(3), 0U) << "the block was fetched in between";
  blocks_[0]->get().next = &blocks_[1]->get();
  EXPECT_EQ(fetch(2), 7102U);
  cut_behind_the_first();
  for (int i = 0; i < 300; ++i) fetch_block();
  EXPECT_EQ(fetch(3), 0U) << "many times";
  blocks_[0]->get().next = &blocks_[1]->get();
  EXPECT_EQ(fetch(2), 7102U);
  cut_behind_the_first();
  fetch_block();
  EXPECT_EQ(GetErrorCount(&state_, nullptr, nullptr), kOk);
  fetch_block();
  fetch_block();
  EXPECT_EQ(GetErrorCount(&state_, nullptr, nullptr), kOk);
  EXPECT_EQ(fetch(3), 0U) << "between two looks at the numbers";
}

TEST_F(OwnList, OfAnotherStateIsReadFromItsStart) {
  EXPECT_EQ(fetch(2), 7102U);
  cut_behind_the_first();
  set_slot(nullptr);
  EXPECT_EQ(fetch(3), 0U) << "a state that is not the thread's own";
}

TEST(Error, RequestIsCheckedForItsVersionAndSize) {
  ErrorState state = {};
  TAVOErrorRequest request = {};
  request.version = 21;
  request.size = sizeof request - 1;
  EXPECT_EQ(GetError(&state, &request), uint32_t{TAVO_ERROR_REQUEST_INVALID});
  request.size = sizeof request;
  request.version = 20;
  EXPECT_EQ(GetError(&state, &request), uint32_t{TAVO_ERROR_REQUEST_INVALID});
  EXPECT_EQ(GetError(&state, nullptr), uint32_t{TAVO_ERROR_REQUEST_INVALID});
  EXPECT_EQ(GetError(nullptr, &request), kArgumentInvalid);
}

TEST(Error, ListThatDoesNotHoldTogetherIsReported) {
  Block only(7117, 0);
  ErrorState state = {};
  state.first = &only.get();
  state.blocks = 2;
  TAVOErrorRequest request = {};
  request.version = 21;
  request.size = sizeof request;
  request.index = 1;
  EXPECT_EQ(GetError(&state, &request), kErrorListDamaged);
  request.index = 0;
  only.get().eye[0] = 'X';
  EXPECT_EQ(GetError(&state, &request), kErrorListDamaged);
}

using FormattedMessage = Language;

TEST_F(FormattedMessage, HoldsTheInsertsOfItsBlock) {
  Block block(7139, 2);
  block.insert(0, TAVO_TOKID_CHAR_POS, L"5");
  block.insert(1, TAVO_TOKID_SUBSTR, L"PRO=CCN");
  const std::wstring text = message_of(&block.get(), 0);
  EXPECT_NE(text.find(L"at character 5."), std::wstring::npos) << "text";
  EXPECT_NE(text.find(L"PRO=CCN"), std::wstring::npos);
  EXPECT_EQ(text.find(L'{'), std::wstring::npos);
}

TEST_F(FormattedMessage, LeavesAnInsertThatIsMissingAsItsName) {
  Block block(7139, 2);
  block.insert(0, TAVO_TOKID_CHAR_POS, L"5");
  EXPECT_NE(message_of(&block.get(), 0).find(L"{SUBSTR}"), std::wstring::npos);
  EXPECT_NE(message_of(nullptr, 7139).find(L"{CHAR_POS}"), std::wstring::npos);
}

TEST_F(FormattedMessage, ReadsTheOneSlotOfABlockThatDeclaresNone) {
  Block block(7095, 0);
  block.insert(0, TAVO_TOKID_ERR_CODE, L"8033");
  EXPECT_NE(message_of(&block.get(), 0).find(L"8033"), std::wstring::npos);
}

TEST_F(FormattedMessage, LeavesOutAPartWhoseInsertWasNotRecorded) {
  Block without(7127, 0), with(7127, 1);
  with.insert(0, TAVO_TOKID_PARMKEY, L"MON");
  EXPECT_NE(message_of(&without.get(), 0).find(L"out of range. "), std::wstring::npos);
  EXPECT_NE(message_of(&with.get(), 0).find(L"out of range in MON. "), std::wstring::npos);
}

TEST_F(FormattedMessage, TakesBracesAndBracketsInAnInsertAsText) {
  Block block(7139, 2);
  block.insert(0, TAVO_TOKID_CHAR_POS, L"[{SUBSTR}]");
  block.insert(1, TAVO_TOKID_SUBSTR, L"{");
  const std::wstring text = message_of(&block.get(), 0);
  EXPECT_NE(text.find(L"at character [{SUBSTR}]."), std::wstring::npos);
}

TEST_F(FormattedMessage, QuotesNoSecretOfTheParameterString) {
  Block block(7139, 2);
  block.insert(0, TAVO_TOKID_CHAR_POS, L"26");
  block.insert(1, TAVO_TOKID_SUBSTR, L"PRO=AFF, KEY=\"hunter2\", C");
  const std::wstring text = message_of(&block.get(), 0);
  EXPECT_EQ(text.find(L"hunter2"), std::wstring::npos);
  EXPECT_NE(text.find(L"KEY=***, C"), std::wstring::npos);
}

TEST_F(FormattedMessage, IsCutAndTerminatedInASmallBuffer) {
  TAVOMessageRequest request = {};
  request.version = 21;
  request.size = sizeof request;
  request.messageId = 7117;
  const std::wstring whole = message_of(nullptr, 7117);
  for (uint32_t chars = 0; chars <= whole.size(); ++chars) {
    std::vector<wchar_t> text(chars + 1, L'#');
    request.text = text.data();
    request.textBytes = chars * static_cast<uint32_t>(sizeof(wchar_t));
    EXPECT_EQ(GetFormattedErrorMsg(&request), uint32_t{TAVO_ERROR_TEXT_CUT});
    EXPECT_EQ(request.neededBytes, (whole.size() + 1) * sizeof(wchar_t));
    EXPECT_EQ(text[chars], L'#');
    if (chars != 0) {
      EXPECT_EQ(std::wstring(text.data()), whole.substr(0, chars - 1));
    }
  }
}

TEST_F(FormattedMessage, SaysSoWhenTheNumberIsUnknown) {
  EXPECT_EQ(message_of(nullptr, 4711, TAVO_ERROR_MESSAGE_UNKNOWN),
            L"Message 4711: no text is known for it.");
}

TEST_F(FormattedMessage, RequestIsChecked) {
  TAVOMessageRequest request = {};
  EXPECT_EQ(GetFormattedErrorMsg(nullptr), uint32_t{TAVO_ERROR_REQUEST_INVALID});
  EXPECT_EQ(GetFormattedErrorMsg(&request), uint32_t{TAVO_ERROR_REQUEST_INVALID});
  request.version = 21;
  request.size = sizeof request + 8;
  EXPECT_EQ(GetFormattedErrorMsg(&request), uint32_t{TAVO_ERROR_REQUEST_INVALID});
  Block block(7117, 0);
  block.get().eye[3] = 'X';
  request.size = sizeof request;
  request.block = &block.get();
  EXPECT_EQ(GetFormattedErrorMsg(&request), kErrorListDamaged);
}

bool is_german(const std::wstring& text) {
  return text.find(L"Der AFF-Provider") != std::wstring::npos;
}

TEST_F(Language, IsEnglishUnlessTheEnvironmentAsksForAnother) {
  EXPECT_FALSE(is_german(message_of(nullptr, 7117)));
  setenv("LANG", "fr_FR.UTF-8", 1);
  EXPECT_FALSE(is_german(message_of(nullptr, 7117)));
  setenv("LANG", "C", 1);
  EXPECT_FALSE(is_german(message_of(nullptr, 7117)));
  setenv("LANG", "deu", 1);
  EXPECT_FALSE(is_german(message_of(nullptr, 7117)));
}

TEST_F(Language, IsThatOfTheFirstVariableThatIsSet) {
  setenv("LANG", "de_DE.UTF-8", 1);
  EXPECT_TRUE(is_german(message_of(nullptr, 7117)));
  setenv("LC_MESSAGES", "en_US.UTF-8", 1);
  EXPECT_FALSE(is_german(message_of(nullptr, 7117)));
  setenv("LC_ALL", "de_AT@euro", 1);
  EXPECT_TRUE(is_german(message_of(nullptr, 7117)));
  setenv("TAVO_LANG", "EN", 1);
  EXPECT_FALSE(is_german(message_of(nullptr, 7117)));
  setenv("TAVO_LANG", "DE", 1);
  EXPECT_TRUE(is_german(message_of(nullptr, 7117)));
  setenv("TAVO_LANG", "", 1);
  setenv("LC_ALL", "", 1);
  EXPECT_FALSE(is_german(message_of(nullptr, 7117)));
}

}  // namespace
