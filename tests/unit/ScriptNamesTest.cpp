// The rules that pick script files out of the scripts folder's listing.

#include <gtest/gtest.h>

#include "core/ScriptNames.h"

using vorlith::VL_SelectScriptNames;
using Names = std::vector<std::string>;

TEST(ScriptNames, SourceFilesNeedTheMarkerAndEndInPyAfterTheLastDot) {
    Names listing = {"vl_d.py", "Vl_d.py", "notes.py", "MyVL_x.py", "VL_c.old.py", "VL_e.py.bak",
                     "VL_f.PY", "VL_g.pyw", "readme.txt", "VL_h"};
    EXPECT_EQ(VL_SelectScriptNames(listing), (Names{"vl_d", "MyVL_x", "VL_c.old"}));
}

TEST(ScriptNames, SourceFilesComeFirstInListingOrderThenCompiledOnes) {
    Names listing = {"VL_z.pyc", "VL_b.py", "VL_a.py"};
    EXPECT_EQ(VL_SelectScriptNames(listing), (Names{"VL_b", "VL_a", "VL_z"}));
}

TEST(ScriptNames, CompiledFileIsLeftOutWhenAListedNameOccursInsideIt) {
    EXPECT_EQ(VL_SelectScriptNames({"VL_a.py", "VL_a.pyc"}), (Names{"VL_a"}));
    EXPECT_EQ(VL_SelectScriptNames({"VL_b.pyc"}), (Names{"VL_b"}));
    // The plain substring test: VL_Nav occurs inside VL_Nav2.pyc.
    EXPECT_EQ(VL_SelectScriptNames({"VL_Nav.py", "VL_Nav2.pyc"}), (Names{"VL_Nav"}));
    // Compiled files added earlier in the same pass count too.
    EXPECT_EQ(VL_SelectScriptNames({"VL_q.pyc", "VL_q2.pyc", "VL_r.pyc"}), (Names{"VL_q", "VL_r"}));
}

TEST(ScriptNames, CompiledFileIsJudgedByItsFirstDot) {
    // "VL_c.old.pyc" reads as extension ".old.pyc": never taken.
    EXPECT_EQ(VL_SelectScriptNames({"VL_c.old.pyc", "vl_k.pyc", "plain.pyc"}), (Names{"vl_k"}));
}

TEST(ScriptNames, ListStopsAt256NamesAndCutsLongNames) {
    Names listing;
    for (int i = 0; i < 300; ++i) listing.push_back("VL_" + std::to_string(1000 + i) + ".py");
    Names names = VL_SelectScriptNames(listing);
    ASSERT_EQ(names.size(), 256u);
    EXPECT_EQ(names.front(), "VL_1000");
    EXPECT_EQ(names.back(), "VL_1255");

    std::string longName = "VL_" + std::string(400, 'x');
    Names cut = VL_SelectScriptNames({longName + ".py"});
    ASSERT_EQ(cut.size(), 1u);
    EXPECT_EQ(cut[0].size(), 255u);
    EXPECT_EQ(cut[0], longName.substr(0, 255));
}
