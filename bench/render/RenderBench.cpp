// Frames per second of the widget form (tests/sim/plugins/widget_form.c) with and
// without drawing every frame into the off-screen OpenGL context.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "driver.h"
#include "screenshots.h"

namespace {

void BM_WidgetFormFrames(benchmark::State& state) {
    bool drawing = state.range(0) != 0;
    std::string why;
    if (drawing && !xpsim::runner::picturesAvailable(&why)) {
        state.SkipWithError(("no pictures: " + why).c_str());
        return;
    }
    char pattern[] = "/tmp/xpsim-bench-XXXXXX";
    std::string root = mkdtemp(pattern) ? pattern : "/tmp";
    xpsim::Options options;
    options.root = root;
    std::string error;
    std::string plugin = root + "/Resources/plugins/WidgetForm/64/lin.xpl";
    std::filesystem::create_directories(root + "/Resources/plugins/WidgetForm/64");
    std::filesystem::copy_file(XPSIM_WIDGET_FORM_PLUGIN, plugin);
    if (!xpsim::driver::start(options, &error) || xpsim::driver::loadPlugin(plugin, &error) < 0) {
        state.SkipWithError(error.c_str());
        return;
    }
    xpsim::driver::enablePluginsAndSendLoadMessages();
    xpsim::driver::setFrameRendering(drawing ? xpsim::FrameRendering::EveryFrame : xpsim::FrameRendering::Off);
    xpsim::driver::mouseDown(190, 560);  // the text field gets the focus: caret and all
    xpsim::driver::mouseUp(190, 560);
    for (auto _ : state) xpsim::driver::runFrames(1);
    state.counters["fps"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
    xpsim::driver::setFrameRendering(xpsim::FrameRendering::Off);
    xpsim::driver::shutdown();
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}
BENCHMARK(BM_WidgetFormFrames)->ArgName("drawing")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
