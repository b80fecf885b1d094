// The dynamic loader, as the plug-in uses it: opening a library with global symbols,
// finding a symbol, and making the already loaded Python library's symbols global.
#pragma once

namespace vorlith {

// dlopen with RTLD_NOW | RTLD_GLOBAL; on failure prints "dlerror: %s\n" to stdout.
void* XPLoadDLL(const char* filename);
void XPUnloadDLL(void* handle);
// dlsym; null for a null handle; a failure prints "dlerror: %s\n" to stdout.
void* XPFindSymbol(void* handle, const char* symbol);

// The simulator loads plug-ins with local scope, so libpython's symbols are invisible to
// the standard library's extension modules (math, _socket...) until it is re-opened with
// global scope. Returns false if it could not be.
bool VL_MakePythonSymbolsGlobal();

// Marks the plug-in's own binary as never to be unloaded (a Python thread still runs code
// that lives in it). False if it could not be.
bool VL_KeepPluginLoaded();

}  // namespace vorlith
