"""What the assembler of shader instructions makes of a source, token by token."""

import pathlib
import struct
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "scripts" / "lib"))
sys.dont_write_bytecode = True

import dxbc  # noqa: E402
import dxbc_assembler  # noqa: E402


def words_of(line):
    return dxbc_assembler.assemble_line(line)[0]


def chunks_of(source):
    return {name: content for _, name, content in dxbc.chunks(dxbc_assembler.assemble(source))}


class DxbcAssemblerTest(unittest.TestCase):
    # The words as Microsoft's disassembler lists them beside these lines.
    KNOWN = (
        ("dcl_global_flags enable_double_precision_float_ops", [0x0100106A]),
        ("dcl_thread_group 5, 1, 1", [0x0400009B, 5, 1, 1]),
        ("dcl_resource_structured t2, 16", [0x040000A2, 0x00107000, 2, 16]),
        ("dcl_uav_structured u0, 8", [0x0400009E, 0x0011E000, 0, 8]),
        ("dcl_input vThreadID.x", [0x0200005F, 0x00020012]),
        ("dcl_input vThreadGroupID.xyz", [0x0200005F, 0x00021072]),
        ("dcl_temps 3", [0x02000068, 3]),
        ("mov r2.xy, l(0, 0, 0, 0)", [0x08000036, 0x00100032, 2, 0x00004002, 0, 0, 0, 0]),
        ("dadd r2.xy, r0.xyxy, r1.zwzw", [0x070000BF, 0x00100032, 2, 0x00100446, 0, 0x00100EE6, 1]),
        ("switch vThreadGroupID.x", [0x0200004C, 0x0002100A]),
        ("case l(3)", [0x03000006, 0x00004001, 3]),
        ("ret", [0x0100003E]),
    )

    def test_encodes_each_form_of_a_line(self):
        for line, words in self.KNOWN:
            with self.subTest(line):
                self.assertEqual([hex(word) for word in words_of(line)], [hex(word) for word in words])

    def test_refuses_what_it_cannot_encode(self):
        for line in (
            "dsqrt r0.xy, r1.xyxy",
            "dadd r0.xy, r1.xyxy",
            "dadd l(0), r1.xyxy, r2.xyxy",
            "dadd r0.yx, r1.xyxy, r2.xyxy",
            "dadd r0.xy, r1.xy, r2.xyxy",
            "mov r0.xy, l(0, 0)",
            "mov r0.xy, l(zero)",
            "mov q0.xy, r0.xyxy",
            "mov r.xy, r0.xyxy",
            "dcl_global_flags enable_everything",
            "dcl_temps",
        ):
            with self.subTest(line), self.assertRaises(dxbc_assembler.AssemblyError):
                words_of(line)

    def test_names_the_line_of_an_error(self):
        with self.assertRaisesRegex(dxbc_assembler.AssemblyError, "line 3: 'dsqrt'"):
            dxbc_assembler.assemble("cs_5_0 // a comment\n\ndsqrt r0.xy, r1.xyxy\n")

    def test_needs_a_shader_model(self):
        for source in ("", "// nothing\n", "ret\n", "cs_4_0\nret\n"):
            with self.subTest(source), self.assertRaises(dxbc_assembler.AssemblyError):
                dxbc_assembler.assemble(source)

    def test_writes_the_version_and_length_of_the_program(self):
        self.assertEqual(struct.unpack("<4I", chunks_of("cs_5_0\ndcl_temps 1\n")["SHEX"]), (0x50050, 4, 0x2000068, 1))

    def test_declares_the_features_that_the_flags_need(self):
        both = "cs_5_0\ndcl_global_flags enable_double_precision_float_ops, enable_double_extensions\nret\n"
        self.assertEqual(chunks_of(both)["SFI0"], struct.pack("<Q", 0x21))
        self.assertEqual(chunks_of("cs_5_0\nret\n")["SFI0"], bytes(8))

    def test_makes_a_container_with_a_checksum_that_holds(self):
        container = dxbc_assembler.assemble("cs_5_0\nret\n")
        self.assertEqual(dxbc.checksum(container), container[dxbc.CHECKSUM])
        self.assertEqual([name for _, name, _ in dxbc.chunks(container)], ["ISGN", "OSGN", "SHEX", "SFI0"])


if __name__ == "__main__":
    unittest.main()
