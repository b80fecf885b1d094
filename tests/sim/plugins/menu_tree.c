/* Test plug-in: hangs a menu tree under its own item of the Plugins menu and records
 * every pick (menu and item reference values, its own id) into events.txt next to its
 * binary. The item names and reference values are fixed; the top item is the plug-in's
 * folder name, so one binary can be installed as several plug-ins. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMUtilities.h"
#include "test_plugin.h"

#define MSG_DESTROY_MENU 0x7FF20001 /* XPLMDestroyMenu(param), errors recorded */

#define TOP_MENU_REF 100
#define MORE_MENU_REF 200
#define ITEM_CHECKED 4

static XPLMMenuID gMenu;

static void handler(void* menuRef, void* itemRef) {
    long item = (long)(intptr_t)itemRef;
    recordEvent("pick menu=%ld item=%ld myid=%d", (long)(intptr_t)menuRef, item, XPLMGetMyID());
    if (item == ITEM_CHECKED) {
        XPLMMenuCheck check;
        XPLMCheckMenuItemState(gMenu, 4, &check);
        XPLMCheckMenuItem(gMenu, 4, check == xplm_Menu_Checked ? xplm_Menu_Unchecked : xplm_Menu_Checked);
        XPLMCheckMenuItemState(gMenu, 4, &check);
        recordEvent("check=%d", check);
    }
}

static void onError(const char* message) { recordEvent("error %s", message); }

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    int top;
    int more;
    XPLMMenuID moreMenu;
    startTestPlugin(outName, outSignature, outDescription, "xpsim.test.menu.", "Builds a menu tree and records picks.");

    top = XPLMAppendMenuItem(XPLMFindPluginsMenu(), gName, NULL, 1);
    recordEvent("plugins item index=%d", top);
    gMenu = XPLMCreateMenu(gName, XPLMFindPluginsMenu(), top, handler, (void*)TOP_MENU_REF);
    XPLMAppendMenuItem(gMenu, "Alpha", (void*)1, 1);       /* 0 */
    XPLMAppendMenuItem(gMenu, "Beta/Gamma", (void*)2, 1);  /* 1 */
    XPLMAppendMenuSeparator(gMenu);                        /* 2 */
    XPLMAppendMenuItem(gMenu, "Off", (void*)3, 1);         /* 3 */
    XPLMEnableMenuItem(gMenu, 3, 0);
    XPLMAppendMenuItem(gMenu, "Checked", (void*)ITEM_CHECKED, 1); /* 4 */
    XPLMCheckMenuItem(gMenu, 4, xplm_Menu_Unchecked);
    more = XPLMAppendMenuItem(gMenu, "More", (void*)5, 1); /* 5 */
    moreMenu = XPLMCreateMenu("More", gMenu, more, handler, (void*)MORE_MENU_REF);
    XPLMAppendMenuItem(moreMenu, "Deep", (void*)6, 1);
    return 1;
}

TEST_PLUGIN_PLAIN_LIFECYCLE()
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    if (inMessage != MSG_DESTROY_MENU) return;
    XPLMSetErrorCallback(onError);
    XPLMDestroyMenu((XPLMMenuID)inParam);
    XPLMSetErrorCallback(NULL);
}
