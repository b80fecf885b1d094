// The scenario commands: one table line each, implemented on the driver API.
// Input commands queue their events and run one frame after each event, so the
// plug-ins have seen the input when the next line runs.

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <ostream>
#include <sstream>

#include "XPLMDefs.h"
#include "XPLMPlugin.h"
#include "driver.h"
#include "scenario.h"
#include "screenshots.h"
#include "widget_commands.h"

namespace xpsim::runner {

namespace {

bool parseLong(const std::string& text, long* out) {
    if (text.empty()) return false;
    char* end = nullptr;
    errno = 0;
    long value = std::strtol(text.c_str(), &end, 0);
    if (*end != '\0' || errno != 0) return false;
    *out = value;
    return true;
}

bool parseDouble(const std::string& text, double* out) {
    if (text.empty()) return false;
    char* end = nullptr;
    double value = std::strtod(text.c_str(), &end);
    if (*end != '\0' || !std::isfinite(value)) return false;
    *out = value;
    return true;
}

bool parseInt(const std::string& text, const char* what, int* out, std::string* error) {
    long value;
    if (!parseLong(text, &value) || value < INT32_MIN || value > INT32_MAX) {
        *error = std::string(what) + " '" + text + "' is not an integer";
        return false;
    }
    *out = static_cast<int>(value);
    return true;
}

bool parsePoint(const ScenarioArgs& args, size_t first, int* x, int* y, std::string* error) {
    return parseInt(args[first], "x", x, error) && parseInt(args[first + 1], "y", y, error);
}

std::string readText(const std::string& path, bool* found) {
    std::ifstream in(path, std::ios::binary);
    *found = static_cast<bool>(in);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

std::string lastLines(const std::string& text, int count) {
    size_t pos = text.size();
    if (pos > 0 && text[pos - 1] == '\n') --pos;
    for (int i = 0; i < count && pos != std::string::npos && pos > 0; ++i) pos = text.rfind('\n', pos - 1);
    return pos == std::string::npos ? text : text.substr(pos + 1);
}

// --- running ---

bool cmdRun(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    double amount;
    if (!parseDouble(args[0], &amount) || amount < 0) {
        *error = "'" + args[0] + "' is not a non-negative number";
        return false;
    }
    if (args[1] == "frames" || args[1] == "frame") {
        if (amount != std::floor(amount)) {
            *error = "a number of frames must be whole";
            return false;
        }
        driver::runFrames(static_cast<int>(amount));
    } else if (args[1] == "seconds" || args[1] == "second") {
        driver::runSeconds(amount);
    } else {
        *error = "unit '" + args[1] + "' is neither frames nor seconds";
        return false;
    }
    return true;
}

// --- mouse ---

// One mouse event and the frame that delivers it.
void mouseEvent(void (*event)(int, int), int x, int y) {
    event(x, y);
    driver::runFrames(1);
}

template <void (*Event)(int, int)>
bool cmdMouse(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    int x, y;
    if (!parsePoint(args, 0, &x, &y, error)) return false;
    mouseEvent(Event, x, y);
    return true;
}

bool cmdMouseClick(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    int x, y;
    if (!parsePoint(args, 0, &x, &y, error)) return false;
    mouseEvent(driver::mouseDown, x, y);
    mouseEvent(driver::mouseUp, x, y);
    return true;
}

bool cmdMouseDrag(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    int x1, y1, x2, y2;
    if (!parsePoint(args, 0, &x1, &y1, error) || !parsePoint(args, 2, &x2, &y2, error)) return false;
    mouseEvent(driver::mouseDown, x1, y1);
    mouseEvent(driver::mouseMove, x2, y2);
    mouseEvent(driver::mouseUp, x2, y2);
    return true;
}

bool cmdMouseWheel(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    int x, y, clicks, axis = 0;
    if (!parsePoint(args, 0, &x, &y, error) || !parseInt(args[2], "clicks", &clicks, error)) return false;
    if (args.size() > 3 && (!parseInt(args[3], "axis", &axis, error))) return false;
    if (axis != 0 && axis != 1) {
        *error = "the wheel axis is 0 (vertical) or 1 (horizontal)";
        return false;
    }
    driver::mouseWheel(x, y, axis, clicks);
    driver::runFrames(1);
    return true;
}

// --- keys ---

#define VK(name) {#name, XPLM_VK_##name}
const struct {
    const char* name;
    int code;
} kVirtualKeys[] = {
    VK(BACK), VK(TAB), VK(CLEAR), VK(RETURN), VK(ESCAPE), VK(SPACE), VK(PRIOR), VK(NEXT), VK(END), VK(HOME),
    VK(LEFT), VK(UP), VK(RIGHT), VK(DOWN), VK(SELECT), VK(PRINT), VK(EXECUTE), VK(SNAPSHOT), VK(INSERT),
    VK(DELETE), VK(HELP), VK(NUMPAD0), VK(NUMPAD1), VK(NUMPAD2), VK(NUMPAD3), VK(NUMPAD4), VK(NUMPAD5),
    VK(NUMPAD6), VK(NUMPAD7), VK(NUMPAD8), VK(NUMPAD9), VK(MULTIPLY), VK(ADD), VK(SEPARATOR), VK(SUBTRACT),
    VK(DECIMAL), VK(DIVIDE), VK(F1), VK(F2), VK(F3), VK(F4), VK(F5), VK(F6), VK(F7), VK(F8), VK(F9), VK(F10),
    VK(F11), VK(F12), VK(F13), VK(F14), VK(F15), VK(F16), VK(F17), VK(F18), VK(F19), VK(F20), VK(F21), VK(F22),
    VK(F23), VK(F24), VK(EQUAL), VK(MINUS), VK(RBRACE), VK(LBRACE), VK(QUOTE), VK(SEMICOLON), VK(BACKSLASH),
    VK(COMMA), VK(SLASH), VK(PERIOD), VK(BACKQUOTE), VK(ENTER), VK(NUMPAD_ENT), VK(NUMPAD_EQ),
};
#undef VK

const struct {
    const char* name;
    int flag;
} kKeyFlags[] = {
    {"shift", xplm_ShiftFlag}, {"alt", xplm_OptionAltFlag}, {"ctrl", xplm_ControlFlag},
    {"down", xplm_DownFlag},   {"up", xplm_UpFlag},
};

// A virtual key: a name of the XPLM_VK_ set without the prefix, a letter or digit
// (their codes are the upper-case ASCII codes), or a number.
bool parseVirtualKey(const std::string& text, int* code, std::string* error) {
    if (text.size() == 1 && std::isalnum(static_cast<unsigned char>(text[0]))) {
        *code = std::toupper(static_cast<unsigned char>(text[0]));
        return true;
    }
    for (const auto& vk : kVirtualKeys) {
        if (text == vk.name || text == std::string("XPLM_VK_") + vk.name) {
            *code = vk.code;
            return true;
        }
    }
    long value;
    if (parseLong(text, &value) && value >= 0 && value <= 255) {
        *code = static_cast<int>(value);
        return true;
    }
    *error = "unknown virtual key '" + text + "'";
    return false;
}

// A key: a one-character word is that character ("0" is the digit); a longer word is
// its code as a number (13 or 0x0D for return, 0x00 for none).
bool parseKeyChar(const std::string& text, char* key, std::string* error) {
    long value;
    if (text.size() == 1) {
        *key = text[0];
    } else if (parseLong(text, &value) && value >= 0 && value <= 255) {
        *key = static_cast<char>(value);
    } else {
        *error = "key '" + text + "' is neither one character nor a character code";
        return false;
    }
    return true;
}

// Without "down" or "up" the key is pressed and released: two events.
bool cmdKey(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    char key;
    int vkey;
    if (!parseKeyChar(args[0], &key, error) || !parseVirtualKey(args[1], &vkey, error)) return false;
    int flags = 0;
    for (size_t i = 2; i < args.size(); ++i) {
        int flag = 0;
        for (const auto& f : kKeyFlags) {
            if (args[i] == f.name) flag = f.flag;
        }
        if (!flag) {
            *error = "unknown key flag '" + args[i] + "' (shift, alt, ctrl, down, up)";
            return false;
        }
        flags |= flag;
    }
    int modifiers = flags & ~(xplm_DownFlag | xplm_UpFlag);
    bool press = (flags & (xplm_DownFlag | xplm_UpFlag)) == 0;
    for (int edge : {xplm_DownFlag, xplm_UpFlag}) {
        if (press || (flags & edge)) {
            driver::keyPress(key, modifiers | edge, static_cast<char>(vkey));
            driver::runFrames(1);
        }
    }
    return true;
}

// --- menus, commands, datarefs ---

bool cmdMenu(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    return driver::pickMenu(args[0], error);
}

template <bool (*Phase)(const std::string&, std::string*)>
bool cmdCommand(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    return Phase(args[0], error);
}

bool cmdSet(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    return driver::setDataref(args[0], args[1], error);
}

std::vector<std::string> splitList(const std::string& text) {
    std::vector<std::string> items;
    std::stringstream in(text);
    for (std::string item; std::getline(in, item, ',');) {
        size_t b = item.find_first_not_of(" \t"), e = item.find_last_not_of(" \t");
        items.push_back(b == std::string::npos ? "" : item.substr(b, e - b + 1));
    }
    return items;
}

// Numbers compare within the tolerance (by default a float's precision), anything
// else as text; arrays element by element.
bool sameValue(const std::string& actual, const std::string& expected, double tolerance) {
    std::vector<std::string> a = splitList(actual), e = splitList(expected);
    if (a.size() != e.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        double x, y;
        if (parseDouble(a[i], &x) && parseDouble(e[i], &y)) {
            double allowed = tolerance >= 0 ? tolerance : 1e-6 * std::max(1.0, std::fabs(y));
            if (std::fabs(x - y) > allowed) return false;
        } else if (a[i] != e[i]) {
            return false;
        }
    }
    return true;
}

bool cmdExpectDataref(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    double tolerance = -1;
    if (args.size() > 2 && (!parseDouble(args[2], &tolerance) || tolerance < 0)) {
        *error = "tolerance '" + args[2] + "' is not a non-negative number";
        return false;
    }
    std::string value;
    if (!driver::getDataref(args[0], &value, error)) return false;
    if (!sameValue(value, args[1], tolerance)) {
        *error = args[0] + " is " + value + ", expected " + args[1];
        return false;
    }
    return true;
}

// --- plug-ins ---

#define MSG(name) {#name, name}
const struct {
    const char* name;
    int value;
} kMessages[] = {
    MSG(XPLM_MSG_PLANE_CRASHED),    MSG(XPLM_MSG_PLANE_LOADED),           MSG(XPLM_MSG_AIRPORT_LOADED),
    MSG(XPLM_MSG_SCENERY_LOADED),   MSG(XPLM_MSG_AIRPLANE_COUNT_CHANGED), MSG(XPLM_MSG_PLANE_UNLOADED),
    MSG(XPLM_MSG_WILL_WRITE_PREFS), MSG(XPLM_MSG_LIVERY_LOADED),
};
#undef MSG

bool isLoadedId(long id) {
    for (int i = 0; i < XPLMCountPlugins(); ++i) {
        if (XPLMGetNthPlugin(i) == id) return true;
    }
    return false;
}

// A plug-in by signature, by id, or "all".
bool parseTarget(const std::string& text, int* id, std::string* error) {
    long value;
    if (text == "all") {
        *id = XPLM_NO_PLUGIN_ID;
    } else if (parseLong(text, &value)) {
        if (!isLoadedId(value)) {
            *error = "no plug-in with id " + text;
            return false;
        }
        *id = static_cast<int>(value);
    } else {
        *id = driver::findPluginBySignature(text);
        if (*id == XPLM_NO_PLUGIN_ID) {
            *error = "no plug-in with signature '" + text + "'";
            return false;
        }
    }
    return true;
}

bool cmdMessage(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    int target;
    if (!parseTarget(args[0], &target, error)) return false;
    long message = 0, param = 0;
    bool named = false;
    for (const auto& m : kMessages) {
        if (args[1] == m.name) {
            message = m.value;
            named = true;
        }
    }
    if (!named && (!parseLong(args[1], &message) || message < INT32_MIN || message > UINT32_MAX)) {
        *error = "message '" + args[1] + "' is neither a number nor an XPLM_MSG_ name";
        return false;
    }
    if (args.size() > 2 && !parseLong(args[2], &param)) {
        *error = "parameter '" + args[2] + "' is not an integer";
        return false;
    }
    // Ids above 0x7FFFFFFF (notifications) travel as the same 32 bits.
    driver::sendMessage(target, static_cast<int>(static_cast<uint32_t>(message)), param);
    return true;
}

bool cmdReload(ScenarioContext&, const ScenarioArgs&, std::string*) {
    driver::reloadPlugins();
    return true;
}

bool cmdExpectPlugin(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    int id = driver::findPluginBySignature(args[0]);
    const std::string& state = args[1];
    std::string actual = id == XPLM_NO_PLUGIN_ID ? "absent" : XPLMIsPluginEnabled(id) ? "enabled" : "disabled";
    if (state != "enabled" && state != "disabled" && state != "absent") {
        *error = "state '" + state + "' is not enabled, disabled or absent";
        return false;
    }
    if (actual != state) {
        *error = "plug-in '" + args[0] + "' is " + actual + ", expected " + state;
        return false;
    }
    return true;
}

// --- files ---

// Only files under the root: a scenario checks the simulator, not the machine.
bool rootFile(const ScenarioContext& context, const std::string& relative, std::string* path, std::string* error) {
    if (relative.empty() || relative[0] == '/' || relative == ".." || relative.rfind("../", 0) == 0 ||
        relative.find("/../") != std::string::npos) {
        *error = "'" + relative + "' is not a path under the simulator root";
        return false;
    }
    *path = context.root + "/" + relative;
    return true;
}

bool expectText(const ScenarioContext& context, const std::string& relative, const std::string& text, bool wanted,
                std::string* error) {
    std::string path;
    if (!rootFile(context, relative, &path, error)) return false;
    bool found;
    std::string content = readText(path, &found);
    if (!found) {
        *error = "cannot read " + path;
        return false;
    }
    if ((content.find(text) != std::string::npos) == wanted) return true;
    *error = "\"" + text + "\" " + (wanted ? "not found" : "found") + " in " + relative + "; its last lines:\n" +
             lastLines(content, 8);
    return false;
}

bool cmdExpectLog(ScenarioContext& context, const ScenarioArgs& args, std::string* error) {
    return expectText(context, "Log.txt", args[0], true, error);
}

bool cmdExpectNoLog(ScenarioContext& context, const ScenarioArgs& args, std::string* error) {
    return expectText(context, "Log.txt", args[0], false, error);
}

bool cmdExpectFile(ScenarioContext& context, const ScenarioArgs& args, std::string* error) {
    return expectText(context, args[0], args[1], true, error);
}

bool cmdPrint(ScenarioContext& context, const ScenarioArgs& args, std::string*) {
    *context.out << args[0] << "\n";
    return true;
}

}  // namespace

const std::vector<ScenarioCommand>& scenarioCommands() {
    static const std::vector<ScenarioCommand> commands = {
        {"run", "<n> frames | <s> seconds", 2, 2, cmdRun},
        {"mouse move", "<x> <y>", 2, 2, cmdMouse<driver::mouseMove>},
        {"mouse down", "<x> <y>", 2, 2, cmdMouse<driver::mouseDown>},
        {"mouse up", "<x> <y>", 2, 2, cmdMouse<driver::mouseUp>},
        {"mouse click", "<x> <y>", 2, 2, cmdMouseClick},
        {"mouse drag", "<x1> <y1> <x2> <y2>", 4, 4, cmdMouseDrag},
        {"mouse wheel", "<x> <y> <clicks> [<axis 0|1>]", 3, 4, cmdMouseWheel},
        {"key", "<char|code> <virtual key> [shift] [alt] [ctrl] [down] [up]  (code: 13, 0x00)", 2, 7, cmdKey},
        {"menu", "<Plugins/Name/Item>", 1, 1, cmdMenu},
        {"command begin", "<name>", 1, 1, cmdCommand<driver::commandBegin>},
        {"command end", "<name>", 1, 1, cmdCommand<driver::commandEnd>},
        {"command once", "<name>", 1, 1, cmdCommand<driver::commandOnce>},
        {"set", "<dataref> <value|a,b,c>", 2, 2, cmdSet},
        {"expect dataref", "<dataref> <value|a,b,c> [<tolerance>]", 2, 3, cmdExpectDataref},
        {"message", "<signature|id|all> <message> [<param>]", 2, 3, cmdMessage},
        {"reload", "", 0, 0, cmdReload},
        {"expect plugin", "<signature> enabled|disabled|absent", 2, 2, cmdExpectPlugin},
        {"expect log", "<text>", 1, 1, cmdExpectLog},
        {"expect no log", "<text>", 1, 1, cmdExpectNoLog},
        {"expect file", "<path under the root> <text>", 2, 2, cmdExpectFile},
        {"print", "<text>", 1, 1, cmdPrint},
        {"widgets", "", 0, 0, cmdWidgets},
        {"screenshot", "<file.png>", 1, 1, cmdScreenshot},
    };
    return commands;
}

}  // namespace xpsim::runner
