// The integrity check in process: memory lists are reported, not emptied.

#include "CallbackInProcess.h"
#include "callbacks/Trampolines.h"

namespace vorlith::test {
namespace {

class CallbackIntegrityTest : public InProcessTest {};

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
