// The conventions every binding shares (modules/xplm/Binding.h), in process: out-lists,
// handles and reference values, the guard's report, and the trace block.

#include "CallbackInProcess.h"
#include "modules/xplm/Binding.h"

namespace vorlith::test {
namespace {

class BindingConventionsTest : public InProcessTest {
protected:
    PyObject* Eval(const char* expression) {
        PyObject* main = PyImport_AddModule("__main__");
        PyObject* globals = PyModule_GetDict(main);
        return PyRun_String(expression, Py_eval_input, globals, globals);
    }
    std::string Repr(PyObject* object) {
        PyObject* text = PyObject_Repr(object);
        VL_Text bytes;
        std::string result = text && bytes.set(text) ? bytes.c_str() : "";
        Py_XDECREF(text);
        return result;
    }
};

TEST_F(BindingConventionsTest, OutListsGetTheValueInElementZero) {
    PyObject* empty = Eval("[]");
    PyObject* full = Eval("[5, 6]");
    ASSERT_TRUE(VL_StoreOut(empty, VL_IntFromLong(1000)));
    ASSERT_TRUE(VL_StoreOut(full, VL_TextFromString("text")));
    EXPECT_EQ(Repr(empty), "[1000]");
    EXPECT_EQ(Repr(full), "['text', 6]");
    // The lists own their values: they survive everything else letting go.
    PyObject* big = PyFloat_FromDouble(123.25);
    Py_INCREF(big);
    ASSERT_TRUE(VL_StoreOut(full, big));
    Py_ssize_t references = Py_REFCNT(big);
    Py_DECREF(full);
    EXPECT_EQ(Py_REFCNT(big), references - 1);
    Py_DECREF(big);
    Py_DECREF(empty);
    // None does not want the value.
    EXPECT_TRUE(VL_StoreOut(Py_None, VL_IntFromLong(3)));

    PyObject* list = Eval("[]");
    PyObject* tuple = Eval("()");
    EXPECT_TRUE(VL_CheckOutLists({Py_None, list}));
    EXPECT_FALSE(PyErr_Occurred());
    EXPECT_FALSE(VL_CheckOutLists({list, tuple}));
    ASSERT_TRUE(PyErr_ExceptionMatches(PyExc_TypeError));
    PyErr_Clear();
    Py_DECREF(tuple);
    Py_DECREF(list);
}

TEST_F(BindingConventionsTest, AnyIntegerIsAHandleAndAnythingElseIsNull) {
    PyObject* number = VL_IntFromLong(0x1234);
    EXPECT_EQ(VL_HandleFromObject(number), reinterpret_cast<void*>(0x1234));
    Py_DECREF(number);
    PyObject* text = VL_TextFromString("handle");
    EXPECT_EQ(VL_HandleFromObject(text), nullptr);
    EXPECT_FALSE(PyErr_Occurred());
    Py_DECREF(text);
    PyObject* huge = Eval("2 ** 100");
    EXPECT_EQ(VL_HandleFromObject(huge), nullptr);
    EXPECT_FALSE(PyErr_Occurred());
    Py_DECREF(huge);
    PyObject* handle = VL_HandleObject(reinterpret_cast<void*>(0x1234));
    EXPECT_EQ(Repr(handle).rfind("4660", 0), 0u);  // 4660L under Python 2
    Py_DECREF(handle);
    PyObject* none = VL_HandleObject(nullptr);
    EXPECT_EQ(Repr(none).rfind("0", 0), 0u);
    Py_DECREF(none);
}

TEST_F(BindingConventionsTest, AFailureInTheGuardIsReportedAndAnswersZero) {
    PyObject* result = VL_Guarded("XPLMTest", "XPLMThrows", []() -> PyObject* {
        throw std::runtime_error("the SDK failed");
    });
    EXPECT_EQ(Repr(result), "0");
    Py_DECREF(result);
    EXPECT_NE(Log().find("Module - XPLMTest, Function - XPLMThrows, Error = Parameter Error\n"),
              std::string::npos);
    PyObject* fine = VL_Guarded("XPLMTest", "XPLMWorks", [] { return VL_Done(); });
    EXPECT_EQ(Repr(fine), "1");
    Py_DECREF(fine);
    EXPECT_EQ(CountOf(Log(), "Parameter Error"), 1);
}

TEST_F(BindingConventionsTest, ATraceBlockNamesItsFunctionAroundItsLines) {
    std::vector<int> list(3);
    VL_Trace("XPLMSomething").line("pScriptId = %x, inRefcon = %d\n", VL_Low32(script), 7).size("SomeList", list);
    std::vector<std::string> lines = LinesFrom(Log(), "XPLMSomething", 4);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[1].rfind("pScriptId = ", 0), 0u);
    EXPECT_NE(lines[1].find(", inRefcon = 7"), std::string::npos);
    EXPECT_EQ(lines[2], "SomeList size = 3");
    EXPECT_EQ(lines[3], "XPLMSomething");
}

TEST_F(BindingConventionsTest, ReportsNameTheScriptByItsModule) {
    VL_ReportForScript("XPLMTest", "XPLMRemove", VL_NoSuchCallback, script);
    EXPECT_NE(Log().find("Module - XPLMTest, Function - XPLMRemove, Error = Script 'VL_Dispatch.py' was "
                         "unregistering a callback that does not exist.\n"),
              std::string::npos)
        << Log();
}

}  // namespace
}  // namespace vorlith::test
