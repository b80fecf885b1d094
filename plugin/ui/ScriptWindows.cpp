// The script enable / disable window and the script information window: pages of eight
// scripts from the script table, with Previous and Next.

#include <cstdio>
#include <string>
#include <vector>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "core/Lifecycle.h"
#include "core/PythonGuard.h"
#include "core/ScriptTable.h"
#include "ui/ControlPanel.h"

namespace vorlith {

namespace {

constexpr int kRows = 8;

std::vector<PyObject*> ScriptId;
int NumberOfScriptIds = 0;
int MaxScreenNumber = 0;

int VL_MenuItem2 = 0, VL_MenuItem3 = 0;
int ScriptAdminScreenNumber = 0, ScriptInfoScreenNumber = 0;

XPWidgetID ScriptAdminWidget = nullptr, ScriptAdminPanel = nullptr, ScriptAdminCaption1 = nullptr,
           ScriptAdminCaption2 = nullptr, ScriptAdminPreviousButton = nullptr, ScriptAdminNextButton = nullptr;
XPWidgetID ScriptAdminEdit[kRows] = {nullptr}, ScriptAdminCheckBox[kRows] = {nullptr};

XPWidgetID ScriptInfoWidget = nullptr, ScriptInfoPanel1 = nullptr, ScriptInfoPanel2 = nullptr,
           ScriptInfoRefreshButton = nullptr, ScriptInfoPreviousButton = nullptr, ScriptInfoNextButton = nullptr;
XPWidgetID NameText[kRows] = {nullptr}, SignatureText[kRows] = {nullptr}, DescriptionText[kRows] = {nullptr};

// A window closed with its close box is hidden and a new one built on the next menu
// choice; the hidden one is destroyed then, so that closing and reopening costs nothing.
XPWidgetID gHiddenScriptAdmin = nullptr, gHiddenScriptInfo = nullptr;

void GetScriptIds() {
    ScriptId.clear();
    NumberOfScriptIds = VLTestTable ? VLTestTable->GetScriptTableSize() : 0;
    for (int i = 0; i < NumberOfScriptIds; ++i)
        if (PyObject* id = VLTestTable->GetScriptId(i)) ScriptId.push_back(id);
    MaxScreenNumber = NumberOfScriptIds > 0 ? (NumberOfScriptIds - 1) / kRows : 0;
}

PyObject* ScriptAt(int i) { return i >= 0 && i < static_cast<int>(ScriptId.size()) ? ScriptId[static_cast<std::size_t>(i)] : nullptr; }

XPWidgetID Widget(int left, int top, int right, int bottom, const char* text, XPWidgetID container, XPWidgetClass cls,
                  int visible = 1) {
    return XPCreateWidget(left, top, right, bottom, visible, text, container ? 0 : 1, container, cls);
}

XPWidgetID MainWindow(int x, int y, int w, int h, const char* title) {
    XPWidgetID window = Widget(x, y, x + w, y - h, title, nullptr, xpWidgetClass_MainWindow);
    XPSetWidgetProperty(window, xpProperty_MainWindowHasCloseBoxes, 1);
    return window;
}

XPWidgetID SubWindow(int left, int top, int right, int bottom, XPWidgetID container, int type) {
    XPWidgetID window = Widget(left, top, right, bottom, "", container, xpWidgetClass_SubWindow);
    XPSetWidgetProperty(window, xpProperty_SubWindowType, type);
    return window;
}

XPWidgetID PushButton(int left, int top, int right, int bottom, const char* label, XPWidgetID container, int visible = 1) {
    XPWidgetID button = Widget(left, top, right, bottom, label, container, xpWidgetClass_Button, visible);
    XPSetWidgetProperty(button, xpProperty_ButtonType, xpPushButton);
    XPSetWidgetProperty(button, xpProperty_ButtonBehavior, xpButtonBehaviorPushButton);
    return button;
}

void SetPageButtons(XPWidgetID previous, XPWidgetID next, int page) {
    XPSetWidgetProperty(previous, xpProperty_Enabled, page != 0);
    XPSetWidgetProperty(next, xpProperty_Enabled, page != MaxScreenNumber);
    XPSetWidgetDescriptor(previous, "Previous");
    XPSetWidgetDescriptor(next, "Next");
}

// Previous / Next: the page moves within 0 .. MaxScreenNumber. False for other buttons.
bool TurnPage(XPWidgetID button, XPWidgetID previous, XPWidgetID next, int& page) {
    if (button == previous) {
        if (page > 0) --page;
    } else if (button == next) {
        if (page < MaxScreenNumber) ++page;
    } else {
        return false;
    }
    return true;
}

void CloseWindow(XPWidgetID& window, XPWidgetID& hidden, int& flag) {
    if (flag != 1) return;
    XPHideWidget(window);
    hidden = window;
    flag = 0;
}

// --- enable / disable ---

void CheckBoxesChanged() {
    PythonGuard guard;  // the scripts' enable and disable methods run here
    for (int k = 0; k < kRows; ++k) {
        PyObject* id = ScriptAt(k + kRows * ScriptAdminScreenNumber);
        if (!id || !VLTestTable) continue;
        bool set = XPGetWidgetProperty(ScriptAdminCheckBox[k], xpProperty_ButtonState, nullptr) != 0;
        int status = VLTestTable->GetScriptEnabledStatus(id);
        if (set) {
            VLTestTable->SetScriptEnabledStatus(id, 1);
            if (status == 0) CallXPluginEnable(id);
        } else {
            if (status == 1) CallXPluginDisable(id, 1);
            VLTestTable->SetScriptEnabledStatus(id, 0);
        }
    }
}

int ScriptAdminHandler(XPWidgetMessage message, XPWidgetID, intptr_t param1, intptr_t) {
    switch (message) {
    case xpMessage_CloseButtonPushed:
        CloseWindow(ScriptAdminWidget, gHiddenScriptAdmin, VL_MenuItem2);
        return 1;
    case xpMsg_PushButtonPressed:
        if (!TurnPage(reinterpret_cast<XPWidgetID>(param1), ScriptAdminPreviousButton, ScriptAdminNextButton,
                      ScriptAdminScreenNumber))
            return 0;
        RefreshScriptAdmin();
        return 1;
    case xpMsg_ButtonStateChanged:
        CheckBoxesChanged();
        if (VL_MenuItem2) RefreshScriptInfo();
        return 0;
    default: return 0;
    }
}

void CreateScriptAdmin(int x, int y, int w, int h) {
    const int cx = x + w / 2;
    ScriptId.clear();
    for (XPWidgetID& box : ScriptAdminCheckBox) box = nullptr;
    GetScriptIds();
    ScriptAdminWidget = MainWindow(x, y, w, h, "Enable / Disable Scripts");
    ScriptAdminPanel = SubWindow(x + 12, y - 32, x + w - 12, y - h + 15, ScriptAdminWidget, xpSubWindowStyle_SubWindow);
    ScriptAdminCaption1 = Widget(x + 20, y - 38, x + 310, y - 54, "Script Name", ScriptAdminWidget, xpWidgetClass_Caption);
    ScriptAdminCaption2 = Widget(x + 229, y - 38, x + 325, y - 54, "Enabled", ScriptAdminWidget, xpWidgetClass_Caption);
    ScriptAdminPreviousButton = PushButton(cx - 75, y - h + 43, cx - 6, y - h + 21, "Previous", ScriptAdminWidget);
    ScriptAdminNextButton = PushButton(cx + 5, y - h + 43, cx + 75, y - h + 21, "Next", ScriptAdminWidget);
    for (int k = 0; k < kRows; ++k) {
        ScriptAdminEdit[k] = Widget(x + 20, y - 61 - 25 * k, x + 254, y - 81 - 25 * k, "", ScriptAdminWidget,
                                    xpWidgetClass_TextField);
        XPSetWidgetProperty(ScriptAdminEdit[k], xpProperty_TextFieldType, xpTextEntryField);
        XPSetWidgetProperty(ScriptAdminEdit[k], xpProperty_Enabled, 0);
        ScriptAdminCheckBox[k] = Widget(x + 256, y - 60 - 25 * k, x + 278, y - 82 - 25 * k, "", ScriptAdminWidget,
                                        xpWidgetClass_Button);
        XPSetWidgetProperty(ScriptAdminCheckBox[k], xpProperty_ButtonType, xpRadioButton);
        XPSetWidgetProperty(ScriptAdminCheckBox[k], xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox);
        XPSetWidgetProperty(ScriptAdminCheckBox[k], xpProperty_ButtonState, 1);
    }
    RefreshScriptAdmin();
    XPAddWidgetCallback(ScriptAdminWidget, ScriptAdminHandler);
}

// --- information ---

const char* TypeText(int type) {
    switch (type) {
    case 0: return "None";
    case 1: return "Standard";
    case 2: return "Aircraft";
    default: return "Unknown";
    }
}

int ScriptInfoHandler(XPWidgetMessage message, XPWidgetID, intptr_t param1, intptr_t) {
    switch (message) {
    case xpMessage_CloseButtonPushed:
        CloseWindow(ScriptInfoWidget, gHiddenScriptInfo, VL_MenuItem3);
        return 1;
    case xpMsg_PushButtonPressed: {
        auto button = reinterpret_cast<XPWidgetID>(param1);
        if (button != ScriptInfoRefreshButton &&
            !TurnPage(button, ScriptInfoPreviousButton, ScriptInfoNextButton, ScriptInfoScreenNumber))
            return 0;
        RefreshScriptInfo();
        return 1;
    }
    default: return 0;
    }
}

void CreateScriptInfo(int x, int y, int w, int h) {
    const int cx = x + w / 2;
    ScriptId.clear();
    GetScriptIds();
    ScriptInfoWidget = MainWindow(x, y, w, h, "Script Information");
    ScriptInfoPanel1 = SubWindow(x + 12, y - 31, x + w - 12, y - h + 12, ScriptInfoWidget, xpSubWindowStyle_SubWindow);
    ScriptInfoPanel2 = SubWindow(x + 21, y - 41, x + w - 21, y - h + 49, ScriptInfoWidget, xpSubWindowStyle_Screen);
    ScriptInfoRefreshButton = PushButton(cx - 140, y - h + 67, cx - 70, y - h + 45, "Refresh", ScriptInfoWidget, 0);
    ScriptInfoPreviousButton = PushButton(cx - 75, y - h + 41, cx - 5, y - h + 19, "Previous", ScriptInfoWidget);
    ScriptInfoNextButton = PushButton(cx + 5, y - h + 41, cx + 75, y - h + 19, "Next", ScriptInfoWidget);
    for (int k = 0; k < kRows; ++k) {
        const int r = y - 45 - 45 * k;
        NameText[k] = Widget(x + 30, r, x + 318, r - 20, "", ScriptInfoWidget, xpWidgetClass_Caption);
        SignatureText[k] = Widget(x + 75, r - 12, x + 310, r - 32, "", ScriptInfoWidget, xpWidgetClass_Caption);
        DescriptionText[k] = Widget(x + 75, r - 24, x + 310, r - 44, "", ScriptInfoWidget, xpWidgetClass_Caption);
        for (XPWidgetID caption : {NameText[k], SignatureText[k], DescriptionText[k]})
            XPSetWidgetProperty(caption, xpProperty_CaptionLit, 1);
    }
    RefreshScriptInfo();
    XPAddWidgetCallback(ScriptInfoWidget, ScriptInfoHandler);
}

void DestroyWindow(XPWidgetID& window) {
    if (window) XPDestroyWidget(window, 1);
    window = nullptr;
}

}  // namespace

void RefreshScriptAdmin() {
    if (!ScriptAdminWidget) return;
    ScriptId.clear();
    GetScriptIds();
    XPSetWidgetDescriptor(ScriptAdminCaption1, ScriptId.empty() ? "You do not have any Scripts." : "Script Name");
    XPSetWidgetDescriptor(ScriptAdminCaption2, ScriptId.empty() ? "" : "Enabled");
    for (int k = 0; k < kRows; ++k) {
        const int i = k + kRows * ScriptAdminScreenNumber;
        if (i >= NumberOfScriptIds) {
            XPSetWidgetDescriptor(ScriptAdminEdit[k], "");
            XPSetWidgetProperty(ScriptAdminCheckBox[k], xpProperty_ButtonState, 0);
            XPSetWidgetProperty(ScriptAdminCheckBox[k], xpProperty_Enabled, 0);
            continue;
        }
        PyObject* id = ScriptAt(i);
        if (!id) continue;
        std::string name, signature, description;
        VLTestTable->GetScriptDescriptions(id, name, signature, description);
        XPSetWidgetDescriptor(ScriptAdminEdit[k], name.c_str());
        XPSetWidgetProperty(ScriptAdminCheckBox[k], xpProperty_ButtonState, VLTestTable->GetScriptEnabledStatus(id) ? 1 : 0);
        XPSetWidgetProperty(ScriptAdminCheckBox[k], xpProperty_Enabled, 1);
    }
    SetPageButtons(ScriptAdminPreviousButton, ScriptAdminNextButton, ScriptAdminScreenNumber);
}

void RefreshScriptInfo() {
    if (!ScriptInfoWidget) return;
    ScriptId.clear();
    GetScriptIds();
    for (int k = 0; k < kRows; ++k) {
        const int i = k + kRows * ScriptInfoScreenNumber;
        if (i >= NumberOfScriptIds) {
            for (XPWidgetID caption : {NameText[k], SignatureText[k], DescriptionText[k]}) XPSetWidgetDescriptor(caption, "");
            continue;
        }
        PyObject* id = ScriptAt(i);
        if (!id) continue;
        std::string name, signature, description;
        int type = 0;
        VLTestTable->GetScriptDescriptions(id, name, signature, description, &type);
        const char* enabled = VLTestTable->GetScriptEnabledStatus(id) ? "Enabled" : "Disabled";
        PyObject* found = VLTestTable->GetScriptIdFromSignature(signature.c_str());
        char text[1024];
        std::snprintf(text, sizeof text, "(%x) %s (%s) [%s Type Script]",
                      static_cast<unsigned>(reinterpret_cast<uintptr_t>(found)), name.c_str(), enabled, TypeText(type));
        XPSetWidgetDescriptor(NameText[k], text);
        std::snprintf(text, sizeof text, "Signature: %s", signature.c_str());
        XPSetWidgetDescriptor(SignatureText[k], text);
        XPSetWidgetDescriptor(DescriptionText[k], description.c_str());
    }
    if (ScriptId.empty()) XPSetWidgetDescriptor(NameText[0], "You do not have any Scripts installed.");
    SetPageButtons(ScriptInfoPreviousButton, ScriptInfoNextButton, ScriptInfoScreenNumber);
}

void VL_OpenScriptAdmin() {
    if (VL_MenuItem2 == 0) {
        DestroyWindow(gHiddenScriptAdmin);
        ScriptAdminScreenNumber = 0;
        CreateScriptAdmin(200, 550, 294, 305);
        VL_MenuItem2 = 1;
    } else if (!XPIsWidgetVisible(ScriptAdminWidget)) {
        XPShowWidget(ScriptAdminWidget);
    }
}

void VL_OpenScriptInfo() {
    if (VL_MenuItem3 == 0) {
        DestroyWindow(gHiddenScriptInfo);
        ScriptInfoScreenNumber = 0;
        CreateScriptInfo(290, 680, 417, 476);
        VL_MenuItem3 = 1;
    } else if (!XPIsWidgetVisible(ScriptInfoWidget)) {
        XPShowWidget(ScriptInfoWidget);
    }
}

void VL_DestroyScriptWindows() {
    if (VL_MenuItem2 == 1) DestroyWindow(ScriptAdminWidget);
    if (VL_MenuItem3 == 1) DestroyWindow(ScriptInfoWidget);
    DestroyWindow(gHiddenScriptAdmin);
    DestroyWindow(gHiddenScriptInfo);
    ScriptAdminWidget = ScriptInfoWidget = nullptr;  // a closed window was the hidden one
    VL_MenuItem2 = VL_MenuItem3 = 0;
    ScriptId.clear();
}

}  // namespace vorlith
