// The service on a bus of its own, called by a plain client on another connection.

#include "desktop/service/preview_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "desktop/service/gio_item_resolver.h"
#include "desktop/service/owned.h"
#include "desktop/service/previewer_names.h"
#include "fake_preview_host.h"
#include "main_loop.h"
#include "private_bus.h"

namespace lumisk::desktop {
namespace {

using test::FakePreviewHost;
using test::runUntil;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kA = "file:///folder/a.md";
constexpr const char* kB = "file:///folder/b.md";

std::string printed(GVariant* value) {
  const OwnedText text(g_variant_print(value, FALSE));
  return text.get();
}

/// A program on the bus that is no previewer.
class Client {
 public:
  explicit Client(GDBusConnection* connection)
      : connection_(GRef<GDBusConnection>::retain(connection)) {
    subscription_ = g_dbus_connection_signal_subscribe(
        connection, nullptr, nullptr, nullptr, kFilesPreviewerPath, nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE, &Client::received, this, nullptr);
    ownerSubscription_ = g_dbus_connection_signal_subscribe(
        connection, "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", nullptr,
        kFilesPreviewerName, G_DBUS_SIGNAL_FLAGS_NONE, &Client::ownerChanged, this, nullptr);
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() {
    g_dbus_connection_signal_unsubscribe(connection_.get(), subscription_);
    g_dbus_connection_signal_unsubscribe(connection_.get(), ownerSubscription_);
  }

  /// Sends a call without waiting for the answer.
  void send(const char* name, const char* path, const char* interface, const char* method,
            GVariant* arguments) {
    ++unanswered_;
    g_dbus_connection_call(connection_.get(), name, path, interface, method, arguments, nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, &Client::answered, this);
  }
  /// Sends a call and waits; returns the answer, or "error: " and its name.
  std::string call(const char* name, const char* path, const char* interface, const char* method,
                   GVariant* arguments) {
    send(name, path, interface, method, arguments);
    EXPECT_TRUE(waitForAnswers());
    return answers.back();
  }
  std::string callFiles(const char* method, GVariant* arguments) {
    return call(kFilesPreviewerName, kFilesPreviewerPath, kFilesInterface, method, arguments);
  }
  std::string get(const char* property) {
    return call(kFilesPreviewerName, kFilesPreviewerPath, "org.freedesktop.DBus.Properties", "Get",
                g_variant_new("(ss)", kFilesInterface, property));
  }
  bool waitForAnswers() {
    return runUntil([&] { return unanswered_ == 0; });
  }
  bool waitForName(const char* name, bool isOwned) {
    return runUntil([&] {
      return call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                  "NameHasOwner", g_variant_new("(s)", name)) == (isOwned ? "(true,)" : "(false,)");
    });
  }

  GDBusConnection* connection() const { return connection_.get(); }

  std::vector<std::string> answers;
  /// "Interface.Signal(arguments)".
  std::vector<std::string> signals;
  /// Each change of hands of the name that Files calls: whether it then had an owner.
  std::vector<bool> ownerships;

 private:
  static void answered(GObject* connection, GAsyncResult* result, gpointer self) {
    auto* const client = static_cast<Client*>(self);
    ErrorSlot error;
    const OwnedVariant answer(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &error));
    client->answers.push_back(answer ? printed(answer.get()) : error.message());
    --client->unanswered_;
  }
  static void received(GDBusConnection*, const char*, const char*, const char* interface,
                       const char* signal, GVariant* arguments, gpointer self) {
    static_cast<Client*>(self)->signals.push_back(std::string(interface) + "." + signal +
                                                  printed(arguments));
  }
  static void ownerChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                           GVariant* arguments, gpointer self) {
    const char* owner = nullptr;
    g_variant_get(arguments, "(&s&s&s)", nullptr, nullptr, &owner);
    static_cast<Client*>(self)->ownerships.push_back(*owner != '\0');
  }

  GRef<GDBusConnection> connection_;
  guint subscription_ = 0;
  guint ownerSubscription_ = 0;
  int unanswered_ = 0;
};

class PreviewServiceTest : public testing::Test {
 protected:
  void SetUp() override {
    bus_ = std::make_unique<test::PrivateBus>();
    serviceConnection_ = bus_->connect();
    clientConnection_ = bus_->connect();
    client_ = std::make_unique<Client>(clientConnection_.get());
    client_->waitForName(kFilesPreviewerName, false);  // the subscriptions are in place now
  }
  void TearDown() override {
    client_.reset();
    service_.reset();
    test::PrivateBus::close(serviceConnection_);
    test::PrivateBus::close(clientConnection_);
    bus_.reset();
  }

  void startAndWait() {
    start();
    ASSERT_TRUE(client_->waitForName(kFilesPreviewerName, true));
    ASSERT_TRUE(client_->waitForName(kNemoPreviewerName, true));
  }
  void start(const ServiceTimes& times = {}) {
    service_ = std::make_unique<PreviewService>(serviceConnection_.get(), host_, resolver_, times);
    service_->onIdle = [this] { hasIdled_ = true; };
    service_->answerTo({kFilesPreviewerName, kNemoPreviewerName});
  }
  std::string show(const char* uri, bool closes, const char* parent = "x11:3a") {
    return client_->callFiles("ShowFile", g_variant_new("(ssb)", uri, parent, closes));
  }
  bool waitForShown(std::size_t count) {
    return runUntil([&] { return host_.shown.size() >= count; });
  }

  /// As the bus sees it when it has read all that the service sent it so far.
  bool hasOwnerAfterClaims(const char* name) {
    const OwnedVariant answer(g_dbus_connection_call_sync(
        serviceConnection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus", "NameHasOwner", g_variant_new("(s)", name), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    return answer != nullptr && printed(answer.get()) == "(true,)";
  }

  FakePreviewHost host_;
  GioItemResolver resolver_;
  std::unique_ptr<Client> client_;
  std::unique_ptr<PreviewService> service_;
  bool hasIdled_ = false;

 private:
  std::unique_ptr<test::PrivateBus> bus_;
  GRef<GDBusConnection> serviceConnection_;
  GRef<GDBusConnection> clientConnection_;
};

TEST_F(PreviewServiceTest, AnswersEveryShapeOfCall) {
  startAndWait();
  struct Row {
    const char* name;
    const char* path;
    const char* interface;
    GVariant* arguments;
    const char* parentHandle;
    const char* token;
    Arrows arrows = Arrows::Select;
  };
  const Row rows[] = {
      {kFilesPreviewerName, kFilesPreviewerPath, kFilesInterface,
       g_variant_new("(ssb)", "file:///0", "x11:3a", FALSE), "x11:3a", ""},
      {kFilesPreviewerName, kFilesPreviewerPath, kFilesInterface,
       g_variant_new("(ssbs)", "file:///1", "wayland:w", FALSE, "token"), "wayland:w", "token"},
      {kFilesPreviewerName, kFilesPreviewerPath, kFilesOlderInterface,
       g_variant_new("(sib)", "file:///2", 0x3a, FALSE), "x11:3a", "", Arrows::Scroll},
      {kFilesPreviewerName, kFilesPreviewerPath, kFilesOlderInterface,
       g_variant_new("(sib)", "file:///3", 0, FALSE), "", "", Arrows::Scroll},
      {kNemoPreviewerName, kNemoPreviewerPath, kNemoInterface,
       g_variant_new("(sib)", "file:///4", -1, FALSE), "", "", Arrows::Scroll},
      {kFilesPreviewerName, kFilesPreviewerPath, kFilesInterface,
       g_variant_new("(ssb)", "file:///5", "x11:0", FALSE), "x11:0", ""},
      {kFilesPreviewerName, kFilesPreviewerPath, kFilesInterface,
       g_variant_new("(ssb)", "file:///6", "no window at all", FALSE), "no window at all", ""},
  };
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const Row& row = rows[i];
    EXPECT_EQ(client_->call(row.name, row.path, row.interface, "ShowFile", row.arguments), "()");
    ASSERT_TRUE(waitForShown(i + 1));
    EXPECT_EQ(host_.shown[i].uri, "file:///" + std::to_string(i));
    EXPECT_EQ(host_.shown[i].parentHandle, row.parentHandle) << i;
    EXPECT_EQ(host_.shown[i].activationToken, row.token) << i;
    EXPECT_EQ(host_.shown[i].arrows, row.arrows) << i;
  }
}

TEST_F(PreviewServiceTest, RefusesCallsOfAnotherShape) {
  startAndWait();
  for (GVariant* arguments :
       {g_variant_new("(s)", kA), g_variant_new("(sssb)", kA, "", "", TRUE),
        g_variant_new("(sib)", kA, 1, TRUE), g_variant_new("(ssbs)", kA, "", TRUE, "t")}) {
    const bool isRight = g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ssbs)")) != FALSE;
    const std::string answer = client_->callFiles("ShowFile", arguments);
    EXPECT_EQ(answer == "()", isRight) << answer;
  }
  EXPECT_NE(client_->callFiles("Open", nullptr), "()");
}

TEST_F(PreviewServiceTest, CloseWorksOnEveryInterface) {
  startAndWait();
  struct Row {
    const char* name;
    const char* path;
    const char* interface;
  };
  const Row rows[] = {{kFilesPreviewerName, kFilesPreviewerPath, kFilesInterface},
                      {kFilesPreviewerName, kFilesPreviewerPath, kFilesOlderInterface},
                      {kNemoPreviewerName, kNemoPreviewerPath, kNemoInterface}};
  std::size_t shownBefore = 0;
  for (const Row& row : rows) {
    show(kA, true);
    ASSERT_TRUE(waitForShown(++shownBefore));
    EXPECT_EQ(client_->call(row.name, row.path, row.interface, "Close", nullptr), "()");
    EXPECT_FALSE(host_.isVisible());
  }
}

TEST_F(PreviewServiceTest, PropertiesAnswer) {
  startAndWait();
  EXPECT_EQ(client_->get("Visible"), "(<false>,)");
  EXPECT_EQ(client_->get("ParentHandle"), "(<''>,)");
  show(kA, true);
  ASSERT_TRUE(waitForShown(1));
  EXPECT_EQ(client_->get("Visible"), "(<true>,)");
  EXPECT_EQ(client_->get("ParentHandle"), "(<'x11:3a'>,)");
  const std::string all =
      client_->call(kFilesPreviewerName, kFilesPreviewerPath, "org.freedesktop.DBus.Properties",
                    "GetAll", g_variant_new("(s)", kFilesInterface));
  EXPECT_NE(all.find("'Visible': <true>"), std::string::npos) << all;
  EXPECT_NE(all.find("'ParentHandle': <'x11:3a'>"), std::string::npos) << all;
}

TEST_F(PreviewServiceTest, ChangesAreAnnouncedOnceEach) {
  startAndWait();
  const std::string prefix =
      "org.freedesktop.DBus.Properties.PropertiesChanged('org.gnome.NautilusPreviewer2', ";
  show(kA, true, "x11:3a");
  ASSERT_TRUE(waitForShown(1));
  show(kB, false, "x11:3a");
  ASSERT_TRUE(waitForShown(2));
  show(kA, false, "x11:3b");
  ASSERT_TRUE(waitForShown(3));
  show(kA, true);
  ASSERT_TRUE(runUntil([&] { return client_->signals.size() >= 3; }));
  client_->get("Visible");
  EXPECT_THAT(client_->signals,
              ElementsAre(prefix + "{'Visible': <true>, 'ParentHandle': <'x11:3a'>}, [])",
                          prefix + "{'ParentHandle': <'x11:3b'>}, [])",
                          prefix + "{'Visible': <false>, 'ParentHandle': <''>}, [])"));
}

TEST_F(PreviewServiceTest, ArrowKeysReachTheFileManager) {
  startAndWait();
  show(kA, true);
  ASSERT_TRUE(waitForShown(1));
  client_->get("Visible");  // what was sent before has arrived when this is answered
  client_->signals.clear();
  for (const auto direction : {SelectionDirection::Up, SelectionDirection::Down,
                               SelectionDirection::Left, SelectionDirection::Right}) {
    host_.press(direction);
  }
  ASSERT_TRUE(runUntil([&] { return client_->signals.size() >= 4; }));
  EXPECT_THAT(client_->signals, ElementsAre("org.gnome.NautilusPreviewer2.SelectionEvent(2,)",
                                            "org.gnome.NautilusPreviewer2.SelectionEvent(3,)",
                                            "org.gnome.NautilusPreviewer2.SelectionEvent(4,)",
                                            "org.gnome.NautilusPreviewer2.SelectionEvent(5,)"));
}

TEST_F(PreviewServiceTest, AStormOfCallsIsAnsweredAndEndsWithTheLast) {
  startAndWait();
  client_->answers.clear();
  // The bus itself lets one program wait for 128 answers.
  constexpr int kInFlight = 100;
  for (int i = 0; i < 200; ++i) {
    if (i % kInFlight == 0) {
      ASSERT_TRUE(client_->waitForAnswers());
    }
    const std::string uri = "file:///" + std::to_string(i);
    client_->send(kFilesPreviewerName, kFilesPreviewerPath, kFilesInterface, "ShowFile",
                  g_variant_new("(ssb)", uri.c_str(), "x11:3a", FALSE));
  }
  ASSERT_TRUE(client_->waitForAnswers());
  EXPECT_THAT(client_->answers, testing::Each(std::string("()")));
  EXPECT_EQ(client_->answers.size(), 200u);
  ASSERT_TRUE(runUntil([&] { return host_.currentUri() == "file:///199"; }));
}

TEST_F(PreviewServiceTest, BadAddressesGetACalmPage) {
  startAndWait();
  std::size_t count = 0;
  for (const char* uri : {"", "no address", "file:///%zz", "nowhere:///x", "trash:///lumisk-test",
                          "mtp://[usb:001,004]/a.md", "smb://server/share/a%20b.md"}) {
    EXPECT_EQ(show(uri, false), "()") << uri;
    ASSERT_TRUE(waitForShown(++count)) << uri;
    EXPECT_TRUE(std::holds_alternative<NoItemReason>(host_.shown.back().item)) << uri;
  }
}

// As the manual page has it.
TEST(ServiceTimes, NothingShownIsLongAfterHalfAMinute) {
  EXPECT_EQ(ServiceTimes().idleMilliseconds, 30'000u);
}

TEST_F(PreviewServiceTest, EndsWhenNothingWasShownForLong) {
  start({.idleMilliseconds = 20, .beforeWarmUpMilliseconds = 1, .farewellMilliseconds = 20});
  ASSERT_TRUE(runUntil([&] { return hasIdled_; }));
  EXPECT_GT(host_.warmUpCount, 0) << "what is prepared counts as idle";
  EXPECT_TRUE(runUntil([&] { return client_->ownerships == std::vector{true, false}; }));
}

TEST_F(PreviewServiceTest, StaysWhileSomethingIsShown) {
  start({.idleMilliseconds = 20, .farewellMilliseconds = 20});
  service_->open({kA}, "");
  ASSERT_TRUE(waitForShown(1));
  Deferred longTime;
  bool isOver = false;
  longTime.after(200, [&] { isOver = true; });
  ASSERT_TRUE(runUntil([&] { return isOver; }));
  EXPECT_FALSE(hasIdled_);
  host_.closeByPerson();
  EXPECT_TRUE(runUntil([&] { return hasIdled_; }));
}

TEST_F(PreviewServiceTest, ACallDuringTheFarewellKeepsIt) {
  start({.idleMilliseconds = 1, .farewellMilliseconds = 60'000});
  ASSERT_TRUE(runUntil([&] { return client_->ownerships == std::vector{true, false}; }));
  service_->open({kA}, "");
  EXPECT_TRUE(client_->waitForName(kFilesPreviewerName, true));
  EXPECT_FALSE(hasIdled_);
}

TEST_F(PreviewServiceTest, NamesThatChangeDuringTheFarewellAreClaimedOnlyWhenItStays) {
  start({.idleMilliseconds = 1, .farewellMilliseconds = 60'000});
  ASSERT_TRUE(runUntil([&] { return client_->ownerships == std::vector{true, false}; }));
  service_->answerTo({kFilesPreviewerName});
  EXPECT_FALSE(hasOwnerAfterClaims(kFilesPreviewerName));
  service_->open({kA}, "");
  EXPECT_TRUE(client_->waitForName(kFilesPreviewerName, true));
  EXPECT_TRUE(client_->waitForName(kNemoPreviewerName, false));
}

TEST_F(PreviewServiceTest, WarmsUpOnlyWhenNothingIsShown) {
  start({.idleMilliseconds = 60'000, .beforeWarmUpMilliseconds = 1});
  ASSERT_TRUE(client_->waitForName(kFilesPreviewerName, true));
  EXPECT_TRUE(runUntil([&] { return host_.warmUpCount == 1; }));
  show(kA, true);
  ASSERT_TRUE(waitForShown(1));
  test::runPending();
  EXPECT_EQ(host_.warmUpCount, 1);
  host_.closeByPerson();
  EXPECT_TRUE(runUntil([&] { return host_.warmUpCount == 2; }));
}

TEST_F(PreviewServiceTest, ANameIsWaitedForUntilItIsFree) {
  startAndWait();
  EXPECT_FALSE(waitUntilFree(client_->connection(), kFilesPreviewerName, 1)) << "within bounds";
  Deferred later;
  later.after(1, [&] { service_->answerTo({}); });
  EXPECT_TRUE(waitUntilFree(client_->connection(), kFilesPreviewerName, 60'000));
  EXPECT_TRUE(waitUntilFree(client_->connection(), "org.lumisk.Nobody", 60'000));
}

TEST_F(PreviewServiceTest, NamesCanBeGivenUpAndTakenBack) {
  startAndWait();
  service_->answerTo({kNemoPreviewerName});
  EXPECT_TRUE(client_->waitForName(kFilesPreviewerName, false));
  EXPECT_TRUE(client_->waitForName(kNemoPreviewerName, true));
  service_->answerTo({kFilesPreviewerName, kNemoPreviewerName});
  EXPECT_TRUE(client_->waitForName(kFilesPreviewerName, true));
}

}  // namespace
}  // namespace lumisk::desktop
