#include "drawing/vtk/PolyData.h"

#include "drawing/Drawing.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vtkCellArray.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkTypeInt32Array.h>
#include <vtkUnsignedCharArray.h>

namespace kesview {
namespace {

[[noreturn]] void throwMalformed(const std::string& what) {
    throw DrawError("The picture cannot be drawn: " + what);
}

std::size_t countPoints(const std::vector<float>& points) {
    if (points.size() % 3 != 0)
        throwMalformed("its coordinates are no triples");
    if (points.size() / 3 > std::size_t(std::numeric_limits<std::int32_t>::max()))
        throwMalformed("one batch holds more than 2147483647 points");
    return points.size() / 3;
}

/// VTK takes arrays to write into; it only reads these.
vtkSmartPointer<vtkFloatArray> wrap(const std::vector<float>& triples) {
    constexpr int keepMemory = 1;
    auto array = vtkSmartPointer<vtkFloatArray>::New();
    array->SetNumberOfComponents(3);
    array->SetArray(const_cast<float*>(triples.data()), vtkIdType(triples.size()), keepMemory);
    return array;
}

vtkSmartPointer<vtkTypeInt32Array> wrap(const std::vector<std::uint32_t>& indices) {
    constexpr int keepMemory = 1;
    auto array = vtkSmartPointer<vtkTypeInt32Array>::New();
    auto* first = reinterpret_cast<std::int32_t*>(const_cast<std::uint32_t*>(indices.data()));
    array->SetArray(first, vtkIdType(indices.size()), keepMemory);
    return array;
}

/// first, first + step, first + 2 step, … @p count numbers.
vtkSmartPointer<vtkTypeInt32Array> countUp(std::size_t count, std::int32_t step) {
    auto array = vtkSmartPointer<vtkTypeInt32Array>::New();
    array->SetNumberOfValues(vtkIdType(count));
    std::int32_t number = 0;
    std::generate_n(array->GetPointer(0), count, [&] {
        const std::int32_t value = number;
        number += step;
        return value;
    });
    return array;
}

vtkSmartPointer<vtkPolyData> withPoints(const std::vector<float>& points) {
    vtkNew<vtkPoints> wrapped;
    wrapped->SetData(wrap(points));
    auto data = vtkSmartPointer<vtkPolyData>::New();
    data->SetPoints(wrapped);
    return data;
}

vtkSmartPointer<vtkTypeInt32Array> lineOffsets(const LineBatch& batch, std::size_t pointCount) {
    auto offsets = vtkSmartPointer<vtkTypeInt32Array>::New();
    offsets->SetNumberOfValues(vtkIdType(batch.starts.size() + 1));
    std::int32_t* offset = offsets->GetPointer(0);
    std::uint32_t last = 0;
    for (const std::uint32_t start : batch.starts) {
        if (start < last || start > pointCount)
            throwMalformed("a polyline does not start among its points");
        last = start;
        *offset++ = std::int32_t(start);
    }
    *offset = std::int32_t(pointCount);
    return offsets;
}

}  // namespace

void checkTriangles(const TriangleBatch& batch) {
    const std::size_t pointCount = countPoints(batch.points);
    if (!batch.normals.empty() && batch.normals.size() != batch.points.size())
        throwMalformed("a batch of triangles has not one normal for each point");
    if (batch.triangles.size() % 3 != 0 ||
        batch.triangles.size() > std::size_t(std::numeric_limits<std::int32_t>::max()))
        throwMalformed("the indices of its triangles are no triples, or too many");
    const auto isTooLarge = [&](std::uint32_t index) { return index >= pointCount; };
    if (std::any_of(batch.triangles.begin(), batch.triangles.end(), isTooLarge))
        throwMalformed("a triangle has a corner that is none of its points");
}

vtkSmartPointer<vtkPolyData> toPolyData(const TriangleBatch& batch) {
    checkTriangles(batch);
    auto data = withPoints(batch.points);
    if (!batch.normals.empty())
        data->GetPointData()->SetNormals(wrap(batch.normals));
    vtkNew<vtkCellArray> triangles;
    triangles->SetData(countUp(batch.triangles.size() / 3 + 1, 3), wrap(batch.triangles));
    data->SetPolys(triangles);
    return data;
}

vtkSmartPointer<vtkPolyData> toPolyData(const LineBatch& batch) {
    const std::size_t pointCount = countPoints(batch.points);
    auto data = withPoints(batch.points);
    if (batch.starts.empty())
        return data;
    if (batch.starts.front() != 0)
        throwMalformed("the first polyline of a batch does not start at its first point");
    vtkNew<vtkCellArray> lines;
    lines->SetData(lineOffsets(batch, pointCount), countUp(pointCount, 1));
    data->SetLines(lines);
    return data;
}

vtkSmartPointer<vtkPolyData> toPolyData(const PointBatch& batch) {
    const std::size_t pointCount = countPoints(batch.points);
    auto data = withPoints(batch.points);
    vtkNew<vtkCellArray> points;
    points->SetData(countUp(pointCount + 1, 1), countUp(pointCount, 1));
    data->SetVerts(points);
    return data;
}

vtkSmartPointer<vtkPolyData> toPolyData(const TranslucentTriangles& triangles) {
    constexpr int keepMemory = 1;
    auto data = withPoints(triangles.points);
    data->GetPointData()->SetNormals(wrap(triangles.normals));
    vtkNew<vtkUnsignedCharArray> colors;
    colors->SetNumberOfComponents(4);
    colors->SetArray(const_cast<std::uint8_t*>(triangles.colors.data()),
                     vtkIdType(triangles.colors.size()), keepMemory);
    data->GetPointData()->SetScalars(colors);

    const std::size_t pointCount = countPoints(triangles.points);
    vtkNew<vtkCellArray> cells;
    cells->SetData(countUp(pointCount / 3 + 1, 3), countUp(pointCount, 1));
    data->SetPolys(cells);
    return data;
}

}  // namespace kesview
