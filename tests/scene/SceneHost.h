#pragma once

/// @file
/// The host of the scene tests: a recording adapter whose log holds exactly what a scene builder
/// asked of it, and a builder that opens its protected operations.

#include "support/RecordingHost.h"

#include <KesVizCore/KesVizCore.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore::support {

inline std::vector<std::uint64_t> valuesOf(const RenderId& id) {
    std::vector<std::uint64_t> values;
    for (int place = 0; place < id.Length(); ++place) {
        values.push_back(id[place]);
    }
    return values;
}

/// A path of the 3D view.
inline RenderId pathOf(const std::vector<std::uint64_t>& values) {
    return RenderId(values, View3D);
}

/// Logs every operation that a builder calls, those that the library implements included, but
/// nothing of what these call in turn.
///
/// It keeps the attributes that it is given for itself, unlike its base, which sets them on the
/// open node: what stands on a node was set there by the builder.
class SceneAdapter : public RecordingAdapter {
public:
    using RecordingAdapter::DeleteNode;
    using RecordingAdapter::RecordingAdapter;

    void OpenTopNode() override {
        outermost("OpenTopNode", [this] { RecordingAdapter::OpenTopNode(); });
    }
    void CloseTopNode() override {
        outermost("CloseTopNode", [this] { RecordingAdapter::CloseTopNode(); });
    }
    bool AddReference(const RenderId& path) override {
        return outermost("AddReference(" + path.ToString() + ")",
                         [&] { return RecordingAdapter::AddReference(path); });
    }
    bool DeleteNode(const RenderId& path) override {
        return outermost("DeleteNode(" + path.ToString() + ")",
                         [&] { return RecordingAdapter::DeleteNode(path); });
    }
    GeoNode* GetNode(const RenderId& path) override {
        return outermost("GetNode(" + path.ToString() + ")",
                         [&] { return RecordingAdapter::GetNode(path); });
    }
    GeoNode* GetCurrentOpenNode() override {
        log.push_back("GetCurrentOpenNode");
        return RecordingAdapter::GetCurrentOpenNode();
    }
    void CopyNodeAttributesFrom(GeoNode& source) override {
        outermost("CopyNodeAttributesFrom(" + std::to_string(source.Id()) + ")",
                  [&] { RecordingAdapter::CopyNodeAttributesFrom(source); });
    }
    void TransferNodeGeometryFrom(GeoNode& source) override {
        outermost("TransferNodeGeometryFrom(" + std::to_string(source.Id()) + ")",
                  [&] { RecordingAdapter::TransferNodeGeometryFrom(source); });
    }
    void SetFilterId(const int& filterId) override {
        outermost("SetFilterId(" + std::to_string(filterId) + ")",
                  [&] { RecordingAdapter::SetFilterId(filterId); });
    }
    void Clear(const RenderId& path) override {
        outermost("Clear(" + path.ToString() + ")", [&] { RecordingAdapter::Clear(path); });
    }
    RenderingOptions* GetRenderingOptions() override {
        log.push_back("GetRenderingOptions");
        return RecordingAdapter::GetRenderingOptions();
    }
    void ApplyAttribute(Attribute* attribute) override {
        const int type = attribute != nullptr ? int{attribute->GetType()} : AttributeType::Invalid;
        log.push_back("ApplyAttribute(" + std::to_string(type) + ")");
        applied.push_back(attribute);
        GeoNode* const open = _openNodes.empty() ? nullptr : _openNodes.top();
        const bool stands = open != nullptr && attribute != nullptr &&
                            open->GetAttribute(attribute->GetType()) == attribute;
        stoodOnNode.push_back(stands);
        if (!stands) {
            _kept.emplace_back(attribute);
        }
    }

    /// A child of the root, which stays closed; the log does not hold it.
    Node* newChild(std::uint64_t id, const std::wstring& name = L"") {
        Node* const child = _rootNode->CreateChild(id);
        child->SetName(name);
        return child;
    }

    /// For each of applied, whether the open node held that very object when it came.
    std::vector<bool> stoodOnNode;

private:
    /// Writes down @p call and lets nothing of what @p operation calls into the log.
    template <typename Operation>
    std::invoke_result_t<Operation> outermost(const std::string& call, Operation operation) {
        log.push_back(call);
        const Cut cut{log, log.size()};
        return operation();
    }

    struct Cut {
        ~Cut() { log.resize(length); }
        CallLog& log;
        std::size_t length;
    };

    std::vector<std::unique_ptr<Attribute>> _kept;
};

/// A builder whose protected operations are open, and which tells when it is destroyed.
class OpenBuilder : public SceneBuilder {
public:
    explicit OpenBuilder(CallLog* log = nullptr) : _log(log) {}
    ~OpenBuilder() override {
        if (_log != nullptr) {
            _log->push_back("~OpenBuilder");
        }
    }

    using SceneBuilder::convertToString;
    using SceneBuilder::getHexPointer;
    using SceneBuilder::getIdAndNameString;
    using SceneBuilder::openOrCreateNode;

private:
    CallLog* _log;
};

/// Makes OpenBuilders, and tells when it is destroyed.
class OpenBuilderFactory : public SceneBuilderFactory {
public:
    explicit OpenBuilderFactory(CallLog* log = nullptr) : _log(log) {}
    ~OpenBuilderFactory() override {
        if (_log != nullptr) {
            _log->push_back("~OpenBuilderFactory");
        }
    }

protected:
    SceneBuilder* makeSceneBuilderImpl() override { return new OpenBuilder(_log); }

private:
    CallLog* _log;
};

}  // namespace KesVizCore::support
