# The callables the in-process dispatch tests hand to the trampolines: Record remembers
# how it was called and answers what the test asks; Raise fails.
from __future__ import print_function


class Vorlith:
    def XPluginStart(self):
        self.calls = []
        self.answer = 2
        self.fill = None
        return "VL_Dispatch", "vorlith.test.dispatch", "dispatch targets"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def Record(self, *args):
        self.calls.append(repr(args))
        if self.fill is not None and isinstance(args[1], list):
            args[1].extend(self.fill)
        return self.answer

    def Raise(self, *args):
        raise ValueError("boom")

    def MoveCamera(self, position, isLosingControl, refcon):
        self.calls.append(repr((list(position), isLosingControl, refcon)))
        position[0] = 10.0
        position[1] = "not a number"
        del position[5:]
        return 1
