// Helpers for the display and graphics tests: a fresh simulator run per test, driven
// from the test process (the simulator itself, id 0, owns what the test registers),
// and a log of callback calls that the callbacks append to.
#pragma once

#include <string>
#include <vector>

#include "plugin_test_util.h"

namespace xpsim::test {

inline std::vector<std::string>& calls() {
    static std::vector<std::string> c;
    return c;
}

inline void record(const std::string& call) { calls().push_back(call); }

// Callbacks get a label as their refcon, so one function serves many registrations.
inline const char* label(void* refcon) { return static_cast<const char*>(refcon); }
inline void* refcon(const char* label) { return const_cast<char*>(label); }

class DisplaySimTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        calls().clear();
    }

    void startSimWithScreen(int width, int height) {
        Options options;
        options.screenWidth = width;
        options.screenHeight = height;
        startSimWith(options);
    }
    // Items of one kind in the last completed frame's draw list.
    static std::vector<DrawItem> drawn(const std::string& kind) {
        std::vector<DrawItem> items;
        for (const DrawItem& item : driver::drawList()) {
            if (item.kind == kind) items.push_back(item);
        }
        return items;
    }
};

}  // namespace xpsim::test
