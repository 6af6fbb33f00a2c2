#include "gc/renderers/OpenGLPolygons.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include <oxlume/LxMem.h>

#include "path/PathWalk.h"

namespace lx {
namespace {

// A path that flattens to fewer segments than this is a polygon as it stands.
constexpr int32_t fewestTessellatedLines = 5;

struct Vertex {
    GLdouble coordinates[3];
};

// ---- Where contours cross ----

// A vertex that the tessellator asked for, to be kept until the polygon ends.
struct CrossingVertex {
    Vertex vertex;
    CrossingVertex *next;
};

// The vertices of the polygon under way. It ends before the call that began it returns.
thread_local CrossingVertex *crossings = nullptr;

// The neighbours and their weights do not matter: there is nothing but coordinates to interpolate, and the
// tessellator hands these over. Without memory `out` is null, and it gives the polygon up.
void combine(GLdouble coordinates[3], void *[4], GLfloat[4], void **out) {
    auto *crossing = static_cast<CrossingVertex *>(std::malloc(sizeof(CrossingVertex)));
    *out = crossing;
    if (crossing == nullptr)
        return;
    std::copy_n(coordinates, 3, crossing->vertex.coordinates);
    crossing->next = crossings;
    crossings = crossing;
}

void releaseCrossings() {
    while (crossings != nullptr) {
        CrossingVertex *const next = crossings->next;
        std::free(crossings);
        crossings = next;
    }
}

// ---- The two ways to draw ----

class PolygonPen : public BasicPen<PolygonPen> {
public:
    void subpathBegins(const LxPointD &point) { glVertex2d(point.x, point.y); }
    void segment(const LxPointD &, const LxPointD &to) { glVertex2d(to.x, to.y); }
};

// How many vertices a walk really gives. LxPath_Info only estimates: its pen stays where it is at a move.
class VertexCounter : public BasicPen<VertexCounter> {
public:
    void subpathBegins(const LxPointD &) { ++count; }
    void segment(const LxPointD &, const LxPointD &) { ++count; }

    int64_t count = 0;
};

class TessellatorPen : public BasicPen<TessellatorPen> {
public:
    // The tessellator keeps the vertices' addresses until the polygon ends.
    TessellatorPen(GLUtesselator *tessellator, Vertex *vertices)
        : tessellator_(tessellator), next_(vertices) {}

    void subpathBegins(const LxPointD &point) {
        gluTessBeginContour(tessellator_);
        add(point);
    }
    void segment(const LxPointD &, const LxPointD &to) { add(to); }
    // On purpose: only a close ends a contour. The tessellator itself ends one that is open when the next
    // begins, or at the polygon's end.
    void close() {
        drawClose(*this);
        gluTessEndContour(tessellator_);
    }

private:
    void add(const LxPointD &point) {
        // The tessellator's sorting does not survive coordinates that compare with nothing.
        if (!std::isfinite(point.x) || !std::isfinite(point.y))
            return;
        Vertex *const vertex = next_++;
        *vertex = {{point.x, point.y, 0}};
        gluTessVertex(tessellator_, vertex->coordinates, vertex);
    }

    GLUtesselator *tessellator_;
    Vertex *next_;
};

void drawOnePolygon(const LxPath &path) {
    glBegin(GL_POLYGON);
    PolygonPen pen;
    walkItems(path, nullptr, pen);
    glEnd();
}

void tessellate(GLUtesselator *tessellator, const LxPath &path, int32_t estimatedPoints) {
    VertexCounter counter;
    walkItems(path, nullptr, counter);
    const int64_t room = std::max<int64_t>(counter.count, estimatedPoints);
    if (room > std::numeric_limits<uint32_t>::max() / int64_t{sizeof(Vertex)})
        return;
    auto *vertices = static_cast<Vertex *>(LxMem_malloc(static_cast<uint32_t>(room * sizeof(Vertex))));
    if (vertices == nullptr)
        return;
    gluTessBeginPolygon(tessellator, nullptr);
    TessellatorPen pen(tessellator, vertices);
    walkItems(path, nullptr, pen);
    gluTessEndPolygon(tessellator);
    releaseCrossings();
    LxMem_free(vertices);
}

using TessellatorCallback = void (*)();

template <class Function>
void setCallback(GLUtesselator *tessellator, GLenum which, Function *function) {
    gluTessCallback(tessellator, which, reinterpret_cast<TessellatorCallback>(function));
}

} // namespace

GLUtesselator *createTessellator() {
    GLUtesselator *const tessellator = gluNewTess();
    if (tessellator == nullptr)
        return nullptr;
    setCallback(tessellator, GLU_TESS_BEGIN, glBegin);
    setCallback(tessellator, GLU_TESS_VERTEX, glVertex2dv);
    setCallback(tessellator, GLU_TESS_END, glEnd);
    // Errors pass in silence: this only turns a number into a text, which nobody reads.
    setCallback(tessellator, GLU_TESS_ERROR, gluErrorString);
    setCallback(tessellator, GLU_TESS_COMBINE, combine);
    gluTessProperty(tessellator, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    return tessellator;
}

void drawPolygons(GLUtesselator *tessellator, const LxPath &path) {
    const LxPathInfo info = LxPath_Info(&path, nullptr);
    if (info.lines < fewestTessellatedLines)
        drawOnePolygon(path);
    else
        tessellate(tessellator, path, info.points);
}

} // namespace lx
