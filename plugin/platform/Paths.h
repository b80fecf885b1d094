// The simulator's paths for the plug-in: built with the simulator's own separator and
// turned into paths the C library can open. Nothing outside platform/ spells a separator.
#pragma once

#include <initializer_list>
#include <string>

namespace vorlith {

// The system folder followed by the parts joined with the simulator's separator,
// e.g. VL_SimPath({"Resources", "plugins", "PythonScripts"}).
std::string VL_SimPath(std::initializer_list<const char*> parts);
// The simulator's directory separator.
std::string VL_SimSeparator();

// A simulator path as the C library opens it, into posixPath[size]. 0 on success,
// -1 when it cannot be converted or does not fit.
int VL_ConvertPath(const char* simPath, char* posixPath, int size);

// A path the simulator answered, as scripts get it: colon paths become '/' paths under
// "/Volumes", native paths stay as they are.
std::string VL_ScriptPathFromSim(const char* simPath);
// A script's '/' path as the simulator reads it (':' separators where it uses them).
std::string VL_SimPathFromScript(const char* path);

// Where this platform's simulator keeps the SDK library that the capability probe opens.
std::string VL_SdkLibraryPath();

}  // namespace vorlith
