// The popup button: a custom widget showing the current item of a ";"-separated list
// ("-" a separator, a leading "(" a disabled item); a click opens a popup menu of every
// item in columns, in a window covering the screen so that any click ends it.
#pragma once

#include <cstdint>

#include "XPWidgetDefs.h"

namespace vorlith {

enum VL_PopupProperty : int {
    VL_PopupProperty_CurrentItem = 1800,
    VL_PopupProperty_ItemStart = 1898,   // offset of the current item's text in the descriptor
    VL_PopupProperty_ItemLength = 1899,  // its length
};
// Sent up the chain when an item was chosen: param1 the popup button, param2 the item.
constexpr int VL_Message_PopupItemChosen = 1800;

using VL_PopupChoice_f = void (*)(int item, void* refcon);

XPWidgetID VL_CreatePopup(int left, int top, int right, int bottom, int visible, const char* items,
                          XPWidgetID container);
// Opens a popup menu with the current item at (left, top); callback gets the chosen item,
// or -1, once when the menu closes.
void XPPickPopup(int left, int top, const char* items, int current, VL_PopupChoice_f callback, void* refcon);
// Closes an open popup menu without a choice (the plug-in is stopping).
void VL_ClosePopupMenu();
int VL_PopupButtonProc(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2);

}  // namespace vorlith
