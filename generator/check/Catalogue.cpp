#include "check/Catalogue.h"

#include <algorithm>

namespace zelgen {

PropertyDefinition const * ownProperty(TypeDefinition const & type, std::string_view name) {
    auto const found = std::find_if(type.properties.begin(), type.properties.end(),
                                    [name](PropertyDefinition const & p) { return p.name.text == name; });
    return found == type.properties.end() ? nullptr : &*found;
}

Catalogue::Entry Catalogue::find(std::string_view name, Definition const & from) const {
    Definition const * home = &from;
    if (std::size_t const dot = name.find('.'); dot != std::string_view::npos) {
        auto const found = std::find_if(fDefinitions.begin(), fDefinitions.end(),
                                        [&](Definition const * d) { return d->prefix.text == name.substr(0, dot); });
        if (found == fDefinitions.end()) {
            return {};
        }
        home = *found;
        name.remove_prefix(dot + 1);
    }
    for (TypeDefinition const & type : home->types) {
        if (type.name.text == name) {
            return {home, &type};
        }
    }
    return {};
}

Catalogue::PropertyEntry Catalogue::findProperty(std::string_view name, Definition const & from) const {
    std::size_t const dot = name.rfind('.');
    if (dot == std::string_view::npos) {
        return {};
    }
    Entry const owner = find(name.substr(0, dot), from);
    return {owner, owner ? ownProperty(*owner.type, name.substr(dot + 1)) : nullptr};
}

std::vector<Catalogue::Entry> Catalogue::closure(Entry const & type) const {
    std::vector<Entry> result;
    addClosure(type, result);
    return result;
}

void Catalogue::addClosure(Entry const & type, std::vector<Entry> & result) const {
    if (!type || type.type->kind != TypeKind::Class || std::find(result.begin(), result.end(), type) != result.end()) {
        return;
    }
    result.push_back(type);
    for (Word const & super : type.type->superclasses) {
        addClosure(find(super.text, *type.home), result);
    }
}

Catalogue::PropertyEntry Catalogue::inClosure(Entry const & type, std::string_view property) const {
    for (Entry const & entry : closure(type)) {
        if (PropertyDefinition const * const found = ownProperty(*entry.type, property)) {
            return {entry, found};
        }
    }
    return {};
}

bool Catalogue::isKindOf(Entry const & type, std::string_view qualifiedName) const {
    std::vector<Entry> const all = closure(type);
    return std::any_of(all.begin(), all.end(), [&](Entry const & entry) {
        return entry.home->prefix.text + '.' + entry.type->name.text == qualifiedName;
    });
}

std::vector<std::string> Catalogue::names(Definition const & from) const {
    std::vector<std::string> result;
    for (Definition const * const definition : fDefinitions) {
        std::string const prefix = definition == &from ? "" : definition->prefix.text + '.';
        for (TypeDefinition const & type : definition->types) {
            result.push_back(prefix + type.name.text);
        }
    }
    return result;
}

} // namespace zelgen
