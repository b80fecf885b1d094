// The "Vorlith" menu, the control panel window with its buttons, and the display and
// print lists (pending text before the panel exists, lines from script threads).

#include "ui/ControlPanel.h"

#include <cstdio>
#include <cstring>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "core/Lifecycle.h"
#include "core/Log.h"
#include "core/PythonGuard.h"
#include "core/ScriptTable.h"
#include "tools/Console.h"
#include "tools/Performance.h"
#include "core/Text.h"
#include "ui/Layout.h"
#include "ui/ListBox.h"
#include "ui/Popup.h"

namespace vorlith {

namespace {

constexpr const char* kCredit = "- Python Script Interface";
constexpr std::size_t kPendingSize = 65536;
constexpr std::size_t kPendingLimit = 65000;  // lines beyond it are dropped until the panel exists

XPLMMenuID VL_MenuID = nullptr;
int VL_MenuItem = -1;
int VL_MenuItem1 = 0;

XPWidgetID VorlithWidget = nullptr, VorlithWindow = nullptr;
XPWidgetID VorlithDisplayConsole = nullptr, VorlithPrintConsole = nullptr, VorlithPopup = nullptr;
XPWidgetID StartPythonButton = nullptr, StopPythonButton = nullptr, ReLoadScripts = nullptr, ClearLB = nullptr,
           ReloadPlugins = nullptr, ScriptInfo = nullptr;
XPWidgetID EnableOutputFileCheckBox = nullptr, EnableOutputFileText = nullptr;
char szDisplayConsoleText[kPendingSize] = {0};
char szPrintConsoleText[kPendingSize] = {0};
int curItem = 0;

struct PanelList {
    XPWidgetID* console;
    char* pending;
    std::size_t workSize;  // a line is cut to this before it is split
    std::size_t partSize;  // and each of its three parts to this
};
PanelList gDisplayList = {&VorlithDisplayConsole, szDisplayConsoleText, 256, 256};
PanelList gPrintList = {&VorlithPrintConsole, szPrintConsoleText, 65536, 32768};

void AddLine(PanelList& list, const char* text) {
    VL_LineParts parts = VL_SplitLine(text, list.workSize, list.partSize);
    if (*list.console) {
        for (const std::string& part : parts.part) {
            if (part.empty()) continue;
            XPSetWidgetDescriptor(*list.console, part.c_str());
            XPSetWidgetProperty(*list.console, VL_ListBoxProperty_AddItem, 1);
        }
        if (list.pending[0] != '\0') std::memset(list.pending, 0, kPendingSize);
        return;
    }
    if (std::strlen(list.pending) >= kPendingLimit) return;
    for (const std::string& part : parts.part) {
        if (part.empty()) continue;
        VL_AppendText(list.pending, kPendingSize, part.c_str());
        VL_AppendText(list.pending, kPendingSize, ";");
    }
}

void ClearLines(PanelList& list) {
    if (*list.console) XPSetWidgetProperty(*list.console, VL_ListBoxProperty_Clear, 1);
}

// Scripts print from their own threads too, but widgets belong to the simulator's main
// thread: such lines (and clears) wait here, the newest kept, until the main thread adds
// a line or draws the panel.
struct ThreadLine {
    PanelList* list;
    std::string text;
    bool clear;
};
constexpr std::size_t kThreadLinesLimit = 1000;
std::thread::id gMainThread;
std::mutex gThreadLinesLock;
std::deque<ThreadLine> gThreadLines;

bool OnMainThread() { return std::this_thread::get_id() == gMainThread; }

void DrainThreadLines() {
    std::deque<ThreadLine> lines;
    {
        std::lock_guard<std::mutex> lock(gThreadLinesLock);
        if (gThreadLines.empty()) return;
        lines.swap(gThreadLines);
    }
    for (const ThreadLine& line : lines) {
        if (line.clear)
            ClearLines(*line.list);
        else
            AddLine(*line.list, line.text.c_str());
    }
}

// text null: clear the list.
void FromAnyThread(PanelList& list, const char* text) {
    if (!OnMainThread()) {
        std::lock_guard<std::mutex> lock(gThreadLinesLock);
        gThreadLines.push_back(ThreadLine{&list, text ? text : "", text == nullptr});
        if (gThreadLines.size() > kThreadLinesLimit) gThreadLines.pop_front();
        return;
    }
    DrainThreadLines();
    if (text)
        AddLine(list, text);
    else
        ClearLines(list);
}

void PrintListSink(const char* line) { FromAnyThread(gPrintList, line ? line : ""); }

XPWidgetID Button(int left, int top, int right, int bottom, const char* label) {
    XPWidgetID button = XPCreateWidget(left, top, right, bottom, 1, label, 0, VorlithWidget, xpWidgetClass_Button);
    XPSetWidgetProperty(button, xpProperty_ButtonType, xpPushButton);
    XPSetWidgetProperty(button, xpProperty_ButtonBehavior, xpButtonBehaviorPushButton);
    return button;
}

// The panel's widgets exist once it was first opened; a reload on save may come before.
void Enable(XPWidgetID widget, int enabled) {
    if (widget) XPSetWidgetProperty(widget, xpProperty_Enabled, enabled);
}

// The item text the picker shows for `item`.
std::string PickerItem(int item) {
    char items[4096] = {0};
    XPGetWidgetDescriptor(VorlithPopup, items, sizeof items - 1);
    std::vector<std::string> pieces = VL_SplitItems(items);
    return item >= 0 && item < static_cast<int>(pieces.size()) ? pieces[static_cast<std::size_t>(item)] : "";
}

void PrintScriptInformation() {
    std::string moduleName = PickerItem(curItem);
    PyObject* scriptId = VLTestTable ? VLTestTable->GetScriptIdFromModuleName(moduleName.c_str()) : nullptr;
    if (scriptId) {
        std::string name, signature, description;
        int type = 0;
        VLTestTable->GetScriptDescriptions(scriptId, name, signature, description, &type);
        char line[1024];
        AddPrintItem("Script Information");
        AddPrintItem("");
        std::snprintf(line, sizeof line, "Script Id :- %x", static_cast<unsigned>(reinterpret_cast<uintptr_t>(scriptId)));
        AddPrintItem(line);
        std::snprintf(line, sizeof line, "Name :- %s", name.c_str());
        AddPrintItem(line);
        std::snprintf(line, sizeof line, "Signature :- %s", signature.c_str());
        AddPrintItem(line);
        std::snprintf(line, sizeof line, "Description :- %s", description.c_str());
        AddPrintItem(line);
        std::snprintf(line, sizeof line, "Script Type :- %d", type);
        AddPrintItem(line);
        AddPrintItem("");
    } else if (std::strcmp(szPopupText, "PythonScripts Directory Error;") == 0) {
        AddPrintItem("PythonScripts Directory Error");
        AddPrintItem("Check that the PythonScripts Directory exists");
        AddPrintItem("");
    } else {
        AddPrintItem("Script Not Loaded");
        AddPrintItem("");
    }
}

// The script windows hold script ids of the interpreter that just went away.
void AfterInterpreterChange() {
    RefreshScriptAdmin();
    RefreshScriptInfo();
}

void StartFromPanel() {
    AddPrintItem("Starting Python");
    StartPython(1);
    if (VorlithPopup) XPSetWidgetDescriptor(VorlithPopup, ScriptName);
    Enable(StopPythonButton, 1);
    Enable(ReLoadScripts, 1);
    AddPrintItem("Python Started");
}

void StopFromPanel() {
    AddPrintItem("Stopping Python");
    StopPython(1);
    AddPrintItem("Python Stopped");
}

}  // namespace

void VL_ReloadScripts() {
    Enable(StopPythonButton, 0);
    Enable(ReLoadScripts, 0);
    StopFromPanel();
    StartFromPanel();
    AfterInterpreterChange();
}

namespace {

int PushButtonPressed(XPWidgetID button) {
    // A script that sends our buttons a message from inside Python cannot have the
    // interpreter stopped under it.
    bool lifecycle = button == StartPythonButton || button == StopPythonButton || button == ReLoadScripts;
    if (lifecycle && PythonGuard::inside()) return 1;
    if (button == ReloadPlugins) {
        XPLMReloadPlugins();
    } else if (button == StartPythonButton) {
        StartFromPanel();
        Enable(StartPythonButton, 0);
        AfterInterpreterChange();
    } else if (button == StopPythonButton) {
        Enable(StartPythonButton, 1);
        Enable(StopPythonButton, 0);
        Enable(ReLoadScripts, 0);
        StopFromPanel();
        AfterInterpreterChange();
    } else if (button == ReLoadScripts) {
        VL_ReloadScripts();
    } else if (button == ClearLB) {
        XPSetWidgetProperty(VorlithDisplayConsole, VL_ListBoxProperty_Clear, 1);
        XPSetWidgetProperty(VorlithPrintConsole, VL_ListBoxProperty_Clear, 1);
    } else if (button == ScriptInfo) {
        PrintScriptInformation();
    } else {
        return 0;
    }
    return 1;
}

int VorlithHandler(XPWidgetMessage message, XPWidgetID, intptr_t param1, intptr_t) {
    switch (message) {
    case xpMessage_CloseButtonPushed:
        if (VL_MenuItem1 == 1) XPHideWidget(VorlithWidget);
        return 1;
    case xpMsg_ButtonStateChanged:
        if (reinterpret_cast<XPWidgetID>(param1) == EnableOutputFileCheckBox)
            VL_OutputFileEnabled = static_cast<int>(XPGetWidgetProperty(EnableOutputFileCheckBox, xpProperty_ButtonState, nullptr));
        return 1;
    case VL_Message_ListBoxItemChosen: return 1;
    case VL_Message_PopupItemChosen:
        curItem = static_cast<int>(XPGetWidgetProperty(VorlithPopup, VL_PopupProperty_CurrentItem, nullptr));
        return 1;
    case xpMsg_PushButtonPressed: return PushButtonPressed(reinterpret_cast<XPWidgetID>(param1));
    case xpMsg_Draw:
        DrainThreadLines();  // and still unhandled: the window draws itself
        return 0;
    default: return 0;
    }
}

void CreateVorlith(int x, int y, int w, int h) {
    char title[512];
    std::snprintf(title, sizeof title, "%s %s %s", "Vorlith", VorlithVersionNumber, kCredit);
    VorlithWidget = XPCreateWidget(x, y, x + w, y - h, 1, title, 1, nullptr, xpWidgetClass_MainWindow);
    XPSetWidgetProperty(VorlithWidget, xpProperty_MainWindowHasCloseBoxes, 1);
    VorlithWindow = XPCreateWidget(x + 50, y - 40, x + w - 50, y - h + 30, 1, "", 0, VorlithWidget, xpWidgetClass_SubWindow);
    XPSetWidgetProperty(VorlithWindow, xpProperty_SubWindowType, xpSubWindowStyle_SubWindow);

    VorlithDisplayConsole = VL_CreateListBox(x + 70, y - 50, x + w - 70, y - 200, 1, szDisplayConsoleText, VorlithWidget);
    VorlithPrintConsole = VL_CreateListBox(x + 70, y - 210, x + w - 70, y - 440, 1, szPrintConsoleText, VorlithWidget);

    StartPythonButton = Button(x + 70, y - 455, x + 160, y - 477, " Start Python");
    StopPythonButton = Button(x + 170, y - 455, x + 260, y - 477, " Stop Python");
    EnableOutputFileCheckBox = XPCreateWidget(x + 270, y - 455, x + 292, y - 477, 1, "", 0, VorlithWidget, xpWidgetClass_Button);
    XPSetWidgetProperty(EnableOutputFileCheckBox, xpProperty_ButtonType, xpRadioButton);
    XPSetWidgetProperty(EnableOutputFileCheckBox, xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox);
    XPSetWidgetProperty(EnableOutputFileCheckBox, xpProperty_ButtonState, 1);
    EnableOutputFileText = XPCreateWidget(x + 293, y - 455, x + 393, y - 477, 1, "Enable Output File", 0, VorlithWidget, xpWidgetClass_Caption);

    ReLoadScripts = Button(x + 70, y - 475, x + 160, y - 497, " Reload Scripts");
    ClearLB = Button(x + 170, y - 475, x + 260, y - 497, " Clear LB");
    ReloadPlugins = Button(x + 270, y - 475, x + 360, y - 497, " Reload Plugins");

    VorlithPopup = VL_CreatePopup(x + 75, y - 495, x + 275, y - 517, 1, szPopupText, VorlithWidget);
    ScriptInfo = Button(x + 290, y - 495, x + 360, y - 517, " Script Info");

    curItem = 0;
    XPSetWidgetProperty(VorlithPopup, VL_PopupProperty_CurrentItem, 0);
    Enable(StartPythonButton, 0);
    Enable(StopPythonButton, 1);
    Enable(ReLoadScripts, 1);
    XPAddWidgetCallback(VorlithWidget, VorlithHandler);
}

void ShowIfHidden(XPWidgetID widget) {
    if (widget && !XPIsWidgetVisible(widget)) XPShowWidget(widget);
}

void VorlithMenuHandler(void*, void* itemRef) {
    const char* item = static_cast<const char*>(itemRef);
    if (!item) return;
    if (std::strcmp(item, "ControlPanel") == 0) {
        if (VL_MenuItem1 == 0) {
            CreateVorlith(500, 650, 450, 550);
            VL_MenuItem1 = 1;
        } else {
            ShowIfHidden(VorlithWidget);
        }
    } else if (std::strcmp(item, "ScriptEnableDisable") == 0) {
        VL_OpenScriptAdmin();
    } else if (std::strcmp(item, "ScriptInformation") == 0) {
        VL_OpenScriptInfo();
    } else if (std::strcmp(item, "Performance") == 0) {
        VL_OpenPerformanceWindow();
    } else if (std::strcmp(item, "PythonConsole") == 0) {
        VL_OpenConsoleWindow();
    }
}

}  // namespace

void SetupWidgets() {
    gMainThread = std::this_thread::get_id();
    gVL_PrintItemSink = PrintListSink;
    XPLMMenuID plugins = XPLMFindPluginsMenu();
    VL_MenuItem = XPLMAppendMenuItem(plugins, "Vorlith", nullptr, 1);
    VL_MenuID = XPLMCreateMenu("Vorlith", plugins, VL_MenuItem, VorlithMenuHandler, nullptr);
    XPLMAppendMenuItem(VL_MenuID, "Control Panel", const_cast<char*>("ControlPanel"), 1);
    XPLMAppendMenuItem(VL_MenuID, "Script Enable / Disable", const_cast<char*>("ScriptEnableDisable"), 1);
    XPLMAppendMenuItem(VL_MenuID, "Script Information", const_cast<char*>("ScriptInformation"), 1);
    XPLMAppendMenuSeparator(VL_MenuID);
    XPLMAppendMenuItem(VL_MenuID, "Performance", const_cast<char*>("Performance"), 1);
    XPLMAppendMenuItem(VL_MenuID, "Python Console", const_cast<char*>("PythonConsole"), 1);
    VL_MenuItem1 = 0;
}

void DestroyWidgets() {
    if (VL_MenuID) XPLMDestroyMenu(VL_MenuID);
    VL_MenuID = nullptr;
    VL_ClosePopupMenu();
    if (VL_MenuItem1 == 1) XPDestroyWidget(VorlithWidget, 1);
    VL_MenuItem1 = 0;
    VorlithWidget = VorlithWindow = VorlithDisplayConsole = VorlithPrintConsole = VorlithPopup = nullptr;
    VL_DestroyScriptWindows();
    // The print list is gone with the panel.
    gVL_PrintItemSink = nullptr;
}

void SetErrorText() {
    VL_CopyText(szPopupText, "PythonScripts Directory Error;");
    VL_CopyText(ScriptName, "PythonScripts Directory Error");
}

void VL_ShowScriptsInPicker() {
    if (!VorlithPopup) return;
    XPSetWidgetDescriptor(VorlithPopup, szPopupText);
    XPSetWidgetProperty(VorlithPopup, VL_PopupProperty_CurrentItem, 0);
}

void AddDisplayItem(const char* text) { FromAnyThread(gDisplayList, text ? text : ""); }
void ClearDisplay() { FromAnyThread(gDisplayList, nullptr); }
void ClearPrint() { FromAnyThread(gPrintList, nullptr); }

}  // namespace vorlith
