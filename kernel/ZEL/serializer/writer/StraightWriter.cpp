#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/FieldText.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/writer/ObjectView.h>
#include <ZEL/serializer/writer/StraightWriter.h>

#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlWriter.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace ZEL::Serializer {

using HASP::XmlConstants;
using internal::BodyCore;
using internal::FieldDescriptor;
using internal::FieldValue;
using internal::StateCore;

namespace {

bool isEmpty(FieldDescriptor const & field, StateCore const & state) {
    return field.sequence != nullptr ? field.sequence(state).empty() : field.get(state) == nullptr;
}

bool hasStereotypes(StateCore const & state) { return !state.stereotypeInstances().empty(); }

/// What the tag of an object has to know of its parts.
struct Content {
    bool isContained;      ///< whether the object contains any
    std::size_t firstPart; ///< the first one in which there may be objects to write
};

Content contentOf(StateCore const & state, WritePlan const & plan) {
    auto const & others = plan.otherContainments;
    Content content{hasStereotypes(state) || std::any_of(others.begin(), others.end(),
                                                         [&](auto const * field) { return !isEmpty(*field, state); }),
                    plan.parts.size()};
    for (std::size_t i = 0; i < plan.parts.size(); ++i) {
        WritePlan::Part const & part = plan.parts[i];
        bool const isFilled = part.field != nullptr && !isEmpty(*part.field, state);
        if (isFilled || part.field == nullptr) {
            content.firstPart = std::min(content.firstPart, i);
        }
        content.isContained = content.isContained || (isFilled && part.isContainment);
        if (content.isContained && content.firstPart <= i) {
            break;
        }
    }
    return content;
}

} // namespace

// --- classes ---------------------------------------------------------------------------------------------------------

WritePlan * StraightWriter::planOf(BodyCore const & body) {
    internal::ClassDescriptor const & descriptor = body.internal_descriptor();
    if (fLast != &descriptor) {
        auto const [entry, isNew] = fPlans.try_emplace(&descriptor);
        if (isNew) {
            PropertyPartition const & partition = fPartitions.partitionOf(body);
            try {
                auto const * const stereotypes = fPartitions.find(partition.appliedStereotypeInstance);
                if (!isUnusual(partition) && (stereotypes == nullptr || stereotypes->isPart())) {
                    entry->second = std::make_unique<WritePlan>(partition, stereotypes, fXml);
                }
            } catch (std::runtime_error const &) {
                // A name that XML cannot hold matters only where there is a value: that is for others to find out.
            }
        }
        fLast = &descriptor;
        fLastPlan = entry->second.get();
    }
    return fLastPlan;
}

void StraightWriter::forgetNames() noexcept {
    fPlans.clear();
    fLast = nullptr;
    fLastPlan = nullptr;
}

/// Whether objects of the class have a form that is not written here.
bool StraightWriter::isUnusual(PropertyPartition const & partition) const {
    auto const mayFit = [this](WrittenProperty const * property) {
        return property->isExtension() || fTransformers.mayFit(property->attribute);
    };
    auto const anyMayFit = [&](std::vector<WrittenProperty const *> const & properties) {
        return std::any_of(properties.begin(), properties.end(), mayFit);
    };
    return anyMayFit(partition.singleValues) || anyMayFit(partition.multiValues) || anyMayFit(partition.references) ||
           anyMayFit(partition.visitable);
}

ImmutableClassObject StraightWriter::handleOf(BodyCore const & body) const { return {&body, fDeviant}; }

// --- the objects in an object ----------------------------------------------------------------------------------------

StraightWriter::Level & StraightWriter::push(BodyCore const & body, StateCore const & state, WritePlan & plan,
                                             std::size_t firstPart) {
    if (fDepth == fLevels.size()) {
        fLevels.emplace_back();
    }
    Level & level = fLevels[fDepth++];
    level.body = &body;
    level.state = &state;
    level.plan = &plan;
    level.nextPart = firstPart;
    level.openElements = 0;
    return level;
}

BodyCore const * StraightWriter::nextChild(Level & level) const {
    for (;;) {
        if (level.next != level.end) {
            void const * const element = *level.next;
            ++level.next;
            return static_cast<NSInterface::ObjectIntf const *>(element)->internal_body();
        }
        if (level.single != nullptr) {
            return std::exchange(level.single, nullptr)->internal_body();
        }
        if (level.nextElsewhere != level.elsewhere.size()) {
            return level.elsewhere[level.nextElsewhere++].getImplementation()->internal_body();
        }
        if (level.nextPart >= level.plan->parts.size()) {
            return nullptr;
        }
        enter(level, level.plan->parts[level.nextPart++]);
    }
}

void StraightWriter::enter(Level & level, WritePlan::Part const & part) const {
    level.part = &part;
    if (part.field == nullptr) {
        ImmutableClassObject const object = handleOf(*level.body);
        level.elsewhere = ObjectView(object).objectsOf(*part.property);
        level.nextElsewhere = 0;
    } else if (part.field->sequence != nullptr) {
        internal::PersistentSequence const & sequence = part.field->sequence(*level.state);
        level.next = sequence.begin();
        level.end = sequence.end();
    } else {
        level.single = part.field->get(*level.state);
    }
}

// --- collecting ------------------------------------------------------------------------------------------------------

bool StraightWriter::collect(ImmutableClassObject const & object, Collected const & collected) {
    fDeviant = object.getDeviant();
    fDepth = 0;
    if (!collectObject(*object.getImplementation()->internal_body(), collected)) {
        return false;
    }
    while (fDepth != 0) {
        Level & level = fLevels[fDepth - 1];
        BodyCore const * const child = nextChild(level);
        if (child != nullptr) {
            if (!collectObject(*child, collected)) {
                return false;
            }
        } else if (level.nextPart == level.plan->parts.size() && level.plan->stereotypes &&
                   hasStereotypes(*level.state)) {
            ++level.nextPart;
            enter(level, *level.plan->stereotypes);
        } else {
            --fDepth;
        }
    }
    return true;
}

bool StraightWriter::collectObject(BodyCore const & body, Collected const & collected) {
    StateCore const & state = *body.readState(fDeviant);
    WritePlan * const plan = planOf(body);
    if (plan == nullptr) {
        return false;
    }
    if (!plan->isCollected) {
        plan->isCollected = true;
        std::string const & uri = plan->partition.type.getUri();
        collected.namespaces.emplace(uri, NamespaceRegistry::instance()->getPrefixFromMetaUri(uri));
    }
    if (Remainder const * const remainder = state.remainder()) {
        RemainderWriter::collect(*remainder, collected.kept);
    }
    fContexts.noteNumber(body);
    if (hasStereotypes(state)) {
        handleOf(body).getAppliedStereotypeInstances().forEach(
            [&](ImmutableClassObject const & instance) { collected.stereotypeInstances.push_back(instance); });
    }
    push(body, state, *plan, 0);
    return true;
}

// --- writing ---------------------------------------------------------------------------------------------------------

void StraightWriter::writeParts(ImmutableClassObject const & object, ElementsAtTop const & elsewhere) {
    if (!fHasNames) {
        fHasNames = true;
        fIdName = fXml.makeName("id", XmiConstants::XMI_NS_URI);
        fTypeName = fXml.makeName("type", XmiConstants::XMI_NS_URI);
    }
    BodyCore const & body = *object.getImplementation()->internal_body();
    fDeviant = object.getDeviant();
    fDepth = 0;
    push(body, *body.readState(fDeviant), *planOf(body), 0);
    while (fDepth != 0) {
        Level & level = fLevels[fDepth - 1];
        if (BodyCore const * const child = nextChild(level)) {
            if (fDepth != 1 || !elsewhere.has(*child)) {
                writeObject(*child, *level.part);
            }
        } else {
            Remainder const * const remainder = level.openElements != 0 ? level.state->remainder() : nullptr;
            if (remainder != nullptr) {
                fRemainders.writeChildren(handleOf(*level.body), *remainder);
            }
            fPrinter.end(level.openElements);
            --fDepth;
        }
    }
}

void StraightWriter::writeObject(BodyCore const & body, WritePlan::Part const & part) {
    StateCore const & state = *body.readState(fDeviant);
    WritePlan & plan = *planOf(body);
    readLinks(body, state, plan);
    bool const hasElements = !fElements.empty();
    bool const hasValues = readValues(body, plan);
    Content const content = contentOf(state, plan);

    Remainder const * const remainder = state.remainder();
    bool const isKept = remainder != nullptr && RemainderWriter::hasChildren(*remainder);

    bool const isOpen = hasElements || hasValues || content.isContained || isKept;
    if (isOpen) {
        fXml.writeStartElement(part.name);
    } else {
        fXml.writeEmptyElement(part.name);
    }
    fId.clear();
    fContexts.appendId(body, fDeviant, fId);
    fXml.writeAttribute(fIdName, fId);
    if (remainder == nullptr) {
        writeType(plan);
    } else {
        fPrinter.writeType(fContexts.typeOf(*remainder, plan.partition.type));
    }
    for (WritePlan::Value & value : plan.values) {
        writeValue(body, state, value);
    }
    if (remainder != nullptr) {
        fRemainders.writeAttributes(*remainder);
    }
    // The last property first.
    std::for_each(fLinkTexts.rbegin(), fLinkTexts.rend(), [this](LinkText const & links) {
        fXml.writeAttribute(*links.name, std::string_view(fLinks).substr(links.begin, links.size));
    });
    if (!fElements.empty()) {
        auto const elements = ContextPrinter::Elements::Open;
        auto const level = ContextPrinter::Level::Nested;
        static_cast<void>(remainder != nullptr ? fRemainders.write(*remainder, fElements, elements, level)
                                               : fPrinter.write(fElements, elements, level));
    }
    if (content.firstPart != plan.parts.size()) {
        push(body, state, plan, content.firstPart).openElements = isOpen ? 1 : 0;
    } else if (isOpen) {
        if (isKept) {
            fRemainders.writeChildren(handleOf(body), *remainder);
        }
        fXml.writeEndElement();
    }
}

// --- links -----------------------------------------------------------------------------------------------------------

void StraightWriter::readLinks(BodyCore const & body, StateCore const & state, WritePlan const & plan) {
    fLinks.clear();
    fLinkTexts.clear();
    fElements.clear();
    if (plan.links.empty()) {
        return;
    }
    if (fModel == nullptr || body.internal_model() != fModel) {
        fModel = body.internal_model();
        fHasLinks = fContexts.selectModel(handleOf(body));
    }
    if (!fHasLinks) {
        return;
    }
    for (WritePlan::Links const & links : plan.links) {
        std::size_t const begin = fLinks.size();
        if (links.field == nullptr || !appendLinks(*links.field, state)) {
            fLinks.resize(begin);
            readOtherLinks(body, plan, links);
        }
        if (fLinks.size() != begin) {
            fLinkTexts.push_back({&links.name, begin, fLinks.size() - begin});
        }
    }
}

void StraightWriter::readOtherLinks(BodyCore const & body, WritePlan const & plan, WritePlan::Links const & links) {
    ImmutableClassObject const object = handleOf(body);
    if (!fContexts.selectModel(object)) {
        return;
    }
    std::optional<Context> context = fContexts.referenceOf(ObjectView(object), *links.property, parentOf(plan));
    if (context && context->isMultiValued()) {
        fElements.addContext(std::move(*context));
    } else if (context) {
        fLinks.append(context->getFirstValue());
    }
}

bool StraightWriter::appendLinks(FieldDescriptor const & field, StateCore const & state) {
    if (field.sequence == nullptr) {
        NSInterface::ObjectIntf const * const target = field.get(state);
        return target == nullptr || appendLink(*target);
    }
    internal::PersistentSequence const & sequence = field.sequence(state);
    bool isFirst = true;
    for (void * const target : sequence) {
        if (!std::exchange(isFirst, false)) {
            fLinks.push_back(' ');
        }
        if (!appendLink(*static_cast<NSInterface::ObjectIntf const *>(target))) {
            return false;
        }
    }
    return true;
}

bool StraightWriter::appendLink(NSInterface::ObjectIntf const & target) {
    BodyCore const & body = *target.internal_body();
    if (fModel == nullptr || body.internal_model() != fModel || !body.deviant_isValid(fDeviant)) {
        return false;
    }
    fContexts.appendId(body, fDeviant, fLinks);
    return true;
}

// --- values ----------------------------------------------------------------------------------------------------------

bool StraightWriter::readValues(BodyCore const & body, WritePlan const & plan) {
    if (plan.partition.multiValues.empty()) {
        return false;
    }
    ImmutableClassObject const object = handleOf(body);
    ObjectView const view(object);
    Context const parent = parentOf(plan);
    bool hasAny = false;
    for (WrittenProperty const * const property : plan.partition.multiValues) {
        hasAny |= ObjectContexts::appendValues(view, *property, parent, fElements);
    }
    return hasAny;
}

/// Of values and links the names of the class are all that is asked for.
Context StraightWriter::parentOf(WritePlan const & plan) {
    Context parent;
    parent.setType(plan.partition.type);
    return parent;
}

void StraightWriter::writeType(WritePlan & plan) {
    if (plan.typeName.empty()) {
        plan.typeName = fPrinter.typeNameOf(plan.partition.type);
    }
    if (!plan.typeName.empty()) {
        fXml.writeAttribute(fTypeName, plan.typeName);
    }
}

void StraightWriter::writeValue(BodyCore const & body, StateCore const & state, WritePlan::Value & value) {
    if (value.place == nullptr) {
        writeBoxed(body, value);
        return;
    }
    FieldValue const found = value.place->get(state);
    if (!found.isSet()) {
        return;
    }
    if (found.form() == FieldValue::Form::Literal) {
        writeLiteral(body, value, found.number());
        return;
    }
    internal::NumberBuffer buffer;
    if (std::optional<std::string_view> const text = internal::viewOf(found, buffer)) {
        writeUnlessDefault(value, *text);
    } else {
        writeBoxed(body, value);
    }
}

void StraightWriter::writeBoxed(BodyCore const & body, WritePlan::Value const & value) {
    ImmutableClassObject const object = handleOf(body);
    if (std::optional<std::string> const text = ObjectView(object).boxedTextOf(*value.property)) {
        writeUnlessDefault(value, *text);
    }
}

void StraightWriter::writeLiteral(BodyCore const & body, WritePlan::Value & value, std::size_t index) {
    if (index >= value.literals.size()) {
        value.literals.resize(index + 1);
    }
    std::optional<std::string> & literal = value.literals[index];
    if (!literal) {
        ImmutableClassObject const object = handleOf(body);
        literal = ObjectView(object).boxedTextOf(*value.property);
    }
    if (literal) {
        writeUnlessDefault(value, *literal);
    }
}

void StraightWriter::writeUnlessDefault(WritePlan::Value const & value, std::string_view text) {
    if (!value.property->hasDefault || text != value.property->defaultText) {
        fXml.writeAttribute(value.name, text);
    }
}

} // namespace ZEL::Serializer
