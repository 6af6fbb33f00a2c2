#include "bench/blend/Peers.h"

#include <cstdio>

#include "bench/blend/Measure.h"

#ifdef BENCH_WITH_PIXMAN_1
#include <pixman.h>
#endif
#ifdef BENCH_WITH_CAIRO
#include <cairo.h>
#endif

namespace bench {
namespace {

using lx::Mode;

size_t countOf(int size) {
    return static_cast<size_t>(size) * static_cast<size_t>(size);
}

struct Operator {
    Mode mode;
    int value;
};

template <size_t count>
const Operator *find(const Operator (&operators)[count], Mode mode) {
    const auto found =
        std::find_if(operators, operators + count, [&](const Operator &o) { return o.mode == mode; });
    return found == operators + count ? nullptr : found;
}

} // namespace

#ifdef BENCH_WITH_PIXMAN_1
namespace {

constexpr Operator pixmanOperators[] = {
    {Mode::clear, PIXMAN_OP_CLEAR},
    {Mode::src, PIXMAN_OP_SRC},
    {Mode::srcOver, PIXMAN_OP_OVER},
    {Mode::dstOver, PIXMAN_OP_OVER_REVERSE},
    {Mode::srcIn, PIXMAN_OP_IN},
    {Mode::dstIn, PIXMAN_OP_IN_REVERSE},
    {Mode::srcOut, PIXMAN_OP_OUT},
    {Mode::dstOut, PIXMAN_OP_OUT_REVERSE},
    {Mode::multiply, PIXMAN_OP_MULTIPLY},
    {Mode::screen, PIXMAN_OP_SCREEN},
    {Mode::overlay, PIXMAN_OP_OVERLAY},
    {Mode::dodge, PIXMAN_OP_COLOR_DODGE},
    {Mode::burn, PIXMAN_OP_COLOR_BURN},
    {Mode::add, PIXMAN_OP_ADD},
    {Mode::difference, PIXMAN_OP_DIFFERENCE},
    {Mode::darken, PIXMAN_OP_DARKEN},
    {Mode::lighten, PIXMAN_OP_LIGHTEN},
    {Mode::softLight, PIXMAN_OP_SOFT_LIGHT},
    {Mode::hardLight, PIXMAN_OP_HARD_LIGHT},
    {Mode::hue, PIXMAN_OP_HSL_HUE},
    {Mode::saturation, PIXMAN_OP_HSL_SATURATION},
    {Mode::value, PIXMAN_OP_HSL_LUMINOSITY},
    {Mode::color, PIXMAN_OP_HSL_COLOR},
};

class Pixman : public Peer {
public:
    explicit Pixman(int size)
        : size_(size), aBytes_(makePixels(countOf(size), 4, 1, true)),
          bBytes_(makePixels(countOf(size), 4, 2, true)), maskBytes_(makePixels(countOf(size), 1, 3)) {
        const auto imageOf = [&](pixman_format_code_t format, std::vector<uint8_t> &bytes, int stride) {
            return pixman_image_create_bits(format, size, size, reinterpret_cast<uint32_t *>(bytes.data()),
                                            stride);
        };
        a_ = imageOf(PIXMAN_a8r8g8b8, aBytes_, 4 * size);
        b_ = imageOf(PIXMAN_a8r8g8b8, bBytes_, 4 * size);
        mask_ = imageOf(PIXMAN_a8, maskBytes_, size);
    }
    ~Pixman() override {
        pixman_image_unref(a_);
        pixman_image_unref(b_);
        pixman_image_unref(mask_);
    }
    const char *name() const override { return "pixman"; }
    bool has(Mode mode, bool) const override { return find(pixmanOperators, mode) != nullptr; }
    void paint(Mode mode, bool masked) override {
        const auto op = static_cast<pixman_op_t>(find(pixmanOperators, mode)->value);
        pixman_image_composite32(op, b_, masked ? mask_ : nullptr, a_, 0, 0, 0, 0, 0, 0, size_, size_);
    }

private:
    const int size_;
    std::vector<uint8_t> aBytes_, bBytes_, maskBytes_;
    pixman_image_t *a_, *b_, *mask_;
};

} // namespace

std::unique_ptr<Peer> makePixmanPeer(int size) {
    return std::make_unique<Pixman>(size);
}
#else
std::unique_ptr<Peer> makePixmanPeer(int) {
    return nullptr;
}
#endif

#ifdef BENCH_WITH_CAIRO
namespace {

constexpr Operator cairoOperators[] = {
    {Mode::clear, CAIRO_OPERATOR_CLEAR},
    {Mode::src, CAIRO_OPERATOR_SOURCE},
    {Mode::srcOver, CAIRO_OPERATOR_OVER},
    {Mode::dstOver, CAIRO_OPERATOR_DEST_OVER},
    {Mode::srcIn, CAIRO_OPERATOR_IN},
    {Mode::dstIn, CAIRO_OPERATOR_DEST_IN},
    {Mode::srcOut, CAIRO_OPERATOR_OUT},
    {Mode::dstOut, CAIRO_OPERATOR_DEST_OUT},
    {Mode::multiply, CAIRO_OPERATOR_MULTIPLY},
    {Mode::screen, CAIRO_OPERATOR_SCREEN},
    {Mode::overlay, CAIRO_OPERATOR_OVERLAY},
    {Mode::dodge, CAIRO_OPERATOR_COLOR_DODGE},
    {Mode::burn, CAIRO_OPERATOR_COLOR_BURN},
    {Mode::add, CAIRO_OPERATOR_ADD},
    {Mode::difference, CAIRO_OPERATOR_DIFFERENCE},
    {Mode::darken, CAIRO_OPERATOR_DARKEN},
    {Mode::lighten, CAIRO_OPERATOR_LIGHTEN},
    {Mode::softLight, CAIRO_OPERATOR_SOFT_LIGHT},
    {Mode::hardLight, CAIRO_OPERATOR_HARD_LIGHT},
    {Mode::hue, CAIRO_OPERATOR_HSL_HUE},
    {Mode::saturation, CAIRO_OPERATOR_HSL_SATURATION},
    {Mode::value, CAIRO_OPERATOR_HSL_LUMINOSITY},
    {Mode::color, CAIRO_OPERATOR_HSL_COLOR},
};

class Cairo : public Peer {
public:
    explicit Cairo(int size)
        : aBytes_(makePixels(countOf(size), 4, 1, true)), bBytes_(makePixels(countOf(size), 4, 2, true)) {
        const auto surfaceOf = [&](std::vector<uint8_t> &bytes) {
            return cairo_image_surface_create_for_data(bytes.data(), CAIRO_FORMAT_ARGB32, size, size,
                                                       4 * size);
        };
        a_ = surfaceOf(aBytes_);
        b_ = surfaceOf(bBytes_);
    }
    ~Cairo() override {
        cairo_surface_destroy(a_);
        cairo_surface_destroy(b_);
    }
    const char *name() const override { return "cairo"; }
    bool has(Mode mode, bool masked) const override {
        return !masked && find(cairoOperators, mode) != nullptr;
    }
    void paint(Mode mode, bool) override {
        cairo_t *const context = cairo_create(a_);
        cairo_set_operator(context, static_cast<cairo_operator_t>(find(cairoOperators, mode)->value));
        cairo_set_source_surface(context, b_, 0, 0);
        cairo_paint(context);
        cairo_destroy(context);
    }

private:
    std::vector<uint8_t> aBytes_, bBytes_;
    cairo_surface_t *a_, *b_;
};

} // namespace

std::unique_ptr<Peer> makeCairoPeer(int size) {
    return std::make_unique<Cairo>(size);
}
#else
std::unique_ptr<Peer> makeCairoPeer(int) {
    return nullptr;
}
#endif

#ifndef BENCH_WITH_QT
std::unique_ptr<Peer> makeQtPeer(int) {
    return nullptr;
}
#endif

std::vector<std::unique_ptr<Peer>> makePeers(int size) {
    std::vector<std::unique_ptr<Peer>> peers;
    const auto add = [&](const char *name, std::unique_ptr<Peer> peer) {
        if (peer == nullptr)
            std::fprintf(stderr, "built without %s: its columns are left out\n", name);
        else
            peers.push_back(std::move(peer));
    };
    add("pixman", makePixmanPeer(size));
    add("cairo", makeCairoPeer(size));
    add("Qt 5", makeQtPeer(size));
    return peers;
}

} // namespace bench
