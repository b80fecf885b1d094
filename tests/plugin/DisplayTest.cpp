// XPLMDisplay end to end: a script's windows, hot keys, draw callbacks and key sniffers
// driven by mouse and keys in xpsim, with the window bundles each destroy frees, the
// trace blocks and the integrity check of what the script left behind.

#include <regex>

#include "Harness.h"
#include "XPLMDisplay.h"
#include "driver.h"

namespace vorlith::test {
namespace {

namespace driver = xpsim::driver;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

std::string Report(const std::string& function, const std::string& text) {
    return "Module - XPLMDisplay, Function - " + function + ", Error = " + text + "\n";
}

TEST_F(PluginTest, DisplayWindowsKeysAndHotKeysReachTheScriptAndBundlesAreFreedByPosition) {
    WriteIni("[DEBUG]\nDebugCallbacks = 1\nCheckCallbacks = 1\n");
    AddScript("VL_Display.py");
    StartSim();
    driver::runFrames(2);
    driver::mouseDown(650, 650);  // P
    driver::mouseUp(650, 650);
    driver::mouseDown(150, 300);  // main: takes the keyboard focus
    driver::mouseMove(160, 310);
    driver::mouseUp(170, 320);
    driver::runFrames(1);
    EXPECT_EQ(driver::cursorStatus(), xplm_CursorArrow);
    driver::keyPress('a', xplm_DownFlag, XPLM_VK_A);
    driver::mouseWheel(150, 300, 0, -2);
    driver::keyPress('q', xplm_DownFlag, XPLM_VK_Q);  // main gives the focus back
    driver::keyPress(0, xplm_DownFlag, XPLM_VK_F1);
    driver::mouseDown(450, 350);  // legacy
    driver::mouseUp(450, 350);
    driver::runFrames(2);
    StopSim();

    std::string out = Output();
    for (const char* line :
         {"screen -> 1 [1024] [768, 6]\nscreen None -> 1\n",
          "short raised TypeError\ntext left raised TypeError\nnumber raised TypeError\ntwelve raised TypeError\n",
"geometry -> 1 [[100], [400], [300], None]\n",
          "visible 1 front 1\n", "draw 11 -> 1\ndraw 21 -> 1\ndraw wrong refcon -> 0\n",
          "sniffer 13 -> 1\nsniffer 23 -> 1\n",
          "hot key info -> 1 [[112], [0, 6], ['Vorlith test hot key'], None]\n",
          "long description cut to 511\nlast hot key is ours True\nunregister unknown hot key -> 1\n",
          "draw window 5\n", "draw callback phase 50 before 0 refcon 11\n", "cursor 5 at 170 320\n",
          // P is still served after its bundle left the list, and destroys itself.
          // Windows destroyed in creation order and in reverse free their own bundles; where
          // the last record found sits at another window's bundle, that one leaves the list.
          "destroy A1 -> 1 freed A1\ndestroy A2 -> 1 freed A2\ndestroy garbage -> 1 freed none\n"
          "destroy B3 -> 1 freed B3\ndestroy B2 -> 1 freed B2\ndestroy B1 -> 1 freed B1\ndestroy Q -> 1 freed P\n",
          // P is still served after its bundle left the list, and destroys itself.
          "mouse 3 at 650 650 status 1\nmouse 3 at 650 650 status 3\ndestroy P from its own handler -> 1 freed Q\n",
          "mouse 5 at 150 300 status 1\nmouse 5 at 160 310 status 2\nmouse 5 at 170 320 status 3\n",
          "sniffer 13 saw 65\nsniffer 23 saw 65\nkey 97 flags 8 vkey 65 refcon 5 losing 0\n",
          "wheel 5 at 150 300 axis 0 clicks -2\n", "key 113 flags 8 vkey 81 refcon 5 losing 0\n",
          "sniffer 13 saw 112\nsniffer 23 saw 112\nhot key 8\n",
          "mouse 6 at 450 350 status 1\nmouse 6 at 450 350 status 3\n",
          "draw 21 off -> 1\nsniffer 23 off -> 1\nhot key off -> 1\ndestroy legacy -> 1 freed legacy\n"})
        EXPECT_TRUE(Has(out, line)) << line << "\n---\n" << out;
    EXPECT_FALSE(Has(out, "PLAIN FUNCTION CALLED")) << out;
    EXPECT_FALSE(Has(out, "accepted")) << out;
    EXPECT_FALSE(Has(out, "draw window 6")) << out;  // legacy's draw is a plain function

    std::string log = Log();
    std::vector<std::string> lines = SplitLines(log);
    EXPECT_EQ(CountOf(log, Report("XPLMDestroyWindow", "List Empty Error")), 1) << log;
    EXPECT_TRUE(Has(log, Report("XPLMUnregisterDrawCallback",
                                "Script 'VL_Display.py' was unregistering a callback and refcon that does not "
                                "exist, check refcon matches the one that was used in registering.")));
    EXPECT_TRUE(Has(log, Report("XPLMUnregisterHotKey",
                                "Script 'VL_Display.py' was unregistering a callback that does not exist.")));

    // Trace blocks: name, the arguments line, the list sizes, name. A script has no name
    // before its XPluginStart returned it.
    struct Block {
        const char* name;
        const char* arguments;
        std::vector<std::string> sizes;
    };
    const Block blocks[] = {
        {"XPLMUnregisterDrawCallback",
         "pScriptId = \\w+, Script Name = , inPhase = 50, inWantsBefore = 0, inRefcon = 99",
         {"DrawCallbackList size = 2"}},
        {"XPLMRegisterHotKey",
         "pScriptId = \\w+, inVirtualKey = 112, inFlags = 0, inDescription = Vorlith test hot key, inRefcon = 8",
         {"HotKeyCallbackList size = 1"}},
        {"XPLMUnregisterHotKey", "pScriptId = \\w+, Script Name = , HotKeyID = 309", {"HotKeyCallbackList size = 2"}},
        {"XPLMCreateWindow",
         "pScriptId = \\w+, Left = 400, Top = 400, Right = 500, Bottom = 300, IsVisible = 1, Refcon = 6, WindowID = \\w+",
         {"DrawWindowCallbackList size = 1", "KeyCallbackList size = 2", "MouseClickCallbackList size = 3"}},
        {"XPLMCreateWindowEx",
         "pScriptId = \\w+, left = 10, top = 60, right = 50, bottom = 20, visible = 1, Refcon = 1, WindowID = \\w+",
         {"pDrawWindowCB = \\w+", "DrawWindowCallbackList size = 1", "KeyCallbackList size = 1",
          "MouseClickCallbackList size = 1", "CursorStatusCallbackList size = 1", "MouseWheelCallbackList size = 1"}},
        {"XPLMDestroyWindow", "pScriptId = \\w+, Script Name = , WindowID = 3039",
         {"pDrawWindowCB = 0", "DrawWindowCallbackList size = 0", "KeyCallbackList size = 0",
          "MouseClickCallbackList size = 0", "CursorStatusCallbackList size = 0", "MouseWheelCallbackList size = 0"}},
    };
    for (const Block& block : blocks) {
        std::vector<std::string> expected = {block.name, block.arguments};
        expected.insert(expected.end(), block.sizes.begin(), block.sizes.end());
        expected.push_back(block.name);
        bool seen = false;
        for (std::size_t i = 0; i + expected.size() <= lines.size() && !seen; ++i) {
            seen = true;
            for (std::size_t k = 0; k < expected.size() && seen; ++k)
                seen = std::regex_match(lines[i + k], std::regex(expected[k]));
        }
        EXPECT_TRUE(seen) << block.name << "\n" << log;
    }

    // What the script left: one record in each window list for main, one draw callback,
    // sniffer and hot key each, and main's bundle.
    std::vector<std::string> check = LinesFrom(log, "*** Checking Integrity of Callbacks Started. ***", 30);
    std::vector<std::string> expected;
    for (const char* list : {"KeySnifferCallbackList", "HotKeyCallbackList", "DrawWindowCallbackList", "KeyCallbackList",
                             "MouseClickCallbackList", "CursorStatusCallbackList", "MouseWheelCallbackList"})
        expected.insert(expected.end(), {std::string(list) + " size = 1", "Script 'VL_Display.py.'",
                                         "Mismatch of callback creation and destruction."});
    expected.insert(expected.end(), {"DrawWindowMemoryPointerList size = 1",
                                     "Mismatch of DrawWindowMemoryPointerList creation and destruction.",
                                     "DrawCallbackList size = 1", "Script 'VL_Display.py.'",
                                     "Mismatch of callback creation and destruction.",
                                     "*** Checking Integrity of Callbacks Finished. ***"});
    ASSERT_GE(check.size(), expected.size() + 1) << log;
    EXPECT_EQ(std::vector<std::string>(check.begin() + 1, check.begin() + 1 + static_cast<long>(expected.size())),
              expected)
        << log;
}

}  // namespace
}  // namespace vorlith::test
