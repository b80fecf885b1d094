// The module PythonScriptMessaging: scripts find each other in the script table, read
// each other's descriptions, switch each other on and off, and send each other messages
// that arrive through the receiver's XPluginReceiveMessage.

#include <string>

#include "core/Lifecycle.h"
#include "core/PythonErrors.h"
#include "core/ScriptTable.h"
#include "modules/Modules.h"
#include "platform/PythonCompat.h"

namespace vorlith {

namespace {

PyObject* NewReferenceOrNone(PyObject* object) {
    if (!object) Py_RETURN_NONE;
    Py_INCREF(object);
    return object;
}

int TableSize() { return VLTestTable ? VLTestTable->GetScriptTableSize() : 0; }

PyObject* PY_CountScripts(PyObject*, PyObject*) { return VL_IntFromLong(TableSize()); }

// An index outside the table raises IndexError, as a Python sequence would, rather than
// answering None, which a script would only notice later as a missing method.
PyObject* PY_GetNthScript(PyObject*, PyObject* args) {
    int index;
    if (!PyArg_ParseTuple(args, "i", &index)) return nullptr;
    if (index < 0 || index >= TableSize()) {
        PyErr_Format(PyExc_IndexError, "script index %d out of range (%d scripts)", index, TableSize());
        return nullptr;
    }
    return NewReferenceOrNone(VLTestTable->GetScriptId(index));
}

PyObject* PY_FindScriptBySignature(PyObject*, PyObject* args) {
    VL_Text signature;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &signature)) return nullptr;
    return NewReferenceOrNone(VLTestTable ? VLTestTable->GetScriptIdFromSignature(signature.c_str())
                                          : nullptr);
}

PyObject* PY_GetScriptInfo(PyObject*, PyObject* args) {
    PyObject* script;
    if (!PyArg_ParseTuple(args, "O", &script)) return nullptr;
    std::string name, signature, description;
    if (VLTestTable) VLTestTable->GetScriptDescriptions(script, name, signature, description);
    PyObject* texts[3] = {VL_TextFromString(name.c_str()), VL_TextFromString(signature.c_str()),
                          VL_TextFromString(description.c_str())};
    PyObject* info = texts[0] && texts[1] && texts[2] ? PyTuple_Pack(3, texts[0], texts[1], texts[2])
                                                      : nullptr;
    for (PyObject* text : texts) Py_XDECREF(text);
    return info;
}

PyObject* PY_IsScriptEnabled(PyObject*, PyObject* args) {
    PyObject* script;
    if (!PyArg_ParseTuple(args, "O", &script)) return nullptr;
    return VL_IntFromLong(VLTestTable ? VLTestTable->GetScriptEnabledStatus(script) : 0);
}

// Only the status changes; the script's XPluginEnable / XPluginDisable are not called.
// Enabling answers the previous status, disabling always 1.
PyObject* PY_EnableScript(PyObject*, PyObject* args) {
    PyObject* script;
    if (!PyArg_ParseTuple(args, "O", &script)) return nullptr;
    return VL_IntFromLong(VLTestTable ? VLTestTable->SetScriptEnabledStatus(script, 1) : 0);
}

PyObject* PY_DisableScript(PyObject*, PyObject* args) {
    PyObject* script;
    if (!PyArg_ParseTuple(args, "O", &script)) return nullptr;
    if (VLTestTable) VLTestTable->SetScriptEnabledStatus(script, 0);
    return VL_IntFromLong(1);
}

// None as recipient: every script in table order, the sender too. A recipient that is
// disabled or no script at all gets nothing. The sender is told 1 either way.
PyObject* PY_SendMessageToScript(PyObject*, PyObject* args) {
    PyObject *sender, *recipient, *parameter;
    long message;
    if (!PyArg_ParseTuple(args, "OOlO", &sender, &recipient, &message, &parameter)) return nullptr;
    if (recipient != Py_None) {
        CallScriptReceiveMessage(recipient, sender, message, parameter);
    } else {
        // A receiver may change the table: its size is read on every turn.
        for (int i = 0; i < TableSize(); ++i)
            CallScriptReceiveMessage(VLTestTable->GetScriptId(i), sender, message, parameter);
    }
    return VL_IntFromLong(1);
}

PyMethodDef PythonScriptMessagingMethods[] = {
    {"VL_CountScripts", PY_CountScripts, VL_METH_ARGS, "Count the number of scripts."},
    {"VL_GetNthScript", PY_GetNthScript, VL_METH_ARGS, "Get the Nth scripts."},
    {"VL_FindScriptBySignature", PY_FindScriptBySignature, VL_METH_ARGS, "Find script by signature."},
    {"VL_GetScriptInfo", PY_GetScriptInfo, VL_METH_ARGS, "Get script info."},
    {"VL_IsScriptEnabled", PY_IsScriptEnabled, VL_METH_ARGS, "Is the script enabled."},
    {"VL_EnableScript", PY_EnableScript, VL_METH_ARGS, "Enable the script."},
    {"VL_DisableScript", PY_DisableScript, VL_METH_ARGS, "Disable the script."},
    {"VL_SendMessageToScript", PY_SendMessageToScript, VL_METH_ARGS, "Send message to a script."},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

void initPythonScriptMessaging() {
    if (!VL_CreateModule("PythonScriptMessaging", PythonScriptMessagingMethods)) VL_PrintPythonError();
}

}  // namespace vorlith
