/* What the classic boundary keeps inside and clients need: SVG, morphing, the rest of a sheen layer, the
 * light, descriptors between two, presets as text, and marks read on request.
 *
 * These names belong to the same library under a symbol version of their own, OXLUME_EXTRAS_0; oxlume.h does
 * not include this header. Where a function answers 1 or 0, 0 means that an argument was null, out of range
 * or not a number, that a text could not be read, or that memory was short; nothing has changed then unless
 * the declaration says otherwise. Threads: as the families that the functions join. */
#ifndef OXLUME_LXEXTRAS_H
#define OXLUME_LXEXTRAS_H

#include <oxlume/LxBase.h>
#include <oxlume/LxColor.h>
#include <oxlume/LxGC.h>
#include <oxlume/LxImage.h>
#include <oxlume/LxSheen.h>

LX_BEGIN_DECLS

/* ---- Images ---- */

/* Reads the marker pixels of a picture and stores the segments or tiles that they tell, in place of any it
 * had; a picture without marks becomes a plain one. Only pictures of the types RGB, RGBA and premultiplied
 * whose top-left pixel is 0, 255, 255, 255 have marks: such pixels, alone, on the third row and on the third
 * column. Pixels stay as they are. Null is ignored. */
LX_API void LxImage_ReadSegmentMarks(LxImage *image);

/* ---- SVG ----
 *
 * Both play a drawing onto the context at once: the elements svg, g, path and line with a few of their
 * attributes, colours as six hexadecimal digits, transforms ignored; y grows upwards in the result, and the
 * drawing is fitted into the context's bounds. Colours, widths, render mode and matrix of the context stay as
 * the drawing left them. Answer 1 if the text was well-formed XML of at most 32 MiB, whatever came of it.
 * Memory is in proportion to the text. One read at a time in the process. */

/* Reads the file at `url`, a "file:" URL or a path. */
LX_API int32_t LxSVG_ReadFile(LxGC *gc, const char *url);

/* Reads `length` bytes of text, in UTF-8 or as their byte order mark or XML declaration says; no byte behind
 * them is looked at. */
LX_API int32_t LxSVG_ReadText(LxGC *gc, const char *text, size_t length);

/* What the groups of all drawings so far have set a colour for, a set of LxRenderMode: a path draws with
 * these bits beside its own. On purpose a reading starts with what the ones before have left, so store 0 to
 * read a drawing by itself. Bits that are no LxRenderMode are dropped. */
LX_API uint32_t LxSVG_PaintFlags(void);
LX_API void LxSVG_SetPaintFlags(uint32_t flags);

/* ---- Morphing ---- */

/* A control line, in pixels of the picture. What it derives belongs to its ends: build it by LxMorphLine. */
typedef struct LxMorphLine {
    int32_t x0, y0, x1, y1; /* its ends */
    int32_t dx, dy;         /* x1 - x0, y1 - y0 */
    float length;           /* the distance of its ends */
    int32_t lengthSquared;  /* dx * dx + dy * dy, in 32 bits that wrap */
} LxMorphLine;

/* LxMorphLine(x0, y0, x1, y1) builds a line. Coordinates of 0 to 20,000 keep all sums within 32 bits. Give
 * every line a length: one that has none in a frame leaves all its pixels in place, and where only the source
 * line has none, all show the source's first pixel. */
LX_API LxMorphLine LxMorphLine_Make(int32_t x0, int32_t y0, int32_t x1, int32_t y1)
    LX_EXPORTED_AS("LxMorphLine");
#define LxMorphLine(x0, y0, x1, y1) LxMorphLine_Make(x0, y0, x1, y1)

/* Warps `source` into `destination`, another image of the same type and size: the picture for lines that have
 * gone `t` of the way (0 to 1, or beyond) from `sourceLines` to `targetLines`, arrays of `lineCount`. Each
 * pixel is looked up in the source through the displacements that all pairs of lines propose, near ones more
 * than distant ones, and positions beyond the edge take the edge's pixels. Without lines it is a copy. Works
 * on pixels of any type as they stand, alpha included, and follows both images' own rows. Answers 1, or 0 if
 * the images do not match or share memory, for an infinite `t`, a negative count or null lines. The work is
 * pixels times lines. */
LX_API int32_t LxMorph_Frame(const LxImage *source, LxImage *destination, const LxMorphLine *sourceLines,
                             const LxMorphLine *targetLines, int32_t lineCount, double t);

/* ---- A sheen layer's parameters ---- */

/* Their indices, for LxSheen_SetLayerValue and its kin, with the labels that sliders show. */
typedef enum LxSheenIndex {
    kLxSheenSymmetry = 0,              /* Angular Symmetry */
    kLxSheenHeight = 1,                /* Depth */
    kLxSheenInnerSize0 = 2,            /* Width */
    kLxSheenInnerSize1 = 3,            /* Height */
    kLxSheenBorderSize0 = 4,           /* Horizontal Border */
    kLxSheenBorderSize1 = 5,           /* Vertical Border */
    kLxSheenCenter0 = 6,               /* Horizontal Position */
    kLxSheenCenter1 = 7,               /* Vertical Position */
    kLxSheenCenter2 = 8,               /* Depth Shift */
    kLxSheenRotation = 9,              /* Local Rotation */
    kLxSheenCenterRotation = 10,       /* Center Rotation */
    kLxSheenRotationPeriod = 11,       /* Local Rotation Period */
    kLxSheenCenterPeriod0 = 12,        /* Horizontal Arch Period */
    kLxSheenCenterPeriod1 = 13,        /* Vertical Arch Period */
    kLxSheenSwirl = 14,                /* Swirl Amount */
    kLxSheenJitter = 15,               /* Jitter1 Amount */
    kLxSheenJitterSpeed = 16,          /* Jitter1 Frequency */
    kLxSheenCornerType = 17,           /* Corner Type */
    kLxSheenProfileType = 18,          /* Profile Type */
    kLxSheenProfilePar0 = 19,          /* Profile Linearity */
    kLxSheenProfilePar1 = 20,          /* Profile Symmetry */
    kLxSheenProfilePar2 = 21,          /* Profile Groove */
    kLxSheenProfilePar3 = 22,          /* Profile Steps */
    kLxSheenVertCurve = 23,            /* Vertical Curvature Amount */
    kLxSheenVertShape = 24,            /* Vertical Curvature Shape */
    kLxSheenVertBorderCurve = 25,      /* Vertical Border Curvature Amount */
    kLxSheenVertBorderShape = 26,      /* Vertical Border Curvature Shape */
    kLxSheenHorCurve = 27,             /* Horizontal Curvature Amount */
    kLxSheenHorShape = 28,             /* Horizontal Curvature Shape */
    kLxSheenHorBorderCurve = 29,       /* Horizontal Border Curvature Amount */
    kLxSheenHorBorderShape = 30,       /* Horizontal Border Curvature Shape */
    kLxSheenVertArch = 31,             /* Vertical Arch Amount */
    kLxSheenVertArchShape = 32,        /* Vertical Arch Amount Shape */
    kLxSheenHorArch = 33,              /* Horizontal Arch Amount */
    kLxSheenHorArchShape = 34,         /* Horizontal Arch Amount Shape */
    kLxSheenCentralArch = 35,          /* Central Arch Amount */
    kLxSheenCentralArchShape = 36,     /* Central Arch Shape */
    kLxSheenVertSheer = 37,            /* Vertical Sheer Amount */
    kLxSheenVertSheerShape = 38,       /* Vertical Sheer Shape */
    kLxSheenHorSheer = 39,             /* Horizontal Sheer Amount */
    kLxSheenHorSheerShape = 40,        /* Horizontal Sheer Shape */
    kLxSheenVertPerspect = 41,         /* Vertical Perspective Amount */
    kLxSheenVertPerspectShape = 42,    /* Vertical Perspective Shape */
    kLxSheenHorPerspect = 43,          /* Horizontal Perspective Amount */
    kLxSheenHorPerspectShape = 44,     /* Horizontal Perspective Shape */
    kLxSheenNoiseAmount = 45,          /* Noise Amount */
    kLxSheenNoiseZoom = 46,            /* Noise Zoom Level */
    kLxSheenNoiseRatio = 47,           /* Noise Frequency Ratio */
    kLxSheenNoiseFreqMod = 48,         /* Noise Turbulence */
    kLxSheenNoisePosClip = 49,         /* Noise Upper Clip */
    kLxSheenNoiseNegClip = 50,         /* Noise Lower Clip */
    kLxSheenNoiseVertCurve = 51,       /* Noise Vertical Curve */
    kLxSheenNoiseHorCurve = 52,        /* Noise Horizontal Curve */
    kLxSheenCenterRotationPeriod = 53, /* Center Rotation Period */
    kLxSheenElevationDirection = 54,   /* Elevation Direction */
    kLxSheenElevationAmount = 55,      /* Elevation Amount */
    kLxSheenJitter2 = 56,              /* Jitter2 Amount */
    kLxSheenJitter2Speed = 57,         /* Jitter2 Frequency */
    kLxSheenAlphaBlur = 58,            /* reserved */
    kLxSheenAlphaThreshold = 59,       /* reserved */
    kLxSheenLightAzimuth = 60,         /* reserved */
    kLxSheenLightElevation = 61,       /* reserved */
    kLxSheenLightWidth = 62,           /* reserved */
    kLxSheenLightAmbient = 63,         /* reserved */
    kLxSheenLightBrilliance = 64,      /* reserved */
    kLxSheenLightColor_r = 65,         /* reserved */
    kLxSheenLightColor_g = 66,         /* reserved */
    kLxSheenLightColor_b = 67,         /* reserved */
    kLxSheenShadowSoftness = 68,       /* reserved */
    kLxSheenShadowLength = 69,         /* reserved */
    kLxSheenShadowDisplacement = 70,   /* reserved */
    kLxSheenShadowOpacity = 71,        /* reserved */
    kLxSheenShadowStep = 72,           /* reserved */
    kLxSheenShadowColor_r = 73,        /* reserved */
    kLxSheenShadowColor_g = 74,        /* reserved */
    kLxSheenShadowColor_b = 75,        /* reserved */
    kLxSheenParameterCount = 76        /* how many there are */
} LxSheenIndex;

/* The name by which presets know a parameter: "kSymmetry" for 0. Null beyond 75. Lives as long as the
 * library.
 */
LX_API const char *LxSheen_ParameterKey(uint32_t parameter);

/* The parameter of that name, or -1. */
LX_API int32_t LxSheen_ParameterIndex(const char *key);

/* The value that a new layer has; 0 beyond 75. */
LX_API double LxSheen_ParameterDefault(uint32_t parameter);

/* ---- How a sheen layer meets the layers under it ----
 *
 * `layer` as in LxSheen.h: in the current descriptor, a negative one meaning the object's current layer.
 * What is set shows from the next render on; readers answer 0 where there is no such layer. */

/* What becomes of the height `a` under a layer of height `b`, held to 0 to 1. Where that changes the height,
 * the layer's colour is laid on. */
typedef enum LxSheenMode {
    kLxSheenAdd = 0,            /* a + b; a new layer's */
    kLxSheenSubtract = 1,       /* a - b */
    kLxSheenMultiply = 2,       /* a * b */
    kLxSheenPaint = 3,          /* a: only the colour is laid on, where b is above 0 */
    kLxSheenLarger = 4,         /* the larger */
    kLxSheenSmaller = 5,        /* the smaller */
    kLxSheenAddInside = 6,      /* inside: where a is not 0 */
    kLxSheenSubtractInside = 7, /* a - b, inside */
    kLxSheenMultiplyInside = 8, /* a * b, inside */
    kLxSheenPaintAgain = 9,     /* as kLxSheenPaint */
    kLxSheenLargerInside = 10,  /* the larger, inside */
    kLxSheenSmallerInside = 11  /* the smaller, inside */
} LxSheenMode;

/* Answers 0 for a mode that is no LxSheenMode. */
LX_API int32_t LxSheen_SetLayerMode(LxSheen *sheen, int32_t layer, uint32_t mode);
LX_API uint32_t LxSheen_LayerMode(const LxSheen *sheen, int32_t layer);

/* The strength of the layer's colour, 0 to 1; 1 in a new layer. Answers 0 for another number. */
LX_API int32_t LxSheen_SetLayerOpacity(LxSheen *sheen, int32_t layer, double opacity);
LX_API double LxSheen_LayerOpacity(const LxSheen *sheen, int32_t layer);

/* Switches the layer on or, with 0, off: it is then left out of the picture. On in a new layer. */
LX_API int32_t LxSheen_SetLayerEnabled(LxSheen *sheen, int32_t layer, int32_t enabled);
LX_API int32_t LxSheen_isLayerEnabled(const LxSheen *sheen, int32_t layer);

/* What LxSheen_SetLayerColor has stored. */
LX_API LxRGBA LxSheen_LayerColor(const LxSheen *sheen, int32_t layer);

/* ---- A descriptor's light ----
 *
 * `descriptor` is 0 or 1. Shows from the next render on. */

/* The defaults stand behind each field. The shadow's softness, length, opacity and step and the light's
 * colour are only carried. */
typedef struct LxSheenLight {
    double azimuth;            /* radians; 2.356194490192345 */
    double elevation;          /* radians; 0.7853981633974483 */
    double width;              /* the greater, the stronger the relief looks; 255 */
    double ambient;            /* the least light, 0 to 1; 0.20000000298023224 */
    double brilliance;         /* the light's strength, above 1 with highlights; 1 */
    LxRGBA color;              /* white */
    double shadowSoftness;     /* 7 */
    double shadowLength;       /* 10 */
    double shadowDisplacement; /* pixels; 0: grows the picture by so much away from the light */
    uint8_t shadowOpacity;     /* 130 */
    uint8_t shadowStep;        /* 5 */
} LxSheenLight;

/* Answers 0 for a light with a number that is not finite. */
LX_API int32_t LxSheen_SetLight(LxSheen *sheen, uint32_t descriptor, LxSheenLight light);

/* All zero where there is no such descriptor. */
LX_API LxSheenLight LxSheen_Light(const LxSheen *sheen, uint32_t descriptor);

/* The height above which the picture is opaque, 0.009999999776482582 by default; 0 where there is no such
 * descriptor. Answers 0 for one that is not finite. */
LX_API int32_t LxSheen_SetAlphaThreshold(LxSheen *sheen, uint32_t descriptor, double height);
LX_API double LxSheen_AlphaThreshold(const LxSheen *sheen, uint32_t descriptor);

/* ---- Between two descriptors ---- */

/* A new object for the caller to delete, of descriptor `descriptorA`'s size, without pictures: both its
 * descriptors are the blend at `t`, held to 0 to 1, of that of `a` and of `descriptorB` of `b`, which may be
 * the same object. It has the layers of the first, with their names, modes and switches, on the way to those
 * of the second: parameters, opacity and colour, and the light. Parameters that do not blend, and layers that
 * the second lacks, stay as they are in the first; the light's colour is white. LxSheen_RenderDescriptor
 * renders it. Null for null, another descriptor, a `t` that is not a number, and for lack of memory. */
LX_API LxSheen *LxSheen_CreateBetween(double t, const LxSheen *a, uint32_t descriptorA, const LxSheen *b,
                                      uint32_t descriptorB);

/* ---- Presets ----
 *
 * A descriptor's layers and light as text, in UTF-8, the same in every locale:
 *
 *     # A comment.
 *     [light]
 *     width = 180
 *     [layer petals]
 *     color = 200, 60, 90
 *     mode = larger
 *     kSymmetry = 5
 *
 * A section per layer, bottom first, with its name; parameters by their keys, and color (r, g, b or r, g, b,
 * a), mode, opacity and enabled (yes or no). [light] has azimuth, elevation, width, ambient, brilliance and
 * alphaThreshold. What is not told has its default. */

/* Replaces a descriptor's layers and light by those of `length` bytes of text, at most 1 MiB with at most 256
 * layers; its size and pictures stay until the next render or change of size. The last layer becomes the
 * descriptor's current one. The other descriptor keeps the layers that it has. If the text cannot be read, 0,
 * and `message`, unless null, gets what is wrong: a line of UTF-8 with the number of the line at fault, cut
 * to `messageBytes` with its ending zero byte. An empty text if all is well or the object is null. */
LX_API int32_t LxSheen_LoadPreset(LxSheen *sheen, uint32_t descriptor, const char *text, size_t length,
                                  char *message, size_t messageBytes);

/* The text that loads as this descriptor, ending in a zero byte, for the caller to release by LxMem_free. A
 * line break in a layer's name becomes a blank. Null where there is no such descriptor, and for lack of
 * memory.
 */
LX_API char *LxSheen_CreatePreset(const LxSheen *sheen, uint32_t descriptor);

LX_END_DECLS

#endif
