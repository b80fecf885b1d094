// The script table: entries keyed by object identity, descriptions, features and the
// control panel's popup text. Ids here are distinct addresses, never dereferenced.

#include <gtest/gtest.h>

#include <cstring>

#include "core/ScriptNames.h"
#include "core/ScriptTable.h"

using namespace vorlith;

namespace {
int gObjects[4];
PyObject* Id(int i) { return reinterpret_cast<PyObject*>(&gObjects[i]); }
}  // namespace

TEST(ScriptTable, SameInstanceTwiceKeepsOneEntryAndUnknownIdsReadAsDisabled) {
    VL_ScriptTable table;
    table.AddScriptId(Id(0), "VL_a", VL_StandardScript);
    table.AddScriptId(Id(0), "VL_again", VL_StandardScript);
    table.AddScriptId(Id(1), "VL_b", VL_StandardScript);
    ASSERT_EQ(table.GetScriptTableSize(), 2);
    EXPECT_EQ(table.GetScriptId(0), Id(0));
    EXPECT_EQ(table.GetScriptId(1), Id(1));
    EXPECT_EQ(table.GetScriptId(2), nullptr);
    EXPECT_EQ(table.GetScriptId(-1), nullptr);
    EXPECT_EQ(table.GetScriptIdFromModuleName("VL_a"), Id(0));
    EXPECT_EQ(table.GetScriptIdFromModuleName("VL_again"), nullptr);

    EXPECT_EQ(table.GetScriptEnabledStatus(Id(1)), 1);
    EXPECT_EQ(table.SetScriptEnabledStatus(Id(1), 0), 1);
    EXPECT_EQ(table.GetScriptEnabledStatus(Id(1)), 0);
    EXPECT_EQ(table.GetScriptEnabledStatus(Id(3)), 0);
    EXPECT_EQ(table.SetScriptEnabledStatus(Id(3), 1), 0);
    EXPECT_EQ(table.GetScriptType(Id(0)), VL_StandardScript);
    EXPECT_EQ(table.GetScriptType(Id(3)), 0);

    table.RemoveScriptId(Id(0), VL_NoScript);  // type must match too
    EXPECT_EQ(table.GetScriptTableSize(), 2);
    table.RemoveScriptId(Id(0), VL_StandardScript);
    EXPECT_EQ(table.GetScriptTableSize(), 1);
    table.ClearScriptTable();
    EXPECT_EQ(table.GetScriptTableSize(), 0);
}

TEST(ScriptTable, DescriptionsAreStoredAndUnknownIdsLeaveOutputsUntouched) {
    VL_ScriptTable table;
    table.AddScriptId(Id(0), "VL_a", VL_StandardScript);
    table.SetScriptDescriptions(Id(0), "Name", "sig.a", "Desc", VL_StandardScript);
    table.SetScriptDescriptions(Id(2), "Other", "sig.other", "X", VL_StandardScript);  // ignored

    std::string name = "keep", signature = "keep", description = "keep";
    int type = -7;
    table.GetScriptDescriptions(Id(2), name, signature, description, &type);
    EXPECT_EQ(name, "keep");
    EXPECT_EQ(type, -7);
    table.GetScriptDescriptions(Id(0), name, signature, description, &type);
    EXPECT_EQ(name, "Name");
    EXPECT_EQ(signature, "sig.a");
    EXPECT_EQ(description, "Desc");
    EXPECT_EQ(type, VL_StandardScript);
    table.GetScriptDescriptions(Id(0), name, signature, description);  // no type wanted
    EXPECT_STREQ(table.GetScriptName(0), "Name");
    EXPECT_STREQ(table.GetScriptName(5), "");
    EXPECT_EQ(table.GetScriptIdFromSignature("sig.a"), Id(0));
    EXPECT_EQ(table.GetScriptIdFromSignature("sig.other"), nullptr);
}

TEST(ScriptTable, FeatureSwitchesAreZeroOutsideTheFlags) {
    VL_ScriptTable table;
    table.AddFeature(0, "XPLM_WANTS_REFLECTIONS");
    table.AddFeature(1, "XPLM_USE_NATIVE_PATHS");
    table.SetNumberOfFeatures(2);
    table.AddScriptId(Id(0), "VL_a", VL_StandardScript);
    EXPECT_EQ(table.GetFeatureIdFromFeatureName("XPLM_USE_NATIVE_PATHS"), 1);
    EXPECT_EQ(table.GetFeatureIdFromFeatureName("xplm_use_native_paths"), -1);

    EXPECT_EQ(table.IsFeatureEnabled(Id(0), 1), 0);
    table.SetFeatureEnable(Id(0), 1, 1);
    EXPECT_EQ(table.IsFeatureEnabled(Id(0), 1), 1);
    table.SetFeatureEnable(Id(0), 9, 1);  // outside the flags: ignored
    EXPECT_EQ(table.IsFeatureEnabled(Id(0), 2), 0);
    EXPECT_EQ(table.IsFeatureEnabled(Id(0), 9), 0);
    EXPECT_EQ(table.IsFeatureEnabled(Id(0), -1), 0);
    EXPECT_EQ(table.IsFeatureEnabled(Id(1), 1), 0);

    // Features enumerated again after a restart get further ids; the oldest name wins.
    table.AddFeature(2, "XPLM_USE_NATIVE_PATHS");
    table.SetNumberOfFeatures(3);
    EXPECT_EQ(table.GetFeatureIdFromFeatureName("XPLM_USE_NATIVE_PATHS"), 1);
    table.AddScriptId(Id(1), "VL_b", VL_StandardScript);
    table.SetFeatureEnable(Id(1), 2, 1);
    EXPECT_EQ(table.IsFeatureEnabled(Id(1), 2), 1);
    EXPECT_EQ(table.IsFeatureEnabled(Id(0), 2), 0);  // its flags were sized at two
}

TEST(ScriptTable, PopupTextListsModulesOrSaysNoScripts) {
    VL_ScriptTable table;
    table.AddScriptsToWidgets(0);
    EXPECT_STREQ(szPopupText, "No Scripts Found;");
    EXPECT_STREQ(ScriptName, "No Scripts Found");

    table.AddScriptId(Id(0), "VL_a", VL_StandardScript);
    table.AddScriptId(Id(1), "VL_b", VL_StandardScript);
    table.AddScriptsToWidgets(2);
    EXPECT_STREQ(szPopupText, "VL_a;VL_b;");
    EXPECT_STREQ(ScriptName, "VL_a");
    EXPECT_STREQ(TestText[1], "VL_b");

    // 256 long names overflow the 4096-byte popup text: it keeps the whole names that fit.
    VL_ScriptTable full;
    static int many[256];
    for (int i = 0; i < 256; ++i)
        full.AddScriptId(reinterpret_cast<PyObject*>(&many[i]), (std::string(200, 'n') + std::to_string(i)).c_str(),
                         VL_StandardScript);
    full.AddScriptsToWidgets(256);
    std::string text = szPopupText;
    EXPECT_EQ(text.size(), 10 * 202u + 10 * 203u);
    EXPECT_EQ(text.substr(text.size() - 4), "n19;");
}

TEST(ScriptTable, ChangeSeparatorToDefaultTurnsColonsAndBackslashesIntoSlashes) {
    char text[] = "C:\\X-Plane\\Resources:plugins/x";
    VL_ScriptTable::ChangeSeparatorToDefault(text);
    EXPECT_STREQ(text, "C//X-Plane/Resources/plugins/x");
}
