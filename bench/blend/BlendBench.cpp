// A table of all modes, RGBA onto RGBA in place, beside memcpy of the same bytes and beside the operators of
// the same name of pixman and cairo; then the cells, the masks and half opacities, and a plain loop that the
// compiler may vectorise.
//
//     bench_blend [SIZE...]        sides of square images, by default 256 and 1024
//
// Read ratios, and only within one run. The peers blend premultiplied pixels, so their arithmetic is not
// ours: their operators multiply both alphas in, and ours mix straight colours by one weight.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <oxlume/LxBlend.h>

#include "blend/Mode.h"
#include "foundation/VectorLevel.h"

#ifdef BENCH_WITH_PIXMAN_1
#include <pixman.h>
#endif
#ifdef BENCH_WITH_CAIRO
#include <cairo.h>
#endif

namespace {

using lx::Mode;

// Megapixels a second, the best of several tries of a few milliseconds each.
double rateOf(size_t pixels, const std::function<void()> &work) {
    using Clock = std::chrono::steady_clock;
    const auto seconds = [&](int times) {
        const auto start = Clock::now();
        for (int i = 0; i < times; ++i)
            work();
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    int times = 1;
    while (seconds(times) < 0.002)
        times *= 2;
    double best = 1e9;
    for (int i = 0; i < 9; ++i)
        best = std::min(best, seconds(times) / times);
    return static_cast<double>(pixels) / best / 1e6;
}

// Random pixels of every alpha, straight or premultiplied, at an address of its own.
std::vector<uint8_t> makePixels(size_t count, int bytes, unsigned seed, bool premultiplied = false) {
    std::mt19937 random(seed);
    std::vector<uint8_t> pixels(count * static_cast<size_t>(bytes) + 64);
    for (uint8_t &byte : pixels)
        byte = static_cast<uint8_t>(random());
    for (size_t i = 0; premultiplied && i < 4 * count; ++i) {
        if (i % 4 != 3)
            pixels[i] = static_cast<uint8_t>(pixels[i] * pixels[i | 3] / 255);
    }
    return pixels;
}

struct Peer {
    double rate = 0;
    const char *name = "";
};

// The operator of the same name, or 0.
struct Operators {
    Mode mode;
    int pixman, cairo;
};

#if defined(BENCH_WITH_PIXMAN_1) && defined(BENCH_WITH_CAIRO)
constexpr Operators operators[] = {
    {Mode::clear, PIXMAN_OP_CLEAR, CAIRO_OPERATOR_CLEAR},
    {Mode::src, PIXMAN_OP_SRC, CAIRO_OPERATOR_SOURCE},
    {Mode::srcOver, PIXMAN_OP_OVER, CAIRO_OPERATOR_OVER},
    {Mode::dstOver, PIXMAN_OP_OVER_REVERSE, CAIRO_OPERATOR_DEST_OVER},
    {Mode::srcIn, PIXMAN_OP_IN, CAIRO_OPERATOR_IN},
    {Mode::dstIn, PIXMAN_OP_IN_REVERSE, CAIRO_OPERATOR_DEST_IN},
    {Mode::srcOut, PIXMAN_OP_OUT, CAIRO_OPERATOR_OUT},
    {Mode::dstOut, PIXMAN_OP_OUT_REVERSE, CAIRO_OPERATOR_DEST_OUT},
    {Mode::multiply, PIXMAN_OP_MULTIPLY, CAIRO_OPERATOR_MULTIPLY},
    {Mode::screen, PIXMAN_OP_SCREEN, CAIRO_OPERATOR_SCREEN},
    {Mode::overlay, PIXMAN_OP_OVERLAY, CAIRO_OPERATOR_OVERLAY},
    {Mode::dodge, PIXMAN_OP_COLOR_DODGE, CAIRO_OPERATOR_COLOR_DODGE},
    {Mode::burn, PIXMAN_OP_COLOR_BURN, CAIRO_OPERATOR_COLOR_BURN},
    {Mode::add, PIXMAN_OP_ADD, CAIRO_OPERATOR_ADD},
    {Mode::difference, PIXMAN_OP_DIFFERENCE, CAIRO_OPERATOR_DIFFERENCE},
    {Mode::darken, PIXMAN_OP_DARKEN, CAIRO_OPERATOR_DARKEN},
    {Mode::lighten, PIXMAN_OP_LIGHTEN, CAIRO_OPERATOR_LIGHTEN},
    {Mode::softLight, PIXMAN_OP_SOFT_LIGHT, CAIRO_OPERATOR_SOFT_LIGHT},
    {Mode::hardLight, PIXMAN_OP_HARD_LIGHT, CAIRO_OPERATOR_HARD_LIGHT},
    {Mode::hue, PIXMAN_OP_HSL_HUE, CAIRO_OPERATOR_HSL_HUE},
    {Mode::saturation, PIXMAN_OP_HSL_SATURATION, CAIRO_OPERATOR_HSL_SATURATION},
    {Mode::value, PIXMAN_OP_HSL_LUMINOSITY, CAIRO_OPERATOR_HSL_LUMINOSITY},
    {Mode::color, PIXMAN_OP_HSL_COLOR, CAIRO_OPERATOR_HSL_COLOR},
};

class Peers {
public:
    explicit Peers(int size)
        : size_(size), a_(makePixels(count(), 4, 1, true)), b_(makePixels(count(), 4, 2, true)),
          mask_(makePixels(count(), 1, 3)) {
        a = pixman_image_create_bits(PIXMAN_a8r8g8b8, size, size, words(a_), size * 4);
        b = pixman_image_create_bits(PIXMAN_a8r8g8b8, size, size, words(b_), size * 4);
        mask = pixman_image_create_bits(PIXMAN_a8, size, size, words(mask_), size);
        const auto surfaceOf = [&](std::vector<uint8_t> &pixels) {
            return cairo_image_surface_create_for_data(pixels.data(), CAIRO_FORMAT_ARGB32, size, size,
                                                       size * 4);
        };
        cairoA = surfaceOf(a_);
        cairoB = surfaceOf(b_);
    }
    Peers(const Peers &) = delete;
    Peers &operator=(const Peers &) = delete;
    ~Peers() {
        cairo_surface_destroy(cairoA);
        cairo_surface_destroy(cairoB);
        pixman_image_unref(a);
        pixman_image_unref(b);
        pixman_image_unref(mask);
    }

    Peer fastest(Mode mode, bool masked = false) const {
        for (const Operators &row : operators) {
            if (row.mode == mode) {
                const double ofPixman = rateOf(count(), [&] { paint(row.pixman, masked); });
                const double ofCairo = masked ? 0 : rateOf(count(), [&] { paintByCairo(row.cairo); });
                return ofCairo > ofPixman ? Peer{ofCairo, "cairo"} : Peer{ofPixman, "pixman"};
            }
        }
        return {};
    }

private:
    size_t count() const { return static_cast<size_t>(size_) * static_cast<size_t>(size_); }
    static uint32_t *words(std::vector<uint8_t> &bytes) { return reinterpret_cast<uint32_t *>(bytes.data()); }

    void paint(int op, bool masked) const {
        pixman_image_composite32(static_cast<pixman_op_t>(op), b, masked ? mask : nullptr, a, 0, 0, 0, 0, 0,
                                 0, size_, size_);
    }
    void paintByCairo(int op) const {
        cairo_t *context = cairo_create(cairoA);
        cairo_set_operator(context, static_cast<cairo_operator_t>(op));
        cairo_set_source_surface(context, cairoB, 0, 0);
        cairo_paint(context);
        cairo_destroy(context);
    }

    const int size_;
    std::vector<uint8_t> a_, b_, mask_;
    pixman_image_t *a, *b, *mask;
    cairo_surface_t *cairoA, *cairoB;
};
#else
struct Peers {
    explicit Peers(int) { std::printf("without pixman and cairo: no peers\n"); }
    Peer fastest(Mode, bool = false) const { return {}; }
};
#endif

// Straight-alpha Multiply as anyone would write it: the floor of floors.
[[gnu::noinline]] void plainMultiply(uint8_t *a, const uint8_t *b, size_t pixels) {
    for (size_t i = 0; i < 4 * pixels; i += 4) {
        const unsigned w = b[i + 3];
        for (size_t c = 0; c < 3; ++c) {
            const unsigned f = (a[i + c] * b[i + c] + 127u) / 255;
            a[i + c] = static_cast<uint8_t>((f * w + a[i + c] * (255 - w) + 127) / 255);
        }
        a[i + 3] = std::max(a[i + 3], b[i + 3]);
    }
}

class Bench {
public:
    explicit Bench(int size)
        : size_(size), a_(makePixels(count(), 4, 1)), b_(makePixels(count(), 4, 2)),
          mask_(makePixels(count(), 1, 3)) {}

    double copying() {
        return rateOf(count(), [&] {
            std::memcpy(a_.data(), b_.data(), 4 * count());
            asm volatile("" ::"r"(a_.data()) : "memory");
        });
    }

    double plainLoop() {
        return rateOf(count(), [&] { plainMultiply(a_.data(), b_.data(), count()); });
    }

    double ours(const LxBlend &blend, bool masked = false, int out = 2, int a = 2, int b = 2) {
        const auto kernel = LxBlend_SelectMapBlendFunction(out, a, b);
        const auto strideOf = [&](int type) { return size_ * (type == 0 ? 1 : type == 1 ? 3 : 4); };
        std::vector<uint8_t> other(4 * count());
        uint8_t *const to = out == a ? a_.data() : other.data();
        const auto side = static_cast<uint32_t>(size_);
        return rateOf(count(), [&] {
            kernel(&blend, to, a_.data(), b_.data(), masked ? mask_.data() : nullptr, strideOf(out),
                   strideOf(a), strideOf(b), size_, side, side);
        });
    }

private:
    size_t count() const { return static_cast<size_t>(size_) * static_cast<size_t>(size_); }

    const int size_;
    std::vector<uint8_t> a_, b_, mask_;
};

LxBlend blendOf(Mode mode, int opacity = 255) {
    return LxBlend(static_cast<int32_t>(mode), opacity);
}

void printRow(const char *name, double rate, double memcpyRate, const Peer &peer) {
    std::printf("%-22s %8.0f %9.2f", name, rate, rate / memcpyRate);
    if (peer.rate > 0)
        std::printf(" %9.2f %s", rate / peer.rate, peer.name);
    std::printf("\n");
}

void printTable(int size) {
    Bench bench(size);
    const Peers peers(size);
    const double copying = bench.copying();
    std::printf("\n%d x %d, level %s; memcpy %.0f MP/s\n", size, size, lx::vectorLevelName(lx::vectorLevel()),
                copying);
    std::printf("%-22s %8s %9s %9s\n", "mode", "MP/s", "of memcpy", "of peer");
    for (int mode = 0; mode < lx::modeCount; ++mode) {
        const auto blend = blendOf(static_cast<Mode>(mode));
        printRow(LxBlend_ModeName(mode), bench.ours(blend), copying, peers.fastest(static_cast<Mode>(mode)));
    }
    const Peer over = peers.fastest(Mode::srcOver), overMasked = peers.fastest(Mode::srcOver, true);
    printRow("SrcOver half", bench.ours(blendOf(Mode::srcOver, 128)), copying, over);
    printRow("SrcOver masked", bench.ours(blendOf(Mode::srcOver), true), copying, overMasked);
    printRow("SrcOver half masked", bench.ours(blendOf(Mode::srcOver, 128), true), copying, overMasked);
    printRow("Multiply masked", bench.ours(blendOf(Mode::multiply), true), copying,
             peers.fastest(Mode::multiply, true));
    printRow("plain Multiply loop", bench.plainLoop(), copying, {});
    for (int cell = 0; cell < 27; ++cell) {
        const int out = cell / 9, a = cell / 3 % 3, b = cell % 3;
        static constexpr const char *names[] = {"A", "RGB", "RGBA"};
        const std::string name = std::string("Multiply ") + names[out] + ' ' + names[a] + ' ' + names[b];
        LxBlend blend = blendOf(Mode::multiply);
        if (out == 0 && a == 0 && b == 2)
            LxBlend_SetChannel(&blend, 5); // its rgba channel draws nothing
        printRow(name.c_str(), bench.ours(blend, false, out, a, b), copying, {});
    }
}

} // namespace

int main(int argc, char **argv) {
    if (const char *name = std::getenv("OXLUME_VECTOR_LEVEL");
        name != nullptr && std::strcmp(name, "baseline") == 0)
        lx::capVectorLevel(lx::VectorLevel::baseline);
    if (argc < 2) {
        printTable(256);
        printTable(1024);
    }
    for (int i = 1; i < argc; ++i) {
        const int size = std::atoi(argv[i]);
        if (size < 1 || size > 16384) {
            std::fprintf(stderr, "bench_blend [SIZE...]: sizes are 1 to 16384\n");
            return 1;
        }
        printTable(size);
    }
    return 0;
}
