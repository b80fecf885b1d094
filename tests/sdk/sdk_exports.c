/* The host libraries export every SDK function under its C name, so that a plug-in's
 * undefined SDK references bind to them when the simulator loads it: an SDK function
 * defined without C linkage, or left out, is reported here by name. */
#include <dlfcn.h>
#include <stdio.h>

#include "sdk_functions.h"

#define SDK_NAME(name) #name,
static const char * const sdkFunctions[] = { SDK_FUNCTIONS(SDK_NAME) };

int main(void)
{
    static const char * const libraries[] = { SDK_XPLM_LIBRARY, SDK_WIDGETS_LIBRARY };
    size_t i;
    int missing = 0;
    const int total = (int)(sizeof(sdkFunctions) / sizeof(sdkFunctions[0]));
    for (i = 0; i < sizeof(libraries) / sizeof(libraries[0]); ++i) {
        if (!dlopen(libraries[i], RTLD_NOW | RTLD_GLOBAL)) {
            printf("cannot load %s: %s\n", libraries[i], dlerror());
            return 1;
        }
    }
    for (i = 0; i < sizeof(sdkFunctions) / sizeof(sdkFunctions[0]); ++i) {
        if (!dlsym(RTLD_DEFAULT, sdkFunctions[i])) {
            printf("not exported: %s\n", sdkFunctions[i]);
            ++missing;
        }
    }
    printf("%d of %d SDK functions exported\n", total - missing, total);
    return missing == 0 ? 0 : 1;
}
