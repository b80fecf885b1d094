// End-to-end harness: a fresh simulator root per test with lin.xpl and the test's
// Python scripts installed, run in xpsim through the driver API, and the files the
// plug-in and the host write (VorlithLog.txt, VorlithOutput.txt, Log.txt).
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorlith::test {

// Which interpreter the plug-in under test embeds: 2 or 3.
constexpr int kPythonMajor = VORLITH_TEST_PYTHON_MAJOR;

std::string ReadFile(const std::string& path);
// text split at '\n' (a last line without one counts too).
std::vector<std::string> SplitLines(const std::string& text);
// The lines of text from the first that equals `from`, `count` of them.
std::vector<std::string> LinesFrom(const std::string& text, const std::string& from, std::size_t count);
int CountOf(const std::string& text, const std::string& what);

class PluginTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Copies tests/plugin/scripts/<file> into the scripts folder (as `as` when given).
    void AddScript(const std::string& file, const std::string& as = "");
    // Copies examples/<file> into the scripts folder, as the demo does.
    void AddExample(const std::string& file);
    void WriteScript(const std::string& file, const std::string& text);
    void WriteIni(const std::string& text);
    void RemoveScriptsFolder();
    // Compiles a script of tests/plugin/scripts with the embedded interpreter's version
    // into <scripts>/<as>.pyc, without its source.
    void AddCompiledScript(const std::string& file, const std::string& as);
    // Installs a helper plug-in of tests/plugin/plugins into its own folder.
    void InstallHelperPlugin(const std::string& name);

    // Starts xpsim on the root (SDK "1.02", "2.00" or "2.10"), loads every plug-in it finds
    // and enables them as X-Plane does.
    void StartSim(const std::string& sdk = "2.10");
    void RunSeconds(double seconds);
    // Disables, stops and unloads every plug-in.
    void StopSim();

    std::string Log() const;     // VorlithLog.txt
    std::string Output() const;  // VorlithOutput.txt
    std::string SimLog() const;  // the host's Log.txt
    std::string ScriptsFolder() const;

    std::string root;
    int vorlithId = -1;

private:
    bool running_ = false;
};

}  // namespace vorlith::test
