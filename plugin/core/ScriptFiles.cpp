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

// The listing is read page by page (the SDK's first-index argument), so that neither
// the 4096-byte name buffer nor compiled files beside the sources push scripts out.
int GetScriptFiles(const char* folder) {
    static char names[4096];
    static char* indices[4096];
    std::vector<std::string> files;
    int total = 0;
    while (true) {
        int returned = 0;
        std::memset(names, 0, sizeof names);
        std::memset(indices, 0, sizeof indices);
        XPLMGetDirectoryContents(folder, static_cast<int>(files.size()), names, sizeof names, indices,
                                 4096, &total, &returned);
        for (int i = 0; i < returned && i < 4096 && indices[i]; ++i) files.emplace_back(indices[i]);
        // No progress (a name that fits no buffer) ends the listing rather than looping.
        if (returned <= 0 || static_cast<int>(files.size()) >= total) break;
    }

    std::memset(TestText, 0, sizeof TestText);
    int leftOut = 0;
    std::vector<std::string> modules = VL_SelectScriptNames(files, &leftOut);
    int count = 0;
    for (const std::string& module : modules) VL_CopyText(TestText[count++], module);
    if (leftOut > 0)
        VL_WriteToLogf("%d script files left out: at most %d scripts are loaded\n", leftOut,
                       kVL_MaxScriptFiles);
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
