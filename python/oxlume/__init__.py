"""Oxlume: images, blending, paths, drawing and procedural surfaces.

    >>> import oxlume
    >>> image = oxlume.Image("RGBA", 320, 200)
    >>> gc = image.context
    >>> gc.render_mode = oxlume.RenderMode.FILL
    >>> gc.fill_color = (255, 128, 0)
    >>> gc.circle(160, 100, 80)
    >>> image[160, 100]
    (255, 128, 0, 255)

``numpy.asarray(image)`` is the pixels themselves. All of it belongs to one thread at a time; the interpreter's lock,
which calls keep, sees to that.
"""

from .context import Context, Gradient, GradientCurve, GradientType, RenderMode, StrokeStyle
from .image import Image
from .morph import morph
from .path import Path, Subpath
from .sheen import PARAMETERS, Layer, Light, Parameter, Sheen, SheenMode, parameters
from .values import Blend, Channel, Matrix, Mode, PixelType, Rect

__version__ = "0.1.0"

__all__ = [
    "Blend",
    "Channel",
    "Context",
    "Gradient",
    "GradientCurve",
    "GradientType",
    "Image",
    "Layer",
    "Light",
    "Matrix",
    "Mode",
    "PARAMETERS",
    "Parameter",
    "Path",
    "PixelType",
    "Rect",
    "RenderMode",
    "Sheen",
    "SheenMode",
    "StrokeStyle",
    "Subpath",
    "morph",
    "parameters",
]
