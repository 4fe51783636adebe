#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/reader/MetaClassCache.h>
#include <ZEL/values/TypeInfoRegistry.h>
#include <ZEL/values/ValueObjectImpl.h>

#include <hasp_util/ErrorHolder.h>

#include <algorithm>
#include <utility>

namespace ZEL::Serializer {
namespace {

constexpr std::size_t kAnswers = 256; // a power of two, well above the number of properties of a class
constexpr std::size_t kKeptValues = 256;
constexpr std::size_t kKeptTextSize = 15;

NSInterface::ObjectIntf const * bodyOf(ImmutableObject const & object) {
    return object.getImplementationWithoutAssert();
}

std::vector<NSInterface::ObjectIntf const *> withSuperClasses(ImmutableClass const & metaClass) {
    std::vector<NSInterface::ObjectIntf const *> found;
    std::vector<ImmutableClass> open{metaClass};
    while (!open.empty()) {
        ImmutableClass const next = std::move(open.back());
        open.pop_back();
        if (std::find(found.begin(), found.end(), bodyOf(next)) == found.end()) {
            found.push_back(bodyOf(next));
            next.getSuperClasses().forEach([&](ImmutableClass const & super) { open.push_back(super); });
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

bool isOfModel(ImmutableType const & type) {
    ImmutableClass const metaClass(type);
    if (!metaClass.isValid()) {
        return false;
    }
    auto const classes = withSuperClasses(metaClass);
    return std::binary_search(classes.begin(), classes.end(), bodyOf(Model::MetaClass())) ||
           std::binary_search(classes.begin(), classes.end(), bodyOf(FactoryObject::MetaClass()));
}

} // namespace

// --- values ------------------------------------------------------------------------------------------------------------

ValueMaker::ValueMaker(std::string const & typeName) : fKeepsValues(typeName != String::getTypeName()) {
    if (HASP::TypeInfo const * const type = TypeInfoRegistry::findTypeInfo(typeName)) {
        fType = *type;
        fMetaType = TypeInfoRegistry::getMetaTypeObject(typeName);
    }
}

Object ValueMaker::convert(std::string const & text) const {
    HASP::ErrorHolder errors;
    HASP::any value = fType.convertFromString(text, errors);
    if (errors.hasError()) {
        raiseInternalError(errors.getMessage());
    }
    return ValueObject(new NSImplementation::ValueObjectImpl(fType, fMetaType, std::move(value)), Deviant());
}

Object ValueMaker::make(std::string const & text) {
    if (fType.isNull()) {
        return Object();
    }
    if (!fKeepsValues || text.size() > kKeptTextSize) {
        return convert(text);
    }
    auto const found = fKept.find(text);
    if (found != fKept.end()) {
        return found->second;
    }
    Object const value = convert(text);
    if (fKept.size() >= kKeptValues) {
        fKept.clear();
    }
    fKept.emplace(text, value);
    return value;
}

// --- one class -----------------------------------------------------------------------------------------------------------

MetaProperty const * MetaClass::find(std::string_view name) const noexcept {
    auto const found = fByName.find(name);
    return found != fByName.end() ? found->second : nullptr;
}

MetaProperty const * MetaClass::find(QualifiedName role) {
    std::size_t const hash = role.hash();
    Answer & answer = fAnswers[(hash ^ (hash >> 8U)) % kAnswers];
    if (answer.role != role) {
        answer = {role, find(std::string_view(role.getName()))};
    }
    return answer.property;
}

bool MetaClass::inheritsFrom(NSInterface::ObjectIntf const * type) const noexcept {
    return type != nullptr && std::binary_search(fSuperClasses.begin(), fSuperClasses.end(), type);
}

// --- all -----------------------------------------------------------------------------------------------------------------

MetaClassCache::MetaClassCache() = default;
MetaClassCache::~MetaClassCache() = default;

void MetaClassCache::clear() noexcept {
    fClasses.clear();
    fProperties.clear();
    fValues.clear();
    fLastBody = nullptr;
    fLast = nullptr;
}

MetaClass & MetaClassCache::of(ClassObject const & object) {
    ImmutableClass const metaClass = object.getMetaClass();
    NSInterface::ObjectIntf const * const body = bodyOf(metaClass);
    if (body != fLastBody || fLast == nullptr) {
        auto const found = fClasses.find(body);
        fLast = found != fClasses.end() ? found->second.get() : &enter(metaClass);
        fLastBody = body;
    }
    return *fLast;
}

MetaClass & MetaClassCache::enter(ImmutableClass const & metaClass) {
    auto entry = std::make_unique<MetaClass>();
    entry->fName = metaClass.getName().str();
    entry->fAnswers.resize(kAnswers);
    entry->fSuperClasses = withSuperClasses(metaClass);
    entry->fIsModel = entry->inheritsFrom(bodyOf(Model::MetaClass()));
    metaClass.getOwnedAttributes().forEach([&](ImmutableProperty const & property) {
        MetaProperty const & known = of(property);
        entry->fProperties.push_back(&known);
        entry->fByName.emplace(known.name, &known);
    });
    return *(fClasses[bodyOf(metaClass)] = std::move(entry));
}

MetaProperty const & MetaClassCache::of(ImmutableProperty const & property) {
    std::unique_ptr<MetaProperty> & slot = fProperties[bodyOf(property)];
    if (slot == nullptr) {
        auto entry = std::make_unique<MetaProperty>();
        entry->property = property;
        entry->storage = property.getStorage();
        entry->type = property.getType();
        entry->typeBody = bodyOf(entry->type);
        entry->name = property.getName().str();
        entry->defaultText = property.getDefault().str();
        entry->isComposite = property.isComposite();
        entry->isDerived = property.isDerived();
        entry->isMany = property.isMultivalued();
        if (entry->type.isValid()) {
            entry->isDataType = ImmutableDataType(entry->type).isValid();
            entry->values = &valuesOf(entry->type.getQualifiedName().str());
            entry->isOfModel = isOfModel(entry->type);
        }
        ImmutableProperty const opposite = property.getOpposite();
        entry->hasOpposite = opposite.isValid();
        // A derived other end is a view on what the container holds.
        entry->isOfContainment =
            entry->hasOpposite && (opposite.isComposite() || (opposite.isDerived() && !entry->isComposite));
        slot = std::move(entry);
    }
    return *slot;
}

ValueMaker & MetaClassCache::valuesOf(std::string const & typeName) {
    std::unique_ptr<ValueMaker> & slot = fValues[typeName];
    if (slot == nullptr) {
        slot = std::make_unique<ValueMaker>(typeName);
    }
    return *slot;
}

std::string MetaClassCache::nameOf(ClassObject const & object) {
    if (object.isValid()) {
        MetaProperty const * const property = of(object).find(std::string_view("name"));
        if (property != nullptr && property->storage.has(object)) {
            return property->storage.getOne(object).toString().str();
        }
    }
    return "[noname]";
}

} // namespace ZEL::Serializer
