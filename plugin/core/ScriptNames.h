// Which files of the scripts folder are scripts, and under which module names: source
// files first, then compiled files whose name holds no name already taken.
#pragma once

#include <string>
#include <vector>

namespace vorlith {

constexpr int kVL_MaxScriptFiles = 256;       // slots of the file name list
constexpr int kVL_MaxScriptNameLength = 255;  // bytes of one slot, less its terminator

// The module names found by the last listing, one per 256-byte slot (the control
// panel reuses it for its script list).
extern char TestText[kVL_MaxScriptFiles][kVL_MaxScriptNameLength + 1];

// Module names for the directory entries `files`, in listing order, at most 256 of
// at most 255 bytes; `leftOut` (when given) receives how many scripts the bound kept out.
std::vector<std::string> VL_SelectScriptNames(const std::vector<std::string>& files,
                                              int* leftOut = nullptr);

}  // namespace vorlith
