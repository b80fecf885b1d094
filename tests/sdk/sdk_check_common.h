/* Checks shared by sdk_check.c and sdk_check.cpp that the fact-sheet tables do not
 * generate: every header included, the include guards, the export macros and the
 * five plug-in entry points declared the way plug-ins declare them. */
#include "XPLMDefs.h"
#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMUtilities.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMCamera.h"
#include "XPLMPlanes.h"
#include "XPLMNavigation.h"
#include "XPLMScenery.h"
#include "XPWidgetDefs.h"
#include "XPWidgets.h"
#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"

#if !defined(_XPLMDefs_h_) || !defined(_XPLMDataAccess_h_) || !defined(_XPLMProcessing_h_) \
    || !defined(_XPLMDisplay_h_) || !defined(_XPLMGraphics_h_) || !defined(_XPLMUtilities_h_) \
    || !defined(_XPLMMenus_h_) || !defined(_XPLMPlugin_h_) || !defined(_XPLMCamera_h_) \
    || !defined(_XPLMPlanes_h_) || !defined(_XPLMNavigation_h_) || !defined(_XPLMScenery_h_) \
    || !defined(_XPWidgetDefs_h_) || !defined(_XPWidgets_h_) || !defined(_XPStandardWidgets_h_) \
    || !defined(_XPUIGraphics_h_) || !defined(_XPWidgetUtils_h_)
#error "an SDK header lacks its include guard _<header>_h_"
#endif

/* Plug-ins are built without XPLM and XPWIDGETS: the SDK calls are plain imports. */
SDK_CHECK_TEXT(XPLM_API, "");
SDK_CHECK_TEXT(WIDGET_API, "");

/* What a plug-in exports; in C++ PLUGIN_API also gives the entry points C linkage,
 * which the redeclarations inside SDK_CHECK_BEGIN_DECLS confirm. */
PLUGIN_API int XPluginStart(char * outName, char * outSignature, char * outDescription);
PLUGIN_API void XPluginStop(void);
PLUGIN_API int XPluginEnable(void);
PLUGIN_API void XPluginDisable(void);
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFromWho, int inMessage, void * inParam);
SDK_CHECK_BEGIN_DECLS
int XPluginStart(char * outName, char * outSignature, char * outDescription);
void XPluginStop(void);
int XPluginEnable(void);
void XPluginDisable(void);
void XPluginReceiveMessage(XPLMPluginID inFromWho, int inMessage, void * inParam);
SDK_CHECK_END_DECLS

/* Names that later SDKs added stay undeclared: a 2.1 plug-in may use them itself. */
#if defined(XPLM_DEPRECATED) || defined(XPLM_MSG_ENTERED_VR) || defined(XPLM_MSG_EXITING_VR) \
    || defined(XPLM_MSG_RELEASE_PLANES) || defined(XPLM_MSG_FMOD_BANK_LOADED) \
    || defined(XPLM_MSG_FMOD_BANK_UNLOADING) || defined(XPLM_MSG_DATAREFS_ADDED)
#error "a macro of a later SDK is defined"
#endif
typedef struct sdk_absent_name XPLMFixedString150_t;
typedef struct sdk_absent_name XPLMDataRefInfo_t;
typedef struct sdk_absent_name XPLMCountDataRefs;
typedef struct sdk_absent_name XPLMFindAircraftMenu;
typedef struct sdk_absent_name XPLMAppendMenuItemWithCommand;
typedef struct sdk_absent_name XPLMPlaceUserAtLocation;
typedef struct sdk_absent_name XPLMHasKeyboardFocus;
typedef struct sdk_absent_name XPLMGetScreenBoundsGlobal;
typedef struct sdk_absent_name XPLMGetMagneticVariation;
typedef struct sdk_absent_name XPGetWidgetUnderlyingWindow;
typedef struct sdk_absent_name xplm_Phase_Modern3D;
typedef struct sdk_absent_name xplm_Language_Ukrainian;
typedef struct sdk_absent_name xplm_Host_Xavion;
typedef struct sdk_absent_name xplm_Nav_TACAN;
