"""test_snippets.py ROOT C C++: the pieces of C and C++ on the manual's pages compile by these compilers, those of C with
what their page takes for granted: an image, a context and the like."""
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(sys.argv[1])
COMPILERS = {"c": [sys.argv[2], "-std=c11", "-x", "c"], "cpp": [sys.argv[3], "-std=c++17", "-x", "c++"]}

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
        for match in re.finditer(r"^~~~\{\.(c|cpp)\}\n(.*?)^~~~$", text, re.S | re.M):
            line = text[:match.start()].count("\n") + 2
            yield page, line, *match.groups()


def compiles(page, line, language, code):
    place = f'#line {line} "{page}"\n'
    source = BEFORE + (place + code if "int main(" in code else PIECE.format("\n" + place + code))
    flags = ["-Wall", "-Wextra", "-Wno-unused", "-Wno-unused-parameter", "-Werror", "-fsyntax-only",
             f"-I{ROOT}/include", "-"]
    done = subprocess.run(COMPILERS[language] + flags, input=source, capture_output=True, text=True)
    print(done.stderr, end="")
    return done.returncode == 0


results = [compiles(*piece) for piece in pieces()]
print(f"{sum(results)} of {len(results)} pieces compile")
sys.exit(0 if results and all(results) else 1)
