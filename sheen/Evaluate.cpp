// The surface, point by point: the definition. Every expression stands in the order of operations that fixes
// its result to the bit, in doubles; the names of the steps are those that the vector form repeats.

#include <algorithm>
#include <cmath>

#include "foundation/Numeric.h"
#include "geometry/Noise.h"
#include "sheen/Surface.h"

namespace lx {
namespace {

enum class Region { outside, plateau, verticalEdge, horizontalEdge, corner };

struct Point {
    double x, y;
};

Point rotated(Point p, double cosine, double sine) {
    return {p.x * cosine - p.y * sine, p.x * sine + p.y * cosine};
}

// Into the surface's own frame.
Point place(const SheenValues &s, Point p) {
    const double *const v = s.values;
    const double period = v[kCenterRotationPeriod];
    if (period >= 1.0) {
        // The surface repeats around the middle of the unit square.
        const double cx = p.x - 0.5;
        const double cy = p.y - 0.5;
        const double r = std::sqrt(cx * cx + cy * cy);
        const double t = std::atan2(cy, cx);
        const double w = tau / period;
        double f = t + s.centerRotationRadians + 31.41592653589793; // ten half turns keep the angle positive
        const double k = std::floor(f / w + 0.5);
        f = f - w * k;
        p.x = ((1.0 / period + (v[kCenter0] - 1.0)) + std::cos(f) * r) * period;
        p.y = (std::sin(f) * r + (v[kCenter1] - 0.5)) * period;
        return s.rotationRadians != 0.0 ? rotated(p, s.rotationCos, s.rotationSin) : p;
    }
    p.x = p.x - s.centerX;
    p.y = p.y - s.centerY;
    return s.rotationTotal != 0.0 ? rotated(p, s.rotationTotalCos, s.rotationTotalSin) : p;
}

Point sheerAndPerspective(const SheenValues &s, Point p) {
    const double *const v = s.values;
    if ((s.shapeFlags & shapeHorSheer) != 0)
        p.x = v[kHorSheer] * p.y + p.x;
    if ((s.shapeFlags & shapeVertSheer) != 0)
        p.y = v[kVertSheer] * p.x + p.y;
    if ((s.shapeFlags & shapeHorPerspect) != 0) {
        const double d = 1.0 - v[kHorPerspect] * p.y;
        if (d != 0.0)
            p.x = p.x / d;
    }
    if ((s.shapeFlags & shapeVertPerspect) != 0) {
        const double d = 1.0 - v[kVertPerspect] * p.x;
        if (d != 0.0)
            p.y = p.y / d;
    }
    return p;
}

// The angle of a point at distance `r`, twisted by swirl and jitter.
double twistedAngle(const SheenValues &s, Point p, double r) {
    double a = r * s.swirl + std::atan2(p.y, p.x);
    for (int i = 0; i < 2; ++i) {
        const double j = s.jitterAmount[i];
        const double q = r * s.jitterFrequency[i];
        if (j > 0.0)
            a = a + j * (std::sin(q) + 1.0);
        else if (j < 0.0)
            a = a - j * (std::sin(q) + 1.0) / (r * 10.0 + 0.10000000149011612);
    }
    return a;
}

// Folds the plane to a quarter by the angular symmetry; `noise` receives the coordinates of the noise.
Point fold(const SheenValues &s, Point p, Point &noise) {
    if (s.symmetry == 0.0) {
        noise = p;
        return {std::sqrt(p.x * p.x + p.y * p.y), 0.0};
    }
    if (s.symmetry == 2.0 && s.swirl == 0.0 && s.jitterAmount[0] == 0.0 && s.jitterAmount[1] == 0.0) {
        noise = p;
        return {std::fabs(p.x), std::fabs(p.y)};
    }
    const double r = std::sqrt(p.x * p.x + p.y * p.y);
    double a = twistedAngle(s, p, r);
    if (s.symmetry == 1.0) {
        // The angle, up and down once a turn, becomes the second coordinate.
        if (s.values[kRotationPeriod] != 0.0)
            a = s.values[kRotationPeriod] * a;
        const double w = (std::floor(a * inverseTau) * -tau + a) * inverseTau;
        double y = w > 0.5 ? 1.0 - w : w;
        y = y + y;
        noise = {r, y};
        return {std::fabs(r), std::fabs(y)};
    }
    if (s.noiseFlags != 0)
        noise = {std::cos(a) * r, std::sin(a) * r};
    const double b = s.sectorRemainder * -0.5 + a;
    const double h = s.sector * 0.5;
    double c = (b > 0.0 ? h : h + tau) + b;
    c = c - std::floor(c * s.sectorsPerRadian) * s.sector + s.sector * -0.5;
    return {std::fabs(std::cos(c) * r), std::fabs(r * std::sin(c))};
}

// The weight of a bend at position `p`.
double shapeValue(int32_t shape, double p) {
    switch (shape) {
    case 0:
        return 1.0 - p * p;
    case 1: {
        const double a = std::fabs(p);
        if (a >= 0.5) {
            const double b = 1.0 - a;
            return (b + b) * b;
        }
        return a * -2.0 * a + 1.0;
    }
    case 2:
        return 1.0 - std::fabs(p);
    default:
        return p;
    }
}

double bend(double c, double w) {
    return c > 0.0 ? (1.0 + c) * w * c * 0.5 + 1.0 : (c - 1.0) * w * c * -0.5 + 1.0;
}

// The bend by parameter `amount`, shaped by the whole part of parameter `shape`.
double bentBy(const SheenValues &s, SheenIndex amount, SheenIndex shape, double p) {
    return bend(s.values[amount], shapeValue(truncateToInt32(s.values[shape]), p));
}

double clipNoise(const SheenValues &s, double n) {
    const double c = n > 0.0 ? s.values[kNoisePosClip] : s.values[kNoiseNegClip];
    if (c == 0.0)
        return n;
    if (c > 0.0) {
        // A dead zone around zero.
        if (n >= c)
            return n - c;
        return -c >= n ? n + c : 0.0;
    }
    // A ceiling.
    const double m = c + 1.0;
    return n > m ? m : std::max(n, -m);
}

double edgeNoise(const SheenValues &s, double f, double amount, double t) {
    const double q = amount * amount;
    const double turbulence = s.values[kNoiseFreqMod];
    if (turbulence != 0.0)
        t = t + turbulenceReach * turbulence * LxNoise_1D(t);
    const double n = clipNoise(s, LxNoise_1D(t)) * q;
    return amount > 0.0 ? f * (n + 1.0) : f + n;
}

double turbulentNoise(const SheenValues &s, double x, double y) {
    const double turbulence = s.values[kNoiseFreqMod];
    if (turbulence > 0.0) {
        const double n = LxNoise_2D(x, y);
        const double y2 = n * (turbulence * turbulenceReach) + y;
        const double x2 = turbulenceReach * turbulence * n + x;
        return clipNoise(s, LxNoise_2D(x2, y2));
    }
    if (turbulence < 0.0) {
        const double a = LxNoise_1D(x);
        const double b = LxNoise_1D(y);
        const double y2 = a * (turbulence * turbulenceReach) + y;
        const double x2 = turbulenceReach * turbulence * b + x;
        return clipNoise(s, LxNoise_2D(x2, y2));
    }
    return clipNoise(s, LxNoise_2D(x, y));
}

// What a divisor makes of a coordinate: one that is not positive throws it outside any shape.
double divided(double coordinate, double f) {
    return f > 0.0 ? coordinate / f : 10000.0;
}

// Curves the sides and arches the height. The parameters cross: the horizontal ones are shaped along the
// vertical position and act on the horizontal coordinate, and the other way about.
void warp(const SheenValues &s, Point &p, Point noise, double &height) {
    const double *const v = s.values;
    const double along0 = s.totalScale[0] * p.x;
    const double along1 = s.totalScale[1] * p.y;
    if ((s.shapeFlags & shapeHorCurve) != 0 || (s.noiseFlags & noiseHorCurve) != 0) {
        double f = 1.0;
        if ((s.shapeFlags & shapeHorCurve) != 0)
            f = bentBy(s, kHorCurve, kHorShape, along1);
        if ((s.noiseFlags & noiseHorCurve) != 0)
            f = edgeNoise(s, f, v[kNoiseHorCurve], s.noiseScaleY * noise.y);
        p.x = divided(p.x, f);
    }
    if ((s.shapeFlags & shapeVertCurve) != 0 || (s.noiseFlags & noiseVertCurve) != 0) {
        double f = 1.0;
        if ((s.shapeFlags & shapeVertCurve) != 0)
            f = bentBy(s, kVertCurve, kVertShape, along0);
        if ((s.noiseFlags & noiseVertCurve) != 0)
            f = edgeNoise(s, f, v[kNoiseVertCurve], s.noiseScaleX * noise.x);
        p.y = divided(p.y, f);
    }
    if ((s.shapeFlags & shapeHorBorderCurve) != 0 && p.x > s.inner[0]) {
        const double f = bentBy(s, kHorBorderCurve, kHorBorderShape, along1);
        const double d = p.x - s.inner[0];
        p.x = s.inner[0] + (f > 0.0 ? d / f : d);
    }
    if ((s.shapeFlags & shapeVertBorderCurve) != 0 && p.y > s.inner[1]) {
        const double f = bentBy(s, kVertBorderCurve, kVertBorderShape, along0);
        const double d = p.y - s.inner[1];
        p.y = s.inner[1] + (f > 0.0 ? d / f : d);
    }
    if ((s.shapeFlags & shapeHorArch) != 0)
        height = bentBy(s, kHorArch, kHorArchShape, along0) * height;
    if ((s.shapeFlags & shapeVertArch) != 0)
        height = bentBy(s, kVertArch, kVertArchShape, along1) * height;
}

double repeat(double t, double n) {
    double q = (t + 1.0) * n * 0.5;
    q = q - std::floor(q);
    return q + q - 1.0;
}

// Tells which part of the shape a folded point lies in, and scales it to that part. A point right on the
// border of the plateau belongs to it.
Region classify(const SheenValues &s, Point &p) {
    const double period0 = s.values[kCenterPeriod0];
    const double period1 = s.values[kCenterPeriod1];
    if (p.x <= s.inner[0]) {
        p.x = p.x * s.innerScale[0];
        if (period0 > 1.0)
            p.x = std::fabs(repeat(p.x, period0));
        if (p.y > s.inner[1]) {
            p.y = p.y - s.inner[1];
            if (p.y > s.border[1])
                return Region::outside;
            p.y = p.y * s.borderScale[1];
            return Region::horizontalEdge;
        }
        p.y = p.y * s.innerScale[1];
        // On purpose: the sign flips here, where the other repeats take the absolute value.
        if (period1 > 1.0)
            p.y = -repeat(p.y, period1);
        return Region::plateau;
    }
    p.x = p.x - s.inner[0];
    if (p.x > s.border[0])
        return Region::outside;
    p.x = p.x * s.borderScale[0];
    if (p.y <= s.inner[1]) {
        p.y = p.y * s.innerScale[1];
        if (period1 > 1.0)
            p.y = std::fabs(repeat(p.y, period1));
        return Region::verticalEdge;
    }
    p.y = p.y - s.inner[1];
    if (p.y > s.border[1])
        return Region::outside;
    p.y = p.y * s.borderScale[1];
    return Region::corner;
}

double centralArch(const SheenValues &s, Point p, double height) {
    const double gy = bentBy(s, kCentralArch, kCentralArchShape, p.y) - 1.0;
    const double gx = bentBy(s, kCentralArch, kCentralArchShape, p.x) - 1.0;
    const double g = gx * gy;
    return s.values[kCentralArch] > 0.0 ? (g + 1.0) * height : height * (1.0 - g);
}

// A corner type between the whole ones comes from interpolation.
double cornerDistance(const SheenValues &s, Point p) {
    const double type = s.cornerType;
    if (type <= 0.0)
        return p.x + p.y; // chamfered
    const double round = std::sqrt(p.x * p.x + p.y * p.y);
    const double square = std::max(p.x, p.y);
    if (type < 1.0)
        return (1.0 - type) * (p.y + p.x) + type * round;
    if (type == 1.0)
        return round;
    if (type == 2.0)
        return square;
    return (2.0 - type) * round + (type - 1.0) * square;
}

// The cross-section of the rim: 1 at its inner edge, 0 at the outer one.
double profile(const SheenValues &s, double d) {
    if (d <= 0.0)
        return 1.0;
    if (d >= 1.0)
        return 0.0;
    double t = d;
    double base = 0.0;
    if (s.steps != 0.0) {
        // Each step repeats the whole profile within its band.
        const double k = std::floor(s.steps * d);
        base = 1.0 - s.stepHeight - k * s.stepHeight;
        t = (d - k * s.stepHeight) * s.steps;
    }
    const auto inBand = [&](double w) { return s.stepHeight == 0.0 ? w : w * s.stepHeight + base; };
    if (s.flatTop != 0.0) {
        if (s.flatTop > t)
            return inBand(1.0);
        t = (t - s.flatTop) * s.flatTopScale;
    }
    if (!(t > 0.0))
        return inBand(1.0);
    double q = 1.0 - t;
    if (s.lowerKnee > q) {
        const double u = 0.5 * s.lowerKneeScale * q;
        q = u * u * (u * -2.0 + 3.0) * (s.lowerKnee + s.lowerKnee);
    } else if (s.upperKnee > q) {
        q = (q - s.lowerKnee) * 1.5 + s.lowerKnee;
    } else {
        const double u = (q - 1.0) * 0.5 / (1.0 - s.upperKnee) + 1.0;
        const double g = u * u * (u * -2.0 + 3.0) - 1.0;
        q = (g + g) * (1.0 - s.upperKnee) + s.profileTop;
    }
    double w = q * s.profileScale;
    if (s.groove != 0.0) {
        const double g = w + w - 1.0;
        w = w - s.groove * (g * g - 1.0);
    }
    return inBand(w);
}

} // namespace

double evaluate(const SheenValues &s, double x, double y) {
    const double *const v = s.values;
    double height = v[kHeight];
    Point p = place(s, {x, y});
    p = sheerAndPerspective(s, p);
    // On purpose: the amount is a slope, not degrees, and the direction of the elevation plays no part.
    const double tilt = v[kElevationAmount] * p.x;
    Point noise = {0.0, 0.0};
    p = fold(s, p, noise);
    if ((s.shapeFlags & ~shapeCentralArch) != 0 || (s.noiseFlags & ~noiseHeight) != 0)
        warp(s, p, noise, height);
    const Region region = classify(s, p);
    if ((s.shapeFlags & shapeCentralArch) != 0 && region == Region::plateau)
        height = centralArch(s, p, height);
    if ((s.noiseFlags & noiseHeight) != 0) {
        const double a = s.noiseAmplitude;
        const double n = turbulentNoise(s, s.noiseScaleX * noise.x, s.noiseScaleY * noise.y);
        height = a > 0.0 ? a * height * n + height : a * n + height;
    }
    switch (region) {
    case Region::outside:
        break;
    case Region::plateau:
        return tilt + (height + v[kCenter2]);
    case Region::verticalEdge:
        return (tilt + height * profile(s, p.x)) + v[kCenter2];
    case Region::horizontalEdge:
        return (tilt + height * profile(s, p.y)) + v[kCenter2];
    case Region::corner:
        return (tilt + height * profile(s, cornerDistance(s, p))) + v[kCenter2];
    }
    return 0.0; // outside: neither tilted nor shifted
}

void LxSheenSurface::Evaluate(double *out, const double *x, const double *y) {
    if (!prepared)
        Prepare();
    *out = evaluate(*this, *x, *y);
}

} // namespace lx
