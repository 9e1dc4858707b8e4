#include "Annotations.h"

namespace host {

namespace {

namespace viz = KesVizCore;

/// The outline of a rectangle on z = 6, the plane of the base's top.
std::vector<float> frameOnBase(float x0, float y0, float x1, float y1) {
    return {x0, y0, 6, x1, y0, 6, x1, y1, 6, x0, y1, 6, x0, y0, 6};
}

std::vector<Annotation> makeAnnotations() {
    return {
        {301,
         viz::DimensionType,
         L"DIM-1",
         L"Width",
         L"60",
         {30, -10, 6},
         {{0, -1, 6, 0, -10, 6, 60, -10, 6, 60, -1, 6}},
         {17, 18},
         {{L"MainType", L"Linear"}, {L"Value", L"60"}, {L"Precision", L"0.1"}}},
        {302,
         viz::DimensionType,
         L"DIM-2",
         L"Diameter of the right hole",
         L"12 H8",
         {76, 14, 6},
         {{51, 17, 6, 66, 8, 6, 76, 8, 6}},
         {22},
         {{L"MainType", L"Diameter"},
          {L"Value", L"12"},
          {L"LowerVal", L"0"},
          {L"UpperVal", L"0.027"}}},
        {303,
         viz::ToleranceType,
         L"TOL-1",
         L"Position of the right hole",
         L"0.1 | A",
         {76, 0, 6},
         {{66, 8, 6, 66, 4, 6}, frameOnBase(66, -4, 86, 4), {76, -4, 6, 76, 4, 6}},
         {22},
         {{L"MainType", L"Position"}, {L"Tolerance Value", L"0.1"}, {L"DatumRefDatas", L"DAT-A"}}},
        {304,
         viz::DatumType,
         L"DAT-A",
         L"Datum A",
         L"A",
         {-16, 6, 6},
         {{4, 6, 6, -12, 6, 6}, frameOnBase(-20, 2, -12, 10)},
         {11},
         {{L"MainType", L"Datum"}}},
        {305,
         viz::NoteType,
         L"NOTE-1",
         L"",
         L"Bolt M10, 40 Nm",
         {50, 34, 56},
         {{35, 34, 31, 35, 34, 56, 65, 34, 56}},
         {14, 23},
         {{L"TolNote", L"Bolt M10, 40 Nm"}}}};
}

}  // namespace

Annotations makeBracketAnnotations() {
    const std::array<Place, 3> baseTop{Place{0, 0, 6}, Place{1, 0, 0}, Place{0, 1, 0}};
    const std::array<Place, 3> fromAbove{Place{30, 20, 200}, Place{30, 20, 0}, Place{0, 1, 0}};
    const std::array<Place, 3> fromTheFront{Place{30, -200, 23}, Place{30, 20, 23}, Place{0, 0, 1}};
    Annotations all{300, 100, makeAnnotations(), {}, {}};
    all.views = {{311, L"Base", {301, 302, 303, 304}, baseTop},
                 {312, L"Upright", {305}, std::nullopt}};
    all.captures = {{321, L"Holes from above", {302, 303, 304}, fromAbove},
                    {322, L"Front", {301, 305}, fromTheFront}};
    return all;
}

}  // namespace host
