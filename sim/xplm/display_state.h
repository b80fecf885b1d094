// The display area's world model, shared by its files (Display.cpp, display_*.cpp):
// draw callbacks, key sniffers, windows in z-order, hot keys, keyboard focus and mouse.
// Not for other areas; they use the SDK functions like a plug-in would.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "handles.h"
#include "host.h"

namespace xpsim::display {

// A HandleTable that also remembers registration order, which is the order the
// simulator calls things in (draw callbacks, sniffers) or lists them (hot keys).
template <class T>
class RegistrationList {
public:
    explicit RegistrationList(HandleKind kind) : table_(kind) {}

    void* add(T value) {
        void* h = table_.add(std::move(value));
        order_.push_back(h);
        return h;
    }
    bool remove(const void* handle) {
        if (!table_.remove(handle)) return false;
        order_.erase(std::find(order_.begin(), order_.end(), handle));
        return true;
    }
    T* get(const void* handle) { return table_.get(handle); }
    // Moves a live entry to the end of the order (a window to the front).
    void moveToEnd(const void* handle) {
        auto it = std::find(order_.begin(), order_.end(), handle);
        if (it != order_.end()) std::rotate(it, it + 1, order_.end());
    }
    // Handles in registration order. Dispatch iterates a copy and re-validates each
    // handle, because a callback may register or remove entries meanwhile.
    const std::vector<void*>& order() const { return order_; }
    size_t size() const { return order_.size(); }
    void clear() {
        table_.clear();
        order_.clear();
    }
    template <class Pred>
    void removeIf(Pred pred) {
        for (void* h : std::vector<void*>(order_)) {
            if (pred(*table_.get(h))) remove(h);
        }
    }

private:
    HandleTable<T> table_;
    std::vector<void*> order_;
};

struct DrawCallback {
    int plugin;
    XPLMDrawCallback_f callback;
    XPLMDrawingPhase phase;
    bool before;
    void* refcon;
};

struct KeySniffer {
    int plugin;
    XPLMKeySniffer_f callback;
    bool beforeWindows;
    void* refcon;
};

struct Window {
    int plugin;
    int left, top, right, bottom;
    bool visible;
    XPLMDrawWindow_f draw;
    XPLMHandleKey_f key;
    XPLMHandleMouseClick_f click;
    XPLMHandleCursor_f cursor;
    XPLMHandleMouseWheel_f wheel;
    void* refcon;

    // Edges inclusive: a click on the border belongs to the window.
    bool contains(int x, int y) const { return x >= left && x <= right && y >= bottom && y <= top; }
};

struct HotKey {
    int plugin;
    char virtualKey;
    XPLMKeyFlags flags;
    std::string description;
    XPLMHotKey_f callback;
    void* refcon;
};

struct State {
    RegistrationList<DrawCallback> drawCallbacks{HandleKind::DrawCallback};
    RegistrationList<KeySniffer> keySniffers{HandleKind::KeySniffer};
    // Windows; order() is the z-order, back to front (the last one is in front).
    RegistrationList<Window> windows{HandleKind::Window};
    RegistrationList<HotKey> hotKeys{HandleKind::HotKey};

    XPLMWindowID focus = nullptr;    // window with keyboard focus; null = X-Plane has the keys
    XPLMWindowID capture = nullptr;  // window that took the mouse down, until the up
    bool mouseKnown = false;         // false until the first mouse event: centre of the screen
    int mouseX = 0, mouseY = 0;
    bool mouseButtonDown = false;
    XPLMCursorStatus cursor = xplm_CursorDefault;
};

State& state();

// Looks a window up for an SDK function; reports an invalid handle as the calling
// plug-in's error. Null when invalid.
Window* findWindow(XPLMWindowID id, const char* function);

// Moves the window to the front of the z-order.
void raiseWindow(XPLMWindowID id);
// Drops a window without calling it (destroy, plug-in unloaded).
void removeWindow(XPLMWindowID id);
// Draws the visible windows back to front (the window phase of drawFrame).
void drawWindows();

// Calls every hot key the key combination matches, the last stop of a key press
// (display_hotkeys.cpp). True when one fired.
bool callHotKeys(char virtualKey, XPLMKeyFlags flags);

// Forgets queued events and the mouse (display_input.cpp).
void resetInput();

}  // namespace xpsim::display
