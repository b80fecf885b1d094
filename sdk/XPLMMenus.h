/* XPLMMenus: plug-in menus in the menu bar and in the Plugins menu of the X-Plane
 * SDK 2.1.x. Menus are opaque ids; items are addressed by their 0-based index. */
#ifndef _XPLMMenus_h_
#define _XPLMMenus_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    xplm_Menu_NoCheck = 0,
    xplm_Menu_Unchecked = 1,
    xplm_Menu_Checked = 2
};
typedef int XPLMMenuCheck;

typedef void * XPLMMenuID;

typedef void (*XPLMMenuHandler_f)(void * inMenuRef, void * inItemRef);

XPLM_API XPLMMenuID XPLMFindPluginsMenu(void);
XPLM_API XPLMMenuID XPLMCreateMenu(const char *      inName,
                                   XPLMMenuID        inParentMenu,
                                   int               inParentItem,
                                   XPLMMenuHandler_f inHandler,
                                   void *            inMenuRef);
XPLM_API void       XPLMDestroyMenu(XPLMMenuID inMenuID);
XPLM_API void       XPLMClearAllMenuItems(XPLMMenuID inMenuID);
XPLM_API int        XPLMAppendMenuItem(XPLMMenuID   inMenu,
                                       const char * inItemName,
                                       void *       inItemRef,
                                       int          inForceEnglish);
XPLM_API void       XPLMAppendMenuSeparator(XPLMMenuID inMenu);
XPLM_API void       XPLMSetMenuItemName(XPLMMenuID   inMenu,
                                        int          inIndex,
                                        const char * inItemName,
                                        int          inForceEnglish);
XPLM_API void       XPLMCheckMenuItem(XPLMMenuID inMenu, int index, XPLMMenuCheck inCheck);
XPLM_API void       XPLMCheckMenuItemState(XPLMMenuID inMenu, int index, XPLMMenuCheck * outCheck);
XPLM_API void       XPLMEnableMenuItem(XPLMMenuID inMenu, int index, int enabled);
#if defined(XPLM210)
XPLM_API void       XPLMRemoveMenuItem(XPLMMenuID inMenu, int inIndex);
#endif

#ifdef __cplusplus
}
#endif

#endif
