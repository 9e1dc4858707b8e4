#include "core/Allocation.h"

#include <KesVizCore/scene/IRenderingOptionsListener.h>
#include <KesVizCore/scene/RenderingOptions.h>

#include <algorithm>
#include <iterator>

namespace KesVizCore {

RenderingOptions::RenderingOptions()
    : _displayFaces(true),
      _displayEdges(true),
      _displayVertices(false),
      _displayTessellation(false),
      _displayClouds(true),
      _displayPMI(true),
      _displayAxes(true),
      _displayNavigationCube(true),
      _antialiasLevel(1) {}

RenderingOptions* RenderingOptions::CreateDefault() {
    return nullWhenExhausted([] { return new RenderingOptions(); });
}

void RenderingOptions::AddListener(IRenderingOptionsListener* listener) {
    if (listener != nullptr) {
        _listeners.push_back(listener);
    }
}

void RenderingOptions::RemoveListener(IRenderingOptionsListener* listener) {
    _listeners.erase(std::remove(_listeners.begin(), _listeners.end(), listener), _listeners.end());
}

std::uint64_t RenderingOptions::GetNumberOfListeners(IRenderingOptionsListener*) {
    return _listeners.size();
}

void RenderingOptions::notify(RenderingOptions* changed) {
    if (changed == nullptr) {
        return;
    }
    // A listener may change the list under our feet, so the round goes over the list as it was
    // and asks of each entry whether it is still there.
    const std::vector<IRenderingOptionsListener*> round = _listeners;
    for (IRenderingOptionsListener* listener : round) {
        const bool stillThere =
            std::find(_listeners.begin(), _listeners.end(), listener) != _listeners.end();
        if (listener != nullptr && stillThere) {
            listener->OnOptionsChange(changed);
        }
    }
}

template <typename Value>
void RenderingOptions::change(Value RenderingOptions::*option, Value value) {
    if (this->*option == value) {
        return;
    }
    if (!_listeners.empty()) {
        RenderingOptions changed(*this);
        changed.*option = value;
        notify(&changed);
    }
    this->*option = value;
}

bool RenderingOptions::GetDisplayFaces() const {
    return _displayFaces;
}
bool RenderingOptions::GetDisplayEdges() const {
    return _displayEdges;
}
bool RenderingOptions::GetDisplayVertices() const {
    return _displayVertices;
}
bool RenderingOptions::GetDisplayTessellation() const {
    return _displayTessellation;
}
bool RenderingOptions::GetDisplayClouds() const {
    return _displayClouds;
}
bool RenderingOptions::GetDisplayPMI() const {
    return _displayPMI;
}
bool RenderingOptions::GetDisplayAxes() const {
    return _displayAxes;
}
bool RenderingOptions::GetDisplayNavigationCube() const {
    return _displayNavigationCube;
}

void RenderingOptions::SetDisplayFaces(bool display) {
    change(&RenderingOptions::_displayFaces, display);
}
void RenderingOptions::SetDisplayEdges(bool display) {
    change(&RenderingOptions::_displayEdges, display);
}
void RenderingOptions::SetDisplayVertices(bool display) {
    change(&RenderingOptions::_displayVertices, display);
}
void RenderingOptions::SetDisplayTessellation(bool display) {
    change(&RenderingOptions::_displayTessellation, display);
}
void RenderingOptions::SetDisplayClouds(bool display) {
    change(&RenderingOptions::_displayClouds, display);
}
void RenderingOptions::SetDisplayPMI(bool display) {
    change(&RenderingOptions::_displayPMI, display);
}
void RenderingOptions::SetDisplayAxes(bool display) {
    change(&RenderingOptions::_displayAxes, display);
}
void RenderingOptions::SetDisplayNavigationCube(bool display) {
    change(&RenderingOptions::_displayNavigationCube, display);
}

RGBAColor RenderingOptions::GetDefaultBodyColor() const {
    return _defaultBodyColor;
}
RGBAColor RenderingOptions::GetDefaultFaceColor() const {
    return _defaultFaceColor;
}
RGBAColor RenderingOptions::GetDefaultEdgeColor() const {
    return _defaultEdgeColor;
}
RGBAColor RenderingOptions::GetDefaultTessEdgeColor() const {
    return _defaultTessEdgeColor;
}
RGBAColor RenderingOptions::GetDefaultVertexColor() const {
    return _defaultVertexColor;
}
RGBAColor RenderingOptions::GetDefaultCloudColor() const {
    return _defaultCloudColor;
}
RGBAColor RenderingOptions::GetDefaultPMIColor() const {
    return _defaultPMIColor;
}
RGBAColor RenderingOptions::GetHighlightColor() const {
    return _highlightColor;
}

void RenderingOptions::SetDefaultBodyColor(const RGBAColor& color) {
    change(&RenderingOptions::_defaultBodyColor, color);
}
void RenderingOptions::SetDefaultFaceColor(const RGBAColor& color) {
    change(&RenderingOptions::_defaultFaceColor, color);
}
void RenderingOptions::SetDefaultEdgeColor(const RGBAColor& color) {
    change(&RenderingOptions::_defaultEdgeColor, color);
}
void RenderingOptions::SetDefaultTessEdgeColor(const RGBAColor& color) {
    change(&RenderingOptions::_defaultTessEdgeColor, color);
}
void RenderingOptions::SetDefaultVertexColor(const RGBAColor& color) {
    change(&RenderingOptions::_defaultVertexColor, color);
}
void RenderingOptions::SetDefaultCloudColor(const RGBAColor& color) {
    change(&RenderingOptions::_defaultCloudColor, color);
}
void RenderingOptions::SetDefaultPMIColor(const RGBAColor& color) {
    change(&RenderingOptions::_defaultPMIColor, color);
}
void RenderingOptions::SetHighlightColor(const RGBAColor& color) {
    change(&RenderingOptions::_highlightColor, color);
}

int RenderingOptions::GetAntialiasLevel() const {
    return _antialiasLevel;
}

void RenderingOptions::SetAntialiasLevel(int level) {
    if (level == _antialiasLevel) {
        return;
    }
    constexpr int allowed[] = {1, 2, 4, 8, 16, 32, 64};
    const bool isAllowed =
        std::find(std::begin(allowed), std::end(allowed), level) != std::end(allowed);
    _antialiasLevel = isAllowed ? level : 1;
    if (!_listeners.empty()) {
        RenderingOptions changed(*this);
        notify(&changed);
    }
}

}  // namespace KesVizCore
