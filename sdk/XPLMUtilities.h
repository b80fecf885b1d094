/* XPLMUtilities: key and button simulation, speech and log output, paths and directory
 * listing, versions and language, the error callback, symbol lookup, situation files and
 * the command system of the X-Plane SDK 2.1.x. */
#ifndef _XPLMUtilities_h_
#define _XPLMUtilities_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Legacy command keystrokes: simulator functions, independent of the user's key map. */
enum {
    xplm_key_pause = 0,
    xplm_key_revthrust,
    xplm_key_jettison,
    xplm_key_brakesreg,
    xplm_key_brakesmax,
    xplm_key_gear,
    xplm_key_timedn,
    xplm_key_timeup,
    xplm_key_fadec,
    xplm_key_otto_dis,
    xplm_key_otto_atr,
    xplm_key_otto_asi,
    xplm_key_otto_hdg,
    xplm_key_otto_gps,
    xplm_key_otto_lev,
    xplm_key_otto_hnav,
    xplm_key_otto_alt,
    xplm_key_otto_vvi,
    xplm_key_otto_vnav,
    xplm_key_otto_nav1,
    xplm_key_otto_nav2,
    xplm_key_targ_dn,
    xplm_key_targ_up,
    xplm_key_hdgdn,
    xplm_key_hdgup,
    xplm_key_barodn,
    xplm_key_baroup,
    xplm_key_obs1dn,
    xplm_key_obs1up,
    xplm_key_obs2dn,
    xplm_key_obs2up,
    xplm_key_com1_1,
    xplm_key_com1_2,
    xplm_key_com1_3,
    xplm_key_com1_4,
    xplm_key_nav1_1,
    xplm_key_nav1_2,
    xplm_key_nav1_3,
    xplm_key_nav1_4,
    xplm_key_com2_1,
    xplm_key_com2_2,
    xplm_key_com2_3,
    xplm_key_com2_4,
    xplm_key_nav2_1,
    xplm_key_nav2_2,
    xplm_key_nav2_3,
    xplm_key_nav2_4,
    xplm_key_adf_1,
    xplm_key_adf_2,
    xplm_key_adf_3,
    xplm_key_adf_4,
    xplm_key_adf_5,
    xplm_key_adf_6,
    xplm_key_transpon_1,
    xplm_key_transpon_2,
    xplm_key_transpon_3,
    xplm_key_transpon_4,
    xplm_key_transpon_5,
    xplm_key_transpon_6,
    xplm_key_transpon_7,
    xplm_key_transpon_8,
    xplm_key_flapsup,
    xplm_key_flapsdn,
    xplm_key_cheatoff,
    xplm_key_cheaton,
    xplm_key_sbrkoff,
    xplm_key_sbrkon,
    xplm_key_ailtrimL,
    xplm_key_ailtrimR,
    xplm_key_rudtrimL,
    xplm_key_rudtrimR,
    xplm_key_elvtrimD,
    xplm_key_elvtrimU,
    xplm_key_forward,
    xplm_key_down,
    xplm_key_left,
    xplm_key_right,
    xplm_key_back,
    xplm_key_tower,
    xplm_key_runway,
    xplm_key_chase,
    xplm_key_free1,
    xplm_key_free2,
    xplm_key_spot,
    xplm_key_fullscrn1,
    xplm_key_fullscrn2,
    xplm_key_tanspan,
    xplm_key_smoke,
    xplm_key_map,
    xplm_key_zoomin,
    xplm_key_zoomout,
    xplm_key_cycledump,
    xplm_key_replay,
    xplm_key_tranID,
    xplm_key_max
};
typedef int XPLMCommandKeyID;

/* Legacy joystick-button functions. */
enum {
    xplm_joy_nothing = 0,
    xplm_joy_start_all,
    xplm_joy_start_0,
    xplm_joy_start_1,
    xplm_joy_start_2,
    xplm_joy_start_3,
    xplm_joy_start_4,
    xplm_joy_start_5,
    xplm_joy_start_6,
    xplm_joy_start_7,
    xplm_joy_throt_up,
    xplm_joy_throt_dn,
    xplm_joy_prop_up,
    xplm_joy_prop_dn,
    xplm_joy_mixt_up,
    xplm_joy_mixt_dn,
    xplm_joy_carb_tog,
    xplm_joy_carb_on,
    xplm_joy_carb_off,
    xplm_joy_trev,
    xplm_joy_trm_up,
    xplm_joy_trm_dn,
    xplm_joy_rot_trm_up,
    xplm_joy_rot_trm_dn,
    xplm_joy_rud_lft,
    xplm_joy_rud_cntr,
    xplm_joy_rud_rgt,
    xplm_joy_ail_lft,
    xplm_joy_ail_cntr,
    xplm_joy_ail_rgt,
    xplm_joy_B_rud_lft,
    xplm_joy_B_rud_rgt,
    xplm_joy_look_up,
    xplm_joy_look_dn,
    xplm_joy_look_lft,
    xplm_joy_look_rgt,
    xplm_joy_glance_l,
    xplm_joy_glance_r,
    xplm_joy_v_fnh,
    xplm_joy_v_fwh,
    xplm_joy_v_tra,
    xplm_joy_v_twr,
    xplm_joy_v_run,
    xplm_joy_v_cha,
    xplm_joy_v_fr1,
    xplm_joy_v_fr2,
    xplm_joy_v_spo,
    xplm_joy_flapsup,
    xplm_joy_flapsdn,
    xplm_joy_vctswpfwd,
    xplm_joy_vctswpaft,
    xplm_joy_gear_tog,
    xplm_joy_gear_up,
    xplm_joy_gear_down,
    xplm_joy_lft_brake,
    xplm_joy_rgt_brake,
    xplm_joy_brakesREG,
    xplm_joy_brakesMAX,
    xplm_joy_speedbrake,
    xplm_joy_ott_dis,
    xplm_joy_ott_atr,
    xplm_joy_ott_asi,
    xplm_joy_ott_hdg,
    xplm_joy_ott_alt,
    xplm_joy_ott_vvi,
    xplm_joy_tim_start,
    xplm_joy_tim_reset,
    xplm_joy_ecam_up,
    xplm_joy_ecam_dn,
    xplm_joy_fadec,
    xplm_joy_yaw_damp,
    xplm_joy_art_stab,
    xplm_joy_chute,
    xplm_joy_JATO,
    xplm_joy_arrest,
    xplm_joy_jettison,
    xplm_joy_fuel_dump,
    xplm_joy_puffsmoke,
    xplm_joy_prerotate,
    xplm_joy_UL_prerot,
    xplm_joy_UL_collec,
    xplm_joy_TOGA,
    xplm_joy_shutdown,
    xplm_joy_con_atc,
    xplm_joy_fail_now,
    xplm_joy_pause,
    xplm_joy_rock_up,
    xplm_joy_rock_dn,
    xplm_joy_rock_lft,
    xplm_joy_rock_rgt,
    xplm_joy_rock_for,
    xplm_joy_rock_aft,
    xplm_joy_idle_hilo,
    xplm_joy_lanlights,
    xplm_joy_max
};
typedef int XPLMCommandButtonID;

enum {
    xplm_Host_Unknown = 0,
    xplm_Host_XPlane = 1,
    xplm_Host_PlaneMaker = 2,
    xplm_Host_WorldMaker = 3,
    xplm_Host_Briefer = 4,
    xplm_Host_PartMaker = 5,
    xplm_Host_YoungsMod = 6,
    xplm_Host_XAuto = 7
};
typedef int XPLMHostApplicationID;

enum {
    xplm_Language_Unknown = 0,
    xplm_Language_English = 1,
    xplm_Language_French = 2,
    xplm_Language_German = 3,
    xplm_Language_Italian = 4,
    xplm_Language_Spanish = 5,
    xplm_Language_Korean = 6
#if defined(XPLM200)
    ,
    xplm_Language_Russian = 7,
    xplm_Language_Greek = 8,
    xplm_Language_Japanese = 9,
    xplm_Language_Chinese = 10
#endif
};
typedef int XPLMLanguageCode;

#if defined(XPLM200)
enum {
    xplm_DataFile_Situation = 1,
    xplm_DataFile_ReplayMovie = 2
};
typedef int XPLMDataFileType;

typedef void (*XPLMError_f)(const char * inMessage);
#endif

/* Legacy user interaction */
XPLM_API void         XPLMSimulateKeyPress(int inKeyType, int inKey);
XPLM_API void         XPLMSpeakString(const char * inString);
XPLM_API void         XPLMCommandKeyStroke(XPLMCommandKeyID inKey);
XPLM_API void         XPLMCommandButtonPress(XPLMCommandButtonID inButton);
XPLM_API void         XPLMCommandButtonRelease(XPLMCommandButtonID inButton);
XPLM_API const char * XPLMGetVirtualKeyDescription(char inVirtualKey);

/* Miscellaneous */
XPLM_API void         XPLMReloadScenery(void);
XPLM_API void         XPLMGetSystemPath(char * outSystemPath);
XPLM_API void         XPLMGetPrefsPath(char * outPrefsPath);
XPLM_API const char * XPLMGetDirectorySeparator(void);
XPLM_API char *       XPLMExtractFileAndPath(char * inFullPath);
XPLM_API int          XPLMGetDirectoryContents(const char * inDirectoryPath,
                                               int          inFirstReturn,
                                               char *       outFileNames,
                                               int          inFileNameBufSize,
                                               char **      outIndices,
                                               int          inIndexCount,
                                               int *        outTotalFiles,
                                               int *        outReturnedFiles);
XPLM_API int          XPLMInitialized(void);
XPLM_API void         XPLMGetVersions(int *                   outXPlaneVersion,
                                      int *                   outXPLMVersion,
                                      XPLMHostApplicationID * outHostID);
XPLM_API XPLMLanguageCode XPLMGetLanguage(void);
XPLM_API void         XPLMDebugString(const char * inString);

#if defined(XPLM200)
XPLM_API void         XPLMSetErrorCallback(XPLMError_f inCallback);
XPLM_API void *       XPLMFindSymbol(const char * inString);
XPLM_API int          XPLMLoadDataFile(XPLMDataFileType inFileType, const char * inFilePath);
XPLM_API int          XPLMSaveDataFile(XPLMDataFileType inFileType, const char * inFilePath);
#endif

#if defined(XPLM200)
/* Commands: begin, zero or more continue phases while held, end. */
enum {
    xplm_CommandBegin = 0,
    xplm_CommandContinue = 1,
    xplm_CommandEnd = 2
};
typedef int XPLMCommandPhase;

typedef void * XPLMCommandRef;

typedef int (*XPLMCommandCallback_f)(XPLMCommandRef   inCommand,
                                     XPLMCommandPhase inPhase,
                                     void *           inRefcon);

XPLM_API XPLMCommandRef XPLMFindCommand(const char * inName);
XPLM_API void           XPLMCommandBegin(XPLMCommandRef inCommand);
XPLM_API void           XPLMCommandEnd(XPLMCommandRef inCommand);
XPLM_API void           XPLMCommandOnce(XPLMCommandRef inCommand);
XPLM_API XPLMCommandRef XPLMCreateCommand(const char * inName, const char * inDescription);
XPLM_API void           XPLMRegisterCommandHandler(XPLMCommandRef        inComand,
                                                   XPLMCommandCallback_f inHandler,
                                                   int                   inBefore,
                                                   void *                inRefcon);
XPLM_API void           XPLMUnregisterCommandHandler(XPLMCommandRef        inComand,
                                                     XPLMCommandCallback_f inHandler,
                                                     int                   inBefore,
                                                     void *                inRefcon);
#endif

#ifdef __cplusplus
}
#endif

#endif
