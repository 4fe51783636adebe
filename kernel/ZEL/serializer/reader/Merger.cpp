#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/FactoryRegistry.h>
#include <ZEL/metamodel/FactorySupport.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/OppositeEnds.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/MetaClassCache.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <typeinfo>
#include <unordered_map>
#include <utility>

namespace ZEL::Serializer {
namespace {

/// By the field itself where that is all that the storage would do; false, and nothing done, elsewhere.
bool setDirectly(ClassObject const & object, MetaProperty const & property, ClassObject const & value, bool isNew) {
    if (property.links == nullptr) {
        return false;
    }
    auto const set = isNew ? &internal::addNewContainee : &internal::setLoneLink;
    return set(*object.getImplementation(), object.getDeviant(), *property.links, *value.getImplementation());
}

/// Whether files have values of the property. They do not have what identifies an object, what is derived, the other
/// end of a containment, the objects without a container, and factories.
bool isInFiles(MetaProperty const & property) {
    return !property.isDerived && !property.isOfContainer && !property.isOfModel && !property.isIdentity() &&
           property.role != internal::PropertyView::Role::Unparented;
}

} // namespace

struct Merger::OfModel {
    std::map<std::string, FactoryObject, std::less<>> factories; ///< by URI
    /// In the order of the numbers; an object that has got another one keeps its old entry as well.
    std::vector<Numbered> numbered;
};

/// By external id.
struct Merger::CollectedObjects : std::unordered_map<std::string, Collected> {};

struct Merger::ByModel : std::unordered_map<NSInterface::ObjectIntf const *, OfModel> {};

Merger::Merger()
    : fCollectedObjects(std::make_unique<CollectedObjects>()),
      fByModel(std::make_unique<ByModel>()),
      fMetaClasses(std::make_unique<MetaClassCache>()) {}

Merger::Merger(Model const & model) : Merger() { addReferredModel(model); }

// Each has a cache of its own: the end of one's run empties it.
Merger::Merger(Merger const & other) : Merger() { *this = other; }

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): each member stands being assigned to itself
Merger & Merger::operator=(Merger const & other) {
    fReferredModels = other.fReferredModels;
    *fCollectedObjects = *other.fCollectedObjects;
    *fByModel = *other.fByModel;
    fOpen = other.fOpen;
    return *this;
}

Merger::~Merger() = default;

std::string Merger::getExternalId(ClassObject object) { return ObjectId::of(object); }

void Merger::addReferredModel(Model const & model) {
    if (!model.isValid()) {
        raiseInternalError("Input model is invalid!");
    }
    fReferredModels.push_back(model);
}

// --- the steps of a run ----------------------------------------------------------------------------------------------

void Merger::open(Model const & model, bool isMade) {
    // Noted first: what has begun must not be forgotten for want of memory.
    fOpen.push_back({model, static_cast<std::int32_t>(model.getNextIdValue()), isMade});
    try {
        model.beginTransaction();
    } catch (...) {
        fOpen.pop_back();
        throw;
    }
}

bool Merger::giveUp(Model const & model) {
    auto const open = std::find_if(fOpen.begin(), fOpen.end(),
                                   [&](OpenTransaction const & transaction) { return transaction.model == model; });
    if (open == fOpen.end() || !open->isMade) {
        return false;
    }
    model.cancelTransaction();
    fOpen.erase(open);
    std::erase(fReferredModels, model);
    fByModel->erase(model.getImplementation());
    return true;
}

bool Merger::initialize() {
    for (Model const & model : fReferredModels) {
        open(model, false);
    }
    for (Model const & model : fReferredModels) {
        collectClassObjectInfo(model);
    }
    return initializeImpl();
}

bool Merger::teardown() {
    bool const result = teardownImpl();
    destroyCollected();
    while (!fOpen.empty()) {
        Model const model = fOpen.front().model;
        try {
            model.commitTransaction();
        } catch (...) {
            // A commit that is done must not be taken back by `abort`; one that leaves the transaction open must.
            if (!model.getDeviant().isWithinTransaction()) {
                fOpen.erase(fOpen.begin());
            }
            throw;
        }
        fOpen.erase(fOpen.begin());
    }
    cleanup();
    return result;
}

bool Merger::abort() {
    std::exception_ptr failure;
    bool result = false;
    auto const attempt = [&failure](auto const & step) {
        try {
            step();
        } catch (...) {
            failure = failure == nullptr ? std::current_exception() : failure;
        }
    };
    attempt([&] { result = abortImpl(); });
    for (OpenTransaction const & transaction : fOpen) {
        attempt([&] { transaction.model.cancelTransaction(); });
        attempt([&] { transaction.model.setNextIdValue(Integer(transaction.nextId)); });
    }
    cleanup();
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
    return result;
}

void Merger::cleanup() {
    fOpen.clear();
    fReferredModels.clear();
    fCollectedObjects->clear();
    fByModel->clear();
    fIdAtHand = ObjectId();
    fMetaClasses->clear();
}

// --- what was there before -------------------------------------------------------------------------------------------

void Merger::collectClassObjectInfo(ClassObject const & root) {
    std::vector<ClassObject> waiting{root};
    while (!waiting.empty()) {
        ClassObject const object = std::move(waiting.back());
        waiting.pop_back();
        std::size_t const first = waiting.size();
        collect(object, waiting);
        std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(first), waiting.end());
    }
}

void Merger::collect(ClassObject const & object, std::vector<ClassObject> & children) {
    (*fCollectedObjects)[getExternalId(object)] = {object, fCollectedObjects->size()};
    setRemainder(object, {});
    for (MetaProperty const & property : fMetaClasses->of(object).properties()) {
        if (!isInFiles(property)) {
            continue;
        }
        if (property.isComposite && !property.isDataType) {
            property.storage.get(object).forEach([&](Object const & child) {
                if (ClassObject const element(child); element.isValid()) {
                    children.push_back(element);
                }
            });
        } else {
            clearProperty(object, property);
        }
    }
}

void Merger::clearProperty(ClassObject const & object, MetaProperty const & property) {
    if (property.isDataType && !property.isMany && !property.defaultText.empty()) {
        // Files leave out what equals the default; and a required value could not be removed.
        property.storage.setOrAdd(object, property.values->make(property.defaultText));
    } else if (property.storage.has(object)) {
        property.storage.get(object).clear();
    }
}

bool Merger::isReferredModel(ClassObject const & object) const {
    return std::find(fReferredModels.begin(), fReferredModels.end(), object) != fReferredModels.end();
}

void Merger::destroyCollected() {
    std::vector<Collected> left;
    left.reserve(fCollectedObjects->size());
    for (auto & entry : *fCollectedObjects) {
        left.push_back(std::move(entry.second));
    }
    fCollectedObjects->clear();
    // Containers first: what they contain goes with them, and is passed over then.
    std::sort(left.begin(), left.end(), [](Collected const & a, Collected const & b) { return a.number < b.number; });
    for (Collected const & entry : left) {
        if (entry.object.isValid() && !isReferredModel(entry.object)) {
            entry.object.destroy();
        }
    }
}

// --- objects ---------------------------------------------------------------------------------------------------------

ClassObject Merger::createObject(Model const & model, std::string const & uri, std::string const & roleName,
                                 std::string const & typeUri, std::string const & typeName, std::string const & id) {
    return findOrCreate(model, uri, roleName, typeUri, typeName, id, ObjectId(id)).object;
}

Merger::Found Merger::findOrCreate(Model const & model, std::string const & uri, std::string const & roleName,
                                   std::string const & typeUri, std::string const & typeName, std::string const & text,
                                   ObjectId const & id) {
    if (!fCollectedObjects->empty()) {
        auto const found = fCollectedObjects->find(text);
        if (found != fCollectedObjects->end()) {
            ClassObject const known = found->second.object;
            if (known.isValid()) {
                if (known.getModelZEL().isValid()) {
                    fCollectedObjects->erase(found);
                }
                return {known, false};
            }
            fCollectedObjects->erase(found); // gone in the meantime: its id is free
        }
    }
    fIdAtHand = id;
    ClassObject const object = createObjectImpl(model, uri, roleName, typeUri, typeName, text);
    fIdAtHand = ObjectId();
    if (!model.isValid() && object.isValid()) {
        Model const made = object.getModelZEL();
        if (made.isValid()) {
            open(made, true);
            fReferredModels.push_back(made);
        }
    }
    return {object, true};
}

bool Merger::makesAllAnew() const noexcept { return fCollectedObjects->empty() && typeid(*this) == typeid(Merger); }

internal::BodyCore * Merger::createPart(ClassObject const & owner, internal::FieldDescriptor const & field,
                                        internal::ModelCore & model, internal::ClassDescriptor const & descriptor,
                                        ObjectId const & id) {
    std::vector<Numbered> & numbered = (*fByModel)[&model].numbered;
    std::int32_t const number = id.number();
    bool const isNumbered = number != 0 && number != model.internal_id();
    if (isNumbered) {
        freeNumber(numbered, number);
    }
    internal::BodyCore * const part = internal::createPart(
        model, owner.getDeviant(), descriptor, isNumbered ? number : model.nextId(), *owner.getImplementation(), field);
    if (part != nullptr && !isNumbered) {
        numbered.push_back({ClassObject(part, owner.getDeviant()), part->internal_id()});
    }
    return part;
}

ClassObject Merger::createObjectImpl(Model model, std::string const & uri, std::string const & roleName,
                                     std::string const & typeUri, std::string const & typeName,
                                     std::string const & id) {
    if (!model.isValid()) {
        return FactoryRegistry::instance()->createModel(uri);
    }
    std::string const * name = &typeName;
    OfModel & known = (*fByModel)[model.getImplementation()];
    FactoryObject factory = findFactory(known, model, typeUri);
    if (!factory.isValid()) {
        name = &roleName;
        factory = findFactory(known, model, uri);
    }
    if (!factory.isValid()) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_Merger_FactoryCreationError, uri, roleName,
                                typeUri, typeName);
        return ClassObject();
    }
    // A subclass may have put another text in place of the one at hand.
    bool const isAtHand = fIdAtHand.text().data() == id.data();
    Integer const number(isAtHand ? fIdAtHand.number() : ObjectId(id).number());
    // What a model contains cannot have the number of the model itself.
    if (number != Integer(0) && number != model.getId()) {
        freeNumber(known.numbered, number.getValue());
        return ClassObject(factory.createFromString(String(*name), number));
    }
    ClassObject const object(factory.createFromString(String(*name)));
    if (object.isValid()) {
        known.numbered.push_back({object, object.getId().getValue()});
    }
    return object;
}

/// Nothing in a file refers by number to an object whose id there has none.
void Merger::freeNumber(std::vector<Numbered> & numbered, std::int32_t number) {
    auto const found = std::lower_bound(numbered.begin(), numbered.end(), number,
                                        [](Numbered const & left, std::int32_t right) { return left.number < right; });
    if (found == numbered.end() || found->number != number || !found->object.isValid() ||
        found->object.getId() != Integer(number)) {
        return;
    }
    ClassObject const object = found->object;
    internal::BodyCore & body = *object.getImplementation()->internal_body();
    body.internal_model()->renumber(body);
    numbered.push_back({object, body.internal_id()});
}

FactoryObject Merger::findFactory(OfModel & known, Model const & model, std::string const & uri) {
    if (auto const found = known.factories.find(uri); found != known.factories.end()) {
        return found->second;
    }
    FactoryObject const factory = FactoryRegistry::instance()->createFactory(uri, model);
    if (factory.isValid()) {
        known.factories.emplace(uri, factory);
    }
    return factory;
}

// --- values ----------------------------------------------------------------------------------------------------------

bool Merger::setProperty(ClassObject const & object, ImmutableProperty const & property, std::string const & value) {
    return setProperty(object, fMetaClasses->of(property), std::string_view(value));
}

bool Merger::setProperty(ClassObject const & object, ImmutableProperty const & property, ClassObject const & value) {
    return setProperty(object, fMetaClasses->of(property), value, false);
}

bool Merger::setProperty(ClassObject const & object, MetaProperty const & property, std::string_view value) {
    try {
        if (property.values == nullptr) {
            raiseNullReference();
        }
        internal::PropertyDescriptor const * const descriptor = property.descriptor;
        if (descriptor != nullptr && descriptor->single != nullptr) {
            // By the operation that the storage calls, too; a text without a box.
            auto const set = [&](Generic::Ref const & ref) {
                descriptor->single->set(object.getImplementation(), object.getDeviant(), ref);
            };
            if (property.values->isOfText()) {
                set(Generic::Ref::ofValue(String(value), Deviant()));
            } else if (Object const * const kept = property.values->makeKept(value)) {
                set(Generic::RefTraits<Object>::toRef(*kept));
            } else {
                set(Generic::RefTraits<Object>::toRef(property.values->make(value)));
            }
        } else {
            property.storage.setOrAdd(object, property.values->make(value));
        }
        return true;
    } catch (Exception const & failure) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_Merger_ValueObjectCreationError,
                                property.name, fMetaClasses->nameOf(object), value, failure.GetMessageTxt());
        return false;
    }
}

bool Merger::setProperty(ClassObject const & object, MetaProperty const & property, ClassObject const & value,
                         bool isNew) {
    try {
        if (!fCollectedObjects->empty()) {
            fCollectedObjects->erase(getExternalId(value));
        }
        if (!setDirectly(object, property, value, isNew)) {
            property.storage.setOrAdd(object, value);
        }
        return true;
    } catch (Exception const & failure) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_Merger_SetOrAddPropertyError, property.name,
                                fMetaClasses->nameOf(object), fMetaClasses->nameOf(value), failure.GetMessageTxt());
        return false;
    }
}

} // namespace ZEL::Serializer
