// XPLMDisplay hot keys: registration, the list of all plug-ins' hot keys, remapping,
// and calling the ones whose key combination was pressed.

#include <cstring>

#include "display_state.h"

namespace xpsim::display {

namespace {

constexpr XPLMKeyFlags kModifiers = xplm_ShiftFlag | xplm_OptionAltFlag | xplm_ControlFlag;
constexpr XPLMKeyFlags kUpDown = xplm_DownFlag | xplm_UpFlag;

// Modifiers must match exactly. The SDK does not say whether a hot key fires on the
// key going down only; we fire it on the up/down flags it was registered with, and
// on key-down when it names neither.
bool matches(const HotKey& hk, char virtualKey, XPLMKeyFlags flags) {
    if (static_cast<unsigned char>(hk.virtualKey) != static_cast<unsigned char>(virtualKey)) return false;
    if ((hk.flags & kModifiers) != (flags & kModifiers)) return false;
    XPLMKeyFlags wanted = (hk.flags & kUpDown) ? (hk.flags & kUpDown) : xplm_DownFlag;
    return (flags & wanted) == wanted;
}

HotKey* findHotKey(XPLMHotKeyID id, const char* function) {
    HotKey* hk = state().hotKeys.get(id);
    if (!hk) Host::get().reportError("%s: invalid hot key id %p", function, id);
    return hk;
}

}  // namespace

bool callHotKeys(char virtualKey, XPLMKeyFlags flags) {
    bool fired = false;
    std::vector<void*> handles = state().hotKeys.order();
    for (void* h : handles) {
        const HotKey* hk = state().hotKeys.get(h);
        if (!hk || !matches(*hk, virtualKey, flags) || !isPluginEnabled(hk->plugin)) continue;
        HotKey call = *hk;
        CallingPlugin scope(call.plugin);
        call.callback(call.refcon);
        fired = true;
    }
    return fired;
}

}  // namespace xpsim::display

using namespace xpsim;
using namespace xpsim::display;

XPLM_API XPLMHotKeyID XPLMRegisterHotKey(char inVirtualKey, XPLMKeyFlags inFlags, const char* inDescription,
                                         XPLMHotKey_f inCallback, void* inRefcon) {
    if (!inCallback) {
        Host::get().reportError("XPLMRegisterHotKey: the callback is NULL");
        return nullptr;
    }
    return state().hotKeys.add(HotKey{Host::get().currentPlugin, inVirtualKey, inFlags,
                                      inDescription ? inDescription : "", inCallback, inRefcon});
}

XPLM_API void XPLMUnregisterHotKey(XPLMHotKeyID inHotKey) {
    const HotKey* hk = findHotKey(inHotKey, "XPLMUnregisterHotKey");
    if (!hk) return;
    if (hk->plugin != Host::get().currentPlugin) {
        Host::get().reportError("XPLMUnregisterHotKey: hot key %p belongs to plug-in %d", inHotKey, hk->plugin);
        return;
    }
    state().hotKeys.remove(inHotKey);
}

XPLM_API int XPLMCountHotKeys(void) { return static_cast<int>(state().hotKeys.size()); }

XPLM_API XPLMHotKeyID XPLMGetNthHotKey(int inIndex) {
    const std::vector<void*>& order = state().hotKeys.order();
    if (inIndex < 0 || static_cast<size_t>(inIndex) >= order.size()) {
        Host::get().reportError("XPLMGetNthHotKey: index %d out of range (%d hot keys)", inIndex,
                                static_cast<int>(order.size()));
        return nullptr;
    }
    return order[static_cast<size_t>(inIndex)];
}

XPLM_API void XPLMGetHotKeyInfo(XPLMHotKeyID inHotKey, char* outVirtualKey, XPLMKeyFlags* outFlags,
                                char* outDescription, XPLMPluginID* outPlugin) {
    const HotKey* hk = findHotKey(inHotKey, "XPLMGetHotKeyInfo");
    if (outVirtualKey) *outVirtualKey = hk ? hk->virtualKey : 0;
    if (outFlags) *outFlags = hk ? hk->flags : 0;
    if (outPlugin) *outPlugin = hk ? hk->plugin : XPLM_NO_PLUGIN_ID;
    if (outDescription) {
        // The caller's buffer is documented as at least 512 bytes.
        constexpr size_t kDescriptionBuffer = 512;
        const std::string text = hk ? hk->description : std::string();
        size_t n = std::min(text.size(), kDescriptionBuffer - 1);
        std::memcpy(outDescription, text.data(), n);
        outDescription[n] = '\0';
    }
}

XPLM_API void XPLMSetHotKeyCombination(XPLMHotKeyID inHotKey, char inVirtualKey, XPLMKeyFlags inFlags) {
    // Any plug-in may remap any hot key, so no owner check here.
    if (HotKey* hk = findHotKey(inHotKey, "XPLMSetHotKeyCombination")) {
        hk->virtualKey = inVirtualKey;
        hk->flags = inFlags;
    }
}
