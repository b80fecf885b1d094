// The plug-in table and loading: life-cycle order, refused binaries, enable/disable,
// messages, reload, features, lookups and the SDK libraries placed in the root.

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "XPLMPlugin.h"
#include "plugin_test_util.h"

namespace xpsim::test {
namespace {

constexpr int kSendTo = 0x7FF00001;
constexpr int kHello = 0x7FF00002;
constexpr int kReload = 0x7FF00003;
constexpr int kNativePaths = 0x7FF00004;
constexpr int kDisable = 0x7FF00005;
constexpr int kEnable = 0x7FF00006;

std::string msg(int from, int message, long param) {
    return "message from=" + std::to_string(from) + " msg=" + std::to_string(message) +
           " param=" + std::to_string(param);
}

class PluginTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        startSim();
    }
    // Installs the recorder plug-in under each name and loads them in that order.
    std::vector<int> loadRecorders(const std::vector<std::string>& names) {
        std::vector<int> ids;
        for (const std::string& name : names) ids.push_back(loadTestPlugin("plug_recorder", name));
        return ids;
    }
    void touch(const std::string& name, const std::string& file) {
        std::ofstream(root + "/Resources/plugins/" + name + "/" + file) << "\n";
    }
    static int count(const std::vector<std::string>& lines, const std::string& line) {
        return static_cast<int>(std::count(lines.begin(), lines.end(), line));
    }
};

TEST_F(PluginTest, LifeCycleRunsStartEnableLoadMessagesThenPrefsDisableStopInOrderPerSdkGeneration) {
    installPlugin(root, "plug_recorder", "Beta");
    installPlugin(root, "plug_recorder", "Alpha");
    std::vector<std::string> found = driver::findPlugins();
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0], root + "/Resources/plugins/Alpha/64/lin.xpl");
    for (const std::string& path : found) {
        std::string error;
        EXPECT_GT(driver::loadPlugin(path, &error), 0) << error;
    }
    // Started but not enabled until the host enables them all.
    EXPECT_EQ(events("Alpha"), (std::vector<std::string>{"start id=1 myid=1"}));
    EXPECT_EQ(XPLMIsPluginEnabled(1), 0);
    driver::enablePluginsAndSendLoadMessages();
    EXPECT_EQ(XPLMIsPluginEnabled(2), 1);
    driver::shutdown();
    std::vector<std::string> expected = {
        "start id=2 myid=2", "enable id=2",     msg(0, XPLM_MSG_PLANE_LOADED, 0),
        msg(0, XPLM_MSG_LIVERY_LOADED, 0),      msg(0, XPLM_MSG_AIRPORT_LOADED, 0),
        msg(0, XPLM_MSG_SCENERY_LOADED, 0),     msg(0, XPLM_MSG_WILL_WRITE_PREFS, 0),
        "disable id=2",      "stop id=2"};
    EXPECT_EQ(events("Beta"), expected);
    EXPECT_NE(log().find("loaded plug-in 1 'Alpha' (xpsim.test.Alpha) from " + found[0]), std::string::npos) << log();
    EXPECT_EQ(driver::pluginCount(), 0);

    // Older simulators send no livery or prefs messages.
    startSim("2.00");
    clearEvents("Alpha");
    loadRecorders({"Alpha"});
    driver::enablePluginsAndSendLoadMessages();
    driver::shutdown();
    EXPECT_EQ(events("Alpha"), (std::vector<std::string>{"start id=1 myid=1", "enable id=1",
                                                         msg(0, XPLM_MSG_PLANE_LOADED, 0),
                                                         msg(0, XPLM_MSG_AIRPORT_LOADED, 0),
                                                         msg(0, XPLM_MSG_SCENERY_LOADED, 0), "disable id=1",
                                                         "stop id=1"}));
}

TEST_F(PluginTest, APluginEnabledAgainByAnotherOnesStopIsDisabledBeforeItStops) {
    std::vector<int> ids = loadRecorders({"Alpha", "Beta"});
    touch("Alpha", "enable_on_stop");
    driver::enablePluginsAndSendLoadMessages();
    clearEvents("Beta");
    driver::shutdown();
    const std::string beta = std::to_string(ids[1]);
    EXPECT_EQ(events("Beta"), (std::vector<std::string>{msg(0, XPLM_MSG_WILL_WRITE_PREFS, 0), "disable id=" + beta,
                                                        "enable id=" + beta, "disable id=" + beta, "stop id=" + beta}));
}

TEST_F(PluginTest, TwoPluginsAnsweringEachOthersMessageAreStoppedAtABoundedDepth) {
    std::vector<int> ids = loadRecorders({"Alpha", "Beta"});
    driver::enablePluginsAndSendLoadMessages();
    clearEvents("Alpha");
    clearEvents("Beta");
    constexpr int kEcho = 0x7FF00007;
    driver::sendMessage(ids[0], kEcho, ids[1]);  // Alpha and Beta echo to each other
    EXPECT_EQ(errorsMentioning("messages sent from message handlers nest 32 deep"), 1);
    EXPECT_EQ(events("Alpha").size() + events("Beta").size(), 32u);
    EXPECT_EQ(XPLMIsPluginEnabled(ids[0]), 1);
    EXPECT_EQ(XPLMIsPluginEnabled(ids[1]), 1);
}

TEST_F(PluginTest, StartReturningZeroLeavesThePluginUnloaded) {
    std::string path = installPlugin(root, "plug_recorder", "Refuser");
    touch("Refuser", "refuse_start");
    std::string error;
    EXPECT_EQ(driver::loadPlugin(path, &error), -1);
    EXPECT_NE(error.find("XPluginStart returned 0"), std::string::npos) << error;
    EXPECT_EQ(driver::pluginCount(), 0);
    EXPECT_EQ(XPLMFindPluginBySignature("xpsim.test.Refuser"), XPLM_NO_PLUGIN_ID);
    driver::enablePluginsAndSendLoadMessages();
    driver::shutdown();
    // Never enabled, never stopped: it was not loaded.
    EXPECT_EQ(events("Refuser"), (std::vector<std::string>{"start id=1 myid=1"}));
}

TEST_F(PluginTest, BinariesThatAreNotPluginsAreRefusedWithAReason) {
    struct Case {
        std::string path, reason;
    } cases[] = {
        {installPlugin(root, "plug_not_a_plugin", "Library"), "missing XPluginStart XPluginStop XPluginEnable XPluginDisable"},
        {installPlugin(root, "plug_no_enable", "Half"), "missing XPluginEnable XPluginDisable"},
        {root + "/Resources/plugins/Nowhere/64/lin.xpl", "No such file"},
        {root + "/Log.txt", "cannot load plug-in " + root + "/Log.txt: "},
    };
    for (const Case& c : cases) {
        std::string error;
        EXPECT_EQ(driver::loadPlugin(c.path, &error), -1) << c.path;
        EXPECT_NE(error.find(c.reason), std::string::npos) << error;
        EXPECT_NE(log().find(error), std::string::npos) << "not logged: " << error;
    }
    EXPECT_EQ(driver::pluginCount(), 0);
    // Loading the same binary twice would share its state between two plug-ins.
    std::vector<int> ids = loadRecorders({"Alpha"});
    std::string error;
    EXPECT_EQ(driver::loadPlugin(root + "/Resources/plugins/Alpha/64/../64/lin.xpl", &error), -1);
    EXPECT_NE(error.find("already loaded as plug-in " + std::to_string(ids[0])), std::string::npos) << error;
}

TEST_F(PluginTest, DisabledPluginsGetNoMessagesAndEnableCallsXPluginEnableOnce) {
    std::vector<int> ids = loadRecorders({"Alpha", "Beta", "Grumpy"});
    touch("Grumpy", "refuse_enable");
    driver::enablePluginsAndSendLoadMessages();
    EXPECT_EQ(XPLMIsPluginEnabled(ids[2]), 0);
    EXPECT_EQ(count(events("Grumpy"), msg(0, XPLM_MSG_PLANE_LOADED, 0)), 0);

    // Alpha disables Beta, then asks to enable it again (twice: the second is a no-op).
    clearEvents("Beta");
    driver::sendMessage(ids[0], kDisable, ids[1]);
    EXPECT_EQ(XPLMIsPluginEnabled(ids[1]), 0);
    driver::sendMessage(ids[1], kHello, 7);
    driver::sendMessage(XPLM_NO_PLUGIN_ID, kHello, 8);
    driver::sendMessage(ids[0], kEnable, ids[1]);
    driver::sendMessage(ids[0], kEnable, ids[1]);
    EXPECT_EQ(events("Beta"), (std::vector<std::string>{"disable id=2", "enable id=2"}));
    EXPECT_EQ(count(events("Alpha"), "enable_result=1"), 2);
    EXPECT_EQ(count(events("Alpha"), msg(0, kHello, 8)), 1);

    // A refusing plug-in stays disabled and the caller learns it.
    driver::sendMessage(ids[0], kEnable, ids[2]);
    EXPECT_EQ(count(events("Alpha"), "enable_result=0"), 1);
    EXPECT_EQ(XPLMIsPluginEnabled(ids[2]), 0);

    // Unknown ids are the caller's error; the simulator itself is always enabled.
    EXPECT_EQ(XPLMIsPluginEnabled(0), 1);
    EXPECT_EQ(XPLMIsPluginEnabled(99), 0);
    EXPECT_EQ(XPLMEnablePlugin(99), 0);
    XPLMDisablePlugin(0);
    EXPECT_NE(log().find("XPLMIsPluginEnabled: unknown plug-in id 99"), std::string::npos) << log();
    EXPECT_NE(log().find("XPLMDisablePlugin: cannot disable the simulator"), std::string::npos) << log();
}

TEST_F(PluginTest, MessagesCarryTheSenderAndBroadcastsReachEveryEnabledPlugin) {
    std::vector<int> ids = loadRecorders({"Alpha", "Beta", "Gamma"});
    int silent = loadTestPlugin("plug_long_names", "Silent");
    driver::enablePluginsAndSendLoadMessages();
    XPLMDisablePlugin(ids[2]);
    for (const char* name : {"Alpha", "Beta", "Gamma"}) clearEvents(name);

    driver::sendMessage(ids[0], kSendTo, ids[1]);  // Alpha -> Beta
    EXPECT_EQ(events("Beta"), (std::vector<std::string>{msg(ids[0], kHello, ids[0])}));
    driver::sendMessage(ids[1], kSendTo, XPLM_NO_PLUGIN_ID);  // Beta -> everyone, itself included
    EXPECT_EQ(events("Alpha"), (std::vector<std::string>{msg(0, kSendTo, ids[1]), msg(ids[1], kHello, ids[1])}));
    EXPECT_EQ(events("Beta").back(), msg(ids[1], kHello, ids[1]));
    EXPECT_TRUE(events("Gamma").empty());
    driver::sendMessage(silent, kHello, 0);  // no receive function: nothing happens

    // From the test process the sender is the simulator; an unknown target is an error.
    XPLMSendMessageToPlugin(ids[1], kHello, reinterpret_cast<void*>(intptr_t{-5}));
    EXPECT_EQ(events("Beta").back(), msg(0, kHello, -5));
    XPLMSendMessageToPlugin(42, kHello, nullptr);
    EXPECT_NE(log().find("XPLMSendMessageToPlugin: unknown plug-in id 42"), std::string::npos) << log();
}

TEST_F(PluginTest, ReloadRequestedInACallbackHappensAtTheEndOfTheFrameWithNewIds) {
    std::vector<int> ids = loadRecorders({"Alpha", "Beta"});
    driver::enablePluginsAndSendLoadMessages();
    clearEvents("Alpha");
    clearEvents("Beta");
    driver::sendMessage(ids[1], kReload, 0);
    // Still inside the same frame: nothing unloaded yet.
    EXPECT_EQ(driver::pluginCount(), 2);
    EXPECT_EQ(XPLMFindPluginBySignature("xpsim.test.Alpha"), ids[0]);
    driver::runFrames(1);
    std::vector<std::string> expected = {"disable id=1", "stop id=1", "start id=3 myid=3", "enable id=3",
                                         msg(0, XPLM_MSG_PLANE_LOADED, 0), msg(0, XPLM_MSG_LIVERY_LOADED, 0),
                                         msg(0, XPLM_MSG_AIRPORT_LOADED, 0), msg(0, XPLM_MSG_SCENERY_LOADED, 0)};
    EXPECT_EQ(events("Alpha"), expected);
    EXPECT_EQ(XPLMFindPluginBySignature("xpsim.test.Alpha"), 3);
    EXPECT_EQ(XPLMFindPluginBySignature("xpsim.test.Beta"), 4);
    EXPECT_EQ(XPLMIsPluginEnabled(ids[0]), 0);  // old ids are gone
    EXPECT_EQ(driver::pluginCount(), 2);

    // The driver's reload is immediate, and a plug-in that now refuses to start stays out.
    touch("Beta", "refuse_start");
    driver::reloadPlugins();
    EXPECT_EQ(driver::pluginCount(), 1);
    EXPECT_EQ(XPLMFindPluginBySignature("xpsim.test.Alpha"), 5);
    EXPECT_EQ(XPLMFindPluginBySignature("xpsim.test.Beta"), XPLM_NO_PLUGIN_ID);
}

TEST_F(PluginTest, UnloadingDropsEverythingAPluginLeftRegistered) {
    std::string events = root + "/Output/leaky_events.txt";
    ASSERT_EQ(loadTestPlugin("plug_leaky", "Leaky"), 1);
    driver::enablePluginsAndSendLoadMessages();
    // Two frames and one of each other kind of call, sorted (the order is not the point here).
    auto exercise = [&] {
        unlink(events.c_str());
        std::string value, why;
        driver::runFrames(1);
        EXPECT_TRUE(driver::pickMenu("Plugins/Leaky/Item", &why)) << why;
        EXPECT_TRUE(driver::commandOnce("leaky/command", &why)) << why;
        EXPECT_TRUE(driver::getDataref("leaky/value", &value, &why)) << why;
        EXPECT_EQ(value, "5");
        driver::keyPress('a', xplm_DownFlag, XPLM_VK_A);
        driver::runFrames(1);
        std::vector<std::string> lines = readLines(events);
        std::sort(lines.begin(), lines.end());
        return lines;
    };
    std::vector<std::string> first = exercise();
    std::vector<std::string> expected = {"command id=1", "draw id=1",    "draw id=1",   "loop id=1",   "loop id=1",
                                         "menu id=1",    "read id=1",    "sniffer id=1", "window id=1", "window id=1"};
    EXPECT_EQ(first, expected);

    // After a reload only the new registrations run (a stale one would run twice or as id 1).
    driver::reloadPlugins();
    std::vector<std::string> second = exercise();
    for (std::string& line : expected) line.back() = '2';
    EXPECT_EQ(second, expected);

    // Once stopped for good, nothing of it is left.
    driver::shutdown();
    startSim();
    std::string value, why;
    EXPECT_FALSE(driver::pickMenu("Plugins/Leaky/Item", &why));
    EXPECT_FALSE(driver::getDataref("leaky/value", &value, &why));
    EXPECT_FALSE(driver::commandOnce("leaky/command", &why));
}

void collectFeature(const char* name, void* ref) { static_cast<std::vector<std::string>*>(ref)->push_back(name); }

TEST_F(PluginTest, FeaturesDependOnTheSimulatorAndAreEnabledPerPlugin) {
    for (const char* sdk : {"2.00", "2.10"}) {
        startSim(sdk);
        std::vector<std::string> features;
        XPLMEnumerateFeatures(collectFeature, &features);
        std::vector<std::string> expected = {"XPLM_WANTS_REFLECTIONS"};
        if (std::string(sdk) == "2.10") expected.push_back("XPLM_USE_NATIVE_PATHS");
        EXPECT_EQ(features, expected) << sdk;
        EXPECT_EQ(XPLMHasFeature("XPLM_USE_NATIVE_PATHS"), std::string(sdk) == "2.10" ? 1 : 0) << sdk;
        EXPECT_EQ(XPLMHasFeature("XPLM_USE_NATIVE_WIDGET_WINDOWS"), 0);
    }
    startSim();
    std::vector<int> ids = loadRecorders({"Alpha", "Beta"});
    driver::enablePluginsAndSendLoadMessages();
    EXPECT_EQ(XPLMIsFeatureEnabled("XPLM_USE_NATIVE_PATHS"), 0);  // off by default
    XPLMEnableFeature("XPLM_USE_NATIVE_PATHS", 1);
    EXPECT_EQ(XPLMIsFeatureEnabled("XPLM_USE_NATIVE_PATHS"), 1);
    driver::sendMessage(ids[0], kNativePaths, 0);  // Alpha checks its own state: still off
    driver::sendMessage(ids[1], kNativePaths, 1);
    EXPECT_EQ(events("Alpha").back(), "native_paths=0");
    EXPECT_EQ(events("Beta").back(), "native_paths=1");
    XPLMEnableFeature("XPLM_USE_NATIVE_PATHS", 0);
    EXPECT_EQ(XPLMIsFeatureEnabled("XPLM_USE_NATIVE_PATHS"), 0);

    EXPECT_EQ(XPLMIsFeatureEnabled("NO_SUCH_FEATURE"), 0);
    XPLMEnableFeature(nullptr, 1);
    EXPECT_NE(log().find("XPLMIsFeatureEnabled: unknown feature 'NO_SUCH_FEATURE'"), std::string::npos) << log();
    EXPECT_NE(log().find("XPLMEnableFeature: unknown feature '(null)'"), std::string::npos) << log();
}

TEST_F(PluginTest, InfoAndLookupsDescribeEachLoadedPlugin) {
    std::vector<int> ids = loadRecorders({"Alpha", "Beta"});
    int longNames = loadTestPlugin("plug_long_names", "Long");

    EXPECT_EQ(XPLMCountPlugins(), 3);
    std::vector<int> listed;
    for (int i = 0; i < XPLMCountPlugins(); ++i) listed.push_back(XPLMGetNthPlugin(i));
    EXPECT_EQ(listed, (std::vector<int>{ids[0], ids[1], longNames}));
    EXPECT_EQ(XPLMGetNthPlugin(3), XPLM_NO_PLUGIN_ID);
    EXPECT_EQ(XPLMGetNthPlugin(-1), XPLM_NO_PLUGIN_ID);

    char name[256], path[256], signature[256], description[256];
    XPLMGetPluginInfo(ids[1], name, path, signature, description);
    EXPECT_STREQ(name, "Beta");
    EXPECT_EQ(std::string(path), root + "/Resources/plugins/Beta/64/lin.xpl");
    EXPECT_STREQ(signature, "xpsim.test.Beta");
    EXPECT_STREQ(description, "Records its life cycle and messages.");
    XPLMGetPluginInfo(ids[0], nullptr, nullptr, signature, nullptr);
    EXPECT_STREQ(signature, "xpsim.test.Alpha");
    EXPECT_EQ(XPLMFindPluginByPath(path), ids[1]);
    EXPECT_EQ(XPLMFindPluginByPath("/no/such/lin.xpl"), XPLM_NO_PLUGIN_ID);
    EXPECT_EQ(XPLMFindPluginBySignature("xpsim.test.Alpha"), ids[0]);
    EXPECT_EQ(XPLMFindPluginBySignature("XPSIM.TEST.ALPHA"), XPLM_NO_PLUGIN_ID);
    EXPECT_EQ(driver::findPluginBySignature("xpsim.test.Beta"), ids[1]);

    // Unterminated 256-byte start buffers come back as 255 characters.
    XPLMGetPluginInfo(longNames, name, nullptr, signature, description);
    EXPECT_EQ(std::string(name), std::string(255, 'n'));
    EXPECT_EQ(std::string(signature), std::string(255, 's'));
    EXPECT_EQ(std::string(description), std::string(255, 'd'));

    XPLMGetPluginInfo(0, name, nullptr, nullptr, nullptr);
    EXPECT_STREQ(name, "X-Plane");
    std::strcpy(name, "stale");
    XPLMGetPluginInfo(77, name, nullptr, nullptr, nullptr);
    EXPECT_STREQ(name, "");
    EXPECT_NE(log().find("XPLMGetPluginInfo: unknown plug-in id 77"), std::string::npos) << log();
}

TEST_F(PluginTest, SdkLibraryLinksPointAtTheLoadedLibraryExceptUnder102) {
    std::string link = root + "/Resources/plugins/XPLM_64.so";
    Dl_info info;
    ASSERT_TRUE(dladdr(reinterpret_cast<void*>(&XPLMGetMyID), &info));
    char loaded[PATH_MAX];
    ASSERT_TRUE(realpath(info.dli_fname, loaded));
    char target[PATH_MAX] = {};
    ASSERT_GT(readlink(link.c_str(), target, sizeof target - 1), 0);
    EXPECT_STREQ(target, loaded);
    // The same library, not a second instance: opening the link finds the loaded one.
    void* handle = dlopen(link.c_str(), RTLD_NOW | RTLD_NOLOAD);
    EXPECT_NE(handle, nullptr);
    if (handle) {
        EXPECT_EQ(dlsym(handle, "XPLMGetMyID"), reinterpret_cast<void*>(&XPLMGetMyID));
        dlclose(handle);
    }
    startSim("1.02");
    EXPECT_NE(access(link.c_str(), F_OK), 0);
    EXPECT_NE(access((root + "/Resources/plugins/XPWidgets_64.so").c_str(), F_OK), 0);
}

}  // namespace
}  // namespace xpsim::test
