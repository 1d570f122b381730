#include <gtest/gtest.h>

#include <map>
#include <string>

#include "TAVOErrorHandler.h"
#include "TAVONumericText.h"
#include "TAVOParser.h"
#include "TAVOParserExt.h"
#include "abi/layout_in_c.h"

namespace {

#define LAYOUT_SIZE(type) {"size of " #type, sizeof(type)},
#define LAYOUT_OFFSET(type, member) {#type "." #member, offsetof(type, member)},
const Layout kLayoutInCpp[] = {
#include "abi/layout_list.h"
};

TEST(Layout, IsTheSameToCAndToCpp) {
  ASSERT_EQ(std::size(kLayoutInCpp), kLayoutInCCount);
  for (size_t i = 0; i < kLayoutInCCount; ++i) {
    EXPECT_STREQ(kLayoutInC[i].what, kLayoutInCpp[i].what);
    EXPECT_EQ(kLayoutInC[i].value, kLayoutInCpp[i].value) << kLayoutInC[i].what;
  }
}

// The numbers themselves, since callers were compiled against them.
TEST(Layout, IsWhatCallersWereCompiledAgainst) {
  const std::map<std::string, size_t> expected = {{"size of KeyValueEntry", 64},
                                                  {"KeyValueEntry.key", 16},
                                                  {"KeyValueEntry.keyId", 24},
                                                  {"KeyValueEntry.keySize", 28},
                                                  {"KeyValueEntry.value", 40},
                                                  {"KeyValueEntry.valueId", 48},
                                                  {"KeyValueEntry.valueSize", 52},
                                                  {"KeyValueEntry.valueLength", 56},
                                                  {"KeyValueEntry.status", 60},
                                                  {"size of RequestRecord", 56},
                                                  {"RequestRecord.sStructVer", 4},
                                                  {"RequestRecord.pKeyValueArr", 8},
                                                  {"RequestRecord.capacity", 16},
                                                  {"RequestRecord.count", 20},
                                                  {"RequestRecord.maxKeySize", 24},
                                                  {"RequestRecord.maxValueSize", 28},
                                                  {"RequestRecord.errorFlag", 33},
                                                  {"RequestRecord.form", 38},
                                                  {"RequestRecord.textLength", 40},
                                                  {"RequestRecord.parmText", 48},
                                                  {"size of ParmTextM", 16},
                                                  {"ParmTextM.codePage", 4},
                                                  {"ParmTextM.text", 8},
                                                  {"size of ParmTextW", 8},
                                                  {"size of TokenSlot", 16},
                                                  {"size of ErrorBlock", 48},
                                                  {"ErrorBlock.eye", 8},
                                                  {"ErrorBlock.slots", 16},
                                                  {"ErrorBlock.messageId", 20},
                                                  {"ErrorBlock.auxiliary", 24},
                                                  {"ErrorBlock.slot", 32},
                                                  {"size of ErrorState", 32},
                                                  {"ErrorState.last", 8},
                                                  {"ErrorState.blocks", 16},
                                                  {"ErrorState.largestEstimate", 20},
                                                  {"ErrorState.newestEstimate", 24},
                                                  {"size of TAVOErrorLocation", 20},
                                                  {"size of TAVOErrorRequest", 32},
                                                  {"size of TAVOMessageRequest", 32},
                                                  {"size of Work1", 200},
                                                  {"size of TAVOParserTokenNames", 351 * 8},
                                                  {"size of PXSpaces", 257},
                                                  {"size of PXSpacesW", 257 * 4}};
  for (const Layout& layout : kLayoutInCpp) {
    const auto it = expected.find(layout.what);
    ASSERT_NE(expected.end(), it) << layout.what;
    EXPECT_EQ(it->second, layout.value) << layout.what;
  }
}

TEST(Version, IsThatOfTheHeaders) {
  EXPECT_STREQ(TAVO_LIBRARY_VERSION, TAVOParser_GetVersion());
  EXPECT_EQ(uint32_t{TAVO_ABI_VERSION}, TAVOParser_GetAbiVersion());
}

}  // namespace
