"""Pictures of the manual that are computed pixel by pixel: a frame with marker pixels, and a face to be warped."""
import importlib.machinery
import importlib.util
from pathlib import Path

_loader = importlib.machinery.SourceFileLoader("pam_to_png", str(Path(__file__).parent / "pam-to-png"))
_pam_to_png = importlib.util.module_from_spec(importlib.util.spec_from_loader("pam_to_png", _loader))
_loader.exec_module(_pam_to_png)
write_png = _pam_to_png.write_png

MARK, GROUND, LINE, PAPER = (0, 255, 255), (226, 228, 232), (60, 90, 140), (250, 244, 224)
COLUMN_MARKS, ROW_MARKS = (3, 12, 19, 28), (3, 10, 15, 22)
WIDTH, HEIGHT, SCALE = 31, 25, 16


def _marked_pixel(x, y):
    if (x, y) == (0, 0) or (y == 2 and x in COLUMN_MARKS) or (x == 2 and y in ROW_MARKS):
        return MARK
    left, right, top, bottom = COLUMN_MARKS[0] + 1, COLUMN_MARKS[-1] - 1, ROW_MARKS[0] + 1, ROW_MARKS[-1] - 1
    if not (left <= x <= right and top <= y <= bottom) or x in COLUMN_MARKS or y in ROW_MARKS:
        return GROUND
    corner = min(x - left, right - x) + min(y - top, bottom - y)
    rim = min(x - left, right - x, y - top, bottom - y)
    return GROUND if corner < 2 else LINE if rim < 2 or corner < 5 else PAPER


def draw_marked(folder):
    """marked.png, a picture of nine pieces as a designer leaves it, and marked-large.png, its pixels as squares."""
    pixels = [[_marked_pixel(x, y) for x in range(WIDTH)] for y in range(HEIGHT)]
    write_png(folder / "marked.png", WIDTH, HEIGHT, 3, bytes(c for row in pixels for p in row for c in p))
    large = bytearray()
    for row in pixels:
        line = b"".join(bytes(c * 7 // 8 for c in p) + bytes(p) * (SCALE - 1) for p in row)
        edge = b"".join(bytes(c * 7 // 8 for c in p) * SCALE for p in row)
        large += edge + line * (SCALE - 1)
    write_png(folder / "marked-large.png", WIDTH * SCALE, HEIGHT * SCALE, 3, bytes(large))


def draw_face(path, side=160):
    """A face, in colours without transparency."""
    samples = (0.125, 0.375, 0.625, 0.875)

    def color(x, y):
        x, y = x * 256 / side, y * 256 / side
        if min((x - 92) ** 2, (x - 164) ** 2) + (y - 100) ** 2 < 144 or (80 < x < 176 and 164 < y < 178):
            return (60, 40, 30)
        return (250, 205, 90) if (x - 128) ** 2 + (y - 128) ** 2 < 104 ** 2 else (235, 240, 245)

    def pixel(x, y):
        colors = [color(x + dx, y + dy) for dy in samples for dx in samples]
        return (sum(c[i] for c in colors) // len(colors) for i in range(3))

    write_png(path, side, side, 3, bytes(c for y in range(side) for x in range(side) for c in pixel(x, y)))
