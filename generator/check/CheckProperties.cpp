#include "check/Checker.h"
#include "family/Names.h"
#include "load/Suggestion.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace zelgen {
namespace {

bool isNumber(std::string_view text) {
    return !text.empty() && text.size() < 10 && std::all_of(text.begin(), text.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c)) != 0;
    });
}

/// A number without a leading zero, which would make it octal in C++.
bool isWhole(std::string_view text) { return isNumber(text) && (text.size() == 1 || text.front() != '0'); }

/// A number that a `double` can hold, or with `single` a `float`, in the syntax of C++ and of the texts of values.
bool isFloating(std::string const & text, bool single) {
    char * end = nullptr;
    double const value = std::strtod(text.c_str(), &end);
    double const limit = single ? std::numeric_limits<float>::max() : std::numeric_limits<double>::max();
    return text.find_first_not_of("0123456789+-.eE") == std::string::npos && !text.empty() && *end == '\0' &&
           std::abs(value) <= limit;
}

bool isMany(PropertyDefinition const & p) {
    long lower = 0;
    long upper = 1;
    return !p.multiplicity.empty() && parseMultiplicity(p.multiplicity.text, lower, upper) && upper != 1;
}

} // namespace

bool parseMultiplicity(std::string const & text, long & lower, long & upper) {
    std::size_t const dots = text.find("..");
    if (dots == std::string::npos || !isNumber(text.substr(0, dots))) {
        return false;
    }
    std::string const bound = text.substr(dots + 2);
    if (bound != "*" && !isNumber(bound)) {
        return false;
    }
    lower = std::stol(text.substr(0, dots));
    upper = bound == "*" ? -1 : std::stol(bound);
    return true;
}

bool Checker::isKindOf(Entry const & type, Entry const & other) const {
    std::vector<Entry> const all = fCatalogue.closure(type);
    return type == other || std::find(all.begin(), all.end(), other) != all.end();
}

std::vector<std::string> Checker::propertyNames(TypeDefinition const & type) const {
    std::vector<std::string> names;
    for (Entry const & entry : fCatalogue.closure(entryOf(type))) {
        for (PropertyDefinition const & p : entry.type->properties) {
            names.push_back(p.name.text);
        }
    }
    return names;
}

void Checker::checkProperties() {
    for (TypeDefinition const & type : fDefinition.types) {
        for (PropertyDefinition const & p : type.properties) {
            checkProperty(type, p);
        }
        checkViews(type);
    }
}

void Checker::checkProperty(TypeDefinition const & owner, PropertyDefinition const & p) {
    std::string const what = "property '" + owner.name.text + '.' + p.name.text + "'";
    expectIdentifier(p.name, "property");
    for (Word const & flag : p.flags) {
        expectOneOf(flag, "flag", {"read_only", "derived", "composite", "ordered", "nonunique", "seldom"});
    }
    expectOneOf(p.persistence, "'persistence'", {"default", "transient", "extension"});
    expectOneOf(p.stored, "'stored'", {"core", "body"});
    expectOneOf(p.body, "'body'", {"hand", "unimplemented"});
    expectFlag(p.hidden, "'hidden'");
    expectFlag(p.baseElement, "'base_element'");
    checkMultiplicity(p);
    checkRedefinition(owner, p);
    if (p.type.empty()) {
        report(p.name.mark, what + ": found no 'type', expected the name of one");
        return;
    }
    Entry const type = expectType(p.type, what);
    if (!type) {
        return;
    }
    checkValue(p.defaultValue, "default", type);
    if (isMany(p) && !p.defaultValue.empty()) {
        report(p.defaultValue, what + ": found default", " of many values, expected it on a single one");
    }
    warnOfManyTexts(p, type, what);
    checkValue(p.fixed, "'fixed'", type);
    checkNarrowing(owner, p, type);
    checkAssociation(owner, p);
    checkMaking(owner, p, type);
}

void Checker::checkMultiplicity(PropertyDefinition const & p) {
    long lower = 0;
    long upper = 0;
    if (p.multiplicity.empty()) {
        return;
    }
    if (!parseMultiplicity(p.multiplicity.text, lower, upper)) {
        report(p.multiplicity, "found multiplicity", ", expected a form such as 0..1, 1..1 or 0..*");
    } else if (upper == 0 || (upper > 0 && lower > upper)) {
        report(p.multiplicity, "found multiplicity", ", expected a lower bound that is not above the upper");
    }
}

void Checker::checkValue(Word const & value, std::string const & what, Entry const & type) {
    if (value.empty()) {
        return;
    }
    std::string const name = type.home->prefix.text + '.' + type.type->name.text;
    if (type.type->kind == TypeKind::Enumeration) {
        std::vector<std::string> literals;
        for (Word const & literal : type.type->literals) {
            literals.push_back(literal.text);
        }
        expectOneOf(value, what, literals);
    } else if (name == "ZEL.Boolean") {
        expectFlag(value, what);
    } else if (name == "ZEL.Integer") {
        if (!isWhole(std::string_view(value.text).substr(value.text.rfind('-', 0) == 0 ? 1 : 0))) {
            report(value, "found " + what, ", expected a whole number");
        }
    } else if (name == "ZEL.UnlimitedNatural") {
        if (value.text != "*" && !isWhole(value.text)) {
            report(value, "found " + what, ", expected a whole number that is not negative, or *");
        }
    } else if (name == "ZEL.Real" || name == "ZEL.Double" || name == "ZEL.Single") {
        if (!isFloating(value.text, name == "ZEL.Single")) {
            report(value, "found " + what, ", expected a number");
        }
    } else if (type.type->kind == TypeKind::Class) {
        report(value, "found " + what, " of a class, expected none");
    }
}

/// Unless told otherwise, the writer of files joins the values of such a property into one text.
void Checker::warnOfManyTexts(PropertyDefinition const & p, Entry const & type, std::string const & what) {
    bool const isInFiles = p.stored.empty() && !hasWord(p.flags, "derived") && p.persistence.text != "transient";
    bool const isOurs = &fDefinition == fCatalogue.definitions().front() && fDefinition.prefix.text != "ZEL";
    if (isOurs && isInFiles && isMany(p) && type.type->name.text == "String") {
        fDiagnostics.warn(fDefinition.fileOf(p.name.mark), p.name.mark,
                          what + ": found many texts, which a file holds as one unless it is written with " +
                              "XmiWriterSettings::setElementPerValue");
    }
}

void Checker::checkAssociation(TypeDefinition const & owner, PropertyDefinition const & p) {
    std::string const what = "property '" + owner.name.text + '.' + p.name.text + "'";
    if (p.association.empty()) {
        for (Word const * const end : {&p.opposite, &p.ownedEnd}) {
            if (!end->empty()) {
                report(*end, what + ": found the other end", " without 'association', expected its name");
            }
        }
        return;
    }
    if (p.opposite.empty() == p.ownedEnd.empty()) {
        report(p.association,
               what + ": found " + (p.opposite.empty() ? "no other end" : "both 'opposite' and 'owned_end'") +
                   " of association",
               ", expected one of 'opposite' and 'owned_end'");
    }
    if (!p.opposite.empty()) {
        checkOpposite(owner, p);
    }
}

void Checker::checkOpposite(TypeDefinition const & owner, PropertyDefinition const & p) {
    std::string const what = "property '" + owner.name.text + '.' + p.name.text + "'";
    Catalogue::PropertyEntry const other = fCatalogue.findProperty(p.opposite.text, fDefinition);
    if (!other) {
        std::vector<std::string> candidates;
        std::size_t const dot = p.opposite.text.rfind('.');
        if (other.owner) {
            for (PropertyDefinition const & candidate : other.owner.type->properties) {
                candidates.push_back(candidate.name.text);
            }
        }
        std::string const name = dot == std::string::npos ? p.opposite.text : p.opposite.text.substr(dot + 1);
        report(p.opposite, what + ": opposite", " not found" + suggestion(name, candidates));
        return;
    }
    if (fCatalogue.findProperty(other.property->opposite.text, *other.owner.home).property != &p) {
        report(p.opposite, what + ": found opposite",
               " whose own opposite is '" + other.property->opposite.text + "', expected '" + owner.name.text + '.' +
                   p.name.text + "'");
    } else if (Entry const type = fCatalogue.find(p.type.text, fDefinition);
               type && !isKindOf(type, other.owner) && !isKindOf(other.owner, type)) {
        report(p.type, what + ": found type", ", expected '" + nameOf(other.owner) + "', which has the opposite");
    } else if (hasWord(other.property->flags, "composite") && (hasWord(p.flags, "composite") || isMany(p))) {
        report(p.name.mark, what + ": found " + (isMany(p) ? "many values" : "the flag 'composite'") +
                                ", expected a single value that is not composite: it is the container");
    } else if (other.property->association.text != p.association.text) {
        report(p.association, what + ": found association",
               ", expected '" + other.property->association.text + "' as at its opposite");
    }
}

void Checker::checkRedefinition(TypeDefinition const & owner, PropertyDefinition const & p) {
    if (p.redefines.empty()) {
        return;
    }
    std::string const what = "property '" + owner.name.text + '.' + p.name.text + "'";
    Catalogue::PropertyEntry const redefined = fCatalogue.findProperty(p.redefines.text, fDefinition);
    std::vector<Entry> const closure = fCatalogue.closure(entryOf(owner));
    if (!redefined || redefined.owner == entryOf(owner) ||
        std::find(closure.begin(), closure.end(), redefined.owner) == closure.end()) {
        report(p.redefines, what + ": found redefined property", ", expected a property of a superclass");
    } else if (isMany(*redefined.property) != isMany(p)) {
        report(p.redefines, what + ": found redefined property",
               " of another multiplicity, expected both single or both many");
    }
}

/// A property that redefines another one, by its name or by an entry, narrows its type.
void Checker::checkNarrowing(TypeDefinition const & owner, PropertyDefinition const & p, Entry const & type) {
    std::string const what = "property '" + owner.name.text + '.' + p.name.text + "'";
    std::vector<Catalogue::PropertyEntry> redefined;
    for (Entry const & entry : fCatalogue.closure(entryOf(owner))) {
        if (entry.type != &owner) {
            redefined.push_back({entry, ownProperty(*entry.type, p.name.text)});
        }
    }
    if (Catalogue::PropertyEntry const other = fCatalogue.findProperty(p.redefines.text, fDefinition);
        other && isMany(*other.property) == isMany(p)) {
        redefined.push_back(other);
    }
    for (Catalogue::PropertyEntry const & other : redefined) {
        if (!other) {
            continue;
        }
        std::string const name = nameOf(other.owner) + '.' + other.property->name.text;
        Entry const otherType = typeOf(other);
        if (isMany(*other.property) != isMany(p)) {
            report(p.name.mark, what + ": found another multiplicity than that of '" + name +
                                    "', which it redefines, expected both single or both many");
            return;
        }
        if (otherType && !isKindOf(type, otherType)) {
            report(p.type, what + ": found type",
                   ", expected '" + nameOf(otherType) + "' or a subclass of it, as '" + name +
                       "' has, which it redefines");
            return;
        }
    }
}

void Checker::checkMaking(TypeDefinition const & owner, PropertyDefinition const & p, Entry const & type) {
    std::string const what = "property '" + owner.name.text + '.' + p.name.text + "'";
    bool const isClass = type.type->kind == TypeKind::Class;
    auto const derivedOnly = [&](Word const & entry, std::string const & name) {
        if (!entry.empty() && !hasWord(p.flags, "derived")) {
            report(entry.mark,
                   what + ": found '" + name + "' on a stored property, expected the flag 'derived' with it");
        }
    };
    derivedOnly(p.body, "body");
    if (p.viewOf) {
        derivedOnly(*p.viewOf, "view");
        if (p.viewOf->text != "containees") {
            checkView(owner, {*p.viewOf});
            Catalogue::PropertyEntry const shown = fCatalogue.inClosure(entryOf(owner), p.viewOf->text);
            if (shown && !isMany(*shown.property)) {
                report(*p.viewOf, what + ": found a view of the single value",
                       ", expected one of many, or a list of properties");
            }
        }
    }
    checkDerivation(owner, p);
    checkSeldom(p, type, what);
    if (isMany(p)) {
        checkUnion(owner, p.view, type);
    }
    if (!p.fixed.empty() && p.body.text != "unimplemented") {
        report(p.fixed.mark, what + ": found 'fixed', expected 'body: unimplemented' with it");
    }
    if (!p.stereotype.empty()) {
        Entry const stereotype = expectClass(p.stereotype, what);
        if (stereotype && !fCatalogue.isKindOf(stereotype, "ZEL.StereotypeObject")) {
            report(p.stereotype, what + ": found stereotype", ", expected a subclass of 'ZEL.StereotypeObject'");
        }
    }
    if (p.baseElement.isTrue() &&
        (!isClass || isMany(p) || !fCatalogue.isKindOf(entryOf(owner), "ZEL.StereotypeObject"))) {
        report(p.baseElement.mark,
               what +
                   ": found 'base_element', expected it on a single reference of a subclass of 'ZEL.StereotypeObject'");
    }
    if (type.type->name.text == "PropertyStorage" && !p.hidden.isTrue()) {
        report(p.type, what + ": found type", ", which the metamodel keeps for itself, expected another one");
    }
    if (isMany(p) && !isClass && type.type->name.text != "String") {
        report(p.type, what + ": found many values of", ", expected a class or ZEL.String");
    }
}

/// A derived single value is the container, or the definition says how it is derived; a derived sequence is a view
/// anyway.
void Checker::checkDerivation(TypeDefinition const & owner, PropertyDefinition const & p) {
    std::string const what = "property '" + owner.name.text + '.' + p.name.text + "'";
    if (isMany(p)) {
        return;
    }
    for (Word const & entry : p.viewOf ? std::vector<Word>{*p.viewOf} : p.view) {
        report(entry.mark, what + ": found 'view' on a single value, expected it on many");
        return;
    }
    if (!p.stereotype.empty()) {
        report(p.stereotype.mark, what + ": found 'stereotype' on a single value, expected it on many");
    }
    Catalogue::PropertyEntry const opposite = fCatalogue.findProperty(p.opposite.text, fDefinition);
    bool const isContainer = opposite && hasWord(opposite.property->flags, "composite");
    if (hasWord(p.flags, "derived") && p.body.empty() && p.stored.empty() && p.baseElement.empty() && !isContainer) {
        report(p.name.mark, what + ": found a derived single value without 'body', expected hand or unimplemented");
    }
}

void Checker::checkSeldom(PropertyDefinition const & p, Entry const & type, std::string const & what) {
    Catalogue::PropertyEntry const opposite = fCatalogue.findProperty(p.opposite.text, fDefinition);
    bool const isContainer = opposite && hasWord(opposite.property->flags, "composite");
    bool const isStored = !hasWord(p.flags, "derived") && p.stored.empty() && p.stereotype.empty() &&
                          !p.baseElement.isTrue() && !isContainer;
    bool const isBits = !isMany(p) && (type.type->kind == TypeKind::Enumeration || nameOf(type) == "ZEL.Boolean");
    for (Word const & flag : p.flags) {
        if (flag.text == "seldom" && (!isStored || isBits)) {
            report(flag, what + ": found flag", ", expected it on a stored property that is no flag or literal");
        }
    }
}

void Checker::checkView(TypeDefinition const & owner, std::vector<Word> const & parts) {
    for (Word const & part : parts) {
        Catalogue::PropertyEntry const found = fCatalogue.inClosure(entryOf(owner), part.text);
        if (!found) {
            report(part, "class '" + owner.name.text + "': property",
                   " of a view not found" + suggestion(part.text, propertyNames(owner)));
        } else if (Entry const type = typeOf(found); type && type.type->kind != TypeKind::Class) {
            report(part, "class '" + owner.name.text + "': found property",
                   " of a data type in a view, expected one of class type");
        }
    }
}

void Checker::checkUnion(TypeDefinition const & owner, std::vector<Word> const & parts, Entry const & type) {
    checkView(owner, parts);
    for (Word const & part : parts) {
        Catalogue::PropertyEntry const shown = fCatalogue.inClosure(entryOf(owner), part.text);
        Entry const shownType = shown ? typeOf(shown) : Entry();
        if (type && shownType && shownType.type->kind == TypeKind::Class && !isKindOf(shownType, type)) {
            report(part, "class '" + owner.name.text + "': found property",
                   " of type '" + shown.property->type.text + "' in a view, expected '" + nameOf(type) +
                       "' or a subclass of it");
        }
    }
}

void Checker::checkViews(TypeDefinition const & owner) {
    for (auto const & [name, parts] : owner.views) {
        Catalogue::PropertyEntry const found = fCatalogue.inClosure(entryOf(owner), name.text);
        if (!found || found.owner == entryOf(owner) || !isMany(*found.property)) {
            report(name, "class '" + owner.name.text + "': found a view of",
                   ", expected a multi-valued property of a superclass" + suggestion(name.text, propertyNames(owner)));
        }
        if (found) {
            checkUnion(owner, parts, typeOf(found));
        }
    }
}

} // namespace zelgen
