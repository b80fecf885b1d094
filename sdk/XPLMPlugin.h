/* XPLMPlugin: finding and managing plug-ins, messages between plug-ins (and from the
 * simulator), and the features API of the X-Plane SDK 2.1.x. */
#ifndef _XPLMPlugin_h_
#define _XPLMPlugin_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/***************************************************************************
 * FINDING PLUGINS
 ***************************************************************************/

XPLM_API XPLMPluginID XPLMGetMyID(void);
XPLM_API int XPLMCountPlugins(void);
XPLM_API XPLMPluginID XPLMGetNthPlugin(int inIndex);
XPLM_API XPLMPluginID XPLMFindPluginByPath(const char* inPath);
XPLM_API XPLMPluginID XPLMFindPluginBySignature(const char* inSignature);
/* Each non-NULL buffer must hold at least 256 bytes. */
XPLM_API void XPLMGetPluginInfo(XPLMPluginID inPlugin,
                                char* outName,
                                char* outFilePath,
                                char* outSignature,
                                char* outDescription);

/***************************************************************************
 * ENABLING/DISABLING PLUG-INS
 ***************************************************************************/

XPLM_API int XPLMIsPluginEnabled(XPLMPluginID inPluginID);
XPLM_API int XPLMEnablePlugin(XPLMPluginID inPluginID);
XPLM_API void XPLMDisablePlugin(XPLMPluginID inPluginID);
XPLM_API void XPLMReloadPlugins(void);

/***************************************************************************
 * INTERPLUGIN MESSAGING
 ***************************************************************************/

/* Messages the simulator sends (sender XPLM_PLUGIN_XPLANE). */
#define XPLM_MSG_PLANE_CRASHED 101
#define XPLM_MSG_PLANE_LOADED 102
#define XPLM_MSG_AIRPORT_LOADED 103
#define XPLM_MSG_SCENERY_LOADED 104
#define XPLM_MSG_AIRPLANE_COUNT_CHANGED 105
#if defined(XPLM200)
#define XPLM_MSG_PLANE_UNLOADED 106
#endif
#if defined(XPLM210)
#define XPLM_MSG_WILL_WRITE_PREFS 107
#endif
#if defined(XPLM210)
#define XPLM_MSG_LIVERY_LOADED 108
#endif

XPLM_API void XPLMSendMessageToPlugin(XPLMPluginID inPlugin, int inMessage, void* inParam);

#if defined(XPLM200)
/***************************************************************************
 * Plugin Features API
 ***************************************************************************/

typedef void (*XPLMFeatureEnumerator_f)(const char* inFeature, void* inRef);

XPLM_API int XPLMHasFeature(const char* inFeature);
XPLM_API int XPLMIsFeatureEnabled(const char* inFeature);
XPLM_API void XPLMEnableFeature(const char* inFeature, int inEnable);
XPLM_API void XPLMEnumerateFeatures(XPLMFeatureEnumerator_f inEnumerator, void* inRef);
#endif /* XPLM200 */

#ifdef __cplusplus
}
#endif

#endif
