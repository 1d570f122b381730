// A second copy of the platform interface that platforms were compiled against: a change of
// platform.h alone would change both the library and the embedded platform, and break only other
// platforms.
#include <gtest/gtest.h>

#include <cstddef>

#include "platform/platform.h"

namespace {

TEST(PlatformInterface, RecordsAreLaidOutAsPlatformsWereCompiledAgainst) {
  EXPECT_EQ(64u, sizeof(TraceDescriptor));
  EXPECT_EQ(0u, offsetof(TraceDescriptor, marker));
  EXPECT_EQ(4u, offsetof(TraceDescriptor, function_id));
  EXPECT_EQ(8u, offsetof(TraceDescriptor, name));
  EXPECT_EQ(16u, offsetof(TraceDescriptor, platform));

  EXPECT_EQ(256u, sizeof(TraceFrame));
  EXPECT_EQ(0u, offsetof(TraceFrame, tracing));
  EXPECT_EQ(1u, offsetof(TraceFrame, detail));
  EXPECT_EQ(8u, offsetof(TraceFrame, descriptor));
  EXPECT_EQ(16u, offsetof(TraceFrame, platform));

  EXPECT_EQ(32u, sizeof(TraceItem));
  EXPECT_EQ(16u, offsetof(TraceItem, length));
  EXPECT_EQ(20u, offsetof(TraceItem, type));
  EXPECT_EQ(24u, offsetof(TraceItem, value));

  EXPECT_EQ(408u, sizeof(TraceRecord));
  EXPECT_EQ(4u, offsetof(TraceRecord, line));
  EXPECT_EQ(8u, offsetof(TraceRecord, frame));
  EXPECT_EQ(16u, offsetof(TraceRecord, count));
  EXPECT_EQ(24u, offsetof(TraceRecord, items));

  EXPECT_EQ(64u, sizeof(ConversionDescriptor));
  EXPECT_EQ(0u, offsetof(ConversionDescriptor, kind));
  EXPECT_EQ(4u, offsetof(ConversionDescriptor, code_page));
  EXPECT_EQ(8u, offsetof(ConversionDescriptor, reserved1));
}

TEST(PlatformInterface, NumbersAreThoseThatPlatformsWereCompiledAgainst) {
  EXPECT_EQ(0x9200u, kTraceResolved);
  EXPECT_EQ(0x30840D80u, uint32_t{kProbeEntry});
  EXPECT_EQ(0x30840D81u, uint32_t{kProbeParameters});
  EXPECT_EQ(0x30840D82u, uint32_t{kProbeExit});
  EXPECT_EQ(1u, uint32_t{kTracePointer});
  EXPECT_EQ(2u, uint32_t{kTraceUnsigned});
  EXPECT_EQ(3u, uint32_t{kTraceSigned});
  EXPECT_EQ(4u, uint32_t{kTraceText});
  EXPECT_EQ(12u, kTraceItemsMax);
  EXPECT_EQ(0u, kErrorStateSlotOffset);
  EXPECT_EQ(3u, kReasonCleanUp);
}

}  // namespace
