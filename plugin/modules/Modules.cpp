// The fixed order in which the modules are registered at every interpreter start. A
// module that is not built yet keeps its place as a comment.

#include "modules/Modules.h"

#include "callbacks/Registry.h"

namespace vorlith {

void VL_RegisterModules() {
    static void (*const inits[])() = {
        // TembrookUtilities
        initXPLMDefs,
        initXPLMCamera,
        initXPLMDataAccess,
        initXPLMDisplay,
        initXPLMGraphics,
        initXPLMMenus,
        initXPLMNavigation,
        initXPLMProcessing,
        initXPLMUtilities,
        initXPLMPlanes,
        initXPLMPlugin,
        initXPLMScenery,
        // XPWidgetDefs, XPWidgets, XPStandardWidgets, XPUIGraphics, XPWidgetUtils
        initPythonScriptMessaging,
        initTembrookVCUtilities,
    };
    // A new interpreter: records of the previous one are never called again.
    VL_StartCallbackGeneration();
    for (auto init : inits) init();
}

}  // namespace vorlith
