// The conversion that is called for each data type. Dates stored as text are converted as text.
#include <gtest/gtest.h>

#include "errors/error_list.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"

namespace {

TEST(InsertConversions, AreThoseOfTheDataType) {
  const struct {
    int16_t type;
    const char* function;  // null: the text is copied
  } cases[] = {{1, "TAVOCnvCharToWVarcharSz"},
               {25, "TAVOCnvCharToWVarcharSz"},
               {2, "TAVOCnvVarcharToWVarcharSz"},
               {26, "TAVOCnvVarcharToWVarcharSz"},
               {3, "TAVOCnvVarcharSzToWVarcharSz"},
               {17, "TAVOCnvVarcharSzToWVarcharSz"},
               {4, "TAVOCnvWCharToWVarcharSz"},
               {27, "TAVOCnvWCharToWVarcharSz"},
               {5, "TAVOCnvWVarcharToWVarcharSz"},
               {28, "TAVOCnvWVarcharToWVarcharSz"},
               {6, nullptr},
               {18, nullptr},
               {9, "TAVOCnvIntToWVarcharSz1"},
               {10, "TAVOCnvUIntToWVarcharSz"},
               {14, "TAVOGetStringFromTS"},
               {15, "TAVOGetStringFromTS"},
               {16, "TAVOGetStringFromTS"},
               {21, "TAVOCnvSmallIntToWVarcharSz"},
               {22, "TAVOCnvSmallUIntToWVarcharSz"}};
  // At once a length of 4 bytes with ASCII text, a small number, and a date.
  alignas(8) const uint16_t data[16] = {4, 1, 1, 0, 0, 0};
  for (const auto& c : cases) {
    errors_test::ErrorList list;
    ASSERT_EQ(0, ErrorCaptureEAB(list.get(), 0, 1, 1));
    front::reset();
    TokenCaptureEAB(list.get(), data, c.type, 54, 4);
    uint32_t all = 0;
    for (const std::string& function : front::functions()) {
      if (function.starts_with("TAVOCnv") || function == "TAVOGetStringFromTS") {
        all += front::count(function);
      }
    }
    EXPECT_EQ(c.function == nullptr ? 0u : 1u, all) << c.type;
    if (c.function != nullptr) {
      EXPECT_EQ(1u, front::count(c.function)) << c.type;
    }
  }
}

}  // namespace
