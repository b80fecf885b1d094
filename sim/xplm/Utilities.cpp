// XPLMUtilities: log and speech output, legacy keys and buttons, versions and language,
// situation files, symbol lookup and the error callback. Paths and directory listing
// live in utilities_files.cpp, the command system in commands.cpp.

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>

#include "XPLMPlugin.h"
#include "XPLMUtilities.h"
#include "host.h"
#include "utilities_internal.h"

namespace xpsim {

namespace {

struct UtilitiesState {
    std::map<int, XPLMError_f> errorCallbacks;  // by plug-in id
    std::map<int, int> pressedButtons;          // button id -> presses not yet released
    bool inErrorCallback = false;
    bool sceneryReloadPending = false;
};

UtilitiesState& state() {
    static UtilitiesState s;
    return s;
}

// Human-readable key names, as a key-binding dialog shows them.
struct VirtualKeyName {
    int code;
    const char* name;
};
constexpr VirtualKeyName kVirtualKeyNames[] = {
    {XPLM_VK_BACK, "Backspace"}, {XPLM_VK_TAB, "Tab"}, {XPLM_VK_CLEAR, "Clear"},
    {XPLM_VK_RETURN, "Return"}, {XPLM_VK_ESCAPE, "Escape"}, {XPLM_VK_SPACE, "Space"},
    {XPLM_VK_PRIOR, "Page Up"}, {XPLM_VK_NEXT, "Page Down"}, {XPLM_VK_END, "End"},
    {XPLM_VK_HOME, "Home"}, {XPLM_VK_LEFT, "Left Arrow"}, {XPLM_VK_UP, "Up Arrow"},
    {XPLM_VK_RIGHT, "Right Arrow"}, {XPLM_VK_DOWN, "Down Arrow"}, {XPLM_VK_SELECT, "Select"},
    {XPLM_VK_PRINT, "Print"}, {XPLM_VK_EXECUTE, "Execute"}, {XPLM_VK_SNAPSHOT, "Print Screen"},
    {XPLM_VK_INSERT, "Insert"}, {XPLM_VK_DELETE, "Delete"}, {XPLM_VK_HELP, "Help"},
    {XPLM_VK_0, "0"}, {XPLM_VK_1, "1"}, {XPLM_VK_2, "2"}, {XPLM_VK_3, "3"}, {XPLM_VK_4, "4"},
    {XPLM_VK_5, "5"}, {XPLM_VK_6, "6"}, {XPLM_VK_7, "7"}, {XPLM_VK_8, "8"}, {XPLM_VK_9, "9"},
    {XPLM_VK_A, "A"}, {XPLM_VK_B, "B"}, {XPLM_VK_C, "C"}, {XPLM_VK_D, "D"}, {XPLM_VK_E, "E"},
    {XPLM_VK_F, "F"}, {XPLM_VK_G, "G"}, {XPLM_VK_H, "H"}, {XPLM_VK_I, "I"}, {XPLM_VK_J, "J"},
    {XPLM_VK_K, "K"}, {XPLM_VK_L, "L"}, {XPLM_VK_M, "M"}, {XPLM_VK_N, "N"}, {XPLM_VK_O, "O"},
    {XPLM_VK_P, "P"}, {XPLM_VK_Q, "Q"}, {XPLM_VK_R, "R"}, {XPLM_VK_S, "S"}, {XPLM_VK_T, "T"},
    {XPLM_VK_U, "U"}, {XPLM_VK_V, "V"}, {XPLM_VK_W, "W"}, {XPLM_VK_X, "X"}, {XPLM_VK_Y, "Y"},
    {XPLM_VK_Z, "Z"},
    {XPLM_VK_NUMPAD0, "Keypad 0"}, {XPLM_VK_NUMPAD1, "Keypad 1"}, {XPLM_VK_NUMPAD2, "Keypad 2"},
    {XPLM_VK_NUMPAD3, "Keypad 3"}, {XPLM_VK_NUMPAD4, "Keypad 4"}, {XPLM_VK_NUMPAD5, "Keypad 5"},
    {XPLM_VK_NUMPAD6, "Keypad 6"}, {XPLM_VK_NUMPAD7, "Keypad 7"}, {XPLM_VK_NUMPAD8, "Keypad 8"},
    {XPLM_VK_NUMPAD9, "Keypad 9"}, {XPLM_VK_MULTIPLY, "Keypad *"}, {XPLM_VK_ADD, "Keypad +"},
    {XPLM_VK_SEPARATOR, "Keypad Separator"}, {XPLM_VK_SUBTRACT, "Keypad -"},
    {XPLM_VK_DECIMAL, "Keypad ."}, {XPLM_VK_DIVIDE, "Keypad /"},
    {XPLM_VK_F1, "F1"}, {XPLM_VK_F2, "F2"}, {XPLM_VK_F3, "F3"}, {XPLM_VK_F4, "F4"},
    {XPLM_VK_F5, "F5"}, {XPLM_VK_F6, "F6"}, {XPLM_VK_F7, "F7"}, {XPLM_VK_F8, "F8"},
    {XPLM_VK_F9, "F9"}, {XPLM_VK_F10, "F10"}, {XPLM_VK_F11, "F11"}, {XPLM_VK_F12, "F12"},
    {XPLM_VK_F13, "F13"}, {XPLM_VK_F14, "F14"}, {XPLM_VK_F15, "F15"}, {XPLM_VK_F16, "F16"},
    {XPLM_VK_F17, "F17"}, {XPLM_VK_F18, "F18"}, {XPLM_VK_F19, "F19"}, {XPLM_VK_F20, "F20"},
    {XPLM_VK_F21, "F21"}, {XPLM_VK_F22, "F22"}, {XPLM_VK_F23, "F23"}, {XPLM_VK_F24, "F24"},
    {XPLM_VK_EQUAL, "="}, {XPLM_VK_MINUS, "-"}, {XPLM_VK_RBRACE, "]"}, {XPLM_VK_LBRACE, "["},
    {XPLM_VK_QUOTE, "'"}, {XPLM_VK_SEMICOLON, ";"}, {XPLM_VK_BACKSLASH, "\\"},
    {XPLM_VK_COMMA, ","}, {XPLM_VK_SLASH, "/"}, {XPLM_VK_PERIOD, "."}, {XPLM_VK_BACKQUOTE, "`"},
    {XPLM_VK_ENTER, "Enter"}, {XPLM_VK_NUMPAD_ENT, "Keypad Enter"}, {XPLM_VK_NUMPAD_EQ, "Keypad ="},
};

// The functions of the 2.1 API (gate XPLM210): a simulator of SDK generation 2.00 has none.
constexpr const char* kSdk210Functions[] = {
    "XPLMCreateFlightLoop",   // XPLMProcessing
    "XPLMDestroyFlightLoop",  // XPLMProcessing
    "XPLMScheduleFlightLoop", // XPLMProcessing
    "XPLMLoadObjectAsync",    // XPLMScenery
    "XPLMRemoveMenuItem",     // XPLMMenus
};

// The XPLM library this code is part of, opened again by its own path so that its
// dynamic symbol table answers XPLMFindSymbol exactly as the loader would.
void* ownLibrary() {
    static void* handle = [] {
        Dl_info info;
        if (!dladdr(reinterpret_cast<void*>(&XPLMFindSymbol), &info) || !info.dli_fname) return static_cast<void*>(nullptr);
        return dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);
    }();
    return handle;
}

int xplmVersion(const Options& options) {
    if (options.xplmVersion != Options{}.xplmVersion) return options.xplmVersion;
    if (options.sdk == "1.02") return 102;
    if (options.sdk == "2.00") return 200;
    return 210;
}

// The kind of data file, as the log names it; null (reported) for an unknown type.
const char* dataFileKind(const char* function, XPLMDataFileType type) {
    switch (type) {
        case xplm_DataFile_Situation: return "situation";
        case xplm_DataFile_ReplayMovie: return "replay";
        default:
            Host::get().reportError("%s: %d is not a data file type", function, type);
            return nullptr;
    }
}

}  // namespace

void callErrorCallback(int plugin, const char* message) {
    UtilitiesState& s = state();
    auto it = s.errorCallbacks.find(plugin);
    // The callback must not call the SDK; should it cause an error anyway, that error is
    // only logged, so a faulty callback cannot recurse.
    if (it == s.errorCallbacks.end() || s.inErrorCallback) return;
    s.inErrorCallback = true;
    {
        CallingPlugin calling(plugin);
        it->second(message);
    }
    s.inErrorCallback = false;
}

// Utilities' share of a frame: a scenery reload asked for during the last frame
// completes (announced to every plug-in), then held commands continue.
void commandFrame() {
    if (state().sceneryReloadPending) {
        state().sceneryReloadPending = false;
        driver::sendMessage(XPLM_NO_PLUGIN_ID, XPLM_MSG_SCENERY_LOADED, 0);
    }
    commandsFrame();
}

void forgetPluginUtilities(int plugin) {
    state().errorCallbacks.erase(plugin);
    forgetPluginCommands(plugin);
}

void resetUtilities() {
    UtilitiesState& s = state();
    s.errorCallbacks.clear();
    s.pressedButtons.clear();
    s.inErrorCallback = false;
    s.sceneryReloadPending = false;
    resetCommands();
}

}  // namespace xpsim

using xpsim::Host;

extern "C" {

XPLM_API void XPLMDebugString(const char* inString) {
    if (!inString) return Host::get().reportError("XPLMDebugString: the string is NULL");
    Host::get().logText(inString);
}

XPLM_API void XPLMSpeakString(const char* inString) {
    if (!inString) return Host::get().reportError("XPLMSpeakString: the string is NULL");
    Host::get().log(std::string("xpsim: speak: ") + inString);
}

XPLM_API void XPLMSimulateKeyPress(int inKeyType, int inKey) {
    // The SDK does not say what inKeyType means; the host records both values as given.
    Host::get().log("xpsim: simulated key press type " + std::to_string(inKeyType) + " key " +
                    std::to_string(inKey));
}

XPLM_API void XPLMCommandKeyStroke(XPLMCommandKeyID inKey) {
    if (inKey < 0 || inKey >= xplm_key_max)
        return Host::get().reportError("XPLMCommandKeyStroke: %d is not a command key", inKey);
    Host::get().log("xpsim: command key stroke " + std::to_string(inKey));
}

XPLM_API void XPLMCommandButtonPress(XPLMCommandButtonID inButton) {
    if (inButton < 0 || inButton >= xplm_joy_max)
        return Host::get().reportError("XPLMCommandButtonPress: %d is not a command button", inButton);
    ++xpsim::state().pressedButtons[inButton];
    Host::get().log("xpsim: command button press " + std::to_string(inButton));
}

XPLM_API void XPLMCommandButtonRelease(XPLMCommandButtonID inButton) {
    if (inButton < 0 || inButton >= xplm_joy_max)
        return Host::get().reportError("XPLMCommandButtonRelease: %d is not a command button", inButton);
    auto& pressed = xpsim::state().pressedButtons;
    auto it = pressed.find(inButton);
    if (it == pressed.end())
        return Host::get().reportError("XPLMCommandButtonRelease: button %d is not pressed", inButton);
    if (--it->second == 0) pressed.erase(it);
    Host::get().log("xpsim: command button release " + std::to_string(inButton));
}

XPLM_API const char* XPLMGetVirtualKeyDescription(char inVirtualKey) {
    const int code = static_cast<unsigned char>(inVirtualKey);
    for (const auto& key : xpsim::kVirtualKeyNames) {
        if (key.code == code) return key.name;
    }
    return "";  // the SDK allows blank for codes it does not know; never NULL here
}

XPLM_API void XPLMReloadScenery(void) {
    // The SDK does not say when the reload happens; we finish it at the start of the next
    // frame, so the scenery-loaded message never re-enters the plug-in that asked.
    Host::get().log("xpsim: reload scenery");
    xpsim::state().sceneryReloadPending = true;
}

XPLM_API int XPLMInitialized(void) { return 1; }

XPLM_API void XPLMGetVersions(int* outXPlaneVersion, int* outXPLMVersion, XPLMHostApplicationID* outHostID) {
    // The SDK does not say whether NULL is allowed; we skip NULL outputs.
    const xpsim::Options& options = Host::get().options;
    if (outXPlaneVersion) *outXPlaneVersion = options.xplaneVersion;
    if (outXPLMVersion) *outXPLMVersion = xpsim::xplmVersion(options);
    if (outHostID) *outHostID = xplm_Host_XPlane;
}

XPLM_API XPLMLanguageCode XPLMGetLanguage(void) { return Host::get().options.language; }

XPLM_API void XPLMSetErrorCallback(XPLMError_f inCallback) {
    auto& callbacks = xpsim::state().errorCallbacks;
    const int plugin = Host::get().currentPlugin;
    if (inCallback) {
        callbacks[plugin] = inCallback;
    } else {
        callbacks.erase(plugin);
    }
}

XPLM_API void* XPLMFindSymbol(const char* inString) {
    Host& host = Host::get();
    if (!inString) {
        host.reportError("XPLMFindSymbol: the name is NULL");
        return nullptr;
    }
    if (host.options.sdk == "1.02") {
        host.reportError("XPLMFindSymbol: not part of SDK 1.02");
        return nullptr;
    }
    // Only the SDK's own functions: the library's other exports are the driver's.
    if (std::strncmp(inString, "XPLM", 4) != 0) return nullptr;
    if (host.options.sdk == "2.00") {
        for (const char* name : xpsim::kSdk210Functions) {
            if (std::strcmp(name, inString) == 0) return nullptr;
        }
    }
    void* library = xpsim::ownLibrary();
    return library ? dlsym(library, inString) : nullptr;
}

XPLM_API int XPLMLoadDataFile(XPLMDataFileType inFileType, const char* inFilePath) {
    Host& host = Host::get();
    const char* kind = xpsim::dataFileKind("XPLMLoadDataFile", inFileType);
    if (!kind) return 0;
    if (!inFilePath) {
        if (inFileType != xplm_DataFile_ReplayMovie) {
            host.reportError("XPLMLoadDataFile: a NULL path only clears the replay");
            return 0;
        }
        host.log("xpsim: replay cleared");
        return 1;
    }
    // The SDK does not say what the int means; we answer 1 = loaded, 0 = failed.
    FILE* f = std::fopen(host.rootPath(inFilePath).c_str(), "rb");
    if (!f) {
        host.log(std::string("xpsim: cannot load ") + kind + " " + inFilePath);
        return 0;
    }
    std::fclose(f);
    host.log(std::string("xpsim: loaded ") + kind + " " + inFilePath);
    return 1;
}

XPLM_API int XPLMSaveDataFile(XPLMDataFileType inFileType, const char* inFilePath) {
    Host& host = Host::get();
    const char* kind = xpsim::dataFileKind("XPLMSaveDataFile", inFileType);
    if (!kind) return 0;
    if (!inFilePath) {
        host.reportError("XPLMSaveDataFile: the path is NULL");
        return 0;
    }
    FILE* f = std::fopen(host.rootPath(inFilePath).c_str(), "w");
    if (!f) {
        host.log(std::string("xpsim: cannot save ") + kind + " " + inFilePath);
        return 0;
    }
    std::fprintf(f, "xpsim %s\nelapsed %.3f\ncycle %d\n", kind, host.elapsedSeconds, host.cycleNumber);
    const bool ok = std::fclose(f) == 0;
    host.log(std::string(ok ? "xpsim: saved " : "xpsim: cannot save ") + kind + " " + inFilePath);
    return ok ? 1 : 0;
}

}  // extern "C"
