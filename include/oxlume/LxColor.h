/* Colour records, their conversions, the integer hue-saturation-lightness forms, and interpolation. */
#ifndef OXLUME_LXCOLOR_H
#define OXLUME_LXCOLOR_H

#include <oxlume/LxBase.h>
#include <oxlume/LxPixelType.h>

LX_BEGIN_DECLS

/* Straight alpha; r in the lowest byte of the word. */
typedef struct LxRGBA {
    uint8_t r, g, b, a; /* 0 to 255 */
} LxRGBA;

/* A colour without alpha. */
typedef struct LxRGB {
    uint8_t r, g, b; /* 0 to 255 */
} LxRGB;

/* Hue 0 to 359, saturation and value 0 to 255. The value is the lightness (max + min) / 2. */
typedef struct LxHSV {
    int32_t hue, saturation, value; /* in whole numbers */
} LxHSV;

/* A tagged value: `type` is an LxPixelType and says which member counts. */
typedef struct LxColor {
    int32_t type; /* the LxPixelType */
    union {
        LxRGBA rgba;      /* kLxPixelRGBA */
        LxRGB rgb;        /* kLxPixelRGB */
        uint8_t a;        /* kLxPixelA */
        float f;          /* kLxPixelF */
        int32_t l;        /* kLxPixelL */
        uint8_t bytes[4]; /* any of them */
    } content;            /* the value */
} LxColor;

/* White is all four bytes 255 and black is 0, 0, 0, 255, also for the types without alpha. */
LX_API extern const LxColor LxColor_A_White, LxColor_RGB_White, LxColor_RGBA_White;
LX_API extern const LxColor LxColor_A_Black, LxColor_RGB_Black, LxColor_RGBA_Black;
LX_API extern const LxRGBA LxRGBA_0, LxRGBA_White, LxRGBA_Black;

/* LxRGBA(r, g, b, a) and LxRGB(r, g, b) build a record. */
LX_API LxRGBA LxRGBA_Make(uint8_t r, uint8_t g, uint8_t b, uint8_t a) LX_EXPORTED_AS("LxRGBA");
LX_API LxRGB LxRGB_Make(uint8_t r, uint8_t g, uint8_t b) LX_EXPORTED_AS("LxRGB");
#define LxRGBA(r, g, b, a) LxRGBA_Make(r, g, b, a)
#define LxRGB(r, g, b) LxRGB_Make(r, g, b)

/* Build a tagged colour: the bytes told, the others 0. None makes the premultiplied type, which exists only
 * in images. */
LX_API LxColor LxColor_A(uint8_t value);
LX_API LxColor LxColor_RGB(uint8_t r, uint8_t g, uint8_t b);
LX_API LxColor LxColor_RGBA(uint8_t r, uint8_t g, uint8_t b, uint8_t a);
LX_API LxColor LxColor_RGB_t(LxRGB rgb);
LX_API LxColor LxColor_RGBA_t(LxRGBA rgba);
LX_API LxColor LxColor_F(float value);
LX_API LxColor LxColor_L(int32_t value);

LX_API LxRGBA LxRGBA_fromRGB(LxRGB rgb);       /* With a = 255. */
LX_API LxRGB LxRGB_fromRGBA(LxRGBA rgba);      /* Drops alpha. */
LX_API LxRGBA LxRGBA_fromLong(uint32_t value); /* From 0xAARRGGBB. */

/* Writes r, g, b, a as floats, 255 being 1. A one-byte colour is grey; colours without alpha have alpha 1;
 * types without bytes, floats included, give opaque black. */
LX_API void LxColor_AsFloatArray(LxColor color, float out[4]);

/* Integer conversions, exact to the bit on every machine, in 32 bits that wrap. A hue more than one turn out
 * of range falls where the bands happen to put it. The pair is no exact round trip. */
LX_API LxHSV LxHSV_fromRGB(LxRGB rgb);
LX_API LxRGB LxRGB_fromHSV(int32_t hue, int32_t saturation, int32_t value);

/* The same conversions between three bytes r, g, b at `rgb` and three integers. */
LX_API void intRGBtoHSV(const uint8_t *rgb, int32_t *hue, int32_t *saturation, int32_t *value);
LX_API void intHSVtoRGB(int32_t hue, int32_t saturation, int32_t value, uint8_t *rgb);

/* Between two colours, `t` 0 giving `from` and 1 giving `to`, rounded to the nearest, halves up. A `t` beyond
 * wraps in each byte: the result is taken modulo 256. A `t` that is infinite or not a number gives 0. */
LX_API LxRGBA LxRGBA_Lerp(double t, LxRGBA from, LxRGBA to);
LX_API LxRGB LxRGB_Lerp(double t, LxRGB from, LxRGB to);

/* The same through hue, saturation and value, and alpha as above. Hue is a plain number here: from 350 to 10
 * it runs through 180. */
LX_API LxRGBA LxRGBA_LerpHSV(double t, LxRGBA from, LxRGBA to);
LX_API LxRGB LxRGB_LerpHSV(double t, LxRGB from, LxRGB to);

/* A random colour, one call of rand() for each channel in the order r, g, b, a. The caller seeds. */
LX_API LxRGBA LxRGBA_Random(void);
LX_API LxRGB LxRGB_Random(void);

LX_END_DECLS

#endif
