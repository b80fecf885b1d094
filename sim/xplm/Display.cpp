// XPLMDisplay: draw callbacks and the order of the draw phases, screen queries, and
// what the display area forgets when a plug-in goes away. Windows, input and hot keys
// live in display_windows.cpp, display_input.cpp and display_hotkeys.cpp.

#include "display_state.h"
#include "graphics_internal.h"

namespace xpsim {
namespace display {

State& state() {
    static State s;
    return s;
}

namespace {

struct Phase {
    XPLMDrawingPhase phase;
    const char* name;
};

// The phases the simulator draws every frame, in its order: the 3-D scene, then the
// 2-D cockpit (plug-in windows are drawn in the window phase).
constexpr Phase kFramePhases[] = {
    {xplm_Phase_FirstScene, "FirstScene"},     {xplm_Phase_Terrain, "Terrain"},
    {xplm_Phase_Airports, "Airports"},         {xplm_Phase_Vectors, "Vectors"},
    {xplm_Phase_Objects, "Objects"},           {xplm_Phase_Airplanes, "Airplanes"},
    {xplm_Phase_LastScene, "LastScene"},       {xplm_Phase_FirstCockpit, "FirstCockpit"},
    {xplm_Phase_Panel, "Panel"},               {xplm_Phase_Gauges, "Gauges"},
    {xplm_Phase_Window, "Window"},             {xplm_Phase_LastCockpit, "LastCockpit"},
};

// Local map phases exist from SDK 2.00 on, but are drawn only while the local map is
// open, which it never is in xpsim: registering succeeds, the callbacks are not called.
bool isLocalMapPhase(XPLMDrawingPhase phase) {
    return phase == xplm_Phase_LocalMap3D || phase == xplm_Phase_LocalMap2D || phase == xplm_Phase_LocalMapProfile;
}

bool phaseExists(XPLMDrawingPhase phase) {
    for (const Phase& p : kFramePhases) {
        if (p.phase == phase) return true;
    }
    return isLocalMapPhase(phase) && Host::get().options.sdk != "1.02";
}

// Calls the callbacks registered for one side of a phase, in registration order.
// Returns false when a before-callback asked to suppress the simulator's drawing;
// every callback is still called, so no plug-in misses its share of the frame.
bool callDrawCallbacks(XPLMDrawingPhase phase, bool before) {
    bool draw = true;
    std::vector<void*> handles = state().drawCallbacks.order();
    for (void* h : handles) {
        DrawCallback* cb = state().drawCallbacks.get(h);
        if (!cb || cb->phase != phase || cb->before != before || !isPluginEnabled(cb->plugin)) continue;
        DrawCallback call = *cb;  // the callback may unregister itself
        CallingPlugin scope(call.plugin);
        if (call.callback(phase, before ? 1 : 0, call.refcon) == 0 && before) draw = false;
    }
    return draw;
}

std::vector<void*>::const_iterator findDrawCallback(XPLMDrawCallback_f callback, XPLMDrawingPhase phase,
                                                    int before, void* refcon) {
    RegistrationList<DrawCallback>& list = state().drawCallbacks;
    int plugin = Host::get().currentPlugin;
    return std::find_if(list.order().begin(), list.order().end(), [&](void* h) {
        const DrawCallback* cb = list.get(h);
        return cb->plugin == plugin && cb->callback == callback && cb->phase == phase &&
               cb->before == (before != 0) && cb->refcon == refcon;
    });
}

std::vector<void*>::const_iterator findKeySniffer(XPLMKeySniffer_f callback, int beforeWindows, void* refcon) {
    RegistrationList<KeySniffer>& list = state().keySniffers;
    int plugin = Host::get().currentPlugin;
    return std::find_if(list.order().begin(), list.order().end(), [&](void* h) {
        const KeySniffer* ks = list.get(h);
        return ks->plugin == plugin && ks->callback == callback && ks->beforeWindows == (beforeWindows != 0) &&
               ks->refcon == refcon;
    });
}

}  // namespace
}  // namespace display

void drawFrame() {
    using namespace display;
    for (const Phase& p : kFramePhases) {
        beginDrawPhase(p.phase);
        if (callDrawCallbacks(p.phase, true)) {
            // The simulator's own drawing of the phase; plug-in windows are part of it.
            DrawItem item;
            item.kind = "phase";
            item.text = p.name;
            item.style = p.phase;
            recordDraw(item);
            if (p.phase == xplm_Phase_Window) drawWindows();
        }
        callDrawCallbacks(p.phase, false);
    }
    finishDrawFrame();
}

void forgetPluginDisplay(int plugin) {
    display::State& s = display::state();
    auto owned = [plugin](const auto& entry) { return entry.plugin == plugin; };
    s.drawCallbacks.removeIf(owned);
    s.keySniffers.removeIf(owned);
    s.hotKeys.removeIf(owned);
    for (void* h : std::vector<void*>(s.windows.order())) {
        if (s.windows.get(h)->plugin == plugin) display::removeWindow(h);
    }
}

void resetDisplay() {
    display::State& s = display::state();
    s.drawCallbacks.clear();
    s.keySniffers.clear();
    s.windows.clear();
    s.hotKeys.clear();
    s.focus = nullptr;
    s.capture = nullptr;
    s.cursor = xplm_CursorDefault;
    display::resetInput();
}

}  // namespace xpsim

using namespace xpsim;
using namespace xpsim::display;

XPLM_API int XPLMRegisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                                      void* inRefcon) {
    if (!inCallback) {
        Host::get().reportError("XPLMRegisterDrawCallback: the callback is NULL");
        return 0;
    }
    if (!phaseExists(inPhase)) return 0;
    // The SDK asks for a distinct refcon per registration of one function but does not
    // say what a duplicate does; we keep it as a second registration, which one
    // unregister then removes.
    state().drawCallbacks.add(
        DrawCallback{Host::get().currentPlugin, inCallback, inPhase, inWantsBefore != 0, inRefcon});
    return 1;
}

XPLM_API int XPLMUnregisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                                        void* inRefcon) {
    auto it = findDrawCallback(inCallback, inPhase, inWantsBefore, inRefcon);
    if (it == state().drawCallbacks.order().end()) return 0;
    state().drawCallbacks.remove(*it);
    return 1;
}

XPLM_API int XPLMRegisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void* inRefcon) {
    if (!inCallback) {
        Host::get().reportError("XPLMRegisterKeySniffer: the callback is NULL");
        return 0;
    }
    state().keySniffers.add(KeySniffer{Host::get().currentPlugin, inCallback, inBeforeWindows != 0, inRefcon});
    return 1;
}

XPLM_API int XPLMUnregisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void* inRefcon) {
    auto it = findKeySniffer(inCallback, inBeforeWindows, inRefcon);
    if (it == state().keySniffers.order().end()) return 0;
    state().keySniffers.remove(*it);
    return 1;
}

XPLM_API void XPLMGetScreenSize(int* outWidth, int* outHeight) {
    if (outWidth) *outWidth = Host::get().options.screenWidth;
    if (outHeight) *outHeight = Host::get().options.screenHeight;
}

XPLM_API void XPLMGetMouseLocation(int* outX, int* outY) {
    const State& s = state();
    // The SDK does not say where the mouse is before it first moves; we put it in the
    // middle of the screen.
    int x = s.mouseKnown ? s.mouseX : Host::get().options.screenWidth / 2;
    int y = s.mouseKnown ? s.mouseY : Host::get().options.screenHeight / 2;
    if (outX) *outX = x;
    if (outY) *outY = y;
}
