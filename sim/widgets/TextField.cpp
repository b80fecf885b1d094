// The standard text field: its text is its descriptor; the mouse places the caret and
// drags a selection; keys type, delete and move the caret while it has keyboard focus.

#include <algorithm>

#include "class_helpers.h"

namespace xpsim {
namespace widgets {

namespace {

constexpr int kTextInset = 3;  // between the field's left edge and its first character

enum class Edit { None, Insert, Backspace, Delete, Left, Right, Home, End };

// The SDK does not list the keys a text field handles. Ours: printable characters,
// backspace, forward delete, left/right (shift extends the selection), home/end.
// Everything else (return, tab, escape, up/down, control combinations) goes up the
// chain, so the window around the field can act on it.
Edit classify(const XPKeyState_t& key) {
    unsigned char vkey = static_cast<unsigned char>(key.vkey);
    unsigned char ch = static_cast<unsigned char>(key.key);
    if (vkey == XPLM_VK_BACK || ch == XPLM_KEY_DELETE) return Edit::Backspace;
    if (vkey == XPLM_VK_DELETE || ch == 127) return Edit::Delete;
    if (vkey == XPLM_VK_LEFT || ch == XPLM_KEY_LEFT) return Edit::Left;
    if (vkey == XPLM_VK_RIGHT || ch == XPLM_KEY_RIGHT) return Edit::Right;
    if (vkey == XPLM_VK_HOME) return Edit::Home;
    if (vkey == XPLM_VK_END) return Edit::End;
    if (ch >= 32 && !(key.flags & xplm_ControlFlag)) return Edit::Insert;
    return Edit::None;
}

int charWidth(XPWidgetID id) {
    int width = 0;
    XPLMGetFontDimensions(static_cast<XPLMFontID>(prop(id, xpProperty_Font)), &width, nullptr, nullptr);
    return width > 0 ? width : 8;
}

int visibleChars(XPWidgetID id) {
    Rect r = boxOf(id);
    return std::max(1, (r.right - r.left - 2 * kTextInset) / charWidth(id));
}

int clampIndex(intptr_t index, int length) {
    return static_cast<int>(std::max<intptr_t>(0, std::min<intptr_t>(index, length)));
}

// Character index under x; indexes count bytes of the descriptor.
int indexAt(XPWidgetID id, int x) {
    Widget* w = find(id);
    int length = static_cast<int>(w->descriptor.size());
    int cw = charWidth(id);
    int offset = (x - w->box.left - kTextInset + cw / 2) / cw;
    if (x < w->box.left + kTextInset) offset = 0;
    return clampIndex(prop(id, xpProperty_ScrollPosition) + offset, length);
}

void setIfChanged(XPWidgetID id, int property, intptr_t value) {
    if (find(id) && prop(id, property, value + 1) != value) setProp(id, property, value);
}

void setSelection(XPWidgetID id, int start, int end, int activeSide) {
    setIfChanged(id, xpProperty_EditFieldSelStart, start);
    setIfChanged(id, xpProperty_EditFieldSelEnd, end);
    setIfChanged(id, xpProperty_ActiveEditSide, activeSide);
    // Keep the moving end of the selection in view.
    Widget* w = find(id);
    if (!w) return;
    int caret = activeSide ? end : start;
    int scroll = clampIndex(prop(id, xpProperty_ScrollPosition), static_cast<int>(w->descriptor.size()));
    int shown = visibleChars(id);
    if (caret < scroll) scroll = caret;
    if (caret > scroll + shown) scroll = caret - shown;
    setIfChanged(id, xpProperty_ScrollPosition, scroll);
}

int handleKey(XPWidgetID id, const XPKeyState_t& key) {
    Edit edit = classify(key);
    if (edit == Edit::None) return 0;
    if (!(key.flags & xplm_DownFlag) || !isEnabled(id)) return 1;  // ours, but nothing to do
    Widget* w = find(id);
    std::string text = w->descriptor;
    int length = static_cast<int>(text.size());
    int start = clampIndex(prop(id, xpProperty_EditFieldSelStart), length);
    int end = clampIndex(prop(id, xpProperty_EditFieldSelEnd), length);
    if (start > end) std::swap(start, end);
    int side = prop(id, xpProperty_ActiveEditSide) ? 1 : 0;
    bool shift = (key.flags & xplm_ShiftFlag) != 0;
    int caret = start;
    switch (edit) {
    case Edit::Insert: {
        intptr_t maxChars = prop(id, xpProperty_MaxCharacters);
        if (maxChars > 0 && length - (end - start) + 1 > maxChars) return 1;  // full: refused
        text.replace(static_cast<size_t>(start), static_cast<size_t>(end - start), 1, key.key);
        caret = start + 1;
        break;
    }
    case Edit::Backspace:
    case Edit::Delete:
        if (start == end) {
            if (edit == Edit::Backspace ? start == 0 : end == length) return 1;
            if (edit == Edit::Backspace) --start; else ++end;
        }
        text.erase(static_cast<size_t>(start), static_cast<size_t>(end - start));
        caret = start;
        break;
    default: {
        int anchor = side ? start : end;
        int active = side ? end : start;
        if (edit == Edit::Left) active = (!shift && start != end) ? start : std::max(0, active - 1);
        if (edit == Edit::Right) active = (!shift && start != end) ? end : std::min(length, active + 1);
        if (edit == Edit::Home) active = 0;
        if (edit == Edit::End) active = length;
        if (shift)
            setSelection(id, std::min(anchor, active), std::max(anchor, active), active >= anchor ? 1 : 0);
        else
            setSelection(id, active, active, 1);
        return 1;
    }
    }
    XPSetWidgetDescriptor(id, text.c_str());
    if (!find(id)) return 1;
    setSelection(id, caret, caret, 1);
    // The SDK leaves param2 open; it is 0.
    if (find(id)) dispatch(id, xpMsg_TextFieldChanged, xpMode_UpChain, reinterpret_cast<intptr_t>(id), 0);
    return 1;
}

void draw(XPWidgetID id) {
    Widget* w = find(id);
    Rect r = w->box;
    intptr_t type = prop(id, xpProperty_TextFieldType);
    if (type == xpTextEntryField) XPDrawElement(r.left, r.bottom, r.right, r.top, xpElement_TextField, 0);
    if (type == xpTextTranslucent) XPLMDrawTranslucentDarkBox(r.left, r.top, r.right, r.bottom);
    int length = static_cast<int>(w->descriptor.size());
    int scroll = clampIndex(prop(id, xpProperty_ScrollPosition), length);
    int shown = std::min(visibleChars(id), length - scroll);
    std::string text = prop(id, xpProperty_PasswordMode) ? std::string(static_cast<size_t>(length), '*') : w->descriptor;
    int cw = charWidth(id);
    int origin = r.left + kTextInset;
    if (XPGetWidgetWithFocus() == id) {
        int start = clampIndex(prop(id, xpProperty_EditFieldSelStart), length);
        int end = clampIndex(prop(id, xpProperty_EditFieldSelEnd), length);
        if (start > end) std::swap(start, end);
        DrawItem item;
        item.kind = start == end ? "caret" : "selection";
        item.x = origin + (std::max(start, scroll) - scroll) * cw;
        item.right = origin + (std::max(end, scroll) - scroll) * cw;
        item.y = r.top - 2;
        item.bottom = r.bottom + 2;
        item.plugin = w->owner;
        recordDraw(item);
    }
    drawLabel(origin, textBaseline(r), text.substr(static_cast<size_t>(scroll), static_cast<size_t>(shown)),
              type != xpTextEntryField, static_cast<int>(prop(id, xpProperty_Font)));
}

}  // namespace

int textFieldFunc(XPWidgetMessage message, XPWidgetID id, intptr_t p1, intptr_t) {
    Widget* w = find(id);
    if (!w) return 0;
    switch (message) {
    case xpMsg_Create:
        for (int p : {xpProperty_EditFieldSelStart, xpProperty_EditFieldSelEnd, xpProperty_TextFieldType,
                      xpProperty_PasswordMode, xpProperty_MaxCharacters, xpProperty_ScrollPosition,
                      xpProperty_Font, xpProperty_ActiveEditSide})
            w->properties.emplace(p, 0);
        w->properties.emplace(xpProperty_EditFieldSelDragStart, -1);
        w->properties.emplace(xpProperty_Enabled, 1);
        return 1;
    case xpMsg_Destroy:
        return 1;
    case xpMsg_Draw:
        draw(id);
        return 1;
    case xpMsg_DescriptorChanged: {
        // New text from anywhere: the selection and scroll stay inside it.
        int length = static_cast<int>(w->descriptor.size());
        for (int p : {xpProperty_EditFieldSelStart, xpProperty_EditFieldSelEnd, xpProperty_ScrollPosition})
            if (prop(id, p) > length) setProp(id, p, length);
        return 1;
    }
    case xpMsg_KeyTakeFocus:
        return isEnabled(id) ? 1 : 0;
    case xpMsg_KeyLoseFocus:
        return 1;
    case xpMsg_KeyPress:
        return handleKey(id, *reinterpret_cast<const XPKeyState_t*>(p1));
    case xpMsg_MouseDown: {
        if (!isEnabled(id)) return 1;
        if (XPGetWidgetWithFocus() != id) XPSetKeyboardFocus(id);
        if (!find(id)) return 1;
        int index = indexAt(id, mouseOf(p1)->x);
        setIfChanged(id, xpProperty_EditFieldSelDragStart, index);
        setSelection(id, index, index, 1);
        return 1;
    }
    case xpMsg_MouseDrag: {
        intptr_t anchor = prop(id, xpProperty_EditFieldSelDragStart, -1);
        if (anchor < 0) return 1;
        int index = indexAt(id, mouseOf(p1)->x);
        int a = static_cast<int>(anchor);
        setSelection(id, std::min(a, index), std::max(a, index), index >= a ? 1 : 0);
        return 1;
    }
    case xpMsg_MouseUp:
        setIfChanged(id, xpProperty_EditFieldSelDragStart, -1);
        return 1;
    default:
        return 0;
    }
}

}  // namespace widgets
}  // namespace xpsim
