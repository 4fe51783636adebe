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
/// Elements are known by their ids. What is said of an element that is not written comes to nothing.
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

    /// The element is in the file. In the file's order, of elements of one kind.
    void addWritten(Kind kind, std::string const & id) { fIds[indexOf(kind)].push_back(id); }
    /// An operation is in the file, whatever it belongs to.
    void addWrittenOperation(std::string const & id) { fWrittenOperations.insert(id); }

    /// The operation creates, or destroys, the objects of its component.
    void markConstructor(std::string const & operationId) { fConstructors.push_back(operationId); }
    void markDestructor(std::string const & operationId) { fDestructors.push_back(operationId); }
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
    static constexpr std::size_t indexOf(Kind kind) noexcept { return static_cast<std::size_t>(kind); }

    void appendElement(Kind kind, std::string const & id, ContextSequence & result) const;
    void appendOperations(Kind kind, std::vector<std::string> const & ids, ContextSequence & result) const;
    void appendFlowPorts(std::string const & portId, ContextSequence & result) const;

    std::array<std::vector<std::string>, kKinds> fIds;
    std::set<std::string> fWrittenOperations;
    std::vector<std::string> fConstructors;
    std::vector<std::string> fDestructors;
    std::set<std::string> fReferences;
    std::map<std::string, std::vector<std::optional<std::string>>> fFlowPorts; ///< their directions, by port
    std::map<std::string, std::string> fBodies;                                ///< by operation
    std::map<std::string, std::string> fClassNames;
};

} // namespace ZEL::Serializer
