// The plug-in's files: the log VorlithLog.txt and the output VorlithOutput.txt in the
// scripts folder, the settings of Vorlith.ini, and PrintException, the one report of a
// binding failure. Every text carries its own "\n".
#pragma once

#include <cstddef>

namespace vorlith {

// Finds the log and output files again (on the main thread, at every interpreter start).
void VL_ResolveFilePaths();
// Appends text to VorlithLog.txt (cut at 4095 bytes).
void VL_WriteToLog(const char* text);
// Appends text to VorlithOutput.txt while VL_OutputFileEnabled is set.
void VL_WriteToLog2(const char* text);
// The same with an explicit length, for captured text that may hold NUL bytes.
void VL_WriteToLogBytes(const char* text, std::size_t length);
void VL_WriteToLog2Bytes(const char* text, std::size_t length);
// printf-style VL_WriteToLog, cut at the same 4096-byte buffer.
void VL_WriteToLogf(const char* format, ...) __attribute__((format(printf, 1, 2)));

// "Module - %s, Function - %s, Error = %s\n" to the print list and the log.
void PrintException(const char* module, const char* function, const char* message);

// Hands one line to the control panel's print list; does nothing until the control
// panel installs its sink.
void AddPrintItem(const char* line);
using VL_PrintItemSink = void (*)(const char* line);
extern VL_PrintItemSink gVL_PrintItemSink;

// The folder of the user's aircraft with a trailing separator, into dst (256 bytes).
char* GetFilePath(char* dst);

// Loads VL_PluginDataFile; 1 if it was read (and the switches set), 0 if not.
int VL_GetINIFileValues();

extern int VL_OutputFileEnabled;     // captured stdout goes to the output file
extern char VL_PluginDataFile[1024];  // path of Vorlith.ini
extern int gVL_DebugCallbacks;        // DEBUG:DebugCallbacks: trace registrations
extern int gVL_CheckCallbacks;        // DEBUG:CheckCallbacks: check the lists at stop
extern int gVL_DisableFailingScripts;  // TOOLS:DisableFailingScripts: failures in a row, 0 off
extern int gVL_ReloadOnChange;         // TOOLS:ReloadOnChange: reload when a script file changes
extern int gVL_PerformanceLog;         // TOOLS:PerformanceLog: seconds between cost tables, 0 off

// Registers TembrookInternalModule, which receives Python's stdout and stderr.
void initTembrookInternalModule();

}  // namespace vorlith
