// Ten scenes that together use the whole library, each from nothing to a picture and back to nothing. They
// ask for no success: every step takes what the one before gave, null included, as a careless client would.
#pragma once

#include <vector>

#include <oxlume/LxImage.h>

namespace lx::test {

struct Scene {
    const char *name;
    // Draws, and answers the picture, which the caller deletes, or null.
    LxImage *(*draw)();
    bool mayEndProcess = false;
};

const std::vector<Scene> &scenes();

} // namespace lx::test
