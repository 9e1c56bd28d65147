// What a broken game can send its helper: bytes, cut into frames, and the members of the commands
// in them. No window and no page is made; what is read here is what those get.
//
// An input that begins with a zero byte is taken as it stands; of any other, each line becomes a
// frame.
#include <functional>
#include <stdexcept>

#include "fuzz/Fuzz.h"
#include "helper/commands/Arguments.h"
#include "helper/page/LoadRefusal.h"
#include "protocol/FrameCodec.h"

namespace zovk::helper {
namespace {

/// The readers may refuse a member in one way only.
void read(const std::function<void()>& reader) {
  try {
    reader();
  } catch (const std::invalid_argument&) {
  }
}

void expectInRange(int length, std::string_view input) {
  if (length < -32767 || length > 32767) fail("a length that the toolkit does not take", input);
}

void readMember(const Arguments& arguments, std::string_view name, std::string_view input) {
  read([&] {
    if (arguments.id(name) <= 0) fail("an identifier that is none", input);
  });
  read([&] {
    for (const HelperId id : arguments.ids(name)) {
      if (id <= 0) fail("an identifier that is none", input);
    }
  });
  read([&] { (void)arguments.flag(name); });
  read([&] {
    if (arguments.wholeNumber(name) < 0) fail("a whole number below zero", input);
  });
  read([&] {
    const double number = arguments.number(name);
    if (!(number >= -32767 && number <= 32767)) fail("a number out of range", input);
  });
  read([&] {
    if (arguments.text(name).find('\0') != std::string::npos) fail("a text that ends early", input);
  });
  read([&] { (void)arguments.texts(name); });
  read([&] {
    const GdkRGBA color = arguments.color(name);
    for (const float part : {color.red, color.green, color.blue, color.alpha}) {
      if (!(part >= 0 && part <= 1)) fail("a colour that is none", input);
    }
  });
  read([&] {
    const Frame frame = arguments.frame(name);
    for (const int length : {frame.x, frame.y, frame.width, frame.height}) {
      expectInRange(length, input);
    }
  });
}

void receive(const HelperMessage& message, std::string_view input) {
  if (!message.contains("type") || !message.at("type").is_string()) fail("no type", input);
  const Arguments arguments(message);
  for (const auto& member : message) readMember(arguments, member.key(), input);
  readMember(arguments, "missing", input);

  // What was decoded can be sent on. Numbers lose their last digit on the way.
  const auto frame = encodeFrame(message);
  // JSON cannot hold a number without end, or none.
  const auto holds = [&](const char* word) { return frame->find(word) != std::string::npos; };
  if (!frame || holds("Infinity") || holds("NaN")) return;
  FrameDecoder again;
  again.feed(*frame);
  const auto same = again.next();
  if (!same || same->size() != message.size() || same->at("type") != message.at("type")) {
    fail("a message that does not survive its frame", input);
  }
}

void judgeAddresses(std::string_view input) {
  for (const std::string& line : linesOf(input)) {
    const bool refused = !loadRefusal(line).empty();
    if (refused && !line.starts_with("file:")) fail("a refusal of what is no file", input);
  }
}

void feed(FrameDecoder& decoder, std::string_view bytes, std::string_view input) {
  decoder.feed(bytes);
  while (const auto message = decoder.next()) receive(*message, input);
}

void fuzzCommands(std::string_view input) {
  FrameDecoder decoder;
  if (input.starts_with('\0')) {
    // In pieces of different sizes, as a socket gives them.
    std::string_view rest = input.substr(1);
    for (std::size_t size = 1; !rest.empty(); size = size * 2 + 1) {
      feed(decoder, rest.substr(0, size), input);
      rest.remove_prefix(std::min(rest.size(), size));
    }
    return;
  }
  for (const std::string& line : linesOf(input)) {
    std::string frame;
    for (unsigned shift = 0; shift < 32; shift += 8) {
      frame += static_cast<char>(line.size() >> shift & 0xFFU);
    }
    feed(decoder, frame + line, input);
  }
  judgeAddresses(input);
}

}  // namespace
}  // namespace zovk::helper

void zovk::fuzz(std::string_view input) {
  helper::fuzzCommands(input);
}
