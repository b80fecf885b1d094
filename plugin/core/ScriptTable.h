// VL_ScriptTable: the loaded scripts (keyed by their Vorlith instance), what each
// script's XPluginStart said about itself, its enabled state and feature switches, the
// simulator's feature list and the interpreter's run state. One instance: VLTestTable.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/PythonCompat.h"

namespace vorlith {

// The kind of a loaded script; scripts found in the scripts folder are the only kind.
enum TypeOfScript { VL_NoScript = 0, VL_StandardScript = 1 };

// Whether a script may be called, where a callback record reaches it without a search:
// the table's entry and the script's records share it. 0 once the script is disabled
// or leaves the table.
// Where a script's time goes, by kind of call: counted by the dispatch, read and emptied
// once a second by the performance table.
enum VL_CostKind : unsigned char {
    VL_CostFlightLoops, VL_CostDrawing, VL_CostWidgets, VL_CostCommands, VL_CostData, VL_CostOther,
    VL_CostKinds
};
struct VL_CallCost {
    unsigned calls = 0;               // every call
    unsigned timed = 0;               // the calls that were timed
    unsigned long long scriptTicks = 0;  // in the script's callable, over the timed calls
    unsigned long long ownTicks = 0;     // in the plug-in around it, over the timed calls
};
struct VL_ScriptStatus {
    int enabled = 0;
    int failuresInARow = 0;  // calls into the script that raised since its last good one
    VL_CallCost cost[VL_CostKinds];
};
using VL_ScriptStatusRef = std::shared_ptr<VL_ScriptStatus>;

struct _VL_ScriptEntry {
    PyObject* scriptId = nullptr;  // holds the reference taken when the instance was made
    VL_ScriptStatusRef status;     // the enabled status: 1 when the entry is added
    std::string moduleName;
    std::string name;
    std::string signature;
    std::string description;
    TypeOfScript type = VL_StandardScript;
    std::vector<int> featureEnables;
};

struct _VL_FeaturesListEntry {
    int featureId = 0;
    char featureName[256] = {0};
};

// The callback registry's types (callbacks/Registry.h).
// Which find may match a record, as the SDK tells its registrations apart: by a handle
// it returned (windows, hot keys, menus, created flight loops, data accessors, the
// camera), or by the callback and its reference value (flight loops registered with
// XPLMRegisterFlightLoopCallback, draw callbacks, key sniffers, commands...). Either is
// for lists that hold one kind only.
enum class VL_FoundBy { Either, Handle, Callable };
struct _CallbackList;
struct _WidgetCallbackListEntry;
using VL_CallbackListType = std::vector<_CallbackList*>;
using VL_WidgetCallbackListType = std::vector<_WidgetCallbackListEntry*>;

class VL_ScriptTable {
public:
    // --- scripts (lookups by id are linear, in table order, first match wins) ---
    void AddScriptId(PyObject* scriptId, const char* moduleName, TypeOfScript type);
    void RemoveScriptId(PyObject* scriptId, TypeOfScript type);
    void ClearScriptTable();  // the Python references are not released here
    int GetScriptTableSize() const;
    PyObject* GetScriptId(int index) const;  // null outside the table
    void SetScriptId(int index, PyObject* scriptId);
    const char* GetScriptName(int index) const;  // "" outside the table
    int GetScriptType(PyObject* scriptId) const;
    int GetScriptEnabledStatus(PyObject* scriptId) const;  // unknown ids count as disabled
    int SetScriptEnabledStatus(PyObject* scriptId, int status);  // returns the previous status
    void SetScriptDescriptions(PyObject* scriptId, const char* name, const char* signature,
                               const char* description, TypeOfScript type);
    // Outputs are left untouched for an unknown id; type may be null.
    void GetScriptDescriptions(PyObject* scriptId, std::string& name, std::string& signature,
                               std::string& description, int* type = nullptr) const;
    PyObject* GetScriptIdFromSignature(const char* signature) const;
    PyObject* GetScriptIdFromModuleName(const char* moduleName) const;
    const _VL_ScriptEntry* FindEntry(PyObject* scriptId) const;
    // The status a callback record of scriptId keeps for its dispatch. A script not in
    // the table yet (registering from its constructor) gets the one its entry will take.
    VL_ScriptStatusRef StatusOf(PyObject* scriptId);

    // Fills the control panel's script popup text from the first `count` entries.
    void AddScriptsToWidgets(int count);

    int GetPythonRunState() const { return pythonRunState_; }
    void SetPythonRunState(int state) { pythonRunState_ = state; }
    int GetNumberOfWidgetScriptUsers() const { return numberOfWidgetScriptUsers_; }

    // --- the simulator's features and each script's switches for them ---
    void AddFeature(int featureId, const char* featureName);
    void SetNumberOfFeatures(int count) { numberOfFeatures_ = count; }
    int GetNumberOfFeatures() const { return numberOfFeatures_; }
    int GetFeatureIdFromFeatureName(const char* featureName) const;  // -1 if none
    void SetFeatureEnable(PyObject* scriptId, int featureId, int value);
    int IsFeatureEnabled(PyObject* scriptId, int featureId) const;  // 0 outside the flags

    // Every ':' and '\\' of text becomes '/'.
    static void ChangeSeparatorToDefault(char* text);

    // --- callback list operations (defined with the lists in callbacks/Registry.cpp) ---
    // A position is a record's index in its list; found is set to 1 or 0, and position
    // is left as it was when nothing matches. Finds see only the running interpreter's
    // records and compare Python objects by identity.
    //
    // A registration: holder = AddCallback(list, self, nullptr, callable, refcon[, foundBy]);
    // hand the holder to the SDK; if the SDK returned a handle, UpdateCallback(list,
    // holder, handle). A removal: FindCallback by callable and refcon, or by handle, as
    // the SDK identifies the registration; unregister from the SDK; DeleteCallback.
    // foundBy says which find may match the record (see VL_FoundBy); a record whose
    // handle is stored with UpdateCallback is found by handle only.
    _CallbackList* AddCallback(VL_CallbackListType& list, PyObject* scriptId, void* handle,
                               PyObject* callable, void* refcon,
                               VL_FoundBy foundBy = VL_FoundBy::Either);
    _CallbackList* FindCallback(VL_CallbackListType& list, PyObject* scriptId, PyObject* callable,
                                void* refcon, int& found, int& position);
    // A null handle matches only records found by handle that have none (the camera's).
    _CallbackList* FindCallback(VL_CallbackListType& list, PyObject* scriptId, void* handle,
                                int& found, int& position);
    _CallbackList* FindCallback(VL_CallbackListType& list, PyObject* callable, void* refcon,
                                int& found, int& position, int unused);
    // Stores the SDK's handle in the record the registration just made: the holder's.
    void UpdateCallback(VL_CallbackListType& list, _CallbackList* holder, void* handle);
    // The same for a caller that kept no holder: the newest record of scriptId and
    // callable, which is the one just made even when the callable serves other records.
    void UpdateCallback(VL_CallbackListType& list, PyObject* scriptId, PyObject* callable,
                        void* handle);
    void DeleteCallback(VL_CallbackListType& list, _CallbackList* holder, int position);
    _WidgetCallbackListEntry* AddWidgetCallback(VL_WidgetCallbackListType& list, PyObject* scriptId,
                                                void* widget, PyObject* callable, int isRoot,
                                                void* container);
    _WidgetCallbackListEntry* FindWidgetCallback(VL_WidgetCallbackListType& list, PyObject* scriptId,
                                                 void* widget, int& found, int& position);
    _WidgetCallbackListEntry* FindWidgetCallback(VL_WidgetCallbackListType& list, void* widget,
                                                 int& found, int& position);
    void UpdateWidgetCallback(VL_WidgetCallbackListType& list, PyObject* scriptId, void* widget,
                              PyObject* callable);
    void DeleteWidgetCallback(VL_WidgetCallbackListType& list, _WidgetCallbackListEntry* record,
                              int position);
    // Removes the records of the widget's direct children, whatever their script.
    void DeleteWidgetChildCallbacks(VL_WidgetCallbackListType& list, PyObject* scriptId,
                                    void* widget);

private:
    _VL_ScriptEntry* FindEntry(PyObject* scriptId);

    std::vector<_VL_ScriptEntry> scripts_;
    int numberOfWidgetScriptUsers_ = 0;
    int pythonRunState_ = 0;
    int numberOfFeatures_ = 0;
    std::vector<_VL_FeaturesListEntry> features_;
    // Statuses handed out for scripts not in the table yet, until their entry takes them.
    std::unordered_map<PyObject*, VL_ScriptStatusRef> pending_;
};

// The one table, from XPluginStart to XPluginStop.
extern VL_ScriptTable* VLTestTable;

// The control panel's script popup: module names separated by ';', and the selected name.
extern char szPopupText[4096];
extern char ScriptName[256];

}  // namespace vorlith
