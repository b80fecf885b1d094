#include "tools/Quarantine.h"

#include "core/Lifecycle.h"
#include "core/Log.h"
#include "modules/xplm/Binding.h"
#include "ui/ControlPanel.h"

namespace vorlith {

namespace detail {
bool gVL_CallRaised = false;
}  // namespace detail

void VL_CountCall(PyObject* script, VL_ScriptStatus& status, bool raised) {
    if (!raised) {
        status.failuresInARow = 0;
        return;
    }
    if (++status.failuresInARow < gVL_DisableFailingScripts || !status.enabled || !VLTestTable) return;
    // The module name, not the script's own: the file is what its author edits.
    VL_WriteToLogf("Script '%s.py' disabled: %d calls in a row raised an error\n",
                   VL_ScriptModuleName(script).c_str(), status.failuresInARow);
    CallXPluginDisable(script, 1);
    VLTestTable->SetScriptEnabledStatus(script, 0);
    RefreshScriptAdmin();
}

}  // namespace vorlith
