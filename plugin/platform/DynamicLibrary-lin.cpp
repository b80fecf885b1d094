// The dynamic loader on Linux (dlfcn).

#include "platform/DynamicLibrary.h"

#include <dlfcn.h>

#include <cstdio>

#include "platform/PythonCompat.h"

namespace vorlith {

namespace {
void PrintLoaderError() {
    const char* error = dlerror();
    if (error) std::printf("dlerror: %s\n", error);
}
}  // namespace

void* XPLoadDLL(const char* filename) {
    void* handle = dlopen(filename, RTLD_NOW | RTLD_GLOBAL);
    if (!handle) PrintLoaderError();
    return handle;
}

void XPUnloadDLL(void* handle) {
    if (handle) dlclose(handle);
}

void* XPFindSymbol(void* handle, const char* symbol) {
    if (!handle) return nullptr;
    dlerror();
    void* address = dlsym(handle, symbol);
    if (!address) PrintLoaderError();
    return address;
}

bool VL_MakePythonSymbolsGlobal() {
    Dl_info info;
    if (!dladdr(reinterpret_cast<void*>(&Py_IsInitialized), &info) || !info.dli_fname) return false;
    // NOLOAD: only promote the copy already mapped, never load a second one. The handle is
    // kept open on purpose, so the library stays global for the life of the process.
    return dlopen(info.dli_fname, RTLD_NOW | RTLD_GLOBAL | RTLD_NOLOAD) != nullptr;
}

bool VL_KeepPluginLoaded() {
    Dl_info info;
    if (!dladdr(reinterpret_cast<void*>(&VL_KeepPluginLoaded), &info) || !info.dli_fname) return false;
    // The handle is never closed: it only sets the flag on the copy already mapped.
    return dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE) != nullptr;
}

}  // namespace vorlith
