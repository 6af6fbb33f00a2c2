#include "tests/sheen/PlainSurface.h"

#include <cmath>

#include "foundation/Numeric.h"
#include "geometry/Noise.h"
#include "sheen/Parameters.h"

namespace lx::test {
namespace {

constexpr double turn = 6.283185307179586;
constexpr double perDegree = 0.017453292519943295;

double weight(double shapeParameter, double p) {
    const int shape = truncateToInt32(shapeParameter);
    if (shape == 0)
        return 1.0 - p * p;
    if (shape == 1 && std::fabs(p) >= 0.5)
        return ((1.0 - std::fabs(p)) + (1.0 - std::fabs(p))) * (1.0 - std::fabs(p));
    if (shape == 1)
        return std::fabs(p) * -2.0 * std::fabs(p) + 1.0;
    return shape == 2 ? 1.0 - std::fabs(p) : p;
}

double bent(double c, double w) {
    if (c > 0.0)
        return (1.0 + c) * w * c * 0.5 + 1.0;
    return (c - 1.0) * w * c * -0.5 + 1.0;
}

double clipped(const double *v, double n) {
    const double c = v[n > 0.0 ? kNoisePosClip : kNoiseNegClip];
    if (c > 0.0)
        return n >= c ? n - c : -c >= n ? n + c : 0.0;
    if (c == 0.0)
        return n;
    if (n > c + 1.0)
        return c + 1.0;
    return n < -(c + 1.0) ? -(c + 1.0) : n;
}

double roughEdge(const double *v, double f, double amount, double t) {
    if (v[kNoiseFreqMod] != 0.0)
        t = t + 0.019999999552965164 * v[kNoiseFreqMod] * LxNoise_1D(t);
    const double n = clipped(v, LxNoise_1D(t)) * (amount * amount);
    return amount > 0.0 ? f * (n + 1.0) : f + n;
}

double roughHeight(const double *v, double x, double y) {
    const double amount = v[kNoiseFreqMod];
    const double reach = 0.019999999552965164;
    double byX = 0.0;
    double byY = 0.0;
    if (amount > 0.0) {
        byX = byY = LxNoise_2D(x, y);
    } else if (amount < 0.0) {
        byY = LxNoise_1D(x);
        byX = LxNoise_1D(y);
    } else {
        return clipped(v, LxNoise_2D(x, y));
    }
    const double newY = byY * (amount * reach) + y;
    const double newX = reach * amount * byX + x;
    return clipped(v, LxNoise_2D(newX, newY));
}

double rimProfile(const double *v, double d) {
    if (d <= 0.0)
        return 1.0;
    if (d >= 1.0)
        return 0.0;
    const double linearity = v[kProfilePar0];
    const bool isCut = linearity < 0.0;
    const double base = isCut ? 0.0 : linearity;
    const double span = isCut ? 1.0 : 1.0 - linearity;
    const double top = (isCut ? 0.0 : linearity * 0.5) + 1.0;
    const double topScale = top == 0.0 ? 1.0 : 1.0 / top;
    const double lower = (1.0 - v[kProfilePar1]) * span * 0.5;
    const double upper = base + lower;
    const double steps = v[kProfilePar3];
    const double stepHeight = steps == 0.0 ? 0.0 : 1.0 / steps;
    double s = d;
    double floorOfStep = 0.0;
    if (steps != 0.0) {
        const double k = std::floor(steps * d);
        floorOfStep = 1.0 - stepHeight - k * stepHeight;
        s = (d - k * stepHeight) * steps;
    }
    double w = 1.0;
    bool onTop = false;
    if (isCut && -linearity != 0.0) {
        onTop = -linearity > s;
        s = (s - -linearity) * (linearity > -0.9999999999999998 ? 1.0 / (linearity + 1.0) : 1.0);
    }
    if (!onTop && s > 0.0) {
        double q = 1.0 - s;
        if (lower > q) {
            const double t = 0.5 * (lower == 0.0 ? 1.0 : 1.0 / lower) * q;
            q = t * t * (t * -2.0 + 3.0) * (lower + lower);
        } else if (upper > q) {
            q = (q - lower) * 1.5 + lower;
        } else {
            const double t = (q - 1.0) * 0.5 / (1.0 - upper) + 1.0;
            const double g = t * t * (t * -2.0 + 3.0) - 1.0;
            q = (g + g) * (1.0 - upper) + top;
        }
        w = q * topScale;
        if (v[kProfilePar2] != 0.0) {
            const double g = w + w - 1.0;
            w = w - v[kProfilePar2] * (g * g - 1.0);
        }
    }
    return stepHeight == 0.0 ? w : w * stepHeight + floorOfStep;
}

double cornerMeasure(double type, double x, double y) {
    const double round = std::sqrt(x * x + y * y);
    const double larger = x < y ? y : x;
    if (type <= 0.0)
        return x + y;
    if (type < 1.0)
        return (1.0 - type) * (y + x) + type * round;
    return type == 1.0 ? round : type == 2.0 ? larger : (2.0 - type) * round + (type - 1.0) * larger;
}

double repeated(double t, double n) {
    const double q = (t + 1.0) * n * 0.5;
    return (q - std::floor(q)) + (q - std::floor(q)) - 1.0;
}

void turned(double &x, double &y, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(-angle);
    const double oldX = x;
    x = x * c - y * s;
    y = oldX * s + y * c;
}

void sizesOf(const double *v, int axis, double &inner, double &border) {
    const double size = v[kInnerSize0 + axis];
    border = v[kBorderSize0 + axis];
    inner = size;
    if (border < 0.0) {
        inner = size - (-size * border);
        border = -size * border;
    }
}

double inverse(double value) {
    return value == 0.0 ? 1e10 : 1.0 / value;
}

void centreOf(const double *v, double &x, double &y) {
    x = v[kCenter0];
    y = v[kCenter1];
    if (v[kRotationPeriod] != 0.0 || v[kCenterRotation] == 0.0)
        return;
    const double a = v[kCenterRotation] * perDegree;
    x = std::cos(a) * (v[kCenter0] - 0.5) + 0.5 - std::sin(a) * (v[kCenter1] - 0.5);
    y = (v[kCenter0] - 0.5) * std::sin(a) + (std::cos(a) * (v[kCenter1] - 0.5) + 0.5);
}

} // namespace

double plainHeight(const double *v, double x, double y) {
    double inner[2], border[2];
    sizesOf(v, 0, inner[0], border[0]);
    sizesOf(v, 1, inner[1], border[1]);
    double height = v[kHeight];

    // Into the surface's frame.
    const double local = perDegree * v[kRotation];
    const double central = v[kCenterRotation] * perDegree;
    const double period = v[kCenterRotationPeriod];
    if (period >= 1.0) {
        const double r = std::sqrt((x - 0.5) * (x - 0.5) + (y - 0.5) * (y - 0.5));
        double f = std::atan2(y - 0.5, x - 0.5) + central + 31.41592653589793;
        f = f - turn / period * std::floor(f / (turn / period) + 0.5);
        x = ((1.0 / period + (v[kCenter0] - 1.0)) + std::cos(f) * r) * period;
        y = (std::sin(f) * r + (v[kCenter1] - 0.5)) * period;
        if (local != 0.0)
            turned(x, y, local);
    } else {
        double centreX, centreY;
        centreOf(v, centreX, centreY);
        x = x - centreX;
        y = y - centreY;
        if (local + central != 0.0)
            turned(x, y, local + central);
    }
    if (v[kHorSheer] != 0.0)
        x = v[kHorSheer] * y + x;
    if (v[kVertSheer] != 0.0)
        y = v[kVertSheer] * x + y;
    if (v[kHorPerspect] != 0.0 && 1.0 - v[kHorPerspect] * y != 0.0)
        x = x / (1.0 - v[kHorPerspect] * y);
    if (v[kVertPerspect] != 0.0 && 1.0 - v[kVertPerspect] * x != 0.0)
        y = y / (1.0 - v[kVertPerspect] * x);
    const double tilt = v[kElevationAmount] * x;

    // The fold.
    const double fold = v[kSymmetry];
    const double jitter[2] = {v[kJitter] + v[kJitter], v[kJitter2] + v[kJitter2]};
    double noiseX = x;
    double noiseY = y;
    if (fold == 0.0) {
        x = std::sqrt(x * x + y * y);
        y = 0.0;
    } else if (fold == 2.0 && v[kSwirl] == 0.0 && jitter[0] == 0.0 && jitter[1] == 0.0) {
        x = std::fabs(x);
        y = std::fabs(y);
    } else {
        const double r = std::sqrt(x * x + y * y);
        double a = r * v[kSwirl] + std::atan2(y, x);
        for (int i = 0; i < 2; ++i) {
            const double q = r * (v[i == 0 ? kJitterSpeed : kJitter2Speed] * 200.0 + 1.0);
            if (jitter[i] > 0.0)
                a = a + jitter[i] * (std::sin(q) + 1.0);
            if (jitter[i] < 0.0)
                a = a - jitter[i] * (std::sin(q) + 1.0) / (r * 10.0 + 0.10000000149011612);
        }
        if (fold == 1.0) {
            if (v[kRotationPeriod] != 0.0)
                a = v[kRotationPeriod] * a;
            const double w = (std::floor(a * 0.15915494309189535) * -turn + a) * 0.15915494309189535;
            noiseX = r;
            noiseY = (w > 0.5 ? 1.0 - w : w) + (w > 0.5 ? 1.0 - w : w);
            x = std::fabs(noiseX);
            y = std::fabs(noiseY);
        } else {
            noiseX = std::cos(a) * r;
            noiseY = std::sin(a) * r;
            const double sector = fold > 0.0 ? turn / fold : 0.0;
            const double rest = fold > 0.0 ? turn - sector * std::floor(turn / sector) : 0.0;
            const double b = rest * -0.5 + a;
            double c = (b > 0.0 ? sector * 0.5 : sector * 0.5 + turn) + b;
            c = c - std::floor(c * (0.15915494309189535 * fold)) * sector + sector * -0.5;
            x = std::fabs(std::cos(c) * r);
            y = std::fabs(r * std::sin(c));
        }
    }

    // Curves and arches.
    const double scaleX = (v[kNoiseRatio] + 1.0) * (1.0 - v[kNoiseZoom]) * 0.5;
    const double scaleY = (1.0 - v[kNoiseZoom]) * (1.0 - v[kNoiseRatio]) * 0.5;
    const double u = inverse(inner[0] + border[0]) * x;
    const double w = inverse(inner[1] + border[1]) * y;
    if (v[kHorCurve] != 0.0 || v[kNoiseHorCurve] != 0.0) {
        double f = v[kHorCurve] != 0.0 ? bent(v[kHorCurve], weight(v[kHorShape], w)) : 1.0;
        if (v[kNoiseHorCurve] != 0.0)
            f = roughEdge(v, f, v[kNoiseHorCurve], scaleY * noiseY);
        x = f > 0.0 ? x / f : 10000.0;
    }
    if (v[kVertCurve] != 0.0 || v[kNoiseVertCurve] != 0.0) {
        double f = v[kVertCurve] != 0.0 ? bent(v[kVertCurve], weight(v[kVertShape], u)) : 1.0;
        if (v[kNoiseVertCurve] != 0.0)
            f = roughEdge(v, f, v[kNoiseVertCurve], scaleX * noiseX);
        y = f > 0.0 ? y / f : 10000.0;
    }
    if (v[kHorBorderCurve] != 0.0 && x > inner[0]) {
        const double f = bent(v[kHorBorderCurve], weight(v[kHorBorderShape], w));
        x = inner[0] + (f > 0.0 ? (x - inner[0]) / f : x - inner[0]);
    }
    if (v[kVertBorderCurve] != 0.0 && y > inner[1]) {
        const double f = bent(v[kVertBorderCurve], weight(v[kVertBorderShape], u));
        y = inner[1] + (f > 0.0 ? (y - inner[1]) / f : y - inner[1]);
    }
    if (v[kHorArch] != 0.0)
        height = bent(v[kHorArch], weight(v[kHorArchShape], u)) * height;
    if (v[kVertArch] != 0.0)
        height = bent(v[kVertArch], weight(v[kVertArchShape], w)) * height;

    // Which part of the shape.
    int region;
    if (x <= inner[0]) {
        x = x * inverse(inner[0]);
        if (v[kCenterPeriod0] > 1.0)
            x = std::fabs(repeated(x, v[kCenterPeriod0]));
        if (y > inner[1]) {
            region = y - inner[1] > border[1] ? 0 : 3;
            y = (y - inner[1]) * inverse(border[1]);
        } else {
            region = 1;
            y = y * inverse(inner[1]);
            if (v[kCenterPeriod1] > 1.0)
                y = -repeated(y, v[kCenterPeriod1]);
        }
    } else if (x - inner[0] > border[0]) {
        region = 0;
    } else {
        x = (x - inner[0]) * inverse(border[0]);
        region = y <= inner[1] ? 2 : y - inner[1] > border[1] ? 0 : 4;
        if (region == 4)
            y = (y - inner[1]) * inverse(border[1]);
    }

    // The height there.
    if (region == 1 && v[kCentralArch] != 0.0) {
        const double c = v[kCentralArch];
        const double gy = bent(c, weight(v[kCentralArchShape], y)) - 1.0;
        const double gx = bent(c, weight(v[kCentralArchShape], x)) - 1.0;
        height = c > 0.0 ? (gx * gy + 1.0) * height : height * (1.0 - gx * gy);
    }
    if (v[kNoiseAmount] != 0.0) {
        const double amount = v[kNoiseAmount] * std::fabs(v[kNoiseAmount]) * (0.4 * v[kNoiseZoom] + 0.5);
        const double n = roughHeight(v, scaleX * noiseX, scaleY * noiseY);
        height = amount > 0.0 ? amount * height * n + height : amount * n + height;
    }
    if (region == 0)
        return 0.0;
    if (region == 1)
        return tilt + (height + v[kCenter2]);
    const double d = region == 2 ? x : region == 3 ? y : cornerMeasure(v[kCornerType], x, y);
    return (tilt + height * rimProfile(v, d)) + v[kCenter2];
}

unsigned plainSymmetryMask(const double *v) {
    if (v[kNoiseAmount] != 0.0 || v[kNoiseVertCurve] != 0.0 || v[kNoiseHorCurve] != 0.0)
        return 0;
    unsigned mask = 15;
    double centreX, centreY;
    centreOf(v, centreX, centreY);
    if (centreX != 0.5)
        mask = 2;
    if (centreY != 0.5)
        mask &= 1;
    if (v[kSymmetry] != 0.0) {
        const bool isTurned = perDegree * v[kRotation] + v[kCenterRotation] * perDegree != 0.0;
        if (isTurned || v[kJitter] != 0.0 || v[kJitter2] != 0.0 || v[kSwirl] != 0.0)
            mask &= 12;
        if (std::fmod(v[kSymmetry], 1.0) != 0.0)
            mask = 0;
        else if (std::fabs(std::fmod(v[kSymmetry], 2.0)) == 1.0)
            mask &= 2;
        double inner[2], border[2];
        sizesOf(v, 0, inner[0], border[0]);
        sizesOf(v, 1, inner[1], border[1]);
        if (v[kSymmetry] == 2.0 && (inner[0] != inner[1] || border[0] != border[1]))
            mask &= 7;
    }
    if (v[kCenterRotationPeriod] != 0.0)
        mask = 0;
    if (v[kVertSheer] != 0.0 || v[kHorSheer] != 0.0)
        mask &= 12;
    if (v[kVertPerspect] != 0.0)
        mask &= 10;
    if (v[kHorPerspect] != 0.0)
        mask &= 9;
    return mask;
}

} // namespace lx::test
