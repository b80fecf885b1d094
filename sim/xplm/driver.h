// The driver API: how the xpsim runner and the tests run the simulator. Exported
// from XPLM_64.so next to the SDK functions; plug-ins never see it.
#pragma once

#include <string>
#include <vector>

#define XPSIM_API __attribute__((visibility("default")))

namespace xpsim {

struct Options {
    std::string root;            // simulator root folder (absolute, no trailing '/')
    std::string sdk = "2.10";    // SDK generation: "1.02", "2.00" or "2.10"
    double fps = 60.0;           // frames per simulated second
    int screenWidth = 1024;
    int screenHeight = 768;
    int xplaneVersion = 1051;    // what XPLMGetVersions answers
    int xplmVersion = 210;       // 102, 200 or 210, follows `sdk` unless set
    int language = 1;            // XPLMLanguageCode that XPLMGetLanguage answers (English)
    bool verbose = false;        // echo Log.txt lines on stderr
};

// One recorded drawing call of the current frame (see Graphics.cpp / widgets).
struct DrawItem {
    std::string kind;            // "string", "number", "window", "element", "track", ...
    std::string text;            // text drawn, or a style name
    int x = 0, y = 0, right = 0, bottom = 0;
    int style = 0;
    int plugin = 0;
    float color[3] = {1.0f, 1.0f, 1.0f};  // text colour ("string", "number")
};

// Draws frames as they happen (sim/render): the simulator's phases and every recorded
// drawing call reach it in order, so that the plug-ins' own OpenGL calls between
// them land in the same picture.
class FrameRenderer {
public:
    virtual ~FrameRenderer() = default;
    virtual void beginFrame() = 0;
    // Before the phase's before-callbacks: sets up the phase's coordinates.
    virtual void beginPhase(int phase) = 0;
    virtual void draw(const DrawItem& item) = 0;
    virtual void endFrame(int cycle) = 0;
};

// Which frames reach the renderer.
enum class FrameRendering {
    Off,
    LastFrameOfEachRun,  // the last frame of each runFrames/runSeconds call
    EveryFrame,
};

// Appends an item to the current frame's draw list (Graphics.cpp); the widget
// library records its UI graphics through this.
XPSIM_API void recordDraw(const DrawItem& item);

namespace driver {

// --- Run (host.cpp) ---
// Prepares a run on `options.root`: lays out the root (Resources/plugins/, Output/,
// Log.txt truncated) and resets every area. False with *error set when it cannot.
XPSIM_API bool start(const Options& options, std::string* error);
XPSIM_API void runFrames(int frames);
XPSIM_API void runSeconds(double seconds);  // rounded up to whole frames
XPSIM_API double elapsedSeconds();
XPSIM_API int cycleNumber();
// Disables and stops every plug-in, unloads them, resets the host.
XPSIM_API void shutdown();

// --- Plug-ins (Plugin.cpp) ---
// Loads and starts one binary; returns its id, or -1 with *error set.
XPSIM_API int loadPlugin(const std::string& path, std::string* error);
// The plug-in binaries X-Plane would load from <root>/Resources/plugins.
XPSIM_API std::vector<std::string> findPlugins();
// After loading: enables every started plug-in and sends the simulator's load messages.
XPSIM_API void enablePluginsAndSendLoadMessages();
XPSIM_API void reloadPlugins();  // immediate, as XPLMReloadPlugins does after its callback
// Sends a message from the simulator (sender 0) to a plug-in id, or to all with -1.
XPSIM_API void sendMessage(int plugin, int message, long param);
XPSIM_API int findPluginBySignature(const std::string& signature);  // -1 when none
XPSIM_API int pluginCount();

// --- Input (Display.cpp), delivered at the start of the next frame ---
XPSIM_API void mouseMove(int x, int y);
XPSIM_API void mouseDown(int x, int y);
XPSIM_API void mouseUp(int x, int y);
XPSIM_API void mouseWheel(int x, int y, int wheel, int clicks);
XPSIM_API void keyPress(char key, int flags, char virtualKey);
// The XPLMCursorStatus the windows under the mouse asked for in the last frame.
XPSIM_API int cursorStatus();

// --- Menus (Menus.cpp): "Plugins/Name/Item" ---
XPSIM_API bool pickMenu(const std::string& path, std::string* error);

// --- Commands (Utilities.cpp) ---
XPSIM_API bool commandBegin(const std::string& name, std::string* error);
XPSIM_API bool commandEnd(const std::string& name, std::string* error);
XPSIM_API bool commandOnce(const std::string& name, std::string* error);

// --- Datarefs (DataAccess.cpp); values as text, arrays as "a,b,c" ---
XPSIM_API bool setDataref(const std::string& name, const std::string& value, std::string* error);
XPSIM_API bool getDataref(const std::string& name, std::string* value, std::string* error);

// --- Drawing (Graphics.cpp): what the last completed frame drew ---
XPSIM_API std::vector<DrawItem> drawList();
// The renderer frames are drawn with (not owned; null: none) and which frames it draws.
XPSIM_API void setFrameRenderer(FrameRenderer* renderer);
XPSIM_API void setFrameRendering(FrameRendering which);
XPSIM_API FrameRendering frameRendering();

}  // namespace driver
}  // namespace xpsim
