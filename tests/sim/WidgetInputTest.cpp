// The widget library on the host's windows, driven like a user: frames paint the
// trees, the mouse clicks, drags and wheels, the keyboard types into the focused field.
// The standard classes' own behaviour is checked through the messages they send.

#include "widget_test_util.h"

namespace xpsim::test {
namespace {

using Strings = std::vector<std::string>;

// A main window with the standard controls, all logging their messages.
class WidgetFormTest : public WidgetSimTest {
protected:
    void SetUp() override {
        WidgetSimTest::SetUp();
        form = standard("Form", xpWidgetClass_MainWindow, 100, 600, 500, 200, nullptr, true);
        XPSetWidgetProperty(form, xpProperty_MainWindowHasCloseBoxes, 1);
        ok = standard("OK", xpWidgetClass_Button, 120, 560, 200, 540, form);
        check = standard("Check", xpWidgetClass_Button, 120, 530, 200, 515, form);
        XPSetWidgetProperty(check, xpProperty_ButtonType, xpRadioButton);
        XPSetWidgetProperty(check, xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox);
        field = standard("Field", xpWidgetClass_TextField, 120, 500, 320, 480, form);
        XPSetWidgetDescriptor(field, "");
        bar = standard("Bar", xpWidgetClass_ScrollBar, 120, 470, 320, 454, form);
        driver::runFrames(1);
        calls().clear();
    }
    // Calls of one widget, without its property changes.
    static Strings messagesOf(const std::string& name) {
        Strings out;
        for (const std::string& c : callsOf(name + " "))
            if (c.find("PropertyChanged") == std::string::npos) out.push_back(c);
        return out;
    }

    XPWidgetID form = nullptr, ok = nullptr, check = nullptr, field = nullptr, bar = nullptr;
};

TEST_F(WidgetFormTest, FramesPaintEveryVisibleWidgetParentFirstInItsWindow) {
    driver::runFrames(1);
    Strings ui;
    for (const DrawItem& item : driver::drawList())
        if (item.kind == "window" || item.kind == "element" || item.kind == "track") ui.push_back(item.kind + " " + item.text);
    EXPECT_EQ(ui, (Strings{"window ", "window MainWindow", "element WindowCloseBox", "element WindowCloseBox",
                           "element PushButton", "element CheckBox", "element TextField", "track ScrollBar 0 100 0"}))
        << "the host's window, then the tree in child order";

    XPHideWidget(check);
    static int paints;
    paints = 0;
    XPAddWidgetCallback(ok, [](XPWidgetMessage m, XPWidgetID, intptr_t, intptr_t) {
        if (m == xpMsg_Paint) ++paints;
        return m == xpMsg_Paint ? 1 : 0;  // paints itself: no standard drawing
    });
    driver::runFrames(3);
    EXPECT_EQ(paints, 3);
    for (const DrawItem& e : drawn("element")) {
        EXPECT_NE(e.text, "PushButton") << "OK paints itself";
        EXPECT_NE(e.text, "CheckBox") << "Check is hidden";
    }
    EXPECT_EQ(drawn("element").size(), 3u);

    XPHideWidget(form);
    driver::runFrames(1);
    EXPECT_TRUE(drawn("element").empty());
}

TEST_F(WidgetFormTest, PushButtonHilitesWhileHeldAndReportsAReleaseOverItUpTheChain) {
    driver::mouseDown(150, 550);
    driver::runFrames(1);
    EXPECT_EQ(property(ok, xpProperty_Hilited), 1);
    EXPECT_EQ(drawn("element")[2].text, "PushButtonLit");
    driver::mouseUp(150, 550);
    driver::runFrames(1);
    EXPECT_EQ(property(ok, xpProperty_Hilited), 0);
    EXPECT_EQ(messagesOf("OK"), (Strings{"OK MouseDown ptr", "OK MouseUp ptr", "OK PushButtonPressed OK"}));
    EXPECT_EQ(messagesOf("Form"), (Strings{"Form PushButtonPressed OK"}));

    calls().clear();
    driver::mouseDown(150, 550);
    driver::mouseMove(450, 300);  // dragged off: the button still gets the drag and the up
    driver::mouseUp(450, 300);
    driver::runFrames(1);
    EXPECT_EQ(messagesOf("OK"), (Strings{"OK MouseDown ptr", "OK MouseDrag ptr", "OK MouseUp ptr"}));
    EXPECT_TRUE(messagesOf("Form").empty()) << "released elsewhere: not pressed";
}

// The SDK leaves radio groups to the plug-in: this window turns the others off.
int radioGroupWindow(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t p2) {
    if (m != xpMsg_ButtonStateChanged || p2 != 1) return 0;
    for (int i = 0; i < XPCountChildWidgets(w); ++i) {
        XPWidgetID b = XPGetNthChildWidget(w, i);
        if (b != reinterpret_cast<XPWidgetID>(p1)) XPSetWidgetProperty(b, xpProperty_ButtonState, 0);
    }
    return 1;
}

TEST_F(WidgetFormTest, CheckBoxesFlipAndRadioButtonsOnlyTurnOnWithTheNewStateInParam2) {
    click(125, 520);
    click(125, 520);
    EXPECT_EQ(property(check, xpProperty_ButtonState), 0);
    EXPECT_EQ(messagesOf("Form"), (Strings{"Form ButtonStateChanged Check", "Form ButtonStateChanged Check"}));
    static std::vector<intptr_t> states;
    states.clear();
    XPAddWidgetCallback(form, [](XPWidgetMessage m, XPWidgetID, intptr_t, intptr_t p2) {
        if (m == xpMsg_ButtonStateChanged) states.push_back(p2);
        return 0;
    });
    click(125, 520);
    EXPECT_EQ(states, (std::vector<intptr_t>{1}));
    XPSetWidgetProperty(check, xpProperty_ButtonState, 0);
    EXPECT_EQ(states.size(), 1u) << "program changes are not reported";

    XPWidgetID group = custom("Group", 330, 560, 480, 480, form);
    XPAddWidgetCallback(group, radioGroupWindow);
    XPWidgetID radios[3];
    for (int i = 0; i < 3; ++i) {
        std::string name = "R" + std::to_string(i);
        radios[i] = standard(name, xpWidgetClass_Button, 340, 550 - 20 * i, 470, 535 - 20 * i, group);
        XPSetWidgetProperty(radios[i], xpProperty_ButtonType, xpRadioButton);
        XPSetWidgetProperty(radios[i], xpProperty_ButtonBehavior, xpButtonBehaviorRadioButton);
    }
    calls().clear();
    click(345, 545);
    click(345, 525);
    click(345, 525);  // already on: no message
    EXPECT_EQ(property(radios[0], xpProperty_ButtonState), 0);
    EXPECT_EQ(property(radios[1], xpProperty_ButtonState), 1);
    EXPECT_EQ(property(radios[2], xpProperty_ButtonState), 0);
    EXPECT_EQ(callsOf("R0 ButtonStateChanged"), (Strings{"R0 ButtonStateChanged R0"}));
    EXPECT_EQ(callsOf("R1 ButtonStateChanged"), (Strings{"R1 ButtonStateChanged R1"}));
    EXPECT_TRUE(callsOf("Group").empty()) << "the group's handler took the messages before its logger";
}

TEST_F(WidgetFormTest, TextFieldTakesFocusOnClickAndEditsItsDescriptorWithTheKeys) {
    click(125, 490);
    EXPECT_EQ(XPGetWidgetWithFocus(), field);
    type("Helo");
    key(0, XPLM_VK_LEFT);
    type("l");
    EXPECT_EQ(descriptorOf(field), "Hello");
    EXPECT_EQ(property(field, xpProperty_EditFieldSelStart), 4);
    key(8, XPLM_VK_BACK);
    key(0, XPLM_VK_END);
    key(0, XPLM_VK_LEFT, xplm_DownFlag | xplm_ShiftFlag);
    key(0, XPLM_VK_LEFT, xplm_DownFlag | xplm_ShiftFlag);
    EXPECT_EQ(property(field, xpProperty_EditFieldSelStart), 2);
    EXPECT_EQ(property(field, xpProperty_EditFieldSelEnd), 4);
    type("y!");  // replaces the selection
    EXPECT_EQ(descriptorOf(field), "Hey!");
    key(0, XPLM_VK_HOME);
    key(0, XPLM_VK_DELETE);
    EXPECT_EQ(descriptorOf(field), "ey!");
    Strings changes;
    for (const std::string& c : callsOf("Form "))
        if (c.find("TextFieldChanged") != std::string::npos) changes.push_back(c);
    EXPECT_EQ(changes.size(), 9u) << "4 + 1 typed, 1 backspace, 2 typed, 1 delete; moves are no change";

    calls().clear();
    key('y', 0, xplm_UpFlag);  // key-ups change nothing
    key(XPLM_KEY_RETURN, XPLM_VK_RETURN);
    EXPECT_EQ(descriptorOf(field), "ey!");
    EXPECT_EQ(messagesOf("Form"), (Strings{"Form KeyPress ptr"})) << "return goes up to the window";

    XPSetWidgetProperty(field, xpProperty_MaxCharacters, 5);
    type("abcdef");
    EXPECT_EQ(descriptorOf(field), "abey!") << "typed at the caret, the sixth refused";
    XPSetWidgetProperty(field, xpProperty_PasswordMode, 1);
    driver::runFrames(1);
    bool masked = false;
    for (const DrawItem& s : drawn("string")) masked |= s.text == "*****";
    EXPECT_TRUE(masked);
    EXPECT_EQ(drawn("caret").size(), 1u);

    click(450, 300);  // the window body does not take the focus away
    EXPECT_EQ(XPGetWidgetWithFocus(), field);
    XPSetKeyboardFocus(nullptr);
    driver::runFrames(1);
    EXPECT_TRUE(drawn("caret").empty());
}

TEST_F(WidgetFormTest, TextFieldSelectsByDraggingTheMouseAndScrollsToKeepTheCaretInView) {
    XPSetWidgetDescriptor(field, "abcdefgh");
    // Characters are 8 pixels wide from 3 pixels inside the field's left edge.
    driver::mouseDown(123 + 8 * 2, 490);
    driver::mouseMove(123 + 8 * 5, 490);
    driver::runFrames(1);
    EXPECT_EQ(property(field, xpProperty_EditFieldSelDragStart), 2);
    driver::mouseUp(123 + 8 * 5, 490);
    driver::runFrames(1);
    EXPECT_EQ(property(field, xpProperty_EditFieldSelStart), 2);
    EXPECT_EQ(property(field, xpProperty_EditFieldSelEnd), 5);
    EXPECT_EQ(property(field, xpProperty_EditFieldSelDragStart), -1);
    XPSetWidgetDescriptor(field, "ab");
    EXPECT_EQ(property(field, xpProperty_EditFieldSelEnd), 2) << "clamped to the new text";

    XPSetWidgetDescriptor(field, "");
    XPSetWidgetGeometry(field, 120, 500, 180, 480);  // room for 6 characters of 8 pixels
    XPSetKeyboardFocus(field);
    type("abcdefghij");
    EXPECT_EQ(property(field, xpProperty_ScrollPosition), 4);
    bool tail = false;
    for (const DrawItem& s : drawn("string")) tail |= s.text == "efghij";
    EXPECT_TRUE(tail);
    key(0, XPLM_VK_HOME);
    EXPECT_EQ(property(field, xpProperty_ScrollPosition), 0);
    EXPECT_EQ(drawn("caret").at(0).x, 123);
}

TEST_F(WidgetFormTest, ScrollBarStepsPagesAndDragsItsThumbReportingEachChange) {
    // 200 long: 16-pixel arrows at both ends, a 16-pixel thumb, 152 pixels of travel.
    int vertical, down, downPage, thumb, upPage, up;
    XPGetTrackMetrics(120, 454, 320, 470, 0, 100, 0, xpTrack_ScrollBar, &vertical, &down, &downPage, &thumb,
                      &upPage, &up);
    EXPECT_EQ((std::vector<int>{vertical, down, downPage, thumb, upPage, up}),
              (std::vector<int>{0, 16, 0, 16, 152, 16}));
    click(315, 462);  // up arrow
    EXPECT_EQ(property(bar, xpProperty_ScrollBarSliderPosition), 1);
    click(250, 462);  // page up
    EXPECT_EQ(property(bar, xpProperty_ScrollBarSliderPosition), 11);
    click(125, 462);  // down arrow
    EXPECT_EQ(property(bar, xpProperty_ScrollBarSliderPosition), 10);

    // Thumb at 16 + 152 * 0.1 = 31.2 -> 31..47; grab it at 40 and drag by 76 pixels.
    calls().clear();
    driver::mouseDown(120 + 40, 462);
    driver::mouseMove(120 + 40 + 38, 462);
    driver::mouseMove(120 + 40 + 76, 462);
    driver::mouseMove(1000, 462);  // far past the end: clamped to the maximum
    driver::mouseUp(1000, 462);
    driver::runFrames(1);
    EXPECT_EQ(property(bar, xpProperty_ScrollBarSliderPosition), 100);
    EXPECT_EQ(messagesOf("Form"), (Strings{"Form ScrollBarSliderPositionChanged Bar",
                                           "Form ScrollBarSliderPositionChanged Bar",
                                           "Form ScrollBarSliderPositionChanged Bar"}));

    XPSetWidgetProperty(bar, xpProperty_ScrollBarSliderPosition, 50);
    driver::mouseWheel(200, 462, 0, -3);
    driver::runFrames(1);
    EXPECT_EQ(property(bar, xpProperty_ScrollBarSliderPosition), 47);
    XPSetWidgetProperty(bar, xpProperty_Enabled, 0);
    click(315, 462);
    EXPECT_EQ(property(bar, xpProperty_ScrollBarSliderPosition), 47) << "disabled";
}

TEST_F(WidgetFormTest, MainWindowDragsWithItsChildrenByTheTitleBarAndReportsCloseBoxes) {
    driver::mouseDown(300, 595);
    driver::mouseMove(320, 585);
    driver::mouseUp(320, 585);
    driver::runFrames(1);
    int l, t;
    XPGetWidgetGeometry(form, &l, &t, nullptr, nullptr);
    EXPECT_EQ(l, 120);
    EXPECT_EQ(t, 590);
    XPGetWidgetGeometry(field, &l, &t, nullptr, nullptr);
    EXPECT_EQ(l, 140) << "children move along";
    EXPECT_EQ(t, 490);
    EXPECT_EQ(property(form, xpProperty_Dragging), 0);
    EXPECT_EQ(messagesOf("Field"), (Strings{"Field Reshape Field", "Field ExposedChanged 0"}));
    driver::runFrames(1);
    DrawItem window = drawn("window").at(0);  // the host's own record of the root's window
    EXPECT_EQ((std::vector<int>{window.x, window.y, window.right, window.bottom}),
              (std::vector<int>{120, 590, 520, 190}));

    calls().clear();
    click(120 + 3, 590 - 3);  // the left close box
    click(500 + 20 - 3, 590 - 3);  // and the right one
    EXPECT_EQ(messagesOf("Form"), (Strings{"Form MouseDown ptr", "Form MouseUp ptr", "Form CloseButtonPushed Form",
                                           "Form MouseDown ptr", "Form MouseUp ptr", "Form CloseButtonPushed Form"}));
    EXPECT_EQ(XPIsWidgetVisible(form), 1) << "closing is the plug-in's business";
}

TEST_F(WidgetFormTest, ClickingABackWindowBringsItToFrontAndKeysFollowTheFocusedWindow) {
    XPWidgetID other = standard("Other", xpWidgetClass_MainWindow, 400, 650, 700, 300, nullptr, true);
    XPWidgetID otherField = standard("OtherField", xpWidgetClass_TextField, 420, 600, 680, 580, other);
    XPSetWidgetDescriptor(otherField, "");
    EXPECT_EQ(XPIsWidgetInFront(other), 1);
    EXPECT_EQ(XPIsWidgetInFront(field), 0);
    click(150, 300);  // the form's body
    EXPECT_EQ(XPIsWidgetInFront(form), 1);
    EXPECT_EQ(XPIsWidgetInFront(otherField), 0);

    XPSetKeyboardFocus(field);
    type("a");
    XPSetKeyboardFocus(otherField);
    type("b");
    EXPECT_EQ(descriptorOf(field), "a");
    EXPECT_EQ(descriptorOf(otherField), "b");

    XPBringRootWidgetToFront(otherField);
    EXPECT_EQ(XPIsWidgetInFront(other), 1);
}

TEST_F(WidgetFormTest, DestroyingTheRootRemovesItsWindowAndAClickThatDestroysIsSafe) {
    static XPWidgetID doomed;
    doomed = form;
    XPAddWidgetCallback(form, [](XPWidgetMessage m, XPWidgetID, intptr_t, intptr_t) {
        if (m == xpMsg_PushButtonPressed) XPDestroyWidget(doomed, 1);
        return 0;
    });
    click(150, 550);
    EXPECT_EQ(XPCountChildWidgets(form), 0);
    EXPECT_EQ(errorsMentioning("XPCountChildWidgets: invalid widget id"), 1);
    driver::runFrames(1);
    for (const DrawItem& w : drawn("window")) EXPECT_NE(w.text, "MainWindow");
    EXPECT_EQ(errorsMentioning("invalid window"), 0);
}

TEST_F(WidgetFormTest, CursorAndWheelGoUpTheChainFromTheWidgetUnderTheMouse) {
    XPAddWidgetCallback(form, [](XPWidgetMessage m, XPWidgetID, intptr_t, intptr_t p2) {
        if (m != xpMsg_CursorAdjust) return 0;
        *reinterpret_cast<XPLMCursorStatus*>(p2) = xplm_CursorArrow;
        return 1;
    });
    driver::mouseMove(150, 550);
    driver::runFrames(1);
    EXPECT_EQ(driver::cursorStatus(), xplm_CursorArrow);
    driver::mouseMove(50, 50);
    driver::runFrames(1);
    EXPECT_EQ(driver::cursorStatus(), xplm_CursorDefault);

    calls().clear();
    driver::mouseWheel(150, 550, 0, 2);  // over the button: nobody takes it
    driver::runFrames(1);
    EXPECT_EQ(callsOf("OK MouseWheel").size(), 1u);
    EXPECT_EQ(callsOf("Form MouseWheel").size(), 1u);
}

// A custom widget that is a push button with a logging front: the SDK's way to subclass.
int chainsToButton(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t p2) {
    logNonNoise(m, w, p1);
    return XPGetWidgetClassFunc(xpWidgetClass_Button)(m, w, p1, p2);
}

TEST_F(WidgetFormTest, CustomWidgetsChainToAClassFunctionAndIconsAndVerticalBarsBehave) {
    named(XPCreateCustomWidget(330, 560, 400, 540, 1, "Mine", 0, form, chainsToButton), "Mine");
    XPWidgetID icon = XPCreateWidget(410, 560, 442, 528, 1, "", 0, form, xpWidgetClass_GeneralGraphics);
    XPSetWidgetProperty(icon, xpProperty_GeneralGraphicsType, xpVOR);
    XPWidgetID vbar = XPCreateWidget(470, 500, 486, 300, 1, "", 0, form, xpWidgetClass_ScrollBar);
    XPSetWidgetProperty(vbar, xpProperty_ScrollBarSliderPosition, 50);
    calls().clear();
    click(350, 550);
    EXPECT_EQ(messagesOf("Mine"), (Strings{"Mine MouseDown ptr", "Mine MouseUp ptr", "Mine PushButtonPressed Mine"}));
    EXPECT_EQ(messagesOf("Form"), (Strings{"Form PushButtonPressed Mine"}));

    driver::runFrames(1);
    bool vor = false;
    for (const DrawItem& e : drawn("element")) vor |= e.text == "VOR" && e.x == 410 && e.bottom == 528;
    EXPECT_TRUE(vor);

    // Vertical: the minimum is at the bottom, so the top arrow and the track above the
    // thumb raise the value.
    click(478, 495);
    EXPECT_EQ(property(vbar, xpProperty_ScrollBarSliderPosition), 51);
    click(478, 305);
    EXPECT_EQ(property(vbar, xpProperty_ScrollBarSliderPosition), 50);
    click(478, 470);
    EXPECT_EQ(property(vbar, xpProperty_ScrollBarSliderPosition), 60);
}

TEST_F(WidgetFormTest, KeysNobodyInTheChainTakesGoToHotKeysAndAnotherWindowTakingTheKeyboardTakesItFromTheWidget) {
    static int fired;
    fired = 0;
    XPLMRegisterHotKey(XPLM_VK_F5, xplm_DownFlag, "test", [](void*) { ++fired; }, nullptr);
    XPLMRegisterHotKey(XPLM_VK_A, xplm_DownFlag, "test", [](void*) { ++fired; }, nullptr);
    XPSetKeyboardFocus(field);
    key(0, XPLM_VK_F5);
    EXPECT_EQ(fired, 1);
    key('a', XPLM_VK_A);
    EXPECT_EQ(fired, 1) << "typed into the field";
    EXPECT_EQ(descriptorOf(field), "a");

    XPLMWindowID plain = XPLMCreateWindow(0, 100, 50, 0, 1, nullptr, nullptr, nullptr, nullptr);
    calls().clear();
    XPLMTakeKeyboardFocus(plain);
    EXPECT_EQ(XPGetWidgetWithFocus(), nullptr);
    EXPECT_EQ(messagesOf("Field"), (Strings{"Field KeyLoseFocus 1"}));
}

TEST_F(WidgetFormTest, TheClipPropertyBracketsTheWidgetsDrawingWithItsExposedBox) {
    XPSetWidgetGeometry(field, 120, 500, 600, 480);  // sticks out of the form on the right
    XPSetWidgetProperty(field, xpProperty_Clip, 1);
    driver::runFrames(1);
    Strings kinds;
    for (const DrawItem& i : driver::drawList()) {
        if (i.kind == "clip") {
            EXPECT_EQ((std::vector<int>{i.x, i.y, i.right, i.bottom}), (std::vector<int>{120, 500, 500, 480}));
        }
        if (i.kind == "clip" || i.kind == "unclip" || i.kind == "element") kinds.push_back(i.kind + " " + i.text);
    }
    EXPECT_EQ(kinds, (Strings{"element WindowCloseBox", "element WindowCloseBox", "element PushButton",
                              "element CheckBox", "clip ", "element TextField", "unclip "}));
}

}  // namespace
}  // namespace xpsim::test
