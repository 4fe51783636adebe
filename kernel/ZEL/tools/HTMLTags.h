#pragma once

#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Remainder.h>

#include <string>
#include <string_view>

/// What the pages of `HTMLPrinter` are made of: tags, and the rows of its tables in any of the ways to write a tag.
namespace ZEL::util::page {

/// Appends tags to a text. An empty class is left out; there are no line ends.
class TextTags {
public:
    /// The text stays the caller's.
    explicit TextTags(std::string & text) noexcept : fText(text) {}

    void startWithId(std::string_view tag, std::string_view id, std::string_view cssClass) {
        fText.append("<").append(tag);
        attribute("id", id);
        finishStart(cssClass);
    }
    void start(std::string_view tag, std::string_view cssClass) {
        fText.append("<").append(tag);
        finishStart(cssClass);
    }
    void element(std::string_view tag, std::string_view cssClass, std::string_view content) {
        start(tag, cssClass);
        text(content);
        end(tag);
    }
    void end(std::string_view tag) { fText.append("</").append(tag).append(">"); }
    void text(std::string_view content) { fText.append(content); }

private:
    void attribute(std::string_view name, std::string_view value) {
        fText.append(" ").append(name).append("=\"").append(value).append("\"");
    }
    void finishStart(std::string_view cssClass) {
        if (!cssClass.empty()) {
            attribute("class", cssClass);
        }
        fText.append(">");
    }

    std::string & fText;
};

// --- one property of an object; `state` is "", " empty" or " error" --------------------------------------------------

/// `name` is markup.
template <class Tags>
void startRow(Tags & tags, internal::PropertyView const & property, std::string const & name,
              std::string const & state) {
    tags.start("tr", std::string("property") + (property.isDerived ? " derived" : "") +
                         (property.isComposite ? " composite" : "") + state);
    tags.element("td", "name", name);
    tags.start("td", "value" + state);
}
template <class Tags> void endRow(Tags & tags) {
    tags.end("td");
    tags.end("tr");
}

// --- one of its values -----------------------------------------------------------------------------------------------

/// Up to the text of the value; what its type is and is called is markup.
template <class Tags> void startValue(Tags & tags, std::string const & typeClass, std::string const & type) {
    tags.start("tr", "");
    tags.element("td", "metatype", typeClass);
    tags.element("td", "type", type);
    tags.start("td", "value");
}
template <class Tags> void endValue(Tags & tags) {
    tags.end("td");
    tags.end("tr");
}

// --- what an object keeps beside its values --------------------------------------------------------------------------

/// One row, if there is anything. `markupOf` makes markup of a text.
template <class Tags, class MarkupOf>
void keptRow(Tags & tags, Remainder const & remainder, MarkupOf const & markupOf) {
    auto const line = [&](std::string const & text) {
        tags.start("tr", "");
        tags.element("td", "value", markupOf(text));
        tags.end("tr");
    };
    if (remainder.attributes.empty() && remainder.links.empty() && remainder.elements.empty()) {
        return;
    }
    tags.start("tr", "property");
    tags.element("td", "name", "kept, not understood");
    tags.start("td", "value");
    tags.start("table", "");
    for (Remainder::Attribute const & kept : remainder.attributes) {
        line(kept.prefix + (kept.prefix.empty() ? "" : ":") + kept.name + "=\"" + kept.value + '"');
    }
    for (Remainder::Link const & kept : remainder.links) {
        line(kept.property + " -> " + kept.target);
    }
    for (Remainder::Element const & kept : remainder.elements) {
        line(kept.xml);
    }
    tags.end("table");
    endRow(tags);
}

// The classes of the texts of values.
inline constexpr char kPrimitive[] = "primitive";
inline constexpr char kLink[] = "classobj";

// What stands for a name that an object does not have, and for an empty one.
inline constexpr char kUnnamed[] = "unnamed";
inline constexpr char kAnonymous[] = "anonymous";

} // namespace ZEL::util::page
