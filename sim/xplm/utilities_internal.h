// What the utilities files (Utilities.cpp, utilities_files.cpp, commands.cpp) share:
// the command system's hooks, which Utilities.cpp's frame, forget and reset hooks drive.
#pragma once

namespace xpsim {

void commandsFrame();            // continue phase of every held command
void forgetPluginCommands(int plugin);
void resetCommands();

}  // namespace xpsim
