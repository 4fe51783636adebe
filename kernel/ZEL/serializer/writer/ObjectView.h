#pragma once

#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/serializer/writer/PropertyPartition.h>

#include <optional>
#include <string>
#include <vector>

namespace ZEL::Serializer {

/// An object as the writer reads it, with its state looked up once. Valid as long as the object does not change.
///
/// Values are read in the shortest way there is; what is not stored as in generated classes is read through the storage
/// of the property, with the same result.
class ObjectView {
public:
    /// The handle must outlive the view.
    explicit ObjectView(ImmutableClassObject const & object);

    [[nodiscard]] ImmutableClassObject const & handle() const noexcept { return fObject; }
    [[nodiscard]] internal::BodyCore const & body() const noexcept { return fBody; }

    /// Whether the object contains others, applied stereotype instances included.
    [[nodiscard]] bool hasContainees(PropertyPartition const & partition) const;
    [[nodiscard]] bool hasStereotypes() const;

    /// The text of a single value of a data type; nothing if there is none. Sets the property's type of the value.
    [[nodiscard]] std::optional<std::string> textOf(WrittenProperty const & property) const;
    /// The same by way of the property's storage, which knows all texts.
    [[nodiscard]] std::optional<std::string> boxedTextOf(WrittenProperty const & property) const;
    /// Empty if there are none.
    [[nodiscard]] std::vector<ImmutableClassObject> objectsOf(WrittenProperty const & property) const;

    /// Notes the type of `value` as that of the property's values.
    static void noteType(ImmutableObject const & value, WrittenProperty const & property);

private:
    ImmutableClassObject const & fObject;
    NSInterface::ClassObjectIntf & fIntf;
    internal::BodyCore const & fBody;
    internal::StateCore const & fState;
};

} // namespace ZEL::Serializer
