/* XPStandardWidgets: class ids, styles, properties and messages of the standard
 * widget classes of the X-Plane SDK 2.1.x. Declares no functions. */
#ifndef _XPStandardWidgets_h_
#define _XPStandardWidgets_h_

#include "XPWidgetDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Main window */
#define xpWidgetClass_MainWindow 1

enum {
    xpMainWindowStyle_MainWindow = 0,
    xpMainWindowStyle_Translucent = 1
};

enum {
    xpProperty_MainWindowType = 1100,
    xpProperty_MainWindowHasCloseBoxes = 1200
};

enum {
    xpMessage_CloseButtonPushed = 1200
};

/* Sub window */
#define xpWidgetClass_SubWindow 2

enum {
    xpSubWindowStyle_SubWindow = 0,
    xpSubWindowStyle_Screen = 2,
    xpSubWindowStyle_ListView = 3
};

enum {
    xpProperty_SubWindowType = 1200
};

/* Button */
#define xpWidgetClass_Button 3

enum {
    xpPushButton = 0,
    xpRadioButton = 1,
    xpWindowCloseBox = 3,
    xpLittleDownArrow = 5,
    xpLittleUpArrow = 6
};

enum {
    xpButtonBehaviorPushButton = 0,
    xpButtonBehaviorCheckBox = 1,
    xpButtonBehaviorRadioButton = 2
};

enum {
    xpProperty_ButtonType = 1300,
    xpProperty_ButtonBehavior = 1301,
    xpProperty_ButtonState = 1302
};

enum {
    xpMsg_PushButtonPressed = 1300,
    xpMsg_ButtonStateChanged = 1301
};

/* Text field */
#define xpWidgetClass_TextField 4

enum {
    xpTextEntryField = 0,
    xpTextTransparent = 3,
    xpTextTranslucent = 4
};

enum {
    xpProperty_EditFieldSelStart = 1400,
    xpProperty_EditFieldSelEnd = 1401,
    xpProperty_EditFieldSelDragStart = 1402,
    xpProperty_TextFieldType = 1403,
    xpProperty_PasswordMode = 1404,
    xpProperty_MaxCharacters = 1405,
    xpProperty_ScrollPosition = 1406,
    xpProperty_Font = 1407,
    xpProperty_ActiveEditSide = 1408
};

enum {
    xpMsg_TextFieldChanged = 1400
};

/* Scroll bar */
#define xpWidgetClass_ScrollBar 5

enum {
    xpScrollBarTypeScrollBar = 0,
    xpScrollBarTypeSlider = 1
};

enum {
    xpProperty_ScrollBarSliderPosition = 1500,
    xpProperty_ScrollBarMin = 1501,
    xpProperty_ScrollBarMax = 1502,
    xpProperty_ScrollBarPageAmount = 1503,
    xpProperty_ScrollBarType = 1504,
    xpProperty_ScrollBarSlop = 1505
};

enum {
    xpMsg_ScrollBarSliderPositionChanged = 1500
};

/* Caption */
#define xpWidgetClass_Caption 6

enum {
    xpProperty_CaptionLit = 1600
};

/* General graphics */
#define xpWidgetClass_GeneralGraphics 7

enum {
    xpShip = 4,
    xpILSGlideScope = 5,
    xpMarkerLeft = 6,
    xp_Airport = 7,
    xpNDB = 8,
    xpVOR = 9,
    xpRadioTower = 10,
    xpAircraftCarrier = 11,
    xpFire = 12,
    xpMarkerRight = 13,
    xpCustomObject = 14,
    xpCoolingTower = 15,
    xpSmokeStack = 16,
    xpBuilding = 17,
    xpPowerLine = 18,
    xpVORWithCompassRose = 19,
    xpOilPlatform = 21,
    xpOilPlatformSmall = 22,
    xpWayPoint = 23
};

enum {
    xpProperty_GeneralGraphicsType = 1700
};

/* Progress indicator */
#define xpWidgetClass_Progress 8

enum {
    xpProperty_ProgressPosition = 1800,
    xpProperty_ProgressMin = 1801,
    xpProperty_ProgressMax = 1802
};

#ifdef __cplusplus
}
#endif

#endif
