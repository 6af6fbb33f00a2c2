"""test_snippets.py ROOT COMPILER: the pieces of C on the manual's pages compile, each with what its page takes for
granted: an image, a context and the like."""
import re
import subprocess
import sys
from pathlib import Path

ROOT, COMPILER = Path(sys.argv[1]), sys.argv[2]

BEFORE = """#include <oxlume/oxlume.h>
#include <oxlume/LxExtras.h>
int freeSomeCache(void);
"""
PIECE = """void piece(LxImage *image, LxImage *ground, LxImage *card, LxGC *gc, LxSheen *sheen, void *memory, int width,
           int height, int rowBytes) {{{{
{}
}}}}
"""


def pieces():
    for page in sorted((ROOT / "docs").glob("*.md")):
        text = page.read_text()
        for match in re.finditer(r"^~~~\{\.c\}\n(.*?)^~~~$", text, re.S | re.M):
            line = text[:match.start()].count("\n") + 2
            yield page, line, match[1]


def compiles(page, line, code):
    place = f'#line {line} "{page}"\n'
    source = BEFORE + (place + code if "int main(" in code else PIECE.format("\n" + place + code))
    done = subprocess.run([COMPILER, "-std=c11", "-Wall", "-Wextra", "-Wno-unused", "-Werror", "-fsyntax-only", "-x", "c",
                           f"-I{ROOT}/include", "-"], input=source, capture_output=True, text=True)
    print(done.stderr, end="")
    return done.returncode == 0


results = [compiles(*piece) for piece in pieces()]
print(f"{sum(results)} of {len(results)} pieces compile")
sys.exit(0 if results and all(results) else 1)
