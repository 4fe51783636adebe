#include <ZEL/base/Exception.h>
#include <ZEL/compare/Rules.h>
#include <ZEL/compare/StandardRules.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/tools/ObjectsIn.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace ZEL::Compare {
namespace {

using ZEL::internal::ClassDescriptor;
using ZEL::internal::ClassRuntime;

/// The rules that were registered for the process.
Rules & registered() {
    static Rules rules;
    return rules;
}

void addConstraintsOf(Model const & metamodel, std::set<std::string> & names) {
    for (ImmutableClassObject const & object : objectsIn(metamodel)) {
        ClassDescriptor const * const described = ClassRuntime::described(object.getImplementation());
        if (described != nullptr) {
            for (ZEL::internal::ConstraintDescriptor const & constraint : described->constraints) {
                names.insert(constraint.name);
            }
        }
    }
}

} // namespace

std::string registeredNameOf(ImmutableClass const & metaClass) {
    ClassDescriptor const * const described = ClassRuntime::described(metaClass.getImplementation());
    if (described == nullptr) {
        raiseAnInternalError();
    }
    return described->orcaName;
}

Rules Rules::all() {
    Rules rules = registered();
    rules.fHasThoseOfMetamodels = true;
    return rules;
}

Rules Rules::ofMetamodels() {
    Rules rules;
    rules.fHasThoseOfMetamodels = true;
    return rules;
}

Rules & Rules::add(Rule rule) {
    if (rule.isSatisfied == nullptr) {
        raiseInternalError("rule '" + rule.name + "' has no function");
    }
    bool const isKnown = std::any_of(fAdded.begin(), fAdded.end(), [&rule](auto const & other) {
        return other->name == rule.name && other->className == rule.className;
    });
    if (isKnown) {
        raiseInternalError("rule '" + rule.name + "' of " + rule.className + " is there already");
    }
    fAdded.push_back(std::make_shared<Rule const>(std::move(rule)));
    return *this;
}

bool Rules::remove(std::string_view name) {
    return std::erase_if(fAdded, [name](auto const & rule) { return rule->name == name; }) > 0;
}

Rules Rules::only(std::vector<std::string> const & names) const {
    Rules fewer = *this;
    fewer.fOnly.clear();
    std::copy_if(names.begin(), names.end(), std::inserter(fewer.fOnly, fewer.fOnly.end()),
                 [this](std::string const & name) { return includes(name); });
    fewer.fIsLimited = true;
    return fewer;
}

Rules Rules::without(std::vector<std::string> const & names) const {
    Rules fewer = *this;
    fewer.fWithout.insert(names.begin(), names.end());
    return fewer;
}

bool Rules::includes(std::string_view name) const {
    return (!fIsLimited || fOnly.count(name) != 0) && fWithout.count(name) == 0;
}

std::vector<std::string> Rules::names() const {
    std::set<std::string> names;
    if (fHasThoseOfMetamodels) {
        names.insert(standardRuleNames.begin(), standardRuleNames.end());
        for (auto const & entry : NamespaceRegistry::instance()->getMetaUriMappings()) {
            Model const metamodel = MetaModelRegistry::instance()->getModelFromUri(entry.first);
            if (metamodel.isValid()) {
                addConstraintsOf(metamodel, names);
            }
        }
    }
    for (auto const & rule : fAdded) {
        names.insert(rule->name);
    }
    std::vector<std::string> included;
    std::copy_if(names.begin(), names.end(), std::back_inserter(included),
                 [this](std::string const & name) { return includes(name); });
    return included;
}

void registerRule(Rule rule) { registered().add(std::move(rule)); }

bool unregisterRule(std::string_view name) { return registered().remove(name); }

} // namespace ZEL::Compare
