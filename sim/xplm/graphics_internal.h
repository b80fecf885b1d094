// What the display area needs from the graphics area: a frame's draw list and its renderer.
#pragma once

namespace xpsim {

// Ends the frame's draw list: it becomes what driver::drawList() answers, and the
// next frame's list starts empty (Graphics.cpp).
void finishDrawFrame();

// Starts a frame's drawing: whether the renderer draws it (runFrames decides, from
// driver::setFrameRendering), and each phase before its callbacks run.
void beginDrawFrame(bool lastOfRun);
void beginDrawPhase(int phase);

}  // namespace xpsim
