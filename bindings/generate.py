#!/usr/bin/env python3
"""Writes the bindings of the C interface for Python, LuaJIT and C#, from what clang reads in its header.

usage: generate.py HEADER FOLDER [--check]    with --check it only says which files differ"""
import json
import pathlib
import re
import subprocess
import sys
import textwrap

PREFIX = "zovkpopup_"
C_SHARP_WORDS = {"event", "object", "string", "in", "out", "ref"}


def tree_of(header):
    command = ["clang", "-x", "c", "-std=c99", "-fparse-all-comments", "-Xclang", "-ast-dump=json",
               "-fsyntax-only", header]
    text = subprocess.run(command, check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout
    return json.loads(text.replace("_Bool", "bool"))["inner"]


def comment_of(node):
    words = []

    def walk(part):
        if part["kind"] == "TextComment":
            words.append(part["text"].strip())
        for child in part.get("inner", []):
            walk(child)

    for child in node.get("inner", []):
        if child["kind"] == "FullComment":
            walk(child)
    return " ".join(words).strip()


def children(node, kind):
    return [child for child in node.get("inner", []) if child["kind"] == kind]


class Header:
    """What the header declares, in its order; struct members with their C types."""

    def __init__(self, path):
        self.constants, self.callbacks, self.structs, self.opaque, self.functions = [], [], [], [], []
        for node in tree_of(path):
            name = node.get("name", "")
            if node["kind"] == "EnumDecl":
                self.take_constants(node)
            elif node["kind"] == "TypedefDecl" and name.startswith(PREFIX):
                self.take_callback(node)
            elif node["kind"] == "RecordDecl" and name.startswith(PREFIX):
                self.take_record(node)
            elif node["kind"] == "FunctionDecl" and name.startswith(PREFIX):
                result = node["type"]["qualType"].split("(")[0].strip()
                parameters = [(p["name"], p["type"]["qualType"]) for p in children(node, "ParmVarDecl")]
                self.functions.append((name, result, parameters, comment_of(node)))

    def take_constants(self, node):
        for constant in children(node, "EnumConstantDecl"):
            if not constant["name"].startswith(PREFIX.upper()):
                continue
            value = constant["inner"][0]["value"]
            self.constants.append((constant["name"], value, comment_of(constant)))

    def take_callback(self, node):
        match = re.fullmatch(r"(.*?)\(\*\)\((.*)\)", node["type"]["qualType"])
        if match is None:
            return
        kinds = [kind.strip() for kind in match[2].split(",")]
        self.callbacks.append((node["name"], match[1].strip(), kinds, comment_of(node)))

    def take_record(self, node):
        fields = [(f["name"], f["type"]["qualType"], comment_of(f)) for f in children(node, "FieldDecl")]
        if fields:
            self.structs.append((node["name"], fields, comment_of(node)))
            self.opaque = [name for name in self.opaque if name != node["name"]]
        elif node["name"] not in self.opaque:
            self.opaque.append(node["name"])

    def bare(self, kind):
        return kind.replace("const ", "").replace("struct ", "").strip()

    def is_callback(self, kind):
        return kind in [name for name, *_ in self.callbacks]

    def struct_of(self, kind):
        """The struct that a pointer leads to, if it is one with members."""
        pointed = self.bare(kind).removesuffix("*").strip()
        return pointed if pointed in [name for name, *_ in self.structs] else None


def short(name):
    return name.removeprefix(PREFIX)


def camel(name):
    return "".join(word.capitalize() for word in short(name).split("_"))


def wrapped(text, indent, first="", width=98):
    return "\n".join(textwrap.wrap(first + text, width, initial_indent=indent, subsequent_indent=indent,
                                   break_long_words=False, break_on_hyphens=False))


# ---- Python ----

PYTHON_KINDS = {"size_t": "c_size_t", "int": "c_int", "int32_t": "c_int32", "uint32_t": "c_uint32",
                "int64_t": "c_int64", "uint64_t": "c_uint64", "double": "c_double", "bool": "c_bool",
                "const char *": "c_char_p", "zovkpopup_status": "c_int32", "void *": "c_void_p",
                "void": "None"}


def python_kind(header, kind):
    if kind in PYTHON_KINDS:
        return PYTHON_KINDS[kind]
    if header.is_callback(kind):
        return camel(kind)
    if header.struct_of(kind):
        return f"POINTER({camel(header.struct_of(kind))})"
    return "POINTER(c_void_p)" if kind.endswith("**") else "c_void_p"


def python_hint(header, kind):
    if kind == "const char *":
        return "Optional[str]"
    if header.is_callback(kind):
        return f"Optional[{camel(kind)}]"
    if header.struct_of(kind):
        return f"Optional[{camel(header.struct_of(kind))}]"
    return {"void": "None", "bool": "bool", "double": "float"}.get(
        kind, "int" if kind in PYTHON_KINDS and "*" not in kind else "Any")


def python_argument(header, name, kind):
    if kind == "const char *":
        return f"_bytes({name})"
    if header.is_callback(kind):
        return f"{camel(kind)}() if {name} is None else {name}"
    return f"None if {name} is None else byref({name})" if header.struct_of(kind) else name


def python_function(header, name, result, parameters, comment):
    hints = ", ".join(f"{n}: {python_hint(header, k)}" for n, k in parameters)
    arguments = ", ".join(python_argument(header, n, k) for n, k in parameters)
    call = f"_library.{name}({arguments})"
    if result == "const char *":
        call = f"_text({call})"
    kinds = ", ".join(python_kind(header, kind) for _, kind in parameters)
    said = "\n" + wrapped(comment + '"""', "    ", '"""') if comment else ""
    return (f"_library.{name}.argtypes = [{kinds}]\n"
            f"_library.{name}.restype = {python_kind(header, result)}\n\n\n"
            f"def {short(name)}({hints}) -> {python_hint(header, result)}:{said}\n"
            f"    return {call}\n")


def python_struct(header, name, fields, comment):
    said = [wrapped(comment + '"""', "    ", '"""')] if comment else []
    lines = [f'        ("{field}", {python_kind(header, kind)}),'
             + (f"  # {note}" if note and len(note) < 60 else "") for field, kind, note in fields]
    return "\n".join([f"class {camel(name)}(Structure):", *said, "    _fields_ = [", *lines, "    ]", "",
                      "    def __init__(self, **members: Any) -> None:",
                      "        super().__init__(size=sizeof(type(self)), **members)"]) + "\n"


def python(header):
    parts = ['''"""ZOVKPopup for Python, by ctypes. Made from zovkpopup.h by bindings/generate.py.

Texts are str and become UTF-8; in structs and callbacks they are bytes. Wrap functions that the
library calls in the type of their callback, such as `@Complete`, and keep them as long as they may
be called. One thread makes all calls. `check` turns every status but success into an Error.
The environment variable ZOVKPOPUP_LIBRARY names another file than libzovkpopup.so.1."""
import os
from ctypes import (CDLL, CFUNCTYPE, POINTER, Structure, byref, c_bool, c_char_p, c_double, c_int,
                    c_int32, c_int64, c_size_t, c_uint32, c_uint64, c_void_p, sizeof)
from typing import Any, Optional

_library = CDLL(os.environ.get("ZOVKPOPUP_LIBRARY", "libzovkpopup.so.1"))


class Error(Exception):
    """A call that failed; `status` says why."""

    def __init__(self, status: int) -> None:
        super().__init__(error_message(status))
        self.status = status


def check(status: int) -> None:
    """Raises Error unless the status is success."""
    if status != OK:
        raise Error(status)


def _bytes(text: Optional[str]) -> Optional[bytes]:
    return None if text is None else text.encode()


def _text(value: Optional[bytes]) -> Optional[str]:
    return None if value is None else value.decode()

''']
    parts.append("\n".join(f"{name.removeprefix(PREFIX.upper())} = {value}"
                           + (f"  # {note}" if note else "") for name, value, note in header.constants)
                 + "\n")
    # What callbacks point to stands before them, what holds callbacks behind them.
    pointed = {header.struct_of(kind) for _, _, kinds, _ in header.callbacks for kind in kinds}
    early = [struct for struct in header.structs if struct[0] in pointed]
    for struct in early:
        parts.append("\n" + python_struct(header, *struct) + "\n")
    for name, result, kinds, comment in header.callbacks:
        types = ", ".join(["c_bool" if result == "bool" else "None"]
                          + [python_kind(header, kind) for kind in kinds])
        parts.append((wrapped(comment, "# ") + "\n" if comment else "") + f"{camel(name)} = CFUNCTYPE({types})")
    for struct in header.structs:
        if struct not in early:
            parts.append("\n\n" + python_struct(header, *struct))
    for function in header.functions:
        parts.append("\n" + python_function(header, *function))
    return "\n".join(parts)


# ---- LuaJIT ----

def lua(header):
    lines = ["-- ZOVKPopup for LuaJIT, by its FFI. Made from zovkpopup.h by bindings/generate.py.",
             "-- local popups = require(\"zovkpopup\"); then popups.set_up(nil), popups.OK and so on.",
             "-- A call from which the library calls back must not be compiled: jit.off(that function).",
             "local ffi = require(\"ffi\")", "", "ffi.cdef [["]
    lines.append("typedef int32_t zovkpopup_status;")
    for name in header.opaque + [name for name, *_ in header.structs]:
        lines.append(f"typedef struct {name} {name};")
    for name, result, kinds, _ in header.callbacks:
        lines.append(f"typedef {result} (*{name})({', '.join(kinds)});")
    for name, fields, comment in header.structs:
        lines += [wrapped(comment, "// "), f"struct {name} {{"]
        lines += [f"  {kind}{'' if kind.endswith('*') else ' '}{field};" for field, kind, _ in fields]
        lines.append("};")
    for name, result, parameters, comment in header.functions:
        if comment:
            lines.append(wrapped(comment, "// "))
        listed = ", ".join(f"{k}{'' if k.endswith('*') else ' '}{n}" for n, k in parameters) or "void"
        lines.append(f"{result}{'' if result.endswith('*') else ' '}{name}({listed});")
    lines += ["]]", "", 'local library = ffi.load(os.getenv("ZOVKPOPUP_LIBRARY") or "libzovkpopup.so.1")',
              "local popups = {library = library}", ""]
    lines += [f"popups.{name.removeprefix(PREFIX.upper())} = {value}" for name, value, _ in header.constants]
    lines += ["", "for _, name in ipairs {"]
    lines += [f'  "{short(name)}",' for name, *_ in header.functions]
    lines += ["} do", f'  popups[name] = library["{PREFIX}" .. name]', "end", "",
              "-- Raises an error for a status that is no success.", "function popups.check(status)",
              "  if status ~= popups.OK then error(ffi.string(popups.error_message(status)), 2) end", "end",
              "", "-- A struct with its size, such as popups.struct(\"settings\", {application_id = \"game\"}).",
              "-- It keeps no text of Lua's: keep those that are given as long as the struct is used.",
              "function popups.struct(name, members)", f'  local struct = ffi.new("{PREFIX}" .. name, members or {{}})',
              "  struct.size = ffi.sizeof(struct)", "  return struct", "end", "", "return popups", ""]
    return "\n".join(lines)


# ---- C# ----

SHARP_KINDS = {"size_t": "UIntPtr", "int": "int", "int32_t": "int", "uint32_t": "uint", "int64_t": "long",
               "uint64_t": "ulong", "double": "double", "bool": "bool", "zovkpopup_status": "int",
               "void": "void"}
SHARP_TEXT = "[MarshalAs(UnmanagedType.LPUTF8Str)] string"
SHARP_BOOL = "[return: MarshalAs(UnmanagedType.I1)] "


def sharp_kind(header, kind):
    if kind in SHARP_KINDS:
        return SHARP_KINDS[kind]
    return camel(kind) if header.is_callback(kind) else "IntPtr"


def sharp_parameter(header, name, kind):
    name = "@" + name if name in C_SHARP_WORDS else name
    name = re.sub(r"_(\w)", lambda match: match[1].upper(), name)
    if kind == "const char *":
        return f"{SHARP_TEXT} {name}"
    if header.struct_of(kind):
        return f"ref {camel(header.struct_of(kind))} {name}"
    return f"out IntPtr {name}" if kind.endswith("**") else f"{sharp_kind(header, kind)} {name}"


def xml(text, indent):
    text = text.replace("&", "&amp;").replace("<", "&lt;")
    return wrapped(text + "</summary>", indent + "/// ", "<summary>") + "\n" if text else ""


def sharp(header):
    parts = ['''// ZOVKPopup for C#, by P/Invoke. Made from zovkpopup.h by bindings/generate.py.
// Keep the delegates that are handed over in a field: what only the library holds is collected.
// Texts that come as IntPtr are read by Native.Text.
using System;
using System.Runtime.InteropServices;

namespace ZOVKPopup {
''']
    for name, result, kinds, comment in header.callbacks:
        listed = ", ".join(f"{SHARP_TEXT if k == 'const char *' else sharp_kind(header, k)} argument{i}"
                           for i, k in enumerate(kinds))
        parts.append(f"{xml(comment, '  ')}  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]\n"
                     f"  {SHARP_BOOL if result == 'bool' else ''}public delegate {SHARP_KINDS[result]} "
                     f"{camel(name)}({listed});\n")
    for name, fields, comment in header.structs:
        parts.append(f"{xml(comment, '  ')}  [StructLayout(LayoutKind.Sequential)]\n  public struct {camel(name)} {{")
        for field, kind, note in fields:
            parts.append(f"{xml(note, '    ')}    public {sharp_kind(header, kind)} {camel(field)};")
        parts.append(f"    /// <summary>Returns one with its size set and all else zero.</summary>\n"
                     f"    public static {camel(name)} New() {{\n"
                     f"      return new {camel(name)} {{ Size = (UIntPtr)Marshal.SizeOf(typeof({camel(name)})) }};\n"
                     "    }\n  }\n")
    parts.append("  public static class Native {\n    private const string Library = \"libzovkpopup.so.1\";\n")
    for name, value, note in header.constants:
        parts.append(f"{xml(note, '    ')}    public const int {camel(name.lower())} = {value};")
    parts.append("""
    /// <summary>Returns a text of the library; null for none.</summary>
    public static string Text(IntPtr text) {
      return Marshal.PtrToStringUTF8(text);
    }
""")
    for name, result, parameters, comment in header.functions:
        listed = ", ".join(sharp_parameter(header, n, k) for n, k in parameters)
        parts.append(f"{xml(comment, '    ')}    [DllImport(Library, EntryPoint = \"{name}\")]\n"
                     + (f"    {SHARP_BOOL.strip()}\n" if result == "bool" else "")
                     + f"    public static extern {sharp_kind(header, result)} {camel(name)}({listed});\n")
    parts.append("  }\n}\n")
    return "\n".join(parts)


def main(header_path, folder, mode=None):
    header = Header(header_path)
    differs = False
    for name, text in (("zovkpopup.py", python(header)), ("zovkpopup.lua", lua(header)),
                       ("ZOVKPopup.cs", sharp(header))):
        path = pathlib.Path(folder) / name
        if mode is None:
            path.write_text(text, encoding="utf-8")
        elif not path.is_file() or path.read_text(encoding="utf-8") != text:
            print(f"{path} is not what {header_path} makes; run bindings/generate.py")
            differs = True
    return 1 if differs else 0


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4) or sys.argv[3:] not in ([], ["--check"]):
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
