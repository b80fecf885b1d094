// The script table's own operations (the callback-list operations live in callbacks/).

#include "core/ScriptTable.h"

#include <cstring>

#include "core/ScriptNames.h"
#include "core/Text.h"

namespace vorlith {

VL_ScriptTable* VLTestTable = nullptr;
char szPopupText[4096] = {0};
char ScriptName[256] = {0};

namespace {
const char* OrEmpty(const char* text) { return text ? text : ""; }
}  // namespace

_VL_ScriptEntry* VL_ScriptTable::FindEntry(PyObject* scriptId) {
    for (_VL_ScriptEntry& entry : scripts_)
        if (entry.scriptId == scriptId) return &entry;
    return nullptr;
}

const _VL_ScriptEntry* VL_ScriptTable::FindEntry(PyObject* scriptId) const {
    return const_cast<VL_ScriptTable*>(this)->FindEntry(scriptId);
}

VL_ScriptStatusRef VL_ScriptTable::StatusOf(PyObject* scriptId) {
    if (_VL_ScriptEntry* entry = FindEntry(scriptId)) return entry->status;
    VL_ScriptStatusRef& status = pending_[scriptId];
    if (!status) status = std::make_shared<VL_ScriptStatus>();
    return status;
}

void VL_ScriptTable::AddScriptId(PyObject* scriptId, const char* moduleName, TypeOfScript type) {
    if (FindEntry(scriptId)) return;
    _VL_ScriptEntry entry;
    entry.scriptId = scriptId;
    auto pending = pending_.find(scriptId);
    if (pending != pending_.end()) {
        entry.status = pending->second;
        pending_.erase(pending);
    } else {
        entry.status = std::make_shared<VL_ScriptStatus>();
    }
    entry.status->enabled = 1;
    entry.moduleName = OrEmpty(moduleName);
    entry.type = type;
    entry.featureEnables.assign(static_cast<std::size_t>(numberOfFeatures_ > 0 ? numberOfFeatures_ : 0), 0);
    scripts_.push_back(entry);
}

void VL_ScriptTable::RemoveScriptId(PyObject* scriptId, TypeOfScript type) {
    for (auto it = scripts_.begin(); it != scripts_.end(); ++it) {
        if (it->scriptId == scriptId && it->type == type) {
            it->status->enabled = 0;
            scripts_.erase(it);
            return;
        }
    }
}

void VL_ScriptTable::ClearScriptTable() {
    for (_VL_ScriptEntry& entry : scripts_) entry.status->enabled = 0;
    scripts_.clear();
    pending_.clear();
}

int VL_ScriptTable::GetScriptTableSize() const { return static_cast<int>(scripts_.size()); }

PyObject* VL_ScriptTable::GetScriptId(int index) const {
    if (index < 0 || index >= GetScriptTableSize()) return nullptr;
    return scripts_[static_cast<std::size_t>(index)].scriptId;
}

void VL_ScriptTable::SetScriptId(int index, PyObject* scriptId) {
    if (index < 0 || index >= GetScriptTableSize()) return;
    // Records of the old id must not follow the entry to the new one.
    _VL_ScriptEntry& entry = scripts_[static_cast<std::size_t>(index)];
    int enabled = entry.status->enabled;
    entry.status->enabled = 0;
    entry.status = std::make_shared<VL_ScriptStatus>();
    entry.status->enabled = enabled;
    entry.scriptId = scriptId;
}

const char* VL_ScriptTable::GetScriptName(int index) const {
    if (index < 0 || index >= GetScriptTableSize()) return "";
    return scripts_[static_cast<std::size_t>(index)].name.c_str();
}

int VL_ScriptTable::GetScriptType(PyObject* scriptId) const {
    const _VL_ScriptEntry* entry = FindEntry(scriptId);
    return entry ? entry->type : 0;
}

int VL_ScriptTable::GetScriptEnabledStatus(PyObject* scriptId) const {
    const _VL_ScriptEntry* entry = FindEntry(scriptId);
    return entry ? entry->status->enabled : 0;
}

int VL_ScriptTable::SetScriptEnabledStatus(PyObject* scriptId, int status) {
    _VL_ScriptEntry* entry = FindEntry(scriptId);
    if (!entry) return 0;
    int previous = entry->status->enabled;
    entry->status->enabled = status;
    if (status) entry->status->failuresInARow = 0;  // a script enabled again starts afresh
    return previous;
}

void VL_ScriptTable::SetScriptDescriptions(PyObject* scriptId, const char* name, const char* signature,
                                           const char* description, TypeOfScript type) {
    _VL_ScriptEntry* entry = FindEntry(scriptId);
    if (!entry) return;
    entry->name = OrEmpty(name);
    entry->signature = OrEmpty(signature);
    entry->description = OrEmpty(description);
    entry->type = type;
}

void VL_ScriptTable::GetScriptDescriptions(PyObject* scriptId, std::string& name, std::string& signature,
                                           std::string& description, int* type) const {
    const _VL_ScriptEntry* entry = FindEntry(scriptId);
    if (!entry) return;
    name = entry->name;
    signature = entry->signature;
    description = entry->description;
    if (type) *type = entry->type;
}

PyObject* VL_ScriptTable::GetScriptIdFromSignature(const char* signature) const {
    for (const _VL_ScriptEntry& entry : scripts_)
        if (entry.signature == OrEmpty(signature)) return entry.scriptId;
    return nullptr;
}

PyObject* VL_ScriptTable::GetScriptIdFromModuleName(const char* moduleName) const {
    for (const _VL_ScriptEntry& entry : scripts_)
        if (entry.moduleName == OrEmpty(moduleName)) return entry.scriptId;
    return nullptr;
}

void VL_ScriptTable::AddScriptsToWidgets(int count) {
    szPopupText[0] = '\0';
    if (count == 0) {
        VL_CopyText(szPopupText, "No Scripts Found;");
        VL_CopyText(ScriptName, "No Scripts Found");
        return;
    }
    int slot = 0;
    for (const _VL_ScriptEntry& entry : scripts_) {
        if (slot < kVL_MaxScriptFiles) VL_CopyText(TestText[slot++], entry.moduleName);
        // Whole items only: a name cut at the buffer's end would be picked as a script.
        if (std::strlen(szPopupText) + entry.moduleName.size() + 1 >= sizeof szPopupText) continue;
        VL_AppendText(szPopupText, entry.moduleName.c_str());
        VL_AppendText(szPopupText, ";");
    }
    VL_CopyText(ScriptName, scripts_.empty() ? "" : scripts_.front().moduleName.c_str());
}

void VL_ScriptTable::AddFeature(int featureId, const char* featureName) {
    _VL_FeaturesListEntry feature;
    feature.featureId = featureId;
    VL_CopyText(feature.featureName, OrEmpty(featureName));
    features_.push_back(feature);
}

int VL_ScriptTable::GetFeatureIdFromFeatureName(const char* featureName) const {
    for (const _VL_FeaturesListEntry& feature : features_)
        if (std::strcmp(feature.featureName, OrEmpty(featureName)) == 0) return feature.featureId;
    return -1;
}

void VL_ScriptTable::SetFeatureEnable(PyObject* scriptId, int featureId, int value) {
    _VL_ScriptEntry* entry = FindEntry(scriptId);
    if (!entry || featureId < 0 || featureId >= static_cast<int>(entry->featureEnables.size())) return;
    entry->featureEnables[static_cast<std::size_t>(featureId)] = value;
}

int VL_ScriptTable::IsFeatureEnabled(PyObject* scriptId, int featureId) const {
    if (featureId == numberOfFeatures_) return 0;
    const _VL_ScriptEntry* entry = FindEntry(scriptId);
    if (!entry || featureId < 0 || featureId >= static_cast<int>(entry->featureEnables.size())) return 0;
    return entry->featureEnables[static_cast<std::size_t>(featureId)];
}

void VL_ScriptTable::ChangeSeparatorToDefault(char* text) {
    for (char* p = text; p && *p; ++p)
        if (*p == ':' || *p == '\\') *p = '/';
}

}  // namespace vorlith
