"""Numbers with names, and the values of the plane."""

from __future__ import annotations

import ctypes
import enum
import struct
import sys
from typing import Iterable, NamedTuple, Sequence, Tuple, Union

from . import _library
from ._library import lib


class PixelType(enum.IntEnum):
    """The type of an image's pixels."""

    A = 0  #: one byte: masks and grey pictures
    RGB = 1  #: three bytes
    RGBA = 2  #: four bytes, straight alpha
    RGBA_PREMULTIPLIED = 3  #: four bytes, colour multiplied by alpha
    FLOAT = 4  #: one 32-bit float, nominally 0 to 1
    LONG = 5  #: one 32-bit integer


class Mode(enum.IntEnum):
    """How two pictures are blended."""

    CLEAR = 0
    SRC = 1
    SRC_OVER = 2
    DST_OVER = 3
    SRC_IN = 4
    DST_IN = 5
    SRC_OUT = 6
    DST_OUT = 7
    MULTIPLY = 8
    SCREEN = 9
    OVERLAY = 10
    DIVIDE = 11
    DODGE = 12
    BURN = 13
    ADD = 14
    SUBTRACT = 15
    DIFFERENCE = 16
    DARKEN = 17
    LIGHTEN = 18
    SOFT_LIGHT = 19
    HARD_LIGHT = 20
    HUE = 21
    SATURATION = 22
    VALUE = 23
    COLOR = 24
    GRAYSCALE = 25
    USER_COLOR = 26
    NOT = 27
    OR = 28
    XOR = 29
    SELECT = 30
    SELECT2 = 31
    FLIP = 32
    DISSOLVE = 33
    NO_NAME01 = 34
    NO_NAME02 = 35
    NO_NAME03 = 36
    NO_NAME04 = 37
    NO_NAME05 = 38
    NO_NAME06 = 39
    NO_NAME07 = 40
    NO_NAME08 = 41
    NO_NAME09 = 42
    NO_NAME10 = 43

    @property
    def label(self) -> str:
        """The library's name of the mode."""
        return lib.LxBlend_ModeName(self).decode()


class Channel(enum.IntEnum):
    """What of a picture a blend writes."""

    RED = 1
    GREEN = 2
    BLUE = 3
    ALPHA = 4
    RGB = 5
    RGBA = 6


class Blend(NamedTuple):
    """A mode, an opacity from 0 to 255, and a choice of channels."""

    mode: Mode = Mode.SRC_OVER
    opacity: int = 255
    channel: Channel = Channel.RGBA


#: What is taken for a colour: a number for grey pictures, floats and integers, or r, g, b and perhaps a of 0 to 255.
ColorLike = Union[int, float, Sequence[int]]

#: What is taken for a blend: a mode alone has full opacity and all channels.
BlendLike = Union[Blend, Mode]


class Rect(NamedTuple):
    """A rectangle from its first corner to the second, which counts as outside."""

    x0: float
    y0: float
    x1: float
    y1: float

    @property
    def width(self) -> float:
        """The way from x0 to x1."""
        return self.x1 - self.x0

    @property
    def height(self) -> float:
        """The way from y0 to y1."""
        return self.y1 - self.y0

    def __and__(self, other: Sequence[float]) -> "Rect":
        """The common part: empty where there is none, the other one where one is empty."""
        return rect_of(lib.LxRectD_intersect(rect_record(self), rect_record(other)))

    def __or__(self, other: Sequence[float]) -> "Rect":
        """The smallest rectangle around both; an empty one does not count."""
        return rect_of(lib.LxRectD_union(rect_record(self), rect_record(other)))


class Matrix:
    """A transform of the plane: (x, y) goes to (a*x + b*y + c, d*x + e*y + f). Immutable.

    ``m @ n`` applies n first; ``m @ (x, y)`` is the transformed point.
    """

    __slots__ = ("_record",)

    def __init__(self, a: float = 1, b: float = 0, c: float = 0, d: float = 0, e: float = 1, f: float = 0):
        self._record = _library.MatrixRecord(a, b, c, d, e, f, 0, 0, 1)

    @classmethod
    def scaling(cls, sx: float, sy: float) -> "Matrix":
        """A stretching from the origin."""
        return cls(sx, 0, 0, 0, sy, 0)

    @classmethod
    def translation(cls, dx: float, dy: float) -> "Matrix":
        """A shift."""
        return cls(1, 0, dx, 0, 1, dy)

    @classmethod
    def rotation(cls, radians: float, center: Tuple[float, float] = (0, 0)) -> "Matrix":
        """A rotation around a point, from x towards y."""
        matrix = cls()
        lib.LxMatrix_SetRotate(matrix._record, center[0], center[1], radians)
        return matrix

    @property
    def values(self) -> Tuple[float, ...]:
        """The six numbers a to f."""
        record = self._record
        return (record.m0, record.m1, record.m2, record.m3, record.m4, record.m5)

    def inverse(self) -> "Matrix":
        """The way back. Raises ValueError for a matrix that has none."""
        a, b, _, d, e, _ = self.values
        if a * e - b * d == 0:
            raise ValueError("the matrix has no inverse")
        result = Matrix()
        lib.LxMatrix_GetInverse(result._record, self._record)
        return result

    def __matmul__(self, other):
        if isinstance(other, Matrix):
            result = Matrix(*self.values)
            lib.LxMatrix_MulMat(result._record, other._record)
            return result
        point = lib.LxMatrix_MulPointD(self._record, _library.PointD(*other))
        return (point.x, point.y)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Matrix) and self.values == other.values

    def __hash__(self) -> int:
        return hash(self.values)

    def __repr__(self) -> str:
        return f"Matrix{self.values}"


def rect_record(rect: Sequence[float]) -> _library.RectD:
    """The library's record of four numbers."""
    x0, y0, x1, y1 = rect
    return _library.RectD(x0, y0, x1, y1)


def rect_of(record) -> Rect:
    """The four numbers of a record of the library."""
    return Rect(record.x0, record.y0, record.x1, record.y1)


def matrix_reference(matrix: "Matrix | None"):
    """A matrix for a call, or null."""
    return None if matrix is None else ctypes.byref(matrix._record)


def matrix_of(record: _library.MatrixRecord) -> Matrix:
    """The matrix of a record of the library."""
    return Matrix(record.m0, record.m1, record.m2, record.m3, record.m4, record.m5)


def points_record(points: Iterable[Sequence[float]]):
    """An array of points for a call."""
    pairs = [(float(x), float(y)) for x, y in points]
    return (_library.PointD * len(pairs))(*pairs)


def color_record(color: ColorLike, pixel_type: PixelType = PixelType.RGBA) -> _library.ColorRecord:
    """A colour for images of a type. Raises ValueError for numbers out of range."""
    if isinstance(color, (int, float)):
        if pixel_type == PixelType.FLOAT:
            return _library.ColorRecord(pixel_type, struct.unpack("=I", struct.pack("=f", color))[0])
        if pixel_type == PixelType.LONG:
            return _library.ColorRecord(pixel_type, int(color) & 0xFFFFFFFF)
        channels = (color,) if pixel_type == PixelType.A else (color, color, color, 255)
    else:
        channels = tuple(color)
        if len(channels) == 3:
            channels += (255,)
        elif len(channels) != 4:
            raise ValueError(f"neither three nor four numbers: {color!r}")
        if pixel_type in (PixelType.A, PixelType.FLOAT, PixelType.LONG):
            raise ValueError(f"images of type {PixelType(pixel_type).name} take a single number")
    if not all(0 <= channel <= 255 and int(channel) == channel for channel in channels):
        raise ValueError(f"not made of whole numbers from 0 to 255: {color!r}")
    word = int.from_bytes(bytes(int(channel) for channel in channels).ljust(4, b"\0"), sys.byteorder)
    # Straight colours are laid on premultiplied pictures too.
    tag = PixelType.RGBA if pixel_type == PixelType.RGBA_PREMULTIPLIED else pixel_type
    return _library.ColorRecord(tag, word)


def rgba_of(record: _library.ColorRecord) -> Tuple[int, int, int, int]:
    """The four bytes of a colour."""
    return tuple(record.content.to_bytes(4, sys.byteorder))


def blend_record(blend: BlendLike) -> _library.BlendRecord:
    """A blend for a call. Raises ValueError for a field beyond a byte."""
    mode, opacity, channel = Blend(Mode(blend)) if isinstance(blend, int) else Blend(*blend)
    for field in (mode, opacity, channel):
        if not 0 <= field <= 255:
            raise ValueError(f"not within 0 to 255: {field}")
    return _library.BlendRecord(mode, opacity, channel, 0, None)


def blend_of(record: _library.BlendRecord) -> Blend:
    """The blend of a record of the library."""
    return Blend(Mode(record.mode), record.opacity, Channel(record.channel))
