// How the machine is held, by a service of the test's own on a bus of its own.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "HelperUnderTest.h"
#include "ToolkitFixture.h"
#include "helper/window/HeldSensor.h"

namespace zovk::helper {
namespace {

constexpr const char* kService = "net.hadess.SensorProxy";
constexpr const char* kDescription = R"(
  <node><interface name="net.hadess.SensorProxy">
    <property name="HasAccelerometer" type="b" access="read"/>
    <property name="AccelerometerOrientation" type="s" access="read"/>
    <method name="ClaimAccelerometer"/>
    <method name="ReleaseAccelerometer"/>
  </interface></node>)";

/// A system bus that nothing else is on.
class PrivateBus {
 public:
  PrivateBus() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
    g_test_dbus_up(bus_);
    setenv("DBUS_SYSTEM_BUS_ADDRESS", g_test_dbus_get_bus_address(bus_), 1);
  }
  ~PrivateBus() {
    g_test_dbus_stop(bus_);
    g_object_unref(bus_);
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  GObjectPtr<GDBusConnection> connect() const {
    constexpr auto kClient =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return GObjectPtr<GDBusConnection>::adopt(g_dbus_connection_new_for_address_sync(
        g_test_dbus_get_bus_address(bus_), kClient, nullptr, nullptr, nullptr));
  }

 private:
  GTestDBus* bus_;
};

/// The service of the sensors. As the real one, it reads none until somebody claims it.
class SensorService {
 public:
  SensorService(const PrivateBus& bus, bool hasAccelerometer)
      : connection_(bus.connect()), hasAccelerometer_(hasAccelerometer) {
    static const GDBusInterfaceVTable kTable = {onCall, onProperty, nullptr, {}};
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kDescription, nullptr);
    g_dbus_connection_register_object(connection_.get(), "/net/hadess/SensorProxy",
                                      node->interfaces[0], &kTable, this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    g_bus_own_name_on_connection(connection_.get(), kService, G_BUS_NAME_OWNER_FLAGS_NONE, nullptr,
                                 nullptr, nullptr, nullptr);
  }
  ~SensorService() { g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr); }
  SensorService(const SensorService&) = delete;
  SensorService& operator=(const SensorService&) = delete;

  void turn(const std::string& edge) {
    edge_ = edge;
    changed("AccelerometerOrientation", g_variant_new_string(edge.c_str()));
  }
  void plugIn() {
    hasAccelerometer_ = true;
    changed("HasAccelerometer", g_variant_new_boolean(TRUE));
  }
  void say(const char* name, GVariant* value) { changed(name, value); }
  int claims() const { return claims_; }

 private:
  static void onCall(GDBusConnection*, const char*, const char*, const char*, const char* method,
                     GVariant*, GDBusMethodInvocation* call, gpointer self) {
    auto* service = static_cast<SensorService*>(self);
    if (std::string(method) == "ClaimAccelerometer") {
      ++service->claims_;
      if (service->edge_ == "undefined") service->turn("normal");
    }
    g_dbus_method_invocation_return_value(call, nullptr);
  }
  static GVariant* onProperty(GDBusConnection*, const char*, const char*, const char*,
                              const char* name, GError**, gpointer self) {
    const auto* service = static_cast<SensorService*>(self);
    if (std::string(name) == "HasAccelerometer") {
      return g_variant_new_boolean(service->hasAccelerometer_ ? TRUE : FALSE);
    }
    return g_variant_new_string(service->edge_.c_str());
  }
  void changed(const char* name, GVariant* value) {
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&properties, "{sv}", name, value);
    g_dbus_connection_emit_signal(
        connection_.get(), nullptr, "/net/hadess/SensorProxy", "org.freedesktop.DBus.Properties",
        "PropertiesChanged", g_variant_new("(sa{sv}as)", kService, &properties, nullptr), nullptr);
  }

  GObjectPtr<GDBusConnection> connection_;
  bool hasAccelerometer_;
  std::string edge_ = "undefined";
  int claims_ = 0;
};

class Held : public ToolkitFixture {
 protected:
  void watch(bool upright) {
    sensor_ = std::make_unique<HeldSensor>(
        upright, [this](const std::string& held) { heard_.push_back(held); });
  }
  void awaitHeld(const std::string& held) {
    EXPECT_TRUE(runUntil([&] { return !heard_.empty() && heard_.back() == held; }))
        << "waited for " << held;
  }

  PrivateBus bus_;
  std::unique_ptr<HeldSensor> sensor_;
  std::vector<std::string> heard_;
};

TEST_F(Held, IsReadOnceTheSensorIsClaimedAndFollowed) {
  SensorService service(bus_, true);
  watch(true);
  awaitHeld("portrait");
  EXPECT_EQ(service.claims(), 1);
  service.turn("left-up");
  awaitHeld("right");
  service.turn("right-up");
  awaitHeld("left");
  service.turn("bottom-up");
  awaitHeld("upsideDown");
  EXPECT_EQ(service.claims(), 1);
  EXPECT_EQ(heard_, (std::vector<std::string>{"portrait", "right", "left", "upsideDown"}));
}

TEST_F(Held, OfAMachineWithAWideScreenIsTurnedByAQuarter) {
  SensorService service(bus_, true);
  watch(false);
  awaitHeld("left");
  service.turn("left-up");
  awaitHeld("portrait");
  service.turn("bottom-up");
  awaitHeld("right");
  service.turn("right-up");
  awaitHeld("upsideDown");
}

TEST_F(Held, IsUnknownForWordsThatNobodyKnowsAndWhenTheServiceEnds) {
  auto service = std::make_unique<SensorService>(bus_, true);
  watch(true);
  awaitHeld("portrait");
  service->turn("on its corner");
  awaitHeld("unknown");
  service->turn("left-up");
  awaitHeld("right");
  service.reset();
  awaitHeld("unknown");
  const SensorService next(bus_, true);
  awaitHeld("portrait");
  EXPECT_EQ(next.claims(), 1);
}

TEST_F(Held, IsNotReadOfAMachineWithoutTheSensorUntilItHasOne) {
  SensorService service(bus_, false);
  service.turn("left-up");
  watch(true);
  service.plugIn();
  awaitHeld("right");
  EXPECT_EQ(heard_, (std::vector<std::string>{"right"}));
  EXPECT_TRUE(runUntil([&] { return service.claims() == 1; }));
}

TEST_F(Held, IsUnknownOnceTheSensorIsTakenAway) {
  SensorService service(bus_, true);
  watch(true);
  awaitHeld("portrait");
  service.say("HasAccelerometer", g_variant_new_boolean(FALSE));
  awaitHeld("unknown");
}

TEST_F(Held, IsUnknownWhereTheServiceSaysWhatItShouldNot) {
  SensorService service(bus_, true);
  watch(true);
  awaitHeld("portrait");
  service.say("AccelerometerOrientation", g_variant_new_int32(7));
  awaitHeld("unknown");
  service.turn("left-up");
  awaitHeld("right");
  service.say("HasAccelerometer", g_variant_new_string("yes"));
  awaitHeld("unknown");
}

TEST_F(Held, IsNotHeardOfAnyMoreAfterTheEnd) {
  SensorService service(bus_, true);
  watch(true);
  sensor_.reset();  // with a question under way
  watch(true);
  awaitHeld("portrait");
  EXPECT_EQ(heard_.size(), 1U);
}

TEST_F(Held, IsNotHeardOfWhenTheServiceEndsAfterTheEnd) {
  auto service = std::make_unique<SensorService>(bus_, true);
  watch(true);
  awaitHeld("portrait");
  sensor_.reset();
  service.reset();
  // What is still under way comes before what another one hears.
  const SensorService next(bus_, true);
  std::vector<std::string> heardByTheNext;
  const HeldSensor nextSensor(true,
                              [&](const std::string& held) { heardByTheNext.push_back(held); });
  EXPECT_TRUE(runUntil([&] { return !heardByTheNext.empty(); }));
  EXPECT_EQ(heard_, std::vector<std::string>{"portrait"});
}

TEST(UprightScreen, IsToldByTheFirstModeOfTheMachinesOwn) {
  const ScratchDirectory folder;
  const auto add = [&folder](const char* name, const char* modes) {
    std::filesystem::create_directory(folder.path() / name);
    std::ofstream(folder.path() / name / "modes") << modes;
  };
  const std::string path = folder.path().string();
  EXPECT_FALSE(hasUprightScreen((folder.path() / "nowhere").string()));
  add("card0-HDMI-A-1", "800x1280\n");
  EXPECT_FALSE(hasUprightScreen(path));
  add("card0-LVDS-1", "");
  add("card0-eDP-1", "800x1280\n1280x800\n");
  EXPECT_TRUE(hasUprightScreen(path));
  std::ofstream(folder.path() / "card0-eDP-1" / "modes") << "1920x1200\n800x1280\n";
  EXPECT_FALSE(hasUprightScreen(path));
}

TEST(UprightScreen, IsOfAnyKindThatMachinesHaveBuiltIn) {
  for (const char* name : {"card0-eDP-1", "card1-LVDS-2", "card0-DSI-1"}) {
    const ScratchDirectory folder;
    std::filesystem::create_directory(folder.path() / name);
    std::ofstream(folder.path() / name / "modes") << "720x720\n";
    EXPECT_FALSE(hasUprightScreen(folder.path().string())) << "as wide as high";
    std::ofstream(folder.path() / name / "modes") << "720x1280\n";
    EXPECT_TRUE(hasUprightScreen(folder.path().string())) << name;
  }
}

}  // namespace
}  // namespace zovk::helper
