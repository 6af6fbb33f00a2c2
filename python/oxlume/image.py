"""Images, which share their pixels with numpy and with whatever else takes memory."""

from __future__ import annotations

import ctypes
import struct
import zlib
from typing import Optional, Sequence, Tuple, Union

from . import _library
from ._library import by_reference, lib, made, owned
from .context import Context
from .values import Blend, BlendLike, ColorLike, Mode, PixelType, Rect, blend_record, color_record

# How the pixels of each type look to numpy: its name of the element, and how many make a pixel.
_LAYOUTS = {
    PixelType.A: ("|u1", 1),
    PixelType.RGB: ("|u1", 3),
    PixelType.RGBA: ("|u1", 4),
    PixelType.RGBA_PREMULTIPLIED: ("|u1", 4),
    PixelType.FLOAT: ("=f4", 1),
    PixelType.LONG: ("=i4", 1),
}
_NATIVE = "<" if struct.pack("=H", 1)[0] else ">"


def _typestr(pixel_type):
    return _LAYOUTS[pixel_type][0].replace("=", _NATIVE)


def _pixel_bytes(pixel_type):
    name, count = _LAYOUTS[pixel_type]
    return int(name[2]) * count


class Image:
    """A rectangle of pixels with a place.

    ``Image("RGBA", 320, 200)`` is an image of zeroes at (0, 0). It offers ``__array_interface__``, so that
    ``numpy.asarray(image)`` is the pixels themselves: rows from the top, of shape (height, width) or (height,
    width, 3 or 4). The array keeps the image alive.
    """

    def __init__(
        self,
        pixel_type: Union[PixelType, str],
        width: int,
        height: int,
        *,
        x: int = 0,
        y: int = 0,
        flipped: bool = False,
    ):
        """A new image. With ``flipped`` its rows are stored bottom-up, which changes nothing that is seen here.

        Raises ValueError for sizes below 1 and MemoryError for lack of memory.
        """
        kind = _kind(pixel_type)
        _check_size(width, height)
        if max(x + width, y + height, -x, -y) > 0x7FFFFFFF:
            raise ValueError("the place lies beyond 32 bits")
        self._adopt(made(lib.LxImage_Create(kind, x, y, x + width, y + height, 1, int(flipped))))

    def _adopt(self, pointer, memory=None):
        self._pointer = pointer
        # The gradients that the image's context refers to.
        self._gradients = {}
        owned(self, lib.LxImage_Delete, pointer, memory)

    @classmethod
    def _of(cls, pointer, memory=None) -> "Image":
        image = cls.__new__(cls)
        image._adopt(made(pointer), memory)
        return image

    @classmethod
    def from_array(cls, array, pixel_type: Union[PixelType, str, None] = None) -> "Image":
        """An image over the memory of an array, which both see from then on: no pixel is copied.

        Takes what offers ``__array_interface__``: unsigned bytes of shape (height, width), (height, width, 3) or
        (height, width, 4), floats or integers of 32 bits of shape (height, width). Rows may lie any distance
        apart, bottom-up too; the pixels of a row must not. Raises ValueError for other arrays and for such as
        cannot be written (``numpy.ascontiguousarray`` makes a copy that can be taken).
        """
        interface = array.__array_interface__
        shape = interface["shape"]
        if interface.get("data") is None:
            raise ValueError("the array does not tell where its elements are")
        address, read_only = interface["data"]
        kind = _kind_of_array(interface["typestr"], shape, pixel_type)
        if read_only:
            raise ValueError("the array cannot be written")
        height, width = shape[:2]
        _check_size(width, height)
        size = _pixel_bytes(kind)
        packed = (size, size // shape[2]) if len(shape) == 3 else (size,)
        row_bytes, *inner = interface.get("strides") or (width * size, *packed)
        # With one pixel in a row the distance to the next means nothing.
        if tuple(inner[1:]) != packed[1:] or (width > 1 and inner[0] != size):
            raise ValueError("the pixels of a row do not lie side by side")
        if height > 1 and abs(row_bytes) < width * size:
            raise ValueError("the array's rows overlap")
        if size == 4 and len(shape) == 2 and (address % 4 or row_bytes % 4):
            raise ValueError("the array's elements are not aligned")
        stride = abs(row_bytes) if height > 1 else width * size
        flipped = row_bytes < 0 and height > 1
        first = address - (height - 1) * stride if flipped else address
        return cls._over(first, array, kind, width, height, stride, flipped)

    @classmethod
    def from_buffer(
        cls, buffer, pixel_type: Union[PixelType, str], width: int, height: int, row_bytes: Optional[int] = None
    ) -> "Image":
        """An image over a buffer that can be written, such as a bytearray: rows from the top, ``row_bytes`` apart
        (tightly packed if not told). No pixel is copied. Raises ValueError for too small a buffer."""
        kind = _kind(pixel_type)
        _check_size(width, height)
        needed = width * _pixel_bytes(kind)
        row_bytes = needed if row_bytes is None else row_bytes
        size = row_bytes * height
        if row_bytes < needed or memoryview(buffer).nbytes < size:
            raise ValueError("the buffer is too small for these rows")
        if size > 0x7FFFFFFF:
            raise MemoryError("the image's bytes do not fit in 32 bits")
        memory = (ctypes.c_uint8 * size).from_buffer(buffer)
        return cls._over(ctypes.addressof(memory), memory, kind, width, height, row_bytes, False)

    @classmethod
    def _over(cls, address, memory, kind, width, height, row_bytes, flipped):
        if row_bytes * height > 0x7FFFFFFF:
            raise MemoryError("the image's bytes do not fit in 32 bits")
        pointer = lib.LxImage_CreateEx(kind, 0, 0, width, height, address, row_bytes, 0, 0, int(flipped))
        return cls._of(pointer, memory)

    # ---- What it is ----

    @property
    def type(self) -> PixelType:
        """The type of its pixels."""
        return PixelType(lib.LxImage_Type(self._pointer))

    @property
    def width(self) -> int:
        """How many pixels a row has."""
        return lib.LxImage_w(self._pointer)

    @property
    def height(self) -> int:
        """How many rows there are."""
        return lib.LxImage_h(self._pointer)

    @property
    def rect(self) -> Rect:
        """Its place."""
        rect = lib.LxImage_RectL(self._pointer)
        return Rect(rect.x0, rect.y0, rect.x1, rect.y1)

    @property
    def row_bytes(self) -> int:
        """Bytes from one stored row to the next."""
        return lib.LxImage_BytesPerRow(self._pointer)

    @property
    def flipped(self) -> bool:
        """Whether rows are stored bottom-up."""
        return bool(lib.LxImage_isFlipped(self._pointer))

    def __repr__(self) -> str:
        return f"<Image {self.type.name} {self.width} x {self.height} at {tuple(self.rect[:2])}>"

    # ---- Its memory ----

    @property
    def __array_interface__(self):
        kind = self.type
        size, stride = _pixel_bytes(kind), self.row_bytes
        count = _LAYOUTS[kind][1]
        address = lib.LxImage_Data(self._pointer)
        if self.flipped:
            address += (self.height - 1) * stride
            stride = -stride
        several = count > 1
        return {
            "version": 3,
            "typestr": _typestr(kind),
            "shape": (self.height, self.width) + ((count,) if several else ()),
            "strides": (stride, size) + ((1,) if several else ()),
            "data": (address, False),
        }

    @property
    def data(self) -> memoryview:
        """All stored rows, the bottom one first if flipped, with the bytes between them: the memory itself, to read
        and to write. Keeps the image alive."""
        size = lib.LxImage_DataSize(self._pointer)
        memory = type("Pixels", (ctypes.c_uint8 * size,), {}).from_address(lib.LxImage_Data(self._pointer))
        memory.image = self
        return memoryview(memory).cast("B")

    def tobytes(self) -> bytes:
        """A copy of the pixels, rows from the top without bytes between them."""
        size = self.width * _pixel_bytes(self.type)
        rows = range(self.height - 1, -1, -1) if self.flipped else range(self.height)
        data, stride = self.data, self.row_bytes
        return b"".join(data[y * stride : y * stride + size] for y in rows)

    # ---- Single pixels ----

    def __getitem__(self, place: Tuple[int, int]):
        """``image[x, y]``: a number for types of one component, else the tuple of them. IndexError outside."""
        address = self._inside(place)
        kind = self.type
        name, count = _LAYOUTS[kind]
        values = struct.unpack(f"={count}{'B' if name[1] == 'u' else name[1]}", ctypes.string_at(address, _pixel_bytes(kind)))
        return values if count > 1 else values[0]

    def __setitem__(self, place: Tuple[int, int], color: ColorLike) -> None:
        """``image[x, y] = color``. IndexError outside."""
        address = self._inside(place)
        record = color_record(color, self.type)
        ctypes.memmove(address, ctypes.byref(record, _library.ColorRecord.content.offset), _pixel_bytes(self.type))

    def _inside(self, place):
        x, y = place
        width, height = self.width, self.height
        if not (0 <= x < width and 0 <= y < height):
            raise IndexError(f"({x}, {y}) lies outside of {width} x {height}")
        row = height - 1 - y if self.flipped else y
        return lib.LxImage_Data(self._pointer) + row * self.row_bytes + x * _pixel_bytes(self.type)

    def blend_pixel(self, x: int, y: int, color: ColorLike, blend: BlendLike = Mode.SRC_OVER) -> None:
        """Blends a colour into a pixel; nothing outside."""
        lib.LxImage_BlendPixelAt(self._pointer, x, y, color_record(color, self.type), blend_record(blend))

    # ---- Whole images ----

    def copy(self) -> "Image":
        """An image of its own with the same pixels."""
        return Image._of(lib.LxImage_Copy(self._pointer))

    def move_to(self, x: int, y: int) -> None:
        """Moves its place; pixels stay."""
        lib.LxImage_MoveTo(self._pointer, x, y)

    def fill(self, color: ColorLike) -> None:
        """Stores a colour in every pixel."""
        lib.LxImage_Fill(self._pointer, color_record(color, self.type))

    def clear(self) -> None:
        """Makes every byte 0."""
        lib.LxImage_Clear(self._pointer)

    def add(self, amount: float) -> None:
        """Brightens by 0 to 1 of full scale."""
        lib.LxImage_Add(self._pointer, amount)

    def premultiply(self, opacity: int = 255) -> None:
        """Multiplies colours by alpha and opacity; a picture of type RGBA becomes a premultiplied one."""
        lib.LxImage_PremultiplyAlpha(self._pointer, opacity)

    def blend_color(self, color: ColorLike, blend: BlendLike = Mode.SRC_OVER) -> None:
        """Blends a colour into every pixel."""
        lib.LxImage_BlendColor(self._pointer, color_record(color, self.type), blend_record(blend))

    def chequerboard(self, size: int, first: ColorLike, second: ColorLike) -> None:
        """Squares of two colours, of a size that is a power of two."""
        kind = self.type
        lib.LxImage_GenerateChequerboard(self._pointer, size, color_record(first, kind), color_record(second, kind))

    def flip_horizontal(self) -> None:
        """Mirrors left and right."""
        lib.LxImage_FlipHorizontal(self._pointer)

    def flip_vertical(self) -> None:
        """Mirrors top and bottom."""
        lib.LxImage_FlipVertical(self._pointer)

    def draw(
        self,
        source: "Image",
        blend: BlendLike = Blend(),
        mask: Optional["Image"] = None,
        limit: Optional[Sequence[int]] = None,
    ) -> None:
        """Lays another image on this one where their places meet. A mask (type A) and a rectangle limit it."""
        rect = None if limit is None else _library.RectL(*limit)
        lib.LxBlend_Image_Image(
            ctypes.byref(blend_record(blend)),
            self._pointer,
            source._pointer,
            None if mask is None else mask._pointer,
            by_reference(rect),
        )

    @property
    def context(self) -> Context:
        """The context that draws into the image."""
        return Context._of(made(lib.LxImage_GC(self._pointer)), self)

    # ---- Segments and tiles ----

    def read_segment_marks(self) -> None:
        """Reads the segments or tiles that marker pixels tell."""
        lib.LxImage_ReadSegmentMarks(self._pointer)

    @property
    def segment_layout(self) -> int:
        """The layout of the segments, 1 to 7, or 0 for a picture without."""
        return lib.LxImage_SegmentType(self._pointer)

    def segment(self, column: int, row: int) -> Rect:
        """The piece of a column and row, 0 to 2; its second corner is its last pixel."""
        rect = lib.LxImage_SegmentRectL(self._pointer, column, row)
        return Rect(rect.x0, rect.y0, rect.x1, rect.y1)

    @property
    def tiles(self) -> Tuple[int, int]:
        """How many columns and rows of tiles there are; (0, 0) for a picture without."""
        if not lib.LxImage_isTiled(self._pointer):
            return (0, 0)
        columns, rows = ctypes.c_int32(), ctypes.c_int32()
        lib.LxImage_TileNum(self._pointer, ctypes.byref(columns), ctypes.byref(rows))
        return (columns.value, rows.value)

    def tile(self, column: int, row: int) -> Rect:
        """Makes a tile the current one, and answers its rectangle. Raises ValueError for a picture without."""
        if not lib.LxImage_SetTile(self._pointer, column, row):
            raise ValueError("the image has no tiles")
        rect = lib.LxImage_TileRectL(self._pointer)
        return Rect(rect.x0, rect.y0, rect.x1, rect.y1)

    # ---- Files ----

    def write_png(self, path) -> None:
        """Writes a PNG file. Raises ValueError for types other than A, RGB and RGBA."""
        colors = {PixelType.A: 0, PixelType.RGB: 2, PixelType.RGBA: 6}
        kind = self.type
        if kind not in colors:
            raise ValueError(f"images of type {kind.name} cannot be written as PNG")
        pixels, size = self.tobytes(), self.width * _pixel_bytes(kind)
        rows = b"".join(b"\0" + pixels[y * size : (y + 1) * size] for y in range(self.height))

        def chunk(name, content):
            return struct.pack(">I", len(content)) + name + content + struct.pack(">I", zlib.crc32(name + content))

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, colors[kind], 0, 0, 0)
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header))
            file.write(chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def _kind(pixel_type) -> PixelType:
    if isinstance(pixel_type, str):
        try:
            return PixelType[pixel_type.upper()]
        except KeyError:
            raise ValueError(f"no pixel type: {pixel_type!r}") from None
    return PixelType(pixel_type)


def _check_size(width, height):
    if width < 1 or height < 1:
        raise ValueError(f"no size for an image: {width} x {height}")


def _kind_of_array(typestr, shape, pixel_type):
    count = shape[2] if len(shape) == 3 else 1
    fitting = [
        kind for kind in PixelType if len(shape) in (2, 3) and (_typestr(kind), _LAYOUTS[kind][1]) == (typestr, count)
    ]
    # A picture of one component has no third axis.
    if not fitting or (count == 1 and len(shape) == 3):
        raise ValueError(f"no image has pixels of shape {tuple(shape)} and type {typestr}")
    kind = fitting[0] if pixel_type is None else _kind(pixel_type)
    if kind not in fitting:
        raise ValueError(f"pixels of shape {tuple(shape)} and type {typestr} are not of type {kind.name}")
    return kind
