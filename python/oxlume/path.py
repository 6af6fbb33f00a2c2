"""Vector paths."""

from __future__ import annotations

import ctypes
from typing import Iterable, List, NamedTuple, Optional, Sequence, Tuple

from . import _library
from ._library import lib, made, owned
from .values import Matrix, matrix_reference, points_record, rect_record


class Subpath(NamedTuple):
    """The points of a flattened subpath, and whether it came to an end before the path did."""

    points: List[Tuple[float, float]]
    ended: bool


class Path:
    """Moves, lines, curves and closes. What builds it answers it, so that calls can be chained."""

    def __init__(self) -> None:
        """An empty path."""
        self._adopt(made(lib.LxPath_Create()))

    def _adopt(self, pointer):
        self._pointer = pointer
        owned(self, lib.LxPath_Delete, pointer)

    def copy(self) -> "Path":
        """A path of its own with the same items."""
        path = Path.__new__(Path)
        path._adopt(made(lib.LxPath_CreateCopy(self._pointer)))
        return path

    def clear(self) -> "Path":
        """Removes all items."""
        lib.LxPath_MakeEmpty(self._pointer)
        return self

    def add(self, other: "Path") -> "Path":
        """Appends all items of another path."""
        lib.LxPath_Add(self._pointer, other._pointer)
        return self

    def move_to(self, x: float, y: float) -> "Path":
        """Starts a subpath."""
        lib.LxPath_AddMoveTo(self._pointer, x, y)
        return self

    def line_to(self, x: float, y: float) -> "Path":
        """Appends a line."""
        lib.LxPath_AddLineTo(self._pointer, x, y)
        return self

    def quad_to(self, cx: float, cy: float, x: float, y: float) -> "Path":
        """Appends a quadratic curve."""
        lib.LxPath_AddQCurveTo(self._pointer, cx, cy, x, y)
        return self

    def curve_to(self, c1x: float, c1y: float, c2x: float, c2y: float, x: float, y: float) -> "Path":
        """Appends a cubic curve."""
        lib.LxPath_AddCurveTo(self._pointer, c1x, c1y, c2x, c2y, x, y)
        return self

    def close(self) -> "Path":
        """Ends the subpath with a line back to its start."""
        lib.LxPath_AddClose(self._pointer)
        return self

    def add_rect(self, x0: float, y0: float, x1: float, y1: float, radius_x: float = 0, radius_y: float = 0) -> "Path":
        """Appends a rectangle, its corners rounded if a radius is told."""
        lib.LxPath_AddRect(self._pointer, rect_record((x0, y0, x1, y1)), radius_x, radius_y)
        return self

    def add_circle(self, cx: float, cy: float, radius: float) -> "Path":
        """Appends a circle."""
        return self.add_ellipse(cx, cy, radius, radius)

    def add_ellipse(self, cx: float, cy: float, radius_x: float, radius_y: float) -> "Path":
        """Appends an ellipse."""
        lib.LxPath_AddEllipse(self._pointer, cx, cy, radius_x, radius_y)
        return self

    def add_polygon(self, points: Iterable[Sequence[float]]) -> "Path":
        """Appends a closed polygon."""
        array = points_record(points)
        lib.LxPath_AddPoly(self._pointer, array, len(array))
        return self

    def add_pie(
        self, cx: float, cy: float, radius: float, start: float, end: float, steps: int = 64, clockwise: bool = False
    ) -> "Path":
        """Appends a slice of ``steps`` chords; angles in degrees."""
        lib.LxPath_AddPolyPie(self._pointer, cx, cy, radius, start, end, steps, int(clockwise))
        return self

    def add_ring(
        self,
        cx: float,
        cy: float,
        radius1: float,
        radius2: float,
        start: float,
        end: float,
        steps: int = 64,
        clockwise: bool = False,
    ) -> "Path":
        """Appends a piece of a ring of ``steps`` chords; angles in degrees."""
        lib.LxPath_AddPolyRing(self._pointer, cx, cy, radius1, radius2, start, end, steps, int(clockwise))
        return self

    def add_fitted(self, points: Iterable[Sequence[float]], error: float) -> "Path":
        """Appends cubic curves fitted to points, none further away than the root of ``error``."""
        array = points_record(points)
        lib.LxCubicBezier_Fit(array, len(array), error, self._pointer)
        return self

    @property
    def is_closed(self) -> bool:
        """Whether every subpath comes back to its start."""
        return bool(lib.LxPath_isClosed(self._pointer))

    def mend(self) -> bool:
        """Inserts the missing lines back to the starts. Answers whether every subpath has come back then."""
        return bool(lib.LxPath_Close(self._pointer, 1))

    def transform(self, matrix: Matrix) -> "Path":
        """Moves all points."""
        lib.LxPath_Transform(self._pointer, matrix_reference(matrix))
        return self

    def flatten(self, matrix: Optional[Matrix] = None) -> "Path":
        """Replaces curves by lines, fine enough behind ``matrix``, which is applied if told."""
        lib.LxPath_Decompose(self._pointer, matrix_reference(matrix))
        return self

    def outline(
        self,
        width: float,
        style: int = 0,
        matrix: Optional[Matrix] = None,
        clip: Optional[Sequence[float]] = None,
    ) -> "Path":
        """Replaces the path by the outline of its stroke (``style``: a StrokeStyle), transformed and clipped."""
        rect = None if clip is None else rect_record(clip)
        lib.LxPath_Outline(self._pointer, matrix_reference(matrix), rect, width, style)
        return self

    def clip(self, x0: float, y0: float, x1: float, y1: float) -> "Path":
        """Clips a flattened path to a rectangle, closed subpath by closed subpath; open ones are lost."""
        lib.LxPath_Clip(self._pointer, rect_record((x0, y0, x1, y1)))
        return self

    def subpaths(self, matrix: Optional[Matrix] = None) -> List[Subpath]:
        """The flattened path as lists of points, transformed if told."""
        found: List[Subpath] = []

        def on_move(_, point):
            found.append(Subpath([(point[0].x, point[0].y)], False))

        def on_segment(_, start, end):
            if not found or found[-1].ended:
                found.append(Subpath([(start[0].x, start[0].y)], False))
            found[-1].points.append((end[0].x, end[0].y))

        def on_end(_):
            if found:
                found[-1] = found[-1]._replace(ended=True)

        callbacks = (
            _library.MoveCallback(on_move),
            _library.SegmentCallback(on_segment),
            _library.EndCallback(on_end),
        )
        iterator = made(lib.LxPath_CreateIterator())
        try:
            for kind, callback in enumerate(callbacks):
                lib.LxPathIterator_SetCallback(iterator, kind, ctypes.cast(callback, ctypes.c_void_p))
            lib.LxPath_IterateConst(self._pointer, iterator, matrix_reference(matrix), None, None)
        finally:
            lib.LxPath_DeleteIterator(iterator)
        return found
