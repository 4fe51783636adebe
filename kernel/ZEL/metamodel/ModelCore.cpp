#include <ZEL/Integer.h>
#include <ZEL/base/Exception.h>
#include <ZEL/base/GiveBackCount.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/DeviantManagerHelper.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>

#include <orca_factory/BindingRegistry.h>

#include <limits>
#include <string>

namespace ZEL::internal {

namespace {

/// Keeps the count of a dying body away from 0 while the code that ends it makes and drops handles on it.
constexpr std::int32_t kDyingCount = std::numeric_limits<std::int32_t>::max() / 2;

std::string typeText(Deviant deviant, ClassObjectIntf const & object) {
    ImmutableClass const metaClass = object.getMetaClass(deviant);
    return metaClass.isValid() ? "'; type = '" + metaClass.getQualifiedName().str() : std::string();
}

} // namespace

ModelCore::ModelCore() : fManager(this, this) { fModel = this; }

ModelCore::~ModelCore() { orca::factory::basic::BindingRegistry::retract(this); }

// --- life ------------------------------------------------------------------------------------------------------------

void ModelCore::internal_released() {
    release();
    delete this;
}

void ModelCore::release() noexcept {
    fRefCount = kDyingCount;
    forgetViews();
    fManager.destroy();
    // Nothing here asks for memory: a model often goes because there is none. A state may hold the last handle on
    // another body of this model: none goes before all are marked.
    visitBodies([](BodyCore & body) { ++body.fRefCount; });
    visitBodies([](BodyCore & body) {
        body.fModel = nullptr;
        body.deviant_markModelDestroyed();
    });
    // The model's count on it may have been given back by somebody else.
    if (fHeldFactory != nullptr && fHeldFactory->fRefCount > 1) {
        --fHeldFactory->fRefCount;
    }
    visitBodies([](BodyCore & body) {
        if (--body.fRefCount == 0) {
            delete &body;
        }
    });
    fUnnumbered.clear();
    deviant_markModelDestroyed();
    fModel = nullptr;
    for (BodyCore * const body : fForeign) {
        giveBackCount(*body);
    }
}

void ModelCore::adopt(BodyCore & body) {
    fUnnumbered.insert(&body);
    body.fModel = this;
}

BodyCore & ModelCore::create(Deviant deviant, ClassDescriptor const & descriptor, std::int32_t id) {
    BodyCore & body = *descriptor.createBody();
    body.fModel = this;
    ClassObject const object(&body, deviant); // so that the body goes if anything fails
    markCreated(body, deviant);
    if (deviant.getDeviantId() == 0) {
        body.setRootState(body.createRootDeviation(deviant));
    } else {
        body.internal_createDeviation(deviant);
    }
    enter(id, body);
    giveNumber(body, id);
    body.readState(deviant)->setModel(this);
    return body;
}

bool ModelCore::isAlone(DeviantImpl const & deviant) const noexcept {
    return deviant.isRoot() && fManager.internal_namedDeviants().empty() && !fManager.internal_hasNullEntries();
}

void ModelCore::markCreated(BodyCore & body, Deviant deviant) {
    DeviantImpl * const impl = deviant.getImpl();
    if (impl != nullptr && impl->savesOldStates() && isAlone(*impl)) {
        body.save(*impl, static_cast<ObjectIntf *>(Deviant::InvalidObject));
        return;
    }
    deviant.markObjectCreated(&body);
    if (impl->history().isOn()) {
        body.noteSaved(*impl);
    }
}

void ModelCore::disown(BodyCore & body) noexcept {
    fUnnumbered.erase(&body);
    body.fModel = nullptr;
}

void ModelCore::holdFactory(BodyCore & factory) {
    if (fHeldFactory == nullptr) {
        fHeldFactory = &factory;
        factory.incRef();
    }
}

void ModelCore::noteForeign(BodyCore & body) {
    if (body.fModel != this && fForeign.insert(&body).second) {
        body.incRef();
    }
}

void ModelCore::forgetForeign(BodyCore & body) {
    if (fForeign.erase(&body) != 0) {
        giveBackCount(body);
    }
}

// --- objects by number -----------------------------------------------------------------------------------------------

BodyCore * ModelCore::entry(std::int32_t id) const noexcept {
    if (id < 0) {
        return nullptr;
    }
    auto const page = static_cast<std::size_t>(id / kPageSize);
    return page < fPages.size() && fPages[page] != nullptr ? fPages[page][static_cast<std::size_t>(id % kPageSize)]
                                                           : nullptr;
}

void ModelCore::enter(std::int32_t id, BodyCore & body) {
    auto const page = static_cast<std::size_t>(id / kPageSize);
    if (page >= fPages.size()) {
        fPages.resize(page + 1);
    }
    if (fPages[page] == nullptr) {
        fPages[page] = std::make_unique<BodyCore *[]>(kPageSize);
    }
    BodyCore *& slot = fPages[page][static_cast<std::size_t>(id % kPageSize)];
    if (slot != nullptr) {
        fFormer.emplace(id, slot);
    }
    slot = &body;
}

void ModelCore::giveNumber(BodyCore & body, std::int32_t id) noexcept {
    body.fId = id;
    if (fNextId <= id) {
        fNextId = static_cast<std::int32_t>(static_cast<std::uint32_t>(id) + 1U);
    }
}

std::string const * ModelCore::fileIdOf(std::int32_t id) const {
    auto const found = fFileIds.find(id);
    return found != fFileIds.end() ? &found->second : nullptr;
}

bool ModelCore::isValidAnywhere(BodyCore const & body) const {
    if (body.deviant_isValid(fManager.getRootDeviant())) {
        return true;
    }
    for (Deviant const deviant : fManager.internal_namedDeviants()) {
        if (body.deviant_isValid(deviant)) {
            return true;
        }
    }
    return false;
}

BodyCore * ModelCore::bodyById(Deviant deviant, std::int32_t id) const {
    BodyCore * const present = entry(id);
    if (present == nullptr || present->deviant_isValid(deviant)) {
        return present;
    }
    auto const [first, last] = fFormer.equal_range(id);
    for (auto former = first; former != last; ++former) {
        if (former->second->deviant_isValid(deviant)) {
            return former->second;
        }
    }
    return present;
}

template <class Visit> void ModelCore::visitNumbered(Visit visit) const {
    for (auto const & page : fPages) {
        for (std::int32_t slot = 0; page != nullptr && slot < kPageSize; ++slot) {
            if (BodyCore * const body = page[static_cast<std::size_t>(slot)]) {
                visit(*body);
            }
        }
    }
}

template <class Visit> void ModelCore::visitBodies(Visit visit) const {
    visitNumbered(visit);
    for (auto const & former : fFormer) {
        visit(*former.second);
    }
    for (BodyCore * const body : fUnnumbered) {
        visit(*body);
    }
}

void ModelCore::checkId(Deviant deviant, std::int32_t id, ClassDescriptor const & descriptor) const {
    if (fNextId < 1 || id < 0) {
        raiseInternalError("Internal id value overflow!");
    }
    BodyCore const * const present = entry(id);
    if (present == nullptr || id == fId || !isValidAnywhere(*present)) {
        return;
    }
    ImmutableClass const metaClass(descriptor.runtime->metaClass(), descriptor.runtime->deviant());
    std::string const newType = metaClass.isValid() ? "; type = '" + metaClass.getQualifiedName().str() : std::string();
    raiseInternalError("Attempt to overwrite object (id = '" + std::to_string(present->fId) +
                       typeText(deviant, *present) + "') with object (id = '" + std::to_string(id) + newType + "')");
}

BodyCore & ModelCore::ownBody(ClassObject const & object) const {
    BodyCore & body = *object.getImplementation()->internal_body();
    if (body.fModel != this) {
        raiseAnInternalError(); // the numbers of a model are for the bodies that it owns
    }
    return body;
}

ClassObject ModelCore::handleObjectById(Deviant deviant, Integer const & id, ClassObject const & object,
                                        Integer const & mode) {
    std::int32_t const number = static_cast<std::int32_t>(id);
    if (number == fId) {
        return ClassObject(this, deviant);
    }
    if (mode == 1) {
        return ClassObject(bodyById(deviant, number), deviant);
    }
    if (mode != 0) {
        return ClassObject();
    }
    BodyCore & body = ownBody(object);
    checkId(deviant, number, body.internal_descriptor());
    enter(number, body);
    fUnnumbered.erase(&body);
    return object;
}

void ModelCore::setObjectId(Deviant deviant, ClassObject const & object, Integer const & id) {
    std::int32_t const number = static_cast<std::int32_t>(id);
    BodyCore & body = ownBody(object);
    checkId(deviant, number, body.internal_descriptor());
    if (number == fId && &body != this) {
        return;
    }
    // Entered first, which may fail: a body with a number belongs to the model.
    if (number != fId) {
        enter(number, body);
        fUnnumbered.erase(&body);
    }
    giveNumber(body, number);
}

void ModelCore::renumber(BodyCore & body) {
    std::int32_t const former = body.fId;
    checkId(fManager.getRootDeviant(), fNextId, body.internal_descriptor());
    enter(fNextId, body); // which may fail
    fPages[static_cast<std::size_t>(former / kPageSize)][static_cast<std::size_t>(former % kPageSize)] = nullptr;
    body.fId = fNextId;
    fNextId = static_cast<std::int32_t>(static_cast<std::uint32_t>(fNextId) + 1U);
    if (auto noted = fFileIds.extract(former)) {
        noted.key() = body.fId;
        fFileIds.insert(std::move(noted));
    }
}

Integer ModelCore::getNextIdValue(Deviant) const { return Integer(fNextId); }

void ModelCore::setNextIdValue(Deviant, Integer const & value) { fNextId = static_cast<std::int32_t>(value); }

// --- deviants --------------------------------------------------------------------------------------------------------

Deviant ModelCore::createDeviantWithName(Deviant, String const & name) {
    return fManager.createDeviantWithName(name.str());
}

Deviant ModelCore::getRootDeviant(Deviant) const { return fManager.getRootDeviant(); }

void ModelCore::removeDeviantWithName(Deviant deviant, String const & name) {
    if (deviant.getDeviantId() != 0) {
        raiseInternalError("removeDeviantWithName called on non-root deviant");
    }
    if (deviant.getDeviantManager() != &fManager) {
        raiseInternalError("removeDeviantWithName: illegal deviant passed internally as argument");
    }
    fManager.removeDeviantWithName(name.str());
}

// --- deletion --------------------------------------------------------------------------------------------------------

void ModelCore::destroy(Deviant deviant) {
    if (!deviant_isValid(deviant)) {
        return;
    }
    checkWritable(deviant);
    std::vector<BodyCore *> known;
    visitNumbered([&known, deviant](BodyCore & body) {
        if (body.deviant_isValid(deviant)) {
            known.push_back(&body);
        }
    });
    internal_unlinkForDestroy(deviant);
    internal_destroyContents(deviant);
    for (BodyCore const * const body : known) {
        if (body->deviant_isValid(deviant)) {
            raiseInternalError("object not destroyed: it is neither part of hierarchy nor part of unparented");
        }
    }
}

} // namespace ZEL::internal
