/// @file
/// The sheen generator: procedural surfaces in layers.
#ifndef OXLUME_CPP_SHEEN_HPP
#define OXLUME_CPP_SHEEN_HPP

#include <memory>
#include <new>
#include <string>
#include <string_view>

#include <oxlume/LxExtras.h>
#include <oxlume/LxMem.h>
#include <oxlume/LxSheen.h>
#include <oxlume/cpp/Color.hpp>
#include <oxlume/cpp/Image.hpp>
#include <oxlume/cpp/Path.hpp>

namespace oxlume {

/// A parameter of a layer: kLxSheenHeight and its kin, 0 to 75.
using SheenIndex = LxSheenIndex;

/// The light of a sheen. Take one from Sheen::light, change it, give it back.
using SheenLight = LxSheenLight;

/// How a layer's height meets the height `a` under it; `b` is its own.
enum class SheenMode : uint32_t {
    Add = kLxSheenAdd,                       ///< a + b
    Subtract = kLxSheenSubtract,             ///< a - b
    Multiply = kLxSheenMultiply,             ///< a * b
    Paint = kLxSheenPaint,                   ///< only the colour is laid on
    Larger = kLxSheenLarger,                 ///< the larger
    Smaller = kLxSheenSmaller,               ///< the smaller
    AddInside = kLxSheenAddInside,           ///< a + b where a is not 0
    SubtractInside = kLxSheenSubtractInside, ///< a - b where a is not 0
    MultiplyInside = kLxSheenMultiplyInside, ///< a * b where a is not 0
    PaintAgain = kLxSheenPaintAgain,         ///< as Paint
    LargerInside = kLxSheenLargerInside,     ///< the larger where a is not 0
    SmallerInside = kLxSheenSmallerInside    ///< the smaller where a is not 0
};

/// A layer of a sheen's current descriptor, by its index: valid as long as the sheen. Setters can be chained;
/// what they set shows from the next render on. A layer that is not there takes every call and answers 0.
class SheenLayer {
public:
    /// Layer `index` of a sheen; a negative one is its current layer.
    SheenLayer(LxSheen *sheen, int32_t index) noexcept : sheen_(sheen), index_(index) {}

    /// Stores a parameter; nothing clamps it.
    SheenLayer &set(uint32_t parameter, double value) noexcept {
        LxSheen_SetLayerValue(sheen_, index_, parameter, value);
        return *this;
    }
    double get(uint32_t parameter) const noexcept {
        return LxSheen_LayerValue(sheen_, index_, parameter);
    } ///< A parameter.
    /// The layer's colour.
    SheenLayer &setColor(const Color &color) noexcept {
        LxSheen_SetLayerColor(sheen_, index_, color.rgba());
        return *this;
    }
    Color color() const noexcept { return LxSheen_LayerColor(sheen_, index_); } ///< The layer's colour.
    /// How it meets the layers under it.
    SheenLayer &setMode(SheenMode mode) noexcept {
        LxSheen_SetLayerMode(sheen_, index_, static_cast<uint32_t>(mode));
        return *this;
    }
    SheenMode mode() const noexcept {
        return SheenMode(LxSheen_LayerMode(sheen_, index_));
    } ///< How it meets them.
    /// The strength of its colour, 0 to 1; other numbers are ignored.
    SheenLayer &setOpacity(double opacity) noexcept {
        LxSheen_SetLayerOpacity(sheen_, index_, opacity);
        return *this;
    }
    double opacity() const noexcept {
        return LxSheen_LayerOpacity(sheen_, index_);
    } ///< The colour's strength.
    /// Switches it on or off.
    SheenLayer &setEnabled(bool enabled) noexcept {
        LxSheen_SetLayerEnabled(sheen_, index_, enabled ? 1 : 0);
        return *this;
    }
    bool isEnabled() const noexcept { return LxSheen_isLayerEnabled(sheen_, index_) != 0; } ///< On or off.
    /// Its name, which is copied.
    SheenLayer &setName(const char *name) noexcept {
        LxSheen_SetLayerName(sheen_, index_, name);
        return *this;
    }
    /// Its name, valid until it changes; null for a layer that is not there.
    const char *name() const noexcept { return LxSheen_LayerName(sheen_, index_); }

private:
    LxSheen *sheen_;
    int32_t index_;
};

/// A sheen that it owns: two descriptors, 0 and 1, each a stack of layers, rendered into pictures. A sheen
/// that was moved from takes every call and answers 0.
class Sheen {
public:
    /// A sheen of `size` by `size` pixels with one layer, rendered. Throws std::bad_alloc.
    explicit Sheen(int32_t size) : sheen_(detail::orThrow(LxSheen_Create(size))) {}
    /// Takes over a sheen of the C boundary, or null.
    explicit Sheen(LxSheen *sheen) noexcept : sheen_(sheen) {}

    /// A sheen between two descriptors, `t` of the way, 0 to 1; not rendered yet. Holds nothing where a sheen
    /// or descriptor is none, or `t` is no number. Throws std::bad_alloc.
    static Sheen between(double t, const Sheen &a, uint32_t descriptorA, const Sheen &b,
                         uint32_t descriptorB) {
        LxSheen *made = LxSheen_CreateBetween(t, a.get(), descriptorA, b.get(), descriptorB);
        if (made == nullptr && a && b && descriptorA < 2 && descriptorB < 2 && t == t)
            throw std::bad_alloc();
        return Sheen(made);
    }
    /// A sheen between this one's two descriptors.
    Sheen between(double t) const { return between(t, *this, 0, *this, 1); }

    /// The sheen of the C boundary, still owned.
    LxSheen *get() const noexcept { return sheen_.get(); }
    /// Hands the sheen of the C boundary over to the caller.
    LxSheen *release() noexcept { return sheen_.release(); }
    /// False once the sheen was moved from or released.
    explicit operator bool() const noexcept { return sheen_ != nullptr; }

    int32_t size() const noexcept { return LxSheen_Size(get()); } ///< Width and height in pixels.
    /// Resizes and renders both descriptors.
    void setSize(int32_t size) noexcept { LxSheen_SetSize(get(), size); }

    /// Which descriptor, 0 or 1, layers are looked up in.
    void setCurrentDescriptor(uint32_t descriptor) noexcept {
        LxSheen_SetCurrentDescriptor(get(), descriptor);
    }
    uint32_t currentDescriptor() const noexcept { return LxSheen_CurrentDescriptor(get()); } ///< That one.

    int32_t layerCount() const noexcept {
        return LxSheen_NumberOfLayers(get());
    } ///< In the current descriptor.
    /// A layer of the current descriptor, counted from the bottom.
    SheenLayer layer(int32_t index) noexcept { return {get(), index}; }
    /// Adds a white layer of default values on top, to both descriptors. Throws std::bad_alloc.
    SheenLayer addLayer(const char *name = "") {
        const int32_t index = LxSheen_AddLayer(get(), name);
        if (index < 0)
            throw std::bad_alloc();
        return layer(layerCount() - 1);
    }

    SheenLight light(uint32_t descriptor = 0) const noexcept {
        return LxSheen_Light(get(), descriptor);
    } ///< A descriptor's.
    /// Lights a descriptor. False for a number that is not finite.
    bool setLight(const SheenLight &light, uint32_t descriptor = 0) noexcept {
        return LxSheen_SetLight(get(), descriptor, light) != 0;
    }
    double alphaThreshold(uint32_t descriptor = 0) const noexcept {
        return LxSheen_AlphaThreshold(get(), descriptor);
    } ///< A descriptor's.
    /// The height above which a picture is opaque. False for a number that is not finite.
    bool setAlphaThreshold(double height, uint32_t descriptor = 0) noexcept {
        return LxSheen_SetAlphaThreshold(get(), descriptor, height) != 0;
    }

    /// Renders a descriptor and answers its picture, which the sheen owns: RGBA, valid until size or scale
    /// change. Of nothing where there is none.
    ImageRef render(uint32_t descriptor = 0) noexcept {
        return LxSheen_RenderDescriptor(get(), descriptor, 1);
    }
    ImageRef image() noexcept { return LxSheen_Image(get()); } ///< The current descriptor's last picture.
    ImageRef heights() noexcept { return LxSheen_FloatImage(get()); } ///< Its heights, floats 0 to 1.

    /// Replaces a descriptor's layers and light by those of a preset's text. False if it cannot be read, and
    /// then `message`, unless null, says why. Throws std::bad_alloc for want of room for the message.
    bool loadPreset(std::string_view text, uint32_t descriptor = 0, std::string *message = nullptr) {
        char line[512];
        const bool isLoaded =
            LxSheen_LoadPreset(get(), descriptor, text.data(), text.size(), line, sizeof line) != 0;
        if (message != nullptr)
            *message = line;
        return isLoaded;
    }
    /// A descriptor as a preset's text; empty where there is none. Throws std::bad_alloc.
    std::string preset(uint32_t descriptor = 0) const {
        struct Free {
            void operator()(char *text) const noexcept { LxMem_free(text); }
        };
        const std::unique_ptr<char, Free> text(LxSheen_CreatePreset(get(), descriptor));
        return sheen_ != nullptr && descriptor < 2 ? detail::orThrow(text.get()) : "";
    }

private:
    struct Delete {
        void operator()(LxSheen *sheen) const noexcept { LxSheen_Delete(sheen); }
    };
    std::unique_ptr<LxSheen, Delete> sheen_;
};

static_assert(sizeof(Sheen) == sizeof(LxSheen *), "a handle is a pointer");

} // namespace oxlume

#endif
