/* XPLMGraphics: OpenGL state helpers, texture numbers, world/local coordinate
 * conversion and the simulator's bitmap fonts of the X-Plane SDK 2.1.x. */
#ifndef _XPLMGraphics_h_
#define _XPLMGraphics_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/***************************************************************************
 * X-PLANE GRAPHICS
 ***************************************************************************/

typedef int XPLMTextureID;
enum {
    xplm_Tex_GeneralInterface = 0,
    xplm_Tex_AircraftPaint = 1,
    xplm_Tex_AircraftLiteMap = 2
};

XPLM_API void XPLMSetGraphicsState(int inEnableFog, int inNumberTexUnits, int inEnableLighting,
                                   int inEnableAlphaTesting, int inEnableAlphaBlending,
                                   int inEnableDepthTesting, int inEnableDepthWriting);
XPLM_API void XPLMBindTexture2d(int inTextureNum, int inTextureUnit);
XPLM_API void XPLMGenerateTextureNumbers(int* outTextureIDs, int inCount);
XPLM_API int XPLMGetTexture(XPLMTextureID inTexture);

XPLM_API void XPLMWorldToLocal(double inLatitude, double inLongitude, double inAltitude, double* outX,
                               double* outY, double* outZ);
XPLM_API void XPLMLocalToWorld(double inX, double inY, double inZ, double* outLatitude,
                               double* outLongitude, double* outAltitude);

XPLM_API void XPLMDrawTranslucentDarkBox(int inLeft, int inTop, int inRight, int inBottom);

/***************************************************************************
 * X-PLANE TEXT
 ***************************************************************************/

typedef int XPLMFontID;
enum {
    xplmFont_Basic = 0,
    xplmFont_Menus = 1,
    xplmFont_Metal = 2,
    xplmFont_Led = 3,
    xplmFont_LedWide = 4,
    xplmFont_PanelHUD = 5,
    xplmFont_PanelEFIS = 6,
    xplmFont_PanelGPS = 7,
    xplmFont_RadiosGA = 8,
    xplmFont_RadiosBC = 9,
    xplmFont_RadiosHM = 10,
    xplmFont_RadiosGANarrow = 11,
    xplmFont_RadiosBCNarrow = 12,
    xplmFont_RadiosHMNarrow = 13,
    xplmFont_Timer = 14,
    xplmFont_FullRound = 15,
    xplmFont_SmallRound = 16,
    xplmFont_Menus_Localized = 17
#if defined(XPLM200)
    ,
    xplmFont_Proportional = 18
#endif
};

XPLM_API void XPLMDrawString(float* inColorRGB, int inXOffset, int inYOffset, char* inChar,
                             int* inWordWrapWidth, XPLMFontID inFontID);
XPLM_API void XPLMDrawNumber(float* inColorRGB, int inXOffset, int inYOffset, double inValue, int inDigits,
                             int inDecimals, int inShowSign, XPLMFontID inFontID);
XPLM_API void XPLMGetFontDimensions(XPLMFontID inFontID, int* outCharWidth, int* outCharHeight,
                                    int* outDigitsOnly);

#if defined(XPLM200)
XPLM_API float XPLMMeasureString(XPLMFontID inFontID, const char* inChar, int inNumChars);
#endif

#ifdef __cplusplus
}
#endif

#endif /* _XPLMGraphics_h_ */
