#include "sheen/Layer.h"

#include <algorithm>
#include <iterator>

#include <oxlume/LxRect.h>

namespace lx {

LxSheenLayer &LxSheenLayer::operator=(const LxSheenLayer &other) {
    if (this == &other)
        return *this;
    LxSheenSurface::operator=(other);
    reserved = other.reserved;
    std::copy(std::begin(other.status), std::end(other.status), status);
    name = other.name;
    compositeMode = other.compositeMode;
    opacity = other.opacity;
    color = other.color;
    image.reset();
    bounds = other.bounds;
    return *this;
}

void LxSheenLayer::Reset() {
    LxSheenSurface::Reset();
    compositeMode = compositeAdd;
    opacity = 1.0;
    color = {128, 128, 128, 255};
    image.reset();
    setEnabled(true);
    bounds = LxRectD_0;
}

} // namespace lx
