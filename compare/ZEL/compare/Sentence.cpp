#include <ZEL/compare/Label.h>
#include <ZEL/compare/Sentence.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

namespace ZEL::Compare {
namespace {

using Kind = Difference::Kind;

std::string quoted(std::string_view text) {
    std::size_t end = 60;
    if (text.size() <= end) {
        return "'" + std::string(text) + "'";
    }
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end; // no part of a character
    }
    return "'" + std::string(text.substr(0, end)) + "...'";
}

std::string textOf(ImmutableObject const & value) {
    ImmutableClassObject const object(value);
    if (object.isValid()) {
        return labelOf(object);
    }
    ImmutableValueObject const data(value);
    if (!data.isValid()) {
        return "nothing";
    }
    std::string const text = data.toString();
    ImmutableDataType const type = data.getMetaDataType();
    bool const isText = type.isValid() && type.getName() == "String";
    return isText ? quoted(text) : text;
}

std::string textOf(std::vector<ImmutableObject> const & values, bool isMany) {
    if (!isMany && values.size() == 1) {
        return textOf(values.front());
    }
    std::string text = "[";
    for (ImmutableObject const & value : values) {
        text += (text.size() == 1 ? "" : ", ") + textOf(value);
    }
    return text + "]";
}

/// The property of the container that holds the object; null for none.
PropertyView const * holderOf(ImmutableClassObject const & object, ImmutableClassObject const & container) {
    for (PropertyView const & property : MetaClassView::ofInstance(container).properties()) {
        if (property.isPart() && !property.isOfModel && container.get(property.property).contains(object)) {
            return &property;
        }
    }
    return nullptr;
}

/// "ownedAttribute" holds attributes.
std::string roleOf(std::string const & property) {
    constexpr std::string_view kOwned = "owned";
    if (!property.starts_with(kOwned) || property.size() == kOwned.size()) {
        return property;
    }
    std::string role = property.substr(kOwned.size());
    role.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(role.front())));
    return role;
}

/// What the line is about. A part that is just what its property is made for is told by that: "Class 'Book': attribute
/// 'title'"; others by their class.
std::string subjectOf(ImmutableClassObject const & object) {
    ImmutableClassObject const container = object.getContainerZEL();
    PropertyView const * const holder = container.isValid() ? holderOf(object, container) : nullptr;
    // By name: a metamodel that builds on another one has its own class for what a property of that holds.
    if (holder == nullptr || holder->type.getName() != object.getMetaClass().getName()) {
        return labelOf(object);
    }
    std::string subject = labelOf(container) + ": " + roleOf(holder->name);
    if (std::string const name = nameOf(object); !name.empty()) {
        return subject + " " + quoted(name);
    }
    ImmutableSequence<ImmutableObject> const parts = container.get(holder->property);
    return parts.size() > 1 ? subject + " " + std::to_string(parts.indexOf(object) + 1) : subject;
}

bool isName(Difference const & difference) {
    PropertyView const * const property = MetaClassView::ofInstance(difference.left).find(difference.property);
    return property != nullptr && property->role == PropertyView::Role::Name;
}

std::string valueSentence(Difference const & difference) {
    std::string const subject = subjectOf(difference.left);
    bool const isMany = difference.property.isMultivalued();
    std::string const before = textOf(difference.before, isMany);
    std::string const after = textOf(difference.after, isMany);
    if (isName(difference)) {
        if (difference.after.empty()) {
            return subject + " has no name any more";
        }
        return subject + (difference.before.empty() ? " named " : " renamed to ") + after;
    }
    std::string const property = subject + ": " + difference.property.getName().str();
    if (difference.before.empty() && !isMany) {
        return property + " set to " + after;
    }
    if (difference.after.empty() && !isMany) {
        return property + " no longer set, was " + before;
    }
    return property + " changed from " + before + " to " + after;
}

std::string withContent(ImmutableClassObject const & object, std::string const & what, std::size_t content) {
    std::string const more =
        content == 0 ? "" : " with " + std::to_string(content) + (content == 1 ? " object in it" : " objects in it");
    return subjectOf(object) + " " + what + more;
}

std::string moveSentence(Difference const & difference) {
    ImmutableClassObject const before(difference.before.front());
    ImmutableClassObject const after(difference.after.front());
    std::string const from = labelOf(before);
    std::string const to = labelOf(after);
    std::string const subject = subjectOf(difference.left) + " moved from ";
    std::string const former = difference.propertyBefore.getName().str();
    std::string const present = difference.property.getName().str();
    return former == present && from != to ? subject + from + " to " + to
                                           : subject + former + " of " + from + " to " + present + " of " + to;
}

std::string sentencesOf(std::vector<Difference> const & differences) {
    std::string text;
    for (Difference const & difference : differences) {
        text += (text.empty() ? "" : "; ") + sentenceOf(difference);
    }
    return text;
}

} // namespace

std::string sentenceOf(Difference const & difference) {
    auto const about = [&difference] {
        return subjectOf(difference.left) + ": " + difference.property.getName().str();
    };
    switch (difference.kind) {
    case Kind::Added:
        return withContent(difference.right, "added", difference.content);
    case Kind::Removed:
        return withContent(difference.left, "removed", difference.content);
    case Kind::Moved:
        return moveSentence(difference);
    case Kind::ValueChanged:
    case Kind::LinkChanged:
        return valueSentence(difference);
    case Kind::LinkAdded:
        return about() + " leads to " + textOf(difference.after.front()) + ", too";
    case Kind::LinkRemoved:
        return about() + " does not lead to " + textOf(difference.before.front()) + " any more";
    case Kind::OrderChanged:
        return about() + " in another order";
    case Kind::RemainderChanged:
        return subjectOf(difference.left) + ": what is kept of the file without being understood changed";
    }
    return {};
}

std::string sentenceOf(Conflict const & conflict) {
    return "ours: " + sentencesOf(conflict.ours) + "; theirs: " + sentencesOf(conflict.theirs);
}

} // namespace ZEL::Compare
