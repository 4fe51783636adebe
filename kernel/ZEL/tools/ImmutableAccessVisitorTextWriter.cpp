#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/tools/ImmutableAccessVisitorTextWriter.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <memory>
#include <ostream>
#include <unordered_map>

namespace ZEL {
namespace {

constexpr std::uint32_t kMostLevels = 1000;

/// What applies to the property, in braces; empty if nothing does.
std::string decorationsOf(ImmutableProperty const & property) {
    std::string items;
    auto const addIf = [&items](bool applies, char const * item) {
        if (applies) {
            items += items.empty() ? " {" : ",";
            items += item;
        }
    };
    addIf(property.isReadOnly(), "readonly");
    addIf(property.isDerived(), "derived");
    addIf(property.isComposite(), "composite");
    return items.empty() ? items : items + '}';
}

} // namespace

struct ImmutableAccessVisitorTextWriter::KnownProperties : std::unordered_map<ImmutableProperty, Known> {};

ImmutableAccessVisitorTextWriter::ImmutableAccessVisitorTextWriter(std::ostream & stream)
    : ImmutableAccessVisitorTraversalContainment(&fPreWriter, &fPostWriter),
      fPreWriter(*this),
      fPostWriter(*this),
      fStream(stream),
      fKnown(std::make_unique<KnownProperties>()) {}

ImmutableAccessVisitorTextWriter::~ImmutableAccessVisitorTextWriter() = default;

bool ImmutableAccessVisitorTextWriter::visitProperty(ImmutableClassObject const & object,
                                                     ImmutableProperty const & property) {
    return known(property).isLeftOut || ImmutableAccessVisitorTraversalContainment::visitProperty(object, property);
}

bool ImmutableAccessVisitorTextWriter::traverseStereotypeInstances(ImmutableClassObject const &) { return true; }

ImmutableAccessVisitorTextWriter::Known const &
ImmutableAccessVisitorTextWriter::known(ImmutableProperty const & property) {
    Known & known = (*fKnown)[property];
    if (known.property.getImplementationWithoutAssert() == nullptr ||
        !(known.property.getDeviant() == property.getDeviant())) {
        bool const isDerived = property.isDerived();
        known.name = property.getName().str();
        known.decorations = decorationsOf(property);
        known.isLeftOut =
            isDerived || internal::PropertyView::roleOf(known.name) == internal::PropertyView::Role::Unparented;
        known.isPart = property.isComposite() && !isDerived;
        known.property.rebind(property);
    }
    return known;
}

bool ImmutableAccessVisitorTextWriter::isContained() {
    ImmutableProperty const property = getCurrentMetaProperty();
    return !property.isValid() || known(property).isPart;
}

void ImmutableAccessVisitorTextWriter::beginContained(ImmutableClassObject const & object) {
    if (fDepth == 0) {
        fKnown->clear(); // the metamodel may have changed since the last walk
    }
    ++fDepth;
    printTabs();
    ImmutableProperty const property = getCurrentMetaProperty();
    fStream << "[ " << shown(property.isValid() ? known(property).name : object.getMetaClass().getName().str());
}

void ImmutableAccessVisitorTextWriter::endContained() {
    printTabs();
    fStream << ']';
    --fDepth;
}

void ImmutableAccessVisitorTextWriter::printReference(ImmutableClassObject const & object) {
    fStream << ' ' << shown(known(getCurrentMetaProperty()).name) << "=\"" << shown(object.toString().str());
    if (ImmutableProperty const nameProperty = getNameProperty(object); nameProperty.isValid()) {
        if (ImmutableObject const name = object.getOne(nameProperty); name.isValid()) {
            fStream << shown(name.toString().str());
        }
    }
    fStream << ':' << shown(object.getMetaClass().getName().str());
    printPropertyDecorations();
    fStream << '"';
}

void ImmutableAccessVisitorTextWriter::printValue(ImmutableValueObject const & value) {
    fStream << ' ' << shown(known(getCurrentMetaProperty()).name) << "=\"" << shown(value.toString().str());
    printPropertyDecorations();
    fStream << '"';
}

std::string ImmutableAccessVisitorTextWriter::shown(std::string text) const { return text; }

void ImmutableAccessVisitorTextWriter::printTabs() {
    static std::string const blanks(2 * std::size_t(kMostLevels), ' ');
    fStream << '\n';
    fStream.write(blanks.data(), 2 * static_cast<std::streamsize>(std::min(fDepth, kMostLevels)));
}

void ImmutableAccessVisitorTextWriter::printPropertyDecorations() {
    ImmutableProperty const property = getCurrentMetaProperty();
    if (property.isValid()) {
        fStream << known(property).decorations;
    }
}

bool ImmutableAccessVisitorTextWriter::ObjectWriter::visitStereotypeObject(ImmutableStereotypeObject const & instance) {
    return visitClassObject(instance);
}

bool ImmutableAccessVisitorTextWriter::ObjectWriter::visitModel(ImmutableModel const & model) {
    return visitClassObject(model);
}

bool ImmutableAccessVisitorTextWriter::PreWriter::visitClassObject(ImmutableClassObject const & object) {
    if (fWriter.isContained()) {
        fWriter.beginContained(object);
    } else {
        fWriter.printReference(object);
    }
    return true;
}

bool ImmutableAccessVisitorTextWriter::PreWriter::visitValueObject(ImmutableValueObject const & value) {
    fWriter.printValue(value);
    return true;
}

bool ImmutableAccessVisitorTextWriter::PostWriter::visitClassObject(ImmutableClassObject const &) {
    if (fWriter.isContained()) {
        fWriter.endContained();
    }
    return true;
}

} // namespace ZEL
