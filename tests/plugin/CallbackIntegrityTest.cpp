// The integrity check in process: records left over from an earlier interpreter are
// counted but name no script of the new one, even when the old address is reused.

#include "CallbackInProcess.h"
#include "callbacks/Trampolines.h"

namespace vorlith::test {
namespace {

class CallbackIntegrityTest : public InProcessTest {};

TEST_F(CallbackIntegrityTest, RecordsOfAnEarlierInterpreterAreCountedButNameNoScript) {
    FlightLoopCallbackList.clear();  // what earlier tests in this process left
    PyObject* record = Method("Record");
    _CallbackList* old = VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, record, nullptr);
    Py_DECREF(record);
    Restart();
    // The new script happens to live where the old one did.
    old->record->scriptId = script;
    record = Method("Record");
    VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, record, nullptr);
    Py_DECREF(record);

    VL_CheckFlightLoopCallbacks();
    std::vector<std::string> lines = LinesFrom(Log(), "FlightLoopCallbackList size = 2", 4);
    std::vector<std::string> expected = {"FlightLoopCallbackList size = 2", "Script '.py.'",
                                         "Script 'VL_Dispatch.py.'", "Mismatch of callback creation and destruction."};
    EXPECT_EQ(lines, expected) << Log();
    EXPECT_TRUE(FlightLoopCallbackList.empty());
    // The abandoned records keep their cells leading somewhere harmless.
    EXPECT_EQ(VL_FlightLoopCallback(0, 0, 1, old), 1.0f);
    old->record->scriptId = nullptr;
}

TEST_F(CallbackIntegrityTest, MemoryListsAreReportedButKept) {
    GetDataMemoryPointerList.clear();
    VL_AddCallbackBlock(GetDataMemoryPointerList);
    VL_CheckGetDataMemoryPointerList();
    VL_CheckSetDataMemoryPointerList();
    std::vector<std::string> lines = LinesFrom(Log(), "GetDataMemoryPointerList size = 1", 2);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1], "Mismatch of GetDataMemoryPointerList creation and destruction.");
    EXPECT_EQ(CountOf(Log(), "SetDataMemoryPointerList"), 0);
    EXPECT_EQ(GetDataMemoryPointerList.size(), 1u);
    VL_DeleteCallbackBlock(GetDataMemoryPointerList, 0);
}

}  // namespace
}  // namespace vorlith::test
