// The widget message parameters that point at SDK structures (mouse state, key state,
// geometry change), copied as the messages reach a script and kept for the rest of that
// frame. Scripts get these parameters as plain integers; the decoders and the behaviour
// functions accept only an integer found here and read the copy, never the address.
#pragma once

#include <cstdint>

#include "XPWidgetDefs.h"

namespace vorlith {

enum class VL_WidgetStruct { None, Mouse, Key, GeometryChange };

// Which structure a message carries in `param` (1 or 2), None when it carries none there.
VL_WidgetStruct VL_WidgetStructOf(XPWidgetMessage message, int param);

// Copies of one message's structure, noted for as long as it lives (a message being
// delivered to a script), then kept until the frame ends. Nested messages nest.
class VL_WidgetDelivery {
public:
    VL_WidgetDelivery(XPWidgetMessage message, intptr_t param1, intptr_t param2);
    ~VL_WidgetDelivery();
    VL_WidgetDelivery(const VL_WidgetDelivery&) = delete;
    VL_WidgetDelivery& operator=(const VL_WidgetDelivery&) = delete;
};

// A message a script sends itself (XPSendMessageToWidget) carries integers the script
// chose: while it is sent, the delivery never reads them as structures.
class VL_ScriptSentMessage {
public:
    VL_ScriptSentMessage(XPWidgetMessage message, intptr_t param1, intptr_t param2);
    ~VL_ScriptSentMessage();
    VL_ScriptSentMessage(const VL_ScriptSentMessage&) = delete;
    VL_ScriptSentMessage& operator=(const VL_ScriptSentMessage&) = delete;
};

union VL_WidgetStructCopy {
    XPMouseState_t mouse;
    XPKeyState_t key;
    XPWidgetGeometryChange_t change;
};

// Copies into `out` the structure behind a parameter of `kind` that was delivered to a
// script now or earlier in this frame; false when there is none.
bool VL_FindWidgetStruct(VL_WidgetStruct kind, intptr_t param, VL_WidgetStructCopy* out);

}  // namespace vorlith
