// XPLMDisplay input: the driver's mouse and key events, queued and delivered at the
// start of the next frame; mouse capture, wheel, cursor and the routing of a key
// through the sniffers, the focused window and the hot keys.

#include "display_state.h"

namespace xpsim::display {
namespace {

struct InputEvent {
    enum Type { Move, Down, Up, Wheel, Key } type;
    int x = 0, y = 0;
    int wheel = 0, clicks = 0;
    char key = 0;
    XPLMKeyFlags flags = 0;
    char virtualKey = 0;
};

// A bound, so a runaway driver cannot grow it without limit; far above any scenario.
constexpr size_t kMaxQueuedEvents = 65536;
std::vector<InputEvent> gQueue;

void enqueue(const InputEvent& event) {
    if (gQueue.size() >= kMaxQueuedEvents) {
        Host::get().log("xpsim: input queue full, event dropped");
        return;
    }
    gQueue.push_back(event);
}

void setMouse(int x, int y) {
    State& s = state();
    s.mouseKnown = true;
    s.mouseX = x;
    s.mouseY = y;
}

// Visible windows of enabled plug-ins under (x, y), front to back.
std::vector<void*> windowsUnder(int x, int y) {
    std::vector<void*> hits;
    const std::vector<void*>& zOrder = state().windows.order();
    for (auto it = zOrder.rbegin(); it != zOrder.rend(); ++it) {
        const Window* w = state().windows.get(*it);
        if (w->visible && w->contains(x, y) && isPluginEnabled(w->plugin)) hits.push_back(*it);
    }
    return hits;
}

// The window, if it may still be called: a callback earlier in the same dispatch may
// have destroyed it or disabled its plug-in.
const Window* callableWindow(XPLMWindowID id) {
    const Window* w = state().windows.get(id);
    return w && isPluginEnabled(w->plugin) ? w : nullptr;
}

// Sends one mouse status to a window; the answer of a window without a click callback
// is 1, since it still covers what is below it.
int callClick(XPLMWindowID id, int x, int y, XPLMMouseStatus status) {
    const Window* w = callableWindow(id);
    if (!w) return 0;
    if (!w->click) return 1;
    Window call = *w;
    CallingPlugin scope(call.plugin);
    return call.click(id, x, y, status, call.refcon);
}

void mouseUp(int x, int y) {
    State& s = state();
    setMouse(x, y);
    if (!s.mouseButtonDown) return;
    s.mouseButtonDown = false;
    XPLMWindowID id = s.capture;
    s.capture = nullptr;
    if (id) callClick(id, x, y, xplm_MouseUp);
}

void mouseDown(int x, int y) {
    State& s = state();
    // A second down without an up (the driver's mistake): finish the first click, so
    // the window that has it still gets exactly one up.
    if (s.mouseButtonDown) mouseUp(x, y);
    setMouse(x, y);
    s.mouseButtonDown = true;
    for (void* id : windowsUnder(x, y)) {
        // 0 passes the click through to the window below.
        if (callClick(id, x, y, xplm_MouseDown)) {
            // The window may have been destroyed by its own handler.
            if (s.windows.get(id)) s.capture = id;
            return;
        }
    }
}

void mouseMove(int x, int y) {
    State& s = state();
    setMouse(x, y);
    // Drags follow movement, so the same input always gives the same calls.
    if (s.mouseButtonDown && s.capture) callClick(s.capture, x, y, xplm_MouseDrag);
}

void mouseWheel(int x, int y, int wheel, int clicks) {
    setMouse(x, y);
    for (void* id : windowsUnder(x, y)) {
        const Window* w = callableWindow(id);
        if (!w || !w->wheel) continue;
        Window call = *w;
        CallingPlugin scope(call.plugin);
        if (call.wheel(id, x, y, wheel, clicks, call.refcon)) return;
    }
}

// False when a sniffer consumed the key.
bool callSniffers(bool beforeWindows, char key, XPLMKeyFlags flags, char virtualKey) {
    std::vector<void*> handles = state().keySniffers.order();
    for (void* h : handles) {
        const KeySniffer* ks = state().keySniffers.get(h);
        if (!ks || ks->beforeWindows != beforeWindows || !isPluginEnabled(ks->plugin)) continue;
        KeySniffer call = *ks;
        CallingPlugin scope(call.plugin);
        if (call.callback(key, flags, virtualKey, call.refcon) == 0) return false;
    }
    return true;
}

// True when the focused window took the key.
bool callFocusedWindow(char key, XPLMKeyFlags flags, char virtualKey) {
    XPLMWindowID id = state().focus;
    const Window* w = callableWindow(id);
    if (!w) return false;
    if (w->key) {
        Window call = *w;
        CallingPlugin scope(call.plugin);
        call.key(id, key, flags, virtualKey, call.refcon, 0);
    }
    return true;
}

void keyPress(char key, XPLMKeyFlags flags, char virtualKey) {
    if (!callSniffers(true, key, flags, virtualKey)) return;
    if (callFocusedWindow(key, flags, virtualKey)) return;
    if (!callSniffers(false, key, flags, virtualKey)) return;
    callHotKeys(virtualKey, flags);
}

// Asks the windows under the mouse, front to back, until one sets the cursor.
void updateCursor() {
    State& s = state();
    int x, y;
    XPLMGetMouseLocation(&x, &y);
    s.cursor = xplm_CursorDefault;
    for (void* id : windowsUnder(x, y)) {
        const Window* w = callableWindow(id);
        if (!w || !w->cursor) continue;
        Window call = *w;
        CallingPlugin scope(call.plugin);
        XPLMCursorStatus status = call.cursor(id, x, y, call.refcon);
        if (status != xplm_CursorDefault) {
            s.cursor = status;
            return;
        }
    }
}

}  // namespace

void resetInput() {
    gQueue.clear();
    State& s = state();
    s.mouseKnown = false;
    s.mouseX = s.mouseY = 0;
    s.mouseButtonDown = false;
}

}  // namespace xpsim::display

namespace xpsim {

void inputFrame() {
    using namespace display;
    std::vector<InputEvent> events;
    events.swap(gQueue);
    for (const InputEvent& e : events) {
        switch (e.type) {
            case InputEvent::Move: mouseMove(e.x, e.y); break;
            case InputEvent::Down: mouseDown(e.x, e.y); break;
            case InputEvent::Up: mouseUp(e.x, e.y); break;
            case InputEvent::Wheel: mouseWheel(e.x, e.y, e.wheel, e.clicks); break;
            case InputEvent::Key: keyPress(e.key, e.flags, e.virtualKey); break;
        }
    }
    updateCursor();
}

namespace driver {

using display::InputEvent;

void mouseMove(int x, int y) { display::enqueue(InputEvent{InputEvent::Move, x, y}); }
void mouseDown(int x, int y) { display::enqueue(InputEvent{InputEvent::Down, x, y}); }
void mouseUp(int x, int y) { display::enqueue(InputEvent{InputEvent::Up, x, y}); }
void mouseWheel(int x, int y, int wheel, int clicks) {
    display::enqueue(InputEvent{InputEvent::Wheel, x, y, wheel, clicks});
}
void keyPress(char key, int flags, char virtualKey) {
    InputEvent e{InputEvent::Key};
    e.key = key;
    e.flags = flags;
    e.virtualKey = virtualKey;
    display::enqueue(e);
}
int cursorStatus() { return display::state().cursor; }

}  // namespace driver
}  // namespace xpsim
