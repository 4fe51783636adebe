#include <ZEL/compare/Check.h>
#include <ZEL/compare/ClassPlan.h>
#include <ZEL/compare/Label.h>
#include <ZEL/metamodel/Operation.h>
#include <ZEL/metamodel/Parameter.h>
#include <ZEL/metamodel/ParameterDirectionKind.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/Sequence.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ZEL::Compare {
namespace {

using NSInterface::ObjectIntf;
using ZEL::internal::BodyCore;
using ZEL::internal::ClassDescriptor;
using ZEL::internal::ConstraintDescriptor;
using ZEL::internal::FieldDescriptor;
using ZEL::internal::StateCore;

std::string countedValues(std::size_t count) {
    return count == 0 ? "no value" : std::to_string(count) + (count == 1 ? " value" : " values");
}

/// Whether an element of a file begins with this name: "<name ".
bool isElementOf(std::string_view xml, std::string_view name) {
    return xml.size() > name.size() + 1 && xml[0] == '<' && xml.substr(1, name.size()) == name &&
           std::string_view(" \t\n/>").find(xml[name.size() + 1]) != std::string_view::npos;
}

/// Whether the file states something of the property that the object could not take.
bool keepsSomethingFor(Remainder const * remainder, std::string_view property) {
    if (remainder == nullptr) {
        return false;
    }
    auto const isOfProperty = [property](auto const & kept) { return kept == property; };
    return std::any_of(remainder->links.begin(), remainder->links.end(),
                       [&](Remainder::Link const & link) { return isOfProperty(link.property); }) ||
           std::any_of(remainder->attributes.begin(), remainder->attributes.end(),
                       [&](Remainder::Attribute const & attribute) { return isOfProperty(attribute.name); }) ||
           std::any_of(remainder->elements.begin(), remainder->elements.end(),
                       [&](Remainder::Element const & element) { return isElementOf(element.xml, property); });
}

/// What operations of one name are told apart by: the types of their parameters, or their names where there is none.
std::vector<std::pair<ObjectIntf const *, std::string>> signatureOf(ImmutableOperation const & operation) {
    std::vector<std::pair<ObjectIntf const *, std::string>> signature;
    for (ImmutableParameter const & parameter : operation.getOwnedParameters()) {
        if (parameter.getDirection() != ParameterDirectionKind::Return) {
            ObjectIntf const * const type = ImmutableType(parameter.getType()).getImplementationWithoutAssert();
            signature.emplace_back(type, type == nullptr ? parameter.getName().str() : std::string());
        }
    }
    return signature;
}

} // namespace

// --- one check -------------------------------------------------------------------------------------------------------

class Checker::Plans : public ClassPlans {
public:
    using ClassPlans::ClassPlans;
};

/// Objects are without a count here: their model holds them.
class Checker::Run {
public:
    Run(ClassPlans & plans, Deviant deviant) : fPlans(plans), fDeviant(deviant) {}

    void checkTree(BodyCore & root);
    void checkOne(BodyCore & object);
    /// Ends the check.
    [[nodiscard]] Diagnostics take();

private:
    struct Found {
        std::size_t order; ///< of the rule
        Diagnostic diagnostic;
    };
    /// A part of an object, by its name.
    struct Named {
        std::size_t hash;
        std::size_t place;
        BodyCore * object;
        ClassPlan const * plan;
    };

    [[nodiscard]] ImmutableClassObject handleOf(BodyCore & object) const {
        return ImmutableClassObject(ImmutableObject(&object, fDeviant));
    }
    [[nodiscard]] std::string labelOf(BodyCore & object) const { return Compare::labelOf(handleOf(object)); }
    [[nodiscard]] ClassPlan & planOf(BodyCore const & object) { return fPlans.of(object.internal_descriptor()); }

    [[nodiscard]] Diagnostic told(BodyCore & object, Severity severity, PropertyView const * property, std::string rule,
                                  std::string text) const {
        return {severity,        handleOf(object), property == nullptr ? ImmutableProperty() : property->property,
                std::move(rule), std::move(text),  labelOf(object)};
    }
    void tell(BodyCore & object, StandardRule rule, Severity severity, PropertyView const * property,
              std::string text) {
        auto const order = static_cast<std::size_t>(rule);
        fFound.push_back({order, told(object, severity, property, standardRuleNames[order], std::move(text))});
    }

    void check(BodyCore & object, ClassPlan & plan);
    void checkProperty(BodyCore & object, StateCore const & state, PropertyPlan & property);
    void checkNumber(BodyCore & object, StateCore const & state, PropertyPlan const & property, std::size_t count);
    void checkTarget(BodyCore & object, PropertyPlan & property, ObjectIntf & target);
    [[nodiscard]] bool leadsBack(BodyCore const & object, PropertyPlan & property, BodyCore const & target) const;
    void checkKeptLinks(BodyCore & object, StateCore const & state, ClassPlan const & plan);
    void checkGenerals(BodyCore & object, StateCore const & state, ClassPlan const & plan);
    void checkRules(BodyCore & object, ClassPlan const & plan);
    /// Ends what is told of one object.
    void flush(BodyCore const & object);

    /// The parts that have their place here. Parts that are elsewhere are told.
    void collectParts(BodyCore & object, ClassPlan const & plan);
    void tellPartsHeldTwice(BodyCore & object);
    void compareNames(BodyCore & object, ClassPlan const & plan);
    void compareNames(BodyCore & object, std::size_t begin, std::size_t end);
    [[nodiscard]] bool areClashing(Named const & a, Named const & b) const;

    template <class Function> void forEachGeneral(BodyCore const & object, Function function);
    [[nodiscard]] bool inheritsFromItself(BodyCore & object);

    ClassPlans & fPlans;
    Deviant fDeviant;
    Diagnostics fDiagnostics;
    std::vector<Found> fFound; ///< of the present object
    /// Of parts that are still to come.
    std::unordered_map<BodyCore const *, Diagnostic> fClashes;
    std::vector<BodyCore const *> fClashOrder;
    std::vector<BodyCore *> fParts;     ///< of the present object
    std::vector<std::size_t> fPartsEnd; ///< for each of its properties the end of its parts
    std::vector<Named> fNamed;
    std::unordered_set<BodyCore const *> fWithoutCycle;
};

Diagnostics Checker::Run::take() {
    for (BodyCore const * const object : fClashOrder) { // those of parts that were not checked themselves
        if (auto const clash = fClashes.find(object); clash != fClashes.end()) {
            fDiagnostics.push_back(std::move(clash->second));
        }
    }
    return std::move(fDiagnostics);
}

void Checker::Run::checkTree(BodyCore & root) {
    std::vector<BodyCore *> open{&root};
    while (!open.empty()) {
        BodyCore & object = *open.back();
        open.pop_back();
        ClassPlan & plan = planOf(object);
        collectParts(object, plan);
        check(object, plan);
        // Nothing holds an object that has its container but that one: only the root can be met twice.
        std::copy_if(fParts.rbegin(), fParts.rend(), std::back_inserter(open),
                     [&root](BodyCore * part) { return part != &root; });
    }
}

void Checker::Run::checkOne(BodyCore & object) {
    ClassPlan & plan = planOf(object);
    collectParts(object, plan);
    check(object, plan);
}

void Checker::Run::check(BodyCore & object, ClassPlan & plan) {
    StateCore const & state = *object.readState(fDeviant);
    for (PropertyPlan & property : plan.properties) {
        checkProperty(object, state, property);
    }
    if (fPlans.asks(StandardRule::UnresolvedLink) && state.remainder() != nullptr) {
        checkKeptLinks(object, state, plan);
    }
    if (plan.generals.view != nullptr) {
        checkGenerals(object, state, plan);
    }
    if (plan.names != ClassPlan::Names::Ignored && fParts.size() > 1) {
        compareNames(object, plan);
    }
    if (!plan.constraints.empty() || !plan.added.empty()) {
        checkRules(object, plan);
    }
    if (!fFound.empty() || !fClashes.empty()) {
        flush(object);
    }
}

void Checker::Run::flush(BodyCore const & object) {
    if (auto const clash = fClashes.find(&object); clash != fClashes.end()) {
        fFound.push_back({static_cast<std::size_t>(StandardRule::UniqueNames), std::move(clash->second)});
        fClashes.erase(clash);
    }
    std::stable_sort(fFound.begin(), fFound.end(), [](Found const & a, Found const & b) { return a.order < b.order; });
    for (Found & found : fFound) {
        fDiagnostics.push_back(std::move(found.diagnostic));
    }
    fFound.clear();
}

// --- properties ------------------------------------------------------------------------------------------------------

void Checker::Run::checkProperty(BodyCore & object, StateCore const & state, PropertyPlan & property) {
    PropertyView const & view = *property.view;
    std::size_t count = 0;
    if (view.links == nullptr) {
        count = view.value != nullptr ? static_cast<std::size_t>(view.value->get(state).isSet())
                                      : static_cast<std::size_t>(view.storage.get(handleOf(object)).size());
    } else if (view.links->sequence != nullptr) {
        count = view.links->sequence(state).size();
    } else {
        count = static_cast<std::size_t>(view.links->get(state) != nullptr);
    }
    if (count < property.lower || (count > property.upper && property.upper != PropertyPlan::kUnlimited)) {
        checkNumber(object, state, property, count);
    }
    bool const areTargetsRead = property.areTargetsChecked || property.opposite != nullptr;
    if (count > 0 && areTargetsRead) {
        forEachLink(*view.links, state, [&](ObjectIntf & target) { checkTarget(object, property, target); });
    }
}

void Checker::Run::checkNumber(BodyCore & object, StateCore const & state, PropertyPlan const & property,
                               std::size_t count) {
    std::string const & name = property.view->name;
    bool const isTooFew = count < property.lower;
    if (isTooFew && keepsSomethingFor(state.remainder(), name)) {
        return; // it is in the file, and told as what it is
    }
    tell(object, StandardRule::Multiplicity, Severity::Error, property.view,
         "has " + countedValues(count) + " of '" + name + "', expected " +
             (isTooFew ? "at least " + std::to_string(property.lower) : "at most " + std::to_string(property.upper)));
}

void Checker::Run::checkTarget(BodyCore & object, PropertyPlan & property, ObjectIntf & target) {
    if (!target.deviant_isValid(fDeviant)) {
        if (property.areTargetsChecked) {
            tell(object, StandardRule::UnresolvedLink, Severity::Error, property.view,
                 "'" + property.view->name + "' leads to an object that no longer exists");
        }
        return;
    }
    BodyCore * const body = target.internal_body();
    // Of two models each keeps its own ends.
    if (property.opposite != nullptr && body != nullptr && body->internal_model() == object.internal_model() &&
        !leadsBack(object, property, *body)) {
        tell(object, StandardRule::OppositeEnds, Severity::Error, property.view,
             "'" + property.view->name + "' leads to " + labelOf(*body) + ", whose '" + property.opposite->name +
                 "' does not lead back");
    }
}

bool Checker::Run::leadsBack(BodyCore const & object, PropertyPlan & property, BodyCore const & target) const {
    ClassDescriptor const & targetClass = target.internal_descriptor();
    if (property.oppositeClass != &targetClass) {
        auto const found =
            std::find_if(targetClass.fields.begin(), targetClass.fields.end(),
                         [&property](FieldDescriptor const & field) { return field.property == property.opposite; });
        property.oppositeClass = &targetClass;
        property.oppositeField = found == targetClass.fields.end() ? nullptr : &*found;
    }
    if (property.oppositeField == nullptr) {
        return true; // the class derives that end
    }
    StateCore const & state = *target.readState(fDeviant);
    ObjectIntf const * const self = &object;
    return property.oppositeField->sequence != nullptr ? property.oppositeField->sequence(state).contains(self)
                                                       : property.oppositeField->get(state) == self;
}

void Checker::Run::checkKeptLinks(BodyCore & object, StateCore const & state, ClassPlan const & plan) {
    for (Remainder::Link const & link : state.remainder()->links) {
        tell(object, StandardRule::UnresolvedLink, Severity::Warning, plan.view->find(link.property),
             "'" + link.property + "' leads to '" + link.target + "', which was not found");
    }
}

// --- generals --------------------------------------------------------------------------------------------------------

template <class Function> void Checker::Run::forEachGeneral(BodyCore const & object, Function function) {
    GeneralPlan const generals = planOf(object).generals;
    if (generals.view == nullptr) {
        return;
    }
    auto const enter = [&](ObjectIntf & general) {
        BodyCore * const body = general.internal_body();
        if (body != nullptr && general.deviant_isValid(fDeviant)) {
            function(*body);
        }
    };
    StateCore const & state = *object.readState(fDeviant);
    if (generals.direct != nullptr) {
        forEachLink(*generals.direct, state, enter);
        return;
    }
    forEachLink(*generals.parts, state, [&](ObjectIntf & part) {
        BodyCore const * const body = part.internal_body();
        PropertyView const * const general = body == nullptr ? nullptr : planOf(*body).view->find("general");
        if (general != nullptr && general->links != nullptr && general->links->get != nullptr &&
            part.deviant_isValid(fDeviant)) {
            forEachLink(*general->links, *body->readState(fDeviant), enter);
        }
    });
}

bool Checker::Run::inheritsFromItself(BodyCore & object) {
    // Depth first over what is more general; what has been left without a cycle needs no second look.
    enum class Mark { Entered, Left };
    std::unordered_map<BodyCore const *, Mark> marks;
    std::vector<BodyCore *> open{&object};
    bool isInCycle = false;
    bool hasCycle = false;
    while (!open.empty()) {
        BodyCore & present = *open.back();
        auto const [mark, isNew] = marks.emplace(&present, Mark::Entered);
        if (!isNew) {
            open.pop_back();
            mark->second = Mark::Left;
            continue;
        }
        forEachGeneral(present, [&](BodyCore & general) {
            isInCycle = isInCycle || &general == &object;
            auto const known = marks.find(&general);
            if (known != marks.end()) {
                hasCycle = hasCycle || known->second == Mark::Entered;
            } else if (fWithoutCycle.count(&general) == 0) {
                open.push_back(&general);
            }
        });
    }
    if (!hasCycle) {
        for (auto const & [visited, mark] : marks) {
            fWithoutCycle.insert(visited);
        }
    }
    return isInCycle;
}

void Checker::Run::checkGenerals(BodyCore & object, StateCore const & state, ClassPlan const & plan) {
    GeneralPlan const & generals = plan.generals;
    bool const hasGenerals = !(generals.direct != nullptr ? generals.direct : generals.parts)->sequence(state).empty();
    if (hasGenerals && fWithoutCycle.count(&object) == 0 && inheritsFromItself(object)) {
        tell(object, StandardRule::GeneralizationCycle, Severity::Error, generals.view, "inherits from itself");
    }
}

// --- parts -----------------------------------------------------------------------------------------------------------

void Checker::Run::collectParts(BodyCore & object, ClassPlan const & plan) {
    fParts.clear();
    fPartsEnd.clear();
    StateCore const & state = *object.readState(fDeviant);
    NSInterface::ClassObjectIntf const * const container = &object;
    std::size_t filled = 0;
    for (PropertyView const * const property : plan.parts) {
        std::size_t const before = fParts.size();
        forEachLink(*property->links, state, [&](ObjectIntf & part) {
            BodyCore * const body = part.internal_body();
            if (body == nullptr || !part.deviant_isValid(fDeviant)) {
                if (fPlans.asks(StandardRule::UnresolvedLink)) {
                    tell(object, StandardRule::UnresolvedLink, Severity::Error, property,
                         "'" + property->name + "' leads to an object that no longer exists");
                }
                return;
            }
            if (body->readState(fDeviant)->container() == container) {
                fParts.push_back(body);
            } else if (fPlans.asks(StandardRule::Containment)) {
                ImmutableClassObject const holder = handleOf(*body).getContainerZEL();
                tell(object, StandardRule::Containment, Severity::Error, property,
                     "'" + property->name + "' holds " + labelOf(*body) + ", whose container is " +
                         Compare::labelOf(holder));
            }
        });
        fPartsEnd.push_back(fParts.size());
        filled += static_cast<std::size_t>(fParts.size() > before);
    }
    if (filled > 1) { // one list has nothing twice
        tellPartsHeldTwice(object);
    }
}

void Checker::Run::tellPartsHeldTwice(BodyCore & object) {
    std::vector<BodyCore *> sorted = fParts;
    std::sort(sorted.begin(), sorted.end(), std::less<BodyCore *>());
    if (std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end()) {
        return;
    }
    std::unordered_set<BodyCore const *> met;
    std::vector<BodyCore *> once;
    for (BodyCore * const part : fParts) {
        if (met.insert(part).second) {
            once.push_back(part);
        } else if (fPlans.asks(StandardRule::Containment)) {
            tell(object, StandardRule::Containment, Severity::Error, nullptr, "holds " + labelOf(*part) + " twice");
        }
    }
    fParts = std::move(once);
    fPartsEnd.assign(1, fParts.size()); // which property holds which is no longer clear
}

bool Checker::Run::areClashing(Named const & a, Named const & b) const {
    auto const nameOf = [this](Named const & named) { return named.plan->name->textOf(*named.object, fDeviant); };
    if (a.plan != b.plan || nameOf(a) != nameOf(b)) {
        return false;
    }
    ImmutableOperation const operation(handleOf(*a.object));
    return !operation.isValid() || signatureOf(operation) == signatureOf(ImmutableOperation(handleOf(*b.object)));
}

void Checker::Run::compareNames(BodyCore & object, ClassPlan const & plan) {
    if (plan.names == ClassPlan::Names::Together) {
        compareNames(object, 0, fParts.size());
        return;
    }
    std::size_t begin = 0;
    for (std::size_t const end : fPartsEnd) {
        compareNames(object, begin, end);
        begin = end;
    }
}

void Checker::Run::compareNames(BodyCore & object, std::size_t begin, std::size_t end) {
    if (end - begin < 2) {
        return;
    }
    fNamed.clear();
    for (std::size_t place = begin; place < end; ++place) {
        ClassPlan const & plan = planOf(*fParts[place]);
        if (plan.name == nullptr) {
            continue;
        }
        std::string_view const name = plan.name->textOf(*fParts[place], fDeviant);
        if (!name.empty()) {
            std::size_t const hash =
                std::hash<std::string_view>()(name) ^ reinterpret_cast<std::uintptr_t>(plan.descriptor);
            fNamed.push_back({hash, place, fParts[place], &plan});
        }
    }
    std::sort(fNamed.begin(), fNamed.end(),
              [](Named const & a, Named const & b) { return std::pair(a.hash, a.place) < std::pair(b.hash, b.place); });
    std::vector<Named const *> clashing;
    for (std::size_t first = 0; first < fNamed.size();) {
        std::size_t last = first + 1;
        for (; last < fNamed.size() && fNamed[last].hash == fNamed[first].hash; ++last) {
            bool const clashes = std::any_of(&fNamed[first], &fNamed[last],
                                             [&](Named const & earlier) { return areClashing(earlier, fNamed[last]); });
            if (clashes) {
                clashing.push_back(&fNamed[last]);
            }
        }
        first = last;
    }
    std::sort(clashing.begin(), clashing.end(), [](Named const * a, Named const * b) { return a->place < b->place; });
    for (Named const * const named : clashing) {
        bool const isOperation = ImmutableOperation(handleOf(*named->object)).isValid();
        std::string const text = "another " + named->plan->view->name() + " in " + labelOf(object) +
                                 " has the same name" + (isOperation ? " and parameters" : "");
        auto const & name = standardRuleNames[static_cast<std::size_t>(StandardRule::UniqueNames)];
        fClashes.emplace(named->object, told(*named->object, Severity::Warning, named->plan->name, name, text));
        fClashOrder.push_back(named->object);
    }
}

// --- rules of applications -------------------------------------------------------------------------------------------

void Checker::Run::checkRules(BodyCore & object, ClassPlan const & plan) {
    for (ConstraintDescriptor const * const constraint : plan.constraints) {
        if (!constraint->isSatisfied(object, fDeviant)) {
            fFound.push_back({standardRuleNames.size(),
                              told(object, constraint->severity, nullptr, constraint->name, constraint->text)});
        }
    }
    if (plan.added.empty()) {
        return;
    }
    ImmutableClassObject const handle = handleOf(object);
    for (Rule const * const rule : plan.added) {
        if (!rule->isSatisfied(handle)) {
            fFound.push_back({standardRuleNames.size(), told(object, rule->severity, nullptr, rule->name, rule->text)});
        }
    }
}

// --- the door --------------------------------------------------------------------------------------------------------

Checker::Checker(Rules rules) : fPlans(std::make_unique<Plans>(std::move(rules))) {}

Checker::~Checker() = default;

Checker::Checker(Checker && other) noexcept = default;

Checker & Checker::operator=(Checker && other) noexcept = default;

Rules const & Checker::getRules() const noexcept { return fPlans->rules(); }

Diagnostics Checker::check(ImmutableClassObject const & root) {
    fPlans->forgetOutdated();
    Run run(*fPlans, root.getDeviant());
    run.checkTree(*root.getImplementation()->internal_body());
    return run.take();
}

Diagnostics Checker::checkEach(std::vector<ImmutableClassObject> const & objects) {
    fPlans->forgetOutdated();
    Diagnostics diagnostics;
    std::optional<Run> run;
    Deviant deviant;
    auto const end = [&] {
        if (run.has_value()) {
            Diagnostics told = run->take();
            std::move(told.begin(), told.end(), std::back_inserter(diagnostics));
        }
    };
    for (ImmutableClassObject const & object : objects) {
        if (!object.isValid()) {
            continue;
        }
        if (!run.has_value() || object.getDeviant() != deviant) {
            end();
            deviant = object.getDeviant();
            run.emplace(*fPlans, deviant);
        }
        run->checkOne(*object.getImplementation()->internal_body());
    }
    end();
    return diagnostics;
}

Diagnostics check(ImmutableClassObject const & root, Rules const & rules) { return Checker(rules).check(root); }

} // namespace ZEL::Compare
