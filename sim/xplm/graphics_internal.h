// What the display area needs from the graphics area: closing a frame's draw list.
#pragma once

namespace xpsim {

// Ends the frame's draw list: it becomes what driver::drawList() answers, and the
// next frame's list starts empty (Graphics.cpp).
void finishDrawFrame();

}  // namespace xpsim
