// Helpers for tests that load plug-in binaries: a fresh simulator root per test, test
// plug-ins installed into it the way users install plug-ins, and file reading.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "driver.h"

namespace xpsim::test {

inline std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

inline std::vector<std::string> readLines(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// An empty folder of its own for the running test (ctest runs tests in parallel).
inline std::string freshRoot(const std::string& suffix = "") {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string root = std::string(XPSIM_TEST_WORK_DIR) + "/" + info->test_suite_name() + "." + info->name() + suffix;
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root);
    return root;
}

// Copies the test plug-in `binary` (tests/sim/plugins/<binary>.c) into
// <root>/Resources/plugins/<folder>/64/lin.xpl; each copy is a separate plug-in.
inline std::string installPlugin(const std::string& root, const std::string& binary, const std::string& folder) {
    std::string dir = root + "/Resources/plugins/" + folder + "/64";
    std::filesystem::create_directories(dir);
    std::string path = dir + "/lin.xpl";
    std::filesystem::copy_file(std::string(XPSIM_TEST_PLUGIN_DIR) + "/" + binary + ".xpl", path,
                               std::filesystem::copy_options::overwrite_existing);
    return path;
}

// events.txt of the test plug-in installed as <folder> (tests/sim/plugins/test_plugin.h).
inline std::string eventsFile(const std::string& root, const std::string& folder) {
    return root + "/Resources/plugins/" + folder + "/events.txt";
}

// A test with its own simulator root, shut down after the test.
class SimRootTest : public ::testing::Test {
protected:
    void SetUp() override { root = freshRoot(); }
    void TearDown() override { driver::shutdown(); }

    void startSim(const std::string& sdk = "2.10") {
        Options options;
        options.sdk = sdk;
        startSimWith(options);
    }
    // Starts a run on this test's root with these settings, ending the one before if any.
    void startSimWith(Options options) {
        driver::shutdown();
        options.root = root;
        std::string error;
        ASSERT_TRUE(driver::start(options, &error)) << error;
    }
    std::string log() const { return readFile(root + "/Log.txt"); }
    // Installs the test plug-in `binary` as <folder> and loads it; its id.
    int loadTestPlugin(const std::string& binary, const std::string& folder) {
        std::string error;
        int id = driver::loadPlugin(installPlugin(root, binary, folder), &error);
        EXPECT_GT(id, 0) << error;
        return id;
    }
    std::vector<std::string> events(const std::string& folder) const { return readLines(eventsFile(root, folder)); }
    void clearEvents(const std::string& folder) const { std::remove(eventsFile(root, folder).c_str()); }
    // SDK errors the host reported so far (one Log.txt line each) whose line contains `text`.
    int errorsMentioning(const std::string& text) const {
        int n = 0;
        for (const std::string& line : readLines(root + "/Log.txt")) {
            if (line.find("SDK error") != std::string::npos && line.find(text) != std::string::npos) ++n;
        }
        return n;
    }
    int errors() const { return errorsMentioning(""); }

    std::string root;
};

}  // namespace xpsim::test
