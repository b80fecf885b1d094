// The widget modules end to end: a script's settings form in xpsim, clicked, typed into
// and dragged, with the messages its callbacks see, the decoders, the out-list rules, the
// creation table, the records kept and purged, and the reports and trace lines in the log.

#include "CallbackInProcess.h"
#include "Harness.h"
#include "XPLMDataAccess.h"
#include "XPWidgets.h"
#include "XPLMDefs.h"
#include "driver.h"

namespace vorlith::test {
namespace {

class WidgetsTest : public PluginTest {
protected:
    static void Click(int x, int y) {
        xpsim::driver::mouseDown(x, y);
        xpsim::driver::runFrames(1);
        xpsim::driver::mouseUp(x, y);
        xpsim::driver::runFrames(1);
    }
    static void Type(char key, char virtualKey) {
        xpsim::driver::keyPress(key, xplm_DownFlag, virtualKey);
        xpsim::driver::runFrames(1);
        xpsim::driver::keyPress(key, xplm_UpFlag, virtualKey);
        xpsim::driver::runFrames(1);
    }
};

std::string Report(const std::string& module, const std::string& function, const std::string& text) {
    return "Module - " + module + ", Function - " + function + ", Error = " + text + "\n";
}

// Each group of lines must appear in the text in this order, one right after the other.
void ExpectBlocks(const std::string& text, const std::vector<std::vector<std::string>>& blocks) {
    std::size_t at = 0;
    for (const auto& block : blocks) {
        std::string joined;
        for (const std::string& line : block) joined += line + "\n";
        std::size_t found = text.find(joined, at);
        EXPECT_NE(found, std::string::npos) << "missing after offset " << at << ":\n" << joined << "in:\n" << text;
        if (found != std::string::npos) at = found + joined.size();
    }
}

TEST_F(WidgetsTest, AFormSeesItsClicksKeysAndDragsAndItsRecordsFollowItsWidgets) {
    WriteIni("[DEBUG]\nCheckCallbacks = 1\nDebugCallbacks = 1\n");
    AddScript("VL_WidgetForm.py");
    StartSim();
    Click(115, 532);  // the Sound check box
    Click(215, 507);  // radio B
    Click(200, 560);  // the text field takes the keyboard
    Type('a', 0x41);
    Type('b', 0x42);
    Click(390, 482);  // the volume slider's track right of its thumb: one page up
    xpsim::driver::mouseDown(350, 550);  // the custom widget drags itself
    xpsim::driver::runFrames(1);
    xpsim::driver::mouseMove(370, 540);
    xpsim::driver::runFrames(1);
    xpsim::driver::mouseUp(370, 540);
    xpsim::driver::runFrames(1);
    Click(140, 450);  // OK
    RunSeconds(0.1);  // the flight loop tries parameters of earlier frames
    Click(491, 591);  // the right close box
    StopSim();

    std::vector<std::string> modules = {"XPWidgets 27 0", "XPWidgetDefs 3 38", "XPStandardWidgets 0 76",
                                        "XPUIGraphics 7 44", "XPWidgetUtils 6 2"};
    if (kPythonMajor == 3) {  // where a module keeps its tables' order
        const char* orders[] = {"['XPCreateWidget'] []", "['VL_GetMouseState', 'xpProperty_Refcon'] ['xpMsg_CursorAdjust']",
                                "['xpWidgetClass_MainWindow'] ['xpProperty_ProgressMax']",
                                "['XPDrawWindow', 'xpWindow_Help'] ['xpTrack_Progress']",
                                "['XPUCreateWidgets', 'NO_PARENT'] ['PARAM_PARENT']"};
        for (int i = 4; i >= 0; --i) modules.insert(modules.begin() + i + 1, std::string("order ") + orders[i]);
    }
    modules.push_back(
        "Add widget callback.|Bring root widget to front.|Count child widgets.|Create a custom widget.|"
        "Create a widget.|Destroy a widget.|Find the root widget.|Get Nth child.|Get parent.|"
        "Get widget class function.|Get widget descriptor.|Get widget exposed geometry.|"
        "Get widget for location.|Get the widget geometry.|Get the widget property.|Get widget with focus.|"
        "Hide widget.|Is the widget in front.|Is the widget visible.|Lose keyboard focuse.|"
        "Place within another widget.|Send message to widget.|Set keyboard focus.|Set widget descriptor.|"
        "Set the widget geometry.|Set the widget property.|Show widget.");
    ExpectBlocks(Output(), {
        modules,
        {"first 1 1", "second create 1", "custom create 1"},
        {"descriptor 5 ['Sound']", "descriptor 5 ['x', 'So']", "descriptor None 5",
         "descriptor max -5 5 ['']", "descriptor max 2147483647 5 ['Sound']",
         "property -2147483647 exists [1, 6]", "property 0 exists [0]", "create (1,) made 2",
         "wide id True parent ok True", "moved [[610], [395], [], [295]]", "location True",
         "tuple entry raised TypeError", "short entry raised TypeError", "count raised ValueError",
         "container index raised ValueError", "foreign mouse raised ValueError",
         "foreign drag raised ValueError", "garbage widget -> 0", "custom key raised ValueError", "sent -> 0"},
        {"Sound state 1"},
        {"B state 1"},
        // Both copies of the trampoline the field got call the one record's callable.
        {"key (97, 8, 65)", "key as mouse raised ValueError", "key (97, 8, 65)",
         "key as mouse raised ValueError", "changed Field", "key later in its frame -> (97, 8, 65)"},
        {"changed Volume", "custom down (350, 550, 0, 0)", "custom reshape (20, -10, 0, 0)",
         "pushed OK text 'ab' states [1, 0, 1] volume 3", "old key raised ValueError",
         "old mouse raised ValueError", "close Settings"},
    });
    EXPECT_EQ(CountOf(Output(), "first "), 1) << Output();

    std::string log = Log();
    EXPECT_EQ(CountOf(log, Report("XPWidgets", "XPAddWidgetCallback",
                                  "Script 'VL_WidgetForm.py' XPAddWidgetCallback Error.")), 1) << log;
    EXPECT_EQ(CountOf(log, Report("XPWidgets", "XPDestroyWidget",
                                  "Script 'VL_WidgetForm.py' was unregistering a callback that does not exist.")),
              1)
        << log;
    EXPECT_EQ(log.find("Traceback"), std::string::npos) << log;
    // Nine records; closing the window purges its own and its six children's, not the
    // radio buttons' inside the group, which the check at stop reports.
    ExpectBlocks(log, {
        {"inIsRoot = 0, inContainer = 1", "WidgetCallbackList size = 9", "XPCreateCustomWidget"},
        {"Script Name = VL_WidgetForm, inWidgetID = 1", "WidgetCallbackList size = 2", "XPDestroyWidget"},
        {"*** Checking Integrity of Callbacks Started. ***", "WidgetCallbackList size = 2",
         "Script 'VL_WidgetForm.py.'", "Mismatch of callback creation and destruction.",
         "*** Checking Integrity of Callbacks Finished. ***"},
    });
}

TEST_F(WidgetsTest, TheWidgetExamplesSetTheirDatarefsAndDrawAGaugeThatDrags) {
    AddExample("VL_WidgetSettings.py");
    AddExample("VL_CustomWidget.py");
    StartSim();
    Click(250, 560);  // the name field
    Type('J', 0x4A);
    Type('o', 0x4F);
    Click(115, 532);  // Sound
    Click(295, 507);  // Loud
    Click(385, 477);  // the volume's track right of its thumb: one step up
    Click(150, 430);  // OK
    xpsim::driver::mouseDown(700, 270);
    xpsim::driver::runFrames(1);
    xpsim::driver::mouseMove(650, 250);
    xpsim::driver::runFrames(1);
    xpsim::driver::mouseUp(650, 250);
    RunSeconds(0.5);
    EXPECT_EQ(Output(), "Settings for 'Jo': sound 1, mode 2, volume 6\n") << Output() << Log();
    const char* names[] = {"sound", "mode", "volume"};
    const int expected[] = {1, 2, 6};
    for (int i = 0; i < 3; ++i) {
        XPLMDataRef ref = XPLMFindDataRef((std::string("vorlith/examples/settings/") + names[i]).c_str());
        ASSERT_NE(ref, nullptr) << names[i];
        EXPECT_EQ(XPLMGetDatai(ref), expected[i]) << names[i];
    }
    // The gauge drew itself where the drag left it, its track inside it and moving.
    int windows = 0, tracks = 0;
    for (const xpsim::DrawItem& item : xpsim::driver::drawList()) {
        if (item.plugin != vorlithId) continue;
        if (item.kind == "window" && item.text == "MainWindow" && item.x == 550 && item.y == 280 &&
            item.right == 710)
            ++windows;
        if (item.kind == "track" && item.x == 590 && item.text.find(" 0 100 ") != std::string::npos &&
            item.text.substr(item.text.rfind(' ') + 1) != "0")
            ++tracks;
    }
    EXPECT_EQ(windows, 1);
    EXPECT_EQ(tracks, 1);
    StopSim();
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

class WidgetReloadTest : public InProcessTest {
protected:
    // Runs `code` in __main__, where `script` is the script's instance.
    void Run(const char* code) {
        PyObject* main = PyImport_AddModule("__main__");
        ASSERT_NE(main, nullptr);
        ASSERT_EQ(PyDict_SetItemString(PyModule_GetDict(main), "script", script), 0);
        ASSERT_EQ(PyRun_SimpleString(code), 0) << code;
    }
    std::string Main(const char* name) {
        PyObject* value = PyDict_GetItemString(PyModule_GetDict(PyImport_AddModule("__main__")), name);
        PyObject* text = value ? PyObject_Repr(value) : nullptr;
        VL_Text bytes;
        std::string result = text && bytes.set(text) ? bytes.c_str() : "";
        Py_XDECREF(text);
        return result;
    }
};

TEST_F(WidgetReloadTest, WidgetsLeftOverAReloadAreNeverCalledAndTheNextInterpreterCanDestroyThem) {
    Run("import XPWidgets\n"
        "calls = []\n"
        "def seen(message, widget, param1, param2):\n"
        "    calls.append(message)\n"
        "    return 0\n"
        "widget = XPWidgets.XPCreateCustomWidget(script, 10, 100, 100, 10, 1, 'Left', 1, 0, seen)\n");
    EXPECT_EQ(Main("calls"), "[1]");
    auto widget = static_cast<XPWidgetID>(PyLong_AsVoidPtr(
        PyDict_GetItemString(PyModule_GetDict(PyImport_AddModule("__main__")), "widget")));
    ASSERT_NE(widget, nullptr);
    Restart();  // the widget and its record stay; the callable died with the interpreter
    guard.reset();
    xpsim::driver::runFrames(2);  // painted, so called, every frame
    guard = std::make_unique<PythonGuard>();
    EXPECT_EQ(XPSendMessageToWidget(widget, xpMsg_UserStart, xpMode_Direct, 0, 0), 1);
    EXPECT_EQ(XPIsWidgetVisible(widget), 1);
    Run(("import XPWidgets\n"
         "XPWidgets.XPDestroyWidget(script, " + std::to_string(reinterpret_cast<std::uintptr_t>(widget)) +
         ", 1)\n").c_str());
    EXPECT_EQ(XPIsWidgetVisible(widget), 0);  // gone
    EXPECT_NE(Log().find("Script 'VL_Dispatch.py' was unregistering a callback that does not exist."),
              std::string::npos)
        << Log();
}

}  // namespace
}  // namespace vorlith::test
