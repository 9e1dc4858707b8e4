#pragma once

/// @file
/// Every node of a scene, by name, by render id and by entity id, without a list of them: they are
/// met on the way through the document.

#include "building/SceneIds.h"
#include "building/SceneNames.h"
#include "document/Document.h"
#include "loading/Ids.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace kesview {

namespace viz = KesVizCore;

/// A node of the scene that ModelRenderer and PmiRenderer describe. Pointers lead into the
/// document; those that do not apply are null.
struct SceneNode {
    enum class Kind : std::int32_t {
        Assembly,  ///< an instance of a product with components
        Part,      ///< an instance of any other product
        Bodies,    ///< the container of the bodies of an assembly that has some of its own
        Body,
        Elements,  ///< all faces, all edges or all loose points of a body
        Face,
        Edge,
        Annotations,  ///< the container of all annotations
        Group,        ///< all annotations of one type
        Annotation
    };
    Kind kind = Kind::Part;
    std::vector<const Component*> components;  ///< from the top to the innermost one
    const Product* product = nullptr;          ///< of the innermost component
    const Body* body = nullptr;
    const Face* face = nullptr;
    const Edge* edge = nullptr;
    const Annotation* annotation = nullptr;
    viz::RenderId renderId;
    /// What the node stands for. Of Bodies the product, of Elements the body; of Annotations and
    /// Group empty.
    viz::EntityId entity;
    /// "Gearbox/Bolt:2/Body/face 12", "PMI/Note 1": see SceneNames and PathPattern. Bodies,
    /// Elements and Group have the path of the node above.
    std::string path;
};

/// What to do after a node: go on with what is below it, leave that out, or end the walk.
enum class NextStep : std::int32_t { Into, Over, Stop };

/// Answers where things stand in the scene of a document.
///
/// The paths are those of the scene:
///
///     root 1 / component / ... / component / body / type / face or edge
///
/// with one more id, the product's, in front of a body where the product has components as well;
///
///     root 1 / annotations / type / annotation [/ place of a text]
///
/// with the id IdsBeyond::AnnotationContainer of the node that holds all annotations.
///
/// @par Ownership
/// Borrows the document, which must not change. It keeps a number of bytes for each component and
/// body of the document, nothing for faces, edges or uses of a product.
///
/// @par Errors
/// The constructor throws std::runtime_error where a component is of a product that does not exist,
/// or assemblies are nested more than 1,000 levels deep, as one that contains itself is. No other
/// operation fails.
///
/// @par Threads
/// Many threads may ask one.
class SceneIndex {
public:
    using Callback = std::function<NextStep(const SceneNode&)>;

    explicit SceneIndex(const Document& document);

    const Document& GetDocument() const { return _document; }
    const SceneNames& Names() const { return _names; }
    Id AnnotationContainer() const { return _annotationContainer; }

    /// Each node is met before what is below it, and the annotations after the model. Bodies,
    /// Elements and Group are not met: they have no names. The node is good during the call alone.
    void ForEachNode(const Callback& callback) const;

    /// The node at that path; also one in a second use of a product. None where there is no such
    /// node.
    std::optional<SceneNode> Find(const viz::RenderId& id) const;

    /// The nodes that a text names, in the order of the walk: a render id "1/12/44", an entity
    /// "face:12" at every place where it stands, the key of an annotation "#4711", or else a
    /// pattern for paths of names (PathPattern). The answer of the callback is obeyed.
    void ForEachMatch(const std::string& selector, const Callback& callback) const;
    /// The same, collected: mind the size.
    std::vector<SceneNode> FindAll(const std::string& selector) const;

private:
    void forEachEntity(const EntityName& name, const Callback& callback) const;
    void forEachPath(const std::string& pattern, const Callback& callback) const;
    bool enterComponent(SceneNode& node, Id id) const;
    bool enterBody(SceneNode& node, Id id) const;
    bool enterElement(SceneNode& node, Id above, Id id) const;
    bool enterAnnotations(SceneNode& node, Id above, Id id) const;
    bool enter(SceneNode& node, Id above, Id id) const;

    const Document& _document;
    SceneNames _names;
    Id _annotationContainer;
    std::unordered_map<Id, const Component*> _components;
    std::unordered_map<Id, const Body*> _bodies;
};

/// SceneIndex::ForEachNode for who asks once.
void forEachNode(const Document& document, const SceneIndex::Callback& callback);

}  // namespace kesview
