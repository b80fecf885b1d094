// The module XPLMGraphics: OpenGL state, texture numbers, world/local coordinates and
// the simulator's fonts. No state and no callbacks; XPLMMeasureString needs SDK 2.00.

#include <cstring>
#include <vector>

#include "XPLMGraphics.h"
#include "core/PythonErrors.h"
#include "core/SdkCapabilities.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMGraphics";

// The text XPLMDrawString copies before the call: longer text is cut, never overflows.
constexpr std::size_t kDrawStringBuffer = 512;
// One call makes at most this many texture numbers; more is reported as a failed call
// rather than an allocation and a loop the size of any integer a script passes.
constexpr int kMaxTextureNumbers = 65536;

// Unlike the rest of the module: no guard, and 0 for a call that worked.
PyObject* PY_XPLMSetGraphicsState(PyObject*, PyObject* args) {
    int fog, textureUnits, lighting, alphaTesting, alphaBlending, depthTesting, depthWriting;
    if (!PyArg_ParseTuple(args, "iiiiiii", &fog, &textureUnits, &lighting, &alphaTesting,
                          &alphaBlending, &depthTesting, &depthWriting))
        return nullptr;
    XPLMSetGraphicsState(fog, textureUnits, lighting, alphaTesting, alphaBlending, depthTesting,
                         depthWriting);
    return VL_IntFromLong(0);
}

PyObject* PY_XPLMBindTexture2d(PyObject*, PyObject* args) {
    int texture, unit;
    if (!PyArg_ParseTuple(args, "ii", &texture, &unit)) return nullptr;
    return VL_Guarded(kModule, "XPLMBindTexture2d", [&] {
        XPLMBindTexture2d(texture, unit);
        return VL_Done();
    });
}

// The numbers are appended to the list after what it holds (not the element-0 rule).
PyObject* PY_XPLMGenerateTextureNumbers(PyObject*, PyObject* args) {
    PyObject* list;
    int count;
    if (!PyArg_ParseTuple(args, "Oi", &list, &count) || !VL_CheckOutLists({list})) return nullptr;
    return VL_Guarded(kModule, "XPLMGenerateTextureNumbers", [&]() -> PyObject* {
        if (count > kMaxTextureNumbers) throw std::length_error("too many texture numbers");
        if (count <= 0) return VL_Done();
        std::vector<int> numbers(static_cast<std::size_t>(count), 0);
        XPLMGenerateTextureNumbers(numbers.data(), count);
        for (int number : numbers)
            if (!VL_AppendOut(list, VL_IntFromLong(number))) return nullptr;
        return VL_Done();
    });
}

PyObject* PY_XPLMGetTexture(PyObject*, PyObject* args) {
    int texture;
    if (!PyArg_ParseTuple(args, "i", &texture)) return nullptr;
    return VL_Guarded(kModule, "XPLMGetTexture",
                      [&] { return VL_IntFromLong(XPLMGetTexture(texture)); });
}

// Both conversions answer a tuple of three floats, zeros after a failed call.
template <void (*Convert)(double, double, double, double*, double*, double*)>
PyObject* ConvertCoordinates(PyObject* args, const char* function) {
    double a, b, c, outA = 0, outB = 0, outC = 0;
    if (!PyArg_ParseTuple(args, "ddd", &a, &b, &c)) return nullptr;
    if (!VL_GuardedCall(kModule, function, [&] { Convert(a, b, c, &outA, &outB, &outC); }))
        outA = outB = outC = 0;
    return Py_BuildValue("(ddd)", outA, outB, outC);
}

PyObject* PY_XPLMWorldToLocal(PyObject*, PyObject* args) {
    return ConvertCoordinates<XPLMWorldToLocal>(args, "XPLMWorldToLocal");
}

PyObject* PY_XPLMLocalToWorld(PyObject*, PyObject* args) {
    return ConvertCoordinates<XPLMLocalToWorld>(args, "XPLMLocalToWorld");
}

PyObject* PY_XPLMDrawTranslucentDarkBox(PyObject*, PyObject* args) {
    int left, top, right, bottom;
    if (!PyArg_ParseTuple(args, "iiii", &left, &top, &right, &bottom)) return nullptr;
    return VL_Guarded(kModule, "XPLMDrawTranslucentDarkBox", [&] {
        XPLMDrawTranslucentDarkBox(left, top, right, bottom);
        return VL_Done();
    });
}

PyObject* PY_XPLMDrawString(PyObject*, PyObject* args) {
    float colour[3];
    int x, y, wrapWidth, font;
    VL_Text text;
    if (!PyArg_ParseTuple(args, "(fff)iiO&ii", &colour[0], &colour[1], &colour[2], &x, &y,
                          VL_ParseText, &text, &wrapWidth, &font))
        return nullptr;
    return VL_Guarded(kModule, "XPLMDrawString", [&] {
        char buffer[kDrawStringBuffer];
        std::size_t length = std::strlen(text.c_str());
        if (length >= sizeof buffer) length = sizeof buffer - 1;
        std::memcpy(buffer, text.c_str(), length);
        buffer[length] = '\0';
        // A width of 0 means one line: the SDK then gets no width at all.
        XPLMDrawString(colour, x, y, buffer, wrapWidth ? &wrapWidth : nullptr, font);
        return VL_Done();
    });
}

PyObject* PY_XPLMDrawNumber(PyObject*, PyObject* args) {
    float colour[3];
    int x, y, digits, decimals, showSign, font;
    double value;
    if (!PyArg_ParseTuple(args, "(fff)iidiiii", &colour[0], &colour[1], &colour[2], &x, &y, &value,
                          &digits, &decimals, &showSign, &font))
        return nullptr;
    return VL_Guarded(kModule, "XPLMDrawNumber", [&] {
        XPLMDrawNumber(colour, x, y, value, digits, decimals, showSign, font);
        return VL_Done();
    });
}

PyObject* PY_XPLMGetFontDimensions(PyObject*, PyObject* args) {
    int font;
    PyObject *widthList, *heightList, *digitsList;
    if (!PyArg_ParseTuple(args, "iOOO", &font, &widthList, &heightList, &digitsList) ||
        !VL_CheckOutLists({widthList, heightList, digitsList}))
        return nullptr;
    return VL_Guarded(kModule, "XPLMGetFontDimensions", [&]() -> PyObject* {
        int width = 0, height = 0, digitsOnly = 0;
        XPLMGetFontDimensions(font, widthList == Py_None ? nullptr : &width,
                              heightList == Py_None ? nullptr : &height,
                              digitsList == Py_None ? nullptr : &digitsOnly);
        if (!VL_StoreOut(widthList, VL_IntFromLong(width)) ||
            !VL_StoreOut(heightList, VL_IntFromLong(height)) ||
            !VL_StoreOut(digitsList, VL_IntFromLong(digitsOnly)))
            return nullptr;
        return VL_Done();
    });
}

PyObject* PY_XPLMMeasureString(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMMeasureString", XPLMMeasureString_ptr, VL_NotSupported200))
        return VL_IntFromLong(0);
    int font, count;
    VL_Text text;
    if (!PyArg_ParseTuple(args, "iO&i", &font, VL_ParseText, &text, &count)) return nullptr;
    // The SDK reads exactly `count` characters: never more than the text has.
    if (count > text.size()) count = static_cast<int>(text.size());
    return VL_Guarded(kModule, "XPLMMeasureString", [&] {
        return VL_IntFromLong(static_cast<long>(XPLMMeasureString_ptr(font, text.c_str(), count)));
    });
}

PyMethodDef XPLMGraphicsMethods[] = {
    {"XPLMSetGraphicsState", PY_XPLMSetGraphicsState, VL_METH_ARGS, "Set Graphics State."},
    {"XPLMBindTexture2d", PY_XPLMBindTexture2d, VL_METH_ARGS, "Bind Texture."},
    {"XPLMGenerateTextureNumbers", PY_XPLMGenerateTextureNumbers, VL_METH_ARGS,
     "Generate Texture Numbers."},
    {"XPLMGetTexture", PY_XPLMGetTexture, VL_METH_ARGS, "Get Texture."},
    {"XPLMWorldToLocal", PY_XPLMWorldToLocal, VL_METH_ARGS, "Convert World to Local Coordinates."},
    {"XPLMLocalToWorld", PY_XPLMLocalToWorld, VL_METH_ARGS, "Convert Local to World Coordinates."},
    {"XPLMDrawTranslucentDarkBox", PY_XPLMDrawTranslucentDarkBox, VL_METH_ARGS,
     "Draw Translucent Dark Box."},
    {"XPLMDrawString", PY_XPLMDrawString, VL_METH_ARGS, "Draw String."},
    {"XPLMDrawNumber", PY_XPLMDrawNumber, VL_METH_ARGS, "Draw Number."},
    {"XPLMGetFontDimensions", PY_XPLMGetFontDimensions, VL_METH_ARGS, "Get Font Dimensions."},
    {"XPLMMeasureString", PY_XPLMMeasureString, VL_METH_ARGS, "Measure string length."},
    {nullptr, nullptr, 0, nullptr},
};

#define VL_CONSTANT(name) {#name, name}
const VL_Constant XPLMGraphicsConstants[] = {
    VL_CONSTANT(xplm_Tex_GeneralInterface),
    VL_CONSTANT(xplm_Tex_AircraftPaint),
    VL_CONSTANT(xplm_Tex_AircraftLiteMap),
    VL_CONSTANT(xplmFont_Basic),
    VL_CONSTANT(xplmFont_Menus),
    VL_CONSTANT(xplmFont_Metal),
    VL_CONSTANT(xplmFont_Led),
    VL_CONSTANT(xplmFont_LedWide),
    VL_CONSTANT(xplmFont_PanelHUD),
    VL_CONSTANT(xplmFont_PanelEFIS),
    VL_CONSTANT(xplmFont_PanelGPS),
    VL_CONSTANT(xplmFont_RadiosGA),
    VL_CONSTANT(xplmFont_RadiosBC),
    VL_CONSTANT(xplmFont_RadiosHM),
    VL_CONSTANT(xplmFont_RadiosGANarrow),
    VL_CONSTANT(xplmFont_RadiosBCNarrow),
    VL_CONSTANT(xplmFont_RadiosHMNarrow),
    VL_CONSTANT(xplmFont_Timer),
    VL_CONSTANT(xplmFont_FullRound),
    VL_CONSTANT(xplmFont_SmallRound),
    VL_CONSTANT(xplmFont_Menus_Localized),
    VL_CONSTANT(xplmFont_Proportional),
};
#undef VL_CONSTANT

}  // namespace

void initXPLMGraphics() {
    PyObject* module = VL_CreateModule("XPLMGraphics", XPLMGraphicsMethods);
    if (!module || !VL_AddConstants(module, XPLMGraphicsConstants)) VL_PrintPythonError();
}

}  // namespace vorlith
