# Writes the typed stubs (one .pyi per module) and the API reference (api.md) from what
# the plug-in registers (names, doc strings, constants and their values) and from
# plugin/modules/arguments.txt (each function's arguments and result). Run inside the
# plug-in by make_stubs.sh; the output folder comes from VORLITH_STUBS_OUT. A function
# without an argument list, or a list for a function no module has, is an error.
import os
import re
import sys

OUT = os.environ["VORLITH_STUBS_OUT"]
ARGUMENTS = os.environ["VORLITH_STUBS_ARGUMENTS"]
SKIPPED_MODULES = set(["TembrookInternalModule"])
LINE = re.compile(r"^(\w+)\.(\w+)\((.*)\) -> (.+)$")


def plugin_modules():
    """Modules of sys.modules that the plug-in made: from no file, not the interpreter's own."""
    found = {}
    for name, module in sys.modules.items():
        if module is None or name == "__main__" or name in sys.builtin_module_names:
            continue
        if getattr(module, "__file__", None) or name in SKIPPED_MODULES:
            continue
        # The plug-in's modules are made in C, not imported: they have no import spec.
        if getattr(module, "__spec__", None) is None:
            found[name] = module
    return found


def read_arguments():
    signatures, errors = {}, []
    with open(ARGUMENTS) as lines:
        for number, line in enumerate(lines, 1):
            line = line.strip()
            if not line or line.startswith("#"):
                continue
            match = LINE.match(line)
            if not match:
                errors.append("%s:%d: not 'Module.Function(arguments) -> result'" % (ARGUMENTS, number))
                continue
            module, function, arguments, result = match.groups()
            signatures[(module, function)] = (arguments, result)
    return signatures, errors


def write(modules, signatures):
    functions = constants = 0
    reference = ["# API reference", "",
                 "Every module the plug-in gives scripts, with each function's arguments, result and",
                 "doc string, and each constant's value. Made from the plug-in itself by the build.", ""]
    for name in sorted(modules):
        module = modules[name]
        members = sorted(dir(module))
        calls = [m for m in members if type(getattr(module, m)).__name__ == "builtin_function_or_method"]
        values = [m for m in members if not m.startswith("__") and isinstance(getattr(module, m), (int, float, str))
                  and m not in calls]
        stub = ["# The module %s of the plug-in (generated)." % name,
                "from typing import Any, Callable, Final, List, Optional, Sequence", ""]
        reference += ["## %s" % name, ""]
        for function in calls:
            arguments, result = signatures[(name, function)]
            doc = getattr(module, function).__doc__ or ""
            stub.append("def %s(%s) -> %s:\n    \"\"\"%s\"\"\"" % (function, arguments, result, doc.replace('"', '\\"')))
            reference.append("- `%s(%s) -> %s`: %s" % (function, arguments, result, doc))
            functions += 1
        if values:
            stub.append("")
            reference += ["", "Constants:", ""]
        for constant in values:
            value = getattr(module, constant)
            stub.append("%s: Final = %r" % (constant, value))
            reference.append("- `%s = %r`" % (constant, value))
            constants += 1
        reference.append("")
        with open(os.path.join(OUT, "stubs", name + ".pyi"), "w") as pyi:
            pyi.write("\n".join(stub) + "\n")
    with open(os.path.join(OUT, "api.md"), "w") as md:
        md.write("\n".join(reference))
    return functions, constants


class Vorlith:
    def XPluginStart(self):
        modules = plugin_modules()
        signatures, errors = read_arguments()
        for name, module in sorted(modules.items()):
            for function in sorted(dir(module)):
                if type(getattr(module, function)).__name__ == "builtin_function_or_method" \
                        and (name, function) not in signatures:
                    errors.append("%s.%s has no argument list in %s" % (name, function, ARGUMENTS))
        for (name, function) in sorted(signatures):
            if name not in modules or not hasattr(modules[name], function):
                errors.append("%s.%s is in %s but no module has it" % (name, function, ARGUMENTS))
        with open(os.path.join(OUT, "result.txt"), "w") as result:
            if errors:
                result.write("\n".join(errors) + "\n")
            else:
                functions, constants = write(modules, signatures)
                result.write("ok: %d modules, %d functions, %d constants\n" % (len(modules), functions, constants))
        return "Stub writer", "vorlith.tools.stubs", "Writes the stubs and the API reference"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass
