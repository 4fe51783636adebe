#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/FieldText.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/tools/HTMLQuickPage.h>
#include <ZEL/tools/HTMLTags.h>
#include <ZEL/tools/Navigation.h>
#include <ZEL/tools/TypePredicates.h>

#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

namespace ZEL::util {

namespace {

/// So much text goes to the stream at once.
constexpr std::size_t kPiece = 1 << 16;

SingleValuedPropertyManager const * singleStorage(internal::PropertyView const & property) {
    return dynamic_cast<SingleValuedPropertyManager const *>(property.storage.getImplementationWithoutAssert());
}

/// Of an instance of the class that the view is of; else its values lie elsewhere.
internal::StateCore const * stateOf(ImmutableClassObject const & object, internal::MetaClassView const & view) {
    internal::BodyCore const * const body = object.getImplementation()->internal_body();
    return body != nullptr && &body->internal_descriptor() == view.descriptor() ? body->readState(object.getDeviant())
                                                                                : nullptr;
}

} // namespace

HTMLQuickPage::HTMLQuickPage(HTMLPrinter & printer) : fPrinter(printer) {
    fText.reserve(2 * kPiece);
    page::TextTags(fAfterValues).end("table");
    page::TextTags tags(fAfterValues);
    page::endRow(tags);
    page::TextTags valueTags(fAfterValue);
    valueTags.end("span");
    page::endValue(valueTags);
}

HTMLQuickPage::~HTMLQuickPage() = default;

void HTMLQuickPage::print(ImmutableClassObject const & element) {
    try {
        fToPrint.push_back(element);
        while (!fToPrint.empty()) {
            ImmutableClassObject const next = std::move(fToPrint.back());
            fToPrint.pop_back();
            printObject(next);
            putIfLarge();
        }
    } catch (...) {
        put();
        throw;
    }
    put();
}

void HTMLQuickPage::put() {
    fPrinter.output.write(fText.data(), static_cast<std::streamsize>(fText.size()));
    fText.clear();
}

void HTMLQuickPage::putIfLarge() {
    if (fText.size() >= kPiece) {
        put();
        fPrinter.checkOutput();
    }
}

// --- objects and their properties ------------------------------------------------------------------------------------

void HTMLQuickPage::printObject(ImmutableClassObject const & object) {
    page::TextTags tags(fText);
    tags.startWithId("div", fPrinter.markupOf(fPrinter.enter(object)), "");
    tags.element("h1", "head", typeOf({object.getImplementation(), object.getDeviant()}).name + " " + nameOf(object));
    tags.start("table", "");
    fChildren.clear();
    ClassMarkup & markup = classOf(object);
    Present const present{object, stateOf(object, *markup.view)};
    for (Row & row : markup.rows) {
        printRow(present, row);
    }
    page::keptRow(tags, remainderOf(object), [this](std::string const & text) { return fPrinter.markupOf(text); });
    tags.end("table");
    tags.end("div");
    fToPrint.insert(fToPrint.end(), std::make_move_iterator(fChildren.rbegin()),
                    std::make_move_iterator(fChildren.rend()));
}

void HTMLQuickPage::printRow(Present const & present, Row & row) {
    if (printStored(present, row)) {
        return;
    }
    std::optional<std::string> const error = read(present.object, row);
    if (error) {
        page::TextTags tags(fText);
        page::startRow(tags, *row.property, fPrinter.markupOf(row.property->name), " error");
        tags.text(fPrinter.markupOf(*error));
        page::endRow(tags);
        return;
    }
    if (fValues.empty()) {
        fText += row.empty;
        return;
    }
    fText += row.beforeValues;
    bool const isContained = row.property->isPart();
    for (ImmutableObject const & value : fValues) {
        printValue({value.getImplementationWithoutAssert(), value.getDeviant()}, isContained);
        putIfLarge();
    }
    fText += fAfterValues;
}

bool HTMLQuickPage::printStored(Present const & present, Row & row) {
    if (present.state == nullptr) {
        return false;
    }
    if (row.property->links != nullptr) {
        printStoredLinks(present, row);
        return true;
    }
    if (row.property->value == nullptr || row.single == nullptr) {
        return false;
    }
    std::size_t const before = fText.size();
    try {
        printStoredValue(present, row);
        return true;
    } catch (...) {
        fText.resize(before); // what has failed is said on the other road
        return false;
    }
}

void HTMLQuickPage::printStoredLinks(Present const & present, Row const & row) {
    bool const isContained = row.property->isPart();
    bool hasBegun = false;
    auto const print = [&](NSInterface::ObjectIntf const * element) {
        if (!std::exchange(hasBegun, true)) {
            fText += row.beforeValues;
        }
        printValue({element, present.object.getDeviant()}, isContained);
        putIfLarge();
    };
    internal::FieldDescriptor const & links = *row.property->links;
    if (links.sequence != nullptr) {
        links.sequence(*present.state).forEach([&](void * element) {
            print(static_cast<NSInterface::ObjectIntf const *>(element));
        });
    } else if (NSInterface::ObjectIntf const * const element = links.get(*present.state)) {
        print(element);
    }
    fText += hasBegun ? fAfterValues : row.empty;
}

void HTMLQuickPage::printStoredValue(Present const & present, Row & row) {
    internal::FieldValue const value = row.property->value->get(*present.state);
    if (!value.isSet()) {
        fText += row.empty;
        return;
    }
    if (row.type == nullptr) {
        // All values of the property are of one type.
        ImmutableObject const boxed = row.single->getOne(present.object);
        row.type = &typeOf({boxed.getImplementation(), boxed.getDeviant()});
    }
    std::string const text = fPrinter.markupOf(textOf(value, present, row));
    fText.append(row.beforeValues).append(row.type->beforeValue).append(text).append(fAfterValue).append(fAfterValues);
}

std::string HTMLQuickPage::textOf(internal::FieldValue const & value, Present const & present, Row & row) {
    auto const boxedText = [&] { return row.single->getOne(present.object).toString().str(); };
    if (value.form() == internal::FieldValue::Form::Literal) {
        if (row.literals.size() <= value.number()) {
            row.literals.resize(value.number() + std::size_t(1));
        }
        std::string & literal = row.literals[value.number()];
        if (literal.empty()) {
            literal = boxedText();
        }
        return literal;
    }
    std::optional<std::string> text = internal::textOf(value);
    return text ? *std::move(text) : boxedText();
}

std::optional<std::string> HTMLQuickPage::read(ImmutableClassObject const & object, Row const & row) {
    fValues.clear();
    ImmutableSequence<ImmutableObject> values;
    bool isReached = row.single != nullptr;
    try {
        if (isReached) {
            // A null handle stands for no value, but may be one.
            ImmutableObject value = row.single->getOne(object);
            if (value.getImplementationWithoutAssert() != nullptr || row.single->has(object)) {
                fValues.push_back(std::move(value));
            }
            return std::nullopt;
        }
        values = row.property->storage.get(object);
        isReached = true;
        if (values.isValid()) {
            values.forEach([this](ImmutableObject value) { fValues.push_back(std::move(value)); });
            return std::nullopt;
        }
    } catch (Exception const & exception) {
        if (isReached || !isAnInternalError(exception)) {
            return exception.GetMessageTxt();
        }
    } catch (...) {
        // What it was the object says below.
    }
    // The object has words for a storage that does not know its property.
    fValues.clear();
    return HTMLPrinter::read(object, *row.property, values, fValues);
}

// --- values ----------------------------------------------------------------------------------------------------------

void HTMLQuickPage::printValue(Seen const & value, bool isContained) {
    std::size_t const before = fText.size();
    try {
        if (printUsual(value, isContained)) {
            return;
        }
    } catch (...) {
        fText.resize(before); // what has failed is said below
    }
    page::TextTags tags(fText);
    fPrinter.printValue(tags, value.handle(), isContained, fChildren);
}

bool HTMLQuickPage::printUsual(Seen const & value, bool isContained) {
    if (value.object == nullptr || !value.object->deviant_isValid(value.deviant)) {
        return false;
    }
    if (internal::BodyCore const * const body = value.object->internal_body()) {
        TypeMarkup const & type = typeOf(value);
        std::string const & link = linkTo(*body, value.deviant);
        fText.append(type.beforeLink).append(link).append(fAfterValue);
        if (isContained) {
            fChildren.emplace_back(body, value.deviant);
        }
        return true;
    }
    ImmutableObject const handle = value.handle();
    if (!isValueObject(handle)) {
        return false;
    }
    TypeMarkup const & type = typeOf(value);
    std::string const text = fPrinter.markupOf(handle.toString());
    fText.append(type.beforeValue).append(text).append(fAfterValue);
    return true;
}

// --- what is made once -----------------------------------------------------------------------------------------------

HTMLQuickPage::TypeMarkup const & HTMLQuickPage::typeOf(Seen const & value) {
    NSInterface::SeenObject const seen = value.object->internal_metaType(value.deviant);
    Key const type{seen.body, seen.deviant};
    return *fLastTypes.get(type, [&] { return &typeOf(type, value); });
}

HTMLQuickPage::TypeMarkup const & HTMLQuickPage::typeOf(Key const & key, Seen const & value) {
    auto const found = fTypes.find(key);
    if (found != fTypes.end()) {
        return found->second;
    }
    ImmutableObject const handle = value.handle();
    TypeMarkup type;
    type.name = fPrinter.helperGetTypeName(handle);
    page::TextTags tags(type.beforeValue);
    page::startValue(tags, fPrinter.markupOf(navigation::getMetaTypeClassName(handle)), type.name);
    type.beforeLink = type.beforeValue;
    tags.start("span", page::kPrimitive);
    page::TextTags(type.beforeLink).start("span", page::kLink);
    return fTypes.emplace(key, std::move(type)).first->second;
}

HTMLQuickPage::ClassMarkup & HTMLQuickPage::classOf(ImmutableClassObject const & object) {
    ImmutableClass const metaClass = object.getMetaClass();
    Key const key{metaClass.getImplementationWithoutAssert(), metaClass.getDeviant()};
    return *fLastClasses.get(key, [&] { return &markupOf(metaClass, key); });
}

HTMLQuickPage::ClassMarkup & HTMLQuickPage::markupOf(ImmutableClass const & metaClass, Key const & key) {
    auto const found = fClasses.find(key);
    if (found != fClasses.end()) {
        return found->second;
    }
    ClassMarkup made{internal::MetaClassView::of(metaClass), {}, nullptr};
    made.rows.reserve(made.view->properties().size());
    for (internal::PropertyView const & property : made.view->properties()) {
        made.rows.push_back(rowOf(property));
    }
    internal::PropertyView const * const name = made.view->find(internal::PropertyView::Role::Name);
    made.name = name != nullptr && name->property.isValid() ? singleStorage(*name) : nullptr;
    return fClasses.emplace(key, std::move(made)).first->second;
}

HTMLQuickPage::Row HTMLQuickPage::rowOf(internal::PropertyView const & property) const {
    Row row{&property, singleStorage(property), {}, {}, nullptr, {}};
    std::string const name = fPrinter.markupOf(property.name);
    page::TextTags empty(row.empty);
    page::startRow(empty, property, name, " empty");
    empty.start("table", "");
    empty.text(fAfterValues);
    page::TextTags beforeValues(row.beforeValues);
    page::startRow(beforeValues, property, name, "");
    beforeValues.start("table", "");
    return row;
}

std::string HTMLQuickPage::nameOf(ImmutableClassObject const & object) {
    SingleValuedPropertyManager const * const storage = classOf(object).name;
    if (storage == nullptr) {
        return fPrinter.helperGetName(object);
    }
    std::string name;
    try {
        if (!storage->has(object)) {
            return page::kUnnamed;
        }
        name = storage->getOne(object).toString();
    } catch (...) {
        return fPrinter.helperGetName(object); // which says what has failed
    }
    return name.empty() ? page::kAnonymous : fPrinter.markupOf(std::move(name));
}

std::string const & HTMLQuickPage::linkTo(internal::BodyCore const & object, Deviant deviant) {
    return fLastLinks.get({&object, deviant}, [&] {
        ImmutableClassObject const handle(&object, deviant);
        return fPrinter.hyperLinkElement("#" + fPrinter.markupOf(fPrinter.helperGetID(handle)), nameOf(handle));
    });
}

} // namespace ZEL::util
