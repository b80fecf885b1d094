// The log and output files (opened and closed for every text, so nothing is lost when
// the simulator dies), PrintException, and the settings read from Vorlith.ini.

#include "core/Log.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <iniparser.h>
#include <unistd.h>

#include "XPLMPlanes.h"
#include "XPLMUtilities.h"
#include "core/IniText.h"
#include "core/Text.h"
#include "platform/Paths.h"

// The stream lin.xpl's own copy of iniparser prints its errors to (plugin/CMakeLists.txt
// says why it is not libc's `stderr` symbol itself).
extern "C" {
__attribute__((visibility("hidden"))) FILE* vorlith_iniparser_stderr = stderr;
}

namespace vorlith {

int VL_OutputFileEnabled = 0;
char VL_PluginDataFile[1024] = {0};
int gVL_DebugCallbacks = 0;
int gVL_CheckCallbacks = 0;
int gVL_DisableFailingScripts = 0;
int gVL_ReloadOnChange = 0;
int gVL_PerformanceLog = 0;
VL_PrintItemSink gVL_PrintItemSink = nullptr;

namespace {

constexpr std::size_t kTextBuffer = 4096;
dictionary* gVL_Dictionary = nullptr;  // replaced at every start

// Where a scripts-folder file lives, resolved once on the main thread: script threads
// print too, and the SDK may only be called from the main thread.
struct ScriptsFile {
    const char* name;
    char path[1024];
};
ScriptsFile gLogFile = {"VorlithLog.txt", {0}};
ScriptsFile gOutputFile = {"VorlithOutput.txt", {0}};

void Resolve(ScriptsFile& file) {
    std::string simPath = VL_SimPath({"Resources", "plugins", "PythonScripts", file.name});
    if (VL_ConvertPath(simPath.c_str(), file.path, sizeof file.path) != 0) {
        XPLMDebugString("Vorlith - Unable to convert FilePath path\n");
        VL_CopyText(file.path, simPath);
    }
}

void AppendToScriptsFile(ScriptsFile& target, const char* text, std::size_t length) {
    if (length > kTextBuffer - 1) length = kTextBuffer - 1;  // the 4096-byte buffer's cut
    if (target.path[0] == '\0') Resolve(target);
    FILE* file = std::fopen(target.path, "at");
    if (!file) return;
    std::fwrite(text, 1, length, file);
    std::fclose(file);
}

}  // namespace

void VL_ResolveFilePaths() {
    Resolve(gLogFile);
    Resolve(gOutputFile);
}

void VL_WriteToLogBytes(const char* text, std::size_t length) {
    AppendToScriptsFile(gLogFile, text, length);
}

void VL_WriteToLog2Bytes(const char* text, std::size_t length) {
    if (VL_OutputFileEnabled) AppendToScriptsFile(gOutputFile, text, length);
}

void VL_WriteToLog(const char* text) {
    if (text) VL_WriteToLogBytes(text, std::strlen(text));
}

void VL_WriteToLog2(const char* text) {
    if (text) VL_WriteToLog2Bytes(text, std::strlen(text));
}

void VL_WriteToLogf(const char* format, ...) {
    char text[kTextBuffer];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    VL_WriteToLog(text);
}

void AddPrintItem(const char* line) {
    if (gVL_PrintItemSink) gVL_PrintItemSink(line);
}

void PrintException(const char* module, const char* function, const char* message) {
    char text[1024];
    std::snprintf(text, sizeof text, "Module - %s, Function - %s, Error = %s\n",
                  module ? module : "", function ? function : "", message ? message : "");
    AddPrintItem(text);
    VL_WriteToLog(text);
}

char* GetFilePath(char* dst) {
    char file[256] = {0};
    char path[1024] = {0};  // the SDK's paths take up to 512 bytes
    XPLMGetNthAircraftModel(0, file, path);
    path[sizeof path - 1] = '\0';
    XPLMExtractFileAndPath(path);
    std::string folder = std::string(path) + VL_SimSeparator();
    if (VL_ConvertPath(folder.c_str(), dst, 255) != 0) {
        XPLMDebugString("Vorlith - Unable to convert path\n");
        VL_CopyText(dst, 256, folder.c_str());
    }
    return dst;
}

namespace {

// iniparser reads only files: text whose line ends needed rewriting goes through a
// private temporary copy.
dictionary* LoadNormalised(const std::string& text) {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/vorlith-ini-XXXXXX";
    std::vector<char> path(pattern.begin(), pattern.end());
    path.push_back('\0');
    int fd = mkstemp(path.data());
    if (fd < 0) return nullptr;
    bool written = write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    close(fd);
    dictionary* loaded = written ? iniparser_load(path.data()) : nullptr;
    unlink(path.data());
    return loaded;
}

}  // namespace

int VL_GetINIFileValues() {
    std::ifstream in(VL_PluginDataFile, std::ios::binary);
    if (!in) return 0;
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    // iniparser splits lines at LF only: CR, CR LF and LF CR files are rewritten first.
    dictionary* loaded = text.find('\r') == std::string::npos ? iniparser_load(VL_PluginDataFile)
                                                               : LoadNormalised(VL_NormaliseLineEnds(text));
    if (!loaded) return 0;

    if (gVL_Dictionary) iniparser_freedict(gVL_Dictionary);
    gVL_Dictionary = loaded;
    gVL_DebugCallbacks = iniparser_getint(gVL_Dictionary, "DEBUG:DebugCallbacks", 0);
    gVL_CheckCallbacks = iniparser_getint(gVL_Dictionary, "DEBUG:CheckCallbacks", 0);
    gVL_DisableFailingScripts = std::max(0, iniparser_getint(gVL_Dictionary, "TOOLS:DisableFailingScripts", 0));
    gVL_ReloadOnChange = iniparser_getint(gVL_Dictionary, "TOOLS:ReloadOnChange", 0);
    gVL_PerformanceLog = std::max(0, iniparser_getint(gVL_Dictionary, "TOOLS:PerformanceLog", 0));
    return 1;
}

}  // namespace vorlith
