#include "check/CheckCode.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace zelgen {
namespace {

/// The operations that a property has, on interfaces and on handles.
std::vector<std::string> operationsOf(Property const & p) {
    std::vector<std::string> names{p.getter(), p.base + "Property", p.capital + '_'};
    if (p.many) {
        names.push_back("get" + p.plural + "WithoutAssociation");
        if (p.type->asClass != nullptr && p.type->asClass->isNamedElement) {
            names.push_back("get" + p.capital + "ByName");
        }
        if (p.isField()) {
            names.insert(names.end(), {p.base + "Field", "internal_" + p.base + "Field"});
        }
        return names;
    }
    if (p.isTextField()) {
        names.push_back(p.viewGetter());
    }
    for (char const * const begin : {"has", "set", "remove", "setOnly", "removeOnly"}) {
        names.push_back(begin + p.capital);
    }
    return names;
}

/// Whether a superclass derives from all of these classes, so that the mistake is reported there.
bool isToldAbove(Class const & of, std::vector<Class const *> const & owners) {
    return std::any_of(of.superclasses.begin(), of.superclasses.end(), [&owners](Class const * super) {
        return std::all_of(owners.begin(), owners.end(),
                           [super](Class const * owner) { return super->isKindOf(*owner); });
    });
}

/// The classes of which no other one is a subclass: their operations win.
std::vector<Class const *> lowest(std::vector<Class const *> const & classes) {
    std::vector<Class const *> result;
    std::copy_if(classes.begin(), classes.end(), std::back_inserter(result), [&classes](Class const * c) {
        return std::none_of(classes.begin(), classes.end(),
                            [c](Class const * other) { return other != c && other->isKindOf(*c); });
    });
    return result;
}

class CodeChecker {
public:
    CodeChecker(Class const & of, Definition const & definition, Diagnostics & diagnostics)
        : fClass(of), fDefinition(definition), fDiagnostics(diagnostics), fLine(of.line()) {
        for (Property const & p : of.own) {
            fProperties.push_back(&p);
        }
        fProperties.insert(fProperties.end(), of.inherited.begin(), of.inherited.end());
    }

    void check() {
        checkPropertyNames();
        checkOperations();
        checkMakers();
    }

private:
    void report(Mark mark, std::string const & text) { fDiagnostics.add(fDefinition.fileOf(mark), mark, text); }
    void reportOnClass(std::string const & text) { report(fClass.mark, "class '" + fClass.name + "': " + text); }

    void checkPropertyNames() {
        std::map<std::string, Property const *> seen;
        std::set<std::pair<Property const *, Property const *>> told;
        for (Property const * const p : fProperties) {
            for (std::string const & name : operationsOf(*p)) {
                Property const & first = *seen.emplace(name, p).first->second;
                if (first.name != p->name && !isToldAbove(fClass, {first.owner, p->owner}) &&
                    told.emplace(&first, p).second) {
                    tellOfNames(first, *p, name);
                }
            }
        }
        for (auto const & [redefined, by] : fClass.redefinitions) {
            if (redefined->base == by->base && redefined->getter() != by->getter()) {
                reportOnClass("found two properties '" + by->name + "', of '" + by->owner->name + "' and '" +
                              redefined->owner->name + "', expected the same type and multiplicity");
            }
        }
    }

    void tellOfNames(Property const & first, Property const & second, std::string const & operation) {
        std::string const found = "found the C++ operation '" + operation + "' of ";
        if (first.owner == &fClass) {
            report(first.mark, "property '" + first.qualifiedName() + "': " + found + "property '" +
                                   second.qualifiedName() + "', expected another name");
        } else {
            reportOnClass(found + "two properties, '" + first.qualifiedName() + "' and '" + second.qualifiedName() +
                          "', expected it of one");
        }
    }

    void checkOperations() {
        std::map<std::string, std::vector<std::pair<Class const *, Operation const *>>> byName;
        for (Class const * const c : fLine) {
            for (Operation const & operation : c->operations) {
                byName[operation.name].emplace_back(c, &operation);
            }
        }
        for (auto const & [name, all] : byName) {
            for (Property const * const p : fProperties) {
                std::vector<std::string> const names = operationsOf(*p);
                if (std::find(names.begin(), names.end(), name) != names.end() &&
                    !isToldAbove(fClass, {p->owner, all.front().first})) {
                    reportOnClass("found the operation '" + name + "' and one of the same name of property '" +
                                  p->qualifiedName() + "', expected another name for one of them");
                }
            }
            for (auto const & [owner, operation] : all) {
                checkOperation(*owner, *operation, all);
            }
        }
    }

    /// An operation that two superclasses have needs one of the class's own; one with other parameters hides an
    /// inherited one.
    void checkOperation(Class const & owner, Operation const & operation,
                        std::vector<std::pair<Class const *, Operation const *>> const & all) {
        std::vector<Class const *> same;
        for (auto const & [other, candidate] : all) {
            if (operation.takesTheSame(*candidate)) {
                same.push_back(other);
            } else if (&owner == &fClass && other != &fClass &&
                       std::none_of(fClass.operations.begin(), fClass.operations.end(),
                                    [&operation, &inherited = *candidate](Operation const & own) {
                                        return own.name == operation.name && own.takesTheSame(inherited);
                                    })) {
                reportOnClass("found the operation '" + operation.name + "' with other parameters than in '" +
                              other->name + "', expected the same ones or another name");
                return;
            }
        }
        std::vector<Class const *> const makers = lowest(same);
        if (makers.size() > 1 && makers.front() == &owner && !isToldAbove(fClass, makers)) {
            reportOnClass("found the operation '" + operation.name + "' of '" + makers[0]->name + "' and of '" +
                          makers[1]->name + "', expected one of its own");
        }
    }

    /// The operations of a property are implemented by its own class, by one that has a view of it, or by one that
    /// redefines it.
    void checkMakers() {
        for (Property const * const p : fProperties) {
            std::vector<Class const *> makers;
            for (Class const * const c : fLine) {
                bool const shows = std::any_of(c->views.begin(), c->views.end(),
                                               [p](View const & view) { return view.property == p; });
                bool const redefines = std::any_of(c->redefinitions.begin(), c->redefinitions.end(),
                                                   [p](auto const & pair) { return pair.first == p; });
                if (c == p->owner || shows || redefines) {
                    makers.push_back(c);
                }
            }
            makers = lowest(makers);
            if (makers.size() > 1 && !isToldAbove(fClass, makers)) {
                reportOnClass("found '" + p->name + "' made by '" + makers[0]->name + "' and by '" + makers[1]->name +
                              "', expected " + (p->many ? "one of its own among its 'views'" : "one of its own"));
            }
        }
    }

    Class const & fClass;
    Definition const & fDefinition;
    Diagnostics & fDiagnostics;
    std::vector<Class const *> fLine; ///< the class and its ancestors
    std::vector<Property const *> fProperties;
};

} // namespace

void checkCode(Family const & family, Definition const & definition, Diagnostics & diagnostics) {
    for (auto const & c : family.main().classes) {
        CodeChecker(*c, definition, diagnostics).check();
    }
}

} // namespace zelgen
