// A world of small objects that an input plays with: it says which functions of the library are called, one
// after the other, and with which arguments.
//
// Arguments are read by their types. Most are sensible; some are null, not a number or beyond all bounds.
#pragma once

#include <array>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

#include <oxlume/oxlume.h>

#include "path/Path.h"

namespace lx::fuzz {

// The bytes of an input, and zeros behind them.
class Input {
public:
    Input(const uint8_t *data, size_t size) : bytes_(data, size) {}

    bool isEmpty() const { return bytes_.empty(); }

    uint8_t byte() {
        if (bytes_.empty())
            return 0;
        const uint8_t byte = bytes_[0];
        bytes_ = bytes_.subspan(1);
        return byte;
    }

    // 0 to `end`, which is not reached.
    int32_t below(int32_t end) { return byte() % end; }

private:
    std::span<const uint8_t> bytes_;
};

struct Deleter {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
    void operator()(LxImage *image) const { LxImage_Delete(image); }
    void operator()(LxGradient *gradient) const { LxGradient_Delete(gradient); }
    void operator()(LxGC *gc) const { LxGC_Delete(gc); }
};
template <class Object>
using Handle = std::unique_ptr<Object, Deleter>;

class World {
public:
    World(const uint8_t *data, size_t size) : input(data, size) {
        for (auto &path : paths_)
            path.reset(LxPath_Create());
    }

    // The argument that stands next in the input.
    template <class T>
    T next();

    // Calls the function. A path that it answers takes the place of one of the world's.
    template <class Result, class... Arguments>
    void call(Result (*function)(Arguments...)) {
        std::tuple<Arguments...> arguments{next<Arguments>()...}; // braces: from left to right
        if constexpr (std::same_as<Result, LxPath *>)
            keep(std::apply(function, arguments));
        else
            std::apply(function, arguments);
    }

    void keep(LxPath *path) {
        if (path != nullptr)
            paths_[static_cast<size_t>(input.below(pathCount))].reset(path);
    }

    // Whether the paths have grown to where further calls would only cost time. Checks them on the way.
    bool isFull() const {
        bool full = false;
        for (const auto &path : paths_) {
            if (path->count < 0 || path->count > path->capacity)
                __builtin_trap();
            full = full || path->count > mostWords;
        }
        return full;
    }

    // One of the world's paths.
    LxPath *path() { return paths_[static_cast<size_t>(input.below(pathCount))].get(); }

    Input input;
    std::array<Handle<LxImage>, 3> images; // made by who wants some
    std::array<Handle<LxGradient>, 2> gradients;
    LxGC *gc = nullptr;

private:
    static constexpr int32_t pathCount = 3;
    static constexpr int32_t mostWords = 4'000;

    bool isRare() { return input.below(32) == 0; }

    std::array<Handle<LxPath>, pathCount> paths_;
    LxMatrix matrix_ = {};
    LxRectD rectD_ = {};
    LxRectL rectL_ = {};
    LxBlend blend_ = {};
    LxPointD points_[8] = {};
    std::optional<int32_t> pointCount_; // of the points that were just taken as an argument
    int32_t outInts_[16] = {};
    size_t nextOut_ = 0;
    double outDouble_ = 0;
    void *outPointer_ = nullptr;
};

template <class T>
T World::next() {
    if constexpr (std::same_as<T, double>) {
        static constexpr double special[] = {0,
                                             -0.0,
                                             1e-300,
                                             -1e300,
                                             3e38,
                                             65536.5,
                                             2047.99,
                                             -2049,
                                             std::numeric_limits<double>::infinity(),
                                             std::numeric_limits<double>::quiet_NaN()};
        const uint8_t b = input.byte();
        return b < std::size(special) ? special[b] : (b - 100) * 0.25 + input.byte() / 1024.0;
    } else if constexpr (std::same_as<T, int32_t>) {
        if (pointCount_)
            return *std::exchange(pointCount_, std::nullopt);
        static constexpr int32_t special[] = {INT32_MIN, INT32_MAX, -1, 255, 256, 2048, 1 << 16, 1 << 24};
        const uint8_t b = input.byte();
        return b < std::size(special) ? special[b] : b % 80 - 16;
    } else if constexpr (std::same_as<T, uint32_t>) {
        return static_cast<uint32_t>(next<int32_t>());
    } else if constexpr (std::same_as<T, uint8_t>) {
        return input.byte();
    } else if constexpr (std::same_as<T, LxPath *> || std::same_as<T, const LxPath *>) {
        return isRare() ? nullptr : path();
    } else if constexpr (std::same_as<T, LxImage *> || std::same_as<T, const LxImage *>) {
        return isRare() ? nullptr : images[static_cast<size_t>(input.below(3))].get();
    } else if constexpr (std::same_as<T, LxGradient *>) {
        return isRare() ? nullptr : gradients[static_cast<size_t>(input.below(2))].get();
    } else if constexpr (std::same_as<T, LxGC *> || std::same_as<T, const LxGC *>) {
        return gc;
    } else if constexpr (std::same_as<T, const LxMatrix *>) {
        if (isRare())
            return nullptr;
        // Close to the identity, so that a row of them leads nowhere far, or beyond all numbers at once.
        const auto near = [&](double value) {
            static constexpr double rare[] = {0, 1e300, std::numeric_limits<double>::quiet_NaN()};
            return isRare() ? rare[input.below(3)] : value + (input.byte() - 128) / 128.0;
        };
        matrix_ = {near(1), near(0), near(0), near(0), near(1), near(0), 0, 0, 1};
        return &matrix_;
    } else if constexpr (std::same_as<T, LxPointD>) {
        return {next<double>(), next<double>()};
    } else if constexpr (std::same_as<T, const LxPointD *>) {
        const int32_t n = input.below(10) - 1; // also -1
        for (int32_t i = 0; i < n; ++i)
            points_[i] = next<LxPointD>();
        pointCount_ = n;
        return points_;
    } else if constexpr (std::same_as<T, LxRectD>) {
        return {next<double>(), next<double>(), next<double>(), next<double>()};
    } else if constexpr (std::same_as<T, LxRectL>) {
        return {next<int32_t>(), next<int32_t>(), next<int32_t>(), next<int32_t>()};
    } else if constexpr (std::same_as<T, const LxRectD *>) {
        return isRare() ? nullptr : &(rectD_ = next<LxRectD>());
    } else if constexpr (std::same_as<T, const LxRectL *>) {
        return input.below(2) == 0 ? nullptr : &(rectL_ = next<LxRectL>());
    } else if constexpr (std::same_as<T, LxColor>) {
        const LxRGBA rgba = {input.byte(), input.byte(), input.byte(), input.byte()};
        LxColor color = LxColor_RGBA_t(rgba);
        if (isRare())
            color.type = next<int32_t>();
        return color;
    } else if constexpr (std::same_as<T, LxBlend>) {
        const int32_t mode = input.below(48), opacity = input.byte(), channel = input.below(8);
        return LxBlend_WithChannel(mode, opacity, channel);
    } else if constexpr (std::same_as<T, LxBlend *> || std::same_as<T, const LxBlend *>) {
        return &(blend_ = next<LxBlend>());
    } else if constexpr (std::same_as<T, int32_t *>) {
        return &outInts_[nextOut_++ % std::size(outInts_)];
    } else if constexpr (std::same_as<T, double *>) {
        return &outDouble_;
    } else if constexpr (std::same_as<T, void **>) {
        return &outPointer_;
    } else {
        static_assert(std::same_as<T, const char *>);
        return isRare() ? nullptr : "text";
    }
}

// A call as a table of them holds it.
using Call = void (*)(World &);

template <auto function>
inline constexpr Call callOf = [](World &world) { world.call(function); };

// Makes the calls that the input asks for, a byte each and what its arguments take.
inline void play(World &world, std::span<const Call> calls) {
    constexpr int mostCalls = 40;
    for (int i = 0; i < mostCalls && !world.input.isEmpty() && !world.isFull(); ++i)
        calls[static_cast<size_t>(world.input.below(static_cast<int32_t>(calls.size())))](world);
}

} // namespace lx::fuzz
