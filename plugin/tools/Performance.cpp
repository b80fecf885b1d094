#include "tools/Performance.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "callbacks/Dispatch.h"
#include "core/Log.h"
#include "core/ScriptTable.h"
#include "modules/xplm/Binding.h"
#include "platform/Clock.h"
#include "ui/ListBox.h"

namespace vorlith {

namespace detail {
bool gVL_TimingCall = false;
std::uint64_t gVL_ScriptTicks = 0;
std::uint32_t gVL_SampleState = 2463534242u;  // any value but 0
}  // namespace detail
bool gVL_TimeCalls = true;

namespace {

// Drawing holds windows' mouse and key calls too; Commands holds hot keys, menus and key
// sniffers; Other the rest (camera, enumerations, planes, objects, errors).
constexpr const char* kColumns[VL_CostKinds] = {"Loops", "Drawing", "Widgets", "Commands", "Data", "Other"};
constexpr int kNameWidth = 24, kColumnWidth = 10;  // a line fits the window: 94 characters

struct Row {
    std::string script;
    double microseconds[VL_CostKinds] = {};
    double total = 0;
};

// Ticks against the steady clock since the start: the rate grows more exact each second.
std::uint64_t gStartTicks = 0;
std::chrono::steady_clock::time_point gStartTime;
int gSeconds = 0;
std::vector<std::string> gLines;
XPWidgetID gWindow = nullptr, gList = nullptr;

double TicksPerMicrosecond() {
    double elapsed = std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - gStartTime).count();
    double rate = elapsed > 0 ? static_cast<double>(VL_Ticks() - gStartTicks) / elapsed : 0;
    return rate > 0 ? rate : 1.0;
}

// The timed calls' ticks scaled up to all calls.
double Estimate(const VL_CallCost& cost, unsigned long long ticks) {
    return cost.timed ? static_cast<double>(ticks) * cost.calls / cost.timed : 0.0;
}

std::string Line(const char* name, const double* values, double total) {
    char text[256];
    int n = std::snprintf(text, sizeof text, "%-*.*s", kNameWidth, kNameWidth, name);
    for (int k = 0; k < VL_CostKinds; ++k) {
        if (values) n += std::snprintf(text + n, sizeof text - n, "%*.1f", kColumnWidth, values[k]);
        else n += std::snprintf(text + n, sizeof text - n, "%*s", kColumnWidth, "");
    }
    std::snprintf(text + n, sizeof text - n, "%*.1f", kColumnWidth, total);
    return text;
}

void ShowInWindow() {
    if (!gList || !XPIsWidgetVisible(gWindow)) return;
    XPSetWidgetProperty(gList, VL_ListBoxProperty_Clear, 1);
    for (const std::string& line : gLines) {
        XPSetWidgetDescriptor(gList, line.c_str());
        XPSetWidgetProperty(gList, VL_ListBoxProperty_AddItem, 1);
    }
}

int WindowHandler(XPWidgetMessage message, XPWidgetID, intptr_t, intptr_t) {
    if (message != xpMessage_CloseButtonPushed) return 0;
    XPHideWidget(gWindow);
    return 1;
}

}  // namespace

void VL_StartPerformance() {
    gStartTicks = VL_Ticks();
    gStartTime = std::chrono::steady_clock::now();
    gSeconds = 0;
    gLines.clear();
}

void VL_RollPerformance(int frames) {
    if (!VLTestTable) return;
    const double perMicrosecond = TicksPerMicrosecond() * std::max(frames, 1);
    std::vector<Row> rows;
    double own = 0;
    for (int i = 0; i < VLTestTable->GetScriptTableSize(); ++i) {
        PyObject* script = VLTestTable->GetScriptId(i);
        VL_ScriptStatusRef status = VLTestTable->StatusOf(script);
        Row row;
        row.script = VL_ScriptModuleName(script) + ".py";
        for (int k = 0; k < VL_CostKinds; ++k) {
            VL_CallCost& cost = status->cost[k];
            row.microseconds[k] = Estimate(cost, cost.scriptTicks) / perMicrosecond;
            row.total += row.microseconds[k];
            own += Estimate(cost, cost.ownTicks) / perMicrosecond;
            cost = VL_CallCost();
        }
        rows.push_back(row);
    }
    if (frames <= 0) return;  // the first look only starts the counts
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.total > b.total; });
    gLines.clear();
    char title[128];
    std::snprintf(title, sizeof title, "Microseconds per frame, last second (%d frames)", frames);
    gLines.push_back(title);
    char header[256];
    int n = std::snprintf(header, sizeof header, "%-*s", kNameWidth, "Script");
    for (const char* column : kColumns) n += std::snprintf(header + n, sizeof header - n, "%*s", kColumnWidth, column);
    std::snprintf(header + n, sizeof header - n, "%*s", kColumnWidth, "Total");
    gLines.push_back(header);
    for (const Row& row : rows) gLines.push_back(Line(row.script.c_str(), row.microseconds, row.total));
    gLines.push_back(Line("Vorlith, around calls", nullptr, own));
    ShowInWindow();
    if (gVL_PerformanceLog > 0 && ++gSeconds % gVL_PerformanceLog == 0)
        for (const std::string& line : gLines) VL_WriteToLogf("%s\n", line.c_str());
}

const std::vector<std::string>& VL_PerformanceLines() { return gLines; }

void VL_OpenPerformanceWindow() {
    if (!gWindow) {
        const int left = 50, top = 700, width = 800, height = 300;
        gWindow = XPCreateWidget(left, top, left + width, top - height, 1, "Performance", 1, nullptr,
                                 xpWidgetClass_MainWindow);
        XPSetWidgetProperty(gWindow, xpProperty_MainWindowHasCloseBoxes, 1);
        gList = VL_CreateListBox(left + 10, top - 25, left + width - 10, top - height + 10, 1, "", gWindow);
        XPAddWidgetCallback(gWindow, WindowHandler);
    } else if (!XPIsWidgetVisible(gWindow)) {
        XPShowWidget(gWindow);
    }
    ShowInWindow();
}

void VL_DestroyPerformanceWindow() {
    if (gWindow) XPDestroyWidget(gWindow, 1);
    gWindow = gList = nullptr;
}

}  // namespace vorlith
