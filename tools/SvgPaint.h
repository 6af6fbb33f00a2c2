// The gradients of an SVG file as those that the library has: ten stops along x, y or a diagonal of the
// shape, or from its sides inward.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <oxlume/LxGradient.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxRect.h>

#include "platform/XmlTree.h"
#include "tools/SvgValues.h"

namespace tool {

struct DeleteGradient {
    void operator()(LxGradient *gradient) const { LxGradient_Delete(gradient); }
};
using GradientHandle = std::unique_ptr<LxGradient, DeleteGradient>;

// The value of an attribute, or of the property of that name in the style attribute, which goes before it.
// Empty if the element has neither.
std::string_view propertyOf(const lx::XmlNode &element, std::string_view name);

// One of an attribute itself.
std::string_view attributeOf(const lx::XmlNode &element, std::string_view name);

struct SvgStop {
    double position; // 0 to 1, rising
    LxRGBA color;
};

// All gradients of a document, by their names; each is read once. The document must outlive them.
class SvgGradients {
public:
    // Percentages of gradients in the drawing's own units are of `width` and `height`.
    SvgGradients(const lx::XmlNode &document, double width, double height);

    bool has(std::string_view id) const { return byId_.contains(id); }

    // What fills `pixels` of the picture the way that the gradient fills `box` of the drawing, which
    // `toPixels` carries there. On a slanted line the nearest of the library's four directions is taken, its
    // ends at the right colours; a radial gradient runs from the sides inward. Null if there is no stop or no
    // memory.
    GradientHandle make(std::string_view id, const LxRectD &box, const LxMatrix &toPixels,
                        const LxRectD &pixels, double opacity) const;

private:
    // The numbers of both kinds.
    enum Number { x1, y1, x2, y2, centerX, centerY, radius, numberCount };

    // What one gradient tells itself.
    struct Gradient {
        bool radial = false;
        std::string_view base; // the name of the one that it takes the rest from
        std::optional<bool> ofBox;
        std::optional<LxMatrix> transform;
        std::optional<SvgLength> numbers[numberCount];
        std::vector<SvgStop> stops;
    };

    static Gradient read(const lx::XmlNode &element);
    std::vector<const Gradient *> chain(std::string_view id) const;

    double width_, height_;
    std::unordered_map<std::string_view, Gradient> byId_;
};

} // namespace tool
