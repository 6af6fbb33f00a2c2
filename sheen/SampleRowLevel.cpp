// The surface, a vector of pixels at a time. Compiled once per vector level.
//
// Each function repeats its namesake in Evaluate.cpp, where the reasons stand: the same operations in the
// same order, with a choice per lane for a branch per point. Branches on parameters alone stay branches, or
// choose the instantiation. The functions of the mathematics library are called lane by lane, for they fix
// bits too.

#include "sheen/NoiseVectors.h"
#include "sheen/SampleRow.h"

namespace lx {
namespace LX_VECTOR_NAMESPACE {
namespace {

enum class Fold { circle, rectangle, polar, sectors };

struct Point {
    Doubles x, y;
};

constexpr int everyLane = (1 << doubleLanes) - 1;

Point rotated(Point p, double cosine, double sine) {
    return {p.x * cosine - p.y * sine, p.x * sine + p.y * cosine};
}

Point placePeriodic(const SheenValues &s, Point p) {
    const double *const v = s.values;
    const double period = v[kCenterRotationPeriod];
    const Doubles cx = p.x - 0.5;
    const Doubles cy = p.y - 0.5;
    const Doubles r = squareRoot(cx * cx + cy * cy);
    Doubles t;
    for (int i = 0; i < doubleLanes; ++i)
        t[i] = atan2(cy[i], cx[i]);
    const double w = tau / period;
    Doubles f = t + s.centerRotationRadians + 31.41592653589793;
    const Doubles k = roundedDown(f / w + 0.5);
    f = f - w * k;
    Doubles cosine, sine;
    for (int i = 0; i < doubleLanes; ++i) {
        cosine[i] = cos(f[i]);
        sine[i] = sin(f[i]);
    }
    p.x = ((1.0 / period + (v[kCenter0] - 1.0)) + cosine * r) * period;
    p.y = (sine * r + (v[kCenter1] - 0.5)) * period;
    return s.rotationRadians != 0.0 ? rotated(p, s.rotationCos, s.rotationSin) : p;
}

inline Point place(const SheenValues &s, Point p) {
    if (s.values[kCenterRotationPeriod] >= 1.0)
        return placePeriodic(s, p);
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
        const Doubles d = 1.0 - v[kHorPerspect] * p.y;
        p.x = choose(d != 0.0, p.x / d, p.x);
    }
    if ((s.shapeFlags & shapeVertPerspect) != 0) {
        const Doubles d = 1.0 - v[kVertPerspect] * p.x;
        p.y = choose(d != 0.0, p.y / d, p.y);
    }
    return p;
}

// Distances at which the part of the shape that a point lies in is certain without its angle: each folded
// coordinate is at most the distance, and their squares add up to its square.
struct Certainty {
    double outside; // beyond this every point lies outside; infinite if there is no such distance
    double plateau; // up to this every point lies on the plateau, where its place makes no difference; or -1
};

Certainty certaintyOf(const SheenValues &s) {
    Certainty certainty = {HUGE_VAL, -1.0};
    const uint32_t curves = shapeVertCurve | shapeVertBorderCurve | shapeHorCurve | shapeHorBorderCurve;
    const uint32_t arches = shapeVertArch | shapeHorArch | shapeCentralArch;
    if ((s.shapeFlags & curves) != 0 || (s.noiseFlags & (noiseVertCurve | noiseHorCurve)) != 0)
        return certainty;
    // Where numbers are so large that an angle may not be one, nothing is certain.
    const double tame = 1e100;
    const bool ordinary = s.inner[0] >= 0.0 && s.inner[1] >= 0.0 && s.border[0] >= 0.0 && s.border[1] >= 0.0;
    const bool turned = fabs(s.swirl) < tame && fabs(s.jitterAmount[0]) < tame &&
                        fabs(s.jitterAmount[1]) < tame && fabs(s.jitterFrequency[0]) < tame &&
                        fabs(s.jitterFrequency[1]) < tame;
    if (!ordinary || !turned)
        return certainty;
    // The margin is far above what rounding of the cosine, the sine and the differences can come to.
    certainty.outside = sqrt(s.total[0] * s.total[0] + s.total[1] * s.total[1]) * 1.000000001;
    if (!(certainty.outside > 1e-100)) // nor can it drown in numbers that are too small
        certainty.outside = HUGE_VAL;
    if ((s.shapeFlags & arches) == 0)
        certainty.plateau = s.inner[0] < s.inner[1] ? s.inner[0] : s.inner[1];
    return certainty;
}

// What a row keeps from vector to vector.
struct RowState {
    Certainty certainty;
    NoiseCell cell;
};

void twist(const SheenValues &s, Doubles &a, Doubles r) {
    for (int i = 0; i < 2; ++i) {
        const double j = s.jitterAmount[i];
        if (!(j > 0.0 || j < 0.0))
            continue;
        const Doubles q = r * s.jitterFrequency[i];
        Doubles sine;
        for (int k = 0; k < doubleLanes; ++k)
            sine[k] = sin(q[k]);
        if (j > 0.0)
            a = a + j * (sine + 1.0);
        else
            a = a - j * (sine + 1.0) / (r * 10.0 + 0.10000000149011612);
    }
}

Doubles angles(Point p, int lanes) {
    Doubles a{};
    for (int i = 0; i < doubleLanes; ++i) {
        if ((lanes >> i & 1) != 0)
            a[i] = atan2(p.y[i], p.x[i]);
    }
    return a;
}

Point polar(Doubles r, Doubles a, int lanes) {
    Doubles cosine{}, sine{};
    for (int i = 0; i < doubleLanes; ++i) {
        if ((lanes >> i & 1) != 0) {
            cosine[i] = cos(a[i]);
            sine[i] = sin(a[i]);
        }
    }
    return {cosine * r, r * sine};
}

// Answers false if all points lie outside, whatever comes after.
bool foldByAngle(const SheenValues &s, const RowState &state, bool one, Point &p, Point &noise) {
    const Doubles r = squareRoot(p.x * p.x + p.y * p.y);
    const DoubleMask outside = (r > state.certainty.outside) & (r < 1e100);
    const DoubleMask plateau = r <= state.certainty.plateau;
    const int inside = everyLane & ~bits(outside);
    if (inside == 0)
        return false;
    const int open = one || s.noiseFlags != 0 ? inside : inside & ~bits(plateau);
    Doubles a = r * s.swirl + angles(p, open);
    twist(s, a, r);
    if (one) {
        if (s.values[kRotationPeriod] != 0.0)
            a = s.values[kRotationPeriod] * a;
        const Doubles w = (roundedDown(a * inverseTau) * -tau + a) * inverseTau;
        Doubles y = choose(w > 0.5, 1.0 - w, w);
        y = y + y;
        noise = {r, y};
        p = {absolute(r), absolute(y)};
        return true;
    }
    if (s.noiseFlags != 0)
        noise = polar(r, a, inside);
    const Doubles b = s.sectorRemainder * -0.5 + a;
    const double h = s.sector * 0.5;
    Doubles c = choose(b > 0.0, all(h), all(h + tau)) + b;
    c = c - roundedDown(c * s.sectorsPerRadian) * s.sector + s.sector * -0.5;
    const Point folded = polar(r, c, inside & ~bits(plateau));
    // Points that need no angle have the coordinates of some point in the same part.
    p.x = choose(plateau, Doubles{}, choose(outside, all(HUGE_VAL), absolute(folded.x)));
    p.y = choose(plateau, Doubles{}, choose(outside, all(HUGE_VAL), absolute(folded.y)));
    return true;
}

template <Fold kind>
inline bool fold(const SheenValues &s, const RowState &state, Point &p, Point &noise) {
    if (kind == Fold::circle) {
        noise = p;
        p = {squareRoot(p.x * p.x + p.y * p.y), Doubles{}};
        return true;
    }
    if (kind == Fold::rectangle) {
        noise = p;
        p = {absolute(p.x), absolute(p.y)};
        return true;
    }
    return foldByAngle(s, state, kind == Fold::polar, p, noise);
}

// The whole part of `shape` counts; the shapes that exist are 0, 1 and 2.
Doubles shapeValue(double shape, Doubles p) {
    if (shape > -1.0 && shape < 1.0)
        return 1.0 - p * p;
    if (shape >= 1.0 && shape < 2.0) {
        const Doubles a = absolute(p);
        const Doubles b = 1.0 - a;
        return choose(a >= 0.5, (b + b) * b, a * -2.0 * a + 1.0);
    }
    if (shape >= 2.0 && shape < 3.0)
        return 1.0 - absolute(p);
    return p;
}

Doubles bentBy(const SheenValues &s, SheenIndex amount, SheenIndex shape, Doubles p) {
    const double c = s.values[amount];
    const Doubles w = shapeValue(s.values[shape], p);
    return c > 0.0 ? (1.0 + c) * w * c * 0.5 + 1.0 : (c - 1.0) * w * c * -0.5 + 1.0;
}

Doubles clippedAt(double c, Doubles n) {
    if (c == 0.0)
        return n;
    if (c > 0.0)
        return choose(n >= c, n - c, choose(-c >= n, n + c, Doubles{}));
    const double m = c + 1.0;
    return choose(n > m, all(m), choose(n < -m, all(-m), n));
}

inline Doubles clipNoise(const SheenValues &s, Doubles n) {
    const double positive = s.values[kNoisePosClip];
    const double negative = s.values[kNoiseNegClip];
    if (positive == 0.0 && negative == 0.0)
        return n;
    return choose(n > 0.0, clippedAt(positive, n), clippedAt(negative, n));
}

Doubles edgeNoise(const SheenValues &s, Doubles f, double amount, Doubles t) {
    const double q = amount * amount;
    const double turbulence = s.values[kNoiseFreqMod];
    if (turbulence != 0.0)
        t = t + turbulenceReach * turbulence * noise1D(t);
    const Doubles n = clipNoise(s, noise1D(t)) * q;
    return amount > 0.0 ? f * (n + 1.0) : f + n;
}

Doubles turbulentNoise(const SheenValues &s, RowState &state, Doubles x, Doubles y) {
    const double turbulence = s.values[kNoiseFreqMod];
    Doubles shiftX, shiftY;
    if (turbulence > 0.0) {
        shiftX = shiftY = noise2D(state.cell, x, y);
    } else if (turbulence < 0.0) {
        shiftY = noise1D(x);
        shiftX = noise1D(y);
    } else {
        return clipNoise(s, noise2D(state.cell, x, y));
    }
    const Doubles y2 = shiftY * (turbulence * turbulenceReach) + y;
    const Doubles x2 = turbulenceReach * turbulence * shiftX + x;
    const HalfInts ix = truncated(x2);
    return clipNoise(s, noise2DAnywhere(ix, x2 - widened(ix), y2));
}

Doubles divided(Doubles coordinate, Doubles f) {
    return choose(f > 0.0, coordinate / f, all(10000.0));
}

Doubles bentBorder(Doubles coordinate, double inner, Doubles f) {
    const Doubles d = coordinate - inner;
    return choose(coordinate > inner, inner + choose(f > 0.0, d / f, d), coordinate);
}

void warp(const SheenValues &s, Point &p, Point noise, Doubles &height) {
    const double *const v = s.values;
    const uint32_t shape = s.shapeFlags;
    const uint32_t rough = s.noiseFlags;
    const Doubles along0 = s.totalScale[0] * p.x;
    const Doubles along1 = s.totalScale[1] * p.y;
    if ((shape & shapeHorCurve) != 0 || (rough & noiseHorCurve) != 0) {
        Doubles f = all(1.0);
        if ((shape & shapeHorCurve) != 0)
            f = bentBy(s, kHorCurve, kHorShape, along1);
        if ((rough & noiseHorCurve) != 0)
            f = edgeNoise(s, f, v[kNoiseHorCurve], s.noiseScaleY * noise.y);
        p.x = divided(p.x, f);
    }
    if ((shape & shapeVertCurve) != 0 || (rough & noiseVertCurve) != 0) {
        Doubles f = all(1.0);
        if ((shape & shapeVertCurve) != 0)
            f = bentBy(s, kVertCurve, kVertShape, along0);
        if ((rough & noiseVertCurve) != 0)
            f = edgeNoise(s, f, v[kNoiseVertCurve], s.noiseScaleX * noise.x);
        p.y = divided(p.y, f);
    }
    if ((shape & shapeHorBorderCurve) != 0)
        p.x = bentBorder(p.x, s.inner[0], bentBy(s, kHorBorderCurve, kHorBorderShape, along1));
    if ((shape & shapeVertBorderCurve) != 0)
        p.y = bentBorder(p.y, s.inner[1], bentBy(s, kVertBorderCurve, kVertBorderShape, along0));
    if ((shape & shapeHorArch) != 0)
        height = bentBy(s, kHorArch, kHorArchShape, along0) * height;
    if ((shape & shapeVertArch) != 0)
        height = bentBy(s, kVertArch, kVertArchShape, along1) * height;
}

Doubles repeat(Doubles t, double n) {
    Doubles q = (t + 1.0) * n * 0.5;
    q = q - roundedDown(q);
    return q + q - 1.0;
}

// `p` is the folded point; only points on the plateau count.
Doubles centralArch(const SheenValues &s, Point p, Doubles height) {
    p.x = p.x * s.innerScale[0];
    if (s.values[kCenterPeriod0] > 1.0)
        p.x = absolute(repeat(p.x, s.values[kCenterPeriod0]));
    p.y = p.y * s.innerScale[1];
    if (s.values[kCenterPeriod1] > 1.0)
        p.y = -repeat(p.y, s.values[kCenterPeriod1]);
    const Doubles gy = bentBy(s, kCentralArch, kCentralArchShape, p.y) - 1.0;
    const Doubles gx = bentBy(s, kCentralArch, kCentralArchShape, p.x) - 1.0;
    const Doubles g = gx * gy;
    return s.values[kCentralArch] > 0.0 ? (g + 1.0) * height : height * (1.0 - g);
}

Doubles cornerDistance(const SheenValues &s, Point p) {
    const double type = s.cornerType;
    if (type <= 0.0)
        return p.x + p.y;
    const Doubles round = squareRoot(p.x * p.x + p.y * p.y);
    const Doubles square = choose(p.x < p.y, p.y, p.x);
    if (type < 1.0)
        return (1.0 - type) * (p.y + p.x) + type * round;
    if (type == 1.0)
        return round;
    if (type == 2.0)
        return square;
    return (2.0 - type) * round + (type - 1.0) * square;
}

Doubles roundedSlope(const SheenValues &s, Doubles q) {
    const DoubleMask lower = s.lowerKnee > q;
    const DoubleMask middle = s.upperKnee > q;
    Doubles result = (q - s.lowerKnee) * 1.5 + s.lowerKnee;
    if (!every(middle)) {
        const Doubles u = (q - 1.0) * 0.5 / (1.0 - s.upperKnee) + 1.0;
        const Doubles g = u * u * (u * -2.0 + 3.0) - 1.0;
        result = choose(middle, result, (g + g) * (1.0 - s.upperKnee) + s.profileTop);
    }
    const Doubles u = 0.5 * s.lowerKneeScale * q;
    return choose(lower, u * u * (u * -2.0 + 3.0) * (s.lowerKnee + s.lowerKnee), result);
}

Doubles profile(const SheenValues &s, Doubles d) {
    Doubles t = d;
    Doubles base{};
    if (s.steps != 0.0) {
        const Doubles k = roundedDown(s.steps * d);
        base = 1.0 - s.stepHeight - k * s.stepHeight;
        t = (d - k * s.stepHeight) * s.steps;
    }
    DoubleMask cut{};
    if (s.flatTop != 0.0) {
        cut = s.flatTop > t;
        t = (t - s.flatTop) * s.flatTopScale;
    }
    Doubles w = roundedSlope(s, 1.0 - t) * s.profileScale;
    if (s.groove != 0.0) {
        const Doubles g = w + w - 1.0;
        w = w - s.groove * (g * g - 1.0);
    }
    w = choose(~cut & (t > 0.0), w, all(1.0));
    if (s.stepHeight != 0.0)
        w = w * s.stepHeight + base;
    return choose(d <= 0.0, all(1.0), choose(d >= 1.0, Doubles{}, w));
}

// Heights, 0 outside. A false answer says that all of them are.
template <Fold kind, bool shaped, bool noisy>
inline bool evaluate(const SheenValues &s, RowState &state, Point p, Doubles &out) {
    const double *const v = s.values;
    p = place(s, p);
    if (shaped)
        p = sheerAndPerspective(s, p);
    const Doubles tilt = v[kElevationAmount] * p.x;
    Point noise{};
    if (!fold<kind>(s, state, p, noise))
        return false;
    Doubles height = all(v[kHeight]);
    if (shaped || (noisy && (s.noiseFlags & (noiseHorCurve | noiseVertCurve)) != 0))
        warp(s, p, noise, height);

    const DoubleMask inX = p.x <= s.inner[0];
    const Doubles rimX = p.x - s.inner[0];
    const Doubles rimY = p.y - s.inner[1];
    // Not the same for what is not a number, so asked twice as in the definition.
    const DoubleMask aboveY = p.y > s.inner[1];
    const DoubleMask inY = p.y <= s.inner[1];
    const DoubleMask outside =
        (~inX & (rimX > s.border[0])) | (((inX & aboveY) | (~inX & ~inY)) & (rimY > s.border[1]));
    if (every(outside))
        return false;
    const DoubleMask plateau = inX & ~aboveY;

    if (shaped && (s.shapeFlags & shapeCentralArch) != 0)
        height = choose(plateau, centralArch(s, p, height), height);
    if (noisy && (s.noiseFlags & noiseHeight) != 0) {
        const double a = s.noiseAmplitude;
        const Doubles n = turbulentNoise(s, state, s.noiseScaleX * noise.x, s.noiseScaleY * noise.y);
        height = a > 0.0 ? a * height * n + height : a * n + height;
    }
    const Doubles flat = tilt + (height + v[kCenter2]);
    if (every(plateau)) {
        out = flat;
        return true;
    }
    const Point rim = {rimX * s.borderScale[0], rimY * s.borderScale[1]};
    Doubles distance = choose(inX, rim.y, rim.x);
    const DoubleMask corner = ~inX & ~inY;
    if (any(corner & ~outside))
        distance = choose(corner, cornerDistance(s, rim), distance);
    const Doubles slope = (tilt + height * profile(s, distance)) + v[kCenter2];
    out = choose(outside, Doubles{}, choose(plateau, flat, slope));
    return true;
}

// Pixels x to x + count - 1.
template <Fold kind, bool shaped, bool noisy>
inline void sampleSome(const SheenValues &s, RowState &state, SampleRow &row, Doubles y, int x, int count) {
    const HalfFloats position = row.step * __builtin_convertvector(lanes() + x, HalfFloats);
    Doubles height;
    if (!evaluate<kind, shaped, noisy>(s, state, {widened(position), y}, height)) {
        store(HalfFloats{}, row.out + x, count);
        return;
    }
    height = choose(height > 1.0, all(1.0), height);
    height = choose(height >= 0.0, height, Doubles{}); // also for what is not a number
    store(narrowed(height), row.out + x, count);
    const DoubleMask positive = height > 0.0;
    const int raised = bits(positive) & ((1 << count) - 1);
    if (raised != 0) {
        if (row.last < 0)
            row.first = x + __builtin_ctz((unsigned)raised);
        row.last = x + 31 - __builtin_clz((unsigned)raised);
    }
}

// Whether a row lies above or below a rectangle that is neither turned nor bent.
bool isOutside(const SheenValues &s, double rowY) {
    const bool plain = s.shapeFlags == 0 && (s.noiseFlags & (noiseHorCurve | noiseVertCurve)) == 0 &&
                       !(s.values[kCenterRotationPeriod] >= 1.0) && s.rotationTotal == 0.0;
    const double y = fabs(rowY - s.centerY);
    return plain && y > s.inner[1] && y - s.inner[1] > s.border[1];
}

template <Fold kind, bool shaped, bool noisy>
void sample(const SheenValues &s, SampleRow &target) {
    SampleRow row = target; // nothing that is written can be part of it
    row.first = row.count;
    row.last = -1;
    if (kind == Fold::rectangle && isOutside(s, row.y)) {
        memset(row.out, 0, (size_t)row.count * sizeof(float));
        target = row;
        return;
    }
    RowState state = {certaintyOf(s), {}};
    const Doubles y = all(row.y);
    for (int x = 0; x + doubleLanes <= row.count; x += doubleLanes)
        sampleSome<kind, shaped, noisy>(s, state, row, y, x, doubleLanes);
    // The last pixels in a whole vector too, if there is room: some are sampled twice, to the same result.
    if (row.count < doubleLanes)
        sampleSome<kind, shaped, noisy>(s, state, row, y, 0, row.count);
    else if (row.count % doubleLanes != 0)
        sampleSome<kind, shaped, noisy>(s, state, row, y, row.count - doubleLanes, doubleLanes);
    target = row;
}

using Sample = void (*)(const SheenValues &, SampleRow &);

template <Fold kind>
Sample sampleBy(bool shaped, bool noisy) {
    if (noisy)
        return shaped ? sample<kind, true, true> : sample<kind, false, true>;
    return shaped ? sample<kind, true, false> : sample<kind, false, false>;
}

} // namespace

void sampleRow(const SheenValues &s, SampleRow &row) {
    const bool shaped = s.shapeFlags != 0;
    const bool noisy = s.noiseFlags != 0;
    const bool straight = s.swirl == 0.0 && s.jitterAmount[0] == 0.0 && s.jitterAmount[1] == 0.0;
    Sample sample = sampleBy<Fold::sectors>(shaped, noisy);
    if (s.symmetry == 0.0)
        sample = sampleBy<Fold::circle>(shaped, noisy);
    else if (s.symmetry == 2.0 && straight)
        sample = sampleBy<Fold::rectangle>(shaped, noisy);
    else if (s.symmetry == 1.0)
        sample = sampleBy<Fold::polar>(shaped, noisy);
    sample(s, row);
}

} // namespace LX_VECTOR_NAMESPACE
} // namespace lx
