#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

// Runs the probe; settings are assignments for its environment. Standard error follows standard
// output.
std::vector<std::string> probe(const std::string& settings, const std::string& commands) {
  const std::string line =
      "unset TAVO_TRACE TAVO_TRACE_FILE; " + settings + " " TRACE_PROBE " " + commands + " 2>&1";
  std::vector<std::string> lines;
  FILE* pipe = popen(line.c_str(), "r");
  if (pipe == nullptr) {
    ADD_FAILURE() << "cannot run " << line;
    return lines;
  }
  char buffer[8192];
  while (std::fgets(buffer, sizeof buffer, pipe) != nullptr) {
    lines.emplace_back(buffer);
    lines.back().pop_back();
  }
  EXPECT_EQ(pclose(pipe), 0);
  return lines;
}

// The lines without the parts that change from run to run; only their format is checked.
std::vector<std::string> steady(std::vector<std::string> lines) {
  for (std::string& line : lines) {
    int year, month, day, hour, minute, second, micros, thread, head = 0;
    const int read = std::sscanf(line.c_str(), "time=%4d-%2d-%2dT%2d:%2d:%2d.%6dZ tid=%d %n", &year,
                                 &month, &day, &hour, &minute, &second, &micros, &thread, &head);
    EXPECT_TRUE(read == 8 && head > 38) << line;
    line.erase(0, static_cast<size_t>(head));
    const size_t elapsed = line.find(" us=");
    if (elapsed != std::string::npos) {
      EXPECT_GE(std::atoi(line.c_str() + elapsed + 4), 0) << line;
      line.resize(elapsed + 4);
    }
  }
  return lines;
}

TEST(Tracing, IsOffByDefaultAndLeavesTheFrameAlone) {
  EXPECT_TRUE(probe("", "call fail").empty());
  EXPECT_TRUE(probe("TAVO_TRACE=off", "call fail").empty());
  EXPECT_TRUE(probe("TAVO_TRACE=", "call").empty());
}

TEST(Tracing, WritesEntriesAndExitsAtCalls) {
  const std::vector<std::string> expected = {
      "depth=0 fn=Probe_Outer id=0x20801 probe=entry line=10 | sixteen_long_nam=0x1234",
      "depth=1 fn=Probe_Inner id=0x20802 probe=entry line=10 | sixteen_long_nam=0x1234",
      "depth=1 fn=Probe_Inner id=0x20802 probe=exit line=13 us=",
      "depth=0 fn=Probe_Outer id=0x20801 probe=exit line=13 us=",
  };
  EXPECT_EQ(steady(probe("TAVO_TRACE=CALLS", "call")), expected);
  EXPECT_EQ(steady(probe("TAVO_TRACE=calls", "call")), expected);
  EXPECT_EQ(steady(probe("TAVO_TRACE=2", "call")), expected);
}

TEST(Tracing, WritesOnlyResultsAtError) {
  EXPECT_TRUE(probe("TAVO_TRACE=ERROR", "call").empty());
  EXPECT_EQ(steady(probe("TAVO_TRACE=1", "fail")),
            (std::vector<std::string>{
                "depth=0 fn=Probe_Outer id=0x20801 probe=result line=12 | result=7148"}));
}

TEST(Tracing, WritesParametersAtDetailAndEscapesText) {
  const auto lines = steady(probe("TAVO_TRACE=DETAIL", "fail"));
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[1],
            "depth=0 fn=Probe_Outer id=0x20801 probe=parameters line=11 | number=-7 null=null "
            "text=\"a\\\"b\\\\\\x0A\\xC3\" odd=?");
  EXPECT_EQ(lines[2], "depth=0 fn=Probe_Outer id=0x20801 probe=result line=12 | result=7148");
}

TEST(Tracing, KeepsTheDepthWhenAFrameGoesWithoutItsEpilogue) {
  const auto lines = steady(probe("TAVO_TRACE=CALLS", "skip call"));
  ASSERT_EQ(lines.size(), 8U);
  EXPECT_EQ(lines[4].substr(0, 8), "depth=0 ");
}

TEST(Tracing, WritesWholeLinesFromManyThreads) {
  const auto lines = steady(probe("TAVO_TRACE=CALLS", "threads"));
  EXPECT_EQ(lines.size(), 4U * 50 * 4);
}

TEST(Tracing, AppendsToAFileThatOnlyItsOwnerReads) {
  std::string name = testing::TempDir() + "tavo_trace_XXXXXX";
  const int made = mkstemp(name.data());
  ASSERT_GE(made, 0);
  close(made);
  unlink(name.c_str());
  const std::string settings = "TAVO_TRACE=CALLS TAVO_TRACE_FILE=" + name;
  EXPECT_TRUE(probe(settings, "call").empty());
  EXPECT_TRUE(probe(settings, "call").empty());
  std::ifstream file(name);
  int count = 0;
  for (std::string line; std::getline(file, line);) {
    ++count;
  }
  EXPECT_EQ(count, 8);
  struct stat status;
  ASSERT_EQ(stat(name.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600U);
  unlink(name.c_str());
}

TEST(Tracing, GoesToStandardErrorWhenItsFileCannotBeOpened) {
  const auto lines = probe("TAVO_TRACE=CALLS TAVO_TRACE_FILE=/nonexistent/file", "call");
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[0],
            "The trace file /nonexistent/file cannot be opened (No such file or directory); "
            "tracing to standard error");
}

TEST(Tracing, SaysSoWhenTheConfiguredLevelIsUnknown) {
  const auto lines = probe("TAVO_TRACE=loud", "call");
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_NE(lines[0].find("TAVO_TRACE is no trace level"), std::string::npos);
}

TEST(TraceLevel, IsSwitchedByNameOrNumberInAnyCase) {
  EXPECT_EQ(probe("", "level=CALLS call level=off call").size(), 2U + 4U);
  EXPECT_EQ(probe("", "level=Calls call").size(), 1U + 4U);
  EXPECT_EQ(probe("", "level=1 call fail").size(), 1U + 1U);
  EXPECT_EQ(probe("TAVO_TRACE=DETAIL", "level=0 call").size(), 1U);
}

TEST(TraceLevel, OfTheBareKeywordIsTheConfiguredOne) {
  EXPECT_EQ(probe("TAVO_TRACE=CALLS", "level=OFF call level=TrcLevel call").size(), 2U + 4U);
  EXPECT_EQ(probe("", "level=CALLS level=TRCLEVEL call").size(), 2U);
}

TEST(TraceLevel, ThatIsUnknownIsRefusedAndChangesNothing) {
  EXPECT_EQ(TAVOSetTraceLevel(nullptr), kArgumentInvalid);
  for (const char* text : {"", "4", "-1", "00", " OFF", "OFF ", "LOUD", "CALL"}) {
    EXPECT_EQ(TAVOSetTraceLevel(text), kTraceLevelUnknown) << text;
  }
  const auto lines = probe("", "level=CALLS level=LOUD call");
  ASSERT_EQ(lines.size(), 2U + 4U);
}

TEST(TraceFunctions, AnswerMisuseWithAStatus) {
  TraceDescriptor descriptor = {};
  EXPECT_EQ(IOQ_TRC_ResFmid(1, nullptr, 0), kArgumentInvalid);
  EXPECT_EQ(IOQ_TRC_ResFmid(1, &descriptor, 1), kArgumentInvalid);
  EXPECT_EQ(descriptor.marker, 0);
  EXPECT_EQ(KNL_FuncEpi(nullptr), kArgumentInvalid);
  EXPECT_EQ(KNL_Trace_RecordDiagnostic(nullptr), kArgumentInvalid);
  ASSERT_EQ(TAVOSetTraceLevel("ERROR"), kOk);
  TraceFrame frame = {};
  EXPECT_EQ(KNL_FuncPro(nullptr, &descriptor), kArgumentInvalid);
  EXPECT_EQ(KNL_FuncPro(&frame, nullptr), kArgumentInvalid);
  EXPECT_EQ(KNL_FuncPro(&frame, &descriptor), kOk);
  EXPECT_EQ(frame.tracing, 1);
  EXPECT_EQ(frame.detail, 0);
  EXPECT_EQ(frame.descriptor, &descriptor);
  ASSERT_EQ(TAVOSetTraceLevel("OFF"), kOk);
  EXPECT_EQ(KNL_FuncEpi(&frame), kOk);
  EXPECT_EQ(frame.tracing, 0);
  EXPECT_EQ(KNL_FuncPro(nullptr, nullptr), kOk) << "nothing is looked at while tracing is off";
}

TEST(TraceFunctions, ResolveADescriptor) {
  TraceDescriptor descriptor = {};
  EXPECT_EQ(IOQ_TRC_ResFmid(0x20801, &descriptor, 0), kOk);
  EXPECT_EQ(descriptor.marker, 0x9200);
  EXPECT_EQ(descriptor.function_id, 0x20801U);
}

TEST(TraceFunctions, CutALineThatIsTooLongAndTooManyItems) {
  // Through standard error of this process, which is redirected to a file.
  std::string name = testing::TempDir() + "tavo_trace_XXXXXX";
  const int made = mkstemp(name.data());
  ASSERT_GE(made, 0);
  const int saved = dup(STDERR_FILENO);
  dup2(made, STDERR_FILENO);
  ASSERT_EQ(TAVOSetTraceLevel("DETAIL"), kOk);
  const std::string text(5000, 'x');
  TraceRecord record = {};
  record.probe = kProbeParameters;
  record.count = 1;
  record.items[0] = {"text", 5000, kTraceText, text.data()};
  EXPECT_EQ(KNL_Trace_RecordDiagnostic(&record), kOk);
  record.probe = 7;
  record.count = 4000;
  record.items[0].length = 1;
  EXPECT_EQ(KNL_Trace_RecordDiagnostic(&record), kOk);
  close(STDERR_FILENO);
  EXPECT_EQ(KNL_Trace_RecordDiagnostic(&record), kTraceWriteFailed);
  TAVOSetTraceLevel("OFF");
  dup2(saved, STDERR_FILENO);
  close(saved);
  std::ifstream file(name);
  std::string first, second;
  std::getline(file, first);
  std::getline(file, second);
  EXPECT_LT(first.size(), 2048U);
  EXPECT_EQ(first.substr(first.size() - 6), "xx ...");
  EXPECT_NE(second.find("fn=? id=0x0 probe=other"), std::string::npos);
  unlink(name.c_str());
  close(made);
}

}  // namespace
