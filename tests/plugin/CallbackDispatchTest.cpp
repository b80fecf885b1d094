// The trampolines in process: the plug-in's code linked into the test, the host started
// without loading lin.xpl, a script loaded by StartPython, and every kind of callback
// called as the SDK calls it, on the paths a script cannot reach on its own (disabled
// scripts, missing callables, records of an earlier interpreter, foreign pointers).

#include <cmath>
#include <cstring>
#include <functional>
#include <memory>

#include "CallbackInProcess.h"
#include "callbacks/Trampolines.h"

namespace vorlith::test {
namespace {

class CallbackDispatchTest : public InProcessTest {};

// One kind of callback: how the SDK calls it with a reference value, what the callable
// then gets, and what the kind answers on each path.
struct Kind {
    const char* name;
    VL_CallbackListType* list;
    int slot;  // -1: the reference value is the cell; else the slot of a block
    std::function<double(void* refcon)> call;
    const char* arguments;
    double success, inactive, missing, failed;
    const char* missingLine;
};

XPLMWindowID Window() { return reinterpret_cast<XPLMWindowID>(16); }
void* Pointer(std::intptr_t value) { return reinterpret_cast<void*>(value); }

const std::vector<Kind>& Kinds() {
    static const std::vector<Kind> kinds = {
        {"flight loop", &FlightLoopCallbackList, -1,
         [](void* r) { return CallUserFlightLoopCallback(0.5f, 0.25f, 3, r); },
         "(0.5, 0.25, 3, 7)", 2.0, 1.0, 1.0, 1.0, "Cannot find method FlightLoopCallback"},
        {"draw", &DrawCallbackList, -1, [](void* r) { return CallUserDrawCallback(5, 1, r); },
         "(5, 1, 7)", 2, 0, 1, 1, "Cannot find method DrawCallback"},
        {"key sniffer", &KeySnifferCallbackList, -1,
         [](void* r) { return CallUserKeySnifferCallback(static_cast<char>(-56), 3, static_cast<char>(200), r); },
         "(-56, 3, 200, 7)", 2, 0, 1, 1, "Cannot find method KeySnifferCallback"},
        {"hot key", &HotKeyCallbackList, -1, [](void* r) { return CallUserHotKeyCallback(r); },
         "(7,)", 1, 0, 1, 1, "Cannot find method HotKeyCallback"},
        {"menu", &MenuCallbackList, -1, [](void* r) { return CallUserMenuCallback(r, Pointer(42)); },
         "(7, 42)", 1, 0, 1, 1, "Cannot find method UserMenuCallback"},
        {"command", &CommandCallbackList, -1,
         [](void* r) { return CallUserCommandCallback(static_cast<XPLMCommandRef>(Pointer(0x1234)), 1, r); },
         "(4660, 1, 7)", 2, 0, 0, 0, "Cannot find method CommandCallback"},
        {"planes available", &PlanesAvailableCallbackList, -1,
         [](void* r) { return CallUserPlanesAvailableCallback(r); }, "(7,)", 1, 0, 1, 1,
         "Cannot find method UserPlanesAvailableCallback"},
        {"shared data", &SharedDataCallbackList, -1, [](void* r) { return CallUserSharedDataCallback(r); },
         "(7,)", 1, 0, 1, 1, "Cannot find method UserSharedDataCallback"},
        {"object loaded", &ObjectLoadedCallbackList, -1,
         [](void* r) { return CallUserObjectLoadedCallback(Pointer(153), r); }, "(153, 7)", 1, 0, 1, 1,
         "Cannot find method ObjectLoadedCallback"},
        {"feature enumerator", &FeatureEnumeratorCallbackList, -1,
         [](void* r) { return CallUserFeatureEnumeratorCallback("XPLM_USE_NATIVE_PATHS", r); },
         "('XPLM_USE_NATIVE_PATHS', 7)", 1, 0, 1, 1, "Cannot find method FeatureEnumeratorCallback"},
        {"library enumerator", &LibraryEnumeratorCallbackList, -1,
         [](void* r) { return CallUserLibraryEnumeratorCallback("lib/tree.obj", r); }, "('lib/tree.obj', 7)",
         1, 0, 1, 1, "Cannot find method LibraryEnumeratorCallback"},
        {"error", &ErrorCallbackList, -1,
         [](void* r) { return CallUserErrorCallback(static_cast<_CallbackList*>(r)->record, "bad handle"); },
         "('bad handle',)", 1, 0, 0, 0, "Cannot find method CommandCallback"},
        {"draw window", &DrawWindowCallbackList, VL_DrawWindowSlot,
         [](void* r) { return CallUserDrawWindowCallback(Window(), r); }, "(16, 7)", 1, 0, 1, 1,
         "Cannot find method DrawWindowCallback"},
        {"mouse click", &MouseClickCallbackList, VL_MouseClickSlot,
         [](void* r) { return CallUserMouseClickCallback(Window(), 3, 4, 1, r); }, "(16, 3, 4, 1, 7)", 2, 0, 0, 0,
         "Cannot find method MouseClickCallback"},
        {"key", &KeyCallbackList, VL_KeySlot,
         [](void* r) { return CallUserKeyCallback(Window(), static_cast<char>(-3), 2, static_cast<char>(156), r, 1); },
         "(16, -3, 2, -100, 7, 1)", 1, 0, 1, 1, "Cannot find method KeyCallback"},
        {"cursor status", &CursorStatusCallbackList, VL_CursorStatusSlot,
         [](void* r) { return CallUserCursorStatusCallback(Window(), 3, 4, r); }, "(16, 3, 4, 7)", 2, 0, 0, 0,
         "Cannot find method CursorStatusCallback"},
        {"mouse wheel", &MouseWheelCallbackList, VL_MouseWheelSlot,
         [](void* r) { return CallUserMouseWheelCallback(Window(), 3, 4, 0, -1, r); }, "(16, 3, 4, 0, -1, 7)", 2, 0,
         0, 0, "Cannot find method MouseWheelCallback"},
        {"get int", &GetDataiCallbackList, VL_IntSlot, [](void* r) { return CallUserGetDatai_Callback(r); },
         "(7,)", 2, 0, 1, 1, "Cannot find method UserGetDataiCallback"},
        {"get float", &GetDatafCallbackList, VL_FloatSlot, [](void* r) { return CallUserGetDataf_Callback(r); },
         "(7,)", 2.0, 0.0, 1.0, 1.0, "Cannot find method UserGetDataf_Callback"},
        {"get double", &GetDatadCallbackList, VL_DoubleSlot, [](void* r) { return CallUserGetDatad_Callback(r); },
         "(7,)", 2.0, 0.0, 1.0, 1.0, "Cannot find method UserGetDataf_Callback"},
        {"get int array", &GetDataviCallbackList, VL_IntArraySlot,
         [](void* r) { return CallUserGetDatavi_Callback(r, nullptr, 1, 5); }, "(7, None, 1, 5)", 2, 0, 1, 1,
         "Cannot find method UserGetDatavi_Callback"},
        {"get float array", &GetDatavfCallbackList, VL_FloatArraySlot,
         [](void* r) {
             float values[4];
             return CallUserGetDatavf_Callback(r, values, 0, 4);
         },
         "(7, [], 0, 4)", 0, 0, 1, 1, "Cannot find method UserGetDatavf_Callback"},
        {"get bytes", &GetDatabCallbackList, VL_ByteArraySlot,
         [](void* r) { return CallUserGetDatab_Callback(r, nullptr, 0, 0); }, "(7, None, 0, 0)", 2, 0, 1, 1,
         "Cannot find method UserGetDatab_Callback"},
        {"set int", &SetDataiCallbackList, VL_IntSlot, [](void* r) { return CallUserSetDatai_Callback(r, 5); },
         "(7, 5)", 1, 0, 1, 1, "Cannot find method UserSetDatai_Callback"},
        {"set float", &SetDatafCallbackList, VL_FloatSlot,
         [](void* r) { return CallUserSetDataf_Callback(r, 1.5f); }, "(7, 1.5)", 1, 0, 1, 1,
         "Cannot find method UserSetDataf_Callback"},
        {"set double", &SetDatadCallbackList, VL_DoubleSlot,
         [](void* r) { return CallUserSetDatad_Callback(r, 2.25); }, "(7, 2.25)", 1, 0, 1, 1,
         "Cannot find method UserSetDatad_Callback"},
        {"set int array", &SetDataviCallbackList, VL_IntArraySlot,
         [](void* r) {
             int values[] = {1, 2};
             return CallUserSetDatavi_Callback(r, values, 0, 2);
         },
         "(7, [1, 2], 0, 2)", 1, 0, 1, 1, "Cannot find method UserSetDatavi_Callback"},
        {"set float array", &SetDatavfCallbackList, VL_FloatArraySlot,
         [](void* r) { return CallUserSetDatavf_Callback(r, nullptr, 0, 3); }, "(7, None, 0, 3)", 1, 0, 1, 1,
         "Cannot find method UserSetDatavf_Callback"},
        {"set bytes", &SetDatabCallbackList, VL_ByteArraySlot,
         [](void* r) {
             unsigned char values[] = {200, 5};
             return CallUserSetDatab_Callback(r, values, 1, 2);
         },
         "(7, [-56, 5], 1, 2)", 1, 0, 1, 1, "Cannot find method UserSetDatab_Callback"},
    };
    return kinds;
}

// The reference value the SDK would hold for a record of `method` of this kind.
void* ReferenceValue(const Kind& kind, _CallbackList* cell) {
    if (kind.slot < 0) return cell;
    VL_CallbackBlock* block = VL_AddCallbackBlock(GetDataMemoryPointerList);
    block->cells[kind.slot] = cell;
    return block;
}

TEST_F(CallbackDispatchTest, EveryKindBuildsItsTupleAndAnswersItsValueOnEveryPath) {
    for (const Kind& kind : Kinds()) {
        SCOPED_TRACE(kind.name);
        void* calls = ReferenceValue(kind, Cell(*kind.list, "Record"));
        EXPECT_EQ(kind.call(calls), kind.success);
        EXPECT_EQ(LastCall(), kind.arguments);

        // A disabled script is not called; enabling it resumes the same registration.
        VLTestTable->SetScriptEnabledStatus(script, 0);
        EXPECT_EQ(kind.call(calls), kind.inactive);
        EXPECT_EQ(LastCall(), "");
        VLTestTable->SetScriptEnabledStatus(script, 1);
        EXPECT_EQ(kind.call(calls), kind.success);
        EXPECT_EQ(LastCall(), kind.arguments);

        std::size_t linesBefore = CountOf(Log(), std::string(kind.missingLine) + "\n");
        EXPECT_EQ(kind.call(ReferenceValue(kind, Cell(*kind.list, nullptr))), kind.missing);
        EXPECT_EQ(CountOf(Log(), std::string(kind.missingLine) + "\n"), linesBefore + 1);

        std::size_t tracebacks = CountOf(Log(), "ValueError: boom");
        EXPECT_EQ(kind.call(ReferenceValue(kind, Cell(*kind.list, "Raise"))), kind.failed);
        EXPECT_EQ(CountOf(Log(), "ValueError: boom"), tracebacks + 1);
        EXPECT_FALSE(PyErr_Occurred());
    }
}

TEST_F(CallbackDispatchTest, ResultsOfTheWrongTypeGiveZeroAndTheirErrorIsPrinted) {
    SetAttribute("answer", VL_TextFromString("fast"));
    _CallbackList* loop = Cell(FlightLoopCallbackList, "Record");
    _CallbackList* draw = Cell(DrawCallbackList, "Record");
    EXPECT_EQ(CallUserFlightLoopCallback(0, 0, 1, loop), 0.0f);
    EXPECT_EQ(CallUserDrawCallback(0, 0, draw), 0);
    EXPECT_FALSE(PyErr_Occurred());
    EXPECT_EQ(CountOf(Log(), "TypeError"), 2) << Log();
    // A float where an int is wanted is refused as Python's parser refuses it.
    SetAttribute("answer", PyFloat_FromDouble(2.5));
    EXPECT_EQ(CallUserDrawCallback(0, 0, draw), 0);
    EXPECT_EQ(CallUserFlightLoopCallback(0, 0, 1, loop), 2.5f);
}

TEST_F(CallbackDispatchTest, ArrayGettersNeverWritePastTheBufferTheSdkGave) {
    _CallbackList* ints = Cell(GetDataviCallbackList, "Record");
    _CallbackList* bytes = Cell(GetDatabCallbackList, "Record");
    VL_CallbackBlock* block = VL_AddCallbackBlock(GetDataMemoryPointerList);
    block->cells[VL_IntArraySlot] = ints;
    block->cells[VL_ByteArraySlot] = bytes;

    // The script hands back three values and claims ten: two fit the buffer.
    SetAttribute("fill", Py_BuildValue("[iii]", 5, 6, 7));
    SetAttribute("answer", VL_IntFromLong(10));
    int values[3] = {-1, -1, -1};
    EXPECT_EQ(CallUserGetDatavi_Callback(block, values, 0, 2), 2);
    EXPECT_EQ(values[0], 5);
    EXPECT_EQ(values[1], 6);
    EXPECT_EQ(values[2], -1);
    // A size query answers the script's count whatever max says.
    EXPECT_EQ(CallUserGetDatavi_Callback(block, nullptr, 0, 0), 10);
    // Claiming more than the list holds copies only what is there.
    SetAttribute("fill", Py_BuildValue("[i]", 9));
    EXPECT_EQ(CallUserGetDatavi_Callback(block, values, 0, 3), 1);
    EXPECT_EQ(values[0], 9);
    EXPECT_EQ(values[1], 6);
    // Something that is no number gives 0 for its element.
    SetAttribute("fill", Py_BuildValue("[si]", "x", 4));
    SetAttribute("answer", VL_IntFromLong(2));
    EXPECT_EQ(CallUserGetDatavi_Callback(block, values, 0, 2), 2);
    EXPECT_EQ(values[0], 0);
    EXPECT_EQ(values[1], 4);
    EXPECT_FALSE(PyErr_Occurred());

    // Bytes: one text, with its zero when it is shorter than max, cut when longer.
    char buffer[5];
    std::memset(buffer, '#', sizeof buffer);
    SetAttribute("fill", Py_BuildValue("[s]", "hi"));
    EXPECT_EQ(CallUserGetDatab_Callback(block, buffer, 0, 4), 2);
    EXPECT_EQ(std::string(buffer, 5), std::string("hi\0##", 5));
    std::memset(buffer, '#', sizeof buffer);
    SetAttribute("fill", Py_BuildValue("[s]", "abcdefgh"));
    SetAttribute("answer", VL_IntFromLong(8));
    EXPECT_EQ(CallUserGetDatab_Callback(block, buffer, 0, 3), 3);
    EXPECT_EQ(std::string(buffer, 5), "abc##");
    // Or numbers, each giving its low 8 bits, and nothing written at index max.
    std::memset(buffer, '#', sizeof buffer);
    SetAttribute("fill", Py_BuildValue("[iii]", 65, 300, -1));
    SetAttribute("answer", VL_IntFromLong(3));
    EXPECT_EQ(CallUserGetDatab_Callback(block, buffer, 0, 3), 3);
    EXPECT_EQ(std::string(buffer, 5), std::string("A,\xff##", 5));
}

TEST_F(CallbackDispatchTest, CameraControlTakesBackWhatTheScriptChangedInItsList) {
    _CallbackList* cell = Cell(CameraCallbackList, "MoveCamera");
    XPLMCameraPosition_t position = {1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(CallUserCameraControlCallback(&position, 0, cell), 1);
    EXPECT_EQ(LastCall(), "([1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0], 0, 7)");
    // Element 0 changed, element 1 became text, elements 5 and 6 were deleted.
    EXPECT_EQ(position.x, 10.0f);
    EXPECT_EQ(position.y, 2.0f);
    EXPECT_EQ(position.heading, 5.0f);
    EXPECT_EQ(position.roll, 6.0f);
    EXPECT_EQ(position.zoom, 7.0f);
    EXPECT_FALSE(PyErr_Occurred());

    _CallbackList* record = Cell(CameraCallbackList, "Record");
    EXPECT_EQ(CallUserCameraControlCallback(nullptr, 1, record), 2);
    EXPECT_EQ(LastCall(), "(0, 1, 7)");

    EXPECT_EQ(CallUserCameraControlCallback(&position, 0, Cell(CameraCallbackList, "Raise")), 0);
    EXPECT_NE(Log().find("ValueError: boom\nUserCameraControlCallback Call failed\n"), std::string::npos) << Log();
    EXPECT_EQ(CallUserCameraControlCallback(&position, 0, Cell(CameraCallbackList, nullptr)), 0);
    EXPECT_NE(Log().find("Cannot find function UserCameraControlCallback\n"), std::string::npos);
}

TEST_F(CallbackDispatchTest, WidgetsAreFoundByWidgetAndAFailureIsLeftPending) {
    XPWidgetID widget = Pointer(0x77);
    EXPECT_EQ(CallUserWidgetCallback(1, widget, 0, 0), 1);  // not in the list

    VLTestTable->AddWidgetCallback(WidgetCallbackList, nullptr, widget, nullptr, 1, nullptr);
    EXPECT_EQ(CallUserWidgetCallback(1, widget, 0, 0), 0);  // no script yet

    PyObject* record = Method("Record");
    VLTestTable->UpdateWidgetCallback(WidgetCallbackList, script, widget, record);
    Py_DECREF(record);
    EXPECT_EQ(CallUserWidgetCallback(5, widget, 1, -2), 2);
    // The parameters cross as handles, which are unsigned (a long, "L", under Python 2).
    EXPECT_EQ(LastCall().rfind("(5, 119, 1, 18446744073709551614", 0), 0u);

    VLTestTable->UpdateWidgetCallback(WidgetCallbackList, script, widget, nullptr);
    EXPECT_EQ(CallUserWidgetCallback(5, widget, 1, 2), 1);
    EXPECT_NE(Log().find("Cannot find method UserWidgetCallback\n"), std::string::npos);

    PyObject* raise = Method("Raise");
    VLTestTable->UpdateWidgetCallback(WidgetCallbackList, script, widget, raise);
    Py_DECREF(raise);
    EXPECT_EQ(CallUserWidgetCallback(5, widget, 1, 2), 1);
    EXPECT_TRUE(PyErr_Occurred());
    EXPECT_EQ(CountOf(Log(), "ValueError: boom"), 0);
    // The next call from the simulator prints it before calling anything.
    EXPECT_EQ(CallUserDrawCallback(0, 0, Cell(DrawCallbackList, "Record")), 2);
    EXPECT_FALSE(PyErr_Occurred());
    EXPECT_EQ(CountOf(Log(), "ValueError: boom"), 1);
}

TEST_F(CallbackDispatchTest, DestroyingAContainerRemovesItsChildrenButNotGrandchildren) {
    void* container = Pointer(1);
    void* child = Pointer(2);
    void* grandchild = Pointer(3);
    const int base = static_cast<int>(WidgetCallbackList.size());  // earlier tests' records
    VLTestTable->AddWidgetCallback(WidgetCallbackList, script, container, nullptr, 1, nullptr);
    VLTestTable->AddWidgetCallback(WidgetCallbackList, script, child, nullptr, 0, container);
    VLTestTable->AddWidgetCallback(WidgetCallbackList, nullptr, grandchild, nullptr, 0, child);
    VLTestTable->DeleteWidgetChildCallbacks(WidgetCallbackList, nullptr, container);
    int found = 0, position = -1;
    EXPECT_NE(VLTestTable->FindWidgetCallback(WidgetCallbackList, container, found, position), nullptr);
    EXPECT_EQ(VLTestTable->FindWidgetCallback(WidgetCallbackList, child, found, position), nullptr);
    EXPECT_EQ(found, 0);
    EXPECT_NE(VLTestTable->FindWidgetCallback(WidgetCallbackList, grandchild, found, position), nullptr);
    EXPECT_EQ(position, base + 1);
}

TEST_F(CallbackDispatchTest, ErrorCallbacksAreCalledInOrderEachOnItsOwn) {
    Cell(ErrorCallbackList, "Record");
    Cell(ErrorCallbackList, "Raise");
    Cell(ErrorCallbackList, nullptr);
    SetAttribute("answer", VL_IntFromLong(0));
    Cell(ErrorCallbackList, "Record");
    VL_ErrorCallback("bad handle");
    PyObject* calls = PyObject_GetAttrString(script, "calls");
    EXPECT_EQ(PyList_GET_SIZE(calls), 2);
    Py_DECREF(calls);
    EXPECT_EQ(CountOf(Log(), "ValueError: boom"), 1);
    EXPECT_EQ(CountOf(Log(), "Cannot find method CommandCallback\n"), 1);
}

TEST_F(CallbackDispatchTest, FindsMatchByIdentityAndEachRegistrationKeepsItsOwnHandle) {
    PyObject* first = Method("Record");
    PyObject* second = Method("Record");  // equal, but another object
    ASSERT_NE(first, second);
    const int base = static_cast<int>(FlightLoopCallbackList.size());  // earlier tests' records
    _CallbackList* a = VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, first, Pointer(1));
    _CallbackList* b = VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, first, Pointer(2));
    _CallbackList* legacy = VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, first, Pointer(3),
                                                     VL_FoundBy::Callable);
    int found = -1, position = -1;
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, script, second, Pointer(1), found, position), nullptr);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(position, -1);  // left as it was
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, script, first, Pointer(2), found, position), b);
    EXPECT_EQ(position, base + 1);
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, first, Pointer(1), found, position, 0), a);
    // Each registration's handle goes to its own record, by holder or as the newest one.
    VLTestTable->UpdateCallback(FlightLoopCallbackList, a, Pointer(99));
    _CallbackList* c = VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, first, Pointer(5));
    VLTestTable->UpdateCallback(FlightLoopCallbackList, script, first, Pointer(97));  // the newest: c
    VLTestTable->UpdateCallback(FlightLoopCallbackList, b, Pointer(98));
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, script, Pointer(99), found, position), a);
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, script, Pointer(98), found, position), b);
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, script, Pointer(97), found, position), c);
    // A record found by its handle is no longer found by callable, and the reverse.
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, script, first, Pointer(2), found, position), nullptr);
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, script, first, Pointer(3), found, position), legacy);
    _CallbackList* camera = VLTestTable->AddCallback(CameraCallbackList, script, nullptr, first, Pointer(4));
    VLTestTable->DeleteCallback(FlightLoopCallbackList, legacy, position);
    legacy = VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, first, Pointer(3), VL_FoundBy::Callable);
    EXPECT_EQ(VLTestTable->FindCallback(FlightLoopCallbackList, script, nullptr, found, position), nullptr);
    EXPECT_EQ(VLTestTable->FindCallback(CameraCallbackList, script, nullptr, found, position), camera);
    VLTestTable->DeleteCallback(CameraCallbackList, camera, position);

    // Deleting gives up the record's reference and leaves its cell leading nowhere.
    Py_ssize_t references = Py_REFCNT(first);
    VLTestTable->DeleteCallback(FlightLoopCallbackList, a, base);
    EXPECT_EQ(Py_REFCNT(first), references - 1);
    EXPECT_EQ(FlightLoopCallbackList.size(), static_cast<std::size_t>(base) + 3);
    EXPECT_EQ(CallUserFlightLoopCallback(0, 0, 1, a), 1.0f);
    EXPECT_EQ(LastCall(), "");
    Py_DECREF(first);
    Py_DECREF(second);
}

TEST_F(CallbackDispatchTest, ReferenceValuesThatAreNotOursAreNeverFollowed) {
    int notACell = 12345;
    EXPECT_EQ(VL_FlightLoopCallback(0, 0, 1, nullptr), 1.0f);
    EXPECT_EQ(VL_FlightLoopCallback(0, 0, 1, &notACell), 1.0f);
    EXPECT_EQ(VL_FlightLoopCallback(0, 0, 1, Pointer(0x1234)), 1.0f);
    EXPECT_EQ(VL_DrawCallback(0, 0, &notACell), 0);
    EXPECT_EQ(VL_MouseClickCallback(Window(), 0, 0, 0, &notACell), 0);
    EXPECT_EQ(VL_GetDataf_Callback(&notACell), 0.0f);
    // A cell is recognised by its exact address, not by any address inside it.
    _CallbackList* cell = Cell(FlightLoopCallbackList, "Record");
    EXPECT_EQ(VL_FlightLoopCallback(0, 0, 1, reinterpret_cast<char*>(cell) + 1), 1.0f);
    EXPECT_EQ(LastCall(), "");
    EXPECT_TRUE(VL_IsOwnCell(cell));
    EXPECT_FALSE(VL_IsOwnCell(&notACell));
    EXPECT_FALSE(VL_IsOwnBlock(cell));
}

// A Reload without DEBUG:CheckCallbacks: what the script left is given back before the
// interpreter ends (its destructor still prints), no list keeps it, its cells lead nowhere.
TEST_F(CallbackDispatchTest, AStopReleasesWhatScriptsLeftAndItsCellsLeadNowhere) {
    ASSERT_EQ(PyRun_SimpleString("from __future__ import print_function\n"
                                 "class Probe(object):\n"
                                 "    def Loop(self, *args): return 1.0\n"
                                 "    def __del__(self): print('probe released')\n"
                                 "import VL_Dispatch\n"
                                 "VL_Dispatch.probe = Probe().Loop\n"),
              0);
    PyObject* module = PyImport_ImportModule("VL_Dispatch");
    PyObject* probe = PyObject_GetAttrString(module, "probe");
    PyObject_DelAttrString(module, "probe");
    Py_DECREF(module);
    _CallbackList* cell = VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, probe, Pointer(7));
    VL_CallbackBlock* block = VL_AddCallbackBlock(GetDataMemoryPointerList);
    block->cells[VL_FloatSlot] = Cell(GetDatafCallbackList, "Record");
    Py_DECREF(probe);  // the record holds the last reference
    Restart();
    EXPECT_EQ(CountOf(ReadFile(Scripts() + "/VorlithOutput.txt"), "probe released\n"), 1);
    EXPECT_TRUE(FlightLoopCallbackList.empty());
    EXPECT_TRUE(GetDatafCallbackList.empty());
    EXPECT_TRUE(GetDataMemoryPointerList.empty());
    EXPECT_EQ(cell->record, nullptr);
    EXPECT_EQ(VL_FlightLoopCallback(0, 0, 1, cell), 1.0f);
    EXPECT_EQ(VL_GetDataf_Callback(block), 0.0f);
    EXPECT_EQ(LastCall(), "");
}

}  // namespace
}  // namespace vorlith::test
