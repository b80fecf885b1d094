// The list box: a custom widget showing one text line per item with a highlighted current
// item and a scroll bar 20 pixels wide on its right. Items change through trigger
// properties; a click on an item is reported to the parent with message 1900. Also the
// interface colours shared with the popup menu.
#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "XPWidgetDefs.h"

namespace vorlith {

enum VL_ListBoxProperty : int {
    VL_ListBoxProperty_CurrentItem = 1900,  // -1 for none
    VL_ListBoxProperty_AddItem = 1901,      // trigger: append the descriptor
    VL_ListBoxProperty_Fill = 1902,         // trigger: replace the items by the descriptor's
    VL_ListBoxProperty_Clear = 1903,        // trigger: remove every item
    VL_ListBoxProperty_InsertItem = 1904,   // trigger: the descriptor before the current item
    VL_ListBoxProperty_DeleteItem = 1905,   // trigger: delete the current item
    VL_ListBoxProperty_Data = 1906,         // the widget's VL_ListBoxData_t
    VL_ListBoxProperty_LinesThatFit = 1907,
    VL_ListBoxProperty_Dragging = 1908,
    VL_ListBoxProperty_ScrollMinimum = 1909,
    VL_ListBoxProperty_ScrollMaximum = 1910,
    VL_ListBoxProperty_ScrollPosition = 1911,  // counted from the bottom
    VL_ListBoxProperty_PageAmount = 1912,
};
// Sent up the chain when an item was clicked: param1 the list box, param2 the item.
constexpr int VL_Message_ListBoxItemChosen = 1900;

// A list keeps its newest items: beyond this many the oldest go, so a script printing
// without end costs bounded memory. Item texts are kept up to kVL_ListBoxItemText - 1
// bytes.
constexpr std::size_t kVL_ListBoxMaxItems = 5000;
constexpr std::size_t kVL_ListBoxItemText = 4096;

struct VL_ListBoxData_t {
    std::deque<std::string> items;
    std::deque<int> lefts;   // hit area relative to the widget's left: always 0
    std::deque<int> rights;  // the widget's width minus 20 when the item was added
};

XPWidgetID VL_CreateListBox(int left, int top, int right, int bottom, int visible, const char* text,
                            XPWidgetID container);
void VL_ListBoxAddItem(VL_ListBoxData_t* data, const char* text, int width);
void VL_ListBoxInsertItem(VL_ListBoxData_t* data, const char* text, int width, int index);
void VL_ListBoxDeleteItem(VL_ListBoxData_t* data, int index);
void VL_ListBoxClear(VL_ListBoxData_t* data);
void VL_ListBoxFillWithData(VL_ListBoxData_t* data, const char* text, int width);
int VL_ListBoxProc(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2);

// Interface colour `index` (0 menu dark ... 11 glass text): into out[3], or with out null
// as the current OpenGL colour with the alpha of SetAlphaLevels.
void SetupAmbientColor(int index, float* out);
void SetAlphaLevels(float alpha);

}  // namespace vorlith
