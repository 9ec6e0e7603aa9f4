#!/usr/bin/env python3
"""Assembles shader model 5 instructions to DXBC, for shaders that the HLSL compiler cannot make.

usage: dxbc_assembler.py SOURCE.cs.dxasm BYTECODE.dxbc

The source is what disassemblers of DXBC print: one declaration or instruction a line, "//" before a comment. Registers
to write to carry a mask (r0.xy), registers to read one component or a swizzle of four (r0.x, r0.xyxy); l(...) is one
immediate value or four. Known are the declarations and instructions of the tables below; a new one is a row there.
"""

import re
import struct
import sys

import dxbc

STAGES = {"ps": 0, "vs": 1, "cs": 5}

# name: (opcode, operands); the operands are "d" for one that is written, "s" for one that is read.
INSTRUCTIONS = {
    "break": (2, ""),
    "case": (6, "s"),
    "default": (10, ""),
    "endswitch": (23, ""),
    "mov": (54, "ds"),
    "ret": (62, ""),
    "switch": (76, "s"),
    "ld_structured": (167, "dsss"),
    "store_structured": (168, "dsss"),
    "dadd": (191, "dss"),
    "dmax": (192, "dss"),
    "dmin": (193, "dss"),
    "dmul": (194, "dss"),
    "ddiv": (210, "dss"),
    "dfma": (211, "dsss"),
    "drcp": (212, "ds"),
}

# name: (opcode, what follows it)
DECLARATIONS = {
    "dcl_input": (95, "written operand"),
    "dcl_temps": (104, "numbers"),
    "dcl_global_flags": (106, "flags"),
    "dcl_thread_group": (155, "numbers"),
    "dcl_uav_structured": (158, "register and numbers"),
    "dcl_resource_structured": (162, "register and numbers"),
}

# name: (bit of the declaration, bit of the feature chunk by which a driver sees what the shader needs)
GLOBAL_FLAGS = {
    "enable_double_precision_float_ops": (1 << 12, 1 << 0),
    "enable_double_extensions": (1 << 17, 1 << 5),
}

# prefix: (operand type, whether a number follows)
REGISTERS = {"r": (0, True), "t": (7, True), "u": (30, True), "vThreadID": (32, False), "vThreadGroupID": (33, False)}
IMMEDIATE = 4
FOUR_COMPONENTS = 2
MASK, SWIZZLE, ONE = 0, 1, 2


class AssemblyError(Exception):
    """A line that cannot be assembled."""


def number(text):
    if not re.fullmatch(r"\d+|0x[0-9a-fA-F]+", text):
        raise AssemblyError(f"{text!r} is no number")
    return int(text, 0)


def register(name):
    """The operand token of a register without components, and the words behind it."""
    parts = re.fullmatch(r"([A-Za-z]+)(\d*)", name)
    operand_type, numbered = REGISTERS.get(parts[1] if parts else "", (None, False))
    if operand_type is None or numbered != bool(parts[2]):
        raise AssemblyError(f"{name!r} is no register")
    index = parts[2]
    return operand_type << 12 | (1 << 20 if numbered else 0), [int(index)] if numbered else []


def selection(components, written):
    """The bits of an operand token that say which components of a register are meant."""
    numbers = ["xyzw".index(letter) for letter in components]
    if written:
        if numbers != sorted(set(numbers)):
            raise AssemblyError(f"{components!r} is no mask")
        return MASK << 2 | sum(1 << (4 + number_) for number_ in numbers)
    if len(numbers) == 1:
        return ONE << 2 | numbers[0] << 4
    if len(numbers) == 4:
        return SWIZZLE << 2 | sum(number_ << (4 + 2 * place) for place, number_ in enumerate(numbers))
    raise AssemblyError(f"{components!r}: one component is read, or four")


def operand(text, written):
    immediate = re.fullmatch(r"l\((.*)\)", text)
    if immediate and not written:
        values = [number(value.strip()) for value in immediate[1].split(",")]
        if len(values) not in (1, 4):
            raise AssemblyError(f"{text!r}: an immediate is one value, or four")
        return [IMMEDIATE << 12 | (1 if len(values) == 1 else FOUR_COMPONENTS), *values]
    parts = re.fullmatch(r"(\w+)\.([xyzw]{1,4})", text)
    if not parts:
        raise AssemblyError(f"{text!r} is no operand here")
    token, index = register(parts[1])
    return [token | FOUR_COMPONENTS | selection(parts[2], written), *index]


def declaration(kind, arguments):
    """The control bits, the words behind the opcode and the feature bits of a declaration."""
    if not arguments:
        raise AssemblyError("nothing is declared")
    if kind == "flags":
        unknown = [name for name in arguments if name not in GLOBAL_FLAGS]
        if unknown:
            raise AssemblyError(f"{unknown[0]!r} is no flag")
        flags = [GLOBAL_FLAGS[name] for name in arguments]
        return sum(bit for bit, _ in flags), [], sum(feature for _, feature in flags)
    if kind == "numbers":
        return 0, [number(argument) for argument in arguments], 0
    if kind == "written operand":
        return 0, operand(arguments[0], written=True), 0
    token, index = register(arguments[0])
    return 0, [token, *index, *(number(argument) for argument in arguments[1:])], 0


def shader_model(line):
    """The version word of a program, from a line like "cs_5_0"."""
    parts = re.fullmatch(r"(ps|vs|cs)_5_0", line)
    if not parts:
        raise AssemblyError(f"{line!r} is no shader model")
    return STAGES[parts[1]] << 16 | 5 << 4


def assemble_line(line):
    """The words and the feature bits of one line."""
    name, _, rest = line.partition(" ")
    arguments = [argument.strip() for argument in re.split(r",(?![^(]*\))", rest)] if rest.strip() else []
    control = features = 0
    if name in DECLARATIONS:
        opcode, kind = DECLARATIONS[name]
        control, words, features = declaration(kind, arguments)
    elif name in INSTRUCTIONS:
        opcode, kinds = INSTRUCTIONS[name]
        if len(arguments) != len(kinds):
            raise AssemblyError(f"{name} takes {len(kinds)} operands")
        words = [word for text, kind in zip(arguments, kinds) for word in operand(text, kind == "d")]
    else:
        raise AssemblyError(f"{name!r} is no instruction")
    return [opcode | control | (1 + len(words)) << 24, *words], features


def assemble(source):
    """A DXBC container with empty signatures, the code and the features that it needs."""
    version, code, features = None, [], 0
    for line_number, text in enumerate(source.splitlines(), 1):
        line = text.partition("//")[0].strip()
        if not line:
            continue
        try:
            if version is None:
                version = shader_model(line)
            else:
                words, needed = assemble_line(line)
                code += words
                features |= needed
        except AssemblyError as error:
            raise AssemblyError(f"line {line_number}: {error}") from error
    if version is None:
        raise AssemblyError("no shader model")
    no_signature = struct.pack("<2I", 0, 8)
    program = struct.pack(f"<{2 + len(code)}I", version, 2 + len(code), *code)
    return dxbc.build(
        [("ISGN", no_signature), ("OSGN", no_signature), ("SHEX", program), ("SFI0", struct.pack("<Q", features))]
    )


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    with open(arguments[0], encoding="utf-8") as file:
        bytecode = assemble(file.read())
    with open(arguments[1], "wb") as file:
        file.write(bytecode)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except AssemblyError as error:
        sys.exit(f"dxbc_assembler.py: {error}")
