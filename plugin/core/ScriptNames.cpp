// The listing rules: ".py" by the last dot, ".pyc" by the first, the "VL_"/"vl_" marker
// anywhere in the name, and the plain substring test that keeps a compiled file out
// when a name already listed occurs inside it.

#include "core/ScriptNames.h"

namespace vorlith {

char TestText[kVL_MaxScriptFiles][kVL_MaxScriptNameLength + 1];

namespace {

bool HasMarker(const std::string& file) {
    return file.find("VL_") != std::string::npos || file.find("vl_") != std::string::npos;
}

void Take(std::vector<std::string>& names, const std::string& file, std::size_t dot) {
    std::string name = file.substr(0, dot);
    if (name.size() > static_cast<std::size_t>(kVL_MaxScriptNameLength))
        name.resize(static_cast<std::size_t>(kVL_MaxScriptNameLength));
    names.push_back(name);
}

}  // namespace

// Every script is selected, then the list is cut at the bound: the first 256 are those
// a listing that stops at the bound would take.
std::vector<std::string> VL_SelectScriptNames(const std::vector<std::string>& files, int* leftOut) {
    std::vector<std::string> names;
    const std::size_t limit = static_cast<std::size_t>(kVL_MaxScriptFiles);
    for (const std::string& file : files) {
        std::size_t dot = file.rfind('.');
        if (dot != std::string::npos && file.compare(dot, std::string::npos, ".py") == 0 && HasMarker(file))
            Take(names, file, dot);
    }
    for (const std::string& file : files) {
        std::size_t dot = file.find('.');
        if (dot == std::string::npos || file.compare(dot, std::string::npos, ".pyc") != 0 || !HasMarker(file))
            continue;
        bool listed = false;
        for (const std::string& name : names)
            if (file.find(name) != std::string::npos) listed = true;
        if (!listed) Take(names, file, dot);
    }
    if (leftOut) *leftOut = 0;
    if (names.size() > limit) {
        if (leftOut) *leftOut = static_cast<int>(names.size() - limit);
        names.resize(limit);
    }
    return names;
}

}  // namespace vorlith
