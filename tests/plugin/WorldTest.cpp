// The world modules end to end (XPLMGraphics, XPLMCamera, XPLMNavigation, XPLMScenery,
// XPLMPlanes, TembrookVCUtilities): scripts in xpsim, what they print, what the host
// drew, and the reports, traces and stop-time checks in the log.

#include <string>

#include "Harness.h"
#include "driver.h"

namespace vorlith::test {
namespace {

class WorldTest : public PluginTest {
protected:
    std::string Drawn(const std::string& kind) {
        std::string texts;
        for (const xpsim::DrawItem& item : xpsim::driver::drawList())
            if (item.kind == kind) texts += item.text + "|";
        return texts;
    }
};

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

std::string Report(const std::string& module, const std::string& function, const std::string& text) {
    return "Module - " + module + ", Function - " + function + ", Error = " + text + "\n";
}

std::string NoRecord(const std::string& script) {
    return "Script '" + script + ".py' was unregistering a callback that does not exist.";
}

std::string NoRecordRefcon(const std::string& script) {
    return "Script '" + script +
           ".py' was unregistering a callback and refcon that does not exist, check refcon matches the one "
           "that was used in registering.";
}

TEST_F(WorldTest, GraphicsDrawsCutAndWrappedTextAndTheCameraKeepsOneRecordPerControl) {
    WriteIni("[DEBUG]\nDebugCallbacks = 1\nCheckCallbacks = 1\n");
    AddScript("VL_Graphics.py");
    StartSim();
    RunSeconds(0.02);
    std::string strings = Drawn("string"), numbers = Drawn("number"), boxes = Drawn("darkbox");
    RunSeconds(0.1);
    StopSim();
    std::string out = Output(), log = Log();

    // Texture numbers are appended after what the list held; a huge count is a failed call.
    EXPECT_TRUE(Has(out, "textures 4 distinct 4\nhuge texture count -> 0\n"))
        << out;
    EXPECT_TRUE(Has(out, "state -> 0\nround trip 47.5000 -122.3000 100.0\n")) << out;
    // Only the wanted out-list is touched, element 0 replaced and the rest kept.
    EXPECT_TRUE(Has(out, "height only [] [12, 6]\nled [10] [16, 6]\n")) << out;
    EXPECT_TRUE(Has(out, "measure -> 40\nmeasure past the end -> 40\n")) << out;
    // The 1 MB text reaches the simulator cut to what the 512-byte copy holds.
    EXPECT_TRUE(Has(strings, std::string(511, 'x') + "|")) << strings.size();
    EXPECT_FALSE(Has(strings, std::string(512, 'x')));
    EXPECT_TRUE(Has(strings, "|one|two|three|")) << strings.size();
    EXPECT_EQ(numbers, "-003.14|");
    EXPECT_EQ(boxes, "|");
    EXPECT_TRUE(Has(out, "string bad colour raised TypeError\n")) << out;

    EXPECT_TRUE(Has(out, "release unknown -> 1\ncontrolled before -> (0, 0)\nread -> (1,)\nposition floats 14\n"))
        << out;
    EXPECT_TRUE(Has(log, Report("XPLMCamera", "XPLMDontControlCamera", NoRecord("VL_Graphics")))) << log;
    // Both calls add a record; the size line keeps the label scripts' authors know.
    EXPECT_TRUE(Has(log, "XPLMControlCamera\npScriptId = ")) << log;
    EXPECT_TRUE(Has(log, ", inHowLong = 2, inRefcon = 8\nHotKeysCallbackList size = 2\nXPLMControlCamera\n")) << log;
    EXPECT_TRUE(Has(out, "control -> 1\ncamera lost refcon 7\ncontrol again -> 1\ncontrolled -> (1, 2)\n")) << out;
    // The callable moved the camera through the list it was given.
    EXPECT_TRUE(Has(out, "camera x 123.0 zoom 2.0\nrelease -> 1\ncontrolled after -> (0, 0)\n")) << out;
    EXPECT_TRUE(Has(log, "Script Name = VL_Graphics\nCameraCallbackList size = 1\nXPLMDontControlCamera\n")) << log;
    // The second record was never given back: the check at stop reports it.
    EXPECT_TRUE(Has(log, "CameraCallbackList size = 1\nScript 'VL_Graphics.py.'\n"
                         "Mismatch of callback creation and destruction.\n"))
        << log;
    EXPECT_EQ(CountOf(log, "Parameter Error"), 1) << log;
    EXPECT_TRUE(Has(log, Report("XPLMGraphics", "XPLMGenerateTextureNumbers", "Parameter Error"))) << log;
}

TEST_F(WorldTest, SceneryProbesAppendObjectsDrawAndRecordsLiveUntilRemoved) {
    WriteIni("[DEBUG]\nDebugCallbacks = 1\nCheckCallbacks = 1\n");
    AddScript("VL_Scenery.py");
    StartSim();
    RunSeconds(0.02);
    std::string objects = Drawn("object");
    RunSeconds(0.1);
    StopSim();
    std::string out = Output(), log = Log();

    EXPECT_TRUE(Has(out, "probe -> 0\nprobe values 22 size 44 height 131.0 wet 0\n")) << out;
    EXPECT_TRUE(Has(out, "garbage probe -> 1\nprobe into None -> 0\ndestroy -> 1\nobject loaded True\n")) << out;
    for (const char* label : {"draw mismatch", "draw negative", "draw huge", "draw None"})
        EXPECT_TRUE(Has(out, std::string(label) + " -> 0\n")) << label << "\n" << out;
    EXPECT_EQ(CountOf(log, Report("XPLMScenery", "XPLMDrawObjects", "Parameter Error - List empty or not equal to count")),
              4)
        << log;
    EXPECT_TRUE(Has(out, "draw short item raised TypeError\ndraw text item raised TypeError\n")) << out;
    EXPECT_TRUE(Has(out, "unload garbage -> 1\n")) << out;
    EXPECT_TRUE(Has(out, "draw -> 1\n")) << out;
    EXPECT_TRUE(Has(objects, "windsock.obj at 1.0,2.0,3.0 pitch 0.0 heading 90.0 roll 0.0 lit|")) << objects;
    EXPECT_TRUE(Has(objects, "windsock.obj at 4.0,5.0,6.0 ")) << objects;

    // The lookup enumerates once; the same callable and refcon again do nothing.
    EXPECT_TRUE(Has(out, "baggage_train_1.obj refcon 5\nfound Resources/default scenery/sim objects/apt_vehicles/"
                         "baggage_train_2.obj refcon 5\nlookup -> 2\nlookup again enumerates False\n"))
        << out;
    EXPECT_EQ(CountOf(out, "found "), 2) << out;
    EXPECT_TRUE(Has(out, "remove wrong refcon -> 1\nremove -> 1\n")) << out;
    EXPECT_TRUE(Has(log, Report("XPLMPlugin", "VL_RemoveLookupObjects", NoRecordRefcon("VL_Scenery")))) << log;
    EXPECT_TRUE(Has(log, "inPath = lib/airport/vehicles/baggage_train.obj, inLatitude = 47.400002, inLongitude = "
                         "-122.300003, inRefcon = 5\nLibraryEnumeratorCallbackList size = 1\nXPLMLookupObjects\n"))
        << log;

    // A repeated background load is skipped; two loads, two calls, in the next frames.
    EXPECT_TRUE(Has(out, "async -> 1\nasync repeated -> 1\nasync second -> 1\n")) << out;
    EXPECT_EQ(CountOf(out, "loaded refcon 1 handle True\n"), 1) << out;
    EXPECT_EQ(CountOf(out, "loaded refcon 2 handle True\n"), 1) << out;
    EXPECT_TRUE(Has(out, "remove loaded -> 1\n")) << out;
    EXPECT_FALSE(Has(out, "other called")) << out;
    EXPECT_TRUE(Has(log, "ObjectLoadedCallbackList size = 2\nXPLMLoadObjectAsync\n")) << log;
    EXPECT_TRUE(Has(log, "ObjectLoadedCallbackList size = 1\nVL_RemoveObjectLoadedCallback\n")) << log;
    EXPECT_TRUE(Has(log, "ObjectLoadedCallbackList size = 1\nScript 'VL_Scenery.py.'\n"
                         "Mismatch of callback creation and destruction.\n"))
        << log;
    EXPECT_FALSE(Has(log, "LibraryEnumeratorCallbackList size = 1\nScript")) << log;
    EXPECT_EQ(CountOf(log, "Parameter Error\n"), 0) << log;
}

TEST_F(WorldTest, NavigationAndPlanesAnswerThroughOutListsAndKeepPlaneRecords) {
    WriteIni("[DEBUG]\nDebugCallbacks = 1\nCheckCallbacks = 1\n");
    AddScript("VL_NavPlanes.py");
    StartSim();
    StopSim();
    std::string out = Output(), log = Log();

    EXPECT_TRUE(Has(out, "navaids 22\nid only -> (1,)\nid ['KSEA']\n")) << out;
    EXPECT_TRUE(Has(out, "info [1, 9] 47.449 Seattle Tacoma Intl [1]\n")) << out;
    EXPECT_TRUE(Has(out, "vor found True near KPAE\nlast fix is after first -> True\n")) << out;
    EXPECT_TRUE(Has(out, "text latitude raised TypeError\ninfo not lists raised TypeError\ngarbage info -> (1,)\n"))
        << out;
    EXPECT_TRUE(Has(out, "fms count 2 destination 1\nfms info -> (1,)\nfms 0 [1] ['KSEA'] True [3000]\n")) << out;
    EXPECT_TRUE(Has(out, "fms 1 [2048] [5000] 47.50\nfms after clear 1\n")) << out;

    EXPECT_TRUE(Has(out, "path ends with it True\nnative path same True\nplace -> 1\nrelease without acquire -> 1\n"))
        << out;
    EXPECT_TRUE(Has(SimLog(), "user placed at airport KBFI")) << SimLog();
    EXPECT_TRUE(Has(log, Report("XPLMPlanes", "XPLMReleasePlanes", NoRecord("VL_NavPlanes")))) << log;
    EXPECT_TRUE(Has(out, "acquire -> 1\nacquire text raised TypeError\nacquire numbers raised TypeError\n"
                         "acquire None -> 1\nacquire many -> 1\n"))
        << out;
    EXPECT_TRUE(Has(out, "before -1 controller " + std::to_string(vorlithId) + "\n")) << out;
    EXPECT_TRUE(Has(out, "draw -> 1\ndraw short raised TypeError\ndraw text raised TypeError\n"
                         "draw None raised TypeError\nrelease -> 1\nafter release controller -1\n"))
        << out;
    // Three records went in (the refused calls made none); the release took the first.
    EXPECT_TRUE(Has(log, ", inRefcon = 5\nPlanesAvailableCallbackList size = 3\nXPLMAcquirePlanes\n")) << log;
    EXPECT_TRUE(Has(log, "PlanesAvailableCallbackList size = 2\nXPLMReleasePlanes\n")) << log;
    EXPECT_TRUE(Has(log, "PlanesAvailableCallbackList size = 2\nScript 'VL_NavPlanes.py.'\nScript 'VL_NavPlanes.py.'\n"
                         "Mismatch of callback creation and destruction.\n"))
        << log;
    EXPECT_EQ(CountOf(log, "Parameter Error"), 0) << log;
}

TEST_F(WorldTest, LateFunctionsAnswerForTheSimulatorGeneration) {
    AddScript("VL_WorldSdk.py");
    struct Case {
        const char* sdk;
        const char* late;
        int notSupported200, notSupported210;
    };
    const Case cases[] = {
        {"1.02", "late 0 False 0 0\n", 3, 1},
        {"2.00", "late 16 True 0 1\n", 0, 1},
        {"2.10", "late 16 True 1 1\n", 0, 0},
    };
    for (const Case& c : cases) {
        std::size_t outFrom = Output().size(), logFrom = Log().size();
        StartSim(c.sdk);
        StopSim();
        std::string out = Output().substr(outFrom), log = Log().substr(logFrom);
        EXPECT_TRUE(Has(out, c.late)) << c.sdk << "\n" << out;
        EXPECT_EQ(CountOf(log, "Error = Not supported in SDK 1.02\n"), c.notSupported200) << c.sdk << "\n" << log;
        EXPECT_EQ(CountOf(log, "Error = Not supported in SDK 1.02 or SDK 2.00\n"), c.notSupported210) << c.sdk;
        EXPECT_TRUE(Has(out, "XPLMGraphics functions 11 constants 22\nXPLMCamera functions 4 constants 2\n"
                             "XPLMNavigation functions 17 constants 14\nXPLMScenery functions 10 constants 4\n"
                             "XPLMPlanes functions 12 constants 1\nTembrookVCUtilities functions 24 constants 0\n"
                             "docs Is the Camera being Controlledk.|Set the Camerar.|Measure string length.\n"))
            << out;
    }
}

TEST_F(WorldTest, VirtualCameraDataIsSharedAtEveryStartAndKeepsItsValuesOverAReload) {
    AddScript("VL_WorldSdk.py");
    StartSim();
    std::string value, error;
    ASSERT_TRUE(xpsim::driver::getDataref("tembrook/virtualcamera/xoffset", &value, &error)) << error;
    EXPECT_EQ(value, "1.5");
    ASSERT_TRUE(xpsim::driver::getDataref("tembrook/virtualcamera/acquirecamera", &value, &error)) << error;
    EXPECT_EQ(value, "1");
    // What the companion writes, scripts read.
    ASSERT_TRUE(xpsim::driver::setDataref("tembrook/virtualcamera/camerapluginready", "1", &error)) << error;
    xpsim::driver::reloadPlugins();
    StopSim();
    std::string out = Output();
    EXPECT_TRUE(Has(out, "start ready 0 index 0 type 0 look 0 x 0.00 zoom 0.00 heading 0.00\n")) << out;
    EXPECT_TRUE(Has(out, "set results [0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0]\n"
                         "read y -2.25 z 3.00 pitch -10.00 roll 0.25\ntext offset raised TypeError\n"))
        << out;
    EXPECT_TRUE(Has(out, "start ready 1 index 3 type 2 look 5 x 1.50 zoom 2.00 heading 90.50\n")) << out;
}

}  // namespace
}  // namespace vorlith::test
