#include "family/Family.h"

#include "family/Names.h"

#include <algorithm>

namespace zelgen {

std::string Type::qualifiedName() const { return home->prefix + '.' + name; }

std::string Type::cppName(bool immutable) const {
    return home->cppNamespace + "::" + (immutable && kind == TypeKind::Class ? "Immutable" : "") + name;
}

std::string Property::qualifiedName() const { return owner->name + '.' + name; }

std::string Property::getter() const {
    if (many) {
        return "get" + plural;
    }
    return form == Form::Flag ? base : "get" + capital;
}

unsigned int Property::bits() const {
    unsigned int bits = 1;
    while ((std::size_t{1} << bits) < type->literals.size()) {
        ++bits;
    }
    return bits;
}

bool Operation::takesTheSame(Operation const & other) const {
    return isConst == other.isConst &&
           std::equal(parameters.begin(), parameters.end(), other.parameters.begin(), other.parameters.end(),
                      [](auto const & a, auto const & b) { return a.type == b.type && a.form == b.form; });
}

std::string Class::qualifiedName() const { return type->qualifiedName(); }

bool Class::isKindOf(Class const & other) const {
    return this == &other || std::find(ancestors.begin(), ancestors.end(), &other) != ancestors.end();
}

bool Class::isFactory() const {
    return std::any_of(ancestors.begin(), ancestors.end(),
                       [](Class const * c) { return c->qualifiedName() == "ZEL.FactoryObject"; });
}

std::vector<Class const *> Class::line() const {
    std::vector<Class const *> result{this};
    result.insert(result.end(), ancestors.begin(), ancestors.end());
    return result;
}

std::vector<Property const *> Class::reflectiveOwn() const {
    std::vector<Property const *> result;
    for (Property const & property : own) {
        if (!property.isHidden) {
            result.push_back(&property);
        }
    }
    return result;
}

Class const * Family::findClass(std::string_view qualifiedName) const {
    for (auto const & metamodel : fMetamodels) {
        for (auto const & found : metamodel->classes) {
            if (found->qualifiedName() == qualifiedName) {
                return found.get();
            }
        }
    }
    return nullptr;
}

} // namespace zelgen
