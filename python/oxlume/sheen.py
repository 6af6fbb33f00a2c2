"""The sheen generator: procedural surfaces in layers, lit into a picture."""

from __future__ import annotations

import ctypes
import dataclasses
import enum
from typing import Iterator, NamedTuple, Optional, Sequence, Tuple, Union

from . import _library
from ._library import lib, made, owned
from .image import Image
from .values import ColorLike, color_record

#: The names of a layer's parameters, by their indices.
PARAMETERS: Tuple[str, ...] = tuple(lib.LxSheen_ParameterKey(index).decode() for index in range(76))

_INDICES = {name: index for index, name in enumerate(PARAMETERS)}


class SheenMode(enum.IntEnum):
    """How a layer's height meets the height under it; INSIDE: only where that is not 0."""

    ADD = 0
    SUBTRACT = 1
    MULTIPLY = 2
    PAINT = 3
    LARGER = 4
    SMALLER = 5
    ADD_INSIDE = 6
    SUBTRACT_INSIDE = 7
    MULTIPLY_INSIDE = 8
    PAINT_AGAIN = 9
    LARGER_INSIDE = 10
    SMALLER_INSIDE = 11


class Parameter(NamedTuple):
    """What is known of a layer's parameter."""

    name: str
    label: str
    minimum: float
    maximum: float
    default: float
    continuous: bool  #: False for one that takes whole numbers


@dataclasses.dataclass
class Light:
    """The light of a descriptor. Shadow and colour are only carried, but for the displacement."""

    azimuth: float = 2.356194490192345  #: radians
    elevation: float = 0.7853981633974483  #: radians
    width: float = 255.0  #: the greater, the flatter the relief looks
    ambient: float = 0.20000000298023224  #: the least light, 0 to 1
    brilliance: float = 1.0  #: the strength, above 1 with highlights
    color: Tuple[int, int, int, int] = (255, 255, 255, 255)
    shadow_softness: float = 7.0
    shadow_length: float = 10.0
    shadow_displacement: float = 0.0  #: pixels: grows the picture by so much away from the light
    shadow_opacity: int = 130
    shadow_step: int = 5


def _rgba(color) -> _library.Rgba:
    return _library.Rgba.from_buffer_copy(color_record(color), _library.ColorRecord.content.offset)


def _index_of(parameter: Union[str, int]) -> int:
    if isinstance(parameter, str):
        if parameter not in _INDICES:
            raise KeyError(parameter)
        return _INDICES[parameter]
    if not 0 <= parameter < len(PARAMETERS):
        raise KeyError(parameter)
    return parameter


class Layer:
    """A layer of a sheen's current descriptor. ``layer["kHeight"] = 0.8`` sets a parameter; PARAMETERS lists them.
    What is set shows from the next render on."""

    def __init__(self, sheen: "Sheen", index: int):
        self._sheen, self._index = sheen, index

    @property
    def _place(self):
        """What the library knows the layer by. Raises IndexError where the current descriptor has it not."""
        if self._index >= lib.LxSheen_NumberOfLayers(self._sheen._pointer):
            raise IndexError(f"the current descriptor has no layer {self._index}")
        return self._sheen._pointer, self._index

    def __getitem__(self, parameter: Union[str, int]) -> float:
        return lib.LxSheen_LayerValue(*self._place, _index_of(parameter))

    def __setitem__(self, parameter: Union[str, int], value: float) -> None:
        lib.LxSheen_SetLayerValue(*self._place, _index_of(parameter), value)

    def set(self, **values: float) -> "Layer":
        """Sets several parameters: ``layer.set(kHeight=0.8, kSymmetry=5)``."""
        for name, value in values.items():
            self[name] = value
        return self

    @property
    def name(self) -> str:
        """Its name."""
        return lib.LxSheen_LayerName(*self._place).decode(errors="replace")

    @name.setter
    def name(self, name: str) -> None:
        lib.LxSheen_SetLayerName(*self._place, _text(name))

    @property
    def color(self) -> Tuple[int, int, int, int]:
        """Its colour."""
        color = lib.LxSheen_LayerColor(*self._place)
        return (color.r, color.g, color.b, color.a)

    @color.setter
    def color(self, color: ColorLike) -> None:
        lib.LxSheen_SetLayerColor(*self._place, _rgba(color))

    @property
    def mode(self) -> SheenMode:
        """How it meets the layers under it."""
        return SheenMode(lib.LxSheen_LayerMode(*self._place))

    @mode.setter
    def mode(self, mode: SheenMode) -> None:
        lib.LxSheen_SetLayerMode(*self._place, SheenMode(mode))

    @property
    def opacity(self) -> float:
        """The strength of its colour, 0 to 1; ValueError for another number."""
        return lib.LxSheen_LayerOpacity(*self._place)

    @opacity.setter
    def opacity(self, opacity: float) -> None:
        if not lib.LxSheen_SetLayerOpacity(*self._place, opacity):
            raise ValueError(f"not within 0 to 1: {opacity}")

    @property
    def enabled(self) -> bool:
        """Whether it is part of the picture."""
        return bool(lib.LxSheen_isLayerEnabled(*self._place))

    @enabled.setter
    def enabled(self, enabled: bool) -> None:
        lib.LxSheen_SetLayerEnabled(*self._place, int(enabled))


class Layers(Sequence[Layer]):
    """The layers of a sheen's current descriptor, bottom first."""

    def __init__(self, sheen: "Sheen"):
        self._sheen = sheen

    def __len__(self) -> int:
        return lib.LxSheen_NumberOfLayers(self._sheen._pointer)

    def __getitem__(self, index):
        if isinstance(index, slice):
            return [Layer(self._sheen, i) for i in range(*index.indices(len(self)))]
        position = index + len(self) if index < 0 else index
        if not 0 <= position < len(self):
            raise IndexError(f"no layer {index}")
        return Layer(self._sheen, position)


class Sheen:
    """Two descriptors, 0 and 1, each a stack of layers, rendered into square pictures.

    ``sheen.layers[0]["kHeight"] = 0.8; picture = sheen.render()``. Layers are looked up in the current descriptor.
    """

    def __init__(self, size: int):
        """A sheen of ``size`` by ``size`` pixels with one layer in each descriptor."""
        if size < 1:
            raise ValueError(f"no size for a sheen: {size}")
        self._adopt(lib.LxSheen_Create(size))

    def _adopt(self, pointer):
        self._pointer = made(pointer)
        owned(self, lib.LxSheen_Delete, pointer)

    @classmethod
    def from_preset(cls, text: str, size: int) -> "Sheen":
        """A sheen of a preset's layers and light, in descriptor 0."""
        sheen = cls(size)
        sheen.load_preset(text)
        return sheen

    def between(
        self, t: float, descriptor: int = 0, other: Optional["Sheen"] = None, other_descriptor: int = 1
    ) -> "Sheen":
        """A sheen ``t`` of the way (0 to 1) from a descriptor to another, of this sheen unless told."""
        if t != t:
            raise ValueError("t is not a number")
        target = self if other is None else other
        sheen = Sheen.__new__(Sheen)
        sheen._adopt(
            lib.LxSheen_CreateBetween(
                t, self._pointer, _checked(descriptor), target._pointer, _checked(other_descriptor)
            )
        )
        return sheen

    @property
    def size(self) -> int:
        """Width and height in pixels."""
        return lib.LxSheen_Size(self._pointer)

    @size.setter
    def size(self, size: int) -> None:
        if size < 1:
            raise ValueError(f"no size for a sheen: {size}")
        lib.LxSheen_SetSize(self._pointer, size)

    @property
    def current_descriptor(self) -> int:
        """The descriptor, 0 or 1, in which layers are looked up."""
        return lib.LxSheen_CurrentDescriptor(self._pointer)

    @current_descriptor.setter
    def current_descriptor(self, descriptor: int) -> None:
        lib.LxSheen_SetCurrentDescriptor(self._pointer, _checked(descriptor))

    @property
    def layers(self) -> Layers:
        """The layers of the current descriptor, bottom first."""
        return Layers(self)

    def add_layer(self, name: str = "", **values: float) -> Layer:
        """Adds a white layer on top, to both descriptors; parameters are set in the current one."""
        if lib.LxSheen_AddLayer(self._pointer, _text(name)) < 0:
            raise MemoryError("no memory for a layer")
        return self.layers[-1].set(**values)

    def light(self, descriptor: int = 0) -> Light:
        """A copy of a descriptor's light: change it, then set_light()."""
        record = lib.LxSheen_Light(self._pointer, _checked(descriptor))
        values = {field.name: getattr(record, field.name) for field in dataclasses.fields(Light)}
        values["color"] = (record.color.r, record.color.g, record.color.b, record.color.a)
        return Light(**values)

    def set_light(self, light: Light, descriptor: int = 0) -> None:
        """Lights a descriptor. Raises ValueError for a number that is not finite."""
        values = {field.name: getattr(light, field.name) for field in dataclasses.fields(Light)}
        values["color"] = _rgba(light.color)
        if not lib.LxSheen_SetLight(self._pointer, _checked(descriptor), _library.LightRecord(**values)):
            raise ValueError(f"not finite: {light}")

    def alpha_threshold(self, descriptor: int = 0) -> float:
        """The height above which a picture is opaque."""
        return lib.LxSheen_AlphaThreshold(self._pointer, _checked(descriptor))

    def set_alpha_threshold(self, height: float, descriptor: int = 0) -> None:
        """Sets the height above which a picture is opaque. Raises ValueError for one that is not finite."""
        if not lib.LxSheen_SetAlphaThreshold(self._pointer, _checked(descriptor), height):
            raise ValueError(f"not finite: {height}")

    def render(self, descriptor: int = 0) -> Image:
        """Renders a descriptor: a picture of type RGBA, the caller's own. MemoryError where there is none."""
        return Image._of(lib.LxImage_Copy(lib.LxSheen_RenderDescriptor(self._pointer, _checked(descriptor), 1)))

    def heights(self, descriptor: int = 0) -> Image:
        """The heights of a descriptor's last render, 0 to 1: an image of type FLOAT, the caller's own. ValueError
        where nothing was rendered."""
        before = self.current_descriptor
        self.current_descriptor = descriptor
        try:
            heights = lib.LxSheen_FloatImage(self._pointer)
            if not heights:
                raise ValueError("nothing was rendered")
            return Image._of(lib.LxImage_Copy(heights))
        finally:
            self.current_descriptor = before

    def load_preset(self, text: Union[str, bytes], descriptor: int = 0) -> None:
        """Replaces a descriptor's layers and light by those of a preset's text. Raises ValueError, changing nothing,
        for what cannot be read: its message names the line."""
        data = text.encode() if isinstance(text, str) else bytes(text)
        message = ctypes.create_string_buffer(512)
        if not lib.LxSheen_LoadPreset(self._pointer, _checked(descriptor), data, len(data), message, len(message)):
            if not message.value:
                raise MemoryError("no memory for the preset's layers")
            raise ValueError(message.value.decode(errors="replace"))

    def preset(self, descriptor: int = 0) -> str:
        """A descriptor as a preset's text, which loads as the same."""
        pointer = made(lib.LxSheen_CreatePreset(self._pointer, _checked(descriptor)))
        try:
            return ctypes.string_at(pointer).decode(errors="replace")
        finally:
            lib.LxMem_free(pointer)


def _checked(descriptor: int) -> int:
    if descriptor not in (0, 1):
        raise ValueError(f"neither descriptor 0 nor 1: {descriptor}")
    return descriptor


def _text(text: str) -> bytes:
    data = text.encode()
    if b"\0" in data:
        raise ValueError("a zero character in a name")
    return data


def parameters() -> Iterator[Parameter]:
    """What is known of each of a layer's parameters, by their indices."""
    layer = Sheen(1)
    minimum, maximum, value = ctypes.c_double(), ctypes.c_double(), ctypes.c_double()
    continuous = ctypes.c_int32()
    results = [ctypes.byref(result) for result in (value, minimum, maximum, continuous)]
    for index, name in enumerate(PARAMETERS):
        label = lib.LxSheen_LayerValueParameter(layer._pointer, 0, index, *results)
        yield Parameter(
            name,
            label.decode(),
            minimum.value,
            maximum.value,
            lib.LxSheen_ParameterDefault(index),
            bool(continuous.value),
        )
