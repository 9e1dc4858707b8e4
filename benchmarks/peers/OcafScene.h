#pragma once

/// @file
/// The scene as labels of Open CASCADE's application framework. An entity has a name, a colour and,
/// in place of geometry, the smallest attribute there is.

#include "support/SceneModel.h"

#include <Quantity_Color.hxx>
#include <TCollection_ExtendedString.hxx>
#include <TDF_Data.hxx>
#include <TDF_Label.hxx>
#include <TDataStd_Integer.hxx>
#include <TDataStd_Name.hxx>
#include <XCAFDoc_Color.hxx>

namespace bench {

using OcafNames = std::vector<TCollection_ExtendedString>;

inline OcafNames toOcaf(const std::vector<std::wstring>& names) {
    OcafNames all;
    for (const std::wstring& name : names) {
        all.emplace_back(std::string(name.begin(), name.end()).c_str());
    }
    return all;
}

/// The model with its names in the framework's own form.
struct OcafModel {
    explicit OcafModel(const SceneModel& model) : bodies(toOcaf(model.bodies)) {
        for (const EntityGroup& group : model.groups) {
            types.push_back({group.type, toOcaf({group.typeName})[0], toOcaf(group.names)});
        }
    }

    struct Type {
        int tag;
        TCollection_ExtendedString name;
        OcafNames names;
    };
    OcafNames bodies;
    std::vector<Type> types;
    Quantity_Color color{0.8, 0.4, 0.2, Quantity_TOC_RGB};
};

class OcafScene {
public:
    OcafScene() : _data(new TDF_Data()) {}

    const Handle(TDF_Data) & Data() const { return _data; }

    void Build(const OcafModel& model) {
        const TDF_Label scene = begin(_data->Root(), sceneId, "Scene");
        const TDF_Label container = begin(scene, containerId, "Container");
        int tag = firstBodyId;
        for (const TCollection_ExtendedString& name : model.bodies) {
            const TDF_Label body = begin(container, tag++, name);
            for (const OcafModel::Type& type : model.types) {
                const TDF_Label parent = begin(body, type.tag, type.name);
                int entity = firstEntityId;
                for (const TCollection_ExtendedString& entityName : type.names) {
                    const TDF_Label label = begin(parent, entity, entityName);
                    XCAFDoc_Color::Set(label, model.color);
                    TDataStd_Integer::Set(label, entity++);
                }
            }
        }
    }

private:
    /// Opens the child of that tag, or makes it.
    static TDF_Label begin(const TDF_Label& parent, int tag,
                           const TCollection_ExtendedString& name) {
        TDF_Label child = parent.FindChild(tag, Standard_False);
        if (child.IsNull()) {
            child = parent.FindChild(tag, Standard_True);
            TDataStd_Name::Set(child, name);
        }
        return child;
    }

    Handle(TDF_Data) _data;
};

}  // namespace bench
