// In-process tests of the bridge: the plug-in's code linked into the test, the host
// started through the driver API without loading lin.xpl, and the script VL_Dispatch.py
// loaded by StartPython. The test body holds the interpreter (a PythonGuard) throughout.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Harness.h"
#include "callbacks/Registry.h"
#include "core/Lifecycle.h"
#include "core/PythonGuard.h"
#include "driver.h"

namespace vorlith::test {

namespace fs = std::filesystem;

class InProcessTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        root = std::string(VORLITH_TEST_WORK_DIR) + "/" + info->test_suite_name() + "." + info->name();
        fs::remove_all(root);
        fs::create_directories(Scripts());
        fs::copy_file(std::string(VORLITH_TEST_SCRIPTS) + "/VL_Dispatch.py", Scripts() + "/VL_Dispatch.py");
        xpsim::Options options;
        options.root = root;
        std::string error;
        ASSERT_TRUE(xpsim::driver::start(options, &error)) << error;
        VLTestTable = new VL_ScriptTable;
        Start();
    }
    void TearDown() override {
        guard.reset();
        StopPython(0);
        delete VLTestTable;
        VLTestTable = nullptr;
        xpsim::driver::shutdown();
    }

    void Start() {
        StartPython(0);
        guard = std::make_unique<PythonGuard>();
        ASSERT_EQ(VLTestTable->GetScriptTableSize(), 1);
        script = VLTestTable->GetScriptId(0);
    }
    void Restart() {
        guard.reset();
        StopPython(0);
        Start();
    }

    std::string Scripts() const { return root + "/Resources/plugins/PythonScripts"; }
    std::string Log() const { return ReadFile(Scripts() + "/VorlithLog.txt"); }

    PyObject* Method(const char* name) {
        PyObject* method = PyObject_GetAttrString(script, name);
        EXPECT_NE(method, nullptr) << name;
        return method;
    }
    // A record of the script in `list`, with the named method (or none) and refcon 7;
    // the record keeps its own reference.
    _CallbackList* Cell(VL_CallbackListType& list, const char* method) {
        PyObject* callable = method ? Method(method) : nullptr;
        _CallbackList* cell = VLTestTable->AddCallback(list, script, nullptr, callable, reinterpret_cast<void*>(7));
        Py_XDECREF(callable);
        return cell;
    }
    void SetAttribute(const char* name, PyObject* value) {
        ASSERT_EQ(PyObject_SetAttrString(script, name, value), 0);
        Py_DECREF(value);
    }
    // How Record was last called, "" when it was not called since the last look.
    std::string LastCall() {
        PyObject* calls = PyObject_GetAttrString(script, "calls");
        std::string last;
        if (calls && PyList_GET_SIZE(calls) > 0) {
            PyObject* text = PyObject_Str(PyList_GET_ITEM(calls, PyList_GET_SIZE(calls) - 1));
            VL_Text bytes;
            if (text && bytes.set(text)) last = bytes.c_str();
            Py_XDECREF(text);
            PyList_SetSlice(calls, 0, PyList_GET_SIZE(calls), nullptr);
        }
        Py_XDECREF(calls);
        return last;
    }

    std::string root;
    PyObject* script = nullptr;
    std::unique_ptr<PythonGuard> guard;
};

}  // namespace vorlith::test
