// The per-script relays and the entry points' answers for enabled and disabled scripts,
// in process: the values the simulator gets back are what the tests here read.

#include "CallbackInProcess.h"
#include "XPLMDefs.h"

PLUGIN_API int XPluginEnable();

namespace vorlith::test {
namespace {

class RelayTest : public InProcessTest {};

TEST_F(RelayTest, RelaysSkipDisabledScriptsAndEnableAnswersForTheLastScript) {
    EXPECT_EQ(CallXPluginEnable(script), 1);
    EXPECT_EQ(XPluginEnable(), 1);

    VLTestTable->SetScriptEnabledStatus(script, 0);
    // The entry point answers what the last script's relay gave: 0 for a disabled one.
    EXPECT_EQ(XPluginEnable(), 0);
    EXPECT_EQ(CallXPluginStart(script, VL_StandardScript), 0);
    EXPECT_EQ(CallXPluginEnable(script), 0);
    EXPECT_EQ(CallXPluginReceiveMessage(script, 0, 4242, nullptr), 0);
    EXPECT_EQ(CallXPluginDisable(script, 1), 0);
    EXPECT_EQ(CallXPluginStop(script, 1), 0);
    // Without the enabled test the disabled script is called all the same.
    EXPECT_EQ(CallXPluginDisable(script, 0), 1);

    // An id the table does not know counts as disabled.
    PyObject* stranger = PyTuple_New(0);
    EXPECT_EQ(CallXPluginEnable(stranger), 0);
    Py_DECREF(stranger);

    VLTestTable->SetScriptEnabledStatus(script, 1);
    EXPECT_EQ(XPluginEnable(), 1);
    EXPECT_FALSE(PyErr_Occurred());
}

}  // namespace
}  // namespace vorlith::test
