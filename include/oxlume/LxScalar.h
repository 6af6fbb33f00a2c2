/* Functions of one or two doubles that bend a position in 0 to 1 into a profile, and two kin.
 *
 * In the functions of `a` and `t`, `t` is the position and `a` the breakpoint: the position that maps to one
 * half. `t` is not held to 0 to 1; beyond it the functions extrapolate. All are pure. */
#ifndef OXLUME_LXSCALAR_H
#define OXLUME_LXSCALAR_H

#include <oxlume/LxBase.h>

LX_BEGIN_DECLS

/* Maps inMin to outMin and inMax to outMax, linearly between, and held there beyond. With inMin equal to
 * inMax a `v` equal to both gives not a number. */
LX_API double LxScale(double v, double inMin, double inMax, double outMin, double outMax);

/* The straight lines from (0, 0) through (a, 0.5) to (1, 1). */
LX_API double LxLinear(double a, double t);

/* The power of `t` that passes through (a, 0.5). `a` of 1 gives an exponent of minus infinity. */
LX_API double LxCurved(double a, double t);

/* Rounds at `digits` decimal places. On purpose, every negative value that is not whole there goes down. */
LX_API double LxRoundTo(double v, int32_t digits);

/* The sweep in degrees from `start` to `end`, both rounded to two places first; `clockwise` not 0 turns the
 * other way. Equal angles give 0, unless `fullWhenEqual` is not 0 and `clockwise` too and the angle lies
 * above 90 up to 270 degrees: then 360. */
LX_API double LxArcLength(double start, double end, int32_t clockwise, int32_t fullWhenEqual);

/* Half a wave of the sine: rises from 0 to 1, flat at both ends. */
LX_API double LxSine(double a, double t);

/* Quarter circles from (0, 0) to (1, 1): Inc starts steeply and ends flat, Dec starts flat and ends steeply.
 * Not a number where the extrapolated circle has no point. */
LX_API double LxSphereInc(double a, double t);
LX_API double LxSphereDec(double a, double t);

LX_END_DECLS

#endif
