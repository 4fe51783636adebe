#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/Exception.h>
#include <ZEL/logging/HtmlPage.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/tools/HTMLPrinter.h>
#include <ZEL/tools/HTMLQuickPage.h>
#include <ZEL/tools/HTMLTags.h>
#include <ZEL/tools/Navigation.h>
#include <ZEL/tools/TypePredicates.h>

#include <fstream>
#include <memory>
#include <string_view>
#include <typeinfo>
#include <unordered_map>
#include <utility>

namespace ZEL::util {

namespace {

// The check boxes below name the places, counted from 0, of the rules for empty, derived and error rows.
constexpr char styleSheet[] = R"html(<style type="text/css">
body {width:800px; font-size:10pt; font-family:Arial, Helvetica, Geneva, sans-serif;}
div.uml {}
div.uml h1.head {background-color:powderblue;}
div.uml table {width:100%; margin-top:1px; margin-bottom:20px; border:1px lightgrey solid; border-collapse:collapse;}
div.uml tr.property {}
div.uml tr.empty {background-color:lightgrey; display:none;}
div.uml tr.derived {background-color:ghostwhite; display:none; font-style:italic;}
div.uml tr.error {display:none;}
div.uml td {vertical-align:top; border-width:0px 0px 1px 0px; border-bottom:1px lightgrey dotted; padding:2px 0px 2px 4px;}
div.uml td.name {color:black; width:25%;}
div.uml td.metatype {color:SlateGrey; width:25%;}
div.uml td.type {color:green; width:25%;}
div.uml td.value {color:blue; width:100%;}
div.uml td.error {color:red;}
div.uml td.value table {margin:0px; border:0px;}
div.uml td.value table td {border-bottom:0px; padding:0px;}
</style>
)html";

constexpr char controls[] = R"html(<div class="uml">
<p>Display control:
<input type="checkbox" onclick="toggleCssDisplayNum(7);"> error 
<input type="checkbox" onclick="toggleCssDisplayNum(6);"> derived 
<input type="checkbox" onclick="toggleCssDisplayNum(5);"> empty 
</p>
)html";

constexpr char tail[] = "</div>\n</body>\n</html>\n";

constexpr std::string_view noText = "??";

/// The class of an object that a heading or a link is made for.
ImmutableClass checkedMetaClass(ImmutableClassObject const & object) {
    if (!object.isValid()) {
        raiseInternalError("Expects a valid element");
    }
    ImmutableClass metaClass = object.getMetaClass();
    if (!metaClass.isValid()) {
        raiseInternalError("Expects element to have a valid meta-class");
    }
    return metaClass;
}

} // namespace

/// Writes the tags by the operations of the printer, which may have been overridden.
class HTMLPrinter::OwnTags {
public:
    explicit OwnTags(HTMLPrinter & printer) noexcept : fPrinter(printer) {}

    void start(std::string tag, std::string cssClass) { fPrinter.writeStartTag(std::move(tag), std::move(cssClass)); }
    void element(std::string tag, std::string_view cssClass, std::string text) {
        fPrinter.writeElement(std::move(tag), std::string(cssClass), std::move(text));
    }
    void end(std::string tag) { fPrinter.writeEndTag(std::move(tag)); }
    void text(std::string_view text) { fPrinter.output << text; }

private:
    HTMLPrinter & fPrinter;
};

HTMLPrinter::HTMLPrinter() : HTMLPrinter(Overrides::Anything) {}

/// The objects, by id.
struct HTMLPrinter::Printed : std::unordered_map<std::string, ImmutableClassObject> {};

HTMLPrinter::HTMLPrinter(Overrides overrides)
    : fOutput(std::make_unique<std::ofstream>()),
      output(*fOutput),
      fOverrides(overrides),
      fPrinted(std::make_unique<Printed>()),
      fLogger(Logger::instance()) {}

HTMLPrinter::~HTMLPrinter() = default;

std::string HTMLPrinter::print(ImmutableClassObject element, std::string fileName) {
    std::string path = fileName + ".html";
    printPage(element, fileName, path);
    return path;
}

void HTMLPrinter::printPage(ImmutableClassObject const & element, std::string const & fileName,
                            std::string const & path) {
    fLogger->info("Start of HTML pretty-print of model -- to: %s", fileName);
    if (!element.isValid()) {
        raiseInternalError("Expects a valid Element");
    }
    output.open(path);
    if (!output) {
        output.clear();
        raiseInternalError("Cannot create output file: " + path);
    }
    fPath = path;
    internal::AtScopeEnd const leave([this] {
        if (output.is_open()) {
            output.close();
        }
        output.clear();
    });
    output << html::prologue("RV2FEN UML Generation Report " + markupOf(fileName));
    writeCss();
    writeJss();
    output << html::bodyStart() << controls;
    if (fOverrides == Overrides::MarkupAlone || typeid(*this) == typeid(HTMLPrinter)) {
        HTMLQuickPage(*this).print(element);
    } else {
        printElement(element);
    }
    output << tail;
    output.flush();
    output.close();
    checkOutput();
    fLogger->info("End of HTML pretty-print");
}

void HTMLPrinter::checkOutput() const {
    if (!output) {
        raiseInternalError("Cannot write output file: " + fPath);
    }
}

// --- elements --------------------------------------------------------------------------------------------------------

void HTMLPrinter::printElement(ImmutableClassObject object) {
    if (fIsPrinting) {
        printOneElement(object);
        return;
    }
    // Each child is printed by a call from here, with what it contains put before its siblings.
    fIsPrinting = true;
    internal::AtScopeEnd const stop([this] {
        fIsPrinting = false;
        fToPrint.clear();
    });
    printOneElement(object);
    while (!fToPrint.empty()) {
        ImmutableClassObject const next = std::move(fToPrint.back());
        fToPrint.pop_back();
        printElement(next);
    }
}

std::string HTMLPrinter::enter(ImmutableClassObject const & object) {
    std::string id = helperGetID(object);
    if (!fPrinted->try_emplace(id, object).second) {
        raiseInternalError("Expects unique ID but " + id + " is not");
    }
    return id;
}

void HTMLPrinter::printOneElement(ImmutableClassObject const & object) {
    checkOutput();
    std::string const id = enter(object);
    std::vector<ImmutableClassObject> children;
    writeStartTagWithID("div", markupOf(id), "");
    printElementHead(object);
    printElementBody(object, children);
    writeEndTag("div");
    fToPrint.insert(fToPrint.end(), children.rbegin(), children.rend());
}

void HTMLPrinter::printElementHead(ImmutableClassObject object) {
    writeElement("h1", "head", helperGetTypeName(object) + " " + helperGetName(object));
}

void HTMLPrinter::printElementBody(ImmutableClassObject object, std::vector<ImmutableClassObject> & children) {
    writeStartTag("table", "");
    auto const view = internal::MetaClassView::of(object.getMetaClass());
    for (internal::PropertyView const & property : view->properties()) {
        printProperty(object, property, children);
    }
    OwnTags tags(*this);
    page::keptRow(tags, remainderOf(object), [this](std::string const & text) { return markupOf(text); });
    writeEndTag("table");
}

std::optional<std::string> HTMLPrinter::read(ImmutableClassObject const & object,
                                             internal::PropertyView const & property,
                                             ImmutableSequence<ImmutableObject> & values,
                                             std::vector<ImmutableObject> & elements) {
    try {
        values = object.get(property.property);
        if (!values.isValid()) {
            return "Bug!!! No valid values for property:";
        }
        // Views are computed when they are read, and may fail only then.
        values.forEach([&elements](ImmutableObject value) { elements.push_back(std::move(value)); });
        return std::nullopt;
    } catch (Exception const & exception) {
        return exception.GetMessageTxt();
    } catch (...) {
        return "Unknown exception on property: " + property.name;
    }
}

void HTMLPrinter::printProperty(ImmutableClassObject const & object, internal::PropertyView const & property,
                                std::vector<ImmutableClassObject> & children) {
    ImmutableSequence<ImmutableObject> values;
    std::vector<ImmutableObject> elements;
    std::optional<std::string> const error = read(object, property, values, elements);
    OwnTags tags(*this);
    page::startRow(tags, property, markupOf(property.name), error ? " error" : elements.empty() ? " empty" : "");
    if (error) {
        output << markupOf(*error);
    } else {
        printSequenceValue(values, property.isComposite, property.isDerived, children);
    }
    page::endRow(tags);
}

// --- values ----------------------------------------------------------------------------------------------------------

void HTMLPrinter::printSequenceValue(ImmutableSequence<ImmutableObject> values, bool isComposite, bool isDerived,
                                     std::vector<ImmutableClassObject> & children) {
    writeStartTag("table", "");
    // Derived properties show again what others contain.
    bool const isContained = isComposite && !isDerived;
    OwnTags tags(*this);
    values.forEach([&](ImmutableObject const & value) { printValue(tags, value, isContained, children); });
    writeEndTag("table");
}

template <class Tags>
void HTMLPrinter::printValue(Tags & tags, ImmutableObject const & value, bool isContained,
                             std::vector<ImmutableClassObject> & children) {
    std::string typeMetaClassName(noText);
    std::string typeName(noText);
    std::string text(noText);
    std::string_view textClass;
    ImmutableClassObject const object(value);
    std::optional<std::string> error;
    try {
        typeMetaClassName = navigation::getMetaTypeClassName(value);
        typeName = helperGetTypeName(value);
        if (isValueObject(value)) {
            text = markupOf(value.toString());
            textClass = page::kPrimitive;
        } else if (object.isValid()) {
            text = hyperLinkElement("#" + markupOf(helperGetID(object)), helperGetName(object));
            textClass = page::kLink;
        }
    } catch (Exception const & exception) {
        error = exception.GetMessageTxt();
    } catch (...) {
        error = "unknown exception";
    }

    if (error) {
        fLogger->debug("htmlprinter:error:printSequenceValue: typeName=%s typeMetaClassName=%s value=%s (%s)", typeName,
                       typeMetaClassName, text, *error);
        tags.start("tr", "error");
        tags.element("td colspan='3'", "error", markupOf(*error));
        tags.end("tr");
        return;
    }
    page::startValue(tags, markupOf(typeMetaClassName), typeName);
    if (textClass.empty()) {
        tags.text(text);
    } else {
        tags.element("span", textClass, text);
    }
    page::endValue(tags);
    if (isContained && object.isValid()) {
        children.push_back(object);
    }
}

template void HTMLPrinter::printValue(page::TextTags & tags, ImmutableObject const & value, bool isContained,
                                      std::vector<ImmutableClassObject> & children);

// --- what is said of an object ---------------------------------------------------------------------------------------

std::string HTMLPrinter::helperGetID(ImmutableClassObject object) {
    static_cast<void>(checkedMetaClass(object));
    return "ID" + object.getSiid().str();
}

std::string HTMLPrinter::helperGetName(ImmutableClassObject object) {
    ImmutableProperty const property = internal::MetaClassView::of(checkedMetaClass(object))->nameProperty();
    if (!property.isValid() || !object.has(property)) {
        return page::kUnnamed;
    }
    std::string name = object.getOne(property).toString();
    return name.empty() ? page::kAnonymous : markupOf(name);
}

std::string HTMLPrinter::helperGetTypeName(ImmutableObject object) {
    std::string const name = markupOf(navigation::getMetaTypeName(object));
    return navigation::getMetaTypeClassName(object) == "Stereotype" ? "&laquo;" + name + "&raquo;" : name;
}

std::string HTMLPrinter::markupOf(std::string text) { return text; }

// --- tags ------------------------------------------------------------------------------------------------------------

void HTMLPrinter::writeStartTagWithID(std::string tag, std::string id, std::string cssClass) {
    std::string text;
    page::TextTags(text).startWithId(tag, id, cssClass);
    output << text;
}

void HTMLPrinter::writeStartTag(std::string tag, std::string cssClass) {
    std::string text;
    page::TextTags(text).start(tag, cssClass);
    output << text;
}

void HTMLPrinter::writeElementWithID(std::string tag, std::string id, std::string cssClass, std::string text) {
    writeStartTagWithID(tag, id, cssClass);
    output << text;
    writeEndTag(tag);
}

void HTMLPrinter::writeElement(std::string tag, std::string cssClass, std::string text) {
    writeStartTag(tag, cssClass);
    output << text;
    writeEndTag(tag);
}

void HTMLPrinter::writeEndTag(std::string tag) { output << "</" << tag << '>'; }

std::string HTMLPrinter::hyperLinkElement(std::string target, std::string text) {
    return "<a href=\"" + target + "\">" + text + "</a>";
}

void HTMLPrinter::writeCss() { output << styleSheet; }

void HTMLPrinter::writeJss() { output << html::script(); }

} // namespace ZEL::util
