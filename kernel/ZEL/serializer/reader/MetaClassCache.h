#pragma once

#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/serializer/QualifiedName.h>
#include <ZEL/serializer/reader/TextHash.h>
#include <ZEL/values/BoxedType.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

/// Makes boxed values of one data type from texts, without a search for the type each time.
///
/// Values of other types than text repeat themselves in a file, so the ones made last are kept and returned again:
/// boxed values never change.
class ValueMaker {
public:
    explicit ValueMaker(std::string const & typeName);

    /// Throws the text of the conversion error if `text` is no value of the type. A null handle if the type is unknown.
    [[nodiscard]] Object make(std::string_view text);
    /// The same, where the value is one of those that are kept; null elsewhere. Valid until the next value is made.
    [[nodiscard]] Object const * makeKept(std::string_view text);
    /// Whether the type is that of texts, of which each is a value.
    [[nodiscard]] bool isOfText() const noexcept { return !fKeepsValues; }

private:
    [[nodiscard]] Object convert(std::string_view text) const;

    internal::BoxedTypePtr fType; ///< null for an unknown type
    bool fKeepsValues;
    std::unordered_map<std::string, Object, TextHash, std::equal_to<>> fKept;
    /// Those met last, by size and first character: of a flag there are two, of most others a few.
    std::array<std::pair<std::string const, Object> const *, 16> fLast{};
};

/// A property of a metaclass, and how its values are made.
struct MetaProperty : internal::PropertyView {
    ValueMaker * values; ///< null without a type
};

/// A metaclass as a reader meets it: properties by the names in files.
class MetaClass {
public:
    [[nodiscard]] std::string const & name() const noexcept { return fView->name(); }
    [[nodiscard]] std::vector<MetaProperty> const & properties() const noexcept { return fProperties; }

    /// The first property with this name or role, null if there is none.
    template <class Key> [[nodiscard]] MetaProperty const * find(Key key) const noexcept {
        internal::PropertyView const * const found = fView->find(key);
        return found == nullptr ? nullptr : &fProperties[static_cast<std::size_t>(found - fView->properties().data())];
    }
    /// The same by the name of a role, whatever its namespace; remembers the answer.
    [[nodiscard]] MetaProperty const * find(QualifiedName role);

    [[nodiscard]] bool inheritsFrom(NSInterface::ObjectIntf const * type) const noexcept {
        return fView->inheritsFrom(type);
    }
    [[nodiscard]] bool isModel() const noexcept { return fView->isModel(); }

private:
    friend class MetaClassCache;
    struct Answer {
        QualifiedName role;
        MetaProperty const * property = nullptr;
    };

    std::shared_ptr<internal::MetaClassView const> fView;
    std::vector<MetaProperty> fProperties; ///< as in the view
    std::vector<Answer> fAnswers;          ///< indexed by a hash of the role
};

/// The metaclasses and properties that a run has met. Valid as long as nobody changes their metamodels.
class ZEL_API MetaClassCache {
public:
    /// That of the object's class. References stay valid until `clear`.
    [[nodiscard]] MetaClass & of(ClassObject const & object);
    [[nodiscard]] MetaProperty const & of(ImmutableProperty const & property);
    /// The value of the object's property "name"; "[noname]" if there is none.
    [[nodiscard]] std::string nameOf(ClassObject const & object);
    void clear() noexcept;

private:
    [[nodiscard]] MetaClass & find(ClassObject const & object);
    [[nodiscard]] MetaClass & enter(ImmutableClass const & metaClass);
    [[nodiscard]] MetaProperty withValues(internal::PropertyView const & property);

    std::unordered_map<NSInterface::ObjectIntf const *, std::unique_ptr<MetaClass>> fClasses;
    std::unordered_map<NSInterface::ObjectIntf const *, std::unique_ptr<MetaProperty>> fProperties;
    std::unordered_map<std::string, std::unique_ptr<ValueMaker>> fValues;
    internal::ClassDescriptor const * fLastDescriptor = nullptr;
    MetaClass * fLast = nullptr;
};

} // namespace ZEL::Serializer
