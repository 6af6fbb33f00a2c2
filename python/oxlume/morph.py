"""Warping pictures by pairs of lines."""

from __future__ import annotations

import math
from typing import Iterable, Sequence

from . import _library
from ._library import lib
from .image import Image


def morph(
    source: Image, start: Iterable[Sequence[int]], target: Iterable[Sequence[int]], t: float = 1.0
) -> Image:
    """The picture warped for lines that have gone ``t`` of the way from ``start`` to ``target``: as many of the one
    as of the other, each (x0, y0, x1, y1) in whole pixels. Pixels beyond the edge repeat it. The work is pixels times
    lines."""
    arrays = [_lines(lines) for lines in (start, target)]
    if len(arrays[0]) != len(arrays[1]):
        raise ValueError("the lines come in pairs")
    if not math.isfinite(t):
        raise ValueError(f"not finite: {t}")
    result = Image(source.type, source.width, source.height)
    if not lib.LxMorph_Frame(source._pointer, result._pointer, *arrays, len(arrays[0]), t):
        raise MemoryError("no memory for a morph")
    return result


def _lines(lines):
    records = [lib.LxMorphLine(*line) for line in lines]
    return (_library.MorphLineRecord * len(records))(*records)
