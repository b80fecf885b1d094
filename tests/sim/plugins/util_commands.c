/* Test plug-in: installs an error callback first thing, makes one bad SDK call while
 * still disabled, and hangs a before- and an after-handler on a command of its own
 * ("xpsim/test/<folder name>") and on sim/operation/pause_toggle. Errors and handler
 * calls go into events.txt next to its binary; a file "stop_before" there makes the
 * before-handler answer 0. The message MSG_BEGIN_OWN makes it begin its own command
 * and leave it held. */
#include <stdio.h>
#include <string.h>

#include "XPLMPlugin.h"
#include "XPLMUtilities.h"
#include "test_plugin.h"

#define MSG_BEGIN_OWN 0x7FF00010

static void onError(const char* message) { recordEvent("error %s myid=%d", message, XPLMGetMyID()); }

static int before(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon) {
    recordEvent("before %s phase=%d myid=%d", (const char*)refcon, phase, XPLMGetMyID());
    return folderHasFile("stop_before") ? 0 : 1;
}

static int after(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon) {
    recordEvent("after %s phase=%d myid=%d", (const char*)refcon, phase, XPLMGetMyID());
    return 1;
}

static char gCommandName[600];
static const char kPause[] = "sim/operation/pause_toggle";

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    XPLMCommandRef own;
    XPLMCommandRef pause;
    startTestPlugin(outName, outSignature, outDescription, "xpsim.test.commands.",
                    "Records command phases and SDK errors.");
    XPLMSetErrorCallback(onError);
    XPLMCommandEnd(XPLMFindCommand("sim/none/none")); /* never begun: a programming error */

    snprintf(gCommandName, sizeof gCommandName, "xpsim/test/%s", gName);
    own = XPLMCreateCommand(gCommandName, "A test plug-in's command");
    pause = XPLMFindCommand(kPause);
    XPLMRegisterCommandHandler(own, before, 1, gCommandName);
    XPLMRegisterCommandHandler(own, after, 0, gCommandName);
    XPLMRegisterCommandHandler(pause, before, 1, (void*)kPause);
    XPLMRegisterCommandHandler(pause, after, 0, (void*)kPause);
    return 1;
}

TEST_PLUGIN_PLAIN_LIFECYCLE()
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    if (inMessage == MSG_BEGIN_OWN) XPLMCommandBegin(XPLMFindCommand(gCommandName));
}
