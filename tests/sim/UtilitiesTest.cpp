// XPLMUtilities in the host: paths, directory paging, path splitting, log output,
// versions per SDK generation, symbol lookup, data files, keys and the error callback.

#include <climits>
#include <cstring>
#include <filesystem>

#include "XPLMPlugin.h"
#include "XPLMUtilities.h"
#include "plugin_test_util.h"

namespace xpsim::test {
namespace {

std::vector<std::string> gErrors;
void recordError(const char* message) { gErrors.push_back(message); }
// Breaks the rule that an error callback must not call the SDK, with an error of its own.
void misbehavingCallback(const char* message) {
    gErrors.push_back(message);
    XPLMDebugString(nullptr);
}

class UtilitiesTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        gErrors.clear();
        startWithErrorCallback();
    }
    void startWithErrorCallback(const std::string& sdk = "2.10") {
        startSim(sdk);
        XPLMSetErrorCallback(recordError);
    }
};

TEST_F(UtilitiesTest, SystemPathIsTheRootWithSeparatorAndPrefsPathNamesAFileInOutputPreferences) {
    char system[512];
    XPLMGetSystemPath(system);
    EXPECT_EQ(std::string(system), root + "/");
    EXPECT_STREQ(XPLMGetDirectorySeparator(), "/");

    char prefs[512];
    XPLMGetPrefsPath(prefs);
    const char* file = XPLMExtractFileAndPath(prefs);
    EXPECT_EQ(std::string(prefs), root + "/Output/preferences");
    EXPECT_STRNE(file, "");
    EXPECT_TRUE(std::filesystem::is_directory(prefs));
    EXPECT_TRUE(gErrors.empty());
}

TEST_F(UtilitiesTest, ExtractFileAndPathSplitsAtTheLastSeparatorInPlace) {
    struct Case {
        const char* input;
        const char* path;
        const char* file;
    };
    const Case cases[] = {
        {"/a/b/c.txt", "/a/b", "c.txt"},
        {"/a/b/dir/", "/a/b", "dir"},  // a trailing separator goes first
        {"/file", "", "file"},
        {"/", "", ""},
        {"plain.txt", "plain.txt", "plain.txt"},  // no separator: returned whole, untouched
        {"", "", ""},
    };
    for (const Case& c : cases) {
        char buffer[64];
        std::strcpy(buffer, c.input);
        const char* file = XPLMExtractFileAndPath(buffer);
        EXPECT_STREQ(buffer, c.path) << c.input;
        EXPECT_STREQ(file, c.file) << c.input;
        EXPECT_GE(file, buffer);
        EXPECT_LT(file, buffer + sizeof buffer);
    }
    EXPECT_EQ(XPLMExtractFileAndPath(nullptr), nullptr);
    EXPECT_EQ(gErrors.size(), 1u);
}

TEST_F(UtilitiesTest, DirectoryContentsPagesThroughSortedNamesWithoutWritingPastTheBuffers) {
    const std::string dir = root + "/listing";
    std::filesystem::create_directories(dir + "/sub");
    for (const char* name : {"delta", "alpha", "charlie", ".hidden"}) std::ofstream(dir + "/" + name) << "x";
    const std::vector<std::string> sorted = {".hidden", "alpha", "charlie", "delta", "sub"};

    // Everything fits: all names in order, two NULs at the end, the index closed by NULL.
    char names[128];
    char* index[8];
    int total = -1, returned = -1;
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 0, names, sizeof names, index, 8, &total, &returned), 1);
    EXPECT_EQ(total, 5);
    ASSERT_EQ(returned, 5);
    const char* p = names;
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(index[i], p);
        EXPECT_EQ(std::string(p), sorted[static_cast<size_t>(i)]);
        p += std::strlen(p) + 1;
    }
    EXPECT_EQ(*p, '\0');
    EXPECT_EQ(index[5], nullptr);

    // A buffer with room for ".hidden\0alpha\0" and the closing NUL, guarded on both sides.
    char guarded[32];
    std::memset(guarded, '#', sizeof guarded);
    char* buffer = guarded + 8;
    const int size = 8 + 6 + 1;
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 0, buffer, size, nullptr, 0, &total, &returned), 0);
    EXPECT_EQ(returned, 2);
    EXPECT_EQ(total, 5);
    EXPECT_EQ(std::string(buffer), ".hidden");
    EXPECT_EQ(std::string(buffer + 8), "alpha");
    EXPECT_EQ(buffer[14], '\0');
    for (int i = 0; i < 8; ++i) EXPECT_EQ(guarded[i], '#');
    for (int i = 8 + size; i < 32; ++i) EXPECT_EQ(guarded[i], '#') << i;

    // One byte less and "alpha" no longer fits with the closing NUL behind it.
    std::memset(guarded, '#', sizeof guarded);
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 0, buffer, size - 1, nullptr, 0, nullptr, &returned), 0);
    EXPECT_EQ(returned, 1);
    EXPECT_EQ(buffer[8], '\0');
    for (int i = 8 + size - 1; i < 32; ++i) EXPECT_EQ(guarded[i], '#') << i;

    // The next page starts where the last one stopped; the last page answers 1.
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 2, buffer, size, nullptr, 0, nullptr, &returned), 0);
    EXPECT_EQ(returned, 2);
    EXPECT_EQ(std::string(buffer), "charlie");
    EXPECT_EQ(std::string(buffer + 8), "delta");
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 4, buffer, size, nullptr, 0, nullptr, &returned), 1);
    EXPECT_EQ(returned, 1);
    EXPECT_EQ(std::string(buffer), "sub");
    for (int i = 8 + size; i < 32; ++i) EXPECT_EQ(guarded[i], '#') << i;
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 9, names, sizeof names, nullptr, 0, &total, &returned), 1);
    EXPECT_EQ(returned, 0);
    EXPECT_EQ(total, 5);

    // The index array bounds the count too: its last slot holds the closing NULL.
    char* small[3] = {nullptr, nullptr, reinterpret_cast<char*>(1)};
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 0, names, sizeof names, small, 2, nullptr, &returned), 0);
    EXPECT_EQ(returned, 1);
    EXPECT_EQ(small[1], nullptr);
    EXPECT_EQ(small[2], reinterpret_cast<char*>(1));

    // A missing folder is a run-time failure, not a programming error.
    EXPECT_EQ(XPLMGetDirectoryContents((root + "/none").c_str(), 0, names, sizeof names, nullptr, 0, &total,
                                       &returned), 0);
    EXPECT_EQ(total, 0);
    EXPECT_EQ(names[0], '\0');
    EXPECT_TRUE(gErrors.empty());
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), -1, names, sizeof names, nullptr, 0, nullptr, nullptr), 0);
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 0, nullptr, 10, nullptr, 0, nullptr, nullptr), 0);
    EXPECT_EQ(XPLMGetDirectoryContents(nullptr, 0, names, sizeof names, nullptr, 0, nullptr, nullptr), 0);
    EXPECT_EQ(gErrors.size(), 3u);
}

TEST_F(UtilitiesTest, DebugStringAppendsTextAsGivenAndSpeakStringIsLogged) {
    XPLMDebugString("first half, ");
    XPLMDebugString("second half\nnext line\n");
    XPLMSpeakString("Gear down");
    XPLMDebugString(nullptr);
    EXPECT_NE(log().find("\nfirst half, second half\nnext line\n"), std::string::npos) << log();
    EXPECT_NE(log().find("Gear down"), std::string::npos);
    EXPECT_EQ(gErrors.size(), 1u);
}

TEST_F(UtilitiesTest, VersionsFollowTheSdkGenerationUnlessSetAndLanguageComesFromTheOptions) {
    struct Case {
        const char* sdk;
        int xplmSetting;
        int expected;
    };
    const Case cases[] = {{"2.10", 210, 210}, {"2.00", 210, 200}, {"1.02", 210, 102}, {"2.00", 205, 205}};
    for (const Case& c : cases) {
        Options options;
        options.sdk = c.sdk;
        options.xplmVersion = c.xplmSetting;
        options.xplaneVersion = 941;
        options.language = xplm_Language_German;
        ASSERT_NO_FATAL_FAILURE(startSimWith(options));
        int xplane = 0, xplm = 0;
        XPLMHostApplicationID host = -1;
        XPLMGetVersions(&xplane, &xplm, &host);
        EXPECT_EQ(xplane, 941);
        EXPECT_EQ(xplm, c.expected) << c.sdk;
        EXPECT_EQ(host, xplm_Host_XPlane);
        EXPECT_EQ(XPLMGetLanguage(), xplm_Language_German);
        XPLMGetVersions(nullptr, &xplm, nullptr);  // NULL outputs are skipped
        EXPECT_EQ(xplm, c.expected);
    }
    EXPECT_EQ(XPLMInitialized(), 1);
}

TEST_F(UtilitiesTest, FindSymbolFindsOnlySdkFunctionsOfTheConfiguredGeneration) {
    using Separator = const char* (*)();
    auto separator = reinterpret_cast<Separator>(XPLMFindSymbol("XPLMGetDirectorySeparator"));
    ASSERT_NE(separator, nullptr);
    EXPECT_STREQ(separator(), "/");
    EXPECT_NE(XPLMFindSymbol("XPLMRemoveMenuItem"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("XPLMNoSuchFunction"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("dlopen"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("_ZN5xpsim6driver5startERKNS_7OptionsEPNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"),
              nullptr);
    EXPECT_TRUE(gErrors.empty());

    startWithErrorCallback("2.00");
    EXPECT_EQ(XPLMFindSymbol("XPLMRemoveMenuItem"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("XPLMCreateFlightLoop"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("XPLMLoadObjectAsync"), nullptr);
    EXPECT_NE(XPLMFindSymbol("XPLMFindCommand"), nullptr);
    EXPECT_NE(XPLMFindSymbol("XPLMFindSymbol"), nullptr);

    startWithErrorCallback("1.02");
    EXPECT_EQ(XPLMFindSymbol("XPLMFindCommand"), nullptr);
    EXPECT_EQ(gErrors.size(), 1u);
}

TEST_F(UtilitiesTest, DataFilesAreSavedAndLoadedRelativeToTheRoot) {
    EXPECT_EQ(XPLMSaveDataFile(xplm_DataFile_Situation, "Output/test.sit"), 1);
    EXPECT_TRUE(std::filesystem::exists(root + "/Output/test.sit"));
    EXPECT_EQ(XPLMLoadDataFile(xplm_DataFile_Situation, "Output/test.sit"), 1);
    EXPECT_EQ(XPLMLoadDataFile(xplm_DataFile_Situation, "Output/missing.sit"), 0);
    EXPECT_EQ(XPLMSaveDataFile(xplm_DataFile_ReplayMovie, "no/such/folder/x.smo"), 0);
    EXPECT_TRUE(gErrors.empty());  // run-time failures, not programming errors
    EXPECT_EQ(XPLMLoadDataFile(xplm_DataFile_ReplayMovie, nullptr), 1);  // clears the replay
    EXPECT_EQ(XPLMLoadDataFile(xplm_DataFile_Situation, nullptr), 0);
    EXPECT_EQ(XPLMLoadDataFile(7, "Output/test.sit"), 0);
    EXPECT_EQ(gErrors.size(), 2u);
}

TEST_F(UtilitiesTest, KeyStrokesAndButtonPressesAreRecordedAndBadIdsAreReported) {
    XPLMCommandKeyStroke(xplm_key_pause);
    XPLMCommandButtonPress(xplm_joy_gear_tog);
    XPLMCommandButtonRelease(xplm_joy_gear_tog);
    XPLMSimulateKeyPress(1, 'a');
    EXPECT_NE(log().find("command key stroke 0\n"), std::string::npos);
    EXPECT_NE(log().find("command button press 51\n"), std::string::npos);
    EXPECT_NE(log().find("command button release 51\n"), std::string::npos);
    EXPECT_NE(log().find("key press type 1 key 97\n"), std::string::npos);
    EXPECT_TRUE(gErrors.empty());
    XPLMCommandButtonRelease(xplm_joy_gear_tog);  // already released
    XPLMCommandKeyStroke(xplm_key_max);
    XPLMCommandButtonPress(-1);
    EXPECT_EQ(gErrors.size(), 3u);

    EXPECT_STREQ(XPLMGetVirtualKeyDescription(XPLM_VK_A), "A");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription(static_cast<char>(XPLM_VK_F12)), "F12");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription(static_cast<char>(XPLM_VK_NUMPAD_EQ)), "Keypad =");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription(0x01), "");
}

TEST_F(UtilitiesTest, ReloadSceneryAnnouncesTheLoadedSceneryOnTheNextFrame) {
    ASSERT_GT(loadTestPlugin("plug_recorder", "Watcher"), 0);
    driver::enablePluginsAndSendLoadMessages();
    clearEvents("Watcher");
    XPLMReloadScenery();
    EXPECT_TRUE(events("Watcher").empty());
    driver::runFrames(2);
    EXPECT_EQ(events("Watcher"), (std::vector<std::string>{"message from=0 msg=104 param=0"}));
}

TEST_F(UtilitiesTest, ErrorCallbackGoesToTheFaultingPluginEvenWhileItIsDisabled) {
    const int id = loadTestPlugin("util_commands", "Faulty");
    ASSERT_GT(id, 0);
    // Its XPluginStart made a bad call before any enable: reported to it, as itself.
    const auto heard = events("Faulty");
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_NE(heard[0].find("error XPLMCommandEnd"), std::string::npos) << heard[0];
    EXPECT_NE(heard[0].find("myid=" + std::to_string(id)), std::string::npos) << heard[0];
    EXPECT_TRUE(gErrors.empty());  // the simulator's own callback got none of it

    // An error made by the test process goes to its callback only.
    XPLMCommandEnd(XPLMFindCommand("sim/none/none"));
    EXPECT_EQ(gErrors.size(), 1u);
    EXPECT_EQ(events("Faulty").size(), 1u);
    XPLMSetErrorCallback(nullptr);
    XPLMCommandEnd(XPLMFindCommand("sim/none/none"));
    EXPECT_EQ(gErrors.size(), 1u);

    // An error inside the callback is logged but not fed back into it.
    XPLMSetErrorCallback(misbehavingCallback);
    XPLMSpeakString(nullptr);
    EXPECT_EQ(gErrors.size(), 2u);
    EXPECT_NE(log().find("XPLMDebugString: the string is NULL"), std::string::npos);
}

}  // namespace
}  // namespace xpsim::test
