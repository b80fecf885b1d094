#include "tools/Console.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <string>

#include "XPLMDefs.h"
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "core/Log.h"
#include "core/PythonErrors.h"
#include "core/PythonGuard.h"
#include "modules/xplm/Binding.h"
#include "ui/ListBox.h"

namespace vorlith {

namespace {

constexpr std::size_t kHistory = 100;     // lines kept for up / down
constexpr int kLineBytes = 1024;          // what the text field holds
constexpr std::size_t kOutputBytes = 1 << 20;  // what one line may show of its output

XPWidgetID gWindow = nullptr, gList = nullptr, gField = nullptr;
PyObject* gNamespace = nullptr;  // the console's globals, made at its first line
std::deque<std::string> gHistory;
std::size_t gRecalled = 0;  // gHistory.size() when no earlier line is shown

void Show(const std::string& text) {
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(start, end - start);
        XPSetWidgetDescriptor(gList, line.c_str());
        XPSetWidgetProperty(gList, VL_ListBoxProperty_AddItem, 1);
        AddPrintItem(line.c_str());
        start = end + 1;
    }
}

// A file-like object that keeps what is written, from the interpreter's own StringIO.
PyObject* NewCapture() {
    PyObject* module = PyImport_ImportModule(PY_MAJOR_VERSION >= 3 ? "io" : "StringIO");
    if (!module) return nullptr;
    PyObject* capture = PyObject_CallMethod(module, const_cast<char*>("StringIO"), nullptr);
    Py_DECREF(module);
    return capture;
}

// Runs `line` as the interactive prompt does ("single" mode: an expression's value goes
// through sys.displayhook), with sys.stdout and sys.stderr caught; answers the text.
std::string Run(const std::string& line) {
    if (!gNamespace) {
        gNamespace = PyDict_New();
        if (!gNamespace) return std::string();
        PyDict_SetItemString(gNamespace, "__builtins__", PyEval_GetBuiltins());
        PyObject* name = VL_TextFromString("__console__");
        if (name) PyDict_SetItemString(gNamespace, "__name__", name);
        Py_XDECREF(name);
    }
    PyObject* capture = NewCapture();
    if (!capture) {
        VL_PrintPythonError();
        return std::string();
    }
    PyObject* oldOut = PySys_GetObject(const_cast<char*>("stdout"));
    PyObject* oldErr = PySys_GetObject(const_cast<char*>("stderr"));
    Py_XINCREF(oldOut);
    Py_XINCREF(oldErr);
    PySys_SetObject(const_cast<char*>("stdout"), capture);
    PySys_SetObject(const_cast<char*>("stderr"), capture);
    PyObject* code = Py_CompileString(line.c_str(), "<console>", Py_single_input);
    PyObject* result = code ? VL_EvalCode(code, gNamespace, gNamespace) : nullptr;
    Py_XDECREF(code);
    Py_XDECREF(result);
    if (!result) VL_PrintPythonError();  // into the capture, like the rest
    PyObject* flushed = PyObject_CallMethod(capture, const_cast<char*>("flush"), nullptr);
    Py_XDECREF(flushed);
    PyErr_Clear();
    PySys_SetObject(const_cast<char*>("stdout"), oldOut);
    PySys_SetObject(const_cast<char*>("stderr"), oldErr);
    Py_XDECREF(oldOut);
    Py_XDECREF(oldErr);
    std::string text;
    PyObject* value = PyObject_CallMethod(capture, const_cast<char*>("getvalue"), nullptr);
    VL_Text bytes;
    if (value && bytes.set(value)) text.assign(bytes.c_str(), std::min<std::size_t>(bytes.size(), kOutputBytes));
    Py_XDECREF(value);
    Py_DECREF(capture);
    PyErr_Clear();
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

void Enter() {
    char line[kLineBytes] = {};
    XPGetWidgetDescriptor(gField, line, sizeof line - 1);
    if (!*line) return;
    gHistory.push_back(line);
    if (gHistory.size() > kHistory) gHistory.pop_front();
    gRecalled = gHistory.size();
    XPSetWidgetDescriptor(gField, "");
    Show(std::string(">>> ") + line);
    if (PythonGuard::inside() || !Py_IsInitialized()) {
        Show("Python is not running");
        return;
    }
    PythonGuard guard;
    std::string output = Run(line);
    if (!output.empty()) Show(output);
}

void Recall(int step) {
    if (gHistory.empty()) return;
    if (step < 0 && gRecalled > 0) --gRecalled;
    if (step > 0 && gRecalled < gHistory.size()) ++gRecalled;
    const char* text = gRecalled < gHistory.size() ? gHistory[gRecalled].c_str() : "";
    XPSetWidgetDescriptor(gField, text);
    XPSetWidgetProperty(gField, xpProperty_EditFieldSelStart, static_cast<intptr_t>(std::strlen(text)));
    XPSetWidgetProperty(gField, xpProperty_EditFieldSelEnd, static_cast<intptr_t>(std::strlen(text)));
}

int FieldHandler(XPWidgetMessage message, XPWidgetID, intptr_t param1, intptr_t) {
    if (message != xpMsg_KeyPress) return 0;
    const XPKeyState_t* key = reinterpret_cast<const XPKeyState_t*>(param1);
    if (!key || !(key->flags & xplm_DownFlag)) return 0;
    const unsigned char virtualKey = static_cast<unsigned char>(key->vkey);
    if (virtualKey == XPLM_VK_RETURN || virtualKey == XPLM_VK_ENTER || key->key == '\r') {
        Enter();
        return 1;
    }
    if (virtualKey == XPLM_VK_UP || virtualKey == XPLM_VK_DOWN) {
        Recall(virtualKey == XPLM_VK_UP ? -1 : 1);
        return 1;
    }
    return 0;
}

int WindowHandler(XPWidgetMessage message, XPWidgetID, intptr_t, intptr_t) {
    if (message != xpMessage_CloseButtonPushed) return 0;
    XPHideWidget(gWindow);
    return 1;
}

}  // namespace

void VL_OpenConsoleWindow() {
    if (!gWindow) {
        const int left = 80, top = 600, width = 640, height = 320;
        gWindow = XPCreateWidget(left, top, left + width, top - height, 1, "Python Console", 1, nullptr,
                                 xpWidgetClass_MainWindow);
        XPSetWidgetProperty(gWindow, xpProperty_MainWindowHasCloseBoxes, 1);
        gList = VL_CreateListBox(left + 10, top - 25, left + width - 10, top - height + 45, 1, "", gWindow);
        gField = XPCreateWidget(left + 10, top - height + 35, left + width - 10, top - height + 13, 1, "", 0,
                                gWindow, xpWidgetClass_TextField);
        XPSetWidgetProperty(gField, xpProperty_MaxCharacters, kLineBytes - 1);
        XPAddWidgetCallback(gWindow, WindowHandler);
        XPAddWidgetCallback(gField, FieldHandler);
    } else if (!XPIsWidgetVisible(gWindow)) {
        XPShowWidget(gWindow);
    }
    XPSetKeyboardFocus(gField);
}

void VL_DestroyConsoleWindow() {
    if (gWindow) XPDestroyWidget(gWindow, 1);
    gWindow = gList = gField = nullptr;
    gHistory.clear();
    gRecalled = 0;
}

void VL_ForgetConsoleNamespace() {
    Py_XDECREF(gNamespace);
    gNamespace = nullptr;
}

}  // namespace vorlith
