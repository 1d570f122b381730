// The dispatcher: order of messages, life cycle, cancellation, and all possible mistakes of a
// client.
#include <gtest/gtest.h>

#include <fmt/format.h>

#include "lsp/talk.h"

namespace {

using namespace tavo_test;
using tavo::cli::lsp::framed;
using tavo::cli::lsp::Server;

const Json kInitialize = request(1, "initialize", {{"capabilities", all_capabilities()}});

Json opening(const std::string& text, const std::string& uri = kUri) {
  return notification(
      "textDocument/didOpen",
      {{"textDocument", {{"uri", uri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}}}});
}

int error_code(const Json& answer) {
  return answer.contains("error") ? answer["error"]["code"].get<int>() : 0;
}

TEST(LifeCycle, EndsWithZeroAfterAShutdownAndWithOneWithout) {
  EXPECT_EQ(0, talk({kInitialize, request(2, "shutdown"), notification("exit")}).status);
  EXPECT_EQ(1, talk({kInitialize, notification("exit")}).status);
  EXPECT_EQ(1, talk({notification("exit")}).status);
  // The client died.
  EXPECT_EQ(1, talk({kInitialize}).status);
  EXPECT_EQ(1, talk({}).status);
  EXPECT_EQ(0, talk({kInitialize, request(2, "shutdown")}).status);
}

TEST(LifeCycle, NothingIsAnsweredBeforeInitializeOrAfterShutdown) {
  const Talk result = talk({request(7, "textDocument/hover"), kInitialize, kInitialize,
                            request(3, "shutdown"), request(4, "textDocument/hover")});
  EXPECT_EQ(-32002, error_code(result.answer(7)));
  EXPECT_TRUE(result.answer(1).contains("result"));
  EXPECT_EQ(-32600, error_code(result.sent[2]));
  EXPECT_TRUE(result.answer(3).contains("result"));
  EXPECT_TRUE(result.answer(3)["result"].is_null());
  EXPECT_EQ(-32600, error_code(result.answer(4)));
}

TEST(LifeCycle, NotificationsBeforeInitializeAreDropped) {
  const Talk result = talk({opening("PRO=X"), kInitialize, request(2, "textDocument/hover")});
  EXPECT_EQ(2u, result.sent.size());
}

TEST(LifeCycle, AnswersComeInTheOrderOfTheRequests) {
  std::vector<Json> messages = {kInitialize, opening("PRO=HASH")};
  for (int id = 2; id < 50; ++id) {
    messages.push_back(request(id, id % 2 == 0 ? "textDocument/foldingRange" : "no/such/method",
                               {{"textDocument", {{"uri", kUri}}}}));
  }
  for (const size_t step : {size_t{0}, size_t{1}, size_t{100}}) {
    const Talk result = talk(messages, step);
    int expected = 1;
    for (const Json& message : result.sent) {
      if (!message.contains("id")) continue;
      EXPECT_EQ(expected++, message["id"]);
    }
    EXPECT_EQ(50, expected);
  }
}

TEST(LifeCycle, TheFirstKnownEncodingOfTheClientIsChosen) {
  const auto chosen = [](const Json& offered) {
    const Json general = {{"general", {{"positionEncodings", offered}}}};
    const Talk result = talk({request(1, "initialize", {{"capabilities", general}})});
    return result.answer(1)["result"]["capabilities"]["positionEncoding"].get<std::string>();
  };
  EXPECT_EQ("utf-8", chosen({"utf-8", "utf-16"}));
  EXPECT_EQ("utf-32", chosen({"x", "utf-32", "utf-8"}));
  EXPECT_EQ("utf-16", chosen(Json::array()));
  EXPECT_EQ("utf-16", chosen(5));
}

TEST(Requests, ThatWereCancelledBeforeTheirTurnAreAnsweredSo) {
  const Json id = {{"id", 3}};
  const Talk result =
      talk({kInitialize, opening("PRO=HASH"),
            request(2, "textDocument/foldingRange", {{"textDocument", {{"uri", kUri}}}}),
            request(3, "textDocument/foldingRange", {{"textDocument", {{"uri", kUri}}}}),
            notification("$/cancelRequest", id),
            request(4, "textDocument/foldingRange", {{"textDocument", {{"uri", kUri}}}}),
            notification("$/cancelRequest", {{"id", 99}}),
            notification("$/cancelRequest", {{"id", nullptr}})});
  EXPECT_TRUE(result.answer(2).contains("result"));
  EXPECT_EQ(-32800, error_code(result.answer(3)));
  EXPECT_TRUE(result.answer(4).contains("result"));
}

TEST(Requests, CanBeCancelledWhileTheyAreAnswered) {
  std::string text;
  for (int i = 0; i < 50; ++i) text += "PRO=HASH, DSTFLD=X\n";
  std::string now, later;
  for (const Json& message :
       {kInitialize, opening(text),
        request(2, "textDocument/documentSymbol", {{"textDocument", {{"uri", kUri}}}})}) {
    now += framed(message.dump());
  }
  later = framed(notification("$/cancelRequest", {{"id", 2}}).dump());
  // Input for the second read arrives after the request has begun: look number 20 finds it.
  size_t reads = 0, looks = 0;
  std::string sent;
  const auto read = [&](char* buffer, size_t) {
    const std::string& bytes = reads++ == 0 ? now : later;
    if (reads > 2) return size_t{0};
    bytes.copy(buffer, bytes.size());
    return bytes.size();
  };
  const auto readable = [&] { return ++looks >= 20 && reads == 1; };
  const auto write = [&](std::string_view bytes) {
    sent += bytes;
    return true;
  };
  Server({read, readable, write}).run();
  EXPECT_NE(std::string::npos, sent.find("-32800"));
}

TEST(Requests, ThatAreWrongAreAnsweredWithTheProtocolsErrors) {
  const auto answer = [](const std::string& method, Json params) {
    return error_code(
        talk({kInitialize, opening("PRO=HASH"), request(2, method, std::move(params))}).answer(2));
  };
  const Json document = {{"uri", kUri}};
  EXPECT_EQ(-32601, answer("no/such/method", {}));
  EXPECT_EQ(-32601, answer("", {}));
  for (const char* method :
       {"textDocument/completion", "textDocument/hover", "textDocument/signatureHelp",
        "textDocument/documentHighlight", "textDocument/onTypeFormatting"}) {
    EXPECT_EQ(-32602, answer(method, Json())) << method;
    EXPECT_EQ(-32602, answer(method, Json::array({1}))) << method;
    EXPECT_EQ(-32602, answer(method, {{"textDocument", 1}})) << method;
    EXPECT_EQ(-32602, answer(method, {{"textDocument", {{"uri", "file:///other"}}}})) << method;
    EXPECT_EQ(-32602, answer(method, {{"textDocument", document}})) << method;
    EXPECT_EQ(-32602, answer(method, {{"textDocument", document}, {"position", {{"line", 0}}}}));
    for (const Json& number :
         {Json(-1), Json(1.5), Json("1"), Json(4294967296u), Json(18446744073709551615u), Json()}) {
      EXPECT_EQ(-32602, answer(method, {{"textDocument", document},
                                        {"position", {{"line", number}, {"character", 0}}}}))
          << method << number;
    }
  }
  const Json backwards = {{"start", {{"line", 1}, {"character", 0}}},
                          {"end", {{"line", 0}, {"character", 0}}}};
  EXPECT_EQ(-32602, answer("textDocument/rangeFormatting",
                           {{"textDocument", document}, {"range", backwards}, {"options", {}}}));
}

TEST(Messages, ThatAreNoneAreAnsweredAndTheNextIsRead) {
  std::string bytes = framed(kInitialize.dump());
  bytes += framed("{") + framed("\xFF") + framed("") + framed("[]") + framed("5") +
           framed("{\"id\":5,\"method\":\"shutdown\"}") +
           framed("{\"jsonrpc\":\"2.0\",\"id\":{},\"method\":\"x\"}") +
           framed("{\"jsonrpc\":\"2.0\",\"id\":6,\"method\":7}") +
           framed("{\"jsonrpc\":\"2.0\",\"id\":8,\"result\":null}") + "Content-Length: x\r\n\r\n" +
           framed("{\"jsonrpc\":\"2.0\",\"id\":9,\"method\":\"shutdown\"}");
  const Talk result = talk_raw(bytes, 7);
  std::vector<int> codes;
  for (const Json& message : result.sent) codes.push_back(error_code(message));
  EXPECT_EQ((std::vector<int>{0, -32700, -32700, -32700, -32600, -32600, -32600, -32600, -32600,
                              -32700, 0}),
            codes);
  EXPECT_EQ(0, result.status);
}

TEST(Messages, NestedDeeplyDoNoHarm) {
  const std::string deep(200000, '[');
  const std::string params =
      "{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"textDocument/hover\","
      "\"params\":" +
      deep + std::string(200000, ']') + "}";
  const Talk result = talk_raw(framed(kInitialize.dump()) + framed(params) + framed(deep));
  EXPECT_EQ(-32602, error_code(result.answer(2)));
}

TEST(Messages, ThatCameBeforeTheEndOfTheInputAreAnswered) {
  const std::string bytes = framed(kInitialize.dump()) + framed(request(2, "shutdown").dump());
  size_t reads = 0, writes = 0;
  const auto read = [&](char* buffer, size_t) {
    if (reads++ > 0) return size_t{0};
    bytes.copy(buffer, bytes.size());
    return bytes.size();
  };
  const auto write = [&](std::string_view) {
    ++writes;
    return true;
  };
  // The end of input counts as readable.
  EXPECT_EQ(0, Server({read, [] { return true; }, write}).run());
  EXPECT_EQ(2u, writes);
}

TEST(Messages, AreNotSentToAClientThatDied) {
  size_t writes = 0;
  const std::string bytes = framed(kInitialize.dump()) + framed(request(2, "shutdown").dump());
  bool read_once = false;
  const auto read = [&](char* buffer, size_t) {
    if (std::exchange(read_once, true)) return size_t{0};
    bytes.copy(buffer, bytes.size());
    return bytes.size();
  };
  const auto write = [&](std::string_view) {
    ++writes;
    return false;
  };
  EXPECT_EQ(1, Server({read, [] { return false; }, write}).run());
  EXPECT_EQ(1u, writes);
}

TEST(Documents, ThatChangeWronglyAreRefusedAndStay) {
  const Json change = {{"textDocument", {{"uri", kUri}, {"version", 2}}},
                       {"contentChanges", {{{"text", "PRO=CCN"}}, {{"text", 5}}}}};
  const Talk result = talk(
      {kInitialize, opening("PRO=HASH, DSTFLD=X"), notification("textDocument/didChange", change),
       notification("textDocument/didChange", {{"textDocument", 1}}),
       notification("textDocument/didClose", {{"textDocument", {{"uri", "file:///other"}}}}),
       request(2, "textDocument/documentSymbol", {{"textDocument", {{"uri", kUri}}}})});
  EXPECT_EQ(3u, result.notifications("window/logMessage").size());
  EXPECT_EQ("HASH X", result.answer(2)["result"][0]["name"]);
}

TEST(Documents, AreGoneWhenTheyAreClosed) {
  const Json document = {{"textDocument", {{"uri", kUri}}}};
  const Talk result =
      talk({kInitialize, opening("PRO=XYZ"), notification("textDocument/didClose", document),
            request(2, "textDocument/documentSymbol", document)});
  EXPECT_EQ(-32602, error_code(result.answer(2)));
  const auto published = result.notifications("textDocument/publishDiagnostics");
  ASSERT_FALSE(published.empty());
  EXPECT_TRUE(published.back()["params"]["diagnostics"].empty());
}

TEST(Documents, MayBeHuge) {
  std::string text = "PRO=HASH, DSTFLD=X, SRC=\"";
  text += std::string(3 << 20, 'x') + "\"\n" + std::string(1 << 20, '(') + "\n";
  const Talk result =
      talk({kInitialize, opening(text),
            request(2, "textDocument/semanticTokens/full", {{"textDocument", {{"uri", kUri}}}})});
  EXPECT_TRUE(result.answer(2).contains("result"));
}

}  // namespace
