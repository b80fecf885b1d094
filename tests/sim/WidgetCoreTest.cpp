// The widget core driven from the test process: dispatch modes and callback stacking,
// creation and destruction messages, the tree, visibility, geometry and exposure,
// descriptors and properties, keyboard focus, bad ids and re-entrant widget functions.

#include <cstring>

#include "widget_test_util.h"

namespace xpsim::test {
namespace {

using Strings = std::vector<std::string>;

int handlesUser(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t) {
    logNonNoise(m, w, p1);
    return m == xpMsg_UserStart ? 1 : 0;
}

class WidgetCoreTest : public WidgetSimTest {};

TEST_F(WidgetCoreTest, CallbacksStackNewestFirstAndEachDispatchModeStopsWhereDocumented) {
    XPWidgetID w = custom("w", 0, 100, 100, 0);
    XPAddWidgetCallback(w, handlesUser);  // middle: handles the user message
    XPAddWidgetCallback(w, loggingFunc);  // newest
    EXPECT_EQ(calls(), (Strings{"w Create 0", "w Create 1", "w Create 1"}));

    calls().clear();
    EXPECT_EQ(XPSendMessageToWidget(w, xpMsg_UserStart, xpMode_Direct, 7, 0), 1);
    EXPECT_EQ(calls(), (Strings{"w User 7", "w User 7"})) << "the oldest function must not see a handled message";

    calls().clear();
    EXPECT_EQ(XPSendMessageToWidget(w, xpMsg_UserStart, xpMode_DirectAllCallbacks, 7, 0), 1);
    EXPECT_EQ(calls().size(), 3u);

    calls().clear();
    EXPECT_EQ(XPSendMessageToWidget(w, xpMsg_UserStart, xpMode_Once, 7, 0), 0);
    EXPECT_EQ(calls().size(), 1u) << "only the newest function";

    calls().clear();
    EXPECT_EQ(XPSendMessageToWidget(w, xpMsg_UserStart + 1, xpMode_Direct, 0, 0), 0);
    EXPECT_EQ(calls().size(), 3u) << "nobody handles it: every function saw it";
}

TEST_F(WidgetCoreTest, UpChainStopsAtTheHandlerAndRecursiveVisitsTheSubtreeInPreOrder) {
    XPWidgetID root = custom("root", 0, 500, 500, 0, nullptr, true);
    XPWidgetID a = custom("a", 10, 400, 200, 100, root);
    XPWidgetID a1 = custom("a1", 20, 300, 50, 200, a);
    custom("a2", 60, 300, 90, 200, a);
    custom("b", 300, 400, 400, 100, root);
    XPAddWidgetCallback(a, handlesUser);
    calls().clear();

    EXPECT_EQ(XPSendMessageToWidget(a1, xpMsg_UserStart, xpMode_UpChain, 0, 0), 1);
    EXPECT_EQ(calls(), (Strings{"a1 User 0", "a User 0"}));

    calls().clear();
    EXPECT_EQ(XPSendMessageToWidget(a1, xpMsg_UserStart + 1, xpMode_UpChain, 0, 0), 0);
    EXPECT_EQ(calls(), (Strings{"a1 User 0", "a User 0", "a User 0", "root User 0"}));

    calls().clear();
    EXPECT_EQ(XPSendMessageToWidget(root, xpMsg_UserStart, xpMode_Recursive, 0, 0), 1);
    EXPECT_EQ(calls(), (Strings{"root User 0", "a User 0", "a1 User 0", "a2 User 0", "b User 0"}));

    EXPECT_EQ(XPSendMessageToWidget(root, xpMsg_UserStart, 9, 0, 0), 0);
    EXPECT_EQ(errorsMentioning("unknown dispatch mode 9"), 1);
}

TEST_F(WidgetCoreTest, CreationInAContainerAndPlacingTellParentsAndChildInOrder) {
    XPWidgetID root = custom("root", 0, 500, 500, 0, nullptr, true);
    XPWidgetID box = custom("box", 10, 400, 200, 100, root);
    EXPECT_EQ(callsOf("box"), (Strings{"box Create 0", "box AcceptParent root"}));
    EXPECT_EQ(callsOf("root"), (Strings{"root Create 0", "root AcceptChild box"}));

    XPWidgetID other = custom("other", 300, 400, 400, 100, root);
    XPWidgetID loose = custom("loose", 20, 300, 50, 200);
    EXPECT_EQ(XPGetParentWidget(loose), nullptr);
    EXPECT_EQ(XPFindRootWidget(loose), nullptr);
    calls().clear();

    XPPlaceWidgetWithin(loose, box);
    XPPlaceWidgetWithin(loose, other);
    EXPECT_EQ(calls(), (Strings{"loose AcceptParent box", "box AcceptChild loose", "box LoseChild loose",
                                "loose AcceptParent other", "other AcceptChild loose", "loose ExposedChanged 0"}))
        << "inside box it was exposed, outside other's box it is not";
    EXPECT_EQ(XPFindRootWidget(loose), root);
    EXPECT_EQ(XPFindRootWidget(root), root);
    EXPECT_EQ(XPCountChildWidgets(root), 2);
    EXPECT_EQ(XPGetNthChildWidget(root, 0), box);
    EXPECT_EQ(XPGetNthChildWidget(root, 2), nullptr);
    EXPECT_EQ(XPGetNthChildWidget(root, -1), nullptr);

    calls().clear();
    XPPlaceWidgetWithin(box, root);  // same parent: only moves to the front
    EXPECT_EQ(XPGetNthChildWidget(root, 1), box);
    EXPECT_TRUE(calls().empty());

    XPPlaceWidgetWithin(other, loose);
    EXPECT_EQ(errorsMentioning("within itself or its own descendant"), 1);
    XPPlaceWidgetWithin(root, box);
    EXPECT_EQ(errorsMentioning("a root widget cannot be placed"), 1);
    EXPECT_EQ(XPGetParentWidget(other), root);
}

TEST_F(WidgetCoreTest, DestroyingWithChildrenDestroysTheSubtreeChildrenFirstWithoutLeavesThemFloating) {
    XPWidgetID root = custom("root", 0, 500, 500, 0, nullptr, true);
    XPWidgetID win = custom("win", 10, 400, 300, 100, root);
    XPWidgetID c1 = custom("c1", 20, 300, 50, 200, win);
    XPWidgetID g = custom("g", 20, 300, 30, 290, c1);
    XPWidgetID c2 = custom("c2", 60, 300, 90, 200, win);
    XPAddWidgetCallback(win, loggingFunc);
    XPWidgetID shell = custom("shell", 310, 400, 400, 100, root);
    XPWidgetID kept = custom("kept", 320, 300, 350, 200, shell);
    calls().clear();

    XPDestroyWidget(shell, 0);
    EXPECT_EQ(calls(), (Strings{"shell LoseChild kept", "kept AcceptParent 0", "shell Destroy 0",
                                "root LoseChild shell"}));
    EXPECT_EQ(XPGetParentWidget(kept), nullptr);
    EXPECT_EQ(XPFindRootWidget(kept), nullptr);
    EXPECT_EQ(XPIsWidgetVisible(kept), 0) << "a floating widget cannot be seen";
    XPPlaceWidgetWithin(kept, root);
    EXPECT_EQ(XPIsWidgetVisible(kept), 1);

    calls().clear();
    XPDestroyWidget(win, 1);
    EXPECT_EQ(calls(), (Strings{"g Destroy 1", "c1 Destroy 1", "c2 Destroy 1", "win Destroy 0", "win Destroy 0",
                                "root LoseChild win"}));
    EXPECT_EQ(XPCountChildWidgets(root), 1);
    for (XPWidgetID dead : {win, c1, g, c2}) EXPECT_EQ(XPGetParentWidget(dead), nullptr);
    EXPECT_EQ(errorsMentioning("XPGetParentWidget: invalid widget id"), 4);
}

TEST_F(WidgetCoreTest, VisibilityNeedsEveryAncestorAndShownHiddenGoUpTheChainOnChangesOnly) {
    XPWidgetID root = custom("root", 0, 500, 500, 0, nullptr, true);
    XPWidgetID panel = custom("panel", 10, 400, 300, 100, root);
    XPWidgetID field = custom("field", 20, 300, 50, 200, panel, false, false);
    EXPECT_EQ(XPIsWidgetVisible(field), 0);
    calls().clear();

    XPShowWidget(field);
    XPShowWidget(field);
    EXPECT_EQ(calls(), (Strings{"field Shown field", "panel Shown field", "root Shown field"}));
    EXPECT_EQ(XPIsWidgetVisible(field), 1);

    calls().clear();
    XPHideWidget(panel);
    EXPECT_EQ(calls(), (Strings{"panel Hidden panel", "root Hidden panel"}));
    EXPECT_EQ(XPIsWidgetVisible(field), 0) << "a hidden ancestor hides it";
    EXPECT_EQ(XPIsWidgetVisible(root), 1);
}

TEST_F(WidgetCoreTest, GeometryChangesSendReshapeUpTheChainAndExposureFollowsTheParents) {
    XPWidgetID root = custom("root", 0, 500, 500, 0, nullptr, true);
    XPWidgetID panel = custom("panel", 100, 400, 300, 100, root);
    XPWidgetID inner = custom("inner", 250, 300, 400, 200, panel);  // sticks out right
    int l, t, r, b;
    XPGetWidgetExposedGeometry(inner, &l, &t, &r, &b);
    EXPECT_EQ((Strings{std::to_string(l), std::to_string(t), std::to_string(r), std::to_string(b)}),
              (Strings{"250", "300", "300", "200"}));
    calls().clear();

    XPSetWidgetGeometry(panel, 100, 400, 450, 100);  // wider: inner fully exposed now
    EXPECT_EQ(calls(), (Strings{"panel Reshape panel", "root Reshape panel", "panel ExposedChanged 0",
                                "inner ExposedChanged 0"}));
    XPGetWidgetExposedGeometry(inner, &l, &t, &r, &b);
    EXPECT_EQ(r, 400);

    calls().clear();
    XPSetWidgetGeometry(panel, 100, 400, 450, 100);
    EXPECT_TRUE(calls().empty()) << "unchanged geometry is no change";

    // The deltas: left and top edges, and the size.
    static XPWidgetGeometryChange_t seen;
    XPAddWidgetCallback(panel, [](XPWidgetMessage m, XPWidgetID, intptr_t, intptr_t p2) {
        if (m == xpMsg_Reshape) seen = *reinterpret_cast<XPWidgetGeometryChange_t*>(p2);
        return 0;
    });
    XPSetWidgetGeometry(panel, 90, 420, 450, 110);
    EXPECT_EQ(seen.dx, -10);
    EXPECT_EQ(seen.dy, 20);
    EXPECT_EQ(seen.dwidth, 10);
    EXPECT_EQ(seen.dheight, 10);

    XPSetWidgetGeometry(inner, 600, 600, 700, 550);  // wholly outside: empty exposure
    XPGetWidgetExposedGeometry(inner, &l, &t, &r, &b);
    EXPECT_EQ(r - l, 0);
    EXPECT_EQ(t - b, 0);
}

TEST_F(WidgetCoreTest, WidgetForLocationFindsTheFrontMostVisibleDescendantInsideItsParents) {
    XPWidgetID root = custom("root", 0, 500, 500, 0, nullptr, true);
    XPWidgetID back = custom("back", 100, 400, 300, 100, root);
    XPWidgetID front = custom("front", 200, 300, 400, 200, root);
    XPWidgetID deep = custom("deep", 120, 380, 350, 360, back);  // sticks out of back on the right
    EXPECT_EQ(XPGetWidgetForLocation(root, 250, 250, 1, 1), front) << "later siblings are in front";
    EXPECT_EQ(XPGetWidgetForLocation(root, 130, 370, 0, 1), back);
    EXPECT_EQ(XPGetWidgetForLocation(root, 130, 370, 1, 1), deep);
    EXPECT_EQ(XPGetWidgetForLocation(root, 320, 370, 1, 1), root) << "outside its parent a child never matches";
    EXPECT_EQ(XPGetWidgetForLocation(root, 600, 600, 1, 1), nullptr);
    EXPECT_EQ(XPGetWidgetForLocation(root, 100, 400, 1, 1), back) << "edges are inclusive";
    XPHideWidget(front);
    EXPECT_EQ(XPGetWidgetForLocation(root, 250, 250, 1, 1), back);
    EXPECT_EQ(XPGetWidgetForLocation(root, 250, 250, 1, 0), front);
}

TEST_F(WidgetCoreTest, DescriptorsCopyLikeStrncpyAndPropertiesNotifyWithIdAndValue) {
    XPWidgetID w = custom("w", 0, 10, 10, 0);
    calls().clear();
    XPSetWidgetDescriptor(w, "Hello world");
    EXPECT_EQ(calls(), (Strings{"w DescriptorChanged 0"}));
    char buffer[8];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(XPGetWidgetDescriptor(w, buffer, 5), 11);
    EXPECT_EQ(std::string(buffer, 6), "Hello#") << "too long: not terminated, nothing past the limit";
    EXPECT_EQ(XPGetWidgetDescriptor(w, nullptr, 0), 11);

    calls().clear();
    int exists = -1;
    EXPECT_EQ(XPGetWidgetProperty(w, xpProperty_UserStart, &exists), 0);
    EXPECT_EQ(exists, 0);
    XPSetWidgetProperty(w, xpProperty_UserStart, -42);
    EXPECT_EQ(XPGetWidgetProperty(w, xpProperty_UserStart, &exists), -42);
    EXPECT_EQ(exists, 1);
    EXPECT_EQ(calls(), (Strings{"w PropertyChanged " + std::to_string(xpProperty_UserStart)}));
}

int refusesFocus(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t) {
    logNonNoise(m, w, p1);
    return 0;
}
int acceptsFocus(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t) {
    logNonNoise(m, w, p1);
    return m == xpMsg_KeyTakeFocus ? 1 : 0;
}

TEST_F(WidgetCoreTest, KeyboardFocusMovesOnlyToWidgetsThatAcceptAndFallsBackUpTheChain) {
    XPWidgetID root = named(XPCreateCustomWidget(0, 500, 500, 0, 1, "", 1, nullptr, acceptsFocus), "root");
    XPWidgetID panel = named(XPCreateCustomWidget(10, 400, 300, 100, 1, "", 0, root, refusesFocus), "panel");
    XPWidgetID f1 = named(XPCreateCustomWidget(20, 300, 90, 280, 1, "", 0, panel, acceptsFocus), "f1");
    XPWidgetID f2 = named(XPCreateCustomWidget(20, 270, 90, 250, 1, "", 0, panel, acceptsFocus), "f2");
    calls().clear();

    EXPECT_EQ(XPSetKeyboardFocus(f1), f1);
    EXPECT_EQ(XPSetKeyboardFocus(panel), nullptr) << "a refusal answers 0";
    EXPECT_EQ(XPGetWidgetWithFocus(), f1) << "and keeps the holder";
    EXPECT_EQ(XPSetKeyboardFocus(f2), f2);
    EXPECT_EQ(calls(), (Strings{"f1 KeyTakeFocus 0", "panel KeyTakeFocus 0", "f2 KeyTakeFocus 0",
                                "f1 KeyLoseFocus 1"}));

    calls().clear();
    XPLoseKeyboardFocus(f1);  // not the holder: nothing
    XPLoseKeyboardFocus(f2);
    EXPECT_EQ(calls(), (Strings{"f2 KeyLoseFocus 0", "panel KeyTakeFocus 1", "root KeyTakeFocus 1"}));
    EXPECT_EQ(XPGetWidgetWithFocus(), root);

    calls().clear();
    EXPECT_EQ(XPSetKeyboardFocus(nullptr), nullptr);
    EXPECT_EQ(calls(), (Strings{"root KeyLoseFocus 0"}));
    EXPECT_EQ(XPGetWidgetWithFocus(), nullptr);

    XPSetKeyboardFocus(f1);
    calls().clear();
    XPHideWidget(panel);
    EXPECT_EQ(XPGetWidgetWithFocus(), nullptr) << "a hidden field gives the keys back to X-Plane";
    EXPECT_EQ(calls().front(), "f1 KeyLoseFocus 0");

    XPShowWidget(panel);
    XPSetKeyboardFocus(f2);
    calls().clear();
    XPDestroyWidget(panel, 1);
    EXPECT_EQ(XPGetWidgetWithFocus(), nullptr);
    EXPECT_EQ(calls(), (Strings{"f1 Destroy 1", "f2 KeyLoseFocus 0", "f2 Destroy 1", "panel Destroy 0",
                                "root LoseChild panel"}));
}

TEST_F(WidgetCoreTest, BadWidgetIdsAreReportedAndAnsweredNeutrally) {
    XPWidgetID w = custom("w", 0, 10, 10, 0);
    XPDestroyWidget(w, 1);
    XPWidgetID forged = reinterpret_cast<XPWidgetID>(0x1234);
    for (XPWidgetID bad : {w, forged, static_cast<XPWidgetID>(nullptr)}) {
        EXPECT_EQ(XPCountChildWidgets(bad), 0);
        EXPECT_EQ(XPSendMessageToWidget(bad, xpMsg_UserStart, xpMode_Direct, 0, 0), 0);
        int l = 5, t = 5;
        XPGetWidgetGeometry(bad, &l, &t, nullptr, nullptr);
        EXPECT_EQ(l + t, 0);
        int exists = 1;
        EXPECT_EQ(XPGetWidgetProperty(bad, 1, &exists), 0);
        EXPECT_EQ(exists, 0);
        char text[4] = "abc";
        EXPECT_EQ(XPGetWidgetDescriptor(bad, text, 4), 0);
        EXPECT_EQ(text[0], 0);
        XPDestroyWidget(bad, 1);
        XPSetWidgetDescriptor(bad, "x");
        EXPECT_EQ(XPIsWidgetVisible(bad), 0);
    }
    EXPECT_EQ(errorsMentioning("invalid widget id"), 3 * 8);
    EXPECT_EQ(XPCreateWidget(0, 10, 10, 0, 1, "", 0, nullptr, 99), nullptr);
    EXPECT_EQ(XPGetWidgetClassFunc(99), nullptr);
    EXPECT_EQ(errorsMentioning("unknown widget class 99"), 2);
    EXPECT_EQ(XPCreateWidget(0, 10, 10, 0, 1, "", 0, forged, xpWidgetClass_Caption), nullptr);
    EXPECT_NE(XPGetWidgetClassFunc(xpWidgetClass_Button), nullptr);
}

// Destroys its parent (and so itself) on the first user message, then keeps talking.
int destroysParent(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t) {
    logNonNoise(m, w, p1);
    if (m == xpMsg_UserStart) {
        XPDestroyWidget(XPGetParentWidget(w), 1);
        XPSendMessageToWidget(w, xpMsg_UserStart + 1, xpMode_Direct, 0, 0);
    }
    if (m == xpMsg_Destroy) XPDestroyWidget(w, 1);  // again, while dying
    return 0;
}
int echoesForever(XPWidgetMessage m, XPWidgetID w, intptr_t, intptr_t) {
    if (m == xpMsg_UserStart) XPSendMessageToWidget(w, xpMsg_UserStart, xpMode_Direct, 0, 0);
    return 0;
}

TEST_F(WidgetCoreTest, WidgetFunctionsThatDestroyOrRecurseDuringDispatchDoNotBreakTheHost) {
    XPWidgetID root = custom("root", 0, 500, 500, 0, nullptr, true);
    XPWidgetID box = custom("box", 10, 400, 300, 100, root);
    XPWidgetID killer = named(XPCreateCustomWidget(20, 300, 50, 200, 1, "", 0, box, destroysParent), "killer");
    XPAddWidgetCallback(killer, loggingFunc);
    calls().clear();
    EXPECT_EQ(XPSendMessageToWidget(killer, xpMsg_UserStart, xpMode_UpChain, 0, 0), 0);
    EXPECT_EQ(calls(), (Strings{"killer User 0", "killer User 0", "killer Destroy 1", "killer Destroy 1",
                                "box Destroy 0", "root LoseChild box"}))
        << "the chain ends with the destroyed widgets";
    EXPECT_EQ(errorsMentioning("XPSendMessageToWidget: invalid widget id"), 1);
    EXPECT_EQ(XPCountChildWidgets(root), 0);

    XPWidgetID echo = named(XPCreateCustomWidget(0, 10, 10, 0, 1, "", 0, nullptr, echoesForever), "echo");
    EXPECT_EQ(XPSendMessageToWidget(echo, xpMsg_UserStart, xpMode_Direct, 0, 0), 0);
    EXPECT_EQ(errorsMentioning("nested too deeply"), 1);
    driver::runFrames(2);  // the root still draws
}

int destroysRootWhileDrawing(XPWidgetMessage m, XPWidgetID w, intptr_t, intptr_t) {
    if (m == xpMsg_Draw) XPDestroyWidget(XPFindRootWidget(w), 1);
    return 0;
}

TEST_F(WidgetCoreTest, AWidgetThatDestroysItsWholeWindowWhilePaintingEndsThatFrameCleanly) {
    XPWidgetID root = custom("root", 0, 500, 500, 0, nullptr, true);
    custom("first", 10, 400, 100, 300, root);
    XPCreateCustomWidget(10, 200, 100, 100, 1, "bomb", 0, root, destroysRootWhileDrawing);
    custom("last", 200, 400, 300, 300, root);
    calls().clear();
    driver::runFrames(2);
    EXPECT_EQ(calls(), (Strings{"first Destroy 1", "last Destroy 1", "root Destroy 0"}))
        << "the painting stopped with the tree; nothing was drawn for the dead";
    EXPECT_EQ(errorsMentioning("invalid"), 0);
    EXPECT_EQ(drawn("window").size(), 0u);
}

}  // namespace
}  // namespace xpsim::test
