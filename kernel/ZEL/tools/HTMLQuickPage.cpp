#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/tools/HTMLQuickPage.h>
#include <ZEL/tools/HTMLTags.h>
#include <ZEL/tools/Navigation.h>
#include <ZEL/tools/TypePredicates.h>

#include <iterator>
#include <utility>

namespace ZEL::util {

namespace {

/// So much text goes to the stream at once.
constexpr std::size_t kPiece = 1 << 16;

SingleValuedPropertyManager const * singleStorage(internal::PropertyView const & property) {
    return dynamic_cast<SingleValuedPropertyManager const *>(property.storage.getImplementationWithoutAssert());
}

} // namespace

HTMLPrinter::QuickPage::QuickPage(HTMLPrinter & printer) : fPrinter(printer) {
    fText.reserve(2 * kPiece);
    page::TextTags(fAfterValues).end("table");
    page::TextTags tags(fAfterValues);
    page::endRow(tags);
    page::TextTags valueTags(fAfterValue);
    valueTags.end("span");
    page::endValue(valueTags);
}

HTMLPrinter::QuickPage::~QuickPage() = default;

void HTMLPrinter::QuickPage::print(ImmutableClassObject const & element) {
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

void HTMLPrinter::QuickPage::put() {
    fPrinter.output.write(fText.data(), static_cast<std::streamsize>(fText.size()));
    fText.clear();
}

void HTMLPrinter::QuickPage::putIfLarge() {
    if (fText.size() >= kPiece) {
        put();
        fPrinter.checkOutput();
    }
}

// --- objects and their properties ------------------------------------------------------------------------------------

void HTMLPrinter::QuickPage::printObject(ImmutableClassObject const & object) {
    page::TextTags tags(fText);
    tags.startWithId("div", fPrinter.markupOf(fPrinter.enter(object)), "");
    tags.element("h1", "head", typeOf(object).name + " " + nameOf(object));
    tags.start("table", "");
    fChildren.clear();
    for (Row const & row : classOf(object).rows) {
        printRow(object, row);
    }
    tags.end("table");
    tags.end("div");
    fToPrint.insert(fToPrint.end(), std::make_move_iterator(fChildren.rbegin()),
                    std::make_move_iterator(fChildren.rend()));
}

void HTMLPrinter::QuickPage::printRow(ImmutableClassObject const & object, Row const & row) {
    std::optional<std::string> const error = read(object, row);
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
        printValue(value, isContained);
        putIfLarge();
    }
    fText += fAfterValues;
}

std::optional<std::string> HTMLPrinter::QuickPage::read(ImmutableClassObject const & object, Row const & row) {
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

void HTMLPrinter::QuickPage::printValue(ImmutableObject const & value, bool isContained) {
    std::size_t const before = fText.size();
    try {
        if (printUsual(value, isContained)) {
            return;
        }
    } catch (...) {
        fText.resize(before); // what has failed is said below
    }
    page::TextTags tags(fText);
    fPrinter.printValue(tags, value, isContained, fChildren);
}

bool HTMLPrinter::QuickPage::printUsual(ImmutableObject const & value, bool isContained) {
    if (!value.isValid()) {
        return false;
    }
    if (internal::BodyCore const * const body = value.getImplementation()->internal_body()) {
        ImmutableClassObject const object(body, value.getDeviant());
        TypeMarkup const & type = typeOf(value);
        std::string const & link = linkTo(object);
        fText.append(type.beforeLink).append(link).append(fAfterValue);
        if (isContained) {
            fChildren.push_back(object);
        }
        return true;
    }
    if (!isValueObject(value)) {
        return false;
    }
    TypeMarkup const & type = typeOf(value);
    std::string const text = fPrinter.markupOf(value.toString());
    fText.append(type.beforeValue).append(text).append(fAfterValue);
    return true;
}

// --- what is made once -----------------------------------------------------------------------------------------------

HTMLPrinter::QuickPage::TypeMarkup const & HTMLPrinter::QuickPage::typeOf(ImmutableObject const & value) {
    NSInterface::SeenObject const seen = value.getImplementation()->internal_metaType(value.getDeviant());
    Key const type{seen.body, seen.deviant};
    return *fLastTypes.get(type, [&] { return &typeOf(type, value); });
}

HTMLPrinter::QuickPage::TypeMarkup const & HTMLPrinter::QuickPage::typeOf(Key const & key,
                                                                          ImmutableObject const & value) {
    auto const found = fTypes.find(key);
    if (found != fTypes.end()) {
        return found->second;
    }
    TypeMarkup type;
    type.name = fPrinter.helperGetTypeName(value);
    page::TextTags tags(type.beforeValue);
    page::startValue(tags, fPrinter.markupOf(navigation::getMetaTypeClassName(value)), type.name);
    type.beforeLink = type.beforeValue;
    tags.start("span", page::kPrimitive);
    page::TextTags(type.beforeLink).start("span", page::kLink);
    return fTypes.emplace(key, std::move(type)).first->second;
}

HTMLPrinter::QuickPage::ClassMarkup const & HTMLPrinter::QuickPage::classOf(ImmutableClassObject const & object) {
    ImmutableClass const metaClass = object.getMetaClass();
    Key const key{metaClass.getImplementationWithoutAssert(), metaClass.getDeviant()};
    return *fLastClasses.get(key, [&] { return &markupOf(metaClass, key); });
}

HTMLPrinter::QuickPage::ClassMarkup const & HTMLPrinter::QuickPage::markupOf(ImmutableClass const & metaClass,
                                                                             Key const & key) {
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

HTMLPrinter::QuickPage::Row HTMLPrinter::QuickPage::rowOf(internal::PropertyView const & property) const {
    Row row{&property, singleStorage(property), {}, {}};
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

std::string HTMLPrinter::QuickPage::nameOf(ImmutableClassObject const & object) {
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

std::string const & HTMLPrinter::QuickPage::linkTo(ImmutableClassObject const & object) {
    Key const key{object.getImplementationWithoutAssert(), object.getDeviant()};
    return fLastLinks.get(key, [&] {
        return fPrinter.hyperLinkElement("#" + fPrinter.markupOf(fPrinter.helperGetID(object)), nameOf(object));
    });
}

} // namespace ZEL::util
