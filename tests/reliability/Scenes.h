// Ten scenes that together use the whole library, each from nothing to a picture and back to nothing. They
// ask for no success: every step takes what the one before gave, null included, as a careless client would.
#pragma once

#include <ostream>
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

// In the messages of tests.
inline void PrintTo(const Scene &scene, std::ostream *out) {
    *out << scene.name;
}

} // namespace lx::test
