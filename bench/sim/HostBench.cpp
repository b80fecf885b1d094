// Cost of the host's hot paths, each also as a ratio to a plain indirect C function
// call measured in the same run: XPLMGetDataf on a simulator dataref, and one
// flight-loop dispatch to an empty C callback per frame.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"
#include "driver.h"

namespace {

extern "C" __attribute__((noinline)) float plainFunction(void* refcon) {
    benchmark::DoNotOptimize(refcon);
    return 1.0f;
}

extern "C" float emptyFlightLoop(float, float, int, void*) { return -1.0f; }

// A simulator run of its own in a temporary root, for as long as the benchmark lives.
struct Simulator {
    Simulator() {
        char pattern[] = "/tmp/xpsim-bench-XXXXXX";
        if (mkdtemp(pattern)) root = pattern;
        xpsim::Options options;
        options.root = root;
        std::string error;
        if (!xpsim::driver::start(options, &error)) std::fprintf(stderr, "xpsim: %s\n", error.c_str());
    }
    ~Simulator() {
        xpsim::driver::shutdown();
        std::error_code ignored;
        if (!root.empty()) std::filesystem::remove_all(root, ignored);
    }
    std::string root;
};

void BM_IndirectCall(benchmark::State& state) {
    float (*volatile call)(void*) = plainFunction;
    int refcon = 0;
    for (auto _ : state) benchmark::DoNotOptimize(call(&refcon));
}
BENCHMARK(BM_IndirectCall);

void BM_GetDataf(benchmark::State& state) {
    Simulator sim;
    XPLMDataRef psi = XPLMFindDataRef("sim/flightmodel/position/psi");
    for (auto _ : state) benchmark::DoNotOptimize(XPLMGetDataf(psi));
}
BENCHMARK(BM_GetDataf);

// Frames with n empty flight loops: the difference to n = 0 is the dispatch cost.
void BM_FrameWithEmptyFlightLoops(benchmark::State& state) {
    Simulator sim;
    for (int i = 0; i < state.range(0); ++i) {
        XPLMRegisterFlightLoopCallback(emptyFlightLoop, -1.0f, reinterpret_cast<void*>(intptr_t(i)));
    }
    for (auto _ : state) xpsim::driver::runFrames(1);
}
BENCHMARK(BM_FrameWithEmptyFlightLoops)->Arg(0)->Arg(1024);

// Prints, after the usual table, the costs relative to the indirect call, in CPU time
// (steadier than wall time on a shared machine). A flight-loop dispatch is the frame
// with loops minus the frame without, per loop: with 1024 loops the dispatches outweigh
// the noise of the rest of the frame (a single loop's cost drowns in it).
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        // With repetitions, the median stands for the benchmark.
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median" : run.iterations > 0) {
                nanoseconds_[run.run_name.str()] = run.GetAdjustedCPUTime();
            }
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        const double call = nanoseconds_["BM_IndirectCall"];
        if (call <= 0) return;
        const double frame = nanoseconds_["BM_FrameWithEmptyFlightLoops/0"];
        const double getDataf = nanoseconds_["BM_GetDataf"];
        const double each = (nanoseconds_["BM_FrameWithEmptyFlightLoops/1024"] - frame) / 1024;
        std::printf("\nCPU time per operation, and as a multiple of an indirect C call (%.2f ns):\n", call);
        const char* row = "  %-44s %8.2f ns  %6.2f x\n";
        std::printf(row, "XPLMGetDataf on a simulator dataref", getDataf, getDataf / call);
        std::printf(row, "flight-loop dispatch to an empty C callback", each, each / call);
        std::printf("  %-44s %8.2f ns\n", "(a whole frame without flight loops)", frame);
    }

private:
    std::map<std::string, double> nanoseconds_;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
