#include "check/Checker.h"
#include "family/Names.h"
#include "load/Signature.h"

#include <algorithm>
#include <array>
#include <map>

namespace zelgen {
namespace {

/// Operations that every handle has; a property may not add another one of that name.
constexpr std::array<char const *, 12> kReservedOperations{
    "isValid",     "getDeviant",        "setDeviant", "getMetaClass", "asDeviant", "getOrcaName",
    "getByteSize", "getImplementation", "destroy",    "clone",        "toString",  "fromString"};

} // namespace

void Checker::checkOperations() {
    for (TypeDefinition const & type : fDefinition.types) {
        for (OperationDefinition const & operation : type.operations) {
            checkSignature(operation);
        }
        checkConstraints(type);
    }
}

void Checker::checkConstraints(TypeDefinition const & type) {
    std::map<std::string, std::string> names; // by the names of their functions
    for (OperationDefinition const & operation : type.operations) {
        if (std::optional<Signature> const signature = parseSignature(operation.signature.text)) {
            names.emplace(signature->name, "operation '" + signature->name + "'");
        }
    }
    for (ConstraintDefinition const & constraint : type.constraints) {
        std::string const what = "constraint '" + type.name.text + '.' + constraint.name.text + "'";
        expectIdentifier(constraint.name, "constraint");
        expectOneOf(constraint.severity, "severity", {"error", "warning", "note"});
        if (constraint.text.empty()) {
            report(constraint.name.mark,
                   what + ": found no 'text', expected what holds of an object that satisfies it");
        }
        std::string const function = Names::satisfies(constraint.name.text);
        auto const [other, isNew] = names.emplace(function, "constraint '" + constraint.name.text + "'");
        if (!isNew) {
            report(constraint.name.mark,
                   what + ": found the C++ name '" + function + "' of " + other->second + ", expected a different one");
        }
    }
}

void Checker::checkSignature(OperationDefinition const & operation) {
    std::optional<Signature> const signature = parseSignature(operation.signature.text);
    if (!signature) {
        report(operation.signature, "found operation",
               ", expected a form such as 'Boolean conformsTo(ImmutableType other) const'");
        return;
    }
    std::string const what = "operation '" + signature->name + "'";
    if (signature->result.name != "void" && signature->result.name != "Deviant") {
        expectType({signature->result.name, operation.signature.mark}, what);
    }
    for (Signature::Parameter const & parameter : signature->parameters) {
        expectType({parameter.type.name, operation.signature.mark}, what);
        if (Names::isKeyword(parameter.name)) {
            report(operation.signature.mark,
                   what + ": found parameter '" + parameter.name + "', expected a name that is no word of C++");
        }
    }
}

void Checker::checkNames() {
    for (TypeDefinition const & type : fDefinition.types) {
        std::map<std::string, std::string> operations; // C++ base names of own properties
        for (PropertyDefinition const & p : type.properties) {
            std::string const capital = Names::capital(p.name.text);
            for (std::string const operation : kReservedOperations) {
                if ((Names::readsAsFlag(p.name.text) && operation == p.name.text) || operation == "get" + capital ||
                    operation == "set" + capital) {
                    report(p.name.mark, "property '" + type.name.text + '.' + p.name.text +
                                            "': found the name of the operation '" + operation +
                                            "' that all handles have, expected another name");
                }
            }
            auto const [other, isNew] = operations.emplace(capital, p.name.text);
            if (!isNew) {
                report(p.name.mark, "property '" + type.name.text + '.' + p.name.text +
                                        "': found the same C++ name as of '" + other->second +
                                        "', expected a different one");
            }
        }
        if (type.kind == TypeKind::Class) {
            checkTwins(type);
        }
    }
}

/// Two superclasses may have properties of the same name if both can have the same C++ operations.
void Checker::checkTwins(TypeDefinition const & type) {
    std::map<std::string, Catalogue::PropertyEntry> seen;
    for (Entry const & entry : fCatalogue.closure(entryOf(type))) {
        for (PropertyDefinition const & p : entry.type->properties) {
            auto const [first, isNew] = seen.emplace(p.name.text, Catalogue::PropertyEntry{entry, &p});
            if (isNew) {
                continue;
            }
            Catalogue::PropertyEntry & other = first->second;
            if (isKindOf(other.owner, entry)) {
                continue; // redefined
            }
            if (isKindOf(entry, other.owner)) {
                other = {entry, &p}; // redefines the one seen before
                continue;
            }
            long lower = 0;
            long upper = 1;
            long otherUpper = 1;
            (void)parseMultiplicity(p.multiplicity.text, lower, upper);
            (void)parseMultiplicity(other.property->multiplicity.text, lower, otherUpper);
            if (!(fCatalogue.find(p.type.text, *entry.home) ==
                  fCatalogue.find(other.property->type.text, *other.owner.home)) ||
                (upper == 1) != (otherUpper == 1)) {
                report(type.name, "class",
                       ": found two properties '" + p.name.text + "', of '" + other.owner.type->name.text + "' and '" +
                           entry.type->name.text + "', expected the same type and multiplicity");
            }
        }
    }
}

} // namespace zelgen
