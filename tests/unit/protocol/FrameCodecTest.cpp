#include <optional>
#include <string>
#include <string_view>

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>
#include <gtest/gtest.h>

#include "protocol/FrameCodec.h"

namespace zovk {
namespace {

std::string framed(std::string_view text) {
  std::string frame;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    frame += static_cast<char>((text.size() >> shift) & 0xFFU);
  }
  return frame.append(text);
}

std::string errorOf(std::string_view bytes) {
  FrameDecoder decoder;
  decoder.feed(bytes);
  EXPECT_FALSE(decoder.next().has_value());
  return decoder.error();
}

/// A message with a list in a list, `depth` levels with the message itself.
HelperMessage nested(std::size_t depth) {
  boost::json::value inner = 1;
  for (std::size_t i = 1; i < depth; ++i) inner = boost::json::array{inner};
  return {{"type", "web.message"}, {"body", inner}};
}

std::optional<HelperMessage> roundTrip(const HelperMessage& message) {
  FrameDecoder decoder;
  decoder.feed(encodeFrame(message).value());
  return decoder.next();
}

TEST(FrameCodec, WritesTheLengthLeastSignificantByteFirst) {
  const std::optional<std::string> frame = encodeFrame({{"type", "hello"}});
  ASSERT_TRUE(frame.has_value());
  EXPECT_EQ(*frame, std::string("\x10\0\0\0", 4) + R"({"type":"hello"})");
}

TEST(FrameCodec, ReadsWhatItWrote) {
  const HelperMessage message = {
      {"type", "web.load"}, {"view", 7}, {"url", "https://example.org/\xC3\xA4"}};
  EXPECT_EQ(roundTrip(message), message);
}

TEST(FrameCodec, ReadsALongMessage) {
  const HelperMessage message = {{"type", "web.evaluate"}, {"script", std::string(1000000, 'x')}};
  EXPECT_EQ(roundTrip(message), message);
}

TEST(FrameCodec, GivesAMessageOnlyWhenItsLastByteIsThere) {
  const std::string frame = encodeFrame({{"type", "hello"}}).value();
  FrameDecoder decoder;
  for (std::size_t i = 0; i + 1 < frame.size(); ++i) {
    decoder.feed(frame.substr(i, 1));
    EXPECT_FALSE(decoder.next().has_value());
  }
  decoder.feed(frame.substr(frame.size() - 1));
  EXPECT_TRUE(decoder.next().has_value());
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_FALSE(decoder.failed());
}

TEST(FrameCodec, GivesSeveralMessagesOfOneReadInOrder) {
  FrameDecoder decoder;
  decoder.feed(framed(R"({"type":"a"})") + framed(R"({"type":"b"})") + framed(R"({"type":)"));
  EXPECT_EQ(decoder.next()->at("type"), "a");
  EXPECT_EQ(decoder.next()->at("type"), "b");
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_TRUE(decoder.failed());
}

TEST(FrameCodec, RefusesAnEmptyFrame) {
  EXPECT_EQ(errorOf(framed("")), "empty frame");
}

TEST(FrameCodec, RefusesATooLongFrameBeforeItsContentIsThere) {
  EXPECT_EQ(errorOf(std::string("\x01\0\0\x04", 4)), "frame too long");
}

TEST(FrameCodec, AwaitsTheContentOfTheLongestFrame) {
  EXPECT_EQ(errorOf(std::string("\0\0\0\x04", 4)), "");
}

TEST(FrameCodec, RefusesToWriteWhatIsLongerThanAFrame) {
  const HelperMessage message = {{"type", "x"}, {"text", std::string(kMaximumFrameLength, 'x')}};
  EXPECT_FALSE(encodeFrame(message).has_value());
}

TEST(FrameCodec, RefusesWhatIsNotJson) {
  EXPECT_NE(errorOf(framed("hello")), "");
  EXPECT_NE(errorOf(framed(R"({"type":"a"} {})")), "");
  EXPECT_NE(errorOf(framed("{\"type\":\"\xFF\"}")), "");
}

TEST(FrameCodec, RefusesWhatIsNotAnObject) {
  EXPECT_EQ(errorOf(framed(R"(["type"])")), "frame is not an object");
}

TEST(FrameCodec, RefusesAMessageWhoseTypeIsMissingOrNoText) {
  EXPECT_EQ(errorOf(framed(R"({"typ":"a"})")), "message without a type");
  EXPECT_EQ(errorOf(framed(R"({"type":5})")), "message without a type");
}

TEST(FrameCodec, GivesNothingMoreAfterAnError) {
  FrameDecoder decoder;
  decoder.feed(framed("[]"));
  EXPECT_FALSE(decoder.next().has_value());
  decoder.feed(framed(R"({"type":"a"})"));
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_EQ(decoder.error(), "frame is not an object");
}

TEST(FrameCodec, TakesDeepMessagesUpToItsLimitOnly) {
  EXPECT_TRUE(roundTrip(nested(kMaximumMessageDepth)).has_value());
  EXPECT_FALSE(roundTrip(nested(kMaximumMessageDepth + 1)).has_value());
}

TEST(FrameCodec, TakesValuesOfThePageUpTo512LevelsDeep) {
  EXPECT_EQ(kMaximumValueDepth, 512U);
  EXPECT_TRUE(roundTrip(nested(1 + kMaximumValueDepth)).has_value());
  EXPECT_FALSE(roundTrip(nested(2 + kMaximumValueDepth)).has_value());
}

TEST(FrameCodec, ParsesALongFrameWhileItComes) {
  FrameDecoder decoder;
  decoder.feed(framed("[{]" + std::string(1000, ' ')).substr(0, 8));
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_TRUE(decoder.failed()) << "without the end of the frame";
}

TEST(FrameCodec, RefusesAFrameThatEndsWithinItsJson) {
  EXPECT_TRUE(errorOf(framed(R"({"type":"a")")).starts_with("frame is not JSON"));
}

TEST(FrameCodec, SaysHowMuchIsMissingOfALengthAndOfAContent) {
  const std::string frame = encodeFrame({{"type", "hello"}}).value();
  FrameDecoder decoder;
  EXPECT_EQ(decoder.missing(), 4U);
  decoder.feed(frame.substr(0, 3));
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_EQ(decoder.missing(), 1U);
  decoder.feed(frame.substr(3, 1));
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_EQ(decoder.missing(), 16U);
  decoder.feed(frame.substr(4, 6));
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_EQ(decoder.missing(), 10U);
  decoder.feed(frame.substr(10));
  EXPECT_TRUE(decoder.next().has_value());
  EXPECT_EQ(decoder.missing(), 4U);
}

/// Returns the text that the decoder collected; "none" if there is none.
std::string collected(FrameDecoder& decoder) {
  const auto text = decoder.takeText();
  return text ? std::string(text->data(), text->size()) : "none";
}

TEST(FrameCodec, OnlyCollectsWhatIsLongerThanItIsToParse) {
  const std::string shortOne = R"({"type":"a"})";
  const std::string longOne = R"({"type":"ab"} no JSON)";
  FrameDecoder decoder(shortOne.size());
  decoder.feed(framed(shortOne) + framed(longOne).substr(0, 10));
  EXPECT_EQ(decoder.next()->at("type"), "a");
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_EQ(decoder.missing(), longOne.size() - 6);
  EXPECT_EQ(collected(decoder), "none");
  decoder.feed(framed(longOne).substr(10) + framed(shortOne));
  EXPECT_FALSE(decoder.next().has_value());
  EXPECT_FALSE(decoder.next().has_value()) << "what comes next waits";
  EXPECT_EQ(collected(decoder), longOne);
  EXPECT_EQ(collected(decoder), "none");
  EXPECT_EQ(decoder.next()->at("type"), "a");
  EXPECT_FALSE(decoder.failed());
}

TEST(FrameCodec, MendsTextThatIsNotUtf8WhenItWrites) {
  const auto mended = [](std::string_view text) {
    return std::string(roundTrip({{"type", "x"}, {"text", text}})->at("text").as_string());
  };
  const std::string mark = "\xEF\xBF\xBD";
  EXPECT_EQ(mended("a\xFFz"), "a" + mark + "z");
  EXPECT_EQ(mended("cut \xE2\x82"), "cut " + mark + mark);
  EXPECT_EQ(mended("\xED\xA0\x80"), mark + mark + mark);
  EXPECT_EQ(mended("\xC0\xAF"), mark + mark);
  EXPECT_EQ(mended("\xF4\x90\x80\x80"), mark + mark + mark + mark);
  EXPECT_EQ(mended("\xE2\x82\xAC \xF0\x9F\x98\x80 \xC3\xA4"),
            "\xE2\x82\xAC \xF0\x9F\x98\x80 \xC3\xA4");
}

}  // namespace
}  // namespace zovk
