// Frames: whole, in pieces, and malformed.
#include "lsp/transport.h"

#include <gtest/gtest.h>

namespace {

using tavo::cli::lsp::framed;
using tavo::cli::lsp::FrameReader;
using Result = FrameReader::Result;

TEST(Frames, CarryTheirLengthInBytes) {
  EXPECT_EQ("Content-Length: 2\r\n\r\n{}", framed("{}"));
  EXPECT_EQ("Content-Length: 4\r\n\r\n\"\u00FC\"", framed("\"\u00FC\""));
}

TEST(Frames, ArriveInPiecesOfAnySize) {
  const std::string bytes = framed("{\"a\":1}") + framed("") + framed("[]");
  for (size_t step = 1; step <= bytes.size(); ++step) {
    FrameReader frames;
    std::vector<std::string> messages;
    std::string content;
    for (size_t at = 0; at < bytes.size(); at += step) {
      frames.feed(std::string_view(bytes).substr(at, step));
      while (frames.next(content) == Result::kMessage) messages.push_back(content);
    }
    EXPECT_EQ((std::vector<std::string>{"{\"a\":1}", "", "[]"}), messages) << step;
    EXPECT_EQ(0u, frames.waiting());
  }
}

TEST(Frames, HeadersMayComeInAnyOrderAndCase) {
  FrameReader frames;
  frames.feed("Content-Type: x\r\ncontent-LENGTH:  2 \r\n\r\n{}");
  std::string content;
  EXPECT_EQ(Result::kMessage, frames.next(content));
  EXPECT_EQ("{}", content);
}

TEST(Frames, ThatAreMalformedAreToldAndTheNextIsRead) {
  for (const char* head : {"Content-Length: x\r\n\r\n", "Content-Length: -1\r\n\r\n",
                           "Content-Length:\r\n\r\n", "X: 1\r\n\r\n", "no colon\r\n\r\n",
                           "\r\n\r\n", "Content-Length: 99999999999999999999999\r\n\r\n"}) {
    FrameReader frames;
    frames.feed(head + framed("{}"));
    std::string content;
    EXPECT_EQ(Result::kMalformed, frames.next(content)) << head;
    EXPECT_EQ(Result::kMessage, frames.next(content)) << head;
    EXPECT_EQ("{}", content);
  }
}

TEST(Frames, AMessageThatIsTooLongIsSkippedAndNotKept) {
  FrameReader frames;
  const size_t length = FrameReader::kMostContentBytes + 1;
  frames.feed("Content-Length: " + std::to_string(length) + "\r\n\r\nabc");
  std::string content;
  EXPECT_EQ(Result::kMalformed, frames.next(content));
  const std::string block(size_t{1} << 20, 'x');
  for (size_t left = length - 3; left > 0;) {
    const size_t count = std::min(left, block.size());
    frames.feed(std::string_view(block).substr(0, count));
    left -= count;
    ASSERT_EQ(0u, frames.waiting());
  }
  frames.feed(framed("[1]"));
  EXPECT_EQ(Result::kMessage, frames.next(content));
  EXPECT_EQ("[1]", content);
}

TEST(Frames, AHeaderThatDoesNotEndIsDropped) {
  FrameReader frames;
  frames.feed(std::string(FrameReader::kMostHeaderBytes + 1, 'x'));
  std::string content;
  EXPECT_EQ(Result::kMalformed, frames.next(content));
  EXPECT_EQ(0u, frames.waiting());
  EXPECT_EQ(Result::kNeedMore, frames.next(content));
}

}  // namespace
