/* Conformance of the sdk/ headers in plain C: every header included, then every
 * documented prototype, typedef, constant and struct layout checked at compile time
 * (sdk_checks.h). Built once per SDK gate setting; with SDK_CHECK_REPORT it also
 * becomes the program that reports how much was checked. */
#include <stddef.h>

#define SDK_CHECK_BEGIN_DECLS
#define SDK_CHECK_END_DECLS
#define SDK_CHECK(cond, what) _Static_assert(cond, what)
#define SDK_STR_(x) #x
#define SDK_STR(x) SDK_STR_(x)
/* C cannot compare strings at compile time; the C++ check compares the text itself. */
#define SDK_CHECK_TEXT(name, text) \
    _Static_assert(sizeof(SDK_STR(name)) == sizeof(text), #name " expands to " text)
#define SDK_CHECK_FIELD_TYPE(type, field, field_type)

#include "sdk_check_common.h"
SDK_CHECK_TEXT(PLUGIN_API, "__attribute__((visibility(\"default\")))");
#include "sdk_checks.h"

/* The helper macros of XPWidgetUtils read the documented fields and stay lvalues. */
void sdk_check_widget_macros(intptr_t mouse, intptr_t change, intptr_t key);
void sdk_check_widget_macros(intptr_t mouse, intptr_t change, intptr_t key)
{
    static const XPWidgetCreate_t table[3];
    int sum = MOUSE_X(mouse) + MOUSE_Y(mouse) + DELTA_X(change) + DELTA_Y(change)
            + DELTA_W(change) + DELTA_H(change) + KEY_FLAGS(key);
    KEY_CHAR(key) = (char)sum;
    KEY_VKEY(key) = (char)IN_RECT(1, 2, 0, 3, 4, 0);
    _Static_assert(WIDGET_COUNT(table) == 3, "WIDGET_COUNT counts table rows");
}

#ifdef SDK_CHECK_REPORT
#include <stdio.h>

int main(void)
{
    printf("SDK headers conform: %d functions, %d callback typedefs, %d typedefs, "
           "%d constants, %d structs (%d fields)\n",
           SDK_CHECKED_FUNCTIONS, SDK_CHECKED_CALLBACKS, SDK_CHECKED_TYPEDEFS,
           SDK_CHECKED_CONSTANTS, SDK_CHECKED_STRUCTS, SDK_CHECKED_FIELDS);
    return 0;
}
#endif
