#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/ObjectId.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/StandardReadTransforms.h>

#include <algorithm>
#include <array>
#include <utility>

namespace ZEL::Serializer {
namespace {

ContextSequence drop(Context const &) { return {}; }

/// A condition is one of the owned rules of what it is a condition of. In some files it stands there, and is linked to;
/// in others it stands in the place of the link.
ContextSequence ownRule(Context const & context, std::string const & uml) {
    std::string const & owner = context.getParentTypeUri();
    bool const isOfUml = owner == uml || owner == XmiConstants::UML_2_0_NS_URI;
    if (!context.isElement() || !isOfUml || context.getFirstValue().empty()) {
        return context;
    }
    Context rule = context;
    rule.setRole(HASP::XmlConstants::NULL_NS_URI, "ownedRule");
    if (!context.getType().hasUri()) {
        rule.setType(owner, "Constraint"); // the names of an element without a type are those of its role
    }
    ContextSequence sequence(
        makeReference(parentOf(context), context.getRoleName(), rule.getType(), context.getFirstValue()));
    sequence.addContext(rule);
    return sequence;
}

/// `href` and `xmi:idref` make a link of the element that they stand on: the link has that element's names.
ContextSequence link(Context const & context) {
    Context reference;
    reference.setRole(context.getParentRole());
    reference.setType(context.getParentType());
    reference.setReference(context.getFirstValue());
    return reference;
}

std::array<std::string, 2> umlUris() {
    return {NamespaceRegistry::instance()->getMetaUri("uml"), XmiConstants::UML_2_0_NS_URI};
}

} // namespace

StandardReadTransforms::StandardReadTransforms() {
    std::string const xmi = XmiConstants::XMI_NS_URI;

    auto const takeId = [this](Context const & context) { return takeNextId(context); };

    addTransform(Pattern().role(xmi, "XMI"), [this](Context const & context) { return beginFile(context); });
    addTransform(Pattern().parentRole(xmi, "XMI").role(xmi, "version"),
                 [this](Context const & context) { return checkVersion(context); });
    addTransform(Pattern().role(xmi, "version"), [](Context const & context) {
        return context.getFirstValue() == XmiConstants::XMI_VERSION ? ContextSequence() : ContextSequence(context);
    });
    addTransform(Pattern().role(xmi, "Documentation"), skipped);
    addTransform(Pattern().parentRole(xmi, "Extension").role("nextIdValue"), takeId);
    addTransform(Pattern().parentRole(xmi, "Extension").role("extender"),
                 [this](Context const & context) { return checkExtender(context); });
    addTransform(Pattern().role(xmi, "Extension"), [this](Context const & context) { return holdBack(context); });
    for (std::string const & uri : umlUris()) {
        addTransform(Pattern().parentRole(uri, "Model").role("nextIdValue"), takeId);
        addTransform(Pattern().type(uri, "Profile"), skipped);
        addTransform(Pattern().parentRole(uri, "Model").role("uri"), drop);
    }
    for (char const * const condition : {"precondition", "postcondition", "bodyCondition"}) {
        addTransform(Pattern().role(condition),
                     [uml = umlUris().front()](Context const & context) { return ownRule(context, uml); });
    }
    addTransform(Pattern().role(xmi, "idref"), link);
    addTransform(Pattern().role("href"), link);

    setOnCreate([this](Context const &, ClassObject const & object) { tieNextId(object); });
    setPostTransform([this](Model const & model) { endFile(model); });
}

void StandardReadTransforms::readProfiles() {
    for (std::string const & uri : umlUris()) {
        removeTransform(Pattern().type(uri, "Profile"));
    }
}

/// The value of an outer file waits until this one has been read, and is not for this one's model.
ContextSequence StandardReadTransforms::beginFile(Context const & context) {
    fNextIdValue = 0;
    fUuid.clear();
    return holdBack(context);
}

ContextSequence StandardReadTransforms::holdBack(Context const & context) {
    fDeferred = context;
    return {};
}

/// The element held back, marked so that the reader skips it; nothing is held back any more.
Context StandardReadTransforms::releaseSkipped(std::string const & value) {
    Context released = std::exchange(fDeferred, Context());
    released.setElement(value);
    released.setExtension(true);
    released.setSkipState(true);
    return released;
}

ContextSequence StandardReadTransforms::checkVersion(Context const & context) {
    if (context.getFirstValue() == XmiConstants::XMI_VERSION) {
        return {};
    }
    ContextSequence sequence(releaseSkipped(context.getFirstValue()));
    sequence.addContext(context);
    return sequence;
}

ContextSequence StandardReadTransforms::checkExtender(Context const & context) {
    if (context.getFirstValue() == XmiConstants::ZEL_EXTENDER) {
        return {};
    }
    fNextIdValue = 0;
    return releaseSkipped(context.getFirstValue());
}

ContextSequence StandardReadTransforms::takeNextId(Context const & context) {
    ObjectId const next(context.getFirstValue());
    fNextIdValue = next.number();
    fUuid = next.uuid();
    fNextIds.push_back(fNextIdValue);
    return {};
}

void StandardReadTransforms::tieNextId(ClassObject const & object) {
    if (fNextIdValue == 0 || fNextIds.empty()) {
        return;
    }
    Model const model = object.getModelZEL();
    // A file reached by a link is read while the outer one's value still waits: once the inner model has its own, the
    // next in line belongs to the outer one.
    if (model.isValid() && fIdsByModel.try_emplace(model.getUri(), fNextIds.back()).second) {
        fNextIds.pop_back();
    }
}

void StandardReadTransforms::begin(Model const & model) {
    tieNextId(model);
    raiseNextId(model);
    // Of a model whose own id is not one of this system, this is all that the file says of its identity.
    if (!fUuid.empty()) {
        model.setUuidBase(String(std::exchange(fUuid, {})));
    }
}

void StandardReadTransforms::raiseNextId(Model const & model) const {
    auto const found = fIdsByModel.find(model.getUri());
    if (found != fIdsByModel.end()) {
        // Never below an id that is in use.
        auto const present = static_cast<std::int32_t>(model.getNextIdValue());
        model.setNextIdValue(std::max(found->second, present));
    }
}

void StandardReadTransforms::endFile(Model const & model) {
    if (model.isValid()) {
        raiseNextId(model);
    }
    if (!fNextIds.empty()) {
        fNextIdValue = fNextIds.back();
    }
}

} // namespace ZEL::Serializer
