// What comes out of the rules, applied: objects are made and get their values.

#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/serializer/ClassOfName.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/Tokens.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/StandardReadTransforms.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace ZEL::Serializer {
namespace {

std::string labelOf(QualifiedName name) {
    return name.hasUri() ? "{" + name.getUri() + "}" + name.getName() : name.getName();
}

/// Whether the namespace is that of a version of XMI.
bool isXmiNamespace(std::string_view uri) {
    static std::string const earlier = std::string(OMG_SCHEMA_BASE).append("/spec/XMI/");
    return uri.starts_with(earlier) || uri.starts_with("http://www.omg.org/spec/XMI/") ||
           uri == "http://www.omg.org/XMI";
}

bool isOfModels(ImmutableClass const & metaClass) { return internal::MetaClassView::of(metaClass)->isModel(); }

/// The element's class; invalid if it is not known.
ImmutableClass classOf(Context const & element) {
    ImmutableClass const metaClass = classOfName(element.getType());
    return metaClass.isValid() ? metaClass : classOfName(element.getRole());
}

/// The class of what stands for a model where there can be none. Invalid if there is none.
ImmutableClass partClassOf(ImmutableClass const & ofModels) {
    for (ImmutableClass const & general : ofModels.getSuperClasses()) {
        if (!isOfModels(general)) {
            return general;
        }
    }
    return {};
}

/// Whether the element at hand has attributes, such as `xsi:nil`, that would have no place beside its value.
bool saysMoreThanItsText(ParseState const & state) {
    auto const attributes = state.xml.attributes();
    return std::any_of(attributes.begin(), attributes.end(), [&](HASP::XmlReader::Attribute const & attribute) {
        bool const isOfXmi = attribute.uri == &state.xmiUri || attribute.uri == &state.xsiUri;
        return !isOfXmi || (attribute.localName != &state.xmiId && attribute.localName != &state.xmiType);
    });
}

using Bodies = std::unordered_set<NSInterface::ObjectIntf const *>;

/// Those of the object's parts that stand in properties of which the given one may be a subset.
std::vector<ClassObject> partsOfWiderProperties(ClassObject const & object, MetaClass const & metaClass,
                                                MetaProperty const & property, Bodies const & parts) {
    std::vector<ClassObject> found;
    auto const type = internal::MetaClassView::of(ImmutableClass(property.type));
    for (MetaProperty const & place : metaClass.properties()) {
        if (&place == &property || !place.isPart() || !type->inheritsFrom(place.typeBody)) {
            continue;
        }
        for (Object const & part : place.storage.get(object).toVector()) {
            if (parts.contains(part.getImplementationWithoutAssert())) {
                found.emplace_back(part);
            }
        }
    }
    return found;
}

} // namespace

void XmiReaderImpl::process(ParseState & state, ContextSequence && sequence) {
    ContextSequence applied = fTransformers.apply(std::move(sequence));
    Context skipped;
    bool entered = false;
    bool isFirst = true;
    if (isOfOtherVersion(state, applied)) {
        startSkipping(state);
        applied.clear();
    } else if (Context const * const link = keeps() ? linkWithoutPlace(state, applied) : nullptr) {
        if (!joinFragment(state, *link)) {
            startSkipping(state);
        }
        applied.clear();
    }
    for (Context & context : applied) {
        if (context.skipContext() && (context.isExtension() || context.isElement())) {
            state.isForeign = state.isForeign || context.isExtension();
            skipped = context;
            // The first element stands for the one in the file, even if rules have given it other names.
            if (isFirst || context == state.currentElement.asContext()) {
                startSkipping(state);
            }
        } else if ((context.isAttribute() || context.isReference()) && skipped.isParentOf(context)) {
            continue;
        } else {
            applyContext(state, context, entered);
            if (state.isSkipping) {
                skipped = context;
            }
        }
        isFirst = isFirst && !context.isElement();
    }
    state.sequence = std::move(applied);
}

/// The link that the element at hand is, if its object has no property that could hold one: none of this name, or one
/// for parts, which cannot be in another model. Null for any other element.
Context const * XmiReaderImpl::linkWithoutPlace(ParseState const & state, ContextSequence const & applied) {
    if (state.cursor.metaClass == nullptr) {
        return nullptr;
    }
    auto const element =
        std::find_if(applied.begin(), applied.end(), [](Context const & context) { return context.isElement(); });
    QualifiedName const role = element != applied.end() ? element->getRole() : state.currentElement.role;
    Context const * link = nullptr;
    for (Context const & context : applied) {
        if (context.isElement() && (context.skipContext() || context.getRole() != role)) {
            return nullptr;
        }
        link = context.isReference() && context.getRole() == role ? &context : link;
    }
    MetaProperty const * const property = link != nullptr ? state.cursor.metaClass->find(role) : nullptr;
    bool const isPlace = property != nullptr && (!property->isComposite || property->isDataType);
    return isPlace ? nullptr : link;
}

void XmiReaderImpl::applyContext(ParseState & state, Context & context, bool & entered) {
    bool const isInObject = state.cursor.metaClass != nullptr;
    if (context.isElement()) {
        Made made = isInObject ? makeChild(state, context) : makeTopLevel(state, context);
        if (made.metaClass != nullptr) {
            if (entered && isInObject) {
                leave(state);
            }
            entered = isInObject;
            enter(state, std::move(made), std::move(context));
        }
    } else if (isInObject && (context.isAttribute() || context.isReference())) {
        // What is said of the envelope, or of a block in it, is read as if it were not there.
        if (context.isReference() || context.getParentUri() != XmiConstants::XMI_NS_URI) {
            QualifiedName const type = context.getType() == context.getRole() ? QualifiedName() : context.getType();
            applyValue(state, context.getRole(), context.getFirstValue(), context.isReference(), type);
        }
    } else if (context.isAttribute() && keeps() && context.getParentUri() == XmiConstants::XMI_NS_URI &&
               context.getParentRoleName() == "XMI") {
        keepAttribute(state, context.getRole(), context.getFirstValue());
    }
}

bool XmiReaderImpl::startPart(ParseState & state, Head const & head) {
    // The envelope is not read as the objects in it are.
    if (state.cursor.metaClass == nullptr || state.hasVersion || &state.xml.getNamespaceURI() == &state.xmiUri) {
        return false;
    }
    ElementPlan & plan = state.plans.of(state.currentElement, *state.cursor.metaClass, fTransformers);
    if (plan.part == nullptr) {
        return false;
    }
    auto const attributes = state.xml.attributes();
    state.roleNames.clear();
    for (HASP::XmlReader::Attribute const & attribute : attributes) {
        if (!head.holds(attribute)) {
            auto const & planned =
                ElementPlans::attributeOf(plan, state.roleNames.size(), attribute, state.roles, fTransformers);
            if (!planned.isPlain) {
                return false;
            }
            state.roleNames.push_back(planned.role);
        }
    }
    Context element = state.currentElement.asContext();
    element.setElement(head.id == nullptr ? std::string() : std::string(head.id->value));
    Made made = makePlanned(state, plan, ObjectId(element.getFirstValue()));
    if (made.metaClass == nullptr) {
        made = makePart(state, *plan.part, element);
        if (made.metaClass == nullptr) {
            return true; // it is skipped, and its attributes with it
        }
        planParts(state, plan, made);
    }
    enter(state, std::move(made), std::move(element));
    auto role = state.roleNames.begin();
    for (HASP::XmlReader::Attribute const & attribute : attributes) {
        if (!head.holds(attribute)) {
            applyValue(state, *role++, attribute.value, false);
        }
    }
    return true;
}

/// Whether the element says, after all rules, that it is of another version of XMI. The root of a file does so, too, by
/// any attribute in the namespace of another version: ids and types could not be recognised there.
bool XmiReaderImpl::isOfOtherVersion(ParseState & state, ContextSequence const & applied) {
    if (!std::exchange(state.hasVersion, false)) {
        return false;
    }
    for (Context const & context : applied) {
        bool const isOfThis = context.getUri() == XmiConstants::XMI_NS_URI;
        if (!context.isAttribute() || !isXmiNamespace(context.getUri())) {
            continue;
        }
        bool const isVersion = context.getRoleName() == "version";
        if (isVersion ? !(isOfThis && context.getFirstValue() == XmiConstants::XMI_VERSION)
                      : !isOfThis && state.elements.size() == 1) {
            ++fReport.fOtherVersions[isVersion ? context.getFirstValue() : context.getUri()];
            return true;
        }
    }
    return false;
}

void XmiReaderImpl::startSkipping(ParseState & state) {
    if (state.isSkipping) {
        raiseInternalError("Invalid skip state in XmiReaderImpl");
    }
    // By the name in the file: a rule may have given the Context another one, which no end of an element has.
    state.skipName = state.currentElement.role;
    state.isSkipping = true;
    state.skipDepth = 0;
    // What a file says of itself is no part of a model.
    state.countsSkipped = state.skipName != QualifiedName(XmiConstants::XMI_NS_URI, "Documentation");
    if (state.countsSkipped) {
        ++fReport.fSkippedElements[labelOfElement(state)];
        if (state.keeps && state.xml.getLocalName() != "XMI") {
            state.skipped.start(state.xml, state.bindings);
        }
    }
}

// --- what no property can hold ---------------------------------------------------------------------------------------

void XmiReaderImpl::keepSkipped(ParseState & state) {
    if (!state.keeps || !state.countsSkipped) {
        return;
    }
    std::string text = state.skipped.take();
    if (text.empty()) {
        return;
    }
    if (state.linkDepth != 0 && state.linkDepth + 1 == state.elements.size()) {
        if (state.linkFile != nullptr) {
            state.linkFile->addContent(state.linkPlace, text);
        } else {
            fRemainders.of(state.linkedPart).elements.push_back({std::move(text)});
        }
    } else if (state.cursor.metaClass != nullptr) {
        fRemainders.of(state.cursor.object).elements.push_back({std::move(text)});
    } else {
        state.beside.elements.push_back({std::move(text), Remainder::Place::Beside});
    }
}

void XmiReaderImpl::keepAttribute(ParseState & state, QualifiedName role, std::string_view value) {
    std::string const * const prefix = role.hasUri() ? state.bindings.prefixOf(role.getUri()) : nullptr;
    Remainder::Attribute attribute{role.getUri(), prefix != nullptr ? *prefix : std::string(), role.getName(),
                                   std::string(value)};
    if (state.cursor.metaClass != nullptr) {
        fRemainders.of(state.cursor.object).attributes.push_back(std::move(attribute));
    } else {
        attribute.place = Remainder::Place::Beside;
        state.beside.attributes.push_back(std::move(attribute));
    }
}

void XmiReaderImpl::keepBeside(ParseState & state) {
    if (state.beside.empty() || !state.model.isValid() || state.fragment.host != nullptr) {
        return;
    }
    Remainder & remainder = fRemainders.of(state.model);
    auto const append = [](auto & all, auto & more) {
        all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    };
    append(remainder.attributes, state.beside.attributes);
    append(remainder.elements, state.beside.elements);
}

/// The element at hand as the file names it, whatever rules have made of it.
std::string XmiReaderImpl::labelOfElement(ParseState & state) {
    std::string label = labelOf(state.elementName());
    for (HASP::XmlReader::Attribute const & attribute : state.xml.attributes()) {
        if (attribute.uri == &state.xmiUri && attribute.localName == &state.xmiType) {
            label.append(" of type ").append(attribute.value);
        }
    }
    return label;
}

// --- making objects --------------------------------------------------------------------------------------------------

XmiReaderImpl::Made XmiReaderImpl::makeTopLevel(ParseState & state, Context const & context) {
    Made made = !keeps()                ? createObject(state, context)
                : state.model.isValid() ? makeFurther(state, context)
                                        : makeFirst(state, context);
    if (made.metaClass == nullptr) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_InvalidTopLevelElement,
                                context.getUri(), context.getRoleName());
        startSkipping(state);
    } else if (keeps() && !made.metaClass->isModel()) {
        ParseState::Fragment & fragment = state.fragment;
        bool const isPart = fragment.host != nullptr && fragment.part.getImplementationWithoutAssert() == nullptr &&
                            context.getFirstValue() == fragment.id;
        if (!(isPart ? placePart(state, made) : placeInModel(state, made))) {
            giveUp(made);
            startSkipping(state);
            return {};
        }
        if (!isPart) {
            fRemainders.of(made.object).standing = Remainder::Standing::AtTop;
        }
    }
    if (made.metaClass != nullptr && state.fragment.host != nullptr) {
        state.fragment.tops.push_back(made.object);
    }
    return made;
}

/// The Merger makes a model of any first element. If that element is of another class, it makes an object, too.
XmiReaderImpl::Made XmiReaderImpl::makeFirst(ParseState & state, Context const & context) {
    ImmutableClass const metaClass = classOf(context);
    if (!metaClass.isValid() || isOfModels(metaClass)) {
        return createObject(state, context);
    }
    Context nameless = context;
    nameless.setElement({});
    Made const whole = createObject(state, nameless);
    if (whole.metaClass == nullptr) {
        return {};
    }
    fRemainders.of(whole.object).standing = Remainder::Standing::Nowhere;
    return createObject(state, context);
}

/// A file has one model: a further one at its top becomes a part of that.
XmiReaderImpl::Made XmiReaderImpl::makeFurther(ParseState & state, Context const & context) {
    ImmutableClass const metaClass = classOf(context);
    ImmutableClass const partClass =
        metaClass.isValid() && isOfModels(metaClass) ? partClassOf(metaClass) : ImmutableClass();
    if (!partClass.isValid()) {
        return createObject(state, context);
    }
    Context part = context;
    part.setType(metaClass.getRootModel().getUri().str(), partClass.getName().str());
    Made made = createObject(state, part);
    noteClass(state, made);
    return made;
}

/// Notes the class that the file names, if the object is of another one because of the place where it stands.
void XmiReaderImpl::noteClass(ParseState const & state, Made const & made) {
    QualifiedName const named = state.currentElement.type;
    if (made.metaClass == nullptr || made.metaClass->isModel() || named.getName() == made.metaClass->name()) {
        return;
    }
    if (ImmutableClass const metaClass = classOfName(named); metaClass.isValid() && isOfModels(metaClass)) {
        Remainder & remainder = fRemainders.of(made.object);
        remainder.typeUri = named.getUri();
        remainder.typeName = named.getName();
    }
}

/// An element at the top that is no model becomes a part of the file's model. False if the model has no place for it.
bool XmiReaderImpl::placeInModel(ParseState & state, Made const & made) {
    if (!state.model.isValid() || made.object.getContainerZEL().isValid()) {
        return made.object.getContainerZEL().isValid();
    }
    MetaProperty const * place = nullptr;
    for (MetaProperty const & property : metaClasses().of(state.model).properties()) {
        bool const isPlace = property.isPart() && made.metaClass->inheritsFrom(property.typeBody) &&
                             (property.isMany || !property.storage.has(state.model));
        if (isPlace && (place == nullptr || (property.isMany && !place->isMany))) {
            place = &property;
        }
    }
    return place != nullptr && fValues.setPart(state.model, *place, made.object, *made.metaClass, made.isNew, false);
}

XmiReaderImpl::Made XmiReaderImpl::makeChild(ParseState & state, Context const & context) {
    MetaProperty const * const property = state.cursor.metaClass->find(context.getRole());
    if (property == nullptr) {
        startSkipping(state);
        return {};
    }
    if (property->isDataType) {
        if (state.keeps && saysMoreThanItsText(state)) {
            startSkipping(state);
            return {};
        }
        state.isInText = true;
        state.text.clear();
        state.textRole = context.getRole();
        state.textProperty = property;
        return {};
    }
    if (!property->isComposite) {
        // What the element says is said of the present object: that of a link without a target is nothing.
        if (state.keeps && !saysMoreThanItsText(state)) {
            startSkipping(state);
        }
        return {};
    }
    return makePart(state, *property, context);
}

XmiReaderImpl::Made XmiReaderImpl::makePlanned(ParseState & state, ElementPlan const & plan, ObjectId const & id) {
    if (plan.made == nullptr || !fMerger->makesAllAnew() || isGiven(state, *plan.part)) {
        return {};
    }
    ClassObject const & owner = state.cursor.object;
    internal::BodyCore * const part = fMerger->createPart(owner, *plan.place, *plan.model, *plan.instances, id);
    if (part == nullptr) {
        return {};
    }
    Made made{ClassObject(part, owner.getDeviant()), plan.made, true};
    enterId(state, made.object, id);
    noteGiven(state, *plan.part);
    return made;
}

void XmiReaderImpl::planParts(ParseState const & state, ElementPlan & plan, Made const & made) const {
    internal::FieldDescriptor const * const place = plan.part->links;
    internal::BodyCore const & body = *made.object.getImplementation()->internal_body();
    internal::ModelCore * const model = body.internal_model();
    // In a part of another file ids mean something else, and a class of another name may be one for want of the named.
    bool const isPlain = made.isNew && place != nullptr && state.fragment.host == nullptr &&
                         made.metaClass->name() == plan.names.type.getName() && !made.metaClass->isModel() &&
                         model != nullptr && state.model.isValid() &&
                         state.model.getImplementation()->internal_body() == model &&
                         made.object.getDeviant() == state.cursor.object.getDeviant();
    if (isPlain && internal::isContainment(*place->property) &&
        internal::accepts(*place, *made.object.getImplementation())) {
        plan.place = place;
        plan.model = model;
        plan.made = made.metaClass;
        plan.instances = &body.internal_descriptor();
    }
}

XmiReaderImpl::Made XmiReaderImpl::makePart(ParseState & state, MetaProperty const & property,
                                            Context const & context) {
    if (keeps() && isGiven(state, property)) {
        fValues.reportFurther(state.cursor.object, property);
        startSkipping(state);
        return {};
    }
    Made made = createObject(state, context);
    if (made.metaClass != nullptr && fValues.setPart(state.cursor.object, property, made.object, *made.metaClass,
                                                     made.isNew, isGiven(state, property))) {
        noteGiven(state, property);
        if (keeps() && context.getType() != state.currentElement.type) {
            noteClass(state, made);
        }
        return made;
    }
    giveUp(made);
    startSkipping(state);
    return {};
}

XmiReaderImpl::Made XmiReaderImpl::createObject(ParseState & state, Context const & context) {
    bool const hadModel = state.links != nullptr;
    ObjectId const id(context.getFirstValue());
    // The numbers of a fragment are those of another model.
    static std::string const none;
    bool const isOfModel = state.fragment.host == nullptr || !id.hasPrefix();
    auto [object, isNew] = fMerger->findOrCreate(
        state.model, context.getUri(), context.getRoleName(), context.getTypeUri(), context.getTypeName(),
        isOfModel ? context.getFirstValue() : none, isOfModel ? id : ObjectId());
    if (!object.isValid()) {
        return {};
    }
    MetaClass & metaClass = metaClasses().of(object);
    if (metaClass.isModel()) {
        Model const model(object);
        if (!hadModel && !adoptModel(state, model, context)) {
            return {};
        }
        if (!state.isForeign && (!keeps() || id.hasPrefix())) {
            if (std::string_view const uuid = id.uuid(); !uuid.empty()) {
                model.setUuidBase(String(uuid));
            }
        }
    }
    enterId(state, object, id);
    return {std::move(object), &metaClass, isNew};
}

/// Makes the model that of the file.
bool XmiReaderImpl::adoptModel(ParseState & state, Model const & model, Context const & context) {
    std::string const path = state.xml.getLocation().getSystemId();
    HASP::Uri const uri = HASP::Uri::fromLocalFile(path);
    if (!uri.isValid()) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_ModelUriSetError, path,
                                uri.error());
        return false;
    }
    if (!keeps() && context.getTypeName() != metaClasses().of(model).name()) {
        // Any top element of a known metamodel makes a model; this one's own content will hardly fit.
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_InvalidTopLevelElement,
                                context.getUri(), context.getRoleName());
    }
    model.setUri(String(uri.toString()));
    fFiles.note(uri.toString(), model);
    state.model = model;
    state.links = &fLinks.of(uri.toString());
    fStandardRules->begin(model);
    return true;
}

/// Whether the id is one that the file's model gives.
bool XmiReaderImpl::isOwnId(ParseState & state, ObjectId const & id) {
    if (id.hasPrefix() && state.modelId.empty() && state.model.isValid()) {
        state.modelId = ObjectId::of(state.model);
    }
    return id.hasPrefix() && id.text().starts_with(state.modelId);
}

void XmiReaderImpl::enterId(ParseState & state, ClassObject const & object, ObjectId const & id) {
    FileLinks * const whole = state.fragment.whole;
    if (!id.text().empty()) {
        FileLinks & links = linksOf(state, object);
        bool isOnly = links.enter(id, object);
        if (isOnly && whole != nullptr) {
            // In one file with the rest an id can mean one object only, the one that has it already; and numbers are
            // those of this model.
            isOnly = whole->find(id) == nullptr && whole->enter(id, object);
        }
        if (!isOnly) {
            Logger::instance()->warning("Id %s occurs more than once in model %s", id.text(), links.uri());
        } else if (keeps() && !isOwnId(state, id) && (whole == nullptr || !id.hasPrefix())) {
            noteFileId(object, id); // by which other files, and what is kept, may name it
            return;
        }
    }
    if (isInLinkedFile() && whole == nullptr) {
        noteFileId(object, id); // any object of the file may become the target of a link from another one
    }
}

FileLinks & XmiReaderImpl::linksOf(ParseState & state, ClassObject const & object) {
    if (state.links != nullptr) {
        internal::BodyCore const * const fileModel = state.model.getImplementation()->internal_body();
        if (object.getImplementation()->internal_body()->internal_model() == fileModel) {
            return *state.links;
        }
    }
    Model const model = object.getModelZEL();
    if (state.links != nullptr && model == state.model) {
        return *state.links;
    }
    return fLinks.of(model.isValid() ? model.getUri().str() : std::string());
}

/// An object without a place would be in no file, but links to it would.
void XmiReaderImpl::giveUp(Made const & made) {
    if (made.metaClass != nullptr && made.isNew && !made.object.getContainerZEL().isValid()) {
        made.object.destroy();
    }
}

// --- objects on the way ----------------------------------------------------------------------------------------------

void XmiReaderImpl::enter(ParseState & state, Made && made, Context && context) {
    ++state.objectDepth;
    // Bindings of this element went in before, so they are in the copy too and stay when the object is left.
    state.types.pushContext();
    state.cursors.push_back(std::move(state.cursor));
    state.cursor = {std::move(made.object), made.metaClass,       std::move(context),
                    state.given.size(),     state.derived.size(), state.parts.size()};
}

void XmiReaderImpl::leave(ParseState & state) {
    if (state.cursors.empty()) {
        raiseInternalError("Invalid empty Cursor stack in XmiReaderImpl");
    }
    applyDerived(state);
    applyNamedParts(state);
    fTransformers.onCreate(state.cursor.context, state.cursor.object);
    state.given.resize(state.cursor.firstGiven);
    state.cursor = std::move(state.cursors.back());
    state.cursors.pop_back();
    state.types.popContext();
    --state.objectDepth;
}

// --- values ----------------------------------------------------------------------------------------------------------

void XmiReaderImpl::applyText(ParseState & state) {
    if (state.text.empty()) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_EmptyValueElement,
                                state.textProperty->name, metaClasses().nameOf(state.cursor.object));
    }
    Context value;
    value.setParent(state.cursor.context);
    value.setRole(state.textRole);
    value.setAttribute(std::move(state.text));
    state.text.clear();
    process(state, ContextSequence(std::move(value)));
    state.isInText = false;
}

void XmiReaderImpl::applyValue(ParseState & state, QualifiedName role, std::string_view text, bool isLink,
                               QualifiedName type) {
    MetaClass & metaClass = *state.cursor.metaClass;
    MetaProperty const * const property = metaClass.find(role);
    if (property == nullptr) {
        ++fReport.fIgnoredAttributes[metaClass.name() + "." + labelOf(role)];
        if (keeps() && !isLink) {
            keepAttribute(state, role, text);
        }
    } else if (isLink || (!property->isDataType && !property->isComposite && !property->isDerived)) {
        NotedLink const noted = noteLinks(state, text, *property, type);
        if (isLink && noted.file != nullptr && keeps()) {
            state.linkDepth = state.elements.size(); // what stands in the element is said of the link
            state.linkFile = noted.file;
            state.linkPlace = noted.place;
        }
    } else if (property->isDataType) {
        // The model would not find an object by a number that it has not assigned; and a model belongs to the file that
        // it was read from, not to the one in which it was written.
        using Role = internal::PropertyView::Role;
        bool const isOfFile = property->role == Role::Id || (property->role == Role::Uri && metaClass.isModel());
        if (property->isDerived && !property->isReadOnly && !property->isMany) {
            state.derived.emplace_back(property, text);
        } else if (!isOfFile && fValues.setText(state.cursor.object, *property, text, isGiven(state, *property))) {
            noteGiven(state, *property);
        }
    } else if (keeps() && property->isComposite) {
        state.parts.emplace_back(property, text);
    } else {
        ignoreAttribute(state, *property, text);
    }
}

void XmiReaderImpl::ignoreAttribute(ParseState & state, MetaProperty const & property, std::string_view text) {
    ++fReport.fIgnoredAttributes[state.cursor.metaClass->name() + "." + property.name];
    if (keeps()) {
        keepAttribute(state, QualifiedName({}, property.name), text);
    }
}

/// Where a composition is a subset of another one, tools keep its parts in that one, and name them in an attribute;
/// where it is all there is, they repeat what stands there. Such an attribute is known once all parts are.
void XmiReaderImpl::applyNamedParts(ParseState & state) {
    for (std::size_t i = state.cursor.firstParts; i < state.parts.size(); ++i) {
        auto const & [property, text] = state.parts[i];
        if (!applyNamedParts(state, *property, text)) {
            ignoreAttribute(state, *property, text);
        }
    }
    state.parts.resize(state.cursor.firstParts);
}

/// False, and nothing is changed, if the text names anything but parts of the object that fit the property.
bool XmiReaderImpl::applyNamedParts(ParseState & state, MetaProperty const & property, std::string_view text) {
    ClassObject const & object = state.cursor.object;
    Bodies others;
    for (std::string_view token = takeToken(text); !token.empty(); token = takeToken(text)) {
        ClassObject const * const part = linksOf(state, object).find(ObjectId(token));
        if (part == nullptr || !part->isValid() || part->getContainerZEL() != object ||
            !metaClasses().of(*part).inheritsFrom(property.typeBody)) {
            return false;
        }
        others.insert(part->getImplementation());
    }
    std::vector<Object> const present = property.storage.get(object).toVector();
    for (Object const & part : present) {
        others.erase(part.getImplementationWithoutAssert());
    }
    if (others.empty() || property.isDerived) {
        return true;
    }
    if (!property.isMany && others.size() + present.size() > 1) {
        return false;
    }
    std::vector<ClassObject> const moved = partsOfWiderProperties(object, metaClasses().of(object), property, others);
    for (ClassObject const & part : moved) {
        fValues.setPart(object, property, part, metaClasses().of(part), false, false);
    }
    return property.isMany || !moved.empty();
}

/// A derived value counts if the object holds nothing that it could be derived from: what a file states itself goes
/// before what its writer has made of that.
void XmiReaderImpl::applyDerived(ParseState & state) {
    for (std::size_t i = state.cursor.firstDerived; i < state.derived.size(); ++i) {
        auto const & [property, text] = state.derived[i];
        fValues.setDerived(state.cursor.object, *property, text);
    }
    state.derived.resize(state.cursor.firstDerived);
}

bool XmiReaderImpl::isGiven(ParseState const & state, MetaProperty const & property) {
    auto const first = state.given.begin() + static_cast<std::ptrdiff_t>(state.cursor.firstGiven);
    return !property.isMany && std::find(first, state.given.end(), &property) != state.given.end();
}

void XmiReaderImpl::noteGiven(ParseState & state, MetaProperty const & property) {
    if (!property.isMany) {
        state.given.push_back(&property);
    }
}

// --- links -----------------------------------------------------------------------------------------------------------

XmiReaderImpl::NotedLink XmiReaderImpl::noteLinks(ParseState & state, std::string_view text,
                                                  MetaProperty const & property, QualifiedName type) {
    ClassObject const & object = state.cursor.object;
    std::string_view rest = text;
    bool isFurther = isGiven(state, property);
    NotedLink last;
    auto const keep = [&](std::string_view target) {
        if (keeps()) {
            fRemainders.of(object).links.push_back(
                {property.name, std::string(target), type.getUri(), type.getName(), {}});
        }
    };
    for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
        if (isFurther && keeps()) {
            fValues.reportFurther(object, property);
            keep(token);
            continue;
        }
        std::string external;
        std::size_t const sign = token.find('#');
        // Without this sign there is no fragment, and nothing but a URI with a fragment leads out of the file.
        if (sign != std::string_view::npos) {
            if (HASP::Uri const reference(token); reference.isValid()) {
                std::optional<std::string> const uri = fFiles.follow(reference, baseOf(state, object));
                if (!uri.has_value()) {
                    fValues.reportUnresolved(object, property);
                    keep(token);
                    continue;
                }
                external = *uri;
                external += token.substr(sign); // as it stands in the file, as ids do
            }
        }
        FileLinks & links = state.links != nullptr ? *state.links : linksOf(state, object);
        links.add(object, property, external.empty() ? token : std::string_view(external), type, isFurther);
        last = {&links, links.size() - 1};
        noteGiven(state, property);
        isFurther = !property.isMany;
    }
    return last;
}

/// The URI against which the file at hand names others.
std::string XmiReaderImpl::baseOf(ParseState const & state, ClassObject const & object) {
    if (state.fragment.host != nullptr) {
        return state.links->uri();
    }
    Model const root = object.getRootModel();
    return root.isValid() ? root.getUri().str() : std::string();
}

} // namespace ZEL::Serializer
