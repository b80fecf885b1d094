// PythonScriptMessaging end to end: two scripts find, describe, switch and message each
// other; what reaches each receiver shows which deliveries happened.

#include "Harness.h"

namespace vorlith::test {
namespace {

class MessagingTest : public PluginTest {};

TEST_F(MessagingTest, ScriptsFindSwitchAndMessageEachOther) {
    AddScript("VL_Messaging.py", "VL_MsgA.py");
    AddScript("VL_Messaging.py", "VL_MsgB.py");
    StartSim();
    RunSeconds(0.2);
    std::string out = Output();
    const std::string expected =
        "count 2 first is me True\nindex 2 raised IndexError\nindex -1 raised IndexError\n"
        "found b True unknown None\ninfo Messaging VL_MsgB|vorlith.test.VL_MsgB|Talks to the other scripts\n"
        "info unknown True\nenabled 1 unknown 0\n"
        "VL_MsgB got 7 from Messaging VL_MsgA param one\nsend -> 1\n"
        // a broadcast reaches every script in table order, the sender too
        "VL_MsgA got 8 from Messaging VL_MsgA param 2.5\nVL_MsgB got 8 from Messaging VL_MsgA param 2.5\n"
        "broadcast -> 1\n"
        // switching a script changes its status only; a disabled recipient gets nothing
        "disable -> 1 enabled 0\nsend to disabled -> 1\ndisable again -> 1\n"
        "enable -> 0 again -> 1 unknown -> 0\nsend to object -> 1\n"
        "VL_MsgB got 11 from Messaging VL_MsgB param [1, 2]\nreceiver raises -> 1\n"
        "VL_MsgB got 12 from Messaging VL_MsgA param None\nsend -> 1\nsend short raised TypeError\n";
    EXPECT_NE(out.find(expected), std::string::npos) << out;
    EXPECT_EQ(CountOf(out, "XPluginDisable"), 0) << out;
    EXPECT_EQ(CountOf(out, " got 9 "), 0) << out;
    EXPECT_EQ(CountOf(out, " got 10 "), 0) << out;
    EXPECT_NE(Log().find("RuntimeError: receiver fails"), std::string::npos) << Log();
}

}  // namespace
}  // namespace vorlith::test
