// Conformance of the sdk/ headers in C++17: the same checks as sdk_check.c, where
// C++ also compares field types and the exact text of documented #defines, and a
// prototype that differs is a conflicting declaration of a C function.
#include <cstddef>
#include <type_traits>

namespace {
constexpr bool sameText(const char* a, const char* b)
{
    return *a == *b && (*a == '\0' || sameText(a + 1, b + 1));
}
}  // namespace

#define SDK_CHECK_BEGIN_DECLS extern "C" {
#define SDK_CHECK_END_DECLS }
#define SDK_CHECK(cond, what) static_assert(cond, what)
#define SDK_STR_(x) #x
#define SDK_STR(x) SDK_STR_(x)
#define SDK_CHECK_TEXT(name, text) \
    static_assert(sameText(SDK_STR(name), text), #name " expands to " text)
#define SDK_CHECK_FIELD_TYPE(type, field, field_type) \
    static_assert(std::is_same<decltype(type::field), field_type>::value, #type "." #field " type")

#include "sdk_check_common.h"
SDK_CHECK_TEXT(PLUGIN_API, "extern \"C\" __attribute__((visibility(\"default\")))");
#include "sdk_checks.h"

// XPUFixedLayout is documented to be usable as a widget callback.
static_assert(std::is_same<decltype(&XPUFixedLayout), XPWidgetFunc_t>::value,
              "XPUFixedLayout has the XPWidgetFunc_t signature");
