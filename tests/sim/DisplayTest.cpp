// XPLMDisplay in the host: draw phases and suppression, windows (z-order, focus, mouse
// capture, cursor, wheel), key sniffer and hot key routing, and handle validation.

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMPlugin.h"
#include "display_test_util.h"
#include "plugins/test_plugin.h"  // createTestWindow, shared with the test plug-ins

namespace xpsim::test {
namespace {

using Calls = std::vector<std::string>;

int recordPhase(XPLMDrawingPhase phase, int isBefore, void* ref) {
    record(std::string(label(ref)) + " phase=" + std::to_string(phase) + " before=" + std::to_string(isBefore));
    return 1;
}

int suppressPhase(XPLMDrawingPhase phase, int isBefore, void* ref) {
    record(std::string(label(ref)) + " suppresses " + std::to_string(phase));
    return 0;
}

void drawWindow(XPLMWindowID, void* ref) { record(std::string("draw ") + label(ref)); }

void keyWindow(XPLMWindowID id, char key, XPLMKeyFlags flags, char vkey, void* ref, int losingFocus) {
    if (losingFocus) {
        record(std::string(label(ref)) + " loses focus to " + (id ? label(XPLMGetWindowRefCon(id)) : "X-Plane"));
    } else {
        record(std::string(label(ref)) + " key " + key + " flags=" + std::to_string(flags) +
               " vkey=" + std::to_string(vkey));
    }
}

int clickWindow(XPLMWindowID, int x, int y, XPLMMouseStatus status, void* ref) {
    static const char* names[] = {"", "down", "drag", "up"};
    record(std::string(label(ref)) + " " + names[status] + " " + std::to_string(x) + "," + std::to_string(y));
    return std::strstr(label(ref), "passes") ? 0 : 1;
}

// The plug-in that windows labelled "disables" disable when asked for the cursor or
// given a wheel turn.
int gDisabledByWindow = 0;

XPLMCursorStatus cursorWindow(XPLMWindowID, int x, int y, void* ref) {
    record(std::string(label(ref)) + " cursor " + std::to_string(x) + "," + std::to_string(y));
    if (std::strstr(label(ref), "disables")) XPLMDisablePlugin(gDisabledByWindow);
    if (std::strstr(label(ref), "hidden")) return xplm_CursorHidden;
    if (std::strstr(label(ref), "arrow")) return xplm_CursorArrow;
    return xplm_CursorDefault;
}

int wheelWindow(XPLMWindowID, int x, int y, int wheel, int clicks, void* ref) {
    record(std::string(label(ref)) + " wheel " + std::to_string(wheel) + " " + std::to_string(clicks));
    if (std::strstr(label(ref), "disables")) XPLMDisablePlugin(gDisabledByWindow);
    return std::strstr(label(ref), "passes") ? 0 : 1;
}

XPLMWindowID createWindow(const char* name, int left, int top, int right, int bottom, int visible = 1) {
    XPLMWindowID window = createTestWindow(left, top, right, bottom, drawWindow, clickWindow, keyWindow, cursorWindow,
                                           wheelWindow, refcon(name));
    if (!visible) XPLMSetWindowIsVisible(window, 0);
    return window;
}

// Only the calls whose text contains `part`.
Calls callsWith(const std::string& part) {
    Calls out;
    for (const std::string& c : calls()) {
        if (c.find(part) != std::string::npos) out.push_back(c);
    }
    return out;
}

// The mouse-click calls only (cursor calls happen every frame as well).
Calls clicks() {
    Calls out;
    for (const std::string& c : calls()) {
        for (const char* status : {" down ", " drag ", " up "}) {
            if (c.find(status) != std::string::npos) out.push_back(c);
        }
    }
    return out;
}

class DisplayTest : public DisplaySimTest {
protected:
    void SetUp() override {
        DisplaySimTest::SetUp();
        startSim();
    }
};

TEST_F(DisplayTest, DrawCallbacksRunPerPhaseInSimulatorOrderAndUnregisterByAllFourValues) {
    // Registered out of order: the simulator's order decides, then registration order.
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_LastCockpit, 1, refcon("h")), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_Window, 0, refcon("g")), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_Window, 1, refcon("f")), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_Window, 1, refcon("e")), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_FirstCockpit, 0, refcon("d")), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_Terrain, 1, refcon("b")), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_FirstScene, 0, refcon("a")), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_LastScene, 1, refcon("c")), 1);
    // A phase the simulator does not have; a local map phase exists but the map is closed.
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, 7, 1, refcon("none")), 0);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_LocalMap2D, 1, refcon("map")), 1);

    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"a phase=0 before=0", "b phase=5 before=1", "c phase=30 before=1",
                              "d phase=35 before=0", "f phase=50 before=1", "e phase=50 before=1",
                              "g phase=50 before=0", "h phase=55 before=1"}));

    // Each value of the registration identifies it: a different one finds nothing.
    EXPECT_EQ(XPLMUnregisterDrawCallback(recordPhase, xplm_Phase_Window, 1, refcon("g")), 0);
    EXPECT_EQ(XPLMUnregisterDrawCallback(recordPhase, xplm_Phase_Window, 0, refcon("f")), 0);
    EXPECT_EQ(XPLMUnregisterDrawCallback(recordPhase, xplm_Phase_Gauges, 1, refcon("f")), 0);
    EXPECT_EQ(XPLMUnregisterDrawCallback(suppressPhase, xplm_Phase_Window, 1, refcon("f")), 0);
    EXPECT_EQ(XPLMUnregisterDrawCallback(recordPhase, xplm_Phase_Window, 1, refcon("f")), 1);
    EXPECT_EQ(XPLMUnregisterDrawCallback(recordPhase, xplm_Phase_Window, 1, refcon("f")), 0);
    calls().clear();
    driver::runFrames(2);
    EXPECT_TRUE(callsWith("f ").empty());
    EXPECT_EQ(callsWith("e ").size(), 2u);
    EXPECT_TRUE(callsWith("map").empty());
}

TEST_F(DisplayTest, LocalMapPhasesExistFromSdk200On) {
    startSim("1.02");
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_LocalMap3D, 1, nullptr), 0);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_Panel, 1, nullptr), 1);
    startSim("2.00");
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_LocalMap3D, 1, nullptr), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, xplm_Phase_LocalMapProfile, 0, nullptr), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(recordPhase, 103, 0, nullptr), 0);
}

TEST_F(DisplayTest, BeforeCallbackReturningZeroSuppressesThePhaseDrawingButNotOtherCallbacks) {
    createWindow("W", 100, 200, 300, 100);
    driver::runFrames(1);
    ASSERT_EQ(drawn("window").size(), 1u);
    ASSERT_EQ(drawn("phase").size(), 12u);

    XPLMRegisterDrawCallback(suppressPhase, xplm_Phase_Terrain, 1, refcon("s1"));
    XPLMRegisterDrawCallback(suppressPhase, xplm_Phase_Window, 1, refcon("s2"));
    XPLMRegisterDrawCallback(recordPhase, xplm_Phase_Window, 1, refcon("later-before"));
    XPLMRegisterDrawCallback(recordPhase, xplm_Phase_Window, 0, refcon("after"));
    calls().clear();
    driver::runFrames(1);
    // Plug-in windows are the simulator's drawing of the window phase: suppressed too.
    EXPECT_EQ(calls(), (Calls{"s1 suppresses 5", "s2 suppresses 50", "later-before phase=50 before=1",
                              "after phase=50 before=0"}));
    EXPECT_TRUE(drawn("window").empty());
    std::vector<std::string> phases;
    for (const DrawItem& item : drawn("phase")) phases.push_back(item.text);
    EXPECT_EQ(phases, (Calls{"FirstScene", "Airports", "Vectors", "Objects", "Airplanes", "LastScene",
                             "FirstCockpit", "Panel", "Gauges", "LastCockpit"}));
}

XPLMWindowID gVictim = nullptr;
int destroyingCallback(XPLMDrawingPhase phase, int isBefore, void* ref) {
    record("destroyer");
    XPLMDestroyWindow(gVictim);
    XPLMUnregisterDrawCallback(destroyingCallback, phase, isBefore, ref);
    return 1;
}
void destroyOtherWindow(XPLMWindowID id, void* ref) {
    record(std::string("draw ") + label(ref));
    XPLMDestroyWindow(gVictim);
}

TEST_F(DisplayTest, CallbacksDestroyingWindowsAndUnregisteringDuringDispatchAreSafe) {
    gVictim = createWindow("victim", 0, 100, 100, 0);
    XPLMRegisterDrawCallback(destroyingCallback, xplm_Phase_Window, 1, nullptr);
    driver::runFrames(2);
    EXPECT_EQ(calls(), (Calls{"destroyer"}));
    EXPECT_TRUE(drawn("window").empty());

    // A window's draw callback destroys a window further up the z-order.
    calls().clear();
    XPLMWindowID killer = XPLMCreateWindow(0, 100, 100, 0, 1, destroyOtherWindow, keyWindow, clickWindow,
                                           refcon("killer"));
    gVictim = createWindow("victim", 0, 100, 100, 0);
    driver::runFrames(2);
    EXPECT_EQ(calls(), (Calls{"draw killer", "draw killer"}));
    XPLMDestroyWindow(killer);
    driver::runFrames(1);
    EXPECT_TRUE(drawn("window").empty());
}

TEST_F(DisplayTest, WindowsDrawBackToFrontAndBringToFrontChangesTheOrder) {
    XPLMWindowID a = createWindow("A", 10, 110, 110, 10);
    XPLMWindowID b = createWindow("B", 20, 120, 120, 20);
    XPLMWindowID c = createWindow("C", 30, 130, 130, 30);
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"draw A", "draw B", "draw C"}));
    std::vector<DrawItem> windows = drawn("window");
    ASSERT_EQ(windows.size(), 3u);
    EXPECT_EQ(windows[1].x, 20);
    EXPECT_EQ(windows[1].y, 120);
    EXPECT_EQ(windows[1].right, 120);
    EXPECT_EQ(windows[1].bottom, 20);
    EXPECT_EQ(XPLMIsWindowInFront(c), 1);
    EXPECT_EQ(XPLMIsWindowInFront(a), 0);

    XPLMBringWindowToFront(a);
    EXPECT_EQ(XPLMIsWindowInFront(a), 1);
    EXPECT_EQ(XPLMIsWindowInFront(c), 0);
    calls().clear();
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"draw B", "draw C", "draw A"}));

    // A hidden window is neither drawn nor in front; the next visible one is.
    XPLMSetWindowIsVisible(a, 0);
    EXPECT_EQ(XPLMGetWindowIsVisible(a), 0);
    EXPECT_EQ(XPLMIsWindowInFront(a), 0);
    EXPECT_EQ(XPLMIsWindowInFront(c), 1);
    calls().clear();
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"draw B", "draw C"}));

    // A new window opens in front.
    XPLMWindowID d = createWindow("D", 0, 10, 10, 0);
    EXPECT_EQ(XPLMIsWindowInFront(d), 1);
    (void)b;
}

TEST_F(DisplayTest, WindowGeometryVisibilityAndRefconReadBackWhatWasSet) {
    XPLMWindowID w = XPLMCreateWindow(50, 400, 250, 300, 0, drawWindow, keyWindow, clickWindow, refcon("first"));
    ASSERT_NE(w, nullptr);
    int l = -1, t = -1, r = -1, b = -1;
    XPLMGetWindowGeometry(w, &l, &t, &r, &b);
    EXPECT_EQ((std::vector<int>{l, t, r, b}), (std::vector<int>{50, 400, 250, 300}));
    XPLMSetWindowGeometry(w, 5, 60, 70, 8);
    XPLMGetWindowGeometry(w, &l, nullptr, nullptr, &b);  // any output may be NULL
    EXPECT_EQ(l, 5);
    EXPECT_EQ(b, 8);
    XPLMGetWindowGeometry(w, nullptr, &t, &r, nullptr);
    EXPECT_EQ(t, 60);
    EXPECT_EQ(r, 70);

    EXPECT_EQ(XPLMGetWindowIsVisible(w), 0);
    driver::runFrames(1);
    EXPECT_TRUE(calls().empty());
    XPLMSetWindowIsVisible(w, 5);
    EXPECT_EQ(XPLMGetWindowIsVisible(w), 1);

    EXPECT_EQ(label(XPLMGetWindowRefCon(w)), std::string("first"));
    XPLMSetWindowRefCon(w, refcon("second"));
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"draw second"}));
    EXPECT_EQ(errorsMentioning("XPLM"), 0);
}

TEST_F(DisplayTest, InvalidOrDestroyedWindowHandlesReportErrorsAndGetNeutralAnswers) {
    XPLMWindowID dead = createWindow("dead", 0, 10, 10, 0);
    XPLMDestroyWindow(dead);
    XPLMWindowID live = createWindow("live", 0, 10, 10, 0);
    int junk = 0;
    XPLMHotKeyID hotKey = XPLMRegisterHotKey(XPLM_VK_F1, xplm_DownFlag, "k", [](void*) {}, nullptr);
    // Destroyed, never handed out, and a handle of another kind.
    for (XPLMWindowID bad : {dead, static_cast<XPLMWindowID>(&junk), static_cast<XPLMWindowID>(hotKey)}) {
        int before = errorsMentioning("invalid window id");
        int l = 7, t = 7, r = 7, b = 7;
        XPLMGetWindowGeometry(bad, &l, &t, &r, &b);
        EXPECT_EQ((std::vector<int>{l, t, r, b}), (std::vector<int>{0, 0, 0, 0}));
        XPLMSetWindowGeometry(bad, 1, 2, 3, 4);
        EXPECT_EQ(XPLMGetWindowIsVisible(bad), 0);
        XPLMSetWindowIsVisible(bad, 1);
        EXPECT_EQ(XPLMGetWindowRefCon(bad), nullptr);
        XPLMSetWindowRefCon(bad, nullptr);
        XPLMTakeKeyboardFocus(bad);
        XPLMBringWindowToFront(bad);
        EXPECT_EQ(XPLMIsWindowInFront(bad), 0);
        XPLMDestroyWindow(bad);
        EXPECT_EQ(errorsMentioning("invalid window id"), before + 10);
    }
    // The live window is untouched by all of that, and still in front.
    EXPECT_EQ(XPLMIsWindowInFront(live), 1);
    EXPECT_EQ(label(XPLMGetWindowRefCon(live)), std::string("live"));
    EXPECT_EQ(errorsMentioning("XPLMGetWindowRefCon: invalid window id"), 3);
}

TEST_F(DisplayTest, CreateWindowExNeedsTheWholeStructAndReportsMissingCallbacks) {
    XPLMCreateWindow_t params{};
    params.structSize = 48;  // a 32-bit caller's size: the callbacks cannot all be there
    params.drawWindowFunc = drawWindow;
    EXPECT_EQ(XPLMCreateWindowEx(&params), nullptr);
    EXPECT_EQ(errorsMentioning("XPLMCreateWindowEx: structSize 48"), 1);
    EXPECT_EQ(XPLMCreateWindowEx(nullptr), nullptr);

    // Only the draw callback: reported, but the window works without the others.
    params.structSize = sizeof params;
    params.left = 0;
    params.top = 100;
    params.right = 100;
    params.bottom = 0;
    params.visible = 1;
    params.refcon = refcon("partial");
    XPLMWindowID w = XPLMCreateWindowEx(&params);
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(errorsMentioning("every callback must be set"), 1);
    XPLMTakeKeyboardFocus(w);
    driver::mouseDown(50, 50);
    driver::mouseWheel(50, 50, 0, 1);
    driver::keyPress('a', xplm_DownFlag, XPLM_VK_A);
    driver::mouseUp(50, 50);
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"draw partial"}));
    XPLMTakeKeyboardFocus(nullptr);
}

TEST_F(DisplayTest, MouseDownDragAndUpGoToTheWindowThatTookTheDown) {
    createWindow("back", 0, 400, 400, 0);
    createWindow("front", 100, 300, 300, 100);
    driver::mouseDown(150, 150);
    driver::mouseMove(500, 600);  // outside both windows: still the front window's drag
    driver::mouseUp(20, 20);      // over the back window: still the front window's up
    EXPECT_EQ(clicks(), Calls{}) << "input waits for the next frame";
    driver::runFrames(1);
    EXPECT_EQ(clicks(), (Calls{"front down 150,150", "front drag 500,600", "front up 20,20"}));
    int x = 0, y = 0;
    XPLMGetMouseLocation(&x, &y);
    EXPECT_EQ(x, 20);
    EXPECT_EQ(y, 20);

    // Two clicks queued in one frame stay two clicks; outside the front window the
    // back one gets them.
    calls().clear();
    driver::mouseDown(50, 50);
    driver::mouseUp(50, 50);
    driver::mouseDown(60, 60);
    driver::mouseUp(61, 61);
    driver::runFrames(1);
    EXPECT_EQ(clicks(), (Calls{"back down 50,50", "back up 50,50", "back down 60,60", "back up 61,61"}));

    // The edges belong to the window.
    calls().clear();
    driver::mouseDown(300, 300);
    driver::mouseUp(300, 300);
    driver::mouseDown(301, 300);
    driver::mouseUp(301, 300);
    driver::runFrames(1);
    EXPECT_EQ(clicks(), (Calls{"front down 300,300", "front up 300,300", "back down 301,300", "back up 301,300"}));

    // Moving without a button down is no drag.
    calls().clear();
    driver::mouseMove(150, 150);
    driver::runFrames(1);
    EXPECT_EQ(clicks(), Calls{});
}

int destroyOnClick(XPLMWindowID id, int, int, XPLMMouseStatus status, void*) {
    record("click " + std::to_string(status));
    XPLMDestroyWindow(id);
    return 1;
}

TEST_F(DisplayTest, MouseDownPassedThroughGoesToTheWindowBelowWhichThenOwnsTheClickUntilDestroyed) {
    createWindow("under", 0, 400, 400, 0);
    createWindow("passes", 100, 300, 300, 100);
    createWindow("elsewhere", 500, 700, 700, 500);
    driver::mouseDown(150, 150);
    driver::mouseMove(160, 160);
    driver::mouseUp(170, 170);
    driver::runFrames(1);
    EXPECT_EQ(clicks(), (Calls{"passes down 150,150", "under down 150,150", "under drag 160,160",
                               "under up 170,170"}));

    // Nobody under the mouse: the click is X-Plane's, no window hears of it.
    calls().clear();
    driver::mouseDown(900, 50);
    driver::mouseMove(150, 150);
    driver::mouseUp(150, 150);
    driver::runFrames(1);
    EXPECT_EQ(clicks(), Calls{});

    // A window destroyed while holding the mouse gets no more calls.
    XPLMCreateWindow(0, 100, 100, 0, 1, drawWindow, keyWindow, destroyOnClick, refcon("w"));
    driver::mouseDown(50, 50);
    driver::mouseMove(60, 60);
    driver::mouseUp(60, 60);
    driver::runFrames(1);
    EXPECT_EQ(callsWith("click"), (Calls{"click 1"}));
}

TEST_F(DisplayTest, KeyboardFocusSendsKeysToTheWindowAndTellsTheWindowThatLosesIt) {
    XPLMWindowID a = createWindow("A", 0, 10, 10, 0);
    XPLMWindowID b = createWindow("B", 20, 30, 30, 20);
    XPLMTakeKeyboardFocus(a);
    driver::keyPress('x', xplm_DownFlag, XPLM_VK_X);
    driver::runFrames(1);
    EXPECT_EQ(callsWith(" key"), (Calls{"A key x flags=8 vkey=88"}));

    calls().clear();
    XPLMTakeKeyboardFocus(a);  // already has it: no losing call
    XPLMTakeKeyboardFocus(b);
    XPLMTakeKeyboardFocus(nullptr);
    EXPECT_EQ(calls(), (Calls{"A loses focus to B", "B loses focus to X-Plane"}));

    // Destroying the focused window frees the keys without calling it.
    XPLMRegisterKeySniffer([](char key, XPLMKeyFlags, char, void*) {
        record(std::string("sniffer ") + key);
        return 1;
    }, 0, nullptr);
    XPLMTakeKeyboardFocus(b);
    calls().clear();
    XPLMDestroyWindow(b);
    driver::keyPress('z', xplm_DownFlag, XPLM_VK_Z);
    driver::runFrames(1);
    EXPECT_EQ(callsWith("B "), Calls{});
    EXPECT_EQ(callsWith("sniffer"), (Calls{"sniffer z"}));
}

// Two windows that take the keyboard focus back whenever they lose it.
XPLMWindowID gGrabbers[2];
void grabBack(XPLMWindowID taker, char, XPLMKeyFlags, char, void* ref, int losingFocus) {
    if (!losingFocus) return;
    record(std::string(label(ref)) + " loses focus");
    XPLMTakeKeyboardFocus(gGrabbers[taker == gGrabbers[0] ? 1 : 0]);
}

TEST_F(DisplayTest, WindowsTakingTheFocusBackFromTheirLosingCallsDoNotRecurseWithoutEnd) {
    gGrabbers[0] = createTestWindow(0, 10, 10, 0, drawWindow, clickWindow, grabBack, cursorWindow, wheelWindow,
                                    refcon("A"));
    gGrabbers[1] = createTestWindow(20, 30, 30, 20, drawWindow, clickWindow, grabBack, cursorWindow, wheelWindow,
                                    refcon("B"));
    XPLMTakeKeyboardFocus(gGrabbers[0]);
    XPLMTakeKeyboardFocus(gGrabbers[1]);  // A loses and takes it back, B loses and takes it back, ...
    EXPECT_EQ(errorsMentioning("XPLMTakeKeyboardFocus: windows keep taking the focus back"), 1);
    const Calls losing = callsWith("loses focus");
    EXPECT_GE(losing.size(), 2u);
    EXPECT_LE(losing.size(), 16u);
    EXPECT_EQ(losing[0], "A loses focus");
    EXPECT_EQ(losing[1], "B loses focus");
}

int sniff(char key, XPLMKeyFlags, char, void* ref) {
    record(std::string(label(ref)) + " " + key);
    return std::strstr(label(ref), "eats") ? 0 : 1;
}

TEST_F(DisplayTest, KeyPressGoesThroughBeforeSniffersFocusedWindowAfterSniffersThenHotKeys) {
    EXPECT_EQ(XPLMRegisterKeySniffer(sniff, 0, refcon("after1")), 1);
    EXPECT_EQ(XPLMRegisterKeySniffer(sniff, 1, refcon("before1")), 1);
    EXPECT_EQ(XPLMRegisterKeySniffer(sniff, 1, refcon("before2")), 1);
    XPLMRegisterHotKey(XPLM_VK_Q, xplm_DownFlag, "q", [](void*) { record("hotkey q"); }, nullptr);

    // No focus: every stage sees the key, in order.
    driver::keyPress('q', xplm_DownFlag, XPLM_VK_Q);
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"before1 q", "before2 q", "after1 q", "hotkey q"}));

    // A focused window takes the key: after-sniffers and hot keys do not see it.
    XPLMWindowID w = XPLMCreateWindow(0, 10, 10, 0, 0, drawWindow, keyWindow, clickWindow, refcon("W"));
    XPLMTakeKeyboardFocus(w);
    calls().clear();
    driver::keyPress('q', xplm_DownFlag, XPLM_VK_Q);
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"before1 q", "before2 q", "W key q flags=8 vkey=81"}));

    // A before-sniffer that consumes the key stops everything after it.
    XPLMRegisterKeySniffer(sniff, 1, refcon("eats-before"));
    XPLMUnregisterKeySniffer(sniff, 1, refcon("before2"));
    calls().clear();
    driver::keyPress('q', xplm_DownFlag, XPLM_VK_Q);
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"before1 q", "eats-before q"}));

    // An after-sniffer that consumes the key keeps it from the hot keys.
    EXPECT_EQ(XPLMUnregisterKeySniffer(sniff, 1, refcon("eats-before")), 1);
    EXPECT_EQ(XPLMUnregisterKeySniffer(sniff, 1, refcon("eats-before")), 0);
    EXPECT_EQ(XPLMUnregisterKeySniffer(sniff, 0, refcon("before1")), 0);  // wrong side
    XPLMTakeKeyboardFocus(nullptr);
    XPLMRegisterKeySniffer(sniff, 0, refcon("eats-after"));
    calls().clear();
    driver::keyPress('q', xplm_DownFlag, XPLM_VK_Q);
    driver::runFrames(1);
    EXPECT_EQ(callsWith(" q"), (Calls{"before1 q", "after1 q", "eats-after q"}));
    EXPECT_EQ(callsWith("hotkey"), Calls{});
}

void hotKeyCallback(void* ref) { record(std::string("hotkey ") + label(ref)); }

TEST_F(DisplayTest, HotKeysAreListedDescribedRemappedAndFireOnTheirCombination) {
    std::string longText(600, 'd');
    XPLMHotKeyID first = XPLMRegisterHotKey(XPLM_VK_F1, xplm_DownFlag | xplm_ShiftFlag, "Show map", hotKeyCallback,
                                            refcon("first"));
    XPLMHotKeyID second = XPLMRegisterHotKey(XPLM_VK_F2, 0, longText.c_str(), hotKeyCallback, refcon("second"));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(XPLMCountHotKeys(), 2);
    EXPECT_EQ(XPLMGetNthHotKey(0), first);
    EXPECT_EQ(XPLMGetNthHotKey(1), second);

    char vkey = 0;
    XPLMKeyFlags flags = 0;
    char description[512];
    XPLMPluginID owner = -5;
    XPLMGetHotKeyInfo(first, &vkey, &flags, description, &owner);
    EXPECT_EQ(vkey, static_cast<char>(XPLM_VK_F1));
    EXPECT_EQ(flags, xplm_DownFlag | xplm_ShiftFlag);
    EXPECT_STREQ(description, "Show map");
    EXPECT_EQ(owner, XPLM_PLUGIN_XPLANE);
    XPLMGetHotKeyInfo(second, nullptr, nullptr, description, nullptr);
    EXPECT_EQ(std::string(description), longText.substr(0, 511));

    // Modifiers must match; with no up/down flag the key fires on the way down.
    driver::keyPress(0, xplm_DownFlag, XPLM_VK_F1);
    driver::keyPress(0, xplm_DownFlag | xplm_ShiftFlag, XPLM_VK_F1);
    driver::keyPress(0, xplm_UpFlag | xplm_ShiftFlag, XPLM_VK_F1);
    driver::keyPress(0, xplm_DownFlag, XPLM_VK_F2);
    driver::keyPress(0, xplm_UpFlag, XPLM_VK_F2);
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"hotkey first", "hotkey second"}));

    // Remapped, the old combination no longer fires.
    XPLMSetHotKeyCombination(first, XPLM_VK_F5, xplm_DownFlag | xplm_ControlFlag);
    XPLMGetHotKeyInfo(first, &vkey, &flags, nullptr, nullptr);
    EXPECT_EQ(vkey, static_cast<char>(XPLM_VK_F5));
    calls().clear();
    driver::keyPress(0, xplm_DownFlag | xplm_ShiftFlag, XPLM_VK_F1);
    driver::keyPress(0, xplm_DownFlag | xplm_ControlFlag, XPLM_VK_F5);
    driver::runFrames(1);
    EXPECT_EQ(calls(), (Calls{"hotkey first"}));

    XPLMUnregisterHotKey(first);
    EXPECT_EQ(XPLMCountHotKeys(), 1);
    EXPECT_EQ(XPLMGetNthHotKey(0), second);
    EXPECT_EQ(errorsMentioning("XPLM"), 0);

    // The removed one and out-of-range indexes are errors with neutral answers.
    EXPECT_EQ(XPLMGetNthHotKey(1), nullptr);
    EXPECT_EQ(XPLMGetNthHotKey(-1), nullptr);
    EXPECT_EQ(errorsMentioning("XPLMGetNthHotKey: index"), 2);
    owner = 3;
    std::strcpy(description, "stale");
    XPLMGetHotKeyInfo(first, &vkey, &flags, description, &owner);
    EXPECT_EQ(owner, XPLM_NO_PLUGIN_ID);
    EXPECT_STREQ(description, "");
    XPLMSetHotKeyCombination(first, XPLM_VK_F1, 0);
    XPLMUnregisterHotKey(first);
    EXPECT_EQ(errorsMentioning("invalid hot key id"), 3);
    calls().clear();
    driver::keyPress(0, xplm_DownFlag | xplm_ControlFlag, XPLM_VK_F5);
    driver::runFrames(1);
    EXPECT_EQ(calls(), Calls{});
}

TEST_F(DisplayTest, CursorIsAskedOfWindowsUnderTheMouseFrontToBackUntilOneSetsIt) {
    createWindow("hidden-back", 0, 400, 400, 0);
    XPLMWindowID front = createWindow("default-front", 100, 300, 300, 100);
    driver::mouseMove(150, 160);
    driver::runFrames(1);
    EXPECT_EQ(callsWith("cursor"), (Calls{"default-front cursor 150,160", "hidden-back cursor 150,160"}));
    EXPECT_EQ(driver::cursorStatus(), xplm_CursorHidden);

    // The front window that sets a cursor wins; the one behind is not asked.
    XPLMSetWindowRefCon(front, refcon("arrow-front"));
    calls().clear();
    driver::runFrames(1);
    EXPECT_EQ(callsWith("cursor"), (Calls{"arrow-front cursor 150,160"}));
    EXPECT_EQ(driver::cursorStatus(), xplm_CursorArrow);

    calls().clear();
    driver::mouseMove(800, 700);
    driver::runFrames(1);
    EXPECT_EQ(callsWith("cursor"), Calls{});
    EXPECT_EQ(driver::cursorStatus(), xplm_CursorDefault);
}

TEST_F(DisplayTest, WheelGoesToTheFrontWindowUnderTheMouseAndPassesDownWhenRefused) {
    createWindow("back", 0, 400, 400, 0);
    XPLMWindowID front = createWindow("passes-front", 100, 300, 300, 100);
    driver::mouseWheel(150, 150, 0, -2);
    driver::mouseWheel(50, 50, 1, 3);
    driver::runFrames(1);
    EXPECT_EQ(callsWith("wheel"), (Calls{"passes-front wheel 0 -2", "back wheel 0 -2", "back wheel 1 3"}));
    int x, y;
    XPLMGetMouseLocation(&x, &y);
    EXPECT_EQ(x, 50);

    XPLMSetWindowRefCon(front, refcon("takes-front"));
    calls().clear();
    driver::mouseWheel(150, 150, 0, 1);
    driver::runFrames(1);
    EXPECT_EQ(callsWith("wheel"), (Calls{"takes-front wheel 0 1"}));
}

TEST_F(DisplayTest, ScreenSizeComesFromTheOptionsAndTheMouseStartsInTheMiddle) {
    startSimWithScreen(1920, 1080);
    int w = 0, h = 0, x = 0, y = 0;
    XPLMGetScreenSize(&w, &h);
    EXPECT_EQ(w, 1920);
    EXPECT_EQ(h, 1080);
    XPLMGetScreenSize(nullptr, &h);
    XPLMGetMouseLocation(&x, &y);
    EXPECT_EQ(x, 960);
    EXPECT_EQ(y, 540);
    XPLMGetMouseLocation(nullptr, nullptr);
    driver::mouseMove(3, 4);
    driver::runFrames(1);
    XPLMGetMouseLocation(&x, nullptr);
    EXPECT_EQ(x, 3);
}

TEST_F(DisplayTest, ShutdownForgetsWindowsCallbacksAndHotKeys) {
    XPLMWindowID w = createWindow("W", 0, 10, 10, 0);
    XPLMRegisterDrawCallback(recordPhase, xplm_Phase_Window, 1, refcon("cb"));
    XPLMRegisterHotKey(XPLM_VK_F1, 0, "k", hotKeyCallback, refcon("k"));
    driver::shutdown();
    startSim();
    EXPECT_EQ(XPLMCountHotKeys(), 0);
    EXPECT_EQ(XPLMGetWindowIsVisible(w), 0);
    EXPECT_EQ(errorsMentioning("invalid window id"), 1);
    calls().clear();
    driver::runFrames(1);
    EXPECT_EQ(calls(), Calls{});
}

}  // namespace
}  // namespace xpsim::test

namespace xpsim::test {
namespace {

constexpr int kTakeFocus = 0x7FF10001;

// Display callbacks of real plug-in binaries (tests/sim/plugins/display_recorder.c).
class DisplayPluginTest : public DisplayTest {
protected:
    int load(const std::string& name) { return loadTestPlugin("display_recorder", name); }
    // The plug-in's recorded calls; each must have run with the plug-in's own id.
    Calls takeEvents(const std::string& name, int id) {
        Calls events;
        std::string suffix = " myid=" + std::to_string(id);
        for (const std::string& line : SimRootTest::events(name)) {
            EXPECT_GE(line.size(), suffix.size());
            EXPECT_EQ(line.substr(line.size() - std::min(line.size(), suffix.size())), suffix) << line;
            events.push_back(line.substr(0, line.size() - std::min(line.size(), suffix.size())));
        }
        clearEvents(name);
        return events;
    }
    static bool has(const Calls& events, const std::string& event) {
        return std::find(events.begin(), events.end(), event) != events.end();
    }
    static std::vector<int> windowOwners() {
        std::vector<int> owners;
        for (const DrawItem& item : drawn("window")) owners.push_back(item.plugin);
        return owners;
    }
    // One frame with a click and a wheel turn over both windows and an F9 press.
    static void clickWheelAndPressF9() {
        driver::mouseDown(150, 150);
        driver::mouseUp(150, 150);
        driver::mouseWheel(150, 150, 0, 1);
        driver::keyPress(0, xplm_DownFlag, XPLM_VK_F9);
        driver::runFrames(1);
    }
};

TEST_F(DisplayPluginTest, PluginCallbacksRunAsTheirOwnerAndOnlyWhileItIsEnabled) {
    int alpha = load("Alpha");
    int beta = load("Beta");
    driver::enablePluginsAndSendLoadMessages();
    takeEvents("Alpha", alpha);
    takeEvents("Beta", beta);

    clickWheelAndPressF9();
    Calls a = takeEvents("Alpha", alpha), b = takeEvents("Beta", beta);
    // Beta's window is in front and takes the mouse; both see keys and draw.
    EXPECT_EQ(a, (Calls{"sniffer", "hotkey", "cursor", "window", "draw"}));
    EXPECT_EQ(b, (Calls{"down", "up", "wheel", "sniffer", "hotkey", "cursor", "window", "draw"}));
    EXPECT_EQ(windowOwners(), (std::vector<int>{alpha, beta}));
    std::vector<DrawItem> names = drawn("string");
    ASSERT_EQ(names.size(), 2u);
    EXPECT_EQ(names[0].text + "@" + std::to_string(names[0].plugin), "Alpha@" + std::to_string(alpha));

    // Disabled, Alpha gets nothing, and its focused window no longer takes keys.
    driver::sendMessage(alpha, kTakeFocus, 0);
    XPLMDisablePlugin(alpha);
    ASSERT_EQ(XPLMIsPluginEnabled(alpha), 0);
    takeEvents("Alpha", alpha);
    clickWheelAndPressF9();
    EXPECT_EQ(takeEvents("Alpha", alpha), Calls{});
    EXPECT_TRUE(has(takeEvents("Beta", beta), "hotkey"));
    EXPECT_EQ(windowOwners(), (std::vector<int>{beta}));

    // Enabled again, it has the focus it took: the key goes to its window.
    ASSERT_EQ(XPLMEnablePlugin(alpha), 1);
    clickWheelAndPressF9();
    a = takeEvents("Alpha", alpha);
    b = takeEvents("Beta", beta);
    EXPECT_TRUE(has(a, "key"));
    EXPECT_FALSE(has(a, "hotkey"));
    EXPECT_FALSE(has(b, "hotkey"));
    EXPECT_TRUE(has(b, "down"));
}

TEST_F(DisplayPluginTest, WheelAndCursorPassedDownSkipAWindowWhosePluginTheFrontOneDisabled) {
    gDisabledByWindow = load("Alpha");
    driver::enablePluginsAndSendLoadMessages();
    takeEvents("Alpha", gDisabledByWindow);
    // In front of Alpha's window, passing wheel and cursor down after disabling Alpha.
    ASSERT_NE(createWindow("front passes and disables", 0, 400, 400, 0), nullptr);

    driver::mouseWheel(150, 150, 0, 1);
    driver::runFrames(1);
    EXPECT_EQ(XPLMIsPluginEnabled(gDisabledByWindow), 0);
    EXPECT_EQ(takeEvents("Alpha", gDisabledByWindow), Calls{});
    ASSERT_EQ(XPLMEnablePlugin(gDisabledByWindow), 1);
    driver::runFrames(1);  // the cursor is asked every frame
    EXPECT_EQ(XPLMIsPluginEnabled(gDisabledByWindow), 0);
    EXPECT_EQ(takeEvents("Alpha", gDisabledByWindow), Calls{});
}

TEST_F(DisplayPluginTest, ReloadedPluginsLeaveNoWindowsCallbacksOrHotKeysBehind) {
    load("Alpha");
    load("Beta");
    driver::enablePluginsAndSendLoadMessages();
    EXPECT_EQ(XPLMCountHotKeys(), 2);
    driver::reloadPlugins();
    EXPECT_EQ(XPLMCountHotKeys(), 2);
    int alpha = driver::findPluginBySignature("xpsim.test.Alpha");
    int beta = driver::findPluginBySignature("xpsim.test.Beta");
    takeEvents("Alpha", alpha);
    takeEvents("Beta", beta);
    clickWheelAndPressF9();
    // One of each call per plug-in, all made as the new ids.
    EXPECT_EQ(takeEvents("Alpha", alpha), (Calls{"sniffer", "hotkey", "cursor", "window", "draw"}));
    EXPECT_EQ(takeEvents("Beta", beta).size(), 8u);
    EXPECT_EQ(windowOwners(), (std::vector<int>{alpha, beta}));
    XPLMPluginID owner = -1;
    XPLMHotKeyID alphaKey = XPLMGetNthHotKey(0);
    XPLMGetHotKeyInfo(alphaKey, nullptr, nullptr, nullptr, &owner);
    EXPECT_EQ(owner, alpha);

    // Anyone may remap a hot key; only its owner may remove it.
    XPLMSetHotKeyCombination(alphaKey, XPLM_VK_F10, xplm_DownFlag);
    XPLMUnregisterHotKey(alphaKey);
    EXPECT_EQ(XPLMCountHotKeys(), 2);
    EXPECT_EQ(errorsMentioning("belongs to plug-in " + std::to_string(alpha)), 1);
    driver::keyPress(0, xplm_DownFlag, XPLM_VK_F10);
    driver::runFrames(1);
    EXPECT_TRUE(has(takeEvents("Alpha", alpha), "hotkey"));
    EXPECT_FALSE(has(takeEvents("Beta", beta), "hotkey"));
}

}  // namespace
}  // namespace xpsim::test
