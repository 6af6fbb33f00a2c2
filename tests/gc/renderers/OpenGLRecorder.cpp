#include "tests/gc/renderers/OpenGLRecorder.h"

#include <dlfcn.h>
#include <utility>

namespace {

bool recording = false;
bool refusing = false;
lx::test::GLCalls calls;

// The tessellator may call its own functions by these names, to end a contour that is open. Those are not the
// renderer's calls.
bool inTessellator = false;

void write(std::string call) {
    if (recording)
        calls.push_back(std::move(call));
}

template <class Function>
Function *real(Function *, const char *name) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

template <class Function, class... Arguments>
void pass(Function *self, const char *name, Arguments... arguments) {
    write(lx::test::glCall(name, arguments...));
    real(self, name)(arguments...);
}

// For functions of the tessellator: `text` is what is written.
template <class Function, class... Arguments>
void passToTessellator(Function *self, const char *name, const std::string &text, Arguments... arguments) {
    if (!inTessellator)
        write(text);
    const bool outer = std::exchange(inTessellator, true);
    real(self, name)(arguments...);
    inTessellator = outer;
}

} // namespace

namespace lx::test {

GLRecorder::GLRecorder() {
    recording = true;
}
GLRecorder::~GLRecorder() {
    recording = false;
    refusing = false;
    calls.clear();
}
GLCalls GLRecorder::take() {
    return std::exchange(calls, {});
}
void GLRecorder::refuseTessellators() {
    refusing = true;
}

} // namespace lx::test

using lx::test::glCall;

extern "C" {

void glBegin(GLenum mode) {
    pass(glBegin, "glBegin", mode);
}
void glEnd() {
    pass(glEnd, "glEnd");
}
void glVertex2d(GLdouble x, GLdouble y) {
    pass(glVertex2d, "glVertex2d", x, y);
}
void glVertex2dv(const GLdouble *v) {
    write(glCall("glVertex2dv", v[0], v[1], v[2]));
    real(glVertex2dv, "glVertex2dv")(v);
}
void glColor4f(GLfloat r, GLfloat g, GLfloat b, GLfloat a) {
    pass(glColor4f, "glColor4f", r, g, b, a);
}
void glPolygonMode(GLenum face, GLenum mode) {
    pass(glPolygonMode, "glPolygonMode", face, mode);
}
void glClearColor(GLclampf r, GLclampf g, GLclampf b, GLclampf a) {
    pass(glClearColor, "glClearColor", r, g, b, a);
}
void glClear(GLbitfield mask) {
    pass(glClear, "glClear", mask);
}
void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    pass(glViewport, "glViewport", x, y, width, height);
}
void glMatrixMode(GLenum mode) {
    pass(glMatrixMode, "glMatrixMode", mode);
}
void glLoadIdentity() {
    pass(glLoadIdentity, "glLoadIdentity");
}
void glMultMatrixd(const GLdouble *m) {
    std::string text = "glMultMatrixd";
    for (int i = 0; i < 16; ++i)
        text += glCall("", m[i]);
    write(text);
    real(glMultMatrixd, "glMultMatrixd")(m);
}
void glRasterPos2i(GLint x, GLint y) {
    pass(glRasterPos2i, "glRasterPos2i", x, y);
}
void glDrawPixels(GLsizei width, GLsizei height, GLenum format, GLenum type, const GLvoid *pixels) {
    pass(glDrawPixels, "glDrawPixels", width, height, format, type, pixels);
}
void glFinish() {
    pass(glFinish, "glFinish");
}
void glFlush() {
    pass(glFlush, "glFlush");
}
void glEnable(GLenum what) {
    pass(glEnable, "glEnable", what);
}
void glDisable(GLenum what) {
    pass(glDisable, "glDisable", what);
}
void glBlendFunc(GLenum source, GLenum destination) {
    pass(glBlendFunc, "glBlendFunc", source, destination);
}
void glShadeModel(GLenum mode) {
    pass(glShadeModel, "glShadeModel", mode);
}

void gluOrtho2D(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top) {
    pass(gluOrtho2D, "gluOrtho2D", left, right, bottom, top);
}
GLUtesselator *gluNewTess() {
    write("gluNewTess");
    return refusing ? nullptr : real(gluNewTess, "gluNewTess")();
}
void gluDeleteTess(GLUtesselator *tessellator) {
    passToTessellator(gluDeleteTess, "gluDeleteTess", "gluDeleteTess", tessellator);
}
void gluTessCallback(GLUtesselator *tessellator, GLenum which, void (*function)()) {
    passToTessellator(gluTessCallback, "gluTessCallback", glCall("gluTessCallback", which), tessellator,
                      which, function);
}
void gluTessProperty(GLUtesselator *tessellator, GLenum which, GLdouble value) {
    passToTessellator(gluTessProperty, "gluTessProperty", glCall("gluTessProperty", which, value),
                      tessellator, which, value);
}
void gluTessBeginPolygon(GLUtesselator *tessellator, GLvoid *data) {
    passToTessellator(gluTessBeginPolygon, "gluTessBeginPolygon",
                      glCall("gluTessBeginPolygon", data != nullptr), tessellator, data);
}
void gluTessBeginContour(GLUtesselator *tessellator) {
    passToTessellator(gluTessBeginContour, "gluTessBeginContour", "gluTessBeginContour", tessellator);
}
void gluTessVertex(GLUtesselator *tessellator, GLdouble *place, GLvoid *data) {
    passToTessellator(gluTessVertex, "gluTessVertex", glCall("gluTessVertex", place[0], place[1], place[2]),
                      tessellator, place, data);
}
void gluTessEndContour(GLUtesselator *tessellator) {
    passToTessellator(gluTessEndContour, "gluTessEndContour", "gluTessEndContour", tessellator);
}
void gluTessEndPolygon(GLUtesselator *tessellator) {
    passToTessellator(gluTessEndPolygon, "gluTessEndPolygon", "gluTessEndPolygon", tessellator);
}
}
