#include "drawing/vtk/Actors.h"

#include "drawing/vtk/PictureActor.h"
#include "drawing/vtk/PolyData.h"

#include <algorithm>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkShaderProperty.h>

namespace kesview {
namespace {

constexpr Color opaque = {255, 255, 255, 255};

void setColor(vtkProperty& property, const Color& color) {
    property.SetColor(color[0] / 255.0, color[1] / 255.0, color[2] / 255.0);
    property.SetOpacity(color[3] / 255.0);
}

vtkSmartPointer<PictureActor> makeActorOf(vtkPolyData* data, const Color& color) {
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(data);
    mapper->ScalarVisibilityOff();
    auto actor = vtkSmartPointer<PictureActor>::New();
    actor->SetMapper(mapper);
    setColor(*actor->GetProperty(), color);
    if (isTranslucent(color))
        actor->BeTranslucent();
    return actor;
}

/// Software drivers lose upright lines of one pixel that run between two columns of pixels.
constexpr float thinnest = 1.2F;

/// The colour as it is, at every angle.
void setUnlit(vtkProperty& property) {
    property.LightingOff();
    property.SetAmbient(0);
    property.SetDiffuse(1);
}

/// Turns the normal towards the eye, by the triangle itself: where a normal and the order of
/// corners contradict each other, as they do in mirrored parts and some meshes, VTK turns it away.
constexpr const char* turnNormal =
    "vec3 side = cross(dFdx(vertexVC.xyz), dFdy(vertexVC.xyz));\n"
    "if (cameraParallel == 1 ? side.z < 0.0 : dot(side, vertexVC.xyz) > 0.0) side = -side;\n"
    "if (dot(normalVCVSOutput, side) < 0.0) normalVCVSOutput = -normalVCVSOutput;\n"
    "//VTK::Light::Impl\n";

/// Like painted metal: mostly the colour itself, a faint and wide highlight.
void setLit(vtkActor& actor) {
    vtkProperty& property = *actor.GetProperty();
    property.SetAmbient(0.2);
    property.SetDiffuse(0.9);
    property.SetSpecular(0.06);
    property.SetSpecularPower(12);
    actor.GetShaderProperty()->AddFragmentShaderReplacement("//VTK::Light::Impl", true, turnNormal,
                                                            false);
}

vtkSmartPointer<PictureActor> makeSurface(const TriangleBatch& batch) {
    vtkSmartPointer<PictureActor> actor = makeActorOf(toPolyData(batch), batch.color);
    if (batch.lit)
        setLit(*actor);
    else
        setUnlit(*actor->GetProperty());
    if (batch.normals.empty())
        actor->GetProperty()->SetInterpolationToFlat();
    return actor;
}

}  // namespace

vtkSmartPointer<vtkActor> makeModelActor(const TriangleBatch& batch) {
    vtkSmartPointer<PictureActor> actor = makeSurface(batch);
    actor->GiveWayToLines();
    return actor;
}

vtkSmartPointer<vtkActor> makeAnnotationActor(const TriangleBatch& batch) {
    return makeSurface(batch);
}

vtkSmartPointer<vtkActor> makeActor(const LineBatch& batch) {
    vtkSmartPointer<PictureActor> actor = makeActorOf(toPolyData(batch), batch.color);
    setUnlit(*actor->GetProperty());
    actor->GetProperty()->SetLineWidth(std::max(batch.width, thinnest));
    return actor;
}

vtkSmartPointer<vtkActor> makeActor(const PointBatch& batch) {
    vtkSmartPointer<PictureActor> actor = makeActorOf(toPolyData(batch), batch.color);
    setUnlit(*actor->GetProperty());
    actor->GetProperty()->SetPointSize(batch.size);
    return actor;
}

vtkSmartPointer<vtkActor> makeActor(const TranslucentTriangles& triangles) {
    vtkSmartPointer<PictureActor> actor = makeActorOf(toPolyData(triangles), opaque);
    actor->GetMapper()->ScalarVisibilityOn();
    actor->BeTranslucent();
    if (triangles.model)
        actor->GiveWayToLines();
    if (triangles.lit)
        setLit(*actor);
    else
        setUnlit(*actor->GetProperty());
    return actor;
}

}  // namespace kesview
