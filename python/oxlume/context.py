"""Drawing: gradients, and the graphics contexts of images."""

from __future__ import annotations

import enum
import os
from typing import TYPE_CHECKING, Iterable, Optional, Sequence, Tuple, Union

from . import _library
from ._library import lib, made, owned
from .path import Path
from .values import (
    Blend,
    BlendLike,
    ColorLike,
    Matrix,
    Rect,
    blend_of,
    blend_record,
    color_record,
    matrix_of,
    matrix_reference,
    points_record,
    rect_of,
    rgba_of,
)

if TYPE_CHECKING:
    from .image import Image


class RenderMode(enum.IntFlag):
    """What paths do; a new context strokes."""

    FILL = 1
    STROKE = 2


class StrokeStyle(enum.IntEnum):
    """How a stroke's pieces are joined; a new context's is ITEMS."""

    BEVEL = 0  #: one ribbon per subpath, bevelled joins
    ITEMS = 16  #: each item gets a ribbon of its own
    MITRE = 64  #: mitre joins


class GradientType(enum.IntEnum):
    """How a gradient's stops are laid over the bounds of the shape."""

    ACROSS = 0  #: along x
    DOWN = 1  #: along y
    NONE = 2  #: opaque black
    INWARD = 3  #: from the sides inward
    DIAGONAL = 4  #: along x + y
    DIAGONAL_UP = 5  #: along y - x


class GradientCurve(enum.IntEnum):
    """How one stop of a gradient passes into the next."""

    LINEAR = 0
    CURVED = 1
    SINE = 2
    SPHERE_INC = 3
    SPHERE_DEC = 4


class Gradient:
    """Up to ten colours, one passing into the next.

    ``Gradient([(0, "rgb or rgba"), (1, ...)])``: each stop is its position from 0 to 1 and its colour, and may have
    a third number, where between it and the next the middle lies (0.5).
    """

    def __init__(
        self,
        stops: Sequence[Tuple] = (),
        type: GradientType = GradientType.DOWN,
        curve: GradientCurve = GradientCurve.LINEAR,
    ):
        if len(stops) > 10:
            raise ValueError("a gradient has at most ten stops")
        self._pointer = made(lib.LxGradient_Create())
        owned(self, lib.LxGradient_Delete, self._pointer)
        lib.LxGradient_SetType(self._pointer, type, curve)
        for index, (position, color, *middle) in enumerate(stops):
            lib.LxGradient_AddColor(
                self._pointer, color_record(color), index, position, middle[0] if middle else 0.5
            )


class Context:
    """Draws into an image: attributes first, then the calls that draw. Coordinates go through the matrix and are
    limited by the clip. It keeps its image alive.

    ``Image.context`` is the one that an image has of its own; ``Context(image)`` makes another, with attributes of
    its own.
    """

    def __init__(self, image: "Image"):
        width, height = image.width, image.height
        pointer = made(lib.LxGC_CreateWithImage(image._pointer, _library.RectD(0, 0, width, height)))
        self._pointer, self._image, self._gradients = pointer, image, {}
        owned(self, lib.LxGC_Delete, pointer, image, self._gradients)

    @classmethod
    def _of(cls, pointer, image) -> "Context":
        context = cls.__new__(cls)
        context._pointer, context._image, context._gradients = pointer, image, image._gradients
        return context

    # ---- Attributes ----

    @property
    def render_mode(self) -> RenderMode:
        """What paths do: a set of RenderMode."""
        return RenderMode(lib.LxGC_RenderMode(self._pointer))

    @render_mode.setter
    def render_mode(self, mode: RenderMode) -> None:
        lib.LxGC_SetRenderMode(self._pointer, mode)

    @property
    def fill_color(self) -> Tuple[int, int, int, int]:
        """The colour of fills."""
        return rgba_of(lib.LxGC_FillColor(self._pointer))

    @fill_color.setter
    def fill_color(self, color: ColorLike) -> None:
        lib.LxGC_SetFillColor(self._pointer, color_record(color))

    @property
    def stroke_color(self) -> Tuple[int, int, int, int]:
        """The colour of strokes."""
        return rgba_of(lib.LxGC_StrokeColor(self._pointer))

    @stroke_color.setter
    def stroke_color(self, color: ColorLike) -> None:
        lib.LxGC_SetStrokeColor(self._pointer, color_record(color))

    @property
    def fill_gradient(self) -> Optional[Gradient]:
        """The gradient of fills, which goes before the colour, or None."""
        return self._gradients.get("fill")

    @fill_gradient.setter
    def fill_gradient(self, gradient: Optional[Gradient]) -> None:
        lib.LxGC_SetFillGradient(self._pointer, None if gradient is None else gradient._pointer)
        self._gradients["fill"] = gradient

    @property
    def stroke_gradient(self) -> Optional[Gradient]:
        """The gradient of strokes, which goes before the colour, or None."""
        return self._gradients.get("stroke")

    @stroke_gradient.setter
    def stroke_gradient(self, gradient: Optional[Gradient]) -> None:
        lib.LxGC_SetStrokeGradient(self._pointer, None if gradient is None else gradient._pointer)
        self._gradients["stroke"] = gradient

    @property
    def fill_blend(self) -> Blend:
        """How fills meet what is there."""
        return blend_of(lib.LxGC_FillBlend(self._pointer))

    @fill_blend.setter
    def fill_blend(self, blend: BlendLike) -> None:
        lib.LxGC_SetFillBlend(self._pointer, blend_record(blend))

    @property
    def stroke_blend(self) -> Blend:
        """How strokes meet what is there."""
        return blend_of(lib.LxGC_StrokeBlend(self._pointer))

    @stroke_blend.setter
    def stroke_blend(self, blend: BlendLike) -> None:
        lib.LxGC_SetStrokeBlend(self._pointer, blend_record(blend))

    @property
    def image_blend(self) -> Blend:
        """How drawn images meet what is there."""
        return blend_of(lib.LxGC_ImageBlend(self._pointer))

    @image_blend.setter
    def image_blend(self, blend: BlendLike) -> None:
        lib.LxGC_SetImageBlend(self._pointer, blend_record(blend))

    @property
    def stroke_width(self) -> float:
        """The width of strokes, in units of the path."""
        return lib.LxGC_StrokeWidth(self._pointer)

    @stroke_width.setter
    def stroke_width(self, width: float) -> None:
        lib.LxGC_SetStrokeWidth(self._pointer, width)

    @property
    def stroke_style(self) -> int:
        """How a stroke's pieces are joined: a StrokeStyle."""
        return lib.LxGC_StrokeStyle(self._pointer)

    @stroke_style.setter
    def stroke_style(self, style: int) -> None:
        lib.LxGC_SetStrokeStyle(self._pointer, style)

    @property
    def bounds(self) -> Rect:
        """The whole target."""
        return rect_of(lib.LxGC_BoundsRect(self._pointer))

    @property
    def clip(self) -> Rect:
        """Where drawing is limited to: a part of the bounds."""
        return rect_of(lib.LxGC_ClipRect(self._pointer))

    @clip.setter
    def clip(self, rect: Sequence[float]) -> None:
        lib.LxGC_SetClip(self._pointer, *rect)

    @property
    def matrix(self) -> Matrix:
        """From the coordinates of paths to pixels."""
        return matrix_of(_library.MatrixRecord.from_address(lib.LxGC_Matrix(self._pointer)))

    @matrix.setter
    def matrix(self, matrix: Matrix) -> None:
        self.reset_matrix()
        self.multiply(matrix)

    def reset_matrix(self, x: float = 0, y: float = 0) -> None:
        """Back to the identity, moved to an origin."""
        lib.LxGC_SetOrigin(self._pointer, x, y)
        lib.LxGC_MatrixIdentity(self._pointer)

    def multiply(self, matrix: Matrix) -> None:
        """Applies ``matrix`` to paths before what is there."""
        lib.LxGC_MatrixMul(self._pointer, matrix_reference(matrix))

    def scale(self, sx: float, sy: float) -> None:
        """Scales the matrix's linear part as if first, its shift as if last."""
        lib.LxGC_MatrixScale(self._pointer, sx, sy)

    def translate(self, dx: float, dy: float) -> None:
        """Shifts what the matrix gives."""
        lib.LxGC_MatrixTranslate(self._pointer, dx, dy)

    def rotate(self, radians: float) -> None:
        """Rotates what the matrix gives around the origin of pixels."""
        lib.LxGC_MatrixRotate(self._pointer, radians)

    # ---- Drawing ----

    def path(self, path: Path) -> None:
        """Draws a path by the render mode, as the shapes below do too."""
        lib.LxGC_Path(self._pointer, path._pointer)

    def line(self, x0: float, y0: float, x1: float, y1: float) -> None:
        """Draws a line."""
        lib.LxGC_Line(self._pointer, x0, y0, x1, y1)

    def rect(self, x0: float, y0: float, x1: float, y1: float, radius_x: float = 0, radius_y: float = 0) -> None:
        """Draws a rectangle, its corners rounded if a radius is told."""
        if radius_x or radius_y:
            lib.LxGC_RoundFrame(self._pointer, x0, y0, x1, y1, radius_x, radius_y)
        else:
            lib.LxGC_Frame(self._pointer, x0, y0, x1, y1)

    def circle(self, cx: float, cy: float, radius: float) -> None:
        """Draws a circle."""
        lib.LxGC_Ellipse(self._pointer, cx, cy, radius, radius)

    def ellipse(self, cx: float, cy: float, radius_x: float, radius_y: float) -> None:
        """Draws an ellipse."""
        lib.LxGC_Ellipse(self._pointer, cx, cy, radius_x, radius_y)

    def polygon(self, points: Iterable[Sequence[float]]) -> None:
        """Draws a closed polygon."""
        array = points_record(points)
        lib.LxGC_Poly(self._pointer, array, len(array))

    def fill(self, color: ColorLike) -> None:
        """Stores a colour everywhere in the image, whatever the clip."""
        lib.LxGC_Fill(self._pointer, color_record(color, self._image.type))

    def clear(self) -> None:
        """Makes the whole image 0."""
        lib.LxGC_Clear(self._pointer)

    def image(self, image: "Image", x: int, y: int, mask: Optional["Image"] = None) -> None:
        """Draws an image at (x, y), moved by the matrix and not scaled. A mask (type A) lets it through where the mask
        itself lies."""
        lib.LxGC_DrawImageWithMask(self._pointer, x, y, image._pointer, None if mask is None else mask._pointer)

    def read_svg(self, text: Union[str, bytes]) -> None:
        """Plays SVG text: paths and lines of the simplest kind, y upwards, fitted into the bounds. Attributes and
        matrix stay as the drawing left them. Raises ValueError for what is no XML."""
        data = text.encode() if isinstance(text, str) else bytes(text)
        lib.LxSVG_SetPaintFlags(0)
        if not lib.LxSVG_ReadText(self._pointer, data, len(data)):
            raise ValueError("no well-formed XML")

    def read_svg_file(self, path: Union[str, "os.PathLike[str]"]) -> None:
        """The same with a file. Raises ValueError too where it cannot be read."""
        lib.LxSVG_SetPaintFlags(0)
        # An absolute path is never taken for a URL.
        if not lib.LxSVG_ReadFile(self._pointer, os.fsencode(os.path.abspath(path))):
            raise ValueError(f"{os.fspath(path)}: cannot be read as XML")
