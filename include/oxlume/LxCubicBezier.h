/* Tools for cubic Bezier curves, each given by its four control points. */
#ifndef OXLUME_LXCUBICBEZIER_H
#define OXLUME_LXCUBICBEZIER_H

#include <oxlume/LxBase.h>
#include <oxlume/LxPath.h>
#include <oxlume/LxPoint.h>

LX_BEGIN_DECLS

/* 1 if the curve passes through the square of half-side `radius` around (x, y), whose far sides lie one unit
 * further in (the square counts as pixels); else 0. A hit stores in `t`, unless that is null, the parameter
 * of the end of the first segment touched. The curve is cut as for flattening: one so nearly straight and
 * even that a single segment of no steps stands for it cannot be hit. */
LX_API int32_t LxCubicBezier_HitTest(LxPointD p0, LxPointD p1, LxPointD p2, LxPointD p3, double x, double y,
                                     double radius, double *t);

/* The length of the curve, cut as for flattening; 0 for a curve that cannot be hit, as above: evenly spaced
 * control points on a line are one. */
LX_API double LxCubicBezier_Length(LxPointD p0, LxPointD p1, LxPointD p2, LxPointD p3);

/* Appends to `path` a move to the first point and cubic curves fitted to the run of `count` points by least
 * squares. A curve is good enough when the squared distance of each point to it is below `error`; otherwise
 * it is improved where that promises success, or split at the worst point. Neighbouring points at both ends
 * must differ. Nothing is done with fewer than two points. */
LX_API void LxCubicBezier_Fit(const LxPointD *points, int32_t count, double error, LxPath *path);

LX_END_DECLS

#endif
