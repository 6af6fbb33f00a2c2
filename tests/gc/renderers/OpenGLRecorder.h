// What the renderer asks OpenGL and GLU for. The test program defines the functions that the renderer calls;
// each writes itself down and calls the real one.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include <GL/gl.h>
#include <GL/glu.h>

namespace lx::test {

using GLCalls = std::vector<std::string>;

// A call as it is written down: the name and the arguments.
template <class... Arguments>
std::string glCall(const char *name, const Arguments &...arguments) {
    std::ostringstream text;
    text.precision(12);
    text << name;
    ((text << ' ' << arguments), ...);
    return text.str();
}

// While it lives, calls are written down.
class GLRecorder {
public:
    GLRecorder();
    ~GLRecorder();
    GLRecorder(const GLRecorder &) = delete;
    GLRecorder &operator=(const GLRecorder &) = delete;

    // What was written down since the last time.
    GLCalls take();

    // Makes gluNewTess answer null.
    void refuseTessellators();
};

} // namespace lx::test
