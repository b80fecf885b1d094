// The module XPStandardWidgets: no functions, only the standard widget classes with their
// styles, properties and messages, 76 constants in the order scripts have always had them.

#include "XPStandardWidgets.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

PyMethodDef XPStandardWidgetsMethods[] = {
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPStandardWidgetsConstants[] = {
    VL_CONSTANT(xpWidgetClass_MainWindow),
    VL_CONSTANT(xpMainWindowStyle_MainWindow),
    VL_CONSTANT(xpMainWindowStyle_Translucent),
    VL_CONSTANT(xpProperty_MainWindowType),
    VL_CONSTANT(xpProperty_MainWindowHasCloseBoxes),
    VL_CONSTANT(xpMessage_CloseButtonPushed),
    VL_CONSTANT(xpWidgetClass_SubWindow),
    VL_CONSTANT(xpSubWindowStyle_SubWindow),
    VL_CONSTANT(xpSubWindowStyle_Screen),
    VL_CONSTANT(xpSubWindowStyle_ListView),
    VL_CONSTANT(xpProperty_SubWindowType),
    VL_CONSTANT(xpWidgetClass_Button),
    VL_CONSTANT(xpPushButton),
    VL_CONSTANT(xpRadioButton),
    VL_CONSTANT(xpWindowCloseBox),
    VL_CONSTANT(xpLittleDownArrow),
    VL_CONSTANT(xpLittleUpArrow),
    VL_CONSTANT(xpButtonBehaviorPushButton),
    VL_CONSTANT(xpButtonBehaviorCheckBox),
    VL_CONSTANT(xpButtonBehaviorRadioButton),
    VL_CONSTANT(xpProperty_ButtonType),
    VL_CONSTANT(xpProperty_ButtonBehavior),
    VL_CONSTANT(xpProperty_ButtonState),
    VL_CONSTANT(xpMsg_PushButtonPressed),
    VL_CONSTANT(xpMsg_ButtonStateChanged),
    VL_CONSTANT(xpWidgetClass_TextField),
    VL_CONSTANT(xpTextEntryField),
    VL_CONSTANT(xpTextTransparent),
    VL_CONSTANT(xpTextTranslucent),
    VL_CONSTANT(xpProperty_EditFieldSelStart),
    VL_CONSTANT(xpProperty_EditFieldSelEnd),
    VL_CONSTANT(xpProperty_EditFieldSelDragStart),
    VL_CONSTANT(xpProperty_TextFieldType),
    VL_CONSTANT(xpProperty_PasswordMode),
    VL_CONSTANT(xpProperty_MaxCharacters),
    VL_CONSTANT(xpProperty_ScrollPosition),
    VL_CONSTANT(xpProperty_Font),
    VL_CONSTANT(xpProperty_ActiveEditSide),
    VL_CONSTANT(xpMsg_TextFieldChanged),
    VL_CONSTANT(xpWidgetClass_ScrollBar),
    VL_CONSTANT(xpScrollBarTypeScrollBar),
    VL_CONSTANT(xpScrollBarTypeSlider),
    VL_CONSTANT(xpProperty_ScrollBarSliderPosition),
    VL_CONSTANT(xpProperty_ScrollBarMin),
    VL_CONSTANT(xpProperty_ScrollBarMax),
    VL_CONSTANT(xpProperty_ScrollBarPageAmount),
    VL_CONSTANT(xpProperty_ScrollBarType),
    VL_CONSTANT(xpProperty_ScrollBarSlop),
    VL_CONSTANT(xpMsg_ScrollBarSliderPositionChanged),
    VL_CONSTANT(xpWidgetClass_Caption),
    VL_CONSTANT(xpProperty_CaptionLit),
    VL_CONSTANT(xpWidgetClass_GeneralGraphics),
    VL_CONSTANT(xpShip),
    VL_CONSTANT(xpILSGlideScope),
    VL_CONSTANT(xpMarkerLeft),
    VL_CONSTANT(xp_Airport),
    VL_CONSTANT(xpNDB),
    VL_CONSTANT(xpVOR),
    VL_CONSTANT(xpRadioTower),
    VL_CONSTANT(xpAircraftCarrier),
    VL_CONSTANT(xpFire),
    VL_CONSTANT(xpMarkerRight),
    VL_CONSTANT(xpCustomObject),
    VL_CONSTANT(xpCoolingTower),
    VL_CONSTANT(xpSmokeStack),
    VL_CONSTANT(xpBuilding),
    VL_CONSTANT(xpPowerLine),
    VL_CONSTANT(xpVORWithCompassRose),
    VL_CONSTANT(xpOilPlatform),
    VL_CONSTANT(xpOilPlatformSmall),
    VL_CONSTANT(xpWayPoint),
    VL_CONSTANT(xpProperty_GeneralGraphicsType),
    VL_CONSTANT(xpWidgetClass_Progress),
    VL_CONSTANT(xpProperty_ProgressPosition),
    VL_CONSTANT(xpProperty_ProgressMin),
    VL_CONSTANT(xpProperty_ProgressMax),
};
static_assert(sizeof XPStandardWidgetsConstants / sizeof XPStandardWidgetsConstants[0] == 76,
              "XPStandardWidgets has 76 constants");

}  // namespace

void initXPStandardWidgets() {
    PyObject* module = VL_CreateModule("XPStandardWidgets", XPStandardWidgetsMethods);
    if (!module || !VL_AddConstants(module, XPStandardWidgetsConstants)) VL_PrintPythonError();
}

}  // namespace vorlith
