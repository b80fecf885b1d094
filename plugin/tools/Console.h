// The "Python Console": a line typed into the window runs in one namespace kept across
// lines, as Python's interactive prompt runs it (an expression's value is shown); what
// it prints and its traceback go to the window's list and to the print list.
#pragma once

namespace vorlith {

void VL_OpenConsoleWindow();
void VL_DestroyConsoleWindow();
// At interpreter stop: the namespace goes with the interpreter.
void VL_ForgetConsoleNamespace();

}  // namespace vorlith
