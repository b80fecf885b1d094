// The plug-in's own user interface: the "Vorlith" submenu of the plugins menu and its
// three windows (control panel, script enable / disable, script information), and the
// display and print lists that scripts and the plug-in write to.
#pragma once

namespace vorlith {

// At plug-in start: the menu, and the print list as the destination of AddPrintItem.
void SetupWidgets();
// At plug-in stop: the menu and every window.
void DestroyWidgets();
// The scripts folder is missing: the script picker says so.
void SetErrorText();
// After the scripts were loaded: the script picker shows the table's module names.
void VL_ShowScriptsInPicker();

// A line for the display list (the print list's is AddPrintItem, core/Log.h). Lines are
// split after 45 characters into at most three list lines; before the control panel
// exists they wait in a bounded buffer.
void AddDisplayItem(const char* text);
void ClearDisplay();
void ClearPrint();

// The enable / disable and information windows (ScriptWindows.cpp).
void VL_OpenScriptAdmin();
void VL_OpenScriptInfo();
void RefreshScriptAdmin();
// What the panel's Reload button does: the scripts stopped and started again. Not from
// inside a call into Python.
void VL_ReloadScripts();
void RefreshScriptInfo();
void VL_DestroyScriptWindows();

}  // namespace vorlith
