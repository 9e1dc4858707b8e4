/// @file
/// See PmiTextPlace.h.

#include "reading/occ/PmiTextPlace.h"

#include "reading/part21/Placement.h"

#include <algorithm>
#include <cmath>

namespace kesview {
namespace {

struct Side {
    std::size_t axis = 2;
    bool positive = true;
};

Side nearestSide(const PmiBox& model, const Vector& point) {
    const Vector fromCentre = point - model.Centre();
    Side side;
    double best = -1;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double half = std::max((model.high[axis] - model.low[axis]) / 2, 1e-9);
        const double share = std::abs(fromCentre[axis]) / half;
        if (share > best + 1e-9) {
            best = share;
            side = {axis, fromCentre[axis] >= 0};
        }
    }
    return side;
}

/// The direction of writing and of letters for who looks at that side from outside.
std::array<Vector, 2> writingOn(const Side& side) {
    const double sign = side.positive ? 1 : -1;
    switch (side.axis) {
        case 0:
            return {{{0, sign, 0}, {0, 0, 1}}};
        case 1:
            return {{{-sign, 0, 0}, {0, 0, 1}}};
        default:
            return {{{sign, 0, 0}, {0, 1, 0}}};
    }
}

}  // namespace

PmiTextPlaces::PmiTextPlaces(const PmiBox& model) : _model(model) {
    if (_model.IsEmpty()) {
        _model.Add({0, 0, 0});
    }
}

void PmiTextPlaces::Place(const PmiBox& target, Annotation& annotation) {
    const double diagonal = std::max(_model.Diagonal(), 1.0);
    const Vector from = target.IsEmpty() ? _model.Centre() : target.Centre();
    const Side side = nearestSide(_model, from);
    const auto [u, v] = writingOn(side);

    Vector place = from;
    const double margin = diagonal * 0.05;
    place[side.axis] = side.positive ? std::max(_model.high[side.axis], from[side.axis]) + margin
                                     : std::min(_model.low[side.axis], from[side.axis]) - margin;
    PlacedText text;
    text.text = annotation.text;
    text.height = diagonal * 0.015;
    text.u = u;
    text.v = v;
    const int earlier = _stacked[place]++;
    text.position = place + earlier * text.height * 1.8 * v;
    annotation.plane = {text.position, u, v};
    if (earlier == 0) {
        std::vector<float> leader;
        for (const Vector& end : {from, place}) {
            leader.insert(leader.end(), {static_cast<float>(end[0]), static_cast<float>(end[1]),
                                         static_cast<float>(end[2])});
        }
        annotation.lines.push_back(std::move(leader));
    }
    annotation.texts.push_back(std::move(text));
}

}  // namespace kesview
