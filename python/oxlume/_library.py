"""The C library: where it is found, its records, and the prototypes of the functions that the package calls."""

from __future__ import annotations

import ctypes
import ctypes.util
import os
import pathlib
import weakref
from ctypes import CFUNCTYPE, POINTER, Structure, c_char_p, c_double, c_float, c_int32, c_size_t, c_uint8, c_uint32, c_void_p


def _candidates():
    """Where the library may be: as told, beside this file as in a wheel, or where the loader finds it."""
    told = os.environ.get("OXLUME_LIBRARY")
    if told:
        yield told
        return
    yield from sorted(str(path) for path in pathlib.Path(__file__).parent.glob("liboxlume.so*"))
    yield "liboxlume.so.0"
    found = ctypes.util.find_library("oxlume")
    if found:
        yield found


def _load():
    failures = []
    for name in _candidates():
        try:
            # Calls keep the interpreter's lock: the library guards nothing that all images share.
            return ctypes.PyDLL(name)
        except OSError as error:
            failures.append(str(error))
    raise ImportError("liboxlume cannot be loaded (OXLUME_LIBRARY tells where it is): " + "; ".join(failures))


class PointL(Structure):
    """LxPointL."""

    _fields_ = [("x", c_int32), ("y", c_int32)]


class PointD(Structure):
    """LxPointD."""

    _fields_ = [("x", c_double), ("y", c_double)]


class RectL(Structure):
    """LxRectL."""

    _fields_ = [("x0", c_int32), ("y0", c_int32), ("x1", c_int32), ("y1", c_int32)]


class RectD(Structure):
    """LxRectD."""

    _fields_ = [("x0", c_double), ("y0", c_double), ("x1", c_double), ("y1", c_double)]


class MatrixRecord(Structure):
    """LxMatrix."""

    _fields_ = [(f"m{i}", c_double) for i in range(9)]


class Rgba(Structure):
    """LxRGBA."""

    _fields_ = [("r", c_uint8), ("g", c_uint8), ("b", c_uint8), ("a", c_uint8)]


class ColorRecord(Structure):
    """LxColor: the type and the four bytes of its union, as one word."""

    _fields_ = [("type", c_int32), ("content", c_uint32)]


class BlendRecord(Structure):
    """LxBlend: its bit fields, a byte each, and the pointer."""

    _fields_ = [
        ("mode", c_uint8),
        ("opacity", c_uint8),
        ("channel", c_uint8),
        ("flags", c_uint8),
        ("pointer", c_void_p),
    ]


class MorphLineRecord(Structure):
    """LxMorphLine."""

    _fields_ = [(name, c_int32) for name in ("x0", "y0", "x1", "y1", "dx", "dy")] + [
        ("length", c_float),
        ("length_squared", c_int32),
    ]


class LightRecord(Structure):
    """LxSheenLight."""

    _fields_ = [
        ("azimuth", c_double),
        ("elevation", c_double),
        ("width", c_double),
        ("ambient", c_double),
        ("brilliance", c_double),
        ("color", Rgba),
        ("shadow_softness", c_double),
        ("shadow_length", c_double),
        ("shadow_displacement", c_double),
        ("shadow_opacity", c_uint8),
        ("shadow_step", c_uint8),
    ]


class PathInfoRecord(Structure):
    """LxPathInfo."""

    _fields_ = [
        (name, c_int32)
        for name in ("reserved1", "reserved2", "reserved3", "points", "lines", "moves", "reserved4", "reserved5", "reserved6")
    ]


MoveCallback = CFUNCTYPE(None, c_void_p, POINTER(PointD))
SegmentCallback = CFUNCTYPE(None, c_void_p, POINTER(PointD), POINTER(PointD))
EndCallback = CFUNCTYPE(None, c_void_p)

# What a letter of a prototype stands for: small letters are numbers and addresses, capital ones records by value, and
# an asterisk goes before what is passed by address.
_TYPES = {
    "v": None,
    "i": c_int32,
    "u": c_uint32,
    "b": c_uint8,
    "d": c_double,
    "p": c_void_p,
    "s": c_char_p,
    "z": c_size_t,
    "P": PointD,
    "Q": PointL,
    "R": RectD,
    "S": RectL,
    "M": MatrixRecord,
    "C": ColorRecord,
    "B": BlendRecord,
    "K": Rgba,
    "L": MorphLineRecord,
    "G": LightRecord,
    "I": PathInfoRecord,
}

# A function's result, then its arguments.
_PROTOTYPES = """
    LxMem_free vp
    LxBlend_ModeName si
    LxBlend_ChannelName si
    LxBlend_Image_Image v*Bppp*S

    LxImage_Create piiiiiii
    LxImage_CreateEx piiiiipiiii
    LxImage_Delete vp
    LxImage_Copy pp
    LxImage_Type ip
    LxImage_BytesPerRow ip
    LxImage_Data pp
    LxImage_DataSize ip
    LxImage_w ip
    LxImage_h ip
    LxImage_RectL Sp
    LxImage_isFlipped ip
    LxImage_isTiled ip
    LxImage_isSegmented ip
    LxImage_SegmentType ip
    LxImage_MoveTo vpii
    LxImage_GC pp
    LxImage_ConstPointer ppii
    LxImage_SetPixelAt ipiiC
    LxImage_BlendPixelAt ipiiCB
    LxImage_Fill vpC
    LxImage_Clear vp
    LxImage_Add vpd
    LxImage_PremultiplyAlpha vpb
    LxImage_BlendColor vpCB
    LxImage_GenerateChequerboard vpiCC
    LxImage_FlipHorizontal vp
    LxImage_FlipVertical vp
    LxImage_SegmentRectL Spii
    LxImage_TileNum vp*i*i
    LxImage_SetTile ipii
    LxImage_TileRectL Sp
    LxImage_ReadSegmentMarks vp

    LxPath_Create p
    LxPath_Delete vp
    LxPath_CreateCopy pp
    LxPath_MakeEmpty vp
    LxPath_Add vpp
    LxPath_AddMoveTo vpdd
    LxPath_AddLineTo vpdd
    LxPath_AddQCurveTo vpdddd
    LxPath_AddCurveTo vpdddddd
    LxPath_AddClose vp
    LxPath_AddRect vp*Rdd
    LxPath_AddEllipse vpdddd
    LxPath_AddPoly vp*Pi
    LxPath_AddPolyPie vpdddddii
    LxPath_AddPolyRing vpddddddii
    LxPath_isClosed ip
    LxPath_Close ipi
    LxPath_Transform vp*M
    LxPath_Decompose vp*M
    LxPath_Outline vp*M*Rdi
    LxPath_Clip vp*R
    LxPath_Info Ip*M
    LxPath_CreateIterator p
    LxPath_DeleteIterator vp
    LxPathIterator_SetCallback vpip
    LxPath_IterateConst vpp*Mpp
    LxCubicBezier_Fit v*Pidp

    LxMatrix_MulMat p*M*M
    LxMatrix_GetInverse v*M*M
    LxMatrix_SetRotate v*Mddd
    LxMatrix_MulPointD P*M*P
    LxRectD_intersect RRR
    LxRectD_union RRR

    LxGradient_Create p
    LxGradient_Delete vp
    LxGradient_SetType vpii
    LxGradient_AddColor vpCidd

    LxGC_CreateWithImage ppR
    LxGC_Delete vp
    LxGC_SetRenderMode vpu
    LxGC_RenderMode up
    LxGC_SetFillColor vpC
    LxGC_FillColor Cp
    LxGC_SetFillBlend vpB
    LxGC_FillBlend Bp
    LxGC_SetFillGradient vpp
    LxGC_SetStrokeColor vpC
    LxGC_StrokeColor Cp
    LxGC_SetStrokeBlend vpB
    LxGC_StrokeBlend Bp
    LxGC_SetStrokeGradient vpp
    LxGC_SetStrokeWidth vpd
    LxGC_StrokeWidth dp
    LxGC_SetStrokeStyle vpi
    LxGC_StrokeStyle ip
    LxGC_SetImageBlend vpB
    LxGC_ImageBlend Bp
    LxGC_SetClip vpdddd
    LxGC_ClipRect Rp
    LxGC_BoundsRect Rp
    LxGC_Matrix pp
    LxGC_SetOrigin vpdd
    LxGC_MatrixIdentity vp
    LxGC_MatrixMul vp*M
    LxGC_MatrixScale vpdd
    LxGC_MatrixTranslate vpdd
    LxGC_MatrixRotate vpd
    LxGC_Line vpdddd
    LxGC_Frame vpdddd
    LxGC_RoundFrame vpdddddd
    LxGC_Ellipse vpdddd
    LxGC_Poly vp*Pi
    LxGC_Path vpp
    LxGC_Fill vpC
    LxGC_Clear vp
    LxGC_DrawImageWithMask vpiipp
    LxSVG_ReadFile ips
    LxSVG_ReadText ipsz
    LxSVG_SetPaintFlags vu

    LxMorphLine Liiii
    LxMorph_Frame ipp*L*Lid

    LxSheen_Create pi
    LxSheen_Delete vp
    LxSheen_CreateBetween pdpupu
    LxSheen_Size ip
    LxSheen_SetSize vpi
    LxSheen_AddLayer ips
    LxSheen_NumberOfLayers ip
    LxSheen_SetCurrentDescriptor vpu
    LxSheen_CurrentDescriptor up
    LxSheen_SetLayerValue vpiud
    LxSheen_LayerValue dpiu
    LxSheen_LayerValueParameter spiu*d*d*d*i
    LxSheen_SetLayerColor vpiK
    LxSheen_LayerColor Kpi
    LxSheen_SetLayerName vpis
    LxSheen_LayerName spi
    LxSheen_SetLayerMode ipiu
    LxSheen_LayerMode upi
    LxSheen_SetLayerOpacity ipid
    LxSheen_LayerOpacity dpi
    LxSheen_SetLayerEnabled ipii
    LxSheen_isLayerEnabled ipi
    LxSheen_SetLight ipuG
    LxSheen_Light Gpu
    LxSheen_SetAlphaThreshold ipud
    LxSheen_AlphaThreshold dpu
    LxSheen_RenderDescriptor ppui
    LxSheen_FloatImage pp
    LxSheen_ParameterKey su
    LxSheen_ParameterDefault du
    LxSheen_LoadPreset ipuszpz
    LxSheen_CreatePreset ppu
"""


def _types_of(letters):
    types = []
    by_address = False
    for letter in letters:
        if letter == "*":
            by_address = True
            continue
        types.append(POINTER(_TYPES[letter]) if by_address else _TYPES[letter])
        by_address = False
    return types


def _declare(library):
    for line in _PROTOTYPES.split("\n"):
        if line.strip():
            name, letters = line.split()
            function = getattr(library, name)
            function.restype, *function.argtypes = _types_of(letters)


lib = _load()
_declare(lib)


def made(pointer):
    """What a function of the library has created; its null means that memory was short."""
    if not pointer:
        raise MemoryError("the library could not allocate what it was asked for")
    return pointer


def owned(holder, delete, pointer, *kept):
    """Has a record deleted once nobody holds ``holder``; what else is passed lives until then. The end of the program
    deletes nothing: arrays may still lie over pixels."""
    weakref.finalize(holder, _delete, delete, pointer, kept).atexit = False


def _delete(delete, pointer, kept):
    delete(pointer)
    del kept


def by_reference(record):
    """The address of a record for a call, or null for None."""
    return None if record is None else ctypes.byref(record)
