// The end-to-end harness: simulator roots laid out as a user would install Vorlith.

#include "Harness.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "driver.h"

namespace fs = std::filesystem;

namespace vorlith::test {

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::vector<std::string> LinesFrom(const std::string& text, const std::string& from, std::size_t count) {
    std::vector<std::string> lines = SplitLines(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] != from) continue;
        std::size_t end = std::min(lines.size(), i + count);
        return std::vector<std::string>(lines.begin() + static_cast<long>(i), lines.begin() + static_cast<long>(end));
    }
    return {};
}

int CountOf(const std::string& text, const std::string& what) {
    int count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) ++count;
    return count;
}

void PluginTest::SetUp() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    root = std::string(VORLITH_TEST_WORK_DIR) + "/" + info->test_suite_name() + "." + info->name();
    fs::remove_all(root);
    fs::create_directories(ScriptsFolder());
    fs::path plugin = fs::path(root) / "Resources/plugins/Vorlith/64";
    fs::create_directories(plugin);
    fs::copy_file(VORLITH_TEST_PLUGIN, plugin / "lin.xpl", fs::copy_options::overwrite_existing);
}

void PluginTest::TearDown() { StopSim(); }

std::string PluginTest::ScriptsFolder() const { return root + "/Resources/plugins/PythonScripts"; }

void PluginTest::AddScript(const std::string& file, const std::string& as) {
    fs::copy_file(fs::path(VORLITH_TEST_SCRIPTS) / file, fs::path(ScriptsFolder()) / (as.empty() ? file : as),
                  fs::copy_options::overwrite_existing);
}

void PluginTest::AddExample(const std::string& file) {
    fs::copy_file(fs::path(VORLITH_EXAMPLES) / file, fs::path(ScriptsFolder()) / file,
                  fs::copy_options::overwrite_existing);
}

void PluginTest::WriteScript(const std::string& file, const std::string& text) {
    std::ofstream(ScriptsFolder() + "/" + file, std::ios::binary) << text;
}

void PluginTest::WriteIni(const std::string& text) {
    std::ofstream(root + "/Resources/plugins/Vorlith/Vorlith.ini", std::ios::binary) << text;
}

void PluginTest::RemoveScriptsFolder() { fs::remove_all(ScriptsFolder()); }

void PluginTest::AddCompiledScript(const std::string& file, const std::string& as) {
    std::string source = std::string(VORLITH_TEST_SCRIPTS) + "/" + file;
    std::string target = ScriptsFolder() + "/" + as + ".pyc";
    std::string command = std::string("'") + VORLITH_TEST_PYTHON + "' -c \"import py_compile, sys; "
                          "py_compile.compile(sys.argv[1], cfile=sys.argv[2], doraise=True)\" '" +
                          source + "' '" + target + "'";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

void PluginTest::InstallHelperPlugin(const std::string& name) {
    fs::path dir = fs::path(root) / "Resources/plugins" / name / "64";
    fs::create_directories(dir);
    fs::copy_file(fs::path(VORLITH_TEST_HELPER_PLUGINS) / (name + ".xpl"), dir / "lin.xpl",
                  fs::copy_options::overwrite_existing);
}

void PluginTest::StartSim(const std::string& sdk) {
    xpsim::Options options;
    options.root = root;
    options.sdk = sdk;
    std::string error;
    ASSERT_TRUE(xpsim::driver::start(options, &error)) << error;
    running_ = true;
    for (const std::string& path : xpsim::driver::findPlugins()) {
        int id = xpsim::driver::loadPlugin(path, &error);
        ASSERT_GE(id, 0) << path << ": " << error;
        if (path.find("/Vorlith/") != std::string::npos) vorlithId = id;
    }
    ASSERT_GE(vorlithId, 0) << "lin.xpl was not found in " << root;
    xpsim::driver::enablePluginsAndSendLoadMessages();
}

void PluginTest::RunSeconds(double seconds) { xpsim::driver::runSeconds(seconds); }

void PluginTest::StopSim() {
    if (!running_) return;
    xpsim::driver::shutdown();
    running_ = false;
}

std::string PluginTest::Log() const { return ReadFile(ScriptsFolder() + "/VorlithLog.txt"); }
std::string PluginTest::Output() const { return ReadFile(ScriptsFolder() + "/VorlithOutput.txt"); }
std::string PluginTest::SimLog() const { return ReadFile(root + "/Log.txt"); }

}  // namespace vorlith::test
