#include "hostile/RawServer.h"

namespace zovk {
namespace {

using Then = RawAnswer::Then;

std::string repeated(const std::string& text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

/// Answers that are broken, whatever their body is.
void addBrokenHttp(std::vector<RawAnswer>& answers, const std::string& good) {
  const std::string whole = httpAnswer(good);
  answers.push_back({"nothing", ""});
  answers.push_back({"nothing, and no end", "", Then::kStayOpen});
  answers.push_back({"a reset", "", Then::kReset});
  answers.push_back({"a reset in the body", whole.substr(0, whole.size() - 1), Then::kReset});
  answers.push_back({"half a status line", "HTTP/1."});
  answers.push_back({"no HTTP", "SSH-2.0-server\r\n"});
  answers.push_back({"zeros", std::string(5000, '\0')});
  answers.push_back({"headers without end", "HTTP/1.1 200 OK\r\n" + repeated("A: b\r\n", 200'000)});
  answers.push_back({"a long header", "HTTP/1.1 200 OK\r\nA: " + std::string(5'000'000, 'a')});
  answers.push_back(
      {"a body that is too short", "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n" + good});
  answers.push_back({"a body that is too short, and no end",
                     "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n" + good, Then::kStayOpen});
  answers.push_back({"a negative length", "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n" + good});
  answers.push_back({"an endless length",
                     "HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\n" + good});
  answers.push_back(
      {"two lengths", "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\n" + good});
  answers.push_back(
      {"a bad chunk", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n" + good});
  answers.push_back({"an endless chunk",
                     "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffffffffff\r\n" + good,
                     Then::kStayOpen});
  answers.push_back(
      {"a coding that it is not", httpAnswer(good, "200 OK", "Content-Encoding: gzip\r\n")});
  answers.push_back(
      {"many codings",
       httpAnswer(good, "200 OK", "Content-Encoding: " + repeated("gzip, ", 50) + "gzip\r\n")});
  answers.push_back({"a drip", "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n", Then::kDrip});
  answers.push_back({"a drip of headers", "HTTP/1.1 200 OK\r\nX: ", Then::kDrip});
  answers.push_back({"interim answers without end", repeated("HTTP/1.1 100 Continue\r\n\r\n", 5000),
                     Then::kStayOpen});
}

void addOddHttp(std::vector<RawAnswer>& answers, const std::string& good) {
  for (const char* status : {"404 Not Found", "500 Oh", "204 No Content", "304 Not Modified",
                             "416 Range", "999 Odd", "401 Unauthorized"}) {
    answers.push_back({std::string("status ") + status, httpAnswer(good, status)});
  }
  for (const char* place : {"/again", "file:///etc/passwd", "ftp://127.0.0.1:9/", "//", "http://[",
                            "http://127.0.0.1:9/", "\x01\x02"}) {
    answers.push_back({std::string("a redirect to ") + place,
                       httpAnswer("", "302 Found", std::string("Location: ") + place + "\r\n")});
  }
  answers.push_back(
      {"odd validators", httpAnswer(good, "200 OK",
                                    "ETag: " + std::string(60'000, 'e') +
                                        "\r\nLast-Modified: yesterday\r\n"
                                        "Cache-Control: max-age=99999999999999\r\n")});
  answers.push_back(
      {"cookies", httpAnswer(good, "200 OK", repeated("Set-Cookie: a=b; Domain=.\r\n", 500))});
}

void addOddBodies(std::vector<RawAnswer>& answers, const std::string& good) {
  const std::vector<std::pair<const char*, std::string>> bodies = {
      {"an empty body", ""},
      {"HTML", "<!DOCTYPE html><p>It works"},
      {"null", "null"},
      {"a number", "17"},
      {"a text", "\"text\""},
      {"an array", "[1]"},
      {"an empty object", "{}"},
      {"half of it", good.substr(0, good.size() / 2)},
      {"it twice", good + good},
      {"no UTF-8", "{\"a\":\"\xff\xfe\"}"},
      {"UTF-16", std::string("{\0\"\0a\0\"\0:\0001\0}\0", 14)},
      {"deep arrays", repeated("[", 100'000) + repeated("]", 100'000)},
      {"deep objects", repeated("{\"a\":", 100'000) + "1" + repeated("}", 100'000)},
      {"long numbers", "{\"code\":" + std::string(100'000, '9') + "}"},
      {"another code", "{\"code\":7,\"message\":\"" + std::string(100'000, 'm') + "\"}"},
      {"popups that are none", R"({"code":0,"popups":[null,1,"a",[],true]})"},
      {"popups with wrong kinds",
       R"({"code":0,"popups":[{"scene":{},"sig":[],"pop_id":null,"content_type":"1"}]})"},
      {"names that lead elsewhere",
       R"({"code":0,"popups":[{"scene":"s","sig":"../../../x","content_type":1,"uri":"file:///etc/passwd"}]})"},
      {"a surplus of popups",
       "{\"code\":0,\"popups\":[" + repeated("{\"a\":1},", 200'000) + "{\"a\":1}]}"},
      {"a surplus of bytes",
       "{\"code\":0,\"popups\":[{\"a\":\"" + std::string(20'000'000, 'x') + "\"}]}"},
      {"a wanted popup with odd extras",
       R"({"need_popup":1,"extra":{"a":{"b":[null,1e400]},"":"&=?#","\u0000":"\u0000"}})"},
      {"a wanted popup with a long extra",
       "{\"need_popup\":1,\"extra\":{\"a\":\"" + std::string(3'000'000, 'x') + "\"}}"},
  };
  for (const auto& [name, body] : bodies) answers.push_back({name, httpAnswer(body)});
}

}  // namespace

std::string httpAnswer(const std::string& body, const std::string& status,
                       const std::string& headers) {
  return "HTTP/1.1 " + status + "\r\n" + headers +
         "Content-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

std::vector<RawAnswer> hostileAnswers(const std::string& good) {
  std::vector<RawAnswer> answers;
  addBrokenHttp(answers, good);
  addOddHttp(answers, good);
  addOddBodies(answers, good);
  return answers;
}

}  // namespace zovk
