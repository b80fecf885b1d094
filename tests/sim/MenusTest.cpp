// Menus in the host: the Plugins menu, nested sub-menus, items with check and enabled
// states, picks by path with the handler's reference values, per-plug-in numbering in
// the Plugins menu, disabled and unloaded owners, and handle validation.

#include <cstdint>
#include <filesystem>

#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMUtilities.h"
#include "plugin_test_util.h"

namespace xpsim::test {
namespace {

std::vector<std::string> gErrors;
void recordError(const char* message) { gErrors.push_back(message); }

std::vector<std::pair<intptr_t, intptr_t>> gPicks;  // (menu ref, item ref)
void recordPick(void* menuRef, void* itemRef) {
    gPicks.emplace_back(reinterpret_cast<intptr_t>(menuRef), reinterpret_cast<intptr_t>(itemRef));
}

void* ref(intptr_t value) { return reinterpret_cast<void*>(value); }

class MenusTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        gErrors.clear();
        gPicks.clear();
        startSim();
        XPLMSetErrorCallback(recordError);
    }
    bool pick(const std::string& path) {
        std::string error;
        return driver::pickMenu(path, &error);
    }
    // Plugins/Tools with items One, Two/Half, a separator, Sub -> {Leaf}.
    XPLMMenuID buildTools() {
        const int top = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Tools", nullptr, 1);
        XPLMMenuID tools = XPLMCreateMenu("Tools", XPLMFindPluginsMenu(), top, recordPick, ref(10));
        EXPECT_EQ(XPLMAppendMenuItem(tools, "One", ref(1), 1), 0);
        EXPECT_EQ(XPLMAppendMenuItem(tools, "Two/Half", ref(2), 1), 1);
        XPLMAppendMenuSeparator(tools);
        EXPECT_EQ(XPLMAppendMenuItem(tools, "Sub", ref(3), 1), 3);
        sub = XPLMCreateMenu("Sub", tools, 3, recordPick, ref(20));
        XPLMAppendMenuItem(sub, "Leaf", ref(4), 1);
        return tools;
    }
    XPLMMenuID sub = nullptr;
};

TEST_F(MenusTest, PickingANestedPathCallsTheOwningMenusHandlerWithBothReferenceValues) {
    buildTools();
    EXPECT_TRUE(pick("Plugins/Tools/One"));
    EXPECT_TRUE(pick("Plugins/Tools/Two/Half"));  // item names may contain '/'
    EXPECT_TRUE(pick("Plugins/Tools/Sub/Leaf"));
    EXPECT_EQ(gPicks, (std::vector<std::pair<intptr_t, intptr_t>>{{10, 1}, {10, 2}, {20, 4}}));

    std::string error;
    EXPECT_FALSE(driver::pickMenu("Plugins/Tools/Sub", &error));  // opens a sub-menu
    EXPECT_NE(error.find("sub-menu"), std::string::npos) << error;
    EXPECT_FALSE(driver::pickMenu("Plugins/Tools/Three", &error));
    EXPECT_NE(error.find("no such item"), std::string::npos) << error;
    EXPECT_FALSE(pick("Plugins/Tools/"));
    EXPECT_FALSE(pick("Plugins/Tools/Two"));
    EXPECT_FALSE(pick("Plugins"));
    EXPECT_FALSE(pick("Tools/One"));
    EXPECT_EQ(gPicks.size(), 3u);

    // A top-level menu of the menu bar, and a menu without a handler (no call).
    XPLMMenuID bar = XPLMCreateMenu("Extras", nullptr, 0, recordPick, ref(30));
    XPLMAppendMenuItem(bar, "Go", ref(5), 0);
    XPLMMenuID silent = XPLMCreateMenu("Quiet", nullptr, 0, nullptr, nullptr);
    XPLMAppendMenuItem(silent, "Nothing", ref(6), 0);
    EXPECT_TRUE(pick("Extras/Go"));
    EXPECT_TRUE(pick("Quiet/Nothing"));
    EXPECT_EQ(gPicks.back(), (std::pair<intptr_t, intptr_t>{30, 5}));
    EXPECT_EQ(gPicks.size(), 4u);
    EXPECT_NE(log().find("menu pick Plugins/Tools/Sub/Leaf"), std::string::npos);
    EXPECT_TRUE(gErrors.empty());
}

TEST_F(MenusTest, DisabledItemsCannotBePickedAndCheckStatesAreKeptPerItem) {
    XPLMMenuID tools = buildTools();
    XPLMEnableMenuItem(tools, 0, 0);
    XPLMEnableMenuItem(tools, 3, 0);  // greys out the whole sub-menu
    EXPECT_FALSE(pick("Plugins/Tools/One"));
    EXPECT_FALSE(pick("Plugins/Tools/Sub/Leaf"));
    EXPECT_TRUE(gPicks.empty());
    XPLMEnableMenuItem(tools, 0, 1);
    XPLMEnableMenuItem(tools, 3, 1);
    EXPECT_TRUE(pick("Plugins/Tools/One"));
    EXPECT_TRUE(pick("Plugins/Tools/Sub/Leaf"));

    XPLMMenuCheck check = -1;
    XPLMCheckMenuItemState(tools, 0, &check);
    EXPECT_EQ(check, xplm_Menu_NoCheck);
    XPLMCheckMenuItem(tools, 0, xplm_Menu_Checked);
    XPLMCheckMenuItem(tools, 1, xplm_Menu_Unchecked);
    XPLMCheckMenuItemState(tools, 0, &check);
    EXPECT_EQ(check, xplm_Menu_Checked);
    XPLMCheckMenuItemState(tools, 1, &check);
    EXPECT_EQ(check, xplm_Menu_Unchecked);
    EXPECT_TRUE(gErrors.empty());

    XPLMCheckMenuItem(tools, 0, 3);  // not a check state: unchanged
    XPLMCheckMenuItemState(tools, 0, &check);
    EXPECT_EQ(check, xplm_Menu_Checked);
    XPLMCheckMenuItemState(tools, 9, &check);  // no such item: neutral answer
    EXPECT_EQ(check, xplm_Menu_NoCheck);
    XPLMCheckMenuItemState(tools, 0, nullptr);
    XPLMEnableMenuItem(tools, -1, 1);
    EXPECT_EQ(gErrors.size(), 4u);
}

TEST_F(MenusTest, RenamingRemovingAndClearingItemsRenumbersThem) {
    XPLMMenuID tools = buildTools();
    XPLMSetMenuItemName(tools, 0, "First", 0);
    EXPECT_FALSE(pick("Plugins/Tools/One"));
    EXPECT_TRUE(pick("Plugins/Tools/First"));

    XPLMRemoveMenuItem(tools, 0);  // everything below moves up
    XPLMCheckMenuItem(tools, 0, xplm_Menu_Checked);
    EXPECT_TRUE(pick("Plugins/Tools/Two/Half"));
    EXPECT_FALSE(pick("Plugins/Tools/First"));
    XPLMSetMenuItemName(tools, 2, "Renamed", 0);
    EXPECT_TRUE(pick("Plugins/Tools/Renamed/Leaf"));
    EXPECT_EQ(gPicks, (std::vector<std::pair<intptr_t, intptr_t>>{{10, 1}, {10, 2}, {20, 4}}));

    XPLMClearAllMenuItems(tools);
    EXPECT_FALSE(pick("Plugins/Tools/Two/Half"));
    EXPECT_EQ(XPLMAppendMenuItem(tools, "Fresh", ref(7), 0), 0);
    EXPECT_TRUE(pick("Plugins/Tools/Fresh"));
    EXPECT_TRUE(gErrors.empty());
    XPLMRemoveMenuItem(tools, 1);
    XPLMSetMenuItemName(tools, 5, "x", 0);
    EXPECT_EQ(gErrors.size(), 2u);
}

TEST_F(MenusTest, DestroyedAndForeignMenuIdsAreReportedAndGetNeutralAnswers) {
    XPLMMenuID tools = buildTools();
    XPLMDestroyMenu(sub);
    EXPECT_FALSE(pick("Plugins/Tools/Sub/Leaf"));
    EXPECT_TRUE(pick("Plugins/Tools/Sub"));  // an ordinary item again, picked through Tools
    EXPECT_TRUE(gErrors.empty());

    EXPECT_EQ(XPLMAppendMenuItem(sub, "Late", nullptr, 0), -1);
    XPLMDestroyMenu(sub);
    XPLMCheckMenuItem(sub, 0, xplm_Menu_Checked);
    int notAMenu = 0;
    XPLMClearAllMenuItems(&notAMenu);
    XPLMAppendMenuSeparator(XPLMFindCommand("sim/operation/pause_toggle"));
    EXPECT_EQ(XPLMCreateMenu("Child", sub, 0, recordPick, nullptr), nullptr);
    EXPECT_EQ(XPLMCreateMenu("Child", tools, 2, recordPick, nullptr), nullptr);  // a separator
    EXPECT_EQ(XPLMCreateMenu("", nullptr, 0, recordPick, nullptr), nullptr);
    XPLMDestroyMenu(XPLMFindPluginsMenu());
    EXPECT_EQ(gErrors.size(), 9u);
    EXPECT_EQ(XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Still there", nullptr, 0), 1);
}

TEST_F(MenusTest, OnlyTheCreatorDestroysAMenu) {
    XPLMMenuID tools = buildTools();
    const int one = loadTestPlugin("menu_tree", "One");
    ASSERT_GT(one, 0);
    driver::enablePluginsAndSendLoadMessages();
    clearEvents("One");
    constexpr int kDestroyMenu = 0x7FF20001;
    driver::sendMessage(one, kDestroyMenu, reinterpret_cast<intptr_t>(tools));
    const std::vector<std::string> heard = events("One");
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_NE(heard[0].find("error XPLMDestroyMenu: menu Tools belongs to plug-in 0"), std::string::npos) << heard[0];
    EXPECT_TRUE(pick("Plugins/Tools/Sub/Leaf"));  // the tree is whole
    EXPECT_EQ(XPLMAppendMenuItem(tools, "Three", nullptr, 0), 4);
    XPLMDestroyMenu(tools);
    EXPECT_FALSE(pick("Plugins/Tools/One"));
    EXPECT_TRUE(gErrors.empty());
}

TEST_F(MenusTest, PluginMenusArePickedAsTheirOwnerOnlyWhileEnabledAndVanishWithIt) {
    std::string error;
    const int one = loadTestPlugin("menu_tree", "One");
    ASSERT_GT(one, 0);
    const int two = loadTestPlugin("menu_tree", "Two");
    ASSERT_GT(two, 0);
    driver::enablePluginsAndSendLoadMessages();
    // Each plug-in numbers its own items of the Plugins menu from 0.
    EXPECT_EQ(events("One"), (std::vector<std::string>{"plugins item index=0"}));
    EXPECT_EQ(events("Two"), (std::vector<std::string>{"plugins item index=0"}));
    clearEvents("One");
    clearEvents("Two");

    EXPECT_TRUE(driver::pickMenu("Plugins/Two/More/Deep", &error)) << error;
    EXPECT_TRUE(driver::pickMenu("Plugins/One/Checked", &error)) << error;
    EXPECT_TRUE(driver::pickMenu("Plugins/One/Checked", &error)) << error;
    EXPECT_FALSE(driver::pickMenu("Plugins/One/Off", &error));
    const std::string me = " myid=" + std::to_string(one);
    EXPECT_EQ(events("One"), (std::vector<std::string>{"pick menu=100 item=4" + me, "check=2",
                                                              "pick menu=100 item=4" + me, "check=1"}));
    EXPECT_EQ(events("Two"), (std::vector<std::string>{"pick menu=200 item=6 myid=" + std::to_string(two)}));

    // A disabled owner's menu is greyed out; the other plug-in's is not affected.
    clearEvents("One");
    XPLMDisablePlugin(one);
    EXPECT_FALSE(driver::pickMenu("Plugins/One/Alpha", &error));
    EXPECT_NE(error.find("disabled"), std::string::npos) << error;
    EXPECT_TRUE(events("One").empty());
    EXPECT_TRUE(driver::pickMenu("Plugins/Two/Beta/Gamma", &error)) << error;
    XPLMEnablePlugin(one);
    EXPECT_TRUE(driver::pickMenu("Plugins/One/Alpha", &error)) << error;

    // After a reload each plug-in has exactly one tree again, under its new id.
    driver::reloadPlugins();
    clearEvents("One");
    EXPECT_EQ(XPLMCountPlugins(), 2);
    const int newOne = XPLMFindPluginBySignature("xpsim.test.menu.One");
    ASSERT_GT(newOne, 0);
    EXPECT_TRUE(driver::pickMenu("Plugins/One/Alpha", &error)) << error;
    EXPECT_EQ(events("One"), (std::vector<std::string>{"pick menu=100 item=1 myid=" + std::to_string(newOne)}));
    // No stale item of the unloaded binary is left: the only "One" opens the live tree.
    EXPECT_FALSE(driver::pickMenu("Plugins/One", &error));
    EXPECT_NE(error.find("sub-menu"), std::string::npos) << error;
    int items = 0;
    XPLMMenuCheck check;
    while (items < 10) {
        gErrors.clear();
        XPLMCheckMenuItemState(XPLMFindPluginsMenu(), items, &check);
        if (!gErrors.empty()) break;
        ++items;
    }
    EXPECT_EQ(items, 0);  // the test process sees none of the plug-ins' items
}

}  // namespace
}  // namespace xpsim::test
