// Gradients against a second form that goes step by step and remembers which colours were ever written.

#include <cmath>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include <oxlume/LxGradient.h>
#include <oxlume/LxScalar.h>

#include "tests/support/Random.h"

using lx::test::Random;

namespace {

using Colour = std::optional<LxRGBA>;

class NaiveGradient {
public:
    int32_t type = 1;
    double (*curve)(double, double) = LxLinear;
    LxRGBA colors[10] = {};
    double positions[10], mids[10];

    NaiveGradient() {
        std::fill(std::begin(positions), std::end(positions), -1.0);
        std::fill(std::begin(mids), std::end(mids), 0.5);
    }

    void layOut(const double *bounds) {
        x_ = static_cast<int>(std::floor(bounds[0]));
        y_ = static_cast<int>(std::floor(bounds[1]));
        width_ = static_cast<int>(std::ceil(bounds[2])) - x_;
        height_ = static_cast<int>(std::ceil(bounds[3])) - y_;
        if (width_ == 0 || height_ == 0)
            return;
        const std::vector<Colour> table = makeTable();
        const int length = type == 0                ? width_
                           : type == 1              ? height_
                           : type == 3              ? width_ / 2 + height_ / 2
                           : type == 4 || type == 5 ? width_ + height_
                                                    : 0;
        const auto n = static_cast<size_t>(length);
        if (n == 0)
            ramp_.clear();
        else if (n > ramp_.size())
            ramp_.assign(n, Colour());
        const auto rising = type == 3 ? static_cast<size_t>(width_ / 2) : n;
        const double step = 1.0 / static_cast<double>(rising);
        double t = 0.0;
        for (size_t i = 0; i < n; ++i) {
            if (i == rising)
                t = 0.0;
            const double place = (i < rising ? t : 1.0 - t) * 1023.0 + 0.5;
            ramp_[i] = table[place >= 1023.0 ? 1023 : place >= 1.0 ? static_cast<size_t>(place) : 0];
            t += step;
        }
    }

    // Nothing where the ramp has no such step, or one that no stop ever reached.
    Colour at(int x, int y) const {
        const int dx = x - x_, dy = y - y_;
        const int hw = width_ / 2, hh = height_ / 2;
        int index = 0;
        if (type < 0 || type == 2 || type > 5)
            return LxRGBA{0, 0, 0, 255};
        if (type == 0)
            index = dx;
        else if (type == 1)
            index = dy;
        else if (type == 4)
            index = dx + dy;
        else if (type == 5)
            index = dy + (width_ - dx);
        else if (width_ == 0 || height_ == 0)
            return LxRGBA{0, 0, 0, 255};
        else if (dy < hh)
            index = dx < hw ? std::min(dx, dy) : std::min(dy, 2 * hw - dx);
        else
            index = dx < hw ? std::min(dx, 2 * hh - dy) : std::min(2 * hw - dx, 2 * hh - dy);
        if (index < 0 || static_cast<size_t>(index) >= ramp_.size())
            return {};
        return ramp_[static_cast<size_t>(index)];
    }

private:
    std::vector<Colour> makeTable() const {
        std::vector<Colour> table(1024);
        if (positions[0] < 0.0) {
            table.assign(1024, LxRGBA{0, 0, 0, 255});
            return table;
        }
        if (positions[0] > 0.0)
            for (int i = 0; i <= static_cast<int>(positions[0] * 1023.0); ++i)
                table[static_cast<size_t>(i)] = colors[0];
        for (int s = 0; s < 10; ++s) {
            if (positions[s] < 0.0)
                continue;
            const double next = s < 9 ? positions[s + 1] : mids[0];
            const LxRGBA &c0 = colors[s], &c1 = s < 9 ? colors[s + 1] : colors[0];
            const int i0 = static_cast<int>(positions[s] * 1023.0);
            if (next < 0.0) {
                for (int i = i0; i <= 1023; ++i)
                    table[static_cast<size_t>(i)] = c0;
                continue;
            }
            const int i1 = static_cast<int>(next * 1023.0);
            const int n = i1 - i0;
            if (n == 0 || i0 > i1)
                continue;
            double t = 0.0;
            for (int i = i0; i <= i1; ++i) {
                const double u = curve(mids[s], t);
                const auto mix = [u](int from, int to) {
                    const double value = std::floor(u * (to - from) + from + 0.0 + 0.5);
                    // What no integer can hold, as of a curve bent to its very end, leaves no bits.
                    return static_cast<uint8_t>(std::abs(value) < 2e9 ? static_cast<int>(value) : 0);
                };
                table[static_cast<size_t>(i)] =
                    LxRGBA{mix(c0.r, c1.r), mix(c0.g, c1.g), mix(c0.b, c1.b), mix(c0.a, c1.a)};
                t += 1.0 / n;
            }
        }
        return table;
    }

    int x_ = 0, y_ = 0, width_ = 0, height_ = 0;
    std::vector<Colour> ramp_;
};

constexpr double (*curves[])(double, double) = {LxLinear, LxCurved, LxSine, LxSphereInc, LxSphereDec};

// Positions and mids come at the ends, out of range, and in order.
double randomPlace(Random &random, double inOrder) {
    switch (random.integer(0, 5)) {
    case 0:
        return random.coin() ? 0.0 : 1.0;
    case 1:
        return random.real(-0.5, 1.5);
    default:
        return inOrder;
    }
}

class GradientPair {
public:
    explicit GradientPair(Random &random)
        : random_(random), gradient_(LxGradient_Create(), LxGradient_Delete) {}

    void change() {
        const int32_t curve = random_.integer(-1, 5);
        naive_.type = random_.integer(-1, 6);
        naive_.curve = curves[curve < 0 || curve > 4 ? 0 : curve];
        LxGradient_SetType(gradient_.get(), naive_.type, curve);
        for (int32_t index = 0, last = random_.integer(-1, 9); index <= last; ++index) {
            const LxRGBA color = {random_.byte(), random_.byte(), random_.byte(), random_.byte()};
            const double position = randomPlace(random_, last > 0 ? 1.0 * index / last : 0.0);
            const double mid = randomPlace(random_, random_.real(0, 1));
            if (random_.integer(0, 9) == 0)
                continue; // A gap, or the stop of before.
            LxGradient_AddColor(gradient_.get(), LxColor_RGBA_t(color), index, position, mid);
            naive_.colors[index] = color;
            naive_.positions[index] = std::min(std::max(position, 0.0), 1.0);
            naive_.mids[index] = std::min(std::max(mid, 0.0), 1.0);
        }
    }

    void expectSameColours() {
        const double x = random_.real(-50, 50), y = random_.real(-50, 50);
        const double bounds[] = {x, y, x + random_.real(0, random_.coin() ? 5 : 300),
                                 y + random_.real(0, random_.coin() ? 5 : 300)};
        LxShader shader;
        LxCreate_GradientShader(&shader, gradient_.get());
        shader.begin(&shader, bounds);
        naive_.layOut(bounds);
        for (int i = 0; i < 100; ++i) {
            const auto px = static_cast<int32_t>(std::floor(random_.real(bounds[0], bounds[2])));
            const auto py = static_cast<int32_t>(std::floor(random_.real(bounds[1], bounds[3])));
            const Colour expected = naive_.at(px, py);
            if (!expected)
                continue;
            const int32_t coverage = random_.byte();
            LxColor color;
            shader.color(&color, &shader, px, py, coverage);
            ASSERT_EQ(color.type, kLxPixelRGBA);
            ASSERT_EQ(color.content.rgba.r, expected->r);
            ASSERT_EQ(color.content.rgba.g, expected->g);
            ASSERT_EQ(color.content.rgba.b, expected->b);
            ASSERT_EQ(color.content.rgba.a, (expected->a + 1) * coverage / 256);
            LxGradient_Color(&color, gradient_.get(), px, py);
            ASSERT_EQ(color.content.rgba.a, expected->a);
            ++compared;
        }
    }

    int compared = 0;

private:
    Random &random_;
    NaiveGradient naive_;
    std::unique_ptr<LxGradient, void (*)(LxGradient *)> gradient_;
};

} // namespace

TEST(GradientRamps, AreWhatTheNaiveFormLaysOut) {
    Random random;
    int compared = 0;
    for (int round = 0; round < 700; ++round) {
        GradientPair pair(random);
        for (int use = random.integer(1, 4); use > 0; --use) {
            if (random.integer(0, 2) != 0)
                pair.change();
            pair.expectSameColours();
            ASSERT_FALSE(HasFatalFailure()) << "round " << round;
        }
        compared += pair.compared;
    }
    EXPECT_GT(compared, 100000);
}
