// In a program without Quartz there is no canvas for it.

#include "tools/Canvas.h"
#include "tools/Failure.h"

namespace tool {

const bool hasQuartzCanvas = false;

std::unique_ptr<Canvas> makeQuartzCanvas(int32_t, int32_t) {
    throw Failure("--renderer quartz: this program was built without it");
}

} // namespace tool
