#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/serializer/reader/MetaClassCache.h>
#include <ZEL/values/TypeInfoRegistry.h>
#include <ZEL/values/ValueObjectImpl.h>

#include <hasp_util/ErrorHolder.h>

#include <utility>

namespace ZEL::Serializer {
namespace {

constexpr std::size_t kAnswers = 256; // a power of two, well above the number of properties of a class
constexpr std::size_t kKeptValues = 256;
constexpr std::size_t kKeptTextSize = 15;

NSInterface::ObjectIntf const * bodyOf(ImmutableObject const & object) {
    return object.getImplementationWithoutAssert();
}

} // namespace

// --- values ----------------------------------------------------------------------------------------------------------

ValueMaker::ValueMaker(std::string const & typeName)
    : fType(TypeInfoRegistry::findBoxedType(typeName)), fKeepsValues(typeName != String::getTypeName()) {}

Object ValueMaker::convert(std::string_view text) const {
    HASP::ErrorHolder errors;
    HASP::any value = fType->typeInfo.convertFromString(std::string(text), errors);
    if (errors.hasError()) {
        raiseInternalError(errors.getMessage());
    }
    return ValueObject(new NSImplementation::ValueObjectImpl(fType, std::move(value)), Deviant());
}

Object ValueMaker::make(std::string_view text) {
    if (!fType || fType->typeInfo.isNull()) {
        return Object();
    }
    Object const * const kept = makeKept(text);
    return kept != nullptr ? *kept : convert(text);
}

Object const * ValueMaker::makeKept(std::string_view text) {
    if (!fKeepsValues || text.size() > kKeptTextSize || !fType || fType->typeInfo.isNull()) {
        return nullptr;
    }
    std::size_t const hash = text.size() * 5 + (text.empty() ? 0 : static_cast<unsigned char>(text[0]));
    auto & last = fLast[hash % fLast.size()];
    if (last != nullptr && last->first == text) {
        return &last->second;
    }
    auto found = fKept.find(text);
    if (found == fKept.end()) {
        Object value = convert(text);
        if (fKept.size() >= kKeptValues) {
            fKept.clear();
            fLast = {};
        }
        found = fKept.emplace(text, std::move(value)).first;
    }
    last = &*found;
    return &last->second;
}

// --- one class -------------------------------------------------------------------------------------------------------

MetaProperty const * MetaClass::find(QualifiedName role) {
    std::size_t const hash = role.hash();
    Answer & answer = fAnswers[(hash ^ (hash >> 8U)) % kAnswers];
    if (answer.role != role) {
        answer = {role, find(std::string_view(role.getName()))};
    }
    return answer.property;
}

// --- all -------------------------------------------------------------------------------------------------------------

void MetaClassCache::clear() noexcept {
    fClasses.clear();
    fProperties.clear();
    fValues.clear();
    fLastDescriptor = nullptr;
    fLast = nullptr;
}

MetaClass & MetaClassCache::of(ClassObject const & object) {
    internal::BodyCore const * const core = object.getImplementation()->internal_body();
    internal::ClassDescriptor const * const descriptor = core == nullptr ? nullptr : &core->internal_descriptor();
    if (descriptor == nullptr || descriptor != fLastDescriptor) {
        fLast = &find(object);
        fLastDescriptor = descriptor;
    }
    return *fLast;
}

MetaClass & MetaClassCache::find(ClassObject const & object) {
    ImmutableClass const metaClass = object.getMetaClass();
    auto const found = fClasses.find(bodyOf(metaClass));
    return found != fClasses.end() ? *found->second : enter(metaClass);
}

MetaClass & MetaClassCache::enter(ImmutableClass const & metaClass) {
    auto entry = std::make_unique<MetaClass>();
    entry->fView = internal::MetaClassView::of(metaClass);
    entry->fAnswers.resize(kAnswers);
    entry->fProperties.reserve(entry->fView->properties().size());
    for (internal::PropertyView const & property : entry->fView->properties()) {
        entry->fProperties.push_back(withValues(property));
    }
    return *(fClasses[bodyOf(metaClass)] = std::move(entry));
}

MetaProperty const & MetaClassCache::of(ImmutableProperty const & property) {
    std::unique_ptr<MetaProperty> & slot = fProperties[bodyOf(property)];
    if (slot == nullptr) {
        slot = std::make_unique<MetaProperty>(withValues(internal::PropertyView(property)));
    }
    return *slot;
}

MetaProperty MetaClassCache::withValues(internal::PropertyView const & property) {
    if (!property.type.isValid()) {
        return {property, nullptr};
    }
    std::string const typeName = property.type.getQualifiedName().str();
    std::unique_ptr<ValueMaker> & slot = fValues[typeName];
    if (slot == nullptr) {
        slot = std::make_unique<ValueMaker>(typeName);
    }
    return {property, slot.get()};
}

std::string MetaClassCache::nameOf(ClassObject const & object) {
    if (object.isValid()) {
        MetaProperty const * const property = of(object).find(internal::PropertyView::Role::Name);
        if (property != nullptr && property->storage.has(object)) {
            return property->storage.getOne(object).toString().str();
        }
    }
    return "[noname]";
}

} // namespace ZEL::Serializer
