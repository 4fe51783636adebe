#pragma once

#include <ZEL/serializer/ContextSequence.h>

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace ZEL::Serializer {

/// The stereotype instances that Rhapsody expects of nearly every element, after the model.
///
/// Elements are known by their ids. Facts about an element that is not written have no effect.
class RhpStereotypes {
public:
    enum class Kind {
        Model,
        Port,
        Package,
        Component,
        DataType,
        Operation,
        Constructor,
        Destructor,
        Attribute,
        Interface,
        Class,
        Dependency,
        Realization
    };

    /// The element is in the file; an operation that creates or destroys the objects of its component may also turn out
    /// not to be in it. Elements of one kind come in the file's order.
    void add(Kind kind, std::string const & id) { fIds[static_cast<std::size_t>(kind)].push_back(id); }
    /// An operation is in the file, whatever it belongs to.
    void addWrittenOperation(std::string const & id) { fWrittenOperations.insert(id); }

    /// The attribute holds a reference to its value.
    void markReference(std::string const & attributeId) { fReferences.insert(attributeId); }
    void addFlowPort(std::string const & portId) { fFlowPorts[portId].emplace_back(); }
    /// Of the flow port that was added last for this port.
    void setDirection(std::string const & portId, std::string const & direction);
    /// The text of the operation; the first one stands.
    void setBody(std::string const & operationId, std::string const & body) { fBodies.emplace(operationId, body); }
    void setClassName(std::string const & classId, std::string const & name) { fClassNames[classId] = name; }

    /// Kind by kind, with new ids for the instances. Elements are without parent: they stand at the top of the file.
    [[nodiscard]] ContextSequence build() const;

private:
    static constexpr std::size_t kKinds = static_cast<std::size_t>(Kind::Realization) + 1;

    void append(Kind kind, std::string const & id, ContextSequence & result) const;
    void appendFlowPorts(std::string const & portId, ContextSequence & result) const;

    std::array<std::vector<std::string>, kKinds> fIds;
    std::set<std::string> fWrittenOperations;
    std::set<std::string> fReferences;
    std::map<std::string, std::vector<std::optional<std::string>>> fFlowPorts; ///< their directions, by port
    std::map<std::string, std::string> fBodies;                                ///< by operation
    std::map<std::string, std::string> fClassNames;
};

} // namespace ZEL::Serializer
