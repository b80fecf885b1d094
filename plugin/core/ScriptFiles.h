// Finding the scripts in the scripts folder and loading them: import the module,
// create its Vorlith instance, enter it in the script table.
#pragma once

#include "core/ScriptNames.h"
#include "core/ScriptTable.h"

namespace vorlith {

// Lists folder (a simulator path of the scripts folder) into TestText; returns the count.
int GetScriptFiles(const char* folder);
// Imports moduleName and enters its Vorlith instance in VLTestTable; 1 on success.
// Call holding the interpreter (inside a PythonGuard).
int LoadScript(const char* moduleName, TypeOfScript kind);
// Logs "Script '<name>.py.'" for a script that left a registration behind.
void WriteScriptInfo(PyObject* scriptId);

}  // namespace vorlith
