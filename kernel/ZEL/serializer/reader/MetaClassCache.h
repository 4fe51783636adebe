#pragma once

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/serializer/QualifiedName.h>

#include <hasp_util/TypeInfo.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEL::Serializer {

/// Makes boxed values of one data type from texts, without a search for the type each time.
///
/// Values of other types than text repeat themselves in a file, so the ones made last are kept and given again: boxed
/// values never change.
class ValueMaker {
public:
    explicit ValueMaker(std::string const & typeName);

    /// Raises the conversion error's text if the text is no value of the type; a null handle if the type is unknown.
    [[nodiscard]] Object make(std::string const & text);

private:
    [[nodiscard]] Object convert(std::string const & text) const;

    HASP::TypeInfo fType; ///< null for an unknown type
    ImmutableObject fMetaType;
    bool fKeepsValues;
    std::unordered_map<std::string, Object> fKept;
};

/// What reading needs to know of one property, found once.
struct MetaProperty {
    ImmutableProperty property;
    PropertyStorage storage;
    ImmutableType type;
    NSInterface::ObjectIntf const * typeBody = nullptr; ///< of `type`
    std::string name;
    std::string defaultText;
    ValueMaker * values = nullptr; ///< null without a type
    bool isDataType = false;
    bool isComposite = false;
    bool isDerived = false;
    bool isMany = false;
    bool hasOpposite = false;
    bool isOfContainment = false; ///< its value is the object's container, and follows from the other end
    bool isOfModel = false;       ///< its values are models or factories
};

/// What reading needs to know of one metamodel class, found once.
class MetaClass {
public:
    [[nodiscard]] std::string const & name() const noexcept { return fName; }
    [[nodiscard]] std::vector<MetaProperty const *> const & properties() const noexcept { return fProperties; }

    /// The first property with this name, null if there is none.
    [[nodiscard]] MetaProperty const * find(std::string_view name) const noexcept;
    /// The same by the name of a role, whatever its namespace; remembers the answer.
    [[nodiscard]] MetaProperty const * find(QualifiedName role);

    /// Whether the class is `type` or has it among its superclasses at any distance. False for null.
    [[nodiscard]] bool inheritsFrom(NSInterface::ObjectIntf const * type) const noexcept;
    [[nodiscard]] bool isModel() const noexcept { return fIsModel; }

private:
    friend class MetaClassCache;
    struct Answer {
        QualifiedName role;
        MetaProperty const * property = nullptr;
    };

    std::string fName;
    bool fIsModel = false;
    std::vector<MetaProperty const *> fProperties;
    std::unordered_map<std::string_view, MetaProperty const *> fByName;
    std::vector<Answer> fAnswers;                               ///< indexed by a hash of the role
    std::vector<NSInterface::ObjectIntf const *> fSuperClasses; ///< with the class itself; sorted
};

/// The metamodel classes and properties that a run has met. Valid as long as nobody changes their metamodels.
class MetaClassCache {
public:
    MetaClassCache();
    ~MetaClassCache();
    MetaClassCache(MetaClassCache const &) = delete;
    MetaClassCache & operator=(MetaClassCache const &) = delete;

    /// That of the object's class. References stay valid until `clear`.
    [[nodiscard]] MetaClass & of(ClassObject const & object);
    [[nodiscard]] MetaProperty const & of(ImmutableProperty const & property);
    /// The value of the object's property "name"; "[noname]" if there is none.
    [[nodiscard]] std::string nameOf(ClassObject const & object);
    void clear() noexcept;

private:
    [[nodiscard]] MetaClass & enter(ImmutableClass const & metaClass);
    [[nodiscard]] ValueMaker & valuesOf(std::string const & typeName);

    std::unordered_map<NSInterface::ObjectIntf const *, std::unique_ptr<MetaClass>> fClasses;
    std::unordered_map<NSInterface::ObjectIntf const *, std::unique_ptr<MetaProperty>> fProperties;
    std::unordered_map<std::string, std::unique_ptr<ValueMaker>> fValues;
    NSInterface::ObjectIntf const * fLastBody = nullptr;
    MetaClass * fLast = nullptr;
};

} // namespace ZEL::Serializer
