"""test_reference.py ROOT: how the headers' comments become the reference's, and that nothing undocumented passes."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(sys.argv.pop(1))

HEAD = "/* A header. */\n#ifndef GUARD\n#define GUARD\n\nLX_BEGIN_DECLS\n\n"
TAIL = "\nLX_END_DECLS\n\n#endif\n"


def warnings(text):
    """What Doxygen says of a header with this inside."""
    with tempfile.TemporaryDirectory() as folder:
        header = Path(folder) / "LxTest.h"
        header.write_text(HEAD + text + TAIL)
        config = (ROOT / "docs/Doxyfile").read_text() + f"\nINPUT={header}\nOUTPUT_DIRECTORY={folder}\nSEARCHENGINE=NO\n"
        done = subprocess.run(["doxygen", "-"], input=config, cwd=ROOT, capture_output=True, text=True)
        assert (done.returncode != 0) == bool(done.stderr.strip()), done.stderr
        return done.stderr


def filtered(text):
    with tempfile.NamedTemporaryFile("w", suffix=".h") as header:
        header.write(HEAD + text + TAIL)
        header.flush()
        return subprocess.run([ROOT / "docs/tools/doxygen-comments", header.name], check=True, capture_output=True, text=True).stdout


class Undocumented(unittest.TestCase):
    def test_a_documented_function_passes(self):
        self.assertEqual(warnings("/* Does it. */\nLX_API void LxTest_Do(void);\n"), "")

    def test_a_function_without_a_comment_fails(self):
        self.assertIn("LxTest_Bare", warnings("/* Does it. */\nLX_API void LxTest_Do(void);\n\nLX_API void LxTest_Bare(void);\n"))

    def test_a_comment_behind_a_function_is_not_its_neighbours(self):
        self.assertIn("LxTest_Bare", warnings("LX_API int32_t LxTest_Do(void); /* One. */\nLX_API int32_t LxTest_Bare(void);\n"))

    def test_a_member_without_a_comment_fails(self):
        self.assertIn("bare", warnings("/* Some. */\ntypedef struct LxTest {\n    int32_t told; /* a */\n    int32_t bare;\n} LxTest;\n"))

    def test_a_number_without_a_comment_fails(self):
        self.assertIn("kLxBare", warnings("/* Some. */\ntypedef enum LxTest {\n    kLxTold = 0, /* a */\n    kLxBare = 1\n} LxTest;\n"))


class Filter(unittest.TestCase):
    def test_a_comment_over_a_paragraph_counts_for_all_of_it(self):
        text = filtered("/* Both. */\nLX_API void LxTest_One(void);\nLX_API void LxTest_Two(void);\n")
        self.assertEqual(text.count("/** Both. */\n"), 2)

    def test_a_getter_takes_what_stands_behind_its_setter(self):
        text = filtered("LX_API void LxTest_SetWidth(double width); /* 1 */\nLX_API double LxTest_Width(void);\n")
        self.assertIn("/** 1 */\nLX_API double LxTest_Width(void);", text)

    def test_a_section_is_a_group_with_its_text(self):
        text = filtered("/* ---- Shapes ----\n *\n * All of them. */\n\n/* A. */\nLX_API void LxTest_A(void);\n")
        self.assertIn("/** @name Shapes\n\nAll of them. */\n/** @{ */\n", text)
        self.assertEqual(text.count("@{"), text.count("@}"))

    def test_all_names_of_a_line_take_its_comment(self):
        text = filtered("/* A point. */\ntypedef struct LxTest {\n    double x, y; /* across, down */\n} LxTest;\n")
        self.assertIn("double x; /**< across, down */\n    double y; /**< across, down */", text)

    def test_declarations_stay_as_they_are(self):
        text = filtered("/* A. */\nLX_API void LxTest_A(const void *first,\n                      int32_t second);\n")
        self.assertIn("LX_API void LxTest_A(const void *first,\n                      int32_t second);\n", text)


unittest.main()
