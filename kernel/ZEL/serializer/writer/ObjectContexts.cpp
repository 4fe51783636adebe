#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/FieldText.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/serializer/ObjectId.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/writer/ObjectContexts.h>
#include <ZEL/serializer/writer/RemainderWriter.h>
#include <ZEL/values/Object.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

namespace ZEL::Serializer {

namespace {

/// Begins a block of this system's own.
Context appendExtension(ContextSequence & sequence) {
    Context extension = makeExtension();
    sequence.addContext(extension);
    sequence.addContext(makeAttribute(extension, "extender", XmiConstants::ZEL_EXTENDER));
    return extension;
}

void warnAboutDeadLink(ImmutableClassObject const & object, WrittenProperty const & property) {
    Logger::instance()->warning(
        "The links of property %s of object %s are left out: one of them leads to an object that "
        "no longer exists",
        property.name.c_str(), ObjectId::of(object).c_str());
}

} // namespace

bool ObjectContexts::append(ObjectView const & object, PropertyPartition const & partition, Place const & place,
                            ContextSequence & sequence) {
    Remainder const & remainder = remainderOf(object.handle());
    Context element;
    element.setType(typeOf(remainder, partition.type));
    if (place.property != nullptr) {
        element.setRole(place.property->attribute);
        element.setParent(*place.parent);
    } else {
        element.setRole(element.getType());
    }
    if (place.property != nullptr && place.property->isExtension()) {
        element.setParent(appendExtension(sequence));
        element.setExtension(true);
    }
    // Of a parent only the names count, so what serves as parent goes without the id.
    Context const parent = element;
    element.setElement(idOf(object.handle()));
    sequence.addContext(std::move(element));

    for (WrittenProperty const * const property : partition.singleValues) {
        appendValue(object, *property, parent, sequence);
    }
    RemainderWriter::appendAttributes(remainder, parent, sequence);
    bool hasChildElements = appendReferences(object, partition, parent, sequence);
    for (WrittenProperty const * const property : partition.multiValues) {
        hasChildElements |= appendValues(object, *property, parent, sequence);
    }
    return hasChildElements || RemainderWriter::hasChildren(remainder);
}

QualifiedName ObjectContexts::typeOf(Remainder const & remainder, QualifiedName own) const {
    bool const isOther = fKeepsFileIds && !remainder.typeName.empty();
    return isOther ? QualifiedName(remainder.typeUri, remainder.typeName) : own;
}

std::string const * ObjectContexts::keptIdOf(internal::BodyCore const & object) const {
    internal::ModelCore const * const model = fKeepsFileIds ? object.internal_model() : nullptr;
    return model != nullptr && !model->fileIds().empty() ? model->fileIdOf(object.internal_id()) : nullptr;
}

void ObjectContexts::noteNumber(internal::BodyCore const & object) {
    if (fKeepsFileIds && keptIdOf(object) == nullptr) {
        fNextNumber = std::max(fNextNumber, object.internal_id() + 1);
    }
}

void ObjectContexts::appendHead(ImmutableClassObject const & object, ContextSequence & sequence) {
    ImmutableModel const model = object.getModelZEL();
    if (!model.isValid()) {
        return;
    }
    internal::ModelCore const & core = *model.getImplementation()->internal_body()->internal_model();
    bool const hasOtherIds = fKeepsFileIds && !core.fileIds().empty();
    Context const extension = appendExtension(sequence);
    sequence.addContext(makeAttribute(extension, "persistentIds", "true"));
    sequence.addContext(makeAttribute(
        extension, "nextIdValue", internal::siidOf(ObjectId::of(model), hasOtherIds ? fNextNumber : core.nextId())));
}

void ObjectContexts::appendValue(ObjectView const & object, WrittenProperty const & property, Context const & parent,
                                 ContextSequence & sequence) {
    if (property.role == internal::PropertyView::Role::Id) {
        return;
    }
    std::optional<std::string> text = object.textOf(property);
    if (!text || (property.hasDefault && *text == property.defaultText)) {
        return;
    }
    Context context;
    context.setRole(property.attribute);
    context.setType(property.valueTypeName);
    context.setAttribute(std::move(*text));
    context.setParent(parent);
    sequence.addContext(std::move(context));
}

bool ObjectContexts::appendValues(ObjectView const & object, WrittenProperty const & property, Context const & parent,
                                  ContextSequence & sequence) {
    if (!property.storage.has(object.handle())) {
        return false;
    }
    Context context;
    context.setRole(property.attribute);
    context.setParent(parent);
    for (ImmutableObject const value : property.storage.get(object.handle())) {
        context.addAttribute(value.toString().str());
        ObjectView::noteType(value, property);
    }
    context.setType(property.valueTypeName);
    bool const isMultiValued = context.isMultiValued();
    sequence.addContext(std::move(context));
    return isMultiValued;
}

bool ObjectContexts::appendReferences(ObjectView const & object, PropertyPartition const & partition,
                                      Context const & parent, ContextSequence & sequence) {
    if (!selectModel(object.handle())) {
        return false;
    }
    // Links in the form of an attribute go first, the last property before the others; child elements keep the order.
    std::vector<Context> attributes;
    std::vector<Context> elements;
    for (WrittenProperty const * const property : partition.references) {
        if (std::optional<Context> context = referenceOf(object, *property, parent)) {
            (context->isMultiValued() ? elements : attributes).push_back(std::move(*context));
        }
    }
    std::for_each(attributes.rbegin(), attributes.rend(),
                  [&](Context & context) { sequence.addContext(std::move(context)); });
    std::for_each(elements.begin(), elements.end(),
                  [&](Context & context) { sequence.addContext(std::move(context)); });
    return !elements.empty();
}

std::optional<Context> ObjectContexts::referenceOf(ObjectView const & object, WrittenProperty const & property,
                                                   Context const & parent) {
    std::vector<ImmutableClassObject> const targets = object.objectsOf(property);
    if (targets.empty()) {
        return std::nullopt;
    }
    if (std::any_of(targets.begin(), targets.end(), [](auto const & target) { return !target.isValid(); })) {
        if (fWarns) {
            warnAboutDeadLink(object.handle(), property);
        }
        return std::nullopt;
    }
    return referenceTo(targets, property, parent);
}

std::optional<Context> ObjectContexts::referenceTo(std::vector<ImmutableClassObject> const & targets,
                                                   WrittenProperty const & property, Context const & parent) {
    Context context;
    context.setRole(property.attribute);
    context.setParent(parent);
    bool isExternal = false;
    std::vector<std::string> texts;
    for (ImmutableClassObject const & target : targets) {
        bool const isOutside = !isOfModelAtHand(target);
        texts.push_back(isOutside ? externalReference(target) : idOf(target));
        if (texts.back().empty()) {
            return std::nullopt;
        }
        isExternal = isExternal || isOutside;
    }
    context.setType(fPartitions.partitionOf(*targets.back().getImplementation()).type);
    if (isExternal) {
        for (std::string & text : texts) {
            context.addReference(std::move(text));
        }
        return context;
    }
    std::string joined = std::move(texts.front());
    std::for_each(std::next(texts.begin()), texts.end(),
                  [&](std::string const & text) { joined.append(1, ' ').append(text); });
    context.setReference(std::move(joined));
    return context;
}

std::string ObjectContexts::externalReference(ImmutableClassObject const & target) {
    ModelUri const & model = uriOfModel(target.getRootModel());
    HASP::Uri const & uri = model.uri;
    if (model.text.empty() || !uri.isValid()) {
        return {};
    }
    internal::BodyCore const & body = *target.getImplementation()->internal_body();
    internal::ModelCore const * const core = body.internal_model();
    std::string const * const fileId = fKeepsFileIds && core != nullptr ? core->fileIdOf(body.internal_id()) : nullptr;
    if (fileId != nullptr) {
        // As it stands in that file: ids are compared by their characters, escapes included.
        HASP::Uri const file = linkTo(HASP::Uri(uri.getScheme(), uri.getHost(), uri.getPath(), {}));
        return file.isValid() ? file.toString() + "#" + *fileId : std::string();
    }
    return linkTo(HASP::Uri(uri.getScheme(), uri.getHost(), uri.getPath(), idOf(target))).toString();
}

/// Relative between files. What is found by its name alone, such as a metamodel, keeps it whole: a part of it would
/// count from the place of the file that is written.
HASP::Uri ObjectContexts::linkTo(HASP::Uri const & target) const {
    bool const areFiles = !target.toLocalFile().empty() && !fModelUri->uri.toLocalFile().empty();
    return areFiles ? target.relativize(fModelUri->uri) : target;
}

std::string ObjectContexts::relativeTo(std::string const & target) const {
    HASP::Uri const uri(target);
    // A path without scheme is relative already.
    bool const isFile = uri.isValid() && !uri.getScheme().empty() && !uri.toLocalFile().empty();
    std::size_t const sign = target.find('#');
    HASP::Uri const file = isFile ? linkTo(uri.withoutFragment()) : HASP::Uri();
    return isFile && file.isValid() ? file.toString() + target.substr(sign) : target;
}

std::string ObjectContexts::idOf(ImmutableClassObject const & object) {
    std::string text;
    appendId(*object.getImplementation()->internal_body(), object.getDeviant(), text);
    return text;
}

void ObjectContexts::appendId(internal::BodyCore const & object, Deviant deviant, std::string & text) {
    internal::ModelCore const * const model = object.internal_model();
    if (std::string const * const kept = keptIdOf(object)) {
        text.append(*kept);
        return;
    }
    // A model's own id has no number after it, though its last part may look like one.
    bool const isModel = static_cast<internal::BodyCore const *>(model) == &object;
    if (model != nullptr && model == fIdModel && !isModel) {
        internal::NumberBuffer buffer;
        char const * const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), object.internal_id()).ptr;
        text.append(fIdPrefix).append(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
        return;
    }
    std::string const whole = ObjectId::of(ImmutableClassObject(&object, deviant));
    ObjectId const id(whole);
    if (model != nullptr && !isModel && id.serial() == static_cast<std::size_t>(object.internal_id())) {
        fIdModel = model;
        fIdPrefix = id.head();
    }
    text.append(whole);
}

bool ObjectContexts::selectModel(ImmutableClassObject const & object) {
    internal::ModelCore const * const core = object.getImplementation()->internal_body()->internal_model();
    if (fModelUri == nullptr || core == nullptr || core != fModelCore) {
        fModel = object.getRootModel();
        fModelUri = &uriOfModel(fModel);
        fModelCore = core;
    }
    return !fModelUri->text.empty();
}

bool ObjectContexts::isOfModelAtHand(ImmutableClassObject const & object) const {
    internal::ModelCore const * const core = object.getImplementation()->internal_body()->internal_model();
    return (core != nullptr && core == fModelCore) || object.getRootModel() == fModel;
}

ObjectContexts::ModelUri const & ObjectContexts::uriOfModel(ImmutableModel const & model) {
    auto const [entry, isNew] = fModelUris.try_emplace(model.getImplementationWithoutAssert());
    if (isNew) {
        entry->second.text = uriOf(model);
        entry->second.uri = HASP::Uri(entry->second.text);
    }
    return entry->second;
}

} // namespace ZEL::Serializer
