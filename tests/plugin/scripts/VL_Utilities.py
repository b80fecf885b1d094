# XPLMUtilities and XPLMPlugin from one script: paths, listings, commands, the error
# callback, features with the native-path bracket, plug-ins and messages. One line per
# check on standard output; the test reads them back.
from __future__ import print_function
import os
import XPLMDefs
import XPLMPlugin as P
import XPLMProcessing
import XPLMUtilities as U

NATIVE = "XPLM_USE_NATIVE_PATHS"
try:
    as_long = long  # Python 2: a message parameter must be a long
except NameError:
    as_long = int


def raises(label, call, *args):
    try:
        call(*args)
        print("%s raised nothing" % label)
    except Exception as e:
        print("%s raised %s" % (label, type(e).__name__))


class Vorlith:
    def XPluginStart(self):
        self.onError = self.ErrorCallback
        self.otherError = self.OtherErrorCallback
        self.onCommand = self.CommandHandler
        self.onceOnly = self.OnceHandler
        self.enumerator = self.FeatureEnumerator
        self.run = self.Run
        self.watchErrors = False
        XPLMProcessing.XPLMRegisterFlightLoopCallback(self, self.run, 0.1, 0)
        return "Utilities", "vorlith.test.utilities", "XPLMUtilities and XPLMPlugin"

    def XPluginStop(self):
        U.XPLMUnregisterCommandHandler(self, self.hello, self.onCommand, 1, 5)
        XPLMProcessing.XPLMUnregisterFlightLoopCallback(self, self.run, 0)
        # The error callback and one feature enumeration are left for the check at stop.

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        if message >= 0x7F000:
            print("message %x from %d param %s" % (message, sender, "set" if param else "zero"))
            if param == 0xBEEF:
                print("param is 0xBEEF")

    def ErrorCallback(self, message):
        print("error: %s" % message)
        if self.watchErrors:
            print("native during call %d" % P.XPLMIsFeatureEnabled(NATIVE))

    def OtherErrorCallback(self, message):
        print("OTHER ERROR CALLBACK CALLED")

    def CommandHandler(self, command, phase, refcon):
        # The command comes as a 32-bit int.
        print("hello phase %d refcon %d same %s" % (phase, refcon, command % 2 ** 32 == self.hello % 2 ** 32))
        return 1

    def OnceHandler(self, command, phase, refcon):
        print("once phase %d" % phase)
        print("unregister itself -> %d" % U.XPLMUnregisterCommandHandler(self, self.once, self.onceOnly, 0, 0))
        return 1

    def FeatureEnumerator(self, name, refcon):
        print("feature %s refcon %d" % (name, refcon))

    def Run(self, sinceLast, sinceLoop, counter, refcon):
        self.Paths()
        self.Listing()
        self.Commands()
        self.Errors()
        self.Features()
        self.Plugins()
        return 0

    def Paths(self):
        system = U.XPLMGetSystemPath()
        print("system %s" % system)
        print("system NP same %s" % (U.XPLMGetSystemPath_NP(self) == system))
        print("prefs %s" % U.XPLMGetPrefsPath())
        print("separator %s NP %s" % (U.XPLMGetDirectorySeparator(), U.XPLMGetDirectorySeparator_NP(self)))
        argument = "a/b/c.txt"
        file, folder = U.XPLMExtractFileAndPath(argument)
        print("extract %s|%s argument %s" % (file, folder, argument))
        print("extract NP %s|%s" % U.XPLMExtractFileAndPath_NP(self, "/x/y.txt"))
        file, folder = U.XPLMExtractFileAndPath("d" * 5000 + "/f.txt")
        print("long extract %s %d" % (file, len(folder)))
        print("versions %d %d %d language %d initialized %d" % (U.XPLMGetVersions() + (U.XPLMGetLanguage(), U.XPLMInitialized())))
        print("key F1 %s" % U.XPLMGetVirtualKeyDescription(XPLMDefs.XPLM_VK_F1))
        print("debug -> %d speak -> %d" % (U.XPLMDebugString("VL_Utilities debug line\n"), U.XPLMSpeakString("hello")))
        print("key stroke -> %d press -> %d release -> %d" % (
            U.XPLMCommandKeyStroke(U.xplm_key_pause), U.XPLMCommandButtonPress(U.xplm_joy_gear_tog),
            U.XPLMCommandButtonRelease(U.xplm_joy_gear_tog)))
        for name in sorted(dir(U)):
            if name.startswith("xplm_key_") or name.startswith("xplm_joy_"):
                print("constant %s=%d" % (name, getattr(U, name)))
        print("create doc %s" % U.XPLMCreateCommand.__doc__)

    def Listing(self):
        folder = os.path.join(U.XPLMGetSystemPath(), "Resources", "plugins", "PythonScripts", "listing")
        os.mkdir(folder)
        for name in ("a.txt", "b.txt", "c.txt"):
            open(os.path.join(folder, name), "w").close()
        names, indices, total, returned = [], [], [9, 8], []
        result = U.XPLMGetDirectoryContents(folder, 0, names, 1024, indices, 10, total, returned)
        U.XPLMGetDirectoryContents(folder, 0, names, 1024, None, 0, None, None)
        print("listing %d names %s indices %s total %s returned %s" % (
            result[0], ",".join(names), ",".join(indices), total, returned))
        alone = []
        U.XPLMGetDirectoryContents(folder, 1, None, 1024, alone, 10, None, None)
        print("indices without counts %s" % ",".join(alone))
        small, count = [], []
        result = U.XPLMGetDirectoryContents(folder, 0, None, 1024, small, 2, None, count)
        print("small index array %d %s %s" % (result[0], ",".join(small), count))
        huge = U.XPLMGetDirectoryContents(folder, 0, None, 2 ** 31 - 1, None, 2 ** 31 - 1, None, None)
        negative = U.XPLMGetDirectoryContents(folder, 0, None, -5, [], -5, None, None)
        print("huge %d negative %d" % (huge[0], negative[0]))
        np = []
        U.XPLMGetDirectoryContents_NP(self, folder, 2, None, 1024, np, 10, None, None)
        print("NP indices %s" % ",".join(np))
        raises("not a list", U.XPLMGetDirectoryContents, folder, 0, "names", 1024, None, 0, None, None)

    def Commands(self):
        self.hello = U.XPLMCreateCommand("vorlith/test/hello", "Says hello")
        print("find same %s" % (U.XPLMFindCommand("vorlith/test/hello") == self.hello))
        print("register -> %d" % U.XPLMRegisterCommandHandler(self, self.hello, self.onCommand, 1, 5))
        print("once -> %d" % U.XPLMCommandOnce(self.hello))
        print("wrong refcon -> %d" % U.XPLMUnregisterCommandHandler(self, self.hello, self.onCommand, 1, 6))
        self.once = U.XPLMCreateCommand("vorlith/test/once", "Runs its handler once")
        U.XPLMRegisterCommandHandler(self, self.once, self.onceOnly, 0, 0)
        U.XPLMCommandOnce(self.once)
        U.XPLMCommandOnce(self.once)
        raises("handler short", U.XPLMRegisterCommandHandler, self, self.hello, self.onCommand, 1)

    def Errors(self):
        print("set -> %d" % U.XPLMSetErrorCallback(self, self.onError))
        print("set other -> %d" % U.XPLMSetErrorCallback(self, self.otherError))
        U.XPLMCommandBegin(12345)
        print("set None -> %d" % U.XPLMSetErrorCallback(self, None))
        print("set None again -> %d" % U.XPLMSetErrorCallback(self, None))
        print("remove none -> %d" % U.VL_RemoveErrorCallback(self, self.onError))
        U.XPLMSetErrorCallback(self, self.onError)

    def Features(self):
        print("has native %d" % P.XPLMHasFeature(NATIVE))
        print("enumerate -> %d" % P.XPLMEnumerateFeatures(self, self.enumerator, 3))
        print("enumerate again -> %d" % P.XPLMEnumerateFeatures(self, self.enumerator, 3))
        print("remove -> %d" % P.VL_RemoveEnumerateFeatures(self, self.enumerator, 3))
        print("remove again -> %d" % P.VL_RemoveEnumerateFeatures(self, self.enumerator, 3))
        P.XPLMEnumerateFeatures(self, self.enumerator, 4)
        raises("old enable", P.XPLMEnableFeature, NATIVE, 1)
        print("enable unknown -> %d" % P.XPLMEnableFeature(self, "XPLM_NO_SUCH_FEATURE", 1))
        print("enable native -> %d" % P.XPLMEnableFeature(self, NATIVE, 1))
        print("native after enable %d" % P.XPLMIsFeatureEnabled(NATIVE))
        # A bad first index makes the simulator call the error callback inside the bracket.
        self.watchErrors = True
        U.XPLMGetDirectoryContents_NP(self, "/", -1, None, 16, None, 0, None, None)
        P.XPLMEnableFeature(self, NATIVE, 0)
        U.XPLMGetDirectoryContents_NP(self, "/", -1, None, 16, None, 0, None, None)
        self.watchErrors = False
        print("native after calls %d" % P.XPLMIsFeatureEnabled(NATIVE))

    def Plugins(self):
        me = P.XPLMGetMyID()
        print("me %d count %d found %d" % (me, P.XPLMCountPlugins(), P.XPLMFindPluginBySignature("tembrook.projects.vorlith")))
        name, path, signature, description = [], ["old"], [], []
        print("info -> %d" % P.XPLMGetPluginInfo(me, name, path, signature, description))
        print("info %s|%s|%s" % (name[0], signature[0], description[0]))
        print("by path %d NP %d" % (P.XPLMFindPluginByPath(path[0]) == me, P.XPLMFindPluginByPath_NP(self, path[0]) == me))
        print("info None -> %d NP -> %d" % (P.XPLMGetPluginInfo(me, None, None, None, None), P.XPLMGetPluginInfo_NP(self, me, name, None, None, None)))
        print("enabled %d" % P.XPLMIsPluginEnabled(me))
        print("send long -> %d" % P.XPLMSendMessageToPlugin(me, 0x7F002, as_long(0xBEEF)))
        print("send text -> %d" % P.XPLMSendMessageToPlugin(me, 0x7F003, "text"))
        print("send float -> %d" % P.XPLMSendMessageToPlugin(me, 0x7F004, 1.5))
        print("send int -> %d" % P.XPLMSendMessageToPlugin(me, 0x7F005, int(0)))
        print("reload doc %s" % P.XPLMReloadPlugins.__doc__)
