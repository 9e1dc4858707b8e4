#include "drawing/vtk/Outline.h"

#include <GL/glu.h>
#include <deque>
#include <memory>

namespace kesview {
namespace {

/// What the tessellator reads and writes; its addresses stay as they are while it works.
struct Corner {
    std::array<GLdouble, 3> position = {};
    std::uint32_t index = 0;
};

struct Filling {
    std::deque<Corner> corners;
    FilledOutline result;

    Corner* Add(double x, double y) {
        corners.push_back({{x, y, 0}, std::uint32_t(result.points.size())});
        result.points.push_back({x, y});
        return &corners.back();
    }
};

void onVertex(void* corner, void* filling) {
    static_cast<Filling*>(filling)->result.triangles.push_back(static_cast<Corner*>(corner)->index);
}

void onCombine(GLdouble position[3], void* [4], GLfloat[4], void** corner, void* filling) {
    *corner = static_cast<Filling*>(filling)->Add(position[0], position[1]);
}

/// Asking to be told of edges keeps the tessellator from making strips and fans.
void onEdge(GLboolean, void*) {}

template <class Function>
_GLUfuncptr callback(Function* function) {
    return reinterpret_cast<_GLUfuncptr>(function);
}

using Tessellator = std::unique_ptr<GLUtesselator, void (*)(GLUtesselator*)>;

Tessellator makeTessellator() {
    Tessellator tessellator(gluNewTess(), gluDeleteTess);
    gluTessProperty(tessellator.get(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    gluTessNormal(tessellator.get(), 0, 0, 1);
    gluTessCallback(tessellator.get(), GLU_TESS_VERTEX_DATA, callback(onVertex));
    gluTessCallback(tessellator.get(), GLU_TESS_COMBINE_DATA, callback(onCombine));
    gluTessCallback(tessellator.get(), GLU_TESS_EDGE_FLAG_DATA, callback(onEdge));
    return tessellator;
}

}  // namespace

FilledOutline fill(const std::vector<Contour>& contours) {
    Filling filling;
    const Tessellator tessellator = makeTessellator();
    gluTessBeginPolygon(tessellator.get(), &filling);
    for (const Contour& contour : contours) {
        gluTessBeginContour(tessellator.get());
        for (const auto& point : contour) {
            Corner* corner = filling.Add(point[0], point[1]);
            gluTessVertex(tessellator.get(), corner->position.data(), corner);
        }
        gluTessEndContour(tessellator.get());
    }
    gluTessEndPolygon(tessellator.get());
    return filling.result;
}

}  // namespace kesview
