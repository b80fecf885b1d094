// Scripts whose calls keep failing are disabled (TOOLS:DisableFailingScripts = N), so a
// broken script neither floods the log nor costs the others their frame time.
#pragma once

#include "core/ScriptTable.h"

namespace vorlith {

namespace detail {
// Whether the last call into a script raised; set by every dispatch.
extern bool gVL_CallRaised;
}  // namespace detail

// Counts a call into `script` that raised or not. The Nth failure in a row disables the
// script as the enable/disable window does: its XPluginDisable once, its status 0.
void VL_CountCall(PyObject* script, VL_ScriptStatus& status, bool raised);

}  // namespace vorlith
