// Script discovery (through the SDK's directory listing) and loading.

#include "core/ScriptFiles.h"

#include <cstring>
#include <string>
#include <vector>

#include "XPLMUtilities.h"
#include "core/Log.h"
#include "core/PythonErrors.h"
#include "core/Text.h"

namespace vorlith {

int GetScriptFiles(const char* folder) {
    static char names[4096];
    static char* indices[4096];
    int total = 0;
    int returned = 0;
    std::memset(names, 0, sizeof names);
    std::memset(indices, 0, sizeof indices);
    XPLMGetDirectoryContents(folder, 0, names, sizeof names, indices, 4096, &total, &returned);

    std::vector<std::string> files;
    for (int i = 0; i < returned && i < 4096 && indices[i]; ++i) files.emplace_back(indices[i]);

    std::memset(TestText, 0, sizeof TestText);
    std::vector<std::string> modules = VL_SelectScriptNames(files);
    int count = 0;
    for (const std::string& module : modules) VL_CopyText(TestText[count++], module);
    return count;
}

int LoadScript(const char* moduleName, TypeOfScript kind) {
    PyObject* name = VL_TextFromString(moduleName);
    PyObject* module = name ? PyImport_Import(name) : nullptr;
    Py_XDECREF(name);
    if (!module) {
        VL_PrintPythonError();
        VL_WriteToLogf("'%s' failed to load\n", moduleName);
        return 0;
    }
    PyObject* cls = PyObject_GetAttrString(module, "Vorlith");
    Py_DECREF(module);  // sys.modules keeps the module for the life of the interpreter
    if (!cls) {
        // Cleared, not printed: a pending error would break the next script's import.
        PyErr_Clear();
        VL_WriteToLog("Vorlith Class Missing\n");
        return 0;
    }
    PyObject* noArgs = PyTuple_New(0);
    PyObject* instance = noArgs ? PyObject_CallObject(cls, noArgs) : nullptr;
    Py_XDECREF(noArgs);
    Py_DECREF(cls);
    if (!instance) {
        VL_PrintPythonError();
        VL_WriteToLog("Vorlith Call failed\n");
        return 0;
    }
    VLTestTable->AddScriptId(instance, moduleName, kind);  // the table keeps this reference
    return 1;
}

void WriteScriptInfo(PyObject* scriptId) {
    std::string name, signature, description;
    if (VLTestTable) VLTestTable->GetScriptDescriptions(scriptId, name, signature, description);
    VL_WriteToLogf("Script '%s.py.'\n", name.c_str());
}

}  // namespace vorlith
