// Helpers for the display and graphics tests: a fresh simulator run per test, driven
// from the test process (the simulator itself, id 0, owns what the test registers),
// and a log of callback calls that the callbacks append to.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "driver.h"

namespace xpsim::test {

inline std::vector<std::string>& calls() {
    static std::vector<std::string> c;
    return c;
}

inline void record(const std::string& call) { calls().push_back(call); }

// Callbacks get a label as their refcon, so one function serves many registrations.
inline const char* label(void* refcon) { return static_cast<const char*>(refcon); }
inline void* refcon(const char* label) { return const_cast<char*>(label); }

class DisplaySimTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        root = std::string(XPSIM_TEST_WORK_DIR) + "/" + info->test_suite_name() + "." + info->name();
        std::filesystem::remove_all(root);
        std::filesystem::create_directories(root);
        calls().clear();
    }
    void TearDown() override { driver::shutdown(); }

    void startSim(int width = 1024, int height = 768) {
        Options options;
        options.root = root;
        options.screenWidth = width;
        options.screenHeight = height;
        std::string error;
        ASSERT_TRUE(driver::start(options, &error)) << error;
    }

    std::string log() const {
        std::ifstream in(root + "/Log.txt");
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }
    // Number of SDK errors reported so far whose message contains `text`.
    int errorsMentioning(const std::string& text) const {
        std::istringstream in(log());
        int n = 0;
        for (std::string line; std::getline(in, line);) {
            if (line.find("SDK error") != std::string::npos && line.find(text) != std::string::npos) ++n;
        }
        return n;
    }
    // Items of one kind in the last completed frame's draw list.
    static std::vector<DrawItem> drawn(const std::string& kind) {
        std::vector<DrawItem> items;
        for (const DrawItem& item : driver::drawList()) {
            if (item.kind == kind) items.push_back(item);
        }
        return items;
    }

    std::string root;
};

}  // namespace xpsim::test
