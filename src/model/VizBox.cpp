#include <KesVizCore/model/VizBox.h>

#include <algorithm>

namespace KesVizCore {

VizBox::VizBox() : _low{0.0, 0.0, 0.0}, _high{0.0, 0.0, 0.0}, _empty(true) {}

VizBox::VizBox(const double low[3], const double high[3])
    : _low{low[0], low[1], low[2]}, _high{high[0], high[1], high[2]}, _empty(false) {}

void VizBox::GetLow(double out[3]) const {
    std::copy(_low, _low + 3, out);
}

void VizBox::GetHigh(double out[3]) const {
    std::copy(_high, _high + 3, out);
}

void VizBox::GetCenter(double out[3]) const {
    for (int axis = 0; axis < 3; ++axis) {
        out[axis] = 0.5 * (_low[axis] + _high[axis]);
    }
}

bool VizBox::IsEmpty() const {
    return _empty;
}

void VizBox::Add(const double point[3]) {
    if (_empty) {
        *this = VizBox(point, point);
        return;
    }
    for (int axis = 0; axis < 3; ++axis) {
        const double low = _low[axis];
        const double high = _high[axis];
        const double value = point[axis];
        if (low > value && high > value) {
            _low[axis] = value;
        }
        if (value > low && value > high) {
            _high[axis] = value;
        }
    }
}

void VizBox::Add(const VizBox& other) {
    if (other._empty) {
        return;
    }
    if (_empty) {
        *this = other;
        return;
    }
    const VizBox added = other;  // it may be this very box
    Add(added._low);
    Add(added._high);
}

void VizBox::Scale(const double& factor) {
    const double scale = factor;
    if (!(scale > 0.0)) {
        return;
    }
    for (int axis = 0; axis < 3; ++axis) {
        _low[axis] *= scale;
        _high[axis] *= scale;
    }
}

}  // namespace KesVizCore
