/* Gradients: up to ten colour stops, a shape and a curve; and shaders, which tell a fill its colours.
 *
 * A gradient is laid out anew over the bounds of each shape that it fills: all curves are evaluated once, at
 * the start of the fill, and a pixel costs one lookup. One gradient serves one fill at a time. */
#ifndef OXLUME_LXGRADIENT_H
#define OXLUME_LXGRADIENT_H

#include <oxlume/LxBase.h>
#include <oxlume/LxColor.h>

LX_BEGIN_DECLS

/* An opaque record; whoever creates one deletes it. Contexts refer to gradients without owning them. */
typedef struct _LxGradient LxGradient;

/* How the stops are laid over the bounds of the shape. */
typedef enum LxGradientType {
    kLxGradientAcross = 0,    /* along x */
    kLxGradientDown = 1,      /* along y */
    kLxGradientNone = 2,      /* opaque black */
    kLxGradientInward = 3,    /* from the sides inward, up to the middle and back */
    kLxGradientDiagonal = 4,  /* along x + y */
    kLxGradientDiagonalUp = 5 /* along y - x */
} LxGradientType;

/* How one stop passes into the next; the functions are those of LxScalar.h. */
typedef enum LxGradientCurve {
    kLxGradientLinear = 0,    /* LxLinear, as for every number that is not told here */
    kLxGradientCurved = 1,    /* LxCurved */
    kLxGradientSine = 2,      /* LxSine */
    kLxGradientSphereInc = 3, /* LxSphereInc */
    kLxGradientSphereDec = 4  /* LxSphereDec */
} LxGradientCurve;

/* A gradient down y with a linear curve and no stop; null for lack of memory. Without a stop it paints opaque
 * black. */
LX_API LxGradient *LxGradient_Create(void);

/* Releases a gradient. Null is ignored. */
LX_API void LxGradient_Delete(LxGradient *gradient);

/* Sets the shape, an LxGradientType (any other paints opaque black), and the curve, an LxGradientCurve. Null
 * is ignored. */
LX_API void LxGradient_SetType(LxGradient *gradient, int32_t type, int32_t curve);

/* Sets the stop `index`, 0 to 9: its colour, of which the four bytes count as r, g, b, a whatever its type;
 * its position, held to 0 to 1; and the first argument of the curve from this stop to the next, held to 0 to
 * 1, of which 0.5 is the even one. Positions should rise with the index. The first stop's colour reaches back
 * to the start, and a stop without a next one reaches on to the end; without stop 0 all is opaque black. On
 * purpose, a tenth stop passes on to the first colour again, at the position that is the first stop's `mid`.
 * Null and any other index are ignored. */
LX_API void LxGradient_AddColor(LxGradient *gradient, LxColor color, int32_t index, double position,
                                double mid);

/* Writes the colour at the pixel (x, y) of the last shape that was filled to `out`. Opaque black for a null
 * gradient, for the types that paint so, and where nothing was filled yet. A pixel beyond the shape takes the
 * nearest colour that was laid out. */
LX_API void LxGradient_Color(LxColor *out, const LxGradient *gradient, int32_t x, int32_t y);

/* ---- Shaders ---- */

typedef struct LxShader LxShader; /* See the structure. */

/* What a fill asks for its colours: built by whoever starts the fill, and of use only while it runs. */
struct LxShader {
    /* Called once before the fill with the bounds minX, minY, maxX, maxY of its shape, or null. */
    void (*begin)(LxShader *shader, const double *bounds);
    /* Writes the colour at the pixel (x, y) covered to `coverage` of 255. */
    void (*color)(LxColor *out, LxShader *shader, int32_t x, int32_t y, int32_t coverage);
    /* For the maker's own use, or null; fills do not call it. */
    void (*end)(LxShader *shader);
    void *data;    /* what `color` works from */
    int32_t flags; /* bit 0: the colour is the same at every pixel of the same coverage */
};

/* Fills `shader` so that it paints with the gradient, which must outlive it. */
LX_API void LxCreate_GradientShader(LxShader *shader, LxGradient *gradient);

LX_END_DECLS

#endif
