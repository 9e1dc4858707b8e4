#include "drawing/vtk/Stage.h"

#include "drawing/vtk/Actors.h"
#include "drawing/vtk/Dashes.h"
#include "drawing/vtk/PolyData.h"

#include <vtkActor.h>
#include <vtkMapper.h>
#include <vtkPolyData.h>
#include <vtkRenderer.h>

namespace kesview {

Stage::Stage(const Picture& picture, const std::vector<TriangleBatch>& texts) : _picture(picture) {
    if (picture.clipping) {
        const Vector& point = picture.clipping->point;
        _plane->SetOrigin(point[0] - picture.origin[0], point[1] - picture.origin[1],
                          point[2] - picture.origin[2]);
        _plane->SetNormal(picture.clipping->normal.data());
    }
    addModel();
    addAnnotations(picture.annotationTriangles);
    addLines(picture.annotationLines, picture.clipsAnnotations);
    addAnnotations(texts);
}

Stage::~Stage() = default;

void Stage::PutInto(vtkRenderer& renderer) const {
    for (const auto* actors : {&_opaque, &_translucent}) {
        for (vtkActor* actor : *actors)
            renderer.AddActor(actor);
    }
}

void Stage::addModel() {
    const bool clipped = true;
    const bool model = true;
    for (const TriangleBatch& batch : _picture.triangles) {
        if (!isTranslucent(batch.color))
            add(makeModelActor(batch), batch.color, clipped);
    }
    addTranslucent(_picture.triangles, model, clipped);
    addLines(_picture.lines, clipped);
    for (const PointBatch& batch : _picture.points)
        add(makeActor(batch), batch.color, clipped);
}

void Stage::addAnnotations(const std::vector<TriangleBatch>& triangles) {
    const bool model = false;
    for (const TriangleBatch& batch : triangles) {
        if (!isTranslucent(batch.color))
            add(makeAnnotationActor(batch), batch.color, _picture.clipsAnnotations);
    }
    addTranslucent(triangles, model, _picture.clipsAnnotations);
}

void Stage::addLines(const std::vector<LineBatch>& batches, bool clipped) {
    for (const LineBatch& batch : batches) {
        vtkSmartPointer<vtkActor> actor = makeActor(batch);
        if (batch.dashed) {
            _dashed.push_back(cutIntoDashes(batch, _picture));
            actor = makeActor(_dashed.back());
        }
        add(actor, batch.color, clipped);
    }
}

void Stage::addTranslucent(const std::vector<TriangleBatch>& batches, bool model, bool clipped) {
    for (const TriangleBatch& batch : batches)
        checkTriangles(batch);
    for (const bool lit : {true, false}) {
        TranslucentTriangles sorted = sortTranslucent(batches, lit, _picture);
        if (sorted.points.empty())
            continue;
        sorted.model = model;
        _sorted.push_back(std::move(sorted));
        constexpr Color anyTranslucent = {};
        add(makeActor(_sorted.back()), anyTranslucent, clipped);
    }
}

void Stage::add(const vtkSmartPointer<vtkActor>& actor, const Color& color, bool clipped) {
    if (clipped && _picture.clipping)
        actor->GetMapper()->AddClippingPlane(_plane);
    (isTranslucent(color) ? _translucent : _opaque).push_back(actor);
}

}  // namespace kesview
