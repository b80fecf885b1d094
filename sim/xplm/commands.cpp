// The command system: the simulator's built-in commands, commands plug-ins create,
// handler chains before and after the simulator's own action, and the begin /
// continue / end phases of held commands.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "XPLMUtilities.h"
#include "handles.h"
#include "host.h"
#include "tsv.h"
#include "utilities_internal.h"
#include "world_internal.h"

namespace xpsim {

extern const char commands_tsv[];
extern const std::size_t commands_tsv_size;

namespace {

struct CommandHandler {
    int plugin;
    XPLMCommandCallback_f callback;
    bool before;
    void* refcon;
    uint64_t serial;  // identifies this registration while a chain runs
};

struct Command {
    std::string name;
    std::string description;
    bool builtIn = false;
    // Called in registration order: the SDK does not give an order among handlers.
    std::vector<CommandHandler> handlers;
    std::vector<int> holders;              // one plug-in id per Begin not yet ended
};

struct CommandState {
    HandleTable<Command> commands{HandleKind::Command};
    std::unordered_map<std::string, void*> byName;
    uint64_t nextSerial = 1;
    bool builtInsLoaded = false;
};

CommandState& state() {
    static CommandState s;
    return s;
}

void* addCommand(const std::string& name, const std::string& description, bool builtIn) {
    CommandState& s = state();
    Command command;
    command.name = name;
    command.description = description;
    command.builtIn = builtIn;
    void* ref = s.commands.add(std::move(command));
    s.byName.emplace(name, ref);
    return ref;
}

// The built-ins come from the embedded table ("name<TAB>description", a header line first).
void loadBuiltIns() {
    CommandState& s = state();
    if (s.builtInsLoaded) return;
    s.builtInsLoaded = true;
    forEachTsvRow(commands_tsv, commands_tsv_size, [&](const std::vector<std::string_view>& fields) {
        std::string name(fields[0]);
        std::string description(fields.size() > 1 ? fields[1] : std::string_view());
        if (!name.empty() && !s.byName.count(name)) addCommand(name, description, true);
    });
}

Command* findValid(const char* function, void* ref) {
    loadBuiltIns();
    Command* command = state().commands.get(ref);
    if (!command) Host::get().reportError("%s: %p is not a valid command", function, ref);
    return command;
}

// Runs one handler group; false when a handler answered 0 and so stopped the chain.
bool runHandlers(void* ref, const std::vector<CommandHandler>& chain, bool before, XPLMCommandPhase phase) {
    for (const CommandHandler& handler : chain) {
        if (handler.before != before) continue;
        // A handler unregistered by an earlier one in this chain is not called.
        Command* command = state().commands.get(ref);
        if (!command) return false;
        bool registered = false;
        for (const CommandHandler& h : command->handlers) registered = registered || h.serial == handler.serial;
        if (!registered || !isPluginEnabled(handler.plugin)) continue;
        CallingPlugin calling(handler.plugin);
        if (handler.callback(ref, phase, handler.refcon) == 0) return false;
    }
    return true;
}

const char* phaseName(XPLMCommandPhase phase) {
    switch (phase) {
        case xplm_CommandBegin: return "begin";
        case xplm_CommandContinue: return "continue";
        default: return "end";
    }
}

// Phases dispatched while another is (handlers running commands). The SDK does not say
// how deeply handlers may do that; a handler that runs its own command would otherwise
// recurse until the stack overflows, so past this depth a phase is dropped.
int gDispatchDepth = 0;
constexpr int kMaxDispatchDepth = 32;

// Before-handlers, the simulator's own action, after-handlers; a 0 from any handler
// ends the phase there. The SDK does not say whether a 0 from an after-handler stops
// the later after-handlers; we stop them too, as it does before the simulator's action.
void dispatch(void* ref, XPLMCommandPhase phase) {
    Command* command = state().commands.get(ref);
    if (!command) return;
    NestingGuard nesting(gDispatchDepth, kMaxDispatchDepth);
    if (!nesting) {
        Host::get().reportError("command %s: handlers run commands %d deep; its %s phase is dropped",
                                command->name.c_str(), kMaxDispatchDepth, phaseName(phase));
        return;
    }
    const std::vector<CommandHandler> chain = command->handlers;  // handlers may change it
    if (!runHandlers(ref, chain, true, phase)) return;
    command = state().commands.get(ref);
    if (!command) return;
    // The simulator's own action, recorded for begin and end only: continue runs every frame.
    if (command->builtIn && phase != xplm_CommandContinue)
        Host::get().log("xpsim: command " + command->name + " " + phaseName(phase));
    if (command->builtIn && phase == xplm_CommandBegin) cameraSimulatorCommand(command->name);
    runHandlers(ref, chain, false, phase);
}

void begin(void* ref, Command& command) {
    command.holders.push_back(Host::get().currentPlugin);
    dispatch(ref, xplm_CommandBegin);
}

// Ends one hold; the caller's own hold first, so an unload ends the right ones.
bool end(void* ref, Command& command, int plugin) {
    if (command.holders.empty()) return false;
    auto it = command.holders.begin();
    for (auto h = command.holders.begin(); h != command.holders.end(); ++h) {
        if (*h == plugin) {
            it = h;
            break;
        }
    }
    command.holders.erase(it);
    dispatch(ref, xplm_CommandEnd);
    return true;
}

void* findByName(const std::string& name, std::string* error) {
    loadBuiltIns();
    auto it = state().byName.find(name);
    if (it == state().byName.end()) {
        if (error) *error = "no command named '" + name + "'";
        return nullptr;
    }
    return it->second;
}

}  // namespace

void commandsFrame() {
    // The SDK does not give the continue rate; we send one per frame per held command
    // (however many sources hold it). Commands begun during this frame's handlers get
    // their first continue next frame.
    std::vector<void*> held;
    state().commands.forEach([&](void* ref, Command& command) {
        if (!command.holders.empty()) held.push_back(ref);
    });
    for (void* ref : held) {
        Command* command = state().commands.get(ref);
        if (command && !command->holders.empty()) dispatch(ref, xplm_CommandContinue);
    }
}

void forgetPluginCommands(int plugin) {
    // Commands outlive their creator; only its handlers go, and the holds it left open
    // are ended for the remaining handlers, which see a balanced begin/end.
    std::vector<void*> held;
    state().commands.forEach([&](void* ref, Command& command) {
        auto& handlers = command.handlers;
        for (size_t i = handlers.size(); i-- > 0;) {
            if (handlers[i].plugin == plugin) handlers.erase(handlers.begin() + static_cast<long>(i));
        }
        for (int holder : command.holders) {
            if (holder == plugin) held.push_back(ref);
        }
    });
    for (void* ref : held) {
        Command* command = state().commands.get(ref);
        if (command) {
            CallingPlugin calling(XPLM_PLUGIN_XPLANE);
            end(ref, *command, plugin);
        }
    }
}

void resetCommands() {
    CommandState& s = state();
    s.commands.clear();
    s.byName.clear();
    s.builtInsLoaded = false;
}

namespace driver {

bool commandBegin(const std::string& name, std::string* error) {
    void* ref = findByName(name, error);
    if (!ref) return false;
    begin(ref, *state().commands.get(ref));
    return true;
}

bool commandEnd(const std::string& name, std::string* error) {
    void* ref = findByName(name, error);
    if (!ref) return false;
    if (!end(ref, *state().commands.get(ref), Host::get().currentPlugin)) {
        if (error) *error = "command '" + name + "' was not begun";
        return false;
    }
    return true;
}

bool commandOnce(const std::string& name, std::string* error) {
    return commandBegin(name, error) && commandEnd(name, error);
}

}  // namespace driver
}  // namespace xpsim

using xpsim::Host;

extern "C" {

XPLM_API XPLMCommandRef XPLMFindCommand(const char* inName) {
    if (!inName) {
        Host::get().reportError("XPLMFindCommand: the name is NULL");
        return nullptr;
    }
    return xpsim::findByName(inName, nullptr);
}

XPLM_API XPLMCommandRef XPLMCreateCommand(const char* inName, const char* inDescription) {
    if (!inName || !*inName) {
        Host::get().reportError("XPLMCreateCommand: the name is NULL or empty");
        return nullptr;
    }
    if (void* existing = xpsim::findByName(inName, nullptr)) return existing;
    return xpsim::addCommand(inName, inDescription ? inDescription : "", false);
}

XPLM_API void XPLMCommandBegin(XPLMCommandRef inCommand) {
    if (xpsim::Command* command = xpsim::findValid("XPLMCommandBegin", inCommand)) xpsim::begin(inCommand, *command);
}

XPLM_API void XPLMCommandEnd(XPLMCommandRef inCommand) {
    xpsim::Command* command = xpsim::findValid("XPLMCommandEnd", inCommand);
    if (command && !xpsim::end(inCommand, *command, Host::get().currentPlugin))
        Host::get().reportError("XPLMCommandEnd: command %s was not begun", command->name.c_str());
}

XPLM_API void XPLMCommandOnce(XPLMCommandRef inCommand) {
    xpsim::Command* command = xpsim::findValid("XPLMCommandOnce", inCommand);
    if (!command) return;
    xpsim::begin(inCommand, *command);
    xpsim::end(inCommand, *command, Host::get().currentPlugin);
}

XPLM_API void XPLMRegisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler, int inBefore,
                                         void* inRefcon) {
    xpsim::Command* command = xpsim::findValid("XPLMRegisterCommandHandler", inComand);
    if (!command) return;
    if (!inHandler) return Host::get().reportError("XPLMRegisterCommandHandler: the handler is NULL");
    command->handlers.push_back(
        {Host::get().currentPlugin, inHandler, inBefore != 0, inRefcon, xpsim::state().nextSerial++});
}

XPLM_API void XPLMUnregisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler, int inBefore,
                                           void* inRefcon) {
    xpsim::Command* command = xpsim::findValid("XPLMUnregisterCommandHandler", inComand);
    if (!command) return;
    const int plugin = Host::get().currentPlugin;
    auto& handlers = command->handlers;
    for (auto it = handlers.begin(); it != handlers.end(); ++it) {
        if (it->plugin == plugin && it->callback == inHandler && it->before == (inBefore != 0) &&
            it->refcon == inRefcon) {
            handlers.erase(it);
            return;
        }
    }
    Host::get().reportError("XPLMUnregisterCommandHandler: no such handler for %s", command->name.c_str());
}

}  // extern "C"
