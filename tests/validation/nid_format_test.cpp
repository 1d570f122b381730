#include <gtest/gtest.h>

#include "validation/caller_array.h"

namespace {

using validation_test::CallerArray;

// All pairs except the first one are checked.
TEST(NidFormat, ThatIsMissingIsSeenRightAfterTheFirstPair) {
  CallerArray array(TAVO_PARSER_PROVIDER_NID);
  array.add(TAVO_PARSER_PARAM_FMT_US, L"<missing TAVO_PARSER_NID_FORMAT_US>");
  array.add(TAVO_PARSER_CMN_PARM_SWITCH, L"US", TAVO_PARSER_NID_CTRY_US);
  EXPECT_EQ(7173u, array.validate());
}

TEST(NidFormat, ThatIsMissingIsSeenInTheLastPair) {
  CallerArray array(TAVO_PARSER_PROVIDER_NID);
  array.add(TAVO_PARSER_CMN_PARM_SWITCH, L"US", TAVO_PARSER_NID_CTRY_US);
  array.add(TAVO_PARSER_PARAM_FMT_US, L"<missing TAVO_PARSER_NID_FORMAT_US>");
  EXPECT_EQ(7173u, array.validate());
}

}  // namespace
