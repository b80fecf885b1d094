// Copies of the structures widget messages point at, so that what a script hands back as
// an integer is looked up here instead of being read as an address.

#include "callbacks/WidgetParameters.h"

#include <cstddef>
#include <vector>

#include "XPLMProcessing.h"
#include "platform/Memory.h"

namespace vorlith {

namespace {

struct Noted {
    VL_WidgetStruct kind;
    intptr_t param;
    int cycle;  // the frame it was delivered in
    VL_WidgetStructCopy copy;
};

struct Sent {
    XPWidgetMessage message;
    intptr_t param1, param2;
};

// Deliveries under way, innermost last (each pushes at most two), and the last ones
// that ended; a frame of more deliveries than this forgets its oldest parameters.
std::vector<Noted> gActive;
std::vector<std::size_t> gActiveMarks;
constexpr std::size_t kEnded = 64;
Noted gEnded[kEnded];
std::size_t gEndedNext = 0;
std::vector<Sent> gSent;

std::size_t SizeOf(VL_WidgetStruct kind) {
    switch (kind) {
    case VL_WidgetStruct::Mouse: return sizeof(XPMouseState_t);
    case VL_WidgetStruct::Key: return sizeof(XPKeyState_t);
    case VL_WidgetStruct::GeometryChange: return sizeof(XPWidgetGeometryChange_t);
    default: return 0;
    }
}

const Noted* Find(VL_WidgetStruct kind, intptr_t param) {
    if (kind == VL_WidgetStruct::None || !param) return nullptr;
    for (auto it = gActive.rbegin(); it != gActive.rend(); ++it)
        if (it->kind == kind && it->param == param) return &*it;
    int cycle = XPLMGetCycleNumber();
    for (std::size_t i = 1; i <= kEnded; ++i) {
        const Noted& noted = gEnded[(gEndedNext + kEnded - i) % kEnded];
        if (noted.kind == kind && noted.param == param && noted.cycle == cycle) return &noted;
    }
    return nullptr;
}

bool SentByScript(XPWidgetMessage message, int which, intptr_t param) {
    for (const Sent& sent : gSent)
        if (sent.message == message && (which == 1 ? sent.param1 : sent.param2) == param) return true;
    return false;
}

}  // namespace

VL_WidgetStruct VL_WidgetStructOf(XPWidgetMessage message, int param) {
    switch (message) {
    case xpMsg_MouseDown:
    case xpMsg_MouseDrag:
    case xpMsg_MouseUp:
    case xpMsg_MouseWheel:
    case xpMsg_CursorAdjust:
        return param == 1 ? VL_WidgetStruct::Mouse : VL_WidgetStruct::None;
    case xpMsg_KeyPress:
        return param == 1 ? VL_WidgetStruct::Key : VL_WidgetStruct::None;
    case xpMsg_Reshape:
        return param == 2 ? VL_WidgetStruct::GeometryChange : VL_WidgetStruct::None;
    default:
        return VL_WidgetStruct::None;
    }
}

VL_WidgetDelivery::VL_WidgetDelivery(XPWidgetMessage message, intptr_t param1, intptr_t param2) {
    gActiveMarks.push_back(gActive.size());
    for (int which = 1; which <= 2; ++which) {
        intptr_t param = which == 1 ? param1 : param2;
        VL_WidgetStruct kind = VL_WidgetStructOf(message, which);
        if (kind == VL_WidgetStruct::None || !param) continue;
        Noted noted{kind, param, XPLMGetCycleNumber(), {}};
        if (SentByScript(message, which, param)) {
            // Only a parameter the script was given itself (passed on) has a copy.
            const Noted* earlier = Find(kind, param);
            if (!earlier) continue;
            noted.copy = earlier->copy;
        } else if (!VL_ReadMemory(&noted.copy, reinterpret_cast<const void*>(param), SizeOf(kind))) {
            continue;  // not a structure after all: a sender broke the message's contract
        }
        gActive.push_back(noted);
    }
}

VL_WidgetDelivery::~VL_WidgetDelivery() {
    std::size_t mark = gActiveMarks.back();
    gActiveMarks.pop_back();
    for (std::size_t i = mark; i < gActive.size(); ++i) {
        gEnded[gEndedNext] = gActive[i];
        gEndedNext = (gEndedNext + 1) % kEnded;
    }
    gActive.resize(mark);
}

VL_ScriptSentMessage::VL_ScriptSentMessage(XPWidgetMessage message, intptr_t param1,
                                           intptr_t param2) {
    gSent.push_back(Sent{message, param1, param2});
}

VL_ScriptSentMessage::~VL_ScriptSentMessage() { gSent.pop_back(); }

bool VL_FindWidgetStruct(VL_WidgetStruct kind, intptr_t param, VL_WidgetStructCopy* out) {
    const Noted* noted = Find(kind, param);
    if (!noted) return false;
    *out = noted->copy;
    return true;
}

}  // namespace vorlith
