// Linux: memory in the live part of the calling thread's stack (between this frame and
// the stack's top) is mapped and read directly; anything else is copied by the kernel,
// which answers EFAULT where a plain copy would fault.

#include "platform/Memory.h"

#include <pthread.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>

namespace vorlith {

namespace {

// The highest address of the calling thread's stack, 0 when it cannot be known.
std::uintptr_t StackTop() {
    thread_local std::uintptr_t top = [] {
        pthread_attr_t attributes;
        void* address = nullptr;
        std::size_t size = 0;
        if (pthread_getattr_np(pthread_self(), &attributes) != 0) return std::uintptr_t{0};
        int status = pthread_attr_getstack(&attributes, &address, &size);
        pthread_attr_destroy(&attributes);
        return status == 0 ? reinterpret_cast<std::uintptr_t>(address) + size : std::uintptr_t{0};
    }();
    return top;
}

}  // namespace

bool VL_ReadMemory(void* target, const void* source, std::size_t size) {
    auto address = reinterpret_cast<std::uintptr_t>(source);
    // The first page is never mapped; most made-up pointers are small integers.
    if (address < 4096 || address + size < address) return false;
    // A caller's local, as the simulator passes its structures: no system call.
    char here;
    auto frame = reinterpret_cast<std::uintptr_t>(&here);
    if (address > frame && address + size <= StackTop()) {
        std::memcpy(target, source, size);
        return true;
    }
    iovec local{target, size};
    iovec remote{const_cast<void*>(source), size};
    ssize_t copied = process_vm_readv(getpid(), &local, 1, &remote, 1, 0);
    return copied == static_cast<ssize_t>(size);
}

}  // namespace vorlith
