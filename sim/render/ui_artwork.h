// The widget library's artwork (XPUIGraphics windows, elements and tracks) and the
// simulator's plain shapes, drawn with flat fills and bevels in one grey-metal style.
#pragma once

#include "driver.h"

namespace xpsim::render {

class TextPainter;

struct Box {
    int left, bottom, right, top;
};

struct Colour {
    float r, g, b, a = 1.0f;
};

void fillBox(const Box& box, const Colour& colour);

// Draw one recorded "window" (XPDrawWindow), "element" or "track" item. They expect the
// renderer's own drawing state (2-D pixels, no texturing, blending on).
void drawUiWindow(const DrawItem& item);
void drawUiElement(const DrawItem& item, TextPainter& text);
void drawUiTrack(const DrawItem& item);

}  // namespace xpsim::render
