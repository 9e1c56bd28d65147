#include <string>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <gtest/gtest.h>

#include "text/ZOVKPopupCommonTool.h"

namespace zovk {
namespace {

std::string pairsOf(const std::string& url) {
  return boost::json::serialize(ZOVKPopupCommonTool::urlParamToDictionary(url));
}

TEST(UrlParameters, AreWhatFollowsTheFirstQuestionMark) {
  EXPECT_EQ(pairsOf("u?a=1&b=%41"), R"({"a":"1","b":"A"})");
  EXPECT_EQ(pairsOf("https://s.example/x?a=1"), R"({"a":"1"})");
  EXPECT_EQ(pairsOf("u?a=1?b=2"), R"({"a":"2"})") << "first and last piece";
  EXPECT_EQ(pairsOf("a=1&b=2"), "{}");
  EXPECT_EQ(pairsOf(""), "{}");
  EXPECT_EQ(pairsOf("u?"), "{}");
}

TEST(UrlParameters, AreThoseOfTheFragmentWhereThereIsOne) {
  EXPECT_EQ(pairsOf("u?a=1#k=v"), R"({"#k":"v"})");
  EXPECT_EQ(pairsOf("p?x=1#y=2"), R"({"#y":"2"})");
  EXPECT_EQ(pairsOf("p?x=1#frag"), R"({"#frag":"#frag"})");
  EXPECT_EQ(pairsOf("p?x=1#y=2&z=3"), R"({"#y":"2","z":"3"})");
  EXPECT_EQ(pairsOf("p?x=1#y#z=2"), R"({"#y#z":"2"})") << "the first sign counts";
  EXPECT_EQ(pairsOf("p?x=1#"), R"({"#":"#"})");
  EXPECT_EQ(pairsOf("p#f?x=1"), R"({"x":"1"})") << "a fragment before the question mark";
  EXPECT_EQ(pairsOf("p#f=1"), "{}");
}

TEST(UrlParameters, TakeTheFirstAndTheLastPiece) {
  EXPECT_EQ(pairsOf("u?a=b=c"), R"({"a":"c"})");
  EXPECT_EQ(pairsOf("u?a=b=c=d=e"), R"({"a":"e"})");
  EXPECT_EQ(pairsOf("u?flag"), R"({"flag":"flag"})");
  EXPECT_EQ(pairsOf("u?a="), R"({"a":""})");
  EXPECT_EQ(pairsOf("u?a=b="), R"({"a":""})");
}

TEST(UrlParameters, WithoutAKeyAreLeftOut) {
  EXPECT_EQ(pairsOf("u?=5"), "{}");
  EXPECT_EQ(pairsOf("u?="), "{}");
  EXPECT_EQ(pairsOf("u?&&a=1&&"), R"({"a":"1"})");
}

TEST(UrlParameters, OfALaterPieceReplaceEarlierOnes) {
  EXPECT_EQ(pairsOf("u?a=1&b=2&a=3"), R"({"a":"3","b":"2"})");
  EXPECT_EQ(pairsOf("u?a=1&%61=2"), R"({"a":"2"})");
}

TEST(UrlParameters, AreDecodedOnce) {
  EXPECT_EQ(pairsOf("u?a%20b=c%26d%3De"), R"({"a b":"c&d=e"})");
  EXPECT_EQ(pairsOf("u?a=%2541"), R"({"a":"%41"})");
  EXPECT_EQ(pairsOf("u?a=%e4%B8%ad"), "{\"a\":\"\xe4\xb8\xad\"}");
  EXPECT_EQ(pairsOf("u?a=1+1"), R"({"a":"1+1"})");
}

TEST(UrlParameters, ThatCannotBeDecodedAreLeftOut) {
  EXPECT_EQ(pairsOf("u?a=%&b=2"), R"({"b":"2"})");
  EXPECT_EQ(pairsOf("u?a=%4&b=2"), R"({"b":"2"})");
  EXPECT_EQ(pairsOf("u?a=%zz&b=2"), R"({"b":"2"})");
  EXPECT_EQ(pairsOf("u?%zz=1&b=2"), R"({"b":"2"})");
  EXPECT_EQ(pairsOf("u?a=%ff&b=2"), R"({"b":"2"})");
  EXPECT_EQ(pairsOf("u?a=%ed%a0%80&b=2"), R"({"b":"2"})");
  EXPECT_EQ(pairsOf("u?a=1&a=%ff"), R"({"a":"1"})") << "the earlier value stays";
}

TEST(UrlParameters, MayBeMany) {
  std::string url = "u?";
  for (int i = 0; i < 10'000; ++i) url += "k" + std::to_string(i) + "=v&";
  EXPECT_EQ(ZOVKPopupCommonTool::urlParamToDictionary(url).size(), 10'000U);
}

std::string queryOf(const char* json, bool needEncode = false) {
  return ZOVKPopupCommonTool::dictionaryToUrlParam(boost::json::parse(json).as_object(),
                                                   needEncode);
}

TEST(QueryText, JoinsPairsInOrder) {
  EXPECT_EQ(queryOf(R"({"z":"1","a":"2"})"), "z=1&a=2");
  EXPECT_EQ(queryOf("{}"), "");
  EXPECT_EQ(queryOf("{}", true), "");
  EXPECT_EQ(queryOf(R"({"a":""})"), "a=");
}

TEST(QueryText, WritesValuesOfEveryType) {
  EXPECT_EQ(queryOf(R"({"a":1,"b":-2,"c":true,"d":false,"e":"text"})"), "a=1&b=-2&c=1&d=0&e=text");
  EXPECT_EQ(queryOf(R"({"a":[1,2],"b":{"c":null}})"), R"(a=[1,2]&b={"c":null})");
}

TEST(QueryText, WritesNumbersAsPeopleDo) {
  EXPECT_EQ(queryOf(R"({"a":0.5,"b":100.0,"c":1E2,"d":-0.25,"e":-0.0})", true),
            "a=0.5&b=100&c=100&d=-0.25&e=-0");
  EXPECT_EQ(queryOf(R"({"a":1e21,"b":1e-9})", true), "a=1e21&b=1e-09");
}

TEST(QueryText, KeepsEveryDigitOfAWholeNumber) {
  EXPECT_EQ(queryOf(R"({"a":9007199254740993,"b":-9223372036854775808,"c":18446744073709551615})"),
            "a=9007199254740993&b=-9223372036854775808&c=18446744073709551615");
}

TEST(QueryText, EncodesValuesOnlyWhenAsked) {
  EXPECT_EQ(queryOf(R"({"a":"a b"})"), "a=a b");
  EXPECT_EQ(queryOf(R"({"a":"a b"})", true), "a=a%20b");
  EXPECT_EQ(queryOf(R"({"a b":"c"})", true), "a b=c") << "keys never";
}

TEST(QueryText, LeavesWhatMayStandInAQuery) {
  const std::string allowed = "azAZ09-._~!$&'()*+,;=:@/?";
  EXPECT_EQ(ZOVKPopupCommonTool::dictionaryToUrlParam({{"a", allowed}}, true), "a=" + allowed);
}

TEST(QueryText, EncodesEverythingElse) {
  EXPECT_EQ(ZOVKPopupCommonTool::dictionaryToUrlParam({{"a", "#%\"<>[\\]^`{|}\n"}}, true),
            "a=%23%25%22%3C%3E%5B%5C%5D%5E%60%7B%7C%7D%0A");
  EXPECT_EQ(ZOVKPopupCommonTool::dictionaryToUrlParam({{"a", "\xe4\xb8\xad"}}, true),
            "a=%E4%B8%AD");
}

TEST(QueryText, IsReadBackAsItWas) {
  const boost::json::object pairs{{"a", "x y%"}, {"b", "100%s"}, {"c", "\"quoted\""}};
  EXPECT_EQ(ZOVKPopupCommonTool::urlParamToDictionary(
                "u?" + ZOVKPopupCommonTool::dictionaryToUrlParam(pairs, true)),
            pairs);
}

}  // namespace
}  // namespace zovk
