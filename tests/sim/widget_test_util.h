// Helpers for the widget tests: a widget function that logs every message it gets as
// "<name> <message> <p1>", named widgets, and short names for the messages.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "display_test_util.h"
#include "plugins/widget_messages.h"

namespace xpsim::test {

inline std::map<XPWidgetID, std::string>& widgetNames() {
    static std::map<XPWidgetID, std::string> names;
    return names;
}

// Named widgets by their name; the others (e.g. during their own creation) by their
// descriptor, which the test helpers set to the name.
inline std::string nameOf(XPWidgetID id) {
    if (!id) return "0";
    auto it = widgetNames().find(id);
    if (it != widgetNames().end()) return it->second;
    char buffer[64] = {};
    XPGetWidgetDescriptor(id, buffer, sizeof buffer - 1);
    return buffer;
}

// Messages whose p1 names a widget are logged with its name, mouse and key messages
// as "ptr", the rest with the number.
inline std::string describe(XPWidgetMessage m, intptr_t p1) {
    if (widgetMessageNamesWidget(m)) return nameOf(reinterpret_cast<XPWidgetID>(p1));
    switch (m) {
    case xpMsg_KeyPress: case xpMsg_MouseDown: case xpMsg_MouseDrag: case xpMsg_MouseUp:
    case xpMsg_MouseWheel: case xpMsg_CursorAdjust:
        return "ptr";
    default:
        return std::to_string(p1);
    }
}

// Messages the tests usually do not care about, so logs stay readable.
inline bool isNoise(XPWidgetMessage m) {
    return m == xpMsg_Paint || m == xpMsg_Draw || m == xpMsg_CursorAdjust;
}

inline int logNonNoise(XPWidgetMessage m, XPWidgetID w, intptr_t p1) {
    if (!isNoise(m)) record(nameOf(w) + " " + widgetMessageName(m) + " " + describe(m, p1));
    return 0;
}

// Logs and passes everything on.
inline int loggingFunc(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t) { return logNonNoise(m, w, p1); }

inline XPWidgetID named(XPWidgetID id, const std::string& name) {
    widgetNames()[id] = name;
    return id;
}

// Calls logged so far that start with `prefix` (e.g. a widget's name).
inline std::vector<std::string> callsOf(const std::string& prefix) {
    std::vector<std::string> out;
    for (const std::string& c : calls())
        if (c.compare(0, prefix.size(), prefix) == 0) out.push_back(c);
    return out;
}

class WidgetSimTest : public DisplaySimTest {
protected:
    void SetUp() override {
        DisplaySimTest::SetUp();
        widgetNames().clear();
        startSimWithScreen(1024, 768);
    }

    // A custom widget that logs its messages.
    XPWidgetID custom(const std::string& name, int l, int t, int r, int b, XPWidgetID parent = nullptr,
                      bool root = false, bool visible = true) {
        return named(XPCreateCustomWidget(l, t, r, b, visible, name.c_str(), root, parent, loggingFunc), name);
    }
    // A standard widget with a logging callback on top.
    XPWidgetID standard(const std::string& name, XPWidgetClass cls, int l, int t, int r, int b,
                        XPWidgetID parent = nullptr, bool root = false) {
        XPWidgetID id = named(XPCreateWidget(l, t, r, b, 1, name.c_str(), root, parent, cls), name);
        XPAddWidgetCallback(id, loggingFunc);
        return id;
    }
    static std::string descriptorOf(XPWidgetID id) {
        char buffer[256] = {};
        XPGetWidgetDescriptor(id, buffer, sizeof buffer - 1);
        return buffer;
    }
    static intptr_t property(XPWidgetID id, int p) { return XPGetWidgetProperty(id, p, nullptr); }
    // A whole click: down, (optional) moves, up, each delivered in its own frame.
    static void click(int x, int y) {
        driver::mouseDown(x, y);
        driver::runFrames(1);
        driver::mouseUp(x, y);
        driver::runFrames(1);
    }
    static void type(const std::string& text) {
        for (char c : text) driver::keyPress(c, xplm_DownFlag, 0);
        driver::runFrames(1);
    }
    static void key(char k, char vkey, int flags = xplm_DownFlag) {
        driver::keyPress(k, flags, vkey);
        driver::runFrames(1);
    }
};

}  // namespace xpsim::test
