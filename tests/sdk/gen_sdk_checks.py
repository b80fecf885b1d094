#!/usr/bin/env python3
"""Generates the SDK conformance checks (sdk_checks.h) and the list of SDK functions
(sdk_functions.h) from the SDK fact sheets.

The fact sheets are markdown: prototypes and callback typedefs sit in ```c blocks,
constants, typedefs and struct layouts in tables. The build runs this script into its
own folder:

    tests/sdk/gen_sdk_checks.py /path/to/sdk-fact-sheets OUTPUT_DIR
"""
import re
import sys
from pathlib import Path

# XPLM headers first: the widget sheets repeat some XPLM values.
SHEETS = ["XPLMDefs", "XPLMDataAccess", "XPLMProcessing", "XPLMDisplay", "XPLMGraphics",
          "XPLMUtilities", "XPLMMenus", "XPLMPlugin", "XPLMCamera", "XPLMPlanes",
          "XPLMNavigation", "XPLMScenery", "XPWidgetDefs", "XPWidgets", "XPStandardWidgets",
          "XPUIGraphics", "XPWidgetUtils"]

IDENT = r"[A-Za-z_]\w*"
GATES = ("XPLM210", "XPLM200")


def fail(msg):
    sys.exit("gen_sdk_checks: " + msg)


def gate_in(text):
    """The SDK gate a piece of prose names, or None for the 1.0 API."""
    for g in GATES:
        if g in text:
            return g
    return None


def strip_comments(code):
    return re.sub(r"/\*.*?\*/", " ", code, flags=re.S)


def squash(text):
    return re.sub(r"\s+([,)])", r"\1", re.sub(r"\s+", " ", text)).strip()


def first_ident(cell):
    m = re.search(r"`(" + IDENT + r")`", cell)
    return m.group(1) if m else None


def cells(line):
    return [c.strip() for c in line.strip().strip("|").split("|")]


class Model:
    def __init__(self):
        self.functions = {}   # name -> (gate, prototype text)
        self.callbacks = {}   # name -> (gate, return type, parameter list)
        self.typedefs = {}    # name -> (gate, type)
        self.constants = {}   # name -> (gate, value, is_macro, exact text or None)
        self.structs = {}     # name -> (gate, [(field, type, offset, size, gate)], size, size_ungated)

    def add(self, table, name, entry, same=lambda a, b: a == b):
        old = table.get(name)
        if old is not None and not same(old, entry):
            fail("%s is given two ways: %r and %r" % (name, old, entry))
        if old is None:
            table[name] = entry


def parse_code_block(model, code):
    gate = None
    pending = ""
    for line in code.splitlines():
        stripped = line.strip()
        if not pending.strip() and re.fullmatch(r"/\*.*\*/", stripped):
            gate = gate_in(stripped)   # a section comment: "/* XPLM200 */", "/* hot keys: */"
            continue
        pending += line + "\n"
        code_so_far = strip_comments(pending)
        if ";" not in code_so_far or (code_so_far.lstrip().startswith("typedef struct")
                                      and "}" not in code_so_far):
            continue
        stmt_gate = gate_in("".join(re.findall(r"/\*.*?\*/", pending, flags=re.S))) or gate
        stmt = squash(strip_comments(pending))
        pending = ""
        stmt = re.sub(r"^(WIDGET_API|XPLM_API)\s+", "", stmt)
        m = re.fullmatch(r"typedef (.+?)\(\s*\*\s*(" + IDENT + r")\s*\)\s*\((.*)\);", stmt)
        if m:
            model.add(model.callbacks, m.group(2),
                      (stmt_gate, m.group(1).strip(), m.group(3).strip()))
            continue
        if stmt.startswith("typedef struct") or stmt.startswith("PLUGIN_API"):
            continue   # struct layouts come from the tables; entry points are not SDK calls
        m = re.fullmatch(r"(.+?)\b(" + IDENT + r")\s*\((.*)\);", stmt)
        if not m:
            fail("cannot read statement: " + stmt)
        model.add(model.functions, m.group(2), (stmt_gate, stmt))


def parse_typedef_text(model, name, text, gate):
    m = re.search(r"`typedef ([^`;(]+?)\s+" + re.escape(name) + r"\s*;`", text)
    if m:
        model.add(model.typedefs, name, (gate, squash(m.group(1))))
        return True
    if re.search(r"`typedef int`", text):
        model.add(model.typedefs, name, (gate, "int"))
        return True
    m = re.search(r"`(typedef [^`]*\(\s*\*\s*" + re.escape(name) + r"\s*\)[^`]*;)`", text)
    if m:
        parse_code_block(model, m.group(1))
        model.callbacks[name] = (gate,) + model.callbacks[name][1:]
        return True
    return False


def parse_int(text):
    text = text.strip().strip("`")
    m = re.match(r"\(?\s*(-?)\s*(0x[0-9A-Fa-f]+|\d+)\s*\)?", text)
    if not m:
        return None
    return int(m.group(1) + m.group(2), 0)


def parse_sheet(model, path):
    lines = path.read_text().splitlines()
    heading = ""
    heading_gate = None
    i = 0
    while i < len(lines):
        line = lines[i]
        if line.startswith("```c"):
            j = i + 1
            while not lines[j].startswith("```"):
                j += 1
            parse_code_block(model, "\n".join(lines[i + 1:j]))
            i = j + 1
            continue
        if line.startswith("#"):
            heading = line
            heading_gate = gate_in(line)
            # "### XPLMKeyFlags (`typedef int XPLMKeyFlags;`)" and "### X (`typedef int`)"
            name = re.search(r"#+\s*(?:[\d.]+\s*)?(?:Enum\s+)?`?(" + IDENT + r")`?\s*\(", line)
            if name and "typedef int" in line:
                parse_typedef_text(model, name.group(1), line, heading_gate)
            i += 1
            continue
        if line.startswith("|") and i + 1 < len(lines) and re.match(r"\|[-| ]+\|$", lines[i + 1]):
            header = cells(line)
            rows = []
            j = i + 2
            while j < len(lines) and lines[j].startswith("|"):
                rows.append(cells(lines[j]))
                j += 1
            tail = []
            k = j
            while k < len(lines) and not lines[k].startswith("#") and not lines[k].startswith("|"):
                tail.append(lines[k])
                k += 1
            parse_table(model, heading, heading_gate, header, rows, "\n".join(tail))
            i = j
            continue
        i += 1


def column(header, *names):
    for n in names:
        for idx, h in enumerate(header):
            if h == n or h.startswith(n + " ("):
                return idx
    return None


def enum_gate(model, heading, heading_gate):
    if heading_gate:
        return heading_gate
    name = re.search(r"#+\s*(?:[\d.]+\s*)?(?:Enum\s+)?`?(" + IDENT + r")`?", heading)
    if name and name.group(1) in model.typedefs:
        return model.typedefs[name.group(1)][0]
    return None


def parse_table(model, heading, heading_gate, header, rows, tail):
    field_col = column(header, "Field")
    if field_col is not None:
        parse_struct(model, heading, heading_gate, header, rows, tail)
        return
    name_col = column(header, "Name", "Macro", "Property", "Message")
    gate_col = column(header, "Gate", "Gate (2.1)")
    value_col = column(header, "Value", "Hex", "Value / type", "Definition", "Exact definition",
                       "Expands to (meaning)")
    if name_col is None:
        return
    kind_col = column(header, "Kind")
    define_heading = "#define" in heading
    for row in rows:
        if len(row) != len(header):
            continue
        name = first_ident(row[name_col])
        if not name or ".." in row[name_col]:
            continue
        gate = gate_in(row[gate_col]) if gate_col is not None else None
        rest = " ".join(row[:name_col] + row[name_col + 1:])
        if kind_col is not None and row[kind_col] == "typedef":
            model.add(model.typedefs, name, (gate, squash(row[value_col].strip("`"))))
            continue
        if parse_typedef_text(model, name, rest, gate):
            continue
        if value_col is None:
            continue
        text = row[value_col]
        exact = None
        m = re.fullmatch(r"`#define " + re.escape(name) + r" (.+)`", text)
        if m:
            exact = m.group(1)
        elif re.fullmatch(r"`[^`]+`", text):
            exact = text.strip("`")
        value = parse_int(exact if exact is not None else text)
        if value is None:
            continue
        if gate is None:
            gate = gate_in(text) or enum_gate(model, heading, heading_gate)
        is_macro = (define_heading or exact is not None or "#define" in rest
                    or (header[name_col] == "Macro"))
        model.add(model.constants, name, (gate, value, is_macro, exact),
                  same=lambda a, b: a[1] == b[1])


def parse_struct(model, heading, heading_gate, header, rows, tail):
    name = re.search(r"`(" + IDENT + r")`", heading)
    if not name:
        fail("struct table without a struct name under " + heading)
    name = name.group(1)
    fcol, tcol = column(header, "Field"), column(header, "Type", "C type")
    ocol, scol = column(header, "Offset", "Offset (LP64)"), column(header, "Size")
    fields = []
    for row in rows:
        field = first_ident(row[fcol])
        if not field:
            continue   # padding rows
        ftype = re.search(r"`([^`]+)`", row[tcol]).group(1)
        fgate = gate_in(" ".join(row)) if "Only exists when" in " ".join(row) else None
        fields.append((field, squash(ftype), int(row[ocol]), int(row[scol]), fgate))
    m = re.search(r"(?:`sizeof[^`]*`\s*=\s*\*\*|Total:\s*)(\d+)", tail)
    if not m:
        fail("no size for struct " + name)
    size = int(m.group(1))
    ungated = re.search(r"(\d+) bytes without", tail)
    model.add(model.structs, name, (heading_gate, fields, size,
                                   int(ungated.group(1)) if ungated else size))


# ---------------------------------------------------------------------------- output

def guard(gate, body, absent=None):
    """Wraps checks in the gate; `absent` lines run when the gate is off."""
    if gate is None:
        return body
    out = ["#if defined(%s)" % gate] + body
    if absent:
        out += ["#else"] + absent
    return out + ["#endif"]


def absent_probe(name):
    # A name the header must not declare here: any declaration of it conflicts with this one.
    return ["#if defined(%s)" % name, "#error \"%s is visible without its gate\"" % name,
            "#else", "typedef struct sdk_absent_name %s;" % name, "#endif"]


def emit(model):
    out = []
    w = out.append
    w("/* Generated by gen_sdk_checks.py from the SDK fact sheets; do not edit.")
    w(" * Every check is a declaration or a static assertion: a header that disagrees")
    w(" * fails to compile. Included by sdk_check.c (C) and sdk_check.cpp (C++). */")
    w("")
    w("/* Functions: a redeclaration with a different prototype does not compile. */")
    w("SDK_CHECK_BEGIN_DECLS")
    for name, (gate, proto) in sorted(model.functions.items(), key=lambda kv: kv[0]):
        out.extend(guard(gate, [proto], absent_probe(name)))
    w("SDK_CHECK_END_DECLS")
    w("")
    w("/* Callback typedefs: a variable declared with the typedef and again with the")
    w(" * documented function-pointer type; two different types do not compile. */")
    for name, (gate, ret, params) in sorted(model.callbacks.items()):
        var = "sdk_type_" + name
        out.extend(guard(gate, ["extern %s %s;" % (name, var),
                                "extern %s (*%s)(%s);" % (ret, var, params)],
                         absent_probe(name)))
    w("")
    w("/* Plain typedefs, checked the same way. */")
    for name, (gate, t) in sorted(model.typedefs.items()):
        var = "sdk_type_" + name
        out.extend(guard(gate, ["extern %s %s;" % (name, var), "extern %s %s;" % (t, var)],
                         absent_probe(name)))
    w("")
    w("/* Constants: value, and for #defines that they are macros. */")
    for name, (gate, value, is_macro, exact) in sorted(model.constants.items()):
        body = []
        if is_macro:
            body += ["#if !defined(%s)" % name, "#error \"%s must be a #define\"" % name, "#endif"]
            if exact is not None:
                body.append("SDK_CHECK_TEXT(%s, \"%s\");" % (name, exact))
        body.append("SDK_CHECK(%s == %d, \"%s\");" % (name, value, name))
        out.extend(guard(gate, body, absent_probe(name)))
    w("")
    w("/* Struct layouts for 64-bit Linux. */")
    for name, (gate, fields, size, size_ungated) in sorted(model.structs.items()):
        body = []
        for field, ftype, offset, fsize, fgate in fields:
            lines = ["SDK_CHECK(offsetof(%s, %s) == %d, \"%s.%s offset\");"
                     % (name, field, offset, name, field),
                     "SDK_CHECK(sizeof(((%s *)0)->%s) == %d, \"%s.%s size\");"
                     % (name, field, fsize, name, field),
                     "SDK_CHECK_FIELD_TYPE(%s, %s, %s);" % (name, field, ftype)]
            body.extend(guard(fgate, lines))
        if size == size_ungated:
            body.append("SDK_CHECK(sizeof(%s) == %d, \"sizeof %s\");" % (name, size, name))
        else:
            gated = [f[4] for f in fields if f[4]][0]
            body.extend(guard(gated, ["SDK_CHECK(sizeof(%s) == %d, \"sizeof %s\");"
                                      % (name, size, name)],
                              ["SDK_CHECK(sizeof(%s) == %d, \"sizeof %s\");"
                               % (name, size_ungated, name)]))
        out.extend(guard(gate, body, absent_probe(name)))
    w("")
    nfields = sum(len(s[1]) for s in model.structs.values())
    w("#define SDK_CHECKED_FUNCTIONS %d" % len(model.functions))
    w("#define SDK_CHECKED_CALLBACKS %d" % len(model.callbacks))
    w("#define SDK_CHECKED_TYPEDEFS %d" % len(model.typedefs))
    w("#define SDK_CHECKED_CONSTANTS %d" % len(model.constants))
    w("#define SDK_CHECKED_STRUCTS %d" % len(model.structs))
    w("#define SDK_CHECKED_FIELDS %d" % nfields)
    return "\n".join(out) + "\n"


def emit_function_list(model):
    out = ["/* Generated by gen_sdk_checks.py from the SDK fact sheets; do not edit.",
           " * Every function of the SDK 2.1 API, for SDK_FUNCTIONS(X) to expand X(name). */",
           "#define SDK_FUNCTIONS(X) \\"]
    out += ["    X(%s) \\" % name for name in sorted(model.functions)]
    return "\n".join(out) + "\n\n"


def main():
    if len(sys.argv) != 3:
        fail("usage: gen_sdk_checks.py FACT_SHEET_DIR OUTPUT_DIR")
    model = Model()
    for sheet in SHEETS:
        parse_sheet(model, Path(sys.argv[1]) / (sheet + ".md"))
    Path(sys.argv[2], "sdk_checks.h").write_text(emit(model))
    Path(sys.argv[2], "sdk_functions.h").write_text(emit_function_list(model))
    print("functions %d, callbacks %d, typedefs %d, constants %d, structs %d"
          % (len(model.functions), len(model.callbacks), len(model.typedefs),
             len(model.constants), len(model.structs)))


if __name__ == "__main__":
    main()
