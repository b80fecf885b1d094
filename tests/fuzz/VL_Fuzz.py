# The seeded fuzz: every frame, calls random functions of every module the plug-in
# registered (found by walking sys.modules, so new modules join by themselves) with
# random arguments: wrong counts and types, garbage and real handles, huge and negative
# numbers, huge and unencodable strings, lists that change while they are read, and
# callbacks that raise, exit or unregister themselves. Each call is printed first, so
# the output's last line names the call that took the simulator down, if one did.
# The seed comes from VORLITH_FUZZ_SEED, the calls per frame from VORLITH_FUZZ_CALLS.
from __future__ import print_function
import os
import random
import re
import sys

SEED = int(os.environ.get("VORLITH_FUZZ_SEED", "1"))
CALLS_PER_FRAME = int(os.environ.get("VORLITH_FUZZ_CALLS", "200"))
rng = random.Random(SEED)

# Functions that would end or block the run rather than test a binding: a plug-in reload
# unloads the fuzz itself, and disabling a plug-in (possibly this one) stops its calls.
SKIPPED = set(["XPLMReloadPlugins", "XPLMDisablePlugin"])
# The capture of standard output and error: random text there only fills the log.
SKIPPED_MODULES = set(["TembrookInternalModule"])
REMOVAL = re.compile("Unregister|Destroy|Remove|Unshare|Kill")


def plugin_modules():
    """Modules of sys.modules that come from no file and are not the interpreter's own."""
    found = []
    for name, module in sorted(sys.modules.items()):
        if module is None or name == "__main__" or name in sys.builtin_module_names:
            continue
        if getattr(module, "__file__", None) or name in SKIPPED_MODULES:
            continue
        functions = [getattr(module, f) for f in sorted(dir(module))
                     if type(getattr(module, f)).__name__ == "builtin_function_or_method"]
        if functions:
            found.append((name, module, functions))
    return found


class Emptier(object):
    """A number that empties the list holding it when it is converted."""
    def __init__(self, holder):
        self.holder = holder

    def __index__(self):
        del self.holder[:]
        return 7
    __int__ = __index__

    def __float__(self):
        del self.holder[:]
        return 0.5


class Endless(object):
    """A sequence that claims sys.maxsize elements."""
    def __len__(self):
        return sys.maxsize

    def __getitem__(self, i):
        if i > 100000:
            raise IndexError(i)
        return i & 0x7F


class Liar(object):
    """A sequence whose length is negative or absurd, and whose items raise."""
    def __len__(self):
        return rng.choice([-1, 0, 1 << 62])

    def __getitem__(self, i):
        raise rng.choice([IndexError, ValueError, SystemExit])(i)


INTS = [0, 1, -1, 2, 3, 7, 8, 16, 255, 256, 4096, 65535, (1 << 31) - 1, -(1 << 31), 1 << 31,
        (1 << 63) - 1, -(1 << 63), 1 << 64, sys.maxsize, -sys.maxsize - 1]
SMALL = [-1, -1.0, 0, 0.02, 0.1, 1, 2, 3, 0.5, -2]
FLOATS = [0.0, -1.0, 0.5, 1e308, -1e308, float("inf"), float("-inf"), float("nan")]
TEXTS = ["", "x", "sim/cockpit/electrical/battery_array_on", "sim/flightmodel/engine/ENGN_thro",
         "sim/time/total_running_time_sec", "sim/aircraft/view/acf_tailnum", "sim/operation/quit",
         "a" * 100000, "\x00abc", "%s%n%x", u"\u00e9t\u00e9", b"\xff\xfe"]
if sys.version_info[0] >= 3:
    TEXTS.append("lone \ud800 surrogate")


class Vorlith:
    def XPluginStart(self):
        self.modules = plugin_modules()
        self.functions = [(m, f) for (m, module, fs) in self.modules for f in fs
                          if f.__name__ not in SKIPPED]
        self.constants = sorted(set(v for (m, module, fs) in self.modules for k, v in vars(module).items()
                                    if type(v) is int))
        self.handles = []
        self.arity = {}
        self.calls = 0
        self.raised = 0
        self.callbacks = [self.Returns, self.Raises, self.Exits, self.Unregisters, self.Mutates]
        # Two drivers, in case a fuzzed call stops one of them.
        self.loop = self.Loop
        import XPLMProcessing
        XPLMProcessing.XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)
        self.created = XPLMProcessing.XPLMCreateFlightLoop(self, [0, self.loop, 0])
        XPLMProcessing.XPLMScheduleFlightLoop(self, self.created, -1.0, 1)
        print("fuzz seed %d: %d modules, %d functions: %s" % (
            SEED, len(self.modules), len(self.functions), " ".join(m for (m, module, fs) in self.modules)))
        return "VL_Fuzz", "vorlith.test.fuzz", "calls every binding with random arguments"

    def XPluginStop(self):
        print("fuzz done: seed %d, %d calls, %d raised" % (SEED, self.calls, self.raised))

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    # --- callbacks handed to the bindings ---

    def Returns(self, *args):
        self.Remember(args)
        return rng.choice(INTS + FLOATS + [None, "text", [], args])

    def Raises(self, *args):
        raise rng.choice([ValueError, TypeError, KeyError, MemoryError])("from a callback")

    def Exits(self, *args):
        raise SystemExit(rng.choice([0, 3, "bye"]))

    def Unregisters(self, *args):
        # Removes itself (or something else) with what it was called with.
        for module, function in rng.sample(self.functions, min(5, len(self.functions))):
            if REMOVAL.search(function.__name__):
                self.Call(module, function, [self, self.Unregisters] + list(args[-1:]))
        return 1

    def Mutates(self, *args):
        for arg in args:
            if type(arg) is list:
                arg.extend([Emptier(arg), Emptier(arg), "x", None])
        return len(args) and 3

    def Remember(self, values):
        for value in values:
            if type(value) is int and value not in (0, 1, -1) and len(self.handles) < 500:
                self.handles.append(value)

    # --- arguments ---

    def Value(self, depth=0):
        kind = rng.randrange(16)
        if kind >= 14:
            return rng.choice(SMALL)
        if kind == 0:
            return rng.choice(INTS)
        if kind == 1:
            return rng.randint(-1000, 1000)
        if kind == 2:
            return rng.choice(FLOATS)
        if kind == 3:
            return rng.choice(TEXTS)
        if kind == 4:
            return rng.choice(self.handles) if self.handles else rng.getrandbits(48)
        if kind == 5:
            return rng.choice(self.constants) if self.constants else 0
        if kind == 6:
            return rng.choice(self.callbacks)
        if kind == 7:
            return self
        if kind == 8:
            return None
        if kind == 9:
            return []
        if kind == 10:
            values = []
            values.extend([Emptier(values), 1, 2.5, Emptier(values)])
            return values
        if kind == 11:
            return rng.choice([Endless(), Liar(), (1, 2, 3), {"a": 1}, object(), lambda *a: 0])
        if kind == 12 and depth < 2:
            return [self.Value(depth + 1) for i in range(rng.randrange(6))]
        return rng.choice([0, 1, None, self, self.Returns])

    def Arguments(self, function):
        known = self.arity.get(function.__name__)
        if known is None or rng.random() < 0.15:
            return [self.Value() for i in range(rng.randrange(20))]
        # Shaped like a real call: often the script first, callbacks where they may go.
        args = [self.Value() if rng.random() < 0.7 else rng.choice(self.callbacks) for i in range(known)]
        if args and rng.random() < 0.6:
            args[0] = self
        return args

    def Call(self, module, function, args):
        self.calls += 1
        shown = ", ".join(repr(a)[:40] for a in args)
        print("%d %s.%s(%s)" % (self.calls, module, function.__name__, shown))
        try:
            result = function(*args)
        except SystemExit:
            raise  # a binding never raises it: let the flight loop report it
        except Exception as e:
            self.raised += 1
            found = re.search(r"takes (?:exactly|at least|at most) (\d+|one) argument", str(e))
            if found and function.__name__ not in self.arity:
                number = found.group(1)
                self.arity[function.__name__] = 1 if number == "one" else int(number)
            return None
        self.Remember([result] if type(result) is not tuple else result)
        return result

    def Loop(self, sinceLast, sinceLoop, counter, refcon):
        for i in range(CALLS_PER_FRAME // 2):
            module, function = rng.choice(self.functions)
            # Removals less often, so that registered callbacks live long enough to be called.
            if REMOVAL.search(function.__name__) and rng.random() < 0.8:
                module, function = rng.choice(self.functions)
            self.Call(module, function, self.Arguments(function))
        return -1.0
